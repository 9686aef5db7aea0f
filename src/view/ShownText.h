#pragma once

#include "document/TextPosition.h"
#include "document/TextRange.h"
#include "view/LineStates.h"
#include "view/TextSpan.h"

class TextBuffer;

// The text of a view's document as the user sees it: with the line that is open for editing in its edited form.
// All offsets count that text; without a pending edit they are offsets into the document's content. Without a
// document there is one empty line.
class ShownText {
public:
    ShownText() = default;
    ShownText(const ShownText&) = delete;
    ShownText& operator=(const ShownText&) = delete;

    // The document is not owned; null for none.
    void Show(TextBuffer* shown);
    TextBuffer* Document() const { return document; }

    uint32_t Length() const;
    uint32_t LineCount() const;
    // Without the line feed. A line past the end yields the last one, as below.
    TextSpan Line(uint32_t line) const;
    uint32_t LineStart(uint32_t line) const;
    TextPosition PositionOf(uint32_t offset) const;
    uint32_t LineOf(uint32_t offset) const { return PositionOf(offset).line; }
    // Line feeds are characters like others. NUL at the text's end, which is as far as `offset` may be.
    Char CharacterAt(uint32_t offset) const;
    // Copies the characters of `range`, which is inside the text, to `out`, which has room for them.
    void Copy(TextRange range, Char* out) const;
    // The state in which the document's engine comes to a line, from which it can colour that line next: the one that
    // it has after all lines before, the open one in its edited form. 0 without an engine or a text. Remembers states
    // on the way, so it is not const.
    uint32_t StateAt(uint32_t line);
    // The characters from `offset` on have changed, or their colours.
    void ForgetAfter(uint32_t offset) { states.ForgetAfter(offset); }

private:
    TextBuffer* document = nullptr;
    LineStates states;
};
