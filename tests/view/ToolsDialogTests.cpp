#include "settings/win32/ToolsDialog.h"

#include "resource.h"
#include "settings/IniFile.h"
#include "settings/ToolList.h"
#include "support/FailureInjection.h"
#include "support/ScratchFolder.h"
#include "view/DialogDriver.h"
#include "view/DialogLayout.h"

#include <algorithm>
#include <gtest/gtest.h>
#include <optional>

namespace {

// What the fields show.
struct Fields {
    std::wstring title;
    std::wstring command;
    std::wstring directory;
    LRESULT hotKey;
    bool prompt;
    bool redirect;
    bool operator==(const Fields&) const = default;
};

const Fields NoFields = {L"", L"", L"", 0, false, false};

Fields Shown(HWND tools) {
    return {
        dialog::TextOf(tools, IDC_TOOLS_TITLE),     dialog::TextOf(tools, IDC_TOOLS_COMMAND),
        dialog::TextOf(tools, IDC_TOOLS_DIRECTORY), SendDlgItemMessageW(tools, IDC_TOOLS_HOT_KEY, HKM_GETHOTKEY, 0, 0),
        dialog::IsChecked(tools, IDC_TOOLS_PROMPT), dialog::IsChecked(tools, IDC_TOOLS_REDIRECT)};
}

void SetHotKey(HWND tools, BYTE key, BYTE modifiers) {
    SendDlgItemMessageW(tools, IDC_TOOLS_HOT_KEY, HKM_SETHOTKEY, MAKEWORD(key, modifiers), 0);
}

std::vector<std::wstring> Names(HWND tools) { return dialog::ListItems(tools, IDC_TOOLS_LIST); }
int Selected(HWND tools) { return dialog::SelectedItem(tools, IDC_TOOLS_LIST); }
void Select(HWND tools, int index) { dialog::ChooseItem(tools, IDC_TOOLS_LIST, index); }

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

// A list box that has no memory for another item.
LRESULT CALLBACK RefuseItems(HWND list, UINT message, WPARAM wparam, LPARAM lparam, UINT_PTR, DWORD_PTR) {
    if (message == LB_ADDSTRING || message == LB_INSERTSTRING) return LB_ERRSPACE;
    return DefSubclassProc(list, message, wparam, lparam);
}

using Texts = std::vector<std::wstring>;

class ToolsTest : public testing::Test {
protected:
    ~ToolsTest() override { toolList.Clear(); }

    // Fills the model and the tool list.
    void Load(std::u16string text) {
        ASSERT_TRUE(file.Parse(text.data()));
        ASSERT_TRUE(toolList.Load(file));
    }
    void LoadThree() {
        file.Clear();
        Load(u"[General]\nFontSize=9\n"
             u"[Tool]\nDisplayName=One\nCommand=one.exe\nLastArgs=kept\nStartDir=C:\\1\nPromptArgs=1\n"
             u"[Tool]\nDisplayName=Two\nCommand=two.exe\nRedirectOutput=1\nHotKey=116\nHotKeyFlags=28\n"
             u"[Engine_X]\nBase=C\n"
             u"[Tool]\nDisplayName=Three\nCommand=three.exe\n");
    }
    bool Open(std::function<void(HWND)> drive, HWND owner = nullptr) {
        dialog::WhenShown(std::move(drive));
        return RunToolsDialog(owner, file, folder.Path("orvane.ini").c_str());
    }
    std::string Saved() const { return folder.Read("orvane.ini"); }

    ScratchFolder folder;
    IniFile file;
};

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
        const dialog::Scaled scaled(dpi, 8 * dpi / 96);
        Open([](HWND tools) {
            dialog::ExpectCleanLayout(tools);
            dialog::Cancel(tools);
        });
    }
}

