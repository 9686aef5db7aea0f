#include "app/FrameTest.h"
#include "app/Input.h"

// Keyboard macros: what is recorded, and what its playback does to whichever view is active.

namespace {

class FrameMacroTest : public FrameTest {
protected:
    bool StartRecording(const std::wstring& name, bool modified = false) {
        return editor.Keys(L"Ctrl+Shift+R") && editor.WaitForTitle(L"Recording - " + TitleOf(name, modified));
    }
    bool StopRecording(const std::wstring& name, bool modified = true) {
        return editor.Keys(L"Ctrl+Shift+R") && WaitForFile(name, modified);
    }
    // Into the document shown, which is a file without changes.
    bool Record(const std::wstring& name, const std::wstring& text) {
        return StartRecording(name) && editor.Type(text) &&
               editor.WaitForTitle(L"Recording - " + TitleOf(name, true)) && StopRecording(name);
    }
    bool Play() { return editor.Keys(L"Ctrl+Shift+P"); }
    // Waits until the command window has gone: the macro was played.
    bool Repeat(const std::wstring& times) {
        return editor.RunCommandLine(L"repeat " + times) &&
               window::WaitFor([this] { return !editor.CommandWindow() && editor.Focus() == Panes()[0]; });
    }
    bool OpenText(const std::string& text) { return OpenFile(L"a.txt", text); }
};

// Holds the editor in the middle of whatever it does, so that keys gather in its queue.
class Held {
public:
    explicit Held(HWND window)
        : thread(OpenThread(THREAD_SUSPEND_RESUME, FALSE, GetWindowThreadProcessId(window, nullptr))) {
        SuspendThread(thread);
    }
    ~Held() {
        ResumeThread(thread);
        CloseHandle(thread);
    }
    Held(const Held&) = delete;
    Held& operator=(const Held&) = delete;

private:
    HANDLE thread;
};

} // namespace

TEST_F(FrameMacroTest, PlaysWhatWasTyped) {
    ASSERT_TRUE(OpenText("text"));
    ASSERT_TRUE(Record(L"a.txt", L"xY\n"));
    ASSERT_TRUE(Play());
    ASSERT_TRUE(Play());
    EXPECT_EQ(SaveAndRead(L"a.txt"), "xY\r\nxY\r\nxY\r\ntext");
}

TEST_F(FrameMacroTest, TheModifiersAreThoseOfTheRecording) {
    ASSERT_TRUE(OpenText("0123456789"));
    ASSERT_TRUE(StartRecording(L"a.txt"));
    ASSERT_TRUE(editor.Keys(L"Ctrl+End Shift+Left Shift+Left Delete"));
    ASSERT_TRUE(editor.WaitForTitle(L"Recording - " + TitleOf(L"a.txt", true)));
    ASSERT_TRUE(editor.Keys(L"Home"));
    ASSERT_TRUE(StopRecording(L"a.txt"));
    ASSERT_TRUE(Play());
    // Afterwards no modifier is left down.
    ASSERT_TRUE(editor.Keys(L"Right Right"));
    ASSERT_TRUE(editor.Type(L"-"));
    EXPECT_EQ(SaveAndRead(L"a.txt"), "01-2345");
}

TEST_F(FrameMacroTest, PlaysIntoTheViewThatIsActive) {
    ASSERT_TRUE(OpenFiles({L"a.txt", L"b.txt"}));
    ASSERT_TRUE(Record(L"b.txt", L"x"));
    ASSERT_TRUE(editor.Keys(L"Ctrl+1"));
    ASSERT_TRUE(WaitForFile(L"a.txt"));
    ASSERT_TRUE(Play());
    ASSERT_TRUE(WaitForFile(L"a.txt", true));
    EXPECT_EQ(SaveAndRead(L"a.txt"), "xa.txt");
}

