// The Tools dialog of the real program, worked with keys.

#include "app/FrameTest.h"

namespace {

class ToolsDialogTest : public FrameTest {
protected:
    // Starts the editor with three tools and opens the dialog.
    void Open(const std::string& before = Tools) {
        ASSERT_TRUE(files::Write(files::SettingsPath(), before));
        ASSERT_TRUE(OpenFiles({L"a.txt"}));
        dialog = OpenDialog(IDM_CUSTOMIZE);
        ASSERT_TRUE(dialog);
    }
    HWND Control(int number) const { return GetDlgItem(dialog, number); }
    LRESULT Ask(int number, UINT message, WPARAM first = 0, LPARAM second = 0) const {
        DWORD_PTR answer = 0;
        SendMessageTimeoutW(Control(number), message, first, second, SMTO_ABORTIFHUNG, 5000, &answer);
        return static_cast<LRESULT>(answer);
    }
    Names List() const {
        Names names;
        for (LRESULT i = 0; i < Ask(IDC_TOOLS_LIST, LB_GETCOUNT); ++i) {
            wchar_t name[64] = {};
            Ask(IDC_TOOLS_LIST, LB_GETTEXT, static_cast<WPARAM>(i), reinterpret_cast<LPARAM>(name));
            names.push_back(name);
        }
        return names;
    }
    bool WaitForHotKey(BYTE key, BYTE modifiers) const {
        return window::WaitFor(
            // The mark of keys beside the keypad is the control's own affair.
            [&] { return (Ask(IDC_TOOLS_HOT_KEY, HKM_GETHOTKEY) & ~(HOTKEYF_EXT << 8)) == MAKEWORD(key, modifiers); });
    }
    static std::string Saved() { return files::Read(files::SettingsPath()); }
    // No tool begins with an H.
    bool EnterHotKeyField() { return ReachWith(L"Alt+H", Control(IDC_TOOLS_HOT_KEY)); }

    static constexpr char Tools[] = "[Tool]\r\nDisplayName=One\r\nCommand=one\r\n\r\n"
                                    "[Tool]\r\nDisplayName=Two\r\nCommand=two\r\n\r\n"
                                    "[Tool]\r\nDisplayName=Three\r\nCommand=three\r\n";
    HWND dialog = nullptr;
};

} // namespace

TEST_F(ToolsDialogTest, KeysOfAHotKeyAreNoMnemonics) {
    Open();
    ASSERT_TRUE(EnterHotKeyField());
    for (const wchar_t letter : std::wstring(L"ACDHIPRT")) {
        ASSERT_TRUE(editor.Keys(std::wstring(L"Alt+") + letter));
        ASSERT_TRUE(WaitForHotKey(static_cast<BYTE>(letter), HOTKEYF_ALT)) << static_cast<char>(letter);
        // What a mnemonic does would be done before the next key.
        ASSERT_TRUE(editor.Keys(L"F7"));
        ASSERT_TRUE(WaitForHotKey(VK_F7, 0)) << static_cast<char>(letter);
    }
    EXPECT_EQ(List(), Names({L"One", L"Two", L"Three"}));
    EXPECT_EQ(editor.Focus(), Control(IDC_TOOLS_HOT_KEY));
    EXPECT_EQ(Ask(IDC_TOOLS_PROMPT, BM_GETCHECK), BST_UNCHECKED);
    EXPECT_EQ(Ask(IDC_TOOLS_REDIRECT, BM_GETCHECK), BST_UNCHECKED);
}

TEST_F(ToolsDialogTest, EveryCombinationWithModifiersCanBeAHotKey) {
    Open();
    ASSERT_TRUE(EnterHotKeyField());
    const struct {
        const wchar_t* keys;
        BYTE key;
        BYTE modifiers;
    } combinations[] = {{L"Ctrl+K", 'K', HOTKEYF_CONTROL},
                        {L"Alt+D", 'D', HOTKEYF_ALT},
                        {L"Ctrl+Alt+D", 'D', HOTKEYF_CONTROL | HOTKEYF_ALT},
                        {L"Shift+F5", VK_F5, HOTKEYF_SHIFT},
                        {L"Shift+Alt+T", 'T', HOTKEYF_SHIFT | HOTKEYF_ALT},
                        {L"Ctrl+Shift+Home", VK_HOME, HOTKEYF_CONTROL | HOTKEYF_SHIFT},
                        {L"Ctrl+Shift+Alt+P", 'P', HOTKEYF_CONTROL | HOTKEYF_SHIFT | HOTKEYF_ALT}};
    for (const auto& combination : combinations) {
        ASSERT_TRUE(editor.Keys(combination.keys));
        ASSERT_TRUE(WaitForHotKey(combination.key, combination.modifiers)) << combination.key;
    }
    ASSERT_TRUE(editor.Keys(L"Enter"));
    ASSERT_TRUE(WaitUntilSaved());
    const std::string others = "\r\n[Tool]\r\nDisplayName=Two\r\nCommand=two\r\n"
                               "\r\n[Tool]\r\nDisplayName=Three\r\nCommand=three\r\n";
    const std::string expected = "[Tool]\r\nDisplayName=One\r\nCommand=one\r\nHotKey=80\r\nHotKeyFlags=28\r\n" + others;
    EXPECT_EQ(Saved(), expected);
}

