// The frame's menu and keys of tools, and how a tool is started that runs by itself.

#include "base/Heap.h"
#include "resource.h"
#include "settings/ToolList.h"
#include "view/DialogDriver.h"
#include "view/OwnFrameTest.h"
#include "view/ProcessRecorder.h"

#include <optional>

namespace {

ToolRecord* AddTool(const std::u16string& command) {
    auto* const tool = new ToolRecord;
    EXPECT_TRUE(tool->command.Assign(command.c_str()) && tool->displayName.Assign(command.c_str()));
    toolList.tools.Append(tool);
    return tool;
}

std::u16string Numbered(uint32_t number) {
    const std::string digits = std::to_string(number);
    return u"tool" + std::u16string(digits.begin(), digits.end());
}

using FrameToolTest = OwnFrameTest;

// A frame with more tools than there are numbers for them. What goes into its menu is recorded: so many
// real items take the system many seconds.
class FrameManyToolsTest : public OwnFrameTest {
protected:
    struct Item {
        UINT position;
        UINT number;
        std::wstring text;
    };

    void BeforeFrame() override {
        for (uint32_t i = 0; i < 20000; ++i) AddTool(Numbered(i));
        items.clear();
        insert.emplace("InsertMenuW", reinterpret_cast<void*>(Insert));
        EXPECT_TRUE(insert->IsImported());
    }
    void TearDown() override {
        insert.reset();
        OwnFrameTest::TearDown();
    }

    static inline std::vector<Item> items;

private:
    static BOOL WINAPI Insert(HMENU, UINT position, UINT, UINT_PTR number, LPCWSTR text) {
        items.push_back({position, static_cast<UINT>(number), text});
        return TRUE;
    }

    std::optional<ReplacedImport> insert;
};

} // namespace

TEST_F(FrameToolTest, ADetachedToolIsStartedInSightInAGroupOfItsOwn) {
    ToolRecord& tool = *AddTool(u"some.exe /x");
    ASSERT_TRUE(tool.startDir.Assign(u"C:\\some folder"));
    const ProcessRecorder recorder;
    Command(IDM_FIRST_TOOL);
    ASSERT_EQ(recorder.Calls().size(), 1u);
    const ProcessRecorder::Call& call = recorder.Calls()[0];
    EXPECT_FALSE(call.namesProgram);
    EXPECT_EQ(call.line, L"some.exe /x ");
    EXPECT_EQ(call.directory, L"C:\\some folder");
    EXPECT_EQ(call.flags, DWORD{CREATE_NEW_PROCESS_GROUP});
    EXPECT_TRUE(call.inherits);
    EXPECT_FALSE(call.hasSecurity);
    EXPECT_FALSE(call.hasEnvironment);
    EXPECT_EQ(call.startup.cb, sizeof(STARTUPINFOW));
    EXPECT_EQ(call.startup.dwFlags, DWORD{STARTF_USESHOWWINDOW});
    EXPECT_EQ(call.startup.wShowWindow, SW_SHOWNORMAL);
    EXPECT_TRUE(recorder.IsClosed(call.process)) << "it is not waited for";
    EXPECT_TRUE(recorder.IsClosed(call.thread));
}

TEST_F(FrameToolTest, WhereTheInterpreterCannotRunNothingIsStartedAndThatIsReported) {
    static std::vector<std::wstring> messages;
    messages.clear();
    const auto take = [](HWND, LPCWSTR text, LPCWSTR, UINT) -> int {
        messages.push_back(text);
        return IDOK;
    };
    const ReplacedImport box("MessageBoxW", reinterpret_cast<void*>(static_cast<decltype(&MessageBoxW)>(take)));
    const ProcessRecorder recorder;
    ToolRecord& tool = *AddTool(u"some.exe");
    tool.redirectOutput = 1;
    for (const std::u16string directory : {u"\\\\server\\share", u"\\\\?\\C:\\folder"}) {
        ASSERT_TRUE(tool.startDir.Assign(directory.c_str()));
        messages.clear();
        Command(IDM_FIRST_TOOL);
        ASSERT_EQ(messages.size(), 1u);
        EXPECT_TRUE(messages[0].ends_with(std::wstring(directory.begin(), directory.end())));
    }
    EXPECT_TRUE(recorder.Calls().empty());
    EXPECT_EQ(main->Commands().Documents().Count(), 0u);
}