TEST_F(FrameMacroTest, TenSlotsHoldTenMacros) {
    ASSERT_TRUE(OpenText(""));
    const std::wstring digits = L"1234567890";
    for (const wchar_t digit : digits) {
        const std::wstring text(1, digit);
        ASSERT_TRUE(editor.Keys(L"Ctrl+Shift+" + text));
        EXPECT_TRUE(editor.WaitForStatus(0, L"Macro " + text + L" selected"));
        // Selecting a slot types nothing.
        ASSERT_TRUE(StartRecording(L"a.txt", digit != L'1'));
        ASSERT_TRUE(editor.Type(text));
        ASSERT_TRUE(StopRecording(L"a.txt"));
    }
    EXPECT_EQ(SaveAndRead(L"a.txt"), "1234567890");
    for (const wchar_t* digit : {L"0", L"3", L"7"}) {
        ASSERT_TRUE(editor.Keys(std::wstring(L"Ctrl+Shift+") + digit));
        ASSERT_TRUE(Play());
    }
    EXPECT_EQ(SaveAndRead(L"a.txt"), "1234567890037");
}

TEST_F(FrameMacroTest, TheSlotStaysWhileRecording) {
    ASSERT_TRUE(OpenText("text"));
    ASSERT_TRUE(StartRecording(L"a.txt"));
    ASSERT_TRUE(editor.Keys(L"Ctrl+Shift+5"));
    ASSERT_TRUE(editor.Type(L"x"));
    ASSERT_TRUE(editor.WaitForTitle(L"Recording - " + TitleOf(L"a.txt", true)));
    EXPECT_EQ(editor.Status(0).text, L"");
    ASSERT_TRUE(StopRecording(L"a.txt"));
    ASSERT_TRUE(Play());
    EXPECT_EQ(SaveAndRead(L"a.txt"), "xxtext");
    ASSERT_TRUE(editor.Keys(L"Ctrl+Shift+5"));
    ASSERT_TRUE(Play());
    ASSERT_TRUE(editor.Type(L"-"));
    EXPECT_EQ(SaveAndRead(L"a.txt"), "xx-text");
}

TEST_F(FrameMacroTest, RecordingAndStoppingAtOnceEmptiesTheSlot) {
    ASSERT_TRUE(OpenText("text"));
    ASSERT_TRUE(Record(L"a.txt", L"x"));
    ASSERT_TRUE(StartRecording(L"a.txt", true));
    ASSERT_TRUE(StopRecording(L"a.txt"));
    ASSERT_TRUE(Play());
    EXPECT_EQ(SaveAndRead(L"a.txt"), "xtext");
}

TEST_F(FrameMacroTest, PlayEndsARecordingWithoutPlayingIt) {
    ASSERT_TRUE(OpenText("text"));
    ASSERT_TRUE(StartRecording(L"a.txt"));
    ASSERT_TRUE(editor.Type(L"x"));
    ASSERT_TRUE(Play());
    ASSERT_TRUE(WaitForFile(L"a.txt", true));
    EXPECT_EQ(SaveAndRead(L"a.txt"), "xtext");
    ASSERT_TRUE(Play());
    EXPECT_EQ(SaveAndRead(L"a.txt"), "xxtext");
}

TEST_F(FrameMacroTest, TheMouseIsLockedOutWhileRecording) {
    ASSERT_TRUE(OpenText("one\ntwo\nthree\n"));
    const HWND pane = Panes()[0];
    const LPARAM below = MAKELPARAM(5, 200);
    ASSERT_TRUE(StartRecording(L"a.txt"));
    PostMessageW(pane, WM_LBUTTONDOWN, MK_LBUTTON, below);
    PostMessageW(pane, WM_LBUTTONUP, 0, below);
    ASSERT_TRUE(editor.Type(L"x"));
    EXPECT_TRUE(editor.WaitForStatus(3, L"\tCol 2"));
    EXPECT_EQ(editor.Status(2).text, L"\tLn 1");
    ASSERT_TRUE(StopRecording(L"a.txt"));
    PostMessageW(pane, WM_LBUTTONDOWN, MK_LBUTTON, below);
    PostMessageW(pane, WM_LBUTTONUP, 0, below);
    EXPECT_TRUE(editor.WaitForStatus(2, L"\tLn 4"));
}

