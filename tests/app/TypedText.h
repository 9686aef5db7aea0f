#pragma once

#include <string>

// A text as its user sees it, without blanks and brackets, so that nothing is indented or matched: what keys do to it.
// Line ends are line feeds; places are offsets.
class TypedText {
public:
    const std::wstring& Text() const { return text; }
    void Place(size_t at) { caret = anchor = at; }

    void Type(wchar_t unit);
    void Backspace();
    void Delete();
    // The keys that move; with Shift they select.
    void Left(bool shift) { Move(caret ? caret - 1 : 0, shift); }
    void Right(bool shift) { Move(caret < text.size() ? caret + 1 : caret, shift); }
    void Home(bool shift) { Move(caret ? text.rfind(L'\n', caret - 1) + 1 : 0, shift); }
    void End(bool shift);
    void DocumentStart(bool shift) { Move(0, shift); }
    void DocumentEnd(bool shift) { Move(text.size(), shift); }

private:
    void Move(size_t to, bool shift) {
        caret = to;
        if (!shift) anchor = to;
    }
    bool RemoveSelection();

    std::wstring text;
    size_t caret = 0;
    size_t anchor = 0;
};
