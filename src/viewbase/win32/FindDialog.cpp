#include "viewbase/win32/FindDialog.h"

#include "base/win32/WindowText.h"
#include "resource.h"
#include "settings/win32/DialogBase.h"
#include "viewbase/win32/View.h"

namespace {

class Dialog final : public DialogBase {
public:
    Dialog(View& searched, bool hex) : view(searched), hexPattern(hex) {}

    void Init() override {
        CentreOverParent();
        FindDialog::FillHistory(GetDlgItem(window, IDC_FIND_WHAT), findState.searchHistory, findState.searchText);
        CheckDlgButton(window, IDC_WHOLE_WORD, findState.wholeWord);
        CheckDlgButton(window, IDC_MATCH_CASE, findState.matchCase);
        if (hexPattern)
            CheckDlgButton(window, IDC_HEX_PATTERN, findState.hexPattern);
        else
            ::DestroyWindow(GetDlgItem(window, IDC_HEX_PATTERN));
        CheckRadioButton(window, IDC_FIND_UP, IDC_FIND_DOWN, findState.searchUp ? IDC_FIND_UP : IDC_FIND_DOWN);
    }

    void Ok() override {
        if (!TextOfWindow(GetDlgItem(window, IDC_FIND_WHAT), findState.searchText)) return;
        findState.hexPattern = hexPattern && IsDlgButtonChecked(window, IDC_HEX_PATTERN) == BST_CHECKED;
        // Without memory the newest entry is another text, which nobody wants to find now.
        if (!findState.searchHistory.Add(findState.searchText)) return;
        findState.wholeWord = IsDlgButtonChecked(window, IDC_WHOLE_WORD) == BST_CHECKED;
        findState.matchCase = IsDlgButtonChecked(window, IDC_MATCH_CASE) == BST_CHECKED;
        findState.searchUp = IsDlgButtonChecked(window, IDC_FIND_UP) == BST_CHECKED;
        if (view.FindNext(findState.searchUp, 0)) return DialogBase::Ok();
        FindDialog::ReportNotFound(view.Host(), window);
    }

private:
    View& view;
    bool hexPattern;
};

} // namespace

void FindDialog::Show(HWND owner, View& view, bool hexPattern) { Dialog(view, hexPattern).Run(IDD_FIND, owner); }

void FindDialog::FillHistory(HWND combo, const History& history, const WString& text) {
    for (uint32_t i = 0; i < history.Count(); ++i)
        SendMessageW(combo, CB_INSERTSTRING, 0, reinterpret_cast<LPARAM>(history[i].Text()));
    SetWindowTextW(combo, Wide(text.Text()));
}

void FindDialog::ReportNotFound(ViewHost* host, HWND dialog) {
    if (host && !findState.cancelled) host->ShowMessage(dialog, u"Text not found", MessageKind::Information);
}
