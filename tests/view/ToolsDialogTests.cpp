// The Tools dialog: how it looks, its list and its fields.

#include "view/ToolsTest.h"

#include "view/DialogLayout.h"

namespace {

// Presses and releases the mouse on an item that can be seen.
void ClickItem(HWND tools, int index) {
    const HWND list = GetDlgItem(tools, IDC_TOOLS_LIST);
    RECT area = {};
    SendMessageW(list, LB_GETITEMRECT, static_cast<WPARAM>(index), reinterpret_cast<LPARAM>(&area));
    const LPARAM place = MAKELPARAM(area.left + 5, (area.top + area.bottom) / 2);
    SendMessageW(list, WM_LBUTTONDOWN, MK_LBUTTON, place);
    SendMessageW(list, WM_LBUTTONUP, 0, place);
}

LRESULT FirstVisible(HWND tools) { return SendDlgItemMessageW(tools, IDC_TOOLS_LIST, LB_GETTOPINDEX, 0, 0); }

} // namespace

TEST_F(ToolsTest, HasItsCaptionAndLabels) {
    Open([](HWND tools) {
        wchar_t text[64] = {};
        GetWindowTextW(tools, text, 64);
        EXPECT_STREQ(text, L"Tools");
        const std::pair<int, const wchar_t*> labels[] = {{IDC_TOOLS_TITLE, L"&Title:"},
                                                         {IDC_TOOLS_COMMAND, L"&Command:"},
                                                         {IDC_TOOLS_DIRECTORY, L"&Initial Directory:"},
                                                         {IDC_TOOLS_HOT_KEY, L"&Hot Key:"}};
        for (const auto& [control, label] : labels) {
            GetWindowTextW(GetWindow(GetDlgItem(tools, control), GW_HWNDPREV), text, 64);
            EXPECT_STREQ(text, label);
        }
        EXPECT_EQ(dialog::TextOf(tools, IDC_TOOLS_ADD), L"&Add");
        EXPECT_EQ(dialog::TextOf(tools, IDC_TOOLS_DELETE), L"&Delete");
        EXPECT_EQ(dialog::TextOf(tools, IDC_TOOLS_PROMPT), L"&Prompt for arguments");
        EXPECT_EQ(dialog::TextOf(tools, IDC_TOOLS_REDIRECT), L"&Redirect output");
        dialog::Cancel(tools);
    });
}

TEST_F(ToolsTest, IsLaidOutCleanlyAndReachedByKeys) {
    Open([](HWND tools) {
        dialog::ExpectCleanLayout(tools);
        EXPECT_EQ(dialog::TabOrder(tools),
                  std::vector<int>({IDC_TOOLS_LIST, IDC_TOOLS_ADD, IDC_TOOLS_DELETE, IDC_TOOLS_TITLE, IDC_TOOLS_COMMAND,
                                    IDC_TOOLS_DIRECTORY, IDC_TOOLS_HOT_KEY, IDC_TOOLS_PROMPT, IDC_TOOLS_REDIRECT, IDOK,
                                    IDCANCEL}));
        EXPECT_EQ(dialog::Mnemonics(tools), L"acdhiprt");
        dialog::Cancel(tools);
    });
}

TEST_F(ToolsTest, IsLaidOutCleanlyOnFinerScreens) {
    for (const int dpi : {120, 144, 192}) {
        SCOPED_TRACE(dpi);
        const dialog::Scaled scaled(dpi, dialog::FontPoints * dpi / 96);
        Open([](HWND tools) {
            dialog::ExpectCleanLayout(tools);
            dialog::Cancel(tools);
        });
    }
}

TEST_F(ToolsTest, IsInTheMiddleOfItsOwner) {
    const dialog::Parent owner(801, 603);
    Open(
        [&](HWND tools) {
            dialog::ExpectCentred(tools, owner.Get());
            dialog::Cancel(tools);
        },
        owner.Get());
}

TEST_F(ToolsTest, ListsTheToolsAndShowsTheFirst) {
    LoadThree();
    Open([](HWND tools) {
        EXPECT_EQ(Names(tools), Texts({L"One", L"Two", L"Three"}));
        EXPECT_EQ(Selected(tools), 0);
        EXPECT_EQ(Shown(tools), (Fields{L"One", L"one.exe", L"C:\\1", 0, true, false}));
        dialog::Cancel(tools);
    });
}

