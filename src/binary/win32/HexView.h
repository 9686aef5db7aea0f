#pragma once

#include "binary/HexAccessible.h"
#include "binary/HexFind.h"
#include "binary/HexInput.h"
#include "binary/HexRows.h"
#include "viewbase/win32/EditorWindow.h"
#include "viewbase/win32/InputMethod.h"

// The window half of a hex view.
class HexView final : public EditorWindow {
public:
    HexView() = default;
    ~HexView() override;

    // A view of `document` in a window inside `parent`, or without a window when that is null. Null on
    // failure. A HexViewFactory.
    static HexDocumentView* Create(BinaryDocument& document, NativeWindow parent);

    HexEditor& Editor() { return editor; }

    // EditorWindow.
    void PaintRows(HDC target, int top, int bottom) override;

    // View.
    Document* Attach(HWND newWindow) override;
    void Detach() override;
    Document* GetDocument() const override { return editor.GetBinaryDocument(); }
    int32_t TextLeft() const override { return editor.Viewport().TextLeft(); }
    void GoToLine(uint32_t, bool) override {} // there are only rows
    bool IsCommandEnabled(ViewCommand command) const override { return input.IsCommandEnabled(command); }
    bool ExecuteCommand(ViewCommand command) override { return input.ExecuteCommand(command); }
    void ToggleBookmark(uint32_t) override {} // nor are there bookmarks
    bool FindNext(bool backward, uint32_t) override { return HexFind::FindNext(editor, backward); }

    // AccessibleWindow.
    AccessibleElement& Accessible() override { return accessible; }
    IUnknown* MakeTextPattern(ViewProvider&) override { return nullptr; } // never asked for: there is no text

    // EditorSurface.
    void ShowFindDialog() override;
    void ShowGoToDialog() override;

protected:
    EditorInput& Input() override { return input; }

private:
    HexEditor editor{*this};
    HexInput input{editor};
    HexAccessible accessible{editor};
    HexRows rows;
    InputMethod inputMethod; // kept away: hex digits are keys
};
