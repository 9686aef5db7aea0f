// The Tools dialog without memory.

#include "view/ToolsTest.h"

#include "support/FailureInjection.h"

#include <algorithm>
#include <optional>

namespace {

// A list box that has no memory for another item.
LRESULT CALLBACK RefuseItems(HWND list, UINT message, WPARAM wparam, LPARAM lparam, UINT_PTR, DWORD_PTR) {
    if (message == LB_ADDSTRING || message == LB_INSERTSTRING) return LB_ERRSPACE;
    return DefSubclassProc(list, message, wparam, lparam);
}

// Whether the tools of LoadThree were written into the model: after all other sections then.
bool AreStored(const IniFile& file) { return std::u16string(file.sections.head->next->name.Text()) == u"Engine_X"; }

// The bytes of the model, which has none but ASCII characters.
std::string Written(const IniFile& file) {
    WString text;
    EXPECT_TRUE(file.Serialise(text));
    return std::string(text.Text(), text.Text() + text.Length());
}

} // namespace

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
        pause.reset();
        EXPECT_FALSE(RunToolsDialog(nullptr, file));
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
        EXPECT_EQ(stored, AreStored(file));
        EXPECT_EQ(toolList.Count(), 3u);
        const std::u16string name = toolList.At(0)->displayName.Text();
        EXPECT_TRUE(name == u"One" || (stored && name == u"First"));
        EXPECT_TRUE(Saved() == "as it was" || (stored && Saved() == Written(file)));
        uint32_t sections = 0;
        for (const IniSection* section = file.sections.head; section; section = section->next) ++sections;
        EXPECT_EQ(sections, 5u);
        return stored && name == u"First" && Saved().find("DisplayName=First\r\n") != std::string::npos;
    });
    EXPECT_GE(failures, 10u);
}