TEST_F(ToolsTest, SelectingShowsTheToolAndItsHotKey) {
    LoadThree();
    Open([](HWND tools) {
        Select(tools, 1);
        const LRESULT allModifiers = MAKEWORD(VK_F5, HOTKEYF_SHIFT | HOTKEYF_CONTROL | HOTKEYF_ALT);
        EXPECT_EQ(Shown(tools), (Fields{L"Two", L"two.exe", L"", allModifiers, false, true}));
        Select(tools, 2);
        EXPECT_EQ(Shown(tools), (Fields{L"Three", L"three.exe", L"", 0, false, false}));
        Select(tools, 0);
        EXPECT_EQ(Shown(tools).title, L"One");
        dialog::Cancel(tools);
    });
}

TEST_F(ToolsTest, WithoutToolsTheFieldsAreEmpty) {
    Open([](HWND tools) {
        EXPECT_TRUE(Names(tools).empty());
        EXPECT_EQ(Shown(tools), NoFields);
        dialog::SetText(tools, IDC_TOOLS_TITLE, L"nobody's");
        dialog::Click(tools, IDC_TOOLS_DELETE);
        EXPECT_TRUE(Names(tools).empty());
        dialog::Ok(tools);
    });
    EXPECT_EQ(toolList.Count(), 0u);
    EXPECT_EQ(Saved(), "");
}

TEST_F(ToolsTest, SelectingAnotherStoresTheFields) {
    LoadThree();
    Open([](HWND tools) {
        dialog::SetText(tools, IDC_TOOLS_TITLE, L"First");
        dialog::SetText(tools, IDC_TOOLS_COMMAND, L"first.exe /x");
        dialog::SetText(tools, IDC_TOOLS_DIRECTORY, L"%DIR%");
        dialog::Click(tools, IDC_TOOLS_PROMPT);
        dialog::Click(tools, IDC_TOOLS_REDIRECT);
        SetHotKey(tools, 'K', HOTKEYF_CONTROL);
        const Fields edited = Shown(tools);
        Select(tools, 2);
        EXPECT_EQ(Names(tools), Texts({L"First", L"Two", L"Three"}));
        EXPECT_EQ(Selected(tools), 2);
        EXPECT_EQ(Shown(tools).title, L"Three");
        Select(tools, 0);
        EXPECT_EQ(Shown(tools), edited);
        dialog::Cancel(tools);
    });
}

TEST_F(ToolsTest, HotKeysAreStoredWithTheFlagsOfAccelerators) {
    LoadThree();
    const std::pair<BYTE, uint32_t> modifiers[] = {{HOTKEYF_SHIFT, 4},
                                                   {HOTKEYF_CONTROL, 8},
                                                   {HOTKEYF_ALT, 16},
                                                   {HOTKEYF_SHIFT | HOTKEYF_ALT, 20},
                                                   {HOTKEYF_SHIFT | HOTKEYF_CONTROL | HOTKEYF_ALT, 28}};
    for (const auto& [control, flags] : modifiers) {
        Open([held = control](HWND tools) {
            SetHotKey(tools, VK_F7, held);
            dialog::Ok(tools);
        });
        EXPECT_EQ(toolList.At(0)->hotKey, static_cast<uint32_t>(VK_F7));
        EXPECT_EQ(toolList.At(0)->hotKeyFlags, flags);
        Open([held = control](HWND tools) {
            EXPECT_EQ(Shown(tools).hotKey, MAKEWORD(VK_F7, held));
            dialog::Cancel(tools);
        });
    }
}

TEST_F(ToolsTest, KeysBesideTheKeypadAreShownByTheirOwnNames) {
    LoadThree();
    for (const BYTE key : {BYTE{VK_INSERT}, BYTE{VK_HOME}, BYTE{VK_END}, BYTE{VK_PRIOR}, BYTE{VK_NEXT}, BYTE{VK_LEFT},
                           BYTE{VK_RIGHT}, BYTE{VK_UP}, BYTE{VK_DOWN}, BYTE{VK_DELETE}, BYTE{VK_DIVIDE}}) {
        toolList.At(0)->hotKey = key;
        toolList.At(0)->hotKeyFlags = 8;
        Open([key](HWND tools) {
            EXPECT_EQ(Shown(tools).hotKey, MAKEWORD(key, HOTKEYF_CONTROL | HOTKEYF_EXT));
            dialog::Ok(tools);
        });
        EXPECT_EQ(toolList.At(0)->hotKey, key);
        EXPECT_EQ(toolList.At(0)->hotKeyFlags, 8u) << "the mark is the control's alone";
    }
    for (const BYTE key : {BYTE{VK_NUMPAD7}, BYTE{VK_MULTIPLY}, BYTE{VK_F1}, BYTE{'0'}}) {
        toolList.At(0)->hotKey = key;
        Open([key](HWND tools) {
            EXPECT_EQ(Shown(tools).hotKey, MAKEWORD(key, HOTKEYF_CONTROL));
            dialog::Cancel(tools);
        });
    }
}