TEST_F(ToolsTest, StandsInTheMiddleOfItsOwner) {
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
                           BYTE{VK_RIGHT}, BYTE{VK_UP}, BYTE{VK_DOWN}}) {
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

TEST_F(ToolsTest, WhatTheListHasNoRoomForIsLeftOut) {
    LoadThree();
    EXPECT_TRUE(Open([](HWND tools) {
        const HWND list = GetDlgItem(tools, IDC_TOOLS_LIST);
        Select(tools, 1);
        ASSERT_TRUE(SetWindowSubclass(list, RefuseItems, 1, 0));
        dialog::Click(tools, IDC_TOOLS_ADD);
        EXPECT_EQ(Names(tools), Texts({L"One", L"Two", L"Three"}));
        EXPECT_EQ(Selected(tools), 1);
        EXPECT_EQ(Shown(tools).title, L"Two");
        // A new name is kept, though it cannot be shown.
        dialog::SetText(tools, IDC_TOOLS_TITLE, L"Second");
        Select(tools, 0);
        EXPECT_EQ(Names(tools), Texts({L"One", L"Two", L"Three"}));
        EXPECT_EQ(Shown(tools).title, L"One");
        Select(tools, 1);
        EXPECT_EQ(Shown(tools).title, L"Second");
        RemoveWindowSubclass(list, RefuseItems, 1);
        dialog::Ok(tools);
    }));
    ASSERT_EQ(toolList.Count(), 3u);
    EXPECT_EQ(std::u16string(toolList.At(1)->displayName.Text()), u"Second");
    EXPECT_EQ(std::u16string(toolList.At(1)->command.Text()), u"two.exe");
    EXPECT_EQ(Saved().find("New Tool"), std::string::npos);
}

TEST_F(ToolsTest, ACopyWithoutMemoryIsLeftOut) {
    const uint64_t failures = FailEachAllocation([&] {
        std::optional<FailurePause> pause(std::in_place);
        LoadThree();
        bool all = false;
        dialog::WhenShown([&](HWND tools) {
            pause.emplace();
            const Texts names = Names(tools);
            all = names == Texts({L"One", L"Two", L"Three"});
            EXPECT_GE(names.size(), 2u) << "one is left out at most";
            for (int i = 0; i < static_cast<int>(names.size()); ++i) {
                Select(tools, i);
                EXPECT_EQ(Shown(tools).title, names[static_cast<size_t>(i)]);
                const Texts commands = {L"one.exe", L"two.exe", L"three.exe"};
                const bool found = std::find(commands.begin(), commands.end(), Shown(tools).command) != commands.end();
                EXPECT_TRUE(found);
            }
            dialog::Cancel(tools);
        });
        const std::u16string path = folder.Path("orvane.ini");
        pause.reset();
        EXPECT_FALSE(RunToolsDialog(nullptr, file, path.c_str()));
        return all;
    });
    EXPECT_GE(failures, 6u) << "at least a tool and a text for each";
}

TEST_F(ToolsTest, AddWithoutMemoryAddsNothing) {
    const uint64_t failures = FailEachAllocation([&] {
        std::optional<FailurePause> pause(std::in_place);
        LoadThree();
        bool added = false;
        Open([&](HWND tools) {
            Select(tools, 1);
            pause.reset();
            dialog::Click(tools, IDC_TOOLS_ADD);
            pause.emplace();
            added = Names(tools).size() == 4;
            if (!added) {
                EXPECT_EQ(Names(tools), Texts({L"One", L"Two", L"Three"}));
                EXPECT_EQ(Selected(tools), 1);
                EXPECT_EQ(Shown(tools).title, L"Two");
            }
            dialog::Cancel(tools);
        });
        return added;
    });
    EXPECT_GE(failures, 2u) << "the tool and its name";
}

TEST_F(ToolsTest, OkWithoutMemoryKeepsTheToolsAndTheFile) {
    const uint64_t failures = FailEachAllocation([&] {
        std::optional<FailurePause> pause(std::in_place);
        LoadThree();
        folder.Write("orvane.ini", "as it was");
        const bool stored = Open([&](HWND tools) {
            dialog::SetText(tools, IDC_TOOLS_TITLE, L"First");
            pause.reset();
            dialog::Ok(tools);
        });
        pause.emplace();
        EXPECT_EQ(toolList.Count(), 3u);
        const std::u16string name = toolList.At(0)->displayName.Text();
        EXPECT_TRUE(name == u"One" || name == u"First");
        if (!stored) {
            EXPECT_EQ(name, u"One");
            EXPECT_EQ(Saved(), "as it was");
        }
        uint32_t sections = 0;
        for (const IniSection* section = file.sections.head; section; section = section->next) ++sections;
        EXPECT_EQ(sections, 5u);
        return stored && name == u"First" && Saved().find("DisplayName=First\r\n") != std::string::npos;
    });
    EXPECT_GE(failures, 10u);
}

TEST_F(ToolsTest, AFileThatCannotBeWrittenIsPassedOver) {
    LoadThree();
    std::filesystem::create_directory(folder.File("orvane.ini"));
    EXPECT_TRUE(Open([](HWND tools) {
        dialog::SetText(tools, IDC_TOOLS_TITLE, L"First");
        dialog::Ok(tools);
    }));
    ASSERT_EQ(toolList.Count(), 3u);
    EXPECT_EQ(std::u16string(toolList.At(0)->displayName.Text()), u"First");
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
        dialog::Click(tools, IDC_TOOLS_DELETE);
        EXPECT_TRUE(Names(tools).empty());
        EXPECT_EQ(Shown(tools), NoFields);
        dialog::Click(tools, IDC_TOOLS_ADD);
        EXPECT_EQ(Names(tools), Texts({L"New Tool"}));
        dialog::Cancel(tools);
    });
}

