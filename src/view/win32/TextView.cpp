#include "view/win32/TextView.h"

#include "view/win32/FindDialogs.h"
#include "viewbase/win32/InputMethod.h"

DocumentView* TextView::Create(TextBuffer& document, NativeWindow parent) {
    TextView* view = new TextView;
    if (!view) return nullptr;
    view->editor.SetDocument(&document);
    if (view->CreateIn(parent)) return &view->editor;
    delete view;
    return nullptr;
}

TextView::~TextView() {
    Detach();
    editor.SetDocument(nullptr);
}

LRESULT TextView::WindowProc(UINT message, WPARAM wparam, LPARAM lparam) {
    if (message == WM_IME_STARTCOMPOSITION) InputMethod::PlaceComposition(window, CaretPlace());
    return EditorWindow::WindowProc(message, wparam, lparam);
}

void TextView::PaintRows(HDC target, int top, int bottom) {
    if (plan.Begin(editor, top, bottom)) Draw(target, plan);
}

void TextView::ShowFindDialog() { FindDialogs::ShowFind(window, *this); }

void TextView::ShowReplaceDialog(bool multiLineSelection) {
    FindDialogs::ShowReplace(window, editor, multiLineSelection);
}

void TextView::ShowGoToDialog() { FindDialogs::ShowGoTo(window, editor); }