TEST_F(ToolsTest, ChoosingDoesNotScrollTheList) {
    std::u16string text;
    for (int i = 0; i < 100; ++i) text += u"[Tool]\nDisplayName=Tool\nCommand=x\n";
    Load(text);
    Open([](HWND tools) {
        SendDlgItemMessageW(tools, IDC_TOOLS_LIST, LB_SETTOPINDEX, 40, 0);
        ClickItem(tools, 43);
        EXPECT_EQ(FirstVisible(tools), 40);
        EXPECT_EQ(Selected(tools), 43);
        EXPECT_EQ(Shown(tools).title, L"Tool");
        // Neither with a new name, be it shown or scrolled away.
        dialog::SetText(tools, IDC_TOOLS_TITLE, L"First");
        ClickItem(tools, 45);
        EXPECT_EQ(FirstVisible(tools), 40);
        EXPECT_EQ(Selected(tools), 45);
        dialog::SetText(tools, IDC_TOOLS_TITLE, L"Second");
        SendDlgItemMessageW(tools, IDC_TOOLS_LIST, LB_SETTOPINDEX, 80, 0);
        ClickItem(tools, 81);
        EXPECT_EQ(FirstVisible(tools), 80);
        EXPECT_EQ(Selected(tools), 81);
        EXPECT_EQ(Shown(tools).title, L"Tool");
        Texts expected(100, L"Tool");
        expected[43] = L"First";
        expected[45] = L"Second";
        EXPECT_EQ(Names(tools), expected);
        dialog::Cancel(tools);
    });
}

TEST_F(ToolsTest, EveryItemCarriesItsTool) {
    LoadThree();
    Open([](HWND tools) {
        const auto tool = [tools](int index) {
            const auto at = static_cast<WPARAM>(index);
            return reinterpret_cast<const ToolRecord*>(
                SendDlgItemMessageW(tools, IDC_TOOLS_LIST, LB_GETITEMDATA, at, 0));
        };
        ASSERT_NE(tool(1), nullptr);
        const ToolRecord* second = tool(1);
        EXPECT_NE(second, toolList.At(1)) << "a copy";
        EXPECT_EQ(std::u16string(second->command.Text()), u"two.exe");
        Select(tools, 1);
        dialog::SetText(tools, IDC_TOOLS_TITLE, L"Second");
        Select(tools, 0);
        EXPECT_EQ(tool(1), second) << "also under its new name";
        EXPECT_EQ(std::u16string(second->displayName.Text()), u"Second");
        dialog::Cancel(tools);
    });
}

TEST_F(ToolsTest, AddAppendsANewToolAndSelectsIt) {
    LoadThree();
    Open([](HWND tools) {
        dialog::SetText(tools, IDC_TOOLS_TITLE, L"First");
        dialog::Click(tools, IDC_TOOLS_ADD);
        EXPECT_EQ(Names(tools), Texts({L"First", L"Two", L"Three", L"New Tool"}));
        EXPECT_EQ(Selected(tools), 3);
        EXPECT_EQ(Shown(tools), (Fields{L"New Tool", L"", L"", 0, false, false}));
        dialog::SetText(tools, IDC_TOOLS_COMMAND, L"new.exe");
        dialog::Ok(tools);
    });
    ASSERT_EQ(toolList.Count(), 4u);
    EXPECT_EQ(std::u16string(toolList.At(3)->command.Text()), u"new.exe");
}

TEST_F(ToolsTest, DeleteSelectsWhatFollowsOrTheLast) {
    LoadThree();
    Open([](HWND tools) {
        Select(tools, 1);
        dialog::Click(tools, IDC_TOOLS_DELETE);
        EXPECT_EQ(Names(tools), Texts({L"One", L"Three"}));
        EXPECT_EQ(Selected(tools), 1);
        EXPECT_EQ(Shown(tools).title, L"Three");
        dialog::Click(tools, IDC_TOOLS_DELETE);
        EXPECT_EQ(Names(tools), Texts({L"One"}));
        EXPECT_EQ(Selected(tools), 0);
        EXPECT_EQ(Shown(tools).title, L"One");
        SetHotKey(tools, VK_F7, HOTKEYF_CONTROL); // so that every field has something to clear
        dialog::Click(tools, IDC_TOOLS_REDIRECT);
        dialog::Click(tools, IDC_TOOLS_DELETE);
        EXPECT_TRUE(Names(tools).empty());
        EXPECT_EQ(Shown(tools), NoFields);
        dialog::Click(tools, IDC_TOOLS_ADD);
        EXPECT_EQ(Names(tools), Texts({L"New Tool"}));
        dialog::Cancel(tools);
    });
}
