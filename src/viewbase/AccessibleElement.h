#pragma once

#include "base/Types.h"

class Document;
class WString;

// Where a view's caret is and what is selected, in characters or bytes; two states differ when there is something to
// report to a screen reader.
struct AccessibleState {
    uint64_t anchor = 0;
    uint64_t caret = 0;
    uint64_t line = 0;  // of the caret; the row of a hex view
    uint64_t edits = 0; // grows with every edit
    uint64_t name = 0;  // another one for another name

    bool operator==(const AccessibleState&) const = default;
};

// What an editing view says of itself to screen readers.
class AccessibleElement {
public:
    // A value is no longer, so that no line is too long to be spoken.
    static constexpr uint32_t LongestValue = 1024;

    // The name of the document that is shown; empty without one.
    const Char* Name() const;
    // Appends the line, or row, that the caret is in, up to LongestValue characters. False without memory.
    [[nodiscard]] virtual bool AppendValue(WString& out) = 0;
    virtual bool IsReadOnly() const = 0;
    // Whether it is read piece by piece, as a document is; others have their value only.
    virtual bool HasText() const = 0;
    virtual AccessibleState State() const = 0;

protected:
    ~AccessibleElement() = default;

    // What is shown; null for nothing.
    virtual const Document* ShownDocument() const = 0;
    // For the state.
    uint64_t NameSum() const;
};
