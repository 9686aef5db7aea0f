#include "view/win32/ReplaceDialog.h"

#include "base/win32/WindowText.h"
#include "resource.h"
#include "settings/win32/DialogBase.h"
#include "view/EditorFind.h"
#include "view/TextEditor.h"
#include "viewbase/win32/FindDialog.h"

namespace {

class Dialog final : public DialogBase {
public:
    Dialog(TextEditor& searched, bool multiLine) : editor(searched), multiLineSelection(multiLine) {}

    void Init() override {
        CentreOverParent();
        FindDialog::FillHistory(GetDlgItem(window, IDC_FIND_WHAT), findState.searchHistory, findState.searchText);
        FindDialog::FillHistory(GetDlgItem(window, IDC_REPLACE_WITH), findState.replaceHistory, findState.replaceText);
        CheckDlgButton(window, IDC_WHOLE_WORD, findState.wholeWord);
        CheckDlgButton(window, IDC_MATCH_CASE, findState.matchCase);
        const bool inSelection = editor.HasSelection() && multiLineSelection;
        if (!editor.HasSelection()) EnableWindow(GetDlgItem(window, IDC_IN_SELECTION), FALSE);
        CheckRadioButton(window, IDC_IN_SELECTION, IDC_IN_WHOLE_FILE,
                         inSelection ? IDC_IN_SELECTION : IDC_IN_WHOLE_FILE);
        if (inSelection) OfferReplaceAllOnly();
    }

    void Command(uint32_t identifier) override {
        if (identifier == IDC_REPLACE_ONE || identifier == IDC_REPLACE_ALL) {
            if (!ReadTexts()) return;
            identifier == IDC_REPLACE_ONE ? ReplaceOne() : ReplaceAll();
        } else {
            DialogBase::Command(identifier);
        }
    }

    // "Find Next": the dialog stays open.
    void Ok() override {
        if (ReadTexts()) FindNext();
    }

private:
    // The default button is a matter of the button's style as well as of the dialog manager.
    void OfferReplaceAllOnly() {
        EnableWindow(GetDlgItem(window, IDOK), FALSE);
        EnableWindow(GetDlgItem(window, IDC_REPLACE_ONE), FALSE);
        SendMessageW(window, DM_SETDEFID, IDC_REPLACE_ALL, 0);
        SendDlgItemMessageW(window, IDOK, BM_SETSTYLE, BS_PUSHBUTTON, TRUE);
        SendDlgItemMessageW(window, IDC_REPLACE_ALL, BM_SETSTYLE, BS_DEFPUSHBUTTON, TRUE);
    }

    bool ReadTexts() {
        if (!TextOfWindow(GetDlgItem(window, IDC_FIND_WHAT), findState.searchText) ||
            !TextOfWindow(GetDlgItem(window, IDC_REPLACE_WITH), findState.replaceText))
            return false;
        // Without memory the newest entry is another text, which nobody wants to be replaced now.
        return findState.searchHistory.Add(findState.searchText) && findState.replaceHistory.Add(findState.replaceText);
    }

    void StoreOptions() {
        findState.wholeWord = IsDlgButtonChecked(window, IDC_WHOLE_WORD) == BST_CHECKED;
        findState.matchCase = IsDlgButtonChecked(window, IDC_MATCH_CASE) == BST_CHECKED;
    }

    void FindNext() {
        StoreOptions();
        if (!EditorFind::FindNext(editor, false)) FindDialog::ReportNotFound(editor.Surface().Host(), window);
    }

    void ReplaceOne() {
        // Whatever comes of it, the next one is looked for: at first nothing is selected.
        static_cast<void>(
            EditorFind::ReplaceSelection(editor, findState.replaceText.Text(), findState.replaceText.Length()));
        FindNext();
    }

    void ReplaceAll() {
        StoreOptions();
        EditorFind::ReplaceAll(editor, findState.replaceText.Text(), findState.replaceText.Length(),
                               IsDlgButtonChecked(window, IDC_IN_SELECTION) == BST_CHECKED);
    }

    TextEditor& editor;
    bool multiLineSelection;
};

} // namespace

void ReplaceDialog::Show(HWND owner, TextEditor& editor, bool multiLineSelection) {
    Dialog(editor, multiLineSelection).Run(IDD_REPLACE, owner);
}