TEST_F(FrameMacroTest, MenuCommandsAreRecorded) {
    ASSERT_TRUE(Start());
    ASSERT_TRUE(editor.WaitForTitle(L"Untitled1 - Orvane"));
    ASSERT_TRUE(editor.Keys(L"Ctrl+Shift+R"));
    ASSERT_TRUE(editor.WaitForTitle(L"Recording - Untitled1 - Orvane"));
    editor.Command(IDM_NEW);
    ASSERT_TRUE(editor.WaitForTitle(L"Recording - Untitled2 - Orvane"));
    ASSERT_TRUE(editor.Type(L"x"));
    ASSERT_TRUE(editor.WaitForTitle(L"Recording - Untitled2* - Orvane"));
    // Chosen in the menu, Play and Record are recorded themselves, and do nothing when they are played.
    editor.Command(IDM_PLAY_MACRO);
    ASSERT_TRUE(editor.WaitForTitle(L"Untitled2* - Orvane"));
    editor.Command(IDM_PLAY_MACRO);
    EXPECT_TRUE(editor.WaitForTitle(L"Untitled3* - Orvane"));
    editor.Command(IDM_PLAY_MACRO);
    EXPECT_TRUE(editor.WaitForTitle(L"Untitled4* - Orvane"));
    EXPECT_EQ(WindowItems(), (Names{L"&1 Untitled1", L"&2 Untitled2*", L"&3 Untitled3*", L"&4 Untitled4*"}));
}

TEST_F(FrameMacroTest, KeysOfTheMenuAreNotRecorded) {
    ASSERT_TRUE(OpenText("text"));
    ASSERT_TRUE(StartRecording(L"a.txt"));
    ASSERT_TRUE(editor.Type(L"x"));
    ASSERT_TRUE(editor.Keys(L"Ctrl+S"));
    ASSERT_TRUE(editor.WaitForTitle(L"Recording - " + TitleOf(L"a.txt")));
    ASSERT_TRUE(StopRecording(L"a.txt", false));
    ASSERT_TRUE(Play());
    EXPECT_TRUE(WaitForFile(L"a.txt", true)); // and is not saved
    EXPECT_EQ(files::Read(Path(L"a.txt")), "xtext");
}

TEST_F(FrameMacroTest, KeysOfTheCommandWindowPlayIntoTheView) {
    ASSERT_TRUE(OpenText("text"));
    ASSERT_TRUE(StartRecording(L"a.txt"));
    ASSERT_TRUE(editor.Keys(L"Alt+C"));
    ASSERT_TRUE(window::WaitFor([&] { return editor.CommandWindow() && editor.Focus() == editor.CommandWindow(); }));
    ASSERT_TRUE(editor.Type(L"# x"));
    ASSERT_TRUE(editor.WaitForCommandText(L"# x"));
    ASSERT_TRUE(editor.Keys(L"Enter"));
    ASSERT_TRUE(window::WaitFor([&] { return !editor.CommandWindow(); }));
    ASSERT_TRUE(StopRecording(L"a.txt", false));
    ASSERT_TRUE(Play());
    ASSERT_TRUE(WaitForFile(L"a.txt", true));
    EXPECT_EQ(SaveAndRead(L"a.txt"), "# x\r\ntext");
}

