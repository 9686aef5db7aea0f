#include "app/FrameTest.h"

#include <set>

// The menu: what is enabled in which situation, the commands that open something, and where the window is.

namespace {

class FrameMenuTest : public FrameTest {
protected:
    // The numbers of the fixed commands that are greyed.
    std::set<UINT> Greyed() {
        std::set<UINT> numbers;
        for (int popup = FileMenu; popup <= HelpMenu; popup++)
            for (const MenuItem& item : Menu(static_cast<MenuIndex>(popup)))
                if (item.number && !item.enabled && item.number < IDM_FIRST_DOCUMENT) numbers.insert(item.number);
        return numbers;
    }
    std::wstring RemoteText(uint64_t address) {
        std::wstring text;
        for (wchar_t unit = 0; Remote().Read(address, &unit, sizeof unit) && unit; address += sizeof unit) text += unit;
        return text;
    }
};

} // namespace

TEST_F(FrameMenuTest, WithoutADocumentOnlyWhatNeedsNoneIsEnabled) {
    ASSERT_TRUE(Start());
    ASSERT_TRUE(editor.Keys(L"Ctrl+F4"));
    ASSERT_TRUE(editor.WaitForTitle(L"Orvane"));
    EXPECT_EQ(Greyed(), (std::set<UINT>{IDM_CLOSE,
                                        IDM_SAVE,
                                        IDM_SAVE_AS,
                                        IDM_SAVE_ALL,
                                        IDM_UNDO,
                                        IDM_REDO,
                                        IDM_CUT,
                                        IDM_COPY,
                                        IDM_PASTE,
                                        IDM_DELETE,
                                        IDM_SELECT_ALL,
                                        IDM_COPY_HTML,
                                        IDM_FIND,
                                        IDM_REPLACE,
                                        IDM_GOTO,
                                        IDM_BOOKMARK,
                                        IDM_QUICK_OPEN,
                                        IDM_STOP_TOOL,
                                        IDM_NEXT_PANE,
                                        IDM_PREVIOUS_PANE,
                                        IDM_SPLIT_VERTICALLY,
                                        IDM_CLOSE_PANE,
                                        IDM_NEXT_FILE,
                                        IDM_SPLIT_HORIZONTALLY,
                                        IDM_PREVIOUS_FILE,
                                        IDM_CLOSE_OUTPUT_WINDOWS}));
}

TEST_F(FrameMenuTest, WithADocumentItsStateDecides) {
    ASSERT_TRUE(OpenFiles({L"a.txt"}));
    ASSERT_TRUE(clipboard::Clear());
    std::set<UINT> greyed = Greyed();
    for (const UINT number : {IDM_UNDO, IDM_REDO, IDM_PASTE, IDM_STOP_TOOL, IDM_CLOSE_PANE, IDM_CLOSE_OUTPUT_WINDOWS})
        EXPECT_TRUE(greyed.count(number)) << number;
    for (const UINT number : {IDM_CLOSE, IDM_SAVE, IDM_SAVE_AS, IDM_SAVE_ALL, IDM_SELECT_ALL, IDM_FIND, IDM_REPLACE,
                              IDM_GOTO, IDM_BOOKMARK, IDM_QUICK_OPEN, IDM_SPLIT_VERTICALLY, IDM_SPLIT_HORIZONTALLY})
        EXPECT_FALSE(greyed.count(number)) << number;
    ASSERT_TRUE(clipboard::SetText(L"text"));
    ASSERT_TRUE(Modify(L"a.txt"));
    ASSERT_TRUE(editor.Keys(L"Alt+Right"));
    ASSERT_TRUE(WaitForPaneCount(2));
    greyed = Greyed();
    for (const UINT number : {IDM_UNDO, IDM_PASTE, IDM_CLOSE_PANE}) EXPECT_FALSE(greyed.count(number)) << number;
    EXPECT_TRUE(greyed.count(IDM_REDO));
    ASSERT_TRUE(editor.Keys(L"Ctrl+Z"));
    ASSERT_TRUE(WaitForFile(L"a.txt"));
    greyed = Greyed();
    EXPECT_TRUE(greyed.count(IDM_UNDO));
    EXPECT_FALSE(greyed.count(IDM_REDO));
}

