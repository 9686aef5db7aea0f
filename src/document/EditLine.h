#pragma once

#include "base/WString.h"
#include "document/TextPosition.h"
#include "document/TextStore.h"

// The line that is being typed in: a copy of one line of a TextStore with its line feed (of the last line: with
// the terminator). Keys change the copy; it goes back into the store when another line is opened.
class EditLine {
public:
    EditLine() = default;
    EditLine(const EditLine&) = delete;
    EditLine& operator=(const EditLine&) = delete;

    bool IsOpen() const { return number != NoLine; }
    uint32_t Number() const { return number; } // NoLine while none is open
    // Offset in the store. Like StoreLength it is kept when the line is closed, and counts while one is open.
    uint32_t Start() const { return start; }
    // Where columns of the line are in a store that has it as it is now; an end beyond 32 bits is the greatest offset.
    TextRange RangeOf(ColumnRange columns) const;
    // Characters of the store that the line replaces.
    uint32_t StoreLength() const { return storeLength; }
    const WString& Text() const { return text; }
    // Characters before the line feed or the terminator.
    uint32_t Length() const { return text.IsEmpty() ? 0 : text.Length() - 1; }
    // Whether the line differs from the store.
    bool IsPending() const { return pending; }
    // Characters (modulo 2^32) that the text has more than the store.
    uint32_t Growth() const { return pending ? text.Length() - storeLength : 0; }

    // Copies the line. False without memory; what was open is then open still.
    [[nodiscard]] bool Open(TextStore& store, uint32_t line);
    // Puts a pending line into the store and closes it. False without memory: everything then stays pending.
    [[nodiscard]] bool WriteBack(TextStore& store);
    // Closes the line; what the store holds counts.
    void Close();
    // Closes the line, forgets what is pending, and frees the copy.
    void Release();

    [[nodiscard]] bool Insert(uint32_t column, const Char* inserted, uint32_t count);
    void Erase(ColumnRange columns);
    void Set(uint32_t column, Char character);

private:
    WString text;
    uint32_t number = NoLine;
    uint32_t start = 0;
    uint32_t storeLength = 0;
    bool pending = false;
};