TEST_F(FrameMacroTest, NothingIsShownBeforeTheEnd) {
    ASSERT_TRUE(OpenText("text"));
    ASSERT_TRUE(StartRecording(L"a.txt"));
    ASSERT_TRUE(editor.Type(L"xy"));
    ASSERT_TRUE(editor.WaitForStatus(3, L"\tCol 3"));
    editor.Command(IDM_ABOUT);
    ASSERT_TRUE(editor.WaitForDialog());
    ASSERT_TRUE(editor.Keys(L"Escape"));
    ASSERT_TRUE(editor.WaitForNoDialog());
    ASSERT_TRUE(editor.Type(L"z"));
    ASSERT_TRUE(editor.WaitForStatus(3, L"\tCol 4"));
    ASSERT_TRUE(StopRecording(L"a.txt"));
    ASSERT_TRUE(Play());
    ASSERT_TRUE(editor.WaitForDialog());
    // Two characters are in the text, but the caret's fields are not updated.
    Settle();
    EXPECT_EQ(editor.Status(3).text, L"\tCol 4");
    ASSERT_TRUE(editor.Keys(L"Enter"));
    EXPECT_TRUE(editor.WaitForStatus(3, L"\tCol 7"));
    // The dialog has seen the release of the keys that started the playback; they are not held again after it.
    ASSERT_TRUE(editor.Type(L"q"));
    EXPECT_EQ(SaveAndRead(L"a.txt"), "xyzxyzqtext");
}

TEST_F(FrameMacroTest, ClosingAndQuittingWaitForADialogOfTheMacro) {
    ASSERT_TRUE(OpenFiles({L"a.txt", L"b.txt"}));
    ASSERT_TRUE(StartRecording(L"b.txt"));
    editor.Command(IDM_ABOUT);
    ASSERT_TRUE(editor.WaitForDialog());
    ASSERT_TRUE(editor.Keys(L"Escape"));
    ASSERT_TRUE(editor.WaitForNoDialog());
    editor.Command(IDM_CLOSE);
    ASSERT_TRUE(editor.WaitForTitle(L"Recording - " + TitleOf(L"a.txt")));
    ASSERT_TRUE(StopRecording(L"a.txt", false));
    ASSERT_TRUE(Play());
    ASSERT_TRUE(editor.WaitForDialog());
    editor.Close();
    editor.Command(IDM_CLOSE);
    PostMessageW(editor.Main(), WM_USER, 0, 0); // leave without asking
    Settle();
    EXPECT_EQ(editor.Title(), TitleOf(L"a.txt"));
    ASSERT_TRUE(editor.Keys(L"Enter"));
    EXPECT_TRUE(WaitForEndWithCodeZero());
}

TEST_F(FrameMacroTest, PanesAndDocumentsMayGoWhileItPlays) {
    ASSERT_TRUE(OpenFiles({L"a.txt", L"b.txt", L"c.txt"}));
    ASSERT_TRUE(StartRecording(L"c.txt"));
    for (const UINT command : {IDM_SPLIT_VERTICALLY, IDM_SPLIT_HORIZONTALLY, IDM_NEXT_PANE, IDM_CLOSE_PANE,
                               IDM_NEXT_PANE, IDM_CLOSE, IDM_CLOSE_PANE})
        editor.Command(command);
    ASSERT_TRUE(editor.WaitForTitle(L"Recording - " + TitleOf(L"b.txt")));
    ASSERT_TRUE(editor.Keys(L"Left"));
    ASSERT_TRUE(StopRecording(L"b.txt", false));
    EXPECT_TRUE(WaitForPaneCount(1));
    ASSERT_TRUE(Play());
    EXPECT_TRUE(WaitForFile(L"a.txt"));
    EXPECT_TRUE(WaitForPaneCount(1));
    ASSERT_TRUE(Play());
    EXPECT_TRUE(editor.WaitForTitle(L"Orvane"));
    EXPECT_TRUE(WaitForPaneCount(0));
    // Without any pane the rest of it goes nowhere.
    ASSERT_TRUE(Play());
    ASSERT_TRUE(editor.Keys(L"Ctrl+N"));
    ASSERT_TRUE(editor.WaitForTitle(L"Untitled1 - Orvane"));
    // A view that came with the playback draws like any other.
    ASSERT_TRUE(editor.Type(L"x"));
    EXPECT_TRUE(editor.WaitForStatus(3, L"\tCol 2"));
}

