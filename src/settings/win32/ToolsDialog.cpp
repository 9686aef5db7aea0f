#include "settings/win32/ToolsDialog.h"

#include "base/Text.h"
#include "base/win32/WindowSubclass.h"
#include "base/win32/WindowText.h"
#include "resource.h"
#include "settings/IniFile.h"
#include "settings/ToolList.h"
#include "settings/win32/DialogBase.h"

#include <utility>

namespace {

// The hot-key control's modifier bits and the accelerator's.
struct ModifierPair {
    uint32_t control;
    uint32_t accelerator;
};

constexpr ModifierPair Modifiers[] = {
    {HOTKEYF_SHIFT, HotKeyFlag::Shift},
    {HOTKEYF_CONTROL, HotKeyFlag::Ctrl},
    {HOTKEYF_ALT, HotKeyFlag::Alt},
};

// Whether a key has a double on the keypad: the control then shows "Home" and not the keypad's "Num 7".
bool IsExtended(uint32_t key) {
    return (key >= VK_PRIOR && key <= VK_DOWN) || key == VK_INSERT || key == VK_DELETE || key == VK_DIVIDE;
}

// The hot-key control uses up a key that is typed with Alt, but its character is in the queue already and would be
// a mnemonic of the dialog: Alt+D would delete the tool. Alt+Space stays the key of the window's menu.
LRESULT CALLBACK HotKeyProcedure(HWND control, UINT message, WPARAM wparam, LPARAM lparam, UINT_PTR, DWORD_PTR guard) {
    if (message == WM_NCDESTROY) reinterpret_cast<WindowSubclass*>(guard)->Remove();
    const LRESULT answer = DefSubclassProc(control, message, wparam, lparam);
    MSG character;
    if (message == WM_SYSKEYDOWN && wparam != VK_SPACE)
        PeekMessageW(&character, control, WM_SYSCHAR, WM_SYSCHAR, PM_REMOVE);
    return answer;
}

class ToolsDialog final : public DialogBase {
public:
    void Init() override {
        CentreOverParent();
        list = GetDlgItem(window, IDC_TOOLS_LIST);
        // Refused, keys with Alt are mnemonics as well.
        static_cast<void>(hotKeys.Set(GetDlgItem(window, IDC_TOOLS_HOT_KEY), HotKeyProcedure, &hotKeys));
        for (const ToolRecord* tool = toolList.tools.head; tool; tool = tool->next) Append(CopyTool(*tool));
        Select(0);
    }

    bool Message(UINT message, WPARAM wparam, LPARAM lparam) override {
        if (message == WM_COMMAND && LOWORD(wparam) == IDC_TOOLS_LIST && HIWORD(wparam) == LBN_SELCHANGE) {
            const int chosen = Selection();
            StoreFields();
            Select(chosen);
            return false;
        }
        return DialogBase::Message(message, wparam, lparam);
    }

    void Command(uint32_t identifier) override {
        if (identifier == IDC_TOOLS_ADD)
            Add();
        else if (identifier == IDC_TOOLS_DELETE)
            Delete();
        else
            DialogBase::Command(identifier);
    }

    void Ok() override {
        StoreFields();
        DialogBase::Ok();
    }

    // The edited tools, in list order.
    ToolList edited;

private:
    int Selection() const { return static_cast<int>(SendMessageW(list, LB_GETCURSEL, 0, 0)); }
    int Last() const { return static_cast<int>(SendMessageW(list, LB_GETCOUNT, 0, 0)) - 1; }
    // The tool in the fields; null when there is none.
    ToolRecord* Shown() const {
        if (shown < 0) return nullptr;
        return reinterpret_cast<ToolRecord*>(SendMessageW(list, LB_GETITEMDATA, static_cast<WPARAM>(shown), 0));
    }

    // Every item has its tool as data. A position of -1 is the end.
    bool InsertItem(const ToolRecord& tool, int position) {
        const LRESULT at = SendMessageW(list, LB_INSERTSTRING, static_cast<WPARAM>(position),
                                        reinterpret_cast<LPARAM>(tool.displayName.Text()));
        if (at < 0) return false;
        SendMessageW(list, LB_SETITEMDATA, static_cast<WPARAM>(at), reinterpret_cast<LPARAM>(&tool));
        return true;
    }

    // Takes the tool, if there is one; a tool that finds no place in the list box is left out.
    bool Append(ToolRecord* tool) {
        if (!tool || !InsertItem(*tool, -1)) {
            delete tool;
            return false;
        }
        edited.tools.Append(tool);
        return true;
    }

