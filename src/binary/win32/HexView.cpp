#include "binary/win32/HexView.h"

#include "base/win32/WindowText.h"
#include "binary/HexText.h"
#include "resource.h"
#include "settings/win32/DialogBase.h"
#include "viewbase/win32/FindDialog.h"

namespace {

// Asks for an offset, which is written as in the status bar.
class OffsetDialog final : public DialogBase {
public:
    explicit OffsetDialog(HexEditor& shown) : editor(shown) {}

    void Init() override {
        CentreOverParent();
        WString text;
        if (HexText::AppendOffset(text, editor.Anchor())) SetDlgItemTextW(window, IDC_GOTO_NUMBER, Wide(text.Text()));
    }

    // A text that is not an offset moves nothing.
    void Ok() override {
        WString text;
        uint64_t offset = 0;
        const bool read = TextOfWindow(GetDlgItem(window, IDC_GOTO_NUMBER), text) &&
                          HexText::ParseOffset(text.Text(), text.Length(), offset);
        DialogBase::Ok();
        if (read) editor.GoTo(offset);
    }

private:
    HexEditor& editor;
};

} // namespace

HexDocumentView* HexView::Create(BinaryDocument& document, NativeWindow parent) {
    return MakeView<HexView>(document, parent);
}

HexView::~HexView() {
    Detach();
    editor.SetDocument(nullptr);
}

Document* HexView::Attach(HWND newWindow) {
    inputMethod.Forbid(newWindow);
    return EditorWindow::Attach(newWindow);
}

void HexView::Detach() {
    inputMethod.Allow();
    EditorWindow::Detach();
}

void HexView::PaintRows(HDC target, int top, int bottom) {
    if (rows.Begin(editor, top, bottom)) Draw(target, rows);
}

void HexView::ShowFindDialog() { FindDialog::Show(window, *this, true); }

void HexView::ShowGoToDialog() { OffsetDialog(editor).Run(IDD_BINARY_GOTO, window); }