TEST_F(FrameMacroTest, EscapeBreaksOffWhateverWasTypedBeforeIt) {
    ASSERT_TRUE(OpenText("text"));
    ASSERT_TRUE(Record(L"a.txt", L"x"));
    ASSERT_TRUE(editor.Keys(L"Ctrl"));
    {
        const Held held(editor.Main());
        // The key that starts the playback repeats itself as long as it is held.
        ASSERT_TRUE(input::Keys(L"+Ctrl +Shift +P +P +P -P -Shift -Ctrl +Escape Right"));
    }
    EXPECT_TRUE(editor.WaitForStatus(3, L"\tCol 3"));
    ASSERT_TRUE(editor.Keys(L"-Escape"));
    EXPECT_EQ(SaveAndRead(L"a.txt"), "xtext");
    // Once only.
    ASSERT_TRUE(Play());
    EXPECT_EQ(SaveAndRead(L"a.txt"), "xtxext");
}

TEST_F(FrameMacroTest, RepeatedOverManyLinesItIsOneStep) {
    std::string lines;
    std::string commented;
    for (int i = 0; i < 50; ++i) {
        const std::string line = "line " + std::to_string(i) + "\r\n";
        lines += line;
        commented += "//" + line;
    }
    ASSERT_TRUE(OpenText(lines));
    ASSERT_TRUE(StartRecording(L"a.txt"));
    ASSERT_TRUE(editor.Keys(L"Home"));
    ASSERT_TRUE(editor.Type(L"//"));
    ASSERT_TRUE(editor.WaitForTitle(L"Recording - " + TitleOf(L"a.txt", true)));
    ASSERT_TRUE(editor.Keys(L"Down"));
    ASSERT_TRUE(StopRecording(L"a.txt"));
    ASSERT_TRUE(Repeat(L"49"));
    EXPECT_TRUE(editor.WaitForStatus(2, L"\tLn 51"));
    EXPECT_EQ(SaveAndRead(L"a.txt"), commented);
    ASSERT_TRUE(editor.Keys(L"Ctrl+Z"));
    ASSERT_TRUE(WaitForFile(L"a.txt", true));
    EXPECT_EQ(SaveAndRead(L"a.txt"), "//" + lines);
    ASSERT_TRUE(editor.Keys(L"Ctrl+Y"));
    ASSERT_TRUE(WaitForFile(L"a.txt", true));
    EXPECT_EQ(SaveAndRead(L"a.txt"), commented);
}

TEST_F(FrameMacroTest, RepeatedInSeveralDocumentsItIsOneStepInEach) {
    ASSERT_TRUE(OpenFiles({L"a.txt", L"b.txt"}));
    ASSERT_TRUE(StartRecording(L"b.txt"));
    ASSERT_TRUE(editor.Type(L"x"));
    ASSERT_TRUE(editor.WaitForTitle(L"Recording - " + TitleOf(L"b.txt", true)));
    editor.Command(IDM_NEXT_FILE);
    ASSERT_TRUE(editor.WaitForTitle(L"Recording - " + TitleOf(L"a.txt")));
    ASSERT_TRUE(StopRecording(L"a.txt", false));
    ASSERT_TRUE(Repeat(L"4"));
    EXPECT_EQ(SaveAndRead(L"a.txt"), "xxa.txt");
    ASSERT_TRUE(editor.Keys(L"Ctrl+Z"));
    ASSERT_TRUE(WaitForFile(L"a.txt", true));
    EXPECT_EQ(SaveAndRead(L"a.txt"), "a.txt");
    ASSERT_TRUE(editor.Keys(L"Ctrl+2"));
    ASSERT_TRUE(WaitForFile(L"b.txt", true));
    EXPECT_EQ(SaveAndRead(L"b.txt"), "xxxb.txt");
    ASSERT_TRUE(editor.Keys(L"Ctrl+Z"));
    ASSERT_TRUE(WaitForFile(L"b.txt", true));
    EXPECT_EQ(SaveAndRead(L"b.txt"), "xb.txt");
}

