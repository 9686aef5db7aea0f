#pragma once

#include "view/AccessibleText.h"
#include "view/EditorFind.h"
#include "view/RowPlan.h"
#include "view/TextInput.h"
#include "view/TextSurface.h"
#include "viewbase/win32/EditorWindow.h"
#include "viewbase/win32/InputMethod.h"

// The window half of a text view.
class TextView final : public EditorWindow, public TextSurface {
public:
    TextView() = default;
    ~TextView() override;

    // A view of `document` in a window inside `parent`, or without a window when that is null. Null on
    // failure. A TextViewFactory.
    static TextDocumentView* Create(TextBuffer& document, NativeWindow parent);

    TextEditor& Editor() { return editor; }

    // EditorWindow.
    void PaintRows(HDC target, int top, int bottom) override;

    // View.
    Document* GetDocument() const override { return editor.GetTextBuffer(); }
    int32_t TextLeft() const override { return editor.Viewport().TextLeft(); }
    void GoToLine(uint32_t line, bool selectLine) override { editor.GoToLine(line, selectLine); }
    bool IsCommandEnabled(ViewCommand command) const override { return input.IsCommandEnabled(command); }
    bool ExecuteCommand(ViewCommand command) override { return input.ExecuteCommand(command); }
    void ToggleBookmark(uint32_t line) override { editor.ToggleBookmark(line); }
    bool FindNext(bool backward, uint32_t) override { return EditorFind::FindNext(editor, backward); }
    LRESULT WindowProc(UINT message, WPARAM wparam, LPARAM lparam) override;

    // EditorSurface.
    void ShowCaretAt(ClientPoint point) override;
    void ShowFindDialog() override;
    void ShowGoToDialog() override;

    // AccessibleWindow.
    AccessibleElement& Accessible() override { return accessible; }
    IUnknown* MakeTextPattern(ViewProvider& provider) override;

    // TextSurface.
    CharWidths& Widths() override;
    void ScrollPicture(int32_t pixels) override;
    void UpdateNow() override;
    void HideCaret() override { View::HideCaret(); }
    void ShowReplaceDialog(bool multiLineSelection) override;

protected:
    EditorInput& Input() override { return input; }

private:
    void PlaceComposition();
    void OnSidewaysWheel(WPARAM wparam);

    TextEditor editor{*this, *this};
    TextInput input{editor};
    AccessibleText accessible{editor};
    RowPlan plan;
    InputMethod inputMethod;
    bool composing = false; // an input method is, at the caret
};
