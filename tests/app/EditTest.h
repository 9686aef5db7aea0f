#pragma once

#include "app/AppTest.h"

// A test of editing: texts with line feeds only, put into new documents and read back by way of the clipboard.
class EditTest : public AppTest {
protected:
    // As the clipboard holds it.
    static std::wstring WithReturns(const std::wstring& text);
    // The caret in the client area of its window.
    RECT Caret() const;
    // A new document that holds the text, with the caret in front of it.
    void Fill(const std::wstring& text);
    void ExpectText(const std::wstring& text);
    // Of a selection that is not empty.
    void ExpectSelection(const std::wstring& text);
    // Waits until the status bar shows this place, both counted from 1.
    bool WaitForCaret(int line, int column) const {
        return editor.WaitForStatus(2, L"\tLn " + std::to_wstring(line)) &&
               editor.WaitForStatus(3, L"\tCol " + std::to_wstring(column));
    }
};