TEST_F(FrameMacroTest, RepeatedInBytesItIsOneStep) {
    ASSERT_TRUE(OpenFile(L"a.txt", "0123456789", L"-b "));
    ASSERT_TRUE(Record(L"a.txt", L"4142"));
    ASSERT_TRUE(Repeat(L"3"));
    ASSERT_TRUE(editor.WaitForStatus(2, L"0000000008"));
    EXPECT_EQ(SaveAndRead(L"a.txt"), "ABABABAB89");
    ASSERT_TRUE(editor.Keys(L"Ctrl+Z"));
    ASSERT_TRUE(WaitForFile(L"a.txt", true));
    EXPECT_EQ(SaveAndRead(L"a.txt"), "AB23456789");
}

TEST_F(FrameMacroTest, ASearchThatFailsEndsARepetition) {
    ASSERT_TRUE(OpenText("a-b-c-d"));
    ASSERT_TRUE(editor.Keys(L"Ctrl+F"));
    ASSERT_TRUE(editor.WaitForDialog());
    ASSERT_TRUE(editor.Type(L"-"));
    ASSERT_TRUE(editor.Keys(L"Enter"));
    ASSERT_TRUE(editor.WaitForNoDialog());
    ASSERT_TRUE(editor.Keys(L"Ctrl+Home"));
    ASSERT_TRUE(StartRecording(L"a.txt"));
    ASSERT_TRUE(editor.Keys(L"F3"));
    ASSERT_TRUE(editor.Type(L"+"));
    ASSERT_TRUE(editor.WaitForTitle(L"Recording - " + TitleOf(L"a.txt", true)));
    ASSERT_TRUE(StopRecording(L"a.txt"));
    ASSERT_TRUE(Repeat(L"1000000"));
    EXPECT_EQ(SaveAndRead(L"a.txt"), "a+b+c+d");
}

TEST_F(FrameMacroTest, PanesAndDocumentsMayGoWhileItIsRepeated) {
    ASSERT_TRUE(OpenFiles({L"a.txt", L"b.txt", L"c.txt"}));
    ASSERT_TRUE(StartRecording(L"c.txt"));
    for (const UINT command : {IDM_SPLIT_VERTICALLY, IDM_CLOSE_PANE, IDM_CLOSE}) editor.Command(command);
    ASSERT_TRUE(editor.WaitForTitle(L"Recording - " + TitleOf(L"b.txt")));
    ASSERT_TRUE(StopRecording(L"b.txt", false));
    ASSERT_TRUE(editor.RunCommandLine(L"repeat 5"));
    EXPECT_TRUE(editor.WaitForTitle(L"Orvane"));
    EXPECT_TRUE(WaitForPaneCount(0));
}

TEST_F(FrameMacroTest, WithoutAMacroRepeatSaysSo) {
    ASSERT_TRUE(OpenText("text"));
    ASSERT_TRUE(editor.RunCommandLine(L"repeat 2"));
    EXPECT_TRUE(editor.Answer(L"There is no macro to repeat.", L"OK"));
    ASSERT_TRUE(StartRecording(L"a.txt"));
    ASSERT_TRUE(editor.RunCommandLine(L"repeat 2"));
    EXPECT_TRUE(editor.Answer(L"A macro is being recorded.", L"OK"));
    EXPECT_EQ(editor.Title(), L"Recording - " + TitleOf(L"a.txt"));
}

TEST_F(FrameMacroTest, TheConsoleKeepsTheKeyboardAfterARepetition) {
    ASSERT_TRUE(OpenText("text"));
    ASSERT_TRUE(Record(L"a.txt", L"x"));
    ASSERT_TRUE(editor.RunCommandLine(L"console 1"));
    ASSERT_TRUE(editor.RunCommandLine(L"repeat 2"));
    EXPECT_TRUE(WaitForFocus(editor.CommandWindow()));
    EXPECT_EQ(SaveAndRead(L"a.txt"), "xxxtext");
}
