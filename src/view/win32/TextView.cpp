#include "view/win32/TextView.h"

#include "settings/win32/DrawingObjects.h"
#include "view/win32/GoToLineDialog.h"
#include "view/win32/ReplaceDialog.h"
#include "view/win32/TextPattern.h"
#include "viewbase/win32/FindDialog.h"
#include "viewbase/win32/TextPainter.h"
#include "viewbase/win32/ViewFont.h"

#include <algorithm>
#include <climits>

TextDocumentView* TextView::Create(TextBuffer& document, NativeWindow parent) {
    return MakeView<TextView>(document, parent);
}

TextView::~TextView() {
    Detach();
    editor.SetDocument(nullptr);
}

LRESULT TextView::WindowProc(UINT message, WPARAM wparam, LPARAM lparam) {
    switch (message) {
    case WM_IME_STARTCOMPOSITION:
        input.OnComposition();
        composing = true;
        PlaceComposition();
        break;
    case WM_IME_ENDCOMPOSITION:
        composing = false;
        break;
    case WM_IME_CHAR:
        // Like what keys make, it comes in a message that can be recorded.
        PostMessageW(window, InputMethod::ComposedCharacter, wparam, lparam);
        return 0;
    case InputMethod::ComposedCharacter:
        input.OnComposed(static_cast<Char>(wparam));
        return 0;
    case WM_MOUSEHWHEEL:
        OnSidewaysWheel(wparam);
        return 0;
    case WM_LBUTTONDBLCLK:
        input.OnDoubleClick();
        return 0;
    default:
        break;
    }
    return EditorWindow::WindowProc(message, wparam, lparam);
}

void TextView::OnSidewaysWheel(WPARAM wparam) {
    UINT columns = 3;
    if (!SystemParametersInfoW(SPI_GETWHEELSCROLLCHARS, 0, &columns, 0)) columns = 3;
    // "One screen at a time" is the value -1.
    input.OnSidewaysWheel(GET_WHEEL_DELTA_WPARAM(wparam), static_cast<int32_t>(std::min<UINT>(columns, INT_MAX)));
}

void TextView::PaintRows(HDC target, int top, int bottom) {
    if (plan.Begin(editor, top, bottom)) Draw(target, plan);
}

// A composition may go on while what it has composed is typed, the text scrolls or the font changes.
void TextView::ShowCaretAt(ClientPoint point) {
    EditorWindow::ShowCaretAt(point);
    if (composing) PlaceComposition();
}

void TextView::PlaceComposition() {
    inputMethod.PlaceComposition(window, CaretPlace(), Metrics().lineHeight, DrawingObjects::EditorFont());
}

IUnknown* TextView::MakeTextPattern(ViewProvider& provider) { return new TextPattern(provider, accessible); }

CharWidths& TextView::Widths() { return ViewFont::Widths(); }

void TextView::ScrollPicture(int32_t pixels) {
    if (!window) return;
    // Drawn straight, the guides are on the first row only: rows depend on where they are.
    if (DrawsUnbuffered() || !backBuffer.Dc()) return InvalidateAll();
    ScrollWindowEx(window, 0, pixels, nullptr, nullptr, nullptr, nullptr, SW_INVALIDATE | SW_ERASE);
    ForgetCaretPlace();
}

void TextView::UpdateNow() {
    if (window) UpdateWindow(window);
}

void TextView::ShowFindDialog() { FindDialog::Show(window, *this, false); }

void TextView::ShowReplaceDialog(bool multiLineSelection) { ReplaceDialog::Show(window, editor, multiLineSelection); }

void TextView::ShowGoToDialog() { GoToLineDialog::Show(window, editor); }
