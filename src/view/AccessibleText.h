#pragma once

#include "base/Array.h"
#include "view/AccessibleRange.h"
#include "viewbase/AccessibleElement.h"
#include "viewbase/EditorSurface.h"

class HeldRanges;
class TextEditor;

// A rectangle of the client area, in pixels, without its right and bottom edges.
struct ClientRectangle {
    int32_t left = 0;
    int32_t top = 0;
    int32_t right = 0;
    int32_t bottom = 0;

    bool operator==(const ClientRectangle&) const = default;
};

// What a text view says of itself to screen readers, and what they may do to it: select and scroll, never edit.
class AccessibleText final : public AccessibleElement {
public:
    explicit AccessibleText(TextEditor& shown) : editor(shown) {}
    AccessibleText(const AccessibleText&) = delete;
    AccessibleText& operator=(const AccessibleText&) = delete;

    // AccessibleElement.
    [[nodiscard]] bool AppendValue(WString& out) override;
    bool IsReadOnly() const override;
    bool HasText() const override { return true; }
    AccessibleState State() const override;

    const ShownText& Text() const;
    HeldRanges& Held() const;
    // All of the text, what is selected (empty at the caret), the caret, and the lines that are seen, if only in part.
    TextRange All() const;
    TextRange Selection() const;
    TextRange Caret() const;
    TextRange Seen() const;
    // The empty range nearest to a client point, which may be outside the client area.
    TextRange At(ClientPoint point) const;

    // The caret goes to the end of the range.
    void Select(const AccessibleRange& range);
    // Makes the line of its start the first one that is seen, or that of its end the last one, and brings the column of
    // its start into the text area.
    void ScrollTo(const AccessibleRange& range, bool toTop);
    // Appends what is seen of a range, one rectangle for each line; nothing for an empty range. A line feed is as wide
    // as an average character. False without memory.
    [[nodiscard]] bool AppendRectangles(const AccessibleRange& range, Array<ClientRectangle>& out) const;

private:
    const Document* ShownDocument() const override;
    uint32_t LastSeenLine() const;

    TextEditor& editor;
};
