// Where the keyboard focus is after a line of the command window, and what the frame makes of Ctrl.

#include "app/CommandLanguage.h"
#include "document/TextBuffer.h"
#include "resource.h"
#include "settings/ToolList.h"
#include "support/ScratchFolder.h"
#include "support/WithAdditional.h"
#include "view/OwnFrameTest.h"
#include "view/ProcessRecorder.h"

namespace {

class FrameFocusTest : public OwnFrameTest {
protected:
    void SetUp() override {
        ASSERT_NO_FATAL_FAILURE(OwnFrameTest::SetUp());
        main->Commands().NewDocument();
        main->Commands().NewDocument();
        ASSERT_EQ(main->Commands().Documents().Count(), 2u);
        SetForegroundWindow(main->Window());
    }
    void TearDown() override {
        Hold(false);
        OwnFrameTest::TearDown();
    }
    HWND CommandLine() const { return FindWindowExW(main->Window(), nullptr, WC_EDITW, nullptr); }
    Document* MostRecent() const { return main->Commands().Documents().MostRecent(); }

    static void Hold(bool ctrl, bool alt = false) {
        BYTE states[256] = {};
        GetKeyboardState(states);
        states[VK_CONTROL] = ctrl ? 0x80 : 0;
        states[VK_MENU] = alt ? 0x80 : 0;
        SetKeyboardState(states);
    }
    bool Offer(UINT message, WPARAM wparam) const {
        MSG offered = {};
        offered.hwnd = main->Window();
        offered.message = message;
        offered.wParam = wparam;
        return main->PreDispatchKey(offered);
    }
};

TEST_F(FrameFocusTest, TheConsoleKeepsItInTheCommandWindow) {
    const ProcessRecorder recorder;
    const auto answer = [](HWND, LPCWSTR, LPCWSTR, UINT) -> int { return IDOK; };
    const ReplacedImport box("MessageBoxW", reinterpret_cast<void*>(static_cast<decltype(&MessageBoxW)>(answer)));
    ASSERT_TRUE(box.IsImported());
    Command(IDM_COMMAND_WINDOW);
    ASSERT_EQ(GetFocus(), CommandLine());
    for (const Char* line : {u"one", u"opened", u"two"}) {
        main->Commands().commands.console = true;
        ExecuteCommandLine(main->Commands(), line);
        EXPECT_EQ(GetFocus(), CommandLine()) << testing::PrintToString(std::u16string(line));
    }
    EXPECT_EQ(recorder.Calls().size(), 1u) << "the other is refused while the first one runs";
    // A tool that is run from a pane leaves it there.
    const HWND pane = FindWindowExW(main->Window(), nullptr, L"OrvaneVWnd", nullptr);
    SetFocus(pane);
    ExecuteCommandLine(main->Commands(), u"opened");
    EXPECT_EQ(GetFocus(), pane);
}

TEST_F(FrameFocusTest, TheConsoleKeepsItFromAToolOfTheMenuToo) {
    const ProcessRecorder recorder;
    auto* const tool = new ToolRecord;
    ASSERT_TRUE(tool->command.Assign(u"one"));
    tool->redirectOutput = 1;
    toolList.tools.Append(tool);
    main->Commands().commands.console = true;
    Command(IDM_COMMAND_WINDOW);
    ASSERT_EQ(GetFocus(), CommandLine());
    Command(IDM_FIRST_TOOL);
    EXPECT_EQ(recorder.Calls().size(), 1u);
    EXPECT_EQ(GetFocus(), CommandLine());
}

// Like any other file: editing is what the user has asked for.
TEST_F(FrameFocusTest, AFileThatIsEditedGetsItFromTheConsoleAlsoWhenItsPaneIsTheActiveOne) {
    const ScratchFolder folder;
    const std::u16string shown = u"edit " + folder.Write("shown.txt", "text");
    const std::u16string other = u"edit " + folder.Write("other.txt", "text");
    for (const std::u16string& line : {shown, other, shown, shown}) {
        main->Commands().commands.console = true;
        Command(IDM_COMMAND_WINDOW);
        ASSERT_EQ(GetFocus(), CommandLine());
        ExecuteCommandLine(main->Commands(), line.c_str());
        EXPECT_EQ(GetFocus(), FindWindowExW(main->Window(), nullptr, L"OrvaneVWnd", nullptr)) << line.size();
        EXPECT_TRUE(IsWindowVisible(CommandLine()));
        Command(IDM_COMMAND_WINDOW);
    }
}

TEST_F(FrameFocusTest, SwitchingEndsWithTheFirstMessageAfterCtrlIsUp) {
    struct Case {
        UINT message;
        WPARAM wparam;
    };
    for (const Case next : {Case{WM_KEYUP, VK_CONTROL}, Case{WM_SYSKEYUP, VK_CONTROL}, Case{WM_TIMER, 1},
                            Case{WM_KEYDOWN, 'A'}, Case{WM_MOUSEMOVE, 0}}) {
        Document* const before = MostRecent();
        Hold(true);
        EXPECT_TRUE(Offer(WM_KEYDOWN, VK_TAB));
        EXPECT_FALSE(Offer(WM_KEYUP, VK_TAB));
        EXPECT_FALSE(Offer(WM_TIMER, 1));
        EXPECT_EQ(MostRecent(), before) << "the order is frozen while Ctrl is down";
        Hold(false);
        EXPECT_FALSE(Offer(next.message, next.wparam));
        EXPECT_NE(MostRecent(), before) << next.message;
    }
}

class FrameTypingTest : public FrameFocusTest {
protected:
    void SetUp() override {
        ASSERT_NO_FATAL_FAILURE(FrameFocusTest::SetUp());
        SetFocus(Pane());
    }
    HWND Pane() const { return FindWindowExW(main->Window(), nullptr, L"OrvaneVWnd", nullptr); }
    // What the message loop does with it.
    void Take(const MSG& message) const {
        if (!main->PreDispatchKey(message)) DispatchMessageW(&message);
    }
    std::u16string Text() const {
        auto& text = static_cast<TextBuffer&>(*MostRecent());
        EXPECT_TRUE(text.CommitEdit());
        return text.Content();
    }
};

// An input method may commit what it has composed with a key with Ctrl, which the macro does not hold.
TEST_F(FrameTypingTest, WhatIsComposedIsRecordedAsTypedText) {
    Command(IDM_RECORD_MACRO);
    Hold(true);
    for (const Char c : std::u16string(u"\u65E5\U00020BB7")) SendMessageW(Pane(), WM_IME_CHAR, c, 1);
    MSG message;
    while (PeekMessageW(&message, Pane(), WM_APP, 0xBFFF, PM_REMOVE)) Take(message);
    Hold(false);
    Command(IDM_RECORD_MACRO);
    EXPECT_EQ(Text(), u"\u65E5\U00020BB7");
    Command(IDM_PLAY_MACRO);
    EXPECT_EQ(Text(), u"\u65E5\U00020BB7\u65E5\U00020BB7");
}

TEST_F(FrameTypingTest, WhatAltGrTypesIsRecordedAndPlayed) {
    const WithAdditional on;
    on->AltGr = 1;
    Command(IDM_RECORD_MACRO);
    Hold(true, true);
    MSG message = {};
    message.hwnd = Pane();
    message.message = WM_CHAR;
    message.wParam = u'\u20AC';
    message.lParam = 1;
    Take(message);
    Hold(false);
    Command(IDM_RECORD_MACRO);
    EXPECT_EQ(Text(), u"\u20AC");
    Command(IDM_PLAY_MACRO);
    EXPECT_EQ(Text(), u"\u20AC\u20AC");
    on->AltGr = 0;
    Command(IDM_PLAY_MACRO);
    EXPECT_EQ(Text(), u"\u20AC\u20AC") << "as when it is typed";
}

} // namespace