TEST_F(FrameMenuTest, EveryCommandIsSurvivedWithoutADocument) {
    ASSERT_TRUE(Start());
    ASSERT_TRUE(editor.Keys(L"Ctrl+F4"));
    ASSERT_TRUE(editor.WaitForTitle(L"Orvane"));
    // What shows a dialog, leaves, starts a browser, or makes the first document has tests of its own.
    const std::set<UINT> others = {IDM_EXIT,    IDM_ABOUT,     IDM_ONLINE_HELP,  IDM_NEW,       IDM_OPEN,
                                   IDM_OPTIONS, IDM_CUSTOMIZE, IDM_RECORD_MACRO, IDM_PLAY_MACRO};
    for (UINT number = 40001; number <= 40045; number++)
        if (!others.count(number)) editor.Command(number);
    for (const UINT number : {45000u, 45001u, 45999u, 46000u, 46001u, 65535u}) editor.Command(number);
    Settle();
    EXPECT_FALSE(editor.Dialog());
    EXPECT_EQ(editor.Title(), L"Orvane");
    ASSERT_TRUE(editor.Keys(L"Escape Ctrl+N"));
    EXPECT_TRUE(editor.WaitForTitle(L"Untitled2 - Orvane"));
}

TEST_F(FrameMenuTest, F1AndOnlineHelpOpenTheHelpPage) {
    const std::wstring program = files::ProgramPath();
    ASSERT_TRUE(files::Exists(program.substr(0, program.rfind(L'\\') + 1) + L"orvane.html")) << "the build makes it";
    ASSERT_TRUE(OpenFiles({L"a.txt"}));
    const uint64_t notes = Remote().Allocate(sizeof(RemoteProcess::ReplacedCall));
    ASSERT_TRUE(Remote().Replace(L"shell32.dll", "ShellExecuteW", notes, 42));
    RemoteProcess::ReplacedCall call = {};
    const auto waitForCalls = [&](uint64_t count) {
        return window::WaitFor([&] { return Remote().Read(notes, &call, sizeof call) && call.count == count; });
    };
    editor.Command(IDM_ONLINE_HELP);
    ASSERT_TRUE(waitForCalls(1));
    EXPECT_EQ(call.arguments[0], reinterpret_cast<uint64_t>(editor.Main()));
    EXPECT_EQ(RemoteText(call.arguments[1]), L"open");
    ASSERT_TRUE(editor.Keys(L"F1"));
    ASSERT_TRUE(waitForCalls(2));
    // In the command window, too.
    ASSERT_TRUE(editor.Keys(L"Alt+C"));
    ASSERT_TRUE(window::WaitFor([&] { return editor.CommandWindow() && editor.Focus() == editor.CommandWindow(); }));
    ASSERT_TRUE(editor.Keys(L"F1"));
    EXPECT_TRUE(waitForCalls(3));
}

TEST_F(FrameMenuTest, AboutIsAnsweredWithEscape) {
    ASSERT_TRUE(OpenFiles({L"a.txt"}));
    editor.Command(IDM_ABOUT);
    ASSERT_TRUE(editor.WaitForDialog());
    EXPECT_NE(window::DialogText(editor.Dialog()).find(L"Orvane"), std::wstring::npos);
    ASSERT_TRUE(editor.Keys(L"Escape"));
    EXPECT_TRUE(editor.WaitForNoDialog());
    EXPECT_TRUE(Modify(L"a.txt"));
}

TEST_F(FrameMenuTest, TheWindowStartsWhereItCanBeSeenAndMoved) {
    ASSERT_TRUE(Start());
    MONITORINFO monitor = {};
    monitor.cbSize = sizeof monitor;
    // None when it lies outside every monitor.
    const HMONITOR nearest = MonitorFromWindow(editor.Main(), MONITOR_DEFAULTTONULL);
    ASSERT_NE(nearest, nullptr);
    ASSERT_TRUE(GetMonitorInfoW(nearest, &monitor));
    RECT window = {};
    GetWindowRect(editor.Main(), &window);
    RECT shown = {};
    ASSERT_TRUE(IntersectRect(&shown, &window, &monitor.rcWork));
    EXPECT_GE(window.top, monitor.rcWork.top);
    EXPECT_GE(shown.right - shown.left, 300);
    EXPECT_GE(shown.bottom - shown.top, 200);
}