TEST_F(ToolsTest, OkRewritesTheToolSectionsByteForByte) {
    LoadThree();
    EXPECT_TRUE(Open([](HWND tools) {
        dialog::SetText(tools, IDC_TOOLS_TITLE, L"Fi\u00E4rst");
        Select(tools, 1);
        dialog::Click(tools, IDC_TOOLS_DELETE);
        dialog::Click(tools, IDC_TOOLS_REDIRECT);
        SetHotKey(tools, VK_F9, HOTKEYF_ALT);
        dialog::Ok(tools);
    }));
    EXPECT_EQ(Saved(), "[General]\r\nFontSize=9\r\n\r\n[Engine_X]\r\nBase=C\r\n\r\n"
                       "[Tool]\r\nDisplayName=Fi\xC3\xA4rst\r\nCommand=one.exe\r\nStartDir=C:\\1\r\nLastArgs=kept\r\n"
                       "PromptArgs=1\r\n\r\n"
                       "[Tool]\r\nDisplayName=Three\r\nCommand=three.exe\r\nRedirectOutput=1\r\nHotKey=120\r\n"
                       "HotKeyFlags=16\r\n");
    ASSERT_EQ(toolList.Count(), 2u);
    EXPECT_EQ(std::u16string(toolList.At(0)->displayName.Text()), u"Fi\u00E4rst");
    EXPECT_EQ(std::u16string(toolList.At(0)->lastArgs.Text()), u"kept");
}

TEST_F(ToolsTest, AToolWithoutACommandIsWrittenButNotKept) {
    EXPECT_TRUE(Open([](HWND tools) {
        dialog::Click(tools, IDC_TOOLS_ADD);
        dialog::Click(tools, IDC_TOOLS_ADD);
        dialog::SetText(tools, IDC_TOOLS_COMMAND, L"x");
        dialog::Ok(tools);
    }));
    EXPECT_EQ(Saved(),
              "[Tool]\r\nDisplayName=New Tool\r\nCommand=\r\n\r\n[Tool]\r\nDisplayName=New Tool\r\nCommand=x\r\n");
    EXPECT_EQ(toolList.Count(), 1u);
}

TEST_F(ToolsTest, CancelChangesNothing) {
    LoadThree();
    folder.Write("orvane.ini", "as it was");
    EXPECT_FALSE(Open([](HWND tools) {
        dialog::SetText(tools, IDC_TOOLS_TITLE, L"First");
        dialog::Click(tools, IDC_TOOLS_ADD);
        Select(tools, 1);
        dialog::Click(tools, IDC_TOOLS_DELETE);
        dialog::Cancel(tools);
    }));
    EXPECT_EQ(Saved(), "as it was");
    ASSERT_EQ(toolList.Count(), 3u);
    EXPECT_EQ(std::u16string(toolList.At(0)->displayName.Text()), u"One");
    EXPECT_EQ(std::u16string(toolList.At(1)->displayName.Text()), u"Two");
}

TEST_F(ToolsTest, AToolListOfThousands) {
    std::u16string text;
    for (int i = 0; i < 5000; ++i) text += u"[Tool]\nDisplayName=Tool\nCommand=x\n";
    Load(text);
    EXPECT_TRUE(Open([](HWND tools) {
        EXPECT_EQ(Names(tools).size(), 5000u);
        Select(tools, 4999);
        dialog::SetText(tools, IDC_TOOLS_TITLE, L"Last");
        Select(tools, 0);
        dialog::Click(tools, IDC_TOOLS_DELETE);
        dialog::Ok(tools);
    }));
    ASSERT_EQ(toolList.Count(), 4999u);
    EXPECT_EQ(std::u16string(toolList.At(4998)->displayName.Text()), u"Last");
}
