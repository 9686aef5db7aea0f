#include "view/win32/FindDialogs.h"

#include "base/WString.h"
#include "base/win32/WindowText.h"
#include "resource.h"
#include "settings/win32/DialogBase.h"
#include "view/TextEditor.h"
#include "viewbase/FindState.h"
#include "viewbase/win32/View.h"

namespace {

void FillHistory(HWND combo, const History& history, const WString& text) {
    for (uint32_t i = 0; i < history.Count(); ++i)
        SendMessageW(combo, CB_INSERTSTRING, 0, reinterpret_cast<LPARAM>(history[i].Text()));
    SetWindowTextW(combo, Wide(text.Text()));
}

// Who has ended the search knows that nothing was found.
void TellNotFound(ViewHost* host, HWND dialog) {
    if (host && !findState.brokenOff) host->ShowMessage(dialog, u"Text not found", MB_OK | MB_ICONINFORMATION);
}

class FindDialog final : public DialogBase {
public:
    FindDialog(View& searched, bool hex) : view(searched), hexPattern(hex) {}

    void Init() override {
        CentreOverParent();
        FillHistory(GetDlgItem(window, IDC_FIND_WHAT), findState.searchHistory, findState.searchText);
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
        findState.searchHistory.Add(findState.searchText);
        findState.wholeWord = IsDlgButtonChecked(window, IDC_WHOLE_WORD) == BST_CHECKED;
        findState.matchCase = IsDlgButtonChecked(window, IDC_MATCH_CASE) == BST_CHECKED;
        findState.searchUp = IsDlgButtonChecked(window, IDC_FIND_UP) == BST_CHECKED;
        if (view.FindNext(findState.searchUp, 0)) return DialogBase::Ok();
        TellNotFound(view.Host(), window);
    }

private:
    View& view;
    bool hexPattern;
};

class ReplaceDialog final : public DialogBase {
public:
    ReplaceDialog(TextEditor& searched, bool multiLine) : editor(searched), multiLineSelection(multiLine) {}

    void Init() override {
        CentreOverParent();
        FillHistory(GetDlgItem(window, IDC_FIND_WHAT), findState.searchHistory, findState.searchText);
        FillHistory(GetDlgItem(window, IDC_REPLACE_WITH), findState.replaceHistory, findState.replaceText);
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
        findState.searchHistory.Add(findState.searchText);
        findState.replaceHistory.Add(findState.replaceText);
        return true;
    }

    void StoreOptions() {
        findState.wholeWord = IsDlgButtonChecked(window, IDC_WHOLE_WORD) == BST_CHECKED;
        findState.matchCase = IsDlgButtonChecked(window, IDC_MATCH_CASE) == BST_CHECKED;
    }

    void FindNext() {
        StoreOptions();
        if (!editor.FindNext(false)) TellNotFound(editor.Surface().Host(), window);
    }

    void ReplaceOne() {
        editor.ReplaceSelection(findState.replaceText.Text(), findState.replaceText.Length());
        FindNext();
    }

    void ReplaceAll() {
        StoreOptions();
        editor.ReplaceAll(findState.replaceText.Text(), findState.replaceText.Length(),
                          IsDlgButtonChecked(window, IDC_IN_SELECTION) == BST_CHECKED);
    }

    TextEditor& editor;
    bool multiLineSelection;
};

class GoToDialog final : public DialogBase {
public:
    explicit GoToDialog(uint32_t start) : value(start) {}

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

void FindDialogs::ShowFind(HWND owner, View& view, bool hexPattern) {
    FindDialog(view, hexPattern).Run(IDD_FIND, owner);
}

void FindDialogs::ShowReplace(HWND owner, TextEditor& editor, bool multiLineSelection) {
    ReplaceDialog(editor, multiLineSelection).Run(IDD_REPLACE, owner);
}

void FindDialogs::ShowGoTo(HWND owner, TextEditor& editor) {
    GoToDialog dialog(editor.CaretLine() + 1);
    if (dialog.Run(IDD_GOTO, owner) == IDOK && dialog.value != 0) editor.GoToLine(dialog.value - 1, true);
}