    // Shows the new name of the tool in the fields; the list is not scrolled. The new item comes first: when there
    // is no memory for it, the old one stays.
    void RenameItem(const ToolRecord& tool) {
        const int selected = Selection();
        const LRESULT top = SendMessageW(list, LB_GETTOPINDEX, 0, 0);
        if (!InsertItem(tool, shown)) return;
        SendMessageW(list, LB_DELETESTRING, static_cast<WPARAM>(shown) + 1, 0);
        SendMessageW(list, LB_SETCURSEL, static_cast<WPARAM>(selected), 0);
        SendMessageW(list, LB_SETTOPINDEX, static_cast<WPARAM>(top), 0);
    }

    // Shows the tool at a position in the fields; they are cleared when there is none.
    void Select(int position) {
        // One that was clicked stays where it is, even if only a part of it is visible.
        if (position != Selection()) SendMessageW(list, LB_SETCURSEL, static_cast<WPARAM>(position), 0);
        shown = Selection();
        const ToolRecord* tool = Shown();
        SetDlgItemTextW(window, IDC_TOOLS_TITLE, tool ? Wide(tool->displayName.Text()) : L"");
        SetDlgItemTextW(window, IDC_TOOLS_COMMAND, tool ? Wide(tool->command.Text()) : L"");
        SetDlgItemTextW(window, IDC_TOOLS_DIRECTORY, tool ? Wide(tool->startDir.Text()) : L"");
        CheckDlgButton(window, IDC_TOOLS_PROMPT, tool && tool->promptArgs ? BST_CHECKED : BST_UNCHECKED);
        CheckDlgButton(window, IDC_TOOLS_REDIRECT, tool && tool->redirectOutput ? BST_CHECKED : BST_UNCHECKED);
        ShowHotKey(tool ? tool->hotKey : 0, tool ? tool->hotKeyFlags : 0);
    }

    void ShowHotKey(uint32_t key, uint32_t flags) {
        uint32_t modifiers = IsExtended(key) ? HOTKEYF_EXT : 0;
        for (const ModifierPair& pair : Modifiers)
            if (flags & pair.accelerator) modifiers |= pair.control;
        const WPARAM value = MAKEWORD(key, modifiers);
        SendDlgItemMessageW(window, IDC_TOOLS_HOT_KEY, HKM_SETHOTKEY, value, 0);
    }

    void StoreHotKey(ToolRecord& tool) {
        const LRESULT value = SendDlgItemMessageW(window, IDC_TOOLS_HOT_KEY, HKM_GETHOTKEY, 0, 0);
        tool.hotKey = LOBYTE(value);
        tool.hotKeyFlags = 0;
        for (const ModifierPair& pair : Modifiers)
            if (HIBYTE(value) & pair.control) tool.hotKeyFlags += pair.accelerator;
    }

    void StoreFields() {
        ToolRecord* tool = Shown();
        if (!tool) return;
        WString title;
        if (TextOfWindow(GetDlgItem(window, IDC_TOOLS_TITLE), title) &&
            !Text::Equal(title.Text(), tool->displayName.Text())) {
            tool->displayName = std::move(title);
            RenameItem(*tool);
        }
        // Without memory each keeps what it was.
        static_cast<void>(TextOfWindow(GetDlgItem(window, IDC_TOOLS_COMMAND), tool->command));
        static_cast<void>(TextOfWindow(GetDlgItem(window, IDC_TOOLS_DIRECTORY), tool->startDir));
        tool->promptArgs = IsDlgButtonChecked(window, IDC_TOOLS_PROMPT) == BST_CHECKED;
        tool->redirectOutput = IsDlgButtonChecked(window, IDC_TOOLS_REDIRECT) == BST_CHECKED;
        StoreHotKey(*tool);
    }

    void Add() {
        StoreFields();
        ToolRecord* tool = new ToolRecord;
        if (tool && !tool->displayName.Assign(u"New Tool")) {
            delete tool;
            return;
        }
        if (Append(tool)) Select(Last());
    }

    void Delete() {
        StoreFields();
        ToolRecord* tool = Shown();
        if (!tool) return;
        const int position = shown;
        SendMessageW(list, LB_DELETESTRING, static_cast<WPARAM>(position), 0);
        edited.tools.Remove(tool);
        delete tool;
        Select(position > Last() ? Last() : position);
    }

    HWND list = nullptr;
    WindowSubclass hotKeys; // HotKeyProcedure
    int shown = -1;         // position of the tool in the fields
};

} // namespace

bool RunToolsDialog(HWND owner, IniFile& file) {
    ToolsDialog dialog;
    if (dialog.Run(IDD_TOOLS, owner) != IDOK || !dialog.edited.Store(file)) return false;
    static_cast<void>(toolList.Load(file)); // without memory the next start has them
    return true;
}