TEST_F(ToolsDialogTest, MnemonicsLeadToTheFieldsAndPressTheButtons) {
    Open();
    ASSERT_TRUE(EnterHotKeyField());
    ASSERT_TRUE(editor.Keys(L"Tab")); // there Alt+letter would be a hot key
    ASSERT_TRUE(WaitForFocus(Control(IDC_TOOLS_PROMPT)));
    for (const auto& [keys, control] : {std::pair{L"Alt+T", IDC_TOOLS_TITLE}, std::pair{L"Alt+C", IDC_TOOLS_COMMAND},
                                        std::pair{L"Alt+I", IDC_TOOLS_DIRECTORY}}) {
        EXPECT_TRUE(editor.Keys(keys));
        EXPECT_TRUE(WaitForFocus(Control(control))) << control;
    }
    ASSERT_TRUE(editor.Keys(L"Alt+P Alt+R Alt+D"));
    EXPECT_TRUE(window::WaitFor([&] { return List() == Names({L"Two", L"Three"}); }));
    ASSERT_TRUE(editor.Keys(L"Alt+P Alt+A"));
    EXPECT_TRUE(window::WaitFor([&] { return List() == Names({L"Two", L"Three", L"New Tool"}); }));
    ASSERT_TRUE(editor.Keys(L"Enter"));
    ASSERT_TRUE(WaitUntilSaved());
    EXPECT_EQ(Saved(), "[Tool]\r\nDisplayName=Two\r\nCommand=two\r\nPromptArgs=1\r\n"
                       "\r\n[Tool]\r\nDisplayName=Three\r\nCommand=three\r\n"
                       "\r\n[Tool]\r\nDisplayName=New Tool\r\nCommand=\r\n");
}

TEST_F(ToolsDialogTest, OkWritesTheWholeFile) {
    Open("; a remark\n[Tool]\nCommand=one\nDisplayName=One\nOther=dropped\n[General]\nMine=kept\n"
         "[Tool]\nDisplayName=None\n[Engine_X]\nBase=C\n");
    EXPECT_EQ(List(), Names({L"One"}));
    ASSERT_TRUE(editor.Keys(L"Enter"));
    ASSERT_TRUE(WaitUntilSaved());
    EXPECT_EQ(Saved(), "[General]\r\nMine=kept\r\n\r\n[Engine_X]\r\nBase=C\r\n\r\n"
                       "[Tool]\r\nDisplayName=One\r\nCommand=one\r\n");
}

TEST_F(ToolsDialogTest, CancelLeavesTheFileAsItIs) {
    const std::string before = "; a remark\n[Tool]\nDisplayName=One\nCommand=one\nOther=kept\n[General]\nMine=kept";
    Open(before);
    ASSERT_TRUE(EnterHotKeyField());
    ASSERT_TRUE(editor.Keys(L"Alt+K Tab Alt+P Alt+A Alt+D Escape"));
    ASSERT_TRUE(WaitUntilSaved());
    EXPECT_EQ(Saved(), before);
}

TEST_F(ToolsDialogTest, ItsDialogsAreCentredOverTheFrame) {
    Open("[Tool]\nDisplayName=One\nCommand=one\nPromptArgs=1\n");
    EXPECT_TRUE(WaitUntilCentred(dialog));
    ASSERT_TRUE(editor.Keys(L"Escape"));
    ASSERT_TRUE(editor.WaitForNoDialog());
    dialog = OpenDialog(IDM_FIRST_TOOL);
    ASSERT_TRUE(dialog);
    EXPECT_TRUE(WaitUntilCentred(dialog));
    ASSERT_TRUE(editor.Keys(L"Escape"));
    EXPECT_TRUE(editor.WaitForNoDialog());
}
