#include "view/win32/GoToLineDialog.h"

#include "resource.h"
#include "settings/win32/DialogBase.h"
#include "view/TextEditor.h"

namespace {

class Dialog final : public DialogBase {
public:
    explicit Dialog(uint32_t start) : value(start) {}

    void Init() override {
        CentreOverParent();
        SetDlgItemInt(window, IDC_GOTO_NUMBER, value, FALSE);
    }

    void Ok() override {
        value = GetDlgItemInt(window, IDC_GOTO_NUMBER, nullptr, FALSE);
        DialogBase::Ok();
    }

    uint32_t value;
};

} // namespace

void GoToLineDialog::Show(HWND owner, TextEditor& editor) {
    Dialog dialog(editor.CaretLine() + 1);
    if (dialog.Run(IDD_GOTO, owner) == IDOK && dialog.value != 0) editor.GoToLine(dialog.value - 1, true);
}
