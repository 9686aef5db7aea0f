#pragma once

#include "base/WString.h"
#include "document/TextPosition.h"
#include "document/TextStore.h"

// The line that is being typed in: a copy of one line of a TextStore with its line feed (of the last line: with the
// terminator). Keys change the copy, so that each of them costs the same however long the text is. EditPipeline opens
// the line of the caret, and writes it back when another line is opened or all of the text is needed in the store. A
// line that is open stays open while it is changed, and is closed by being written back.
class EditLine {
public:
    EditLine() = default;
    EditLine(const EditLine&) = delete;
    EditLine& operator=(const EditLine&) = delete;

    bool IsOpen() const { return number != NoLine; }
    uint32_t Number() const { return number; } // NoLine while none is open
    // The copy, with the line feed or the terminator as its last character. These three keep their values when the line
    // is closed: Start() is then where the line was written back, until another one is opened.
    const WString& Text() const { return text; }
    // Where the line begins in the store, and how many characters of it the copy replaces, the last one included.
    uint32_t Start() const { return start; }
    uint32_t StoreLength() const { return storeLength; }
    // Characters before the line feed or the terminator: the columns there are.
    uint32_t Length() const { return text.IsEmpty() ? 0 : text.Length() - 1; }
    // Where columns of the line are in a store that has it as it is now; an end beyond 32 bits is the greatest offset.
    TextRange RangeOf(ColumnRange columns) const;
    // Whether the copy was changed and is not written back.
    bool IsPending() const { return pending; }
    // Characters (modulo 2^32) that the text as the user sees it has more than the store.
    uint32_t Growth() const { return pending ? text.Length() - storeLength : 0; }

    // Copies the line. Nothing may be pending. False without memory; what was open is then open still.
    [[nodiscard]] bool Open(TextStore& store, uint32_t line);
    // Puts a pending line into the store and closes it. False without memory: everything then stays pending.
    [[nodiscard]] bool WriteBack(TextStore& store);
    // Closes the line, in which nothing may be pending.
    void Close();
    // Closes the line, forgets what is pending, and frees the copy.
    void Release();

    // Change the open line. Columns are at most Length(). Only making room and an insertion can fail, without memory.
    //
    // Room for so many characters more; an insertion that needs no other cannot fail.
    [[nodiscard]] bool MakeRoom(uint32_t characters) { return text.Reserve(text.Length() + characters); }
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
