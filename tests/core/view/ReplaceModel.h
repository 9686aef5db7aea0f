#pragma once

#include "document/TextBuffer.h"
#include "support/TextDocument.h"
#include "view/TextEditor.h"

#include <string>

// Replacing and indenting one change after the other, each with the document's single operations.
namespace OneByOne {

struct Rules {
    bool matchCase;
    bool wholeWord;
};

inline uint32_t ReplaceAll(TextEditor& view, const std::u16string& pattern, const std::u16string& replacement,
                           const Rules& rules, bool inSelection) {
    TextBuffer& document = *view.GetTextBuffer();
    static_cast<void>(document.CommitEdit());
    const auto n = static_cast<uint32_t>(pattern.size());
    const auto r = static_cast<uint32_t>(replacement.size());
    const uint32_t start = inSelection ? view.Caret().SelectionStart() : 0;
    uint32_t end = inSelection ? view.Caret().SelectionEnd() : document.Length();
    uint32_t at = start;
    uint32_t count = 0;
    static_cast<void>(document.BeginGroup());
    for (;;) {
        SearchHit hit;
        if (!document.FindText(Query(pattern, rules.matchCase, rules.wholeWord), {at, end}, hit)) break;
        const uint32_t found = hit.offset;
        if (hit.wrapped || (inSelection && found + n > end)) break;
        ++count;
        static_cast<void>(document.DeleteText({found, found + n}));
        static_cast<void>(document.InsertText(found, replacement.data(), r));
        at = found + r;
        end = end + r - n;
    }
    static_cast<void>(document.EndGroup());
    if (inSelection) view.SelectRange({start, end});
    return count;
}

inline bool IsBlank(char16_t c) { return c == u' ' || c == u'\t'; }

inline void Indent(TextEditor& view, bool unindent, uint32_t size, bool spaces) {
    TextBuffer& document = *view.GetTextBuffer();
    static_cast<void>(document.CommitEdit());
    uint32_t start = 0;
    uint32_t lineStart = 0;
    const uint32_t firstLine = document.OffsetToLine(view.Caret().SelectionStart(), start);
    uint32_t end = view.Caret().SelectionEnd();
    const uint32_t lastLine = document.OffsetToLine(end, lineStart);
    const std::u16string unit = spaces ? std::u16string(size, u' ') : std::u16string(u"\t");
    bool changed = false;
    view.SuspendRedraw();
    static_cast<void>(document.BeginGroup());
    for (uint32_t line = firstLine; line < lastLine; ++line) {
        const uint32_t at = document.LineToOffset(line);
        bool isLast = false;
        const std::u16string text(document.Content() + at, document.LineLength(at, isLast));
        if (unindent) {
            uint32_t removed = 0;
            while (removed < text.size() && removed < size && IsBlank(text[removed])) {
                if (text[removed++] == u'\t') break;
            }
            if (removed) static_cast<void>(document.DeleteText({at, at + removed}));
            end -= removed;
            changed = changed || removed > 0;
        } else if (text.find_first_not_of(u" \t") != text.npos) {
            static_cast<void>(document.InsertText(at, unit.data(), static_cast<uint32_t>(unit.size())));
            end += static_cast<uint32_t>(unit.size());
            changed = true;
        }
    }
    static_cast<void>(document.EndGroup());
    if (changed) view.SelectRange({start, end});
    view.ResumeRedraw();
}

// Of a text with line feeds only.
inline void Paste(TextEditor& view, const std::u16string& text, bool wholeLine, bool keepSelected) {
    TextBuffer& document = *view.GetTextBuffer();
    static_cast<void>(document.CommitEdit());
    const auto length = static_cast<uint32_t>(text.size());
    const bool grouped = view.Caret().SelectionStart() != view.Caret().SelectionEnd();
    if (grouped) {
        static_cast<void>(document.BeginGroup());
        static_cast<void>(document.DeleteText(view.Caret().Selection().Range()));
    }
    const uint32_t caret = view.CaretOffset();
    if (wholeLine) {
        static_cast<void>(document.InsertText(document.LineToOffset(view.CaretLine()), text.data(), length));
        uint32_t lineStart = 0;
        const uint32_t line = document.OffsetToLine(caret + length, lineStart);
        view.MoveCaret({line, caret + length - lineStart}, false);
    } else {
        static_cast<void>(document.InsertText(caret, text.data(), length));
        if (keepSelected && text.find(u'\n') != text.npos) view.SelectRange({caret, caret + length});
    }
    if (grouped) static_cast<void>(document.EndGroup());
}

} // namespace OneByOne