TEST_F(FrameToolTest, ADetachedToolWithoutAFolderIsStartedInTheCurrentOne) {
    AddTool(u"some.exe");
    wchar_t current[MAX_PATH];
    ASSERT_NE(GetCurrentDirectoryW(MAX_PATH, current), 0u);
    const ProcessRecorder recorder;
    Command(IDM_FIRST_TOOL);
    EXPECT_EQ(recorder.Calls().at(0).directory, current);
}

TEST_F(FrameToolTest, ADetachedToolWhoseCommandIsTooLongIsNotStartedInPart) {
    const std::u16string longest(32766 - 1, u'x'); // and a blank
    AddTool(longest + u"x");
    AddTool(longest);
    const ProcessRecorder recorder;
    Command(IDM_FIRST_TOOL);
    EXPECT_TRUE(recorder.Calls().empty());
    Command(IDM_FIRST_TOOL + 1);
    EXPECT_EQ(recorder.Calls().size(), 1u);
}

TEST_F(FrameToolTest, WithoutMemoryForTheArgumentsNothingIsRunWithOthers) {
    ToolRecord& tool = *AddTool(u"some.exe");
    ASSERT_TRUE(tool.lastArgs.Assign(u"old"));
    tool.promptArgs = 1;
    const ProcessRecorder recorder;
    dialog::WhenShown([&](HWND prompt) {
        dialog::SetText(prompt, IDC_TOOL_ARGUMENTS_EDIT, L"new arguments");
        Heap::SetFailureHook([] { return true; });
        dialog::Ok(prompt);
        Heap::SetFailureHook(nullptr);
        EXPECT_TRUE(IsWindowVisible(prompt)) << "a dialog that ends is hidden at once";
        EXPECT_EQ(std::u16string(tool.lastArgs.Text()), u"old");
        dialog::Ok(prompt);
    });
    Command(IDM_FIRST_TOOL);
    ASSERT_EQ(recorder.Calls().size(), 1u);
    EXPECT_EQ(recorder.Calls()[0].line, L"some.exe new arguments");
}

TEST_F(FrameManyToolsTest, ToolsWithoutANumberHaveNoItemAndNoOthersNumber) {
    ASSERT_EQ(items.size(), 0x10000u - IDM_FIRST_TOOL);
    for (UINT i = 0; i < items.size(); ++i) {
        ASSERT_EQ(items[i].number, IDM_FIRST_TOOL + i);
        ASSERT_EQ(items[i].position, items[0].position + i);
    }
    EXPECT_EQ(items.back().text, L"tool19535");
    const ProcessRecorder recorder;
    Command(0xFFFF);
    ASSERT_EQ(recorder.Calls().size(), 1u);
    EXPECT_EQ(recorder.Calls()[0].line, L"tool19535 ");
}

// The system would take them for commands of its own menu of the window.
TEST_F(FrameToolTest, HotKeysOfFarToolsAreNoCommandsOfTheSystem) {
    for (UINT number = IDM_FIRST_TOOL; number <= 0xFFFF; ++number) AddTool(u"tool");
    toolList.At(1)->hotKey = VK_F9;
    for (const UINT number : {SC_CLOSE, SC_MINIMIZE, SC_MAXIMIZE, SC_RESTORE, SC_MOVE, SC_SIZE})
        toolList.At(number - IDM_FIRST_TOOL)->hotKey = VK_F7;
    store.RebuildToolAccelerators();
    const ProcessRecorder recorder;
    const auto press = [&](WPARAM key) {
        MSG message = {};
        message.hwnd = main->Window();
        message.message = WM_KEYDOWN;
        message.wParam = key;
        return TranslateAcceleratorW(main->Window(), store.ToolAccelerators(), &message) != 0;
    };
    EXPECT_FALSE(press(VK_F7));
    ASSERT_TRUE(IsWindow(main->Window()));
    EXPECT_TRUE(press(VK_F9));
    EXPECT_EQ(recorder.Calls().size(), 1u);
}
