#pragma once

#include "binary/HexEditor.h"
#include "binary/HexRows.h"
#include "viewbase/win32/EditorWindow.h"

// The window half of a hex view.
class HexView final : public EditorWindow {
public:
    HexView() = default;
    ~HexView() override;

    // A view of `document` in a window inside `parent`, or without a window when that is null. Null on
    // failure. Installed as the view factory of binary documents.
    static HexDocumentView* Create(BinaryDocument& document, NativeWindow parent);

    HexEditor& Editor() { return editor; }

    // EditorWindow.
    void PaintRows(HDC target, int top, int bottom) override;

    // View.
    Document* GetDocument() const override { return editor.GetBinaryDocument(); }
    bool IsCommandEnabled(ViewCommand command) const override { return editor.CanDo(command); }
    bool ExecuteCommand(ViewCommand command) override { return editor.ExecuteCommand(command); }
    bool FindNext(bool backward, uint32_t) override { return editor.FindNext(backward); }

    // EditorSurface.
    void ShowFindDialog() override;
    void ShowGoToDialog() override;

protected:
    EditorInput& Input() override { return editor; }

private:
    HexEditor editor{*this};
    HexRows rows;
};
