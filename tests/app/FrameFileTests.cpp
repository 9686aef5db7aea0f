#include "app/FrameTest.h"

#include <algorithm>

// Files that come by drops and wildcards, and files that other programs change while they are open.

namespace {

class FrameFileTest : public FrameTest {
protected:
    // Another program writes the file, some seconds later.
    bool Change(const std::wstring& name, const std::string& bytes, int seconds = 10) {
        return files::Write(Path(name), bytes) && files::MoveTime(Path(name), seconds);
    }
    bool AnswerReopen(const wchar_t* name, const wchar_t* button) {
        return editor.Answer(ReopenQuestion(Path(name)), button);
    }
    // A question with a name that does not fit on a line; what it is broken by is not compared.
    bool AnswerLong(const std::wstring& question, const std::wstring& button) {
        const auto withoutBreaks = [](std::wstring text) {
            text.erase(std::remove(text.begin(), text.end(), L'\n'), text.end());
            return text;
        };
        const HWND box = editor.WaitForDialog();
        EXPECT_EQ(withoutBreaks(window::DialogText(box)), withoutBreaks(question));
        EXPECT_TRUE(FitsOnTheScreen(box));
        return window::PressButton(box, button) && window::WaitFor([&] { return !IsWindow(box); });
    }
    // The same for one of which even the middle is left out.
    bool AnswerShortened(const std::wstring& begin, const std::wstring& end, const std::wstring& button) {
        const HWND box = editor.WaitForDialog();
        const std::wstring text = window::DialogText(box);
        EXPECT_TRUE(text.starts_with(begin)) << files::Utf8(text);
        EXPECT_TRUE(text.ends_with(end)) << files::Utf8(text);
        EXPECT_NE(text.find(L"\x2026"), std::wstring::npos);
        EXPECT_TRUE(FitsOnTheScreen(box));
        return window::PressButton(box, button) && window::WaitFor([&] { return !IsWindow(box); });
    }
    static bool FitsOnTheScreen(HWND box) {
        RECT place = {};
        GetWindowRect(box, &place);
        return place.right - place.left <= GetSystemMetrics(SM_CXSCREEN) &&
               place.bottom - place.top <= GetSystemMetrics(SM_CYSCREEN);
    }
    // A number of files that are not looked at.
    Names MakeFiles(int count, const wchar_t* extension) {
        Names paths;
        for (int i = 0; i < count; i++) {
            paths.push_back(Path(std::to_wstring(1000 + i) + extension));
            EXPECT_TRUE(files::Write(paths.back(), "text"));
        }
        return paths;
    }
};

} // namespace

TEST_F(FrameFileTest, DroppedFilesOpenInTheirOrderAndMissingOnesAreSkipped) {
    for (const wchar_t* name : {L"b.txt", L"a.txt", L"c.txt"}) ASSERT_TRUE(files::Write(Path(name), "1\n2"));
    ASSERT_TRUE(Start());
    ASSERT_TRUE(editor.WaitForTitle(L"Untitled1 - Orvane"));
    Drop({Path(L"b.txt"), Path(L"missing.txt"), Path(L"a.txt"), Path(L"c.txt")});
    EXPECT_TRUE(editor.Answer(L"Failed opening file: " + Path(L"missing.txt"), L"OK"));
    EXPECT_TRUE(WaitForFile(L"c.txt"));
    EXPECT_EQ(WindowItems(),
              (Names{L"&1 Untitled1", L"&2 " + Path(L"b.txt"), L"&3 " + Path(L"a.txt"), L"&4 " + Path(L"c.txt")}));
    EXPECT_TRUE(editor.WaitForStatus(2, L"\tLn 1"));
}

TEST_F(FrameFileTest, AThousandDroppedFilesOpen) {
    const Names paths = MakeFiles(1000, L".txt");
    ASSERT_TRUE(Start());
    ASSERT_TRUE(editor.WaitForTitle(L"Untitled1 - Orvane"));
    Drop(paths);
    EXPECT_TRUE(editor.WaitForTitle(paths.back() + L" - Orvane"));
    EXPECT_EQ(Panes().size(), 1u);
    ASSERT_TRUE(editor.Keys(L"Ctrl+2"));
    EXPECT_TRUE(editor.WaitForTitle(paths[0] + L" - Orvane"));
    // Beyond the thousandth the numbers of the menu are those of the tools.
    const uint64_t last = IDM_FIRST_DOCUMENT + 999;
    editor.Command(last);
    EXPECT_TRUE(editor.WaitForTitle(paths[998] + L" - Orvane"));
}

TEST_F(FrameFileTest, AThousandMatchesOfAWildcardOpen) {
    MakeFiles(1000, L".txt");
    ASSERT_TRUE(Start());
    ASSERT_TRUE(editor.WaitForTitle(L"Untitled1 - Orvane"));
    ASSERT_TRUE(editor.RunCommandLine(L"e *.txt"));
    ASSERT_TRUE(window::WaitFor([&] { return editor.Title().ends_with(L".txt - Orvane"); }));
    editor.Command(IDM_FIRST_DOCUMENT + 999);
    EXPECT_TRUE(window::WaitFor([&] { return editor.Title().ends_with(L".txt - Orvane"); }));
    ASSERT_TRUE(editor.Type(L"x"));
    EXPECT_TRUE(window::WaitFor([&] { return editor.Title().ends_with(L".txt* - Orvane"); }));
}

TEST_F(FrameFileTest, ManyFailuresMakeOneShortMessage) {
    for (int i = 0; i < 30; i++) ASSERT_TRUE(files::MakeFolder(Path(L"d" + std::to_wstring(100 + i))));
    ASSERT_TRUE(Start());
    Names paths;
    for (int i = 0; i < 30; i++) paths.push_back(Path(L"d" + std::to_wstring(100 + i)));
    Drop(paths);
    ASSERT_TRUE(editor.WaitForDialog());
    const std::wstring text = window::DialogText(editor.Dialog());
    EXPECT_TRUE(text.starts_with(L"Failed opening file: " + paths[0] + L"\n" + paths[1] + L"\n"));
    EXPECT_TRUE(text.ends_with(paths[9] + L"\n(and 20 more)")) << std::count(text.begin(), text.end(), L'\n');
    EXPECT_TRUE(window::PressButton(editor.Dialog(), L"OK"));
    EXPECT_TRUE(editor.WaitForNoDialog());
}

TEST_F(FrameFileTest, TwoChangedFilesGiveTwoQuestionsInListOrder) {
    ASSERT_TRUE(OpenFiles({L"a.txt", L"b.txt", L"c.txt"}));
    // The start activates the program, too: not between the two changes.
    ASSERT_TRUE(editor.Keys(L"") && editor.Settle());
    ASSERT_TRUE(Change(L"c.txt", "new c"));
    ASSERT_TRUE(Change(L"a.txt", "new a"));
    Activate();
    EXPECT_TRUE(AnswerReopen(L"a.txt", L"No"));
    EXPECT_TRUE(AnswerReopen(L"c.txt", L"Yes"));
    EXPECT_TRUE(editor.WaitForNoDialog());
    // No keeps the text and is not asked again.
    Activate();
    Settle();
    Settle();
    EXPECT_FALSE(editor.Dialog());
    ASSERT_TRUE(Modify(L"c.txt"));
    EXPECT_EQ(SaveAndRead(L"c.txt"), "xnew c");
    ASSERT_TRUE(editor.Keys(L"Ctrl+1"));
    ASSERT_TRUE(WaitForFile(L"a.txt"));
    ASSERT_TRUE(Modify(L"a.txt"));
    EXPECT_EQ(SaveAndRead(L"a.txt"), "xa.txt");
}

TEST_F(FrameFileTest, CancelKeepsTheTextToo) {
    ASSERT_TRUE(OpenFiles({L"a.txt"}));
    ASSERT_TRUE(Change(L"a.txt", "new"));
    Activate();
    EXPECT_TRUE(AnswerReopen(L"a.txt", L"Cancel"));
    Activate();
    Settle();
    Settle();
    EXPECT_FALSE(editor.Dialog());
    ASSERT_TRUE(Modify(L"a.txt"));
    EXPECT_EQ(SaveAndRead(L"a.txt"), "xa.txt");
}

TEST_F(FrameFileTest, AFileThatChangesTenTimesDuringTheQuestionIsAskedAboutOnce) {
    ASSERT_TRUE(OpenFiles({L"a.txt"}));
    int seconds = 10;
    for (const wchar_t* button : {L"Yes", L"No"}) {
        ASSERT_TRUE(Change(L"a.txt", "change", ++seconds));
        Activate();
        ASSERT_TRUE(editor.WaitForDialog());
        for (int i = 1; i <= 10; i++) {
            ASSERT_TRUE(Change(L"a.txt", "change " + std::to_string(i), ++seconds));
            Activate();
        }
        Settle();
        EXPECT_EQ(window::TopLevel(editor.Process()).size(), 2u);
        EXPECT_TRUE(AnswerReopen(L"a.txt", button));
        Settle();
        Settle();
        EXPECT_FALSE(editor.Dialog()) << button;
    }
    ASSERT_TRUE(Modify(L"a.txt"));
    EXPECT_EQ(SaveAndRead(L"a.txt"), "xchange 10");
}

TEST_F(FrameFileTest, AFileThatIsGoneBeforeTheAnswerKeepsItsText) {
    ASSERT_TRUE(OpenFiles({L"deleted.txt", L"folder.txt", L"locked.txt"}));
    for (const wchar_t* name : {L"deleted.txt", L"folder.txt", L"locked.txt"})
        ASSERT_TRUE(files::Write(Path(name), "new"));
    Activate();
    ASSERT_TRUE(editor.WaitForDialog());
    ASSERT_TRUE(DeleteFileW(Path(L"deleted.txt").c_str()));
    EXPECT_TRUE(AnswerReopen(L"deleted.txt", L"Yes"));
    EXPECT_TRUE(editor.Answer(L"Failed opening file: " + Path(L"deleted.txt"), L"OK"));
    ASSERT_TRUE(editor.WaitForDialog());
    ASSERT_TRUE(DeleteFileW(Path(L"folder.txt").c_str()));
    ASSERT_TRUE(files::MakeFolder(Path(L"folder.txt")));
    EXPECT_TRUE(AnswerReopen(L"folder.txt", L"Yes"));
    EXPECT_TRUE(editor.Answer(L"Failed opening file: " + Path(L"folder.txt"), L"OK"));
    ASSERT_TRUE(editor.WaitForDialog());
    const HANDLE held = CreateFileW(Path(L"locked.txt").c_str(), GENERIC_READ, 0, nullptr, OPEN_EXISTING, 0, nullptr);
    ASSERT_NE(held, INVALID_HANDLE_VALUE);
    EXPECT_TRUE(AnswerReopen(L"locked.txt", L"Yes"));
    EXPECT_TRUE(editor.Answer(L"Failed opening file: " + Path(L"locked.txt"), L"OK"));
    CloseHandle(held);
    Activate();
    Settle();
    Settle();
    EXPECT_FALSE(editor.Dialog());
    // Every text is still there.
    ASSERT_TRUE(Modify(L"locked.txt"));
    EXPECT_EQ(SaveAndRead(L"locked.txt"), "xlocked.txt");
    ASSERT_TRUE(editor.Keys(L"Ctrl+1"));
    ASSERT_TRUE(WaitForFile(L"deleted.txt"));
    ASSERT_TRUE(Modify(L"deleted.txt"));
    EXPECT_EQ(SaveAndRead(L"deleted.txt"), "xdeleted.txt");
}

TEST_F(FrameFileTest, TheCheckWaitsForAnOpenDialog) {
    ASSERT_TRUE(OpenFiles({L"a.txt", L"b.txt"}));
    ASSERT_TRUE(Modify(L"b.txt"));
    ASSERT_TRUE(editor.Keys(L"Ctrl+F4"));
    ASSERT_TRUE(editor.WaitForDialog());
    ASSERT_TRUE(Change(L"a.txt", "new"));
    Activate();
    Settle();
    Settle();
    EXPECT_EQ(window::DialogText(editor.Dialog()), SaveQuestion(Path(L"b.txt")));
    EXPECT_TRUE(editor.Answer(SaveQuestion(Path(L"b.txt")), L"No"));
    EXPECT_TRUE(AnswerReopen(L"a.txt", L"Yes"));
    ASSERT_TRUE(WaitForFile(L"a.txt"));
    ASSERT_TRUE(Modify(L"a.txt"));
    EXPECT_EQ(SaveAndRead(L"a.txt"), "xnew");
}

TEST_F(FrameFileTest, OwnSavesAreNoChangesOfOthers) {
    ASSERT_TRUE(OpenFiles({L"a.txt"}));
    ASSERT_TRUE(Modify(L"a.txt"));
    EXPECT_EQ(SaveAndRead(L"a.txt"), "xa.txt");
    Activate();
    Settle();
    Settle();
    EXPECT_FALSE(editor.Dialog());
}

TEST_F(FrameFileTest, LongNamesAreOpenedAndNamedInFull) {
    // 259 and 260 characters are where the system's own limit lies.
    for (const size_t length : {size_t{259}, size_t{260}, size_t{300}}) {
        const std::wstring start = scratch.Folder() + L"\\";
        std::wstring path = start;
        // No part may be longer than 255.
        const std::wstring folder = std::wstring(std::min<size_t>(length - path.size() - 40, 200), L'd');
        CreateDirectoryW((L"\\\\?\\" + path + folder).c_str(), nullptr);
        path += folder + L"\\";
        path += std::wstring(length - path.size() - 4, L'n') + L".txt";
        ASSERT_EQ(path.size(), length);
        ASSERT_TRUE(files::Write(L"\\\\?\\" + path, "long"));
        if (!editor.Main()) {
            ASSERT_TRUE(Start());
        }
        Drop({path});
        EXPECT_TRUE(editor.WaitForTitle(path + L" - Orvane")) << length;
        ASSERT_TRUE(editor.Type(L"x"));
        ASSERT_TRUE(editor.WaitForTitle(path + L"* - Orvane")) << length;
        ASSERT_TRUE(editor.Keys(L"Ctrl+F4"));
        EXPECT_TRUE(AnswerLong(SaveQuestion(path), L"Yes")) << length;
        EXPECT_TRUE(editor.WaitForTitle(L"Untitled1 - Orvane"));
        EXPECT_EQ(files::Read(L"\\\\?\\" + path), "xlong") << length;
    }
}

TEST_F(FrameFileTest, NamesThatNoFileCanHaveAreAskedAboutAndDropped) {
    ASSERT_TRUE(OpenFiles({L"a.txt"}));
    const std::wstring longName(31990, L'n');
    ASSERT_TRUE(editor.Keys(L"Alt+C"));
    ASSERT_TRUE(window::WaitFor([&] { return editor.CommandWindow() && editor.Focus() == editor.CommandWindow(); }));
    // Set, since typing it takes its time.
    DWORD_PTR answer = 0;
    const std::wstring line = L"e " + longName;
    ASSERT_TRUE(SendMessageTimeoutW(editor.CommandWindow(), WM_SETTEXT, 0, reinterpret_cast<LPARAM>(line.c_str()),
                                    SMTO_ABORTIFHUNG, 15000, &answer));
    ASSERT_TRUE(editor.Keys(L"Enter"));
    ASSERT_TRUE(AnswerShortened(L"Create file nnn", L"nnn?", L"No"));
    ASSERT_TRUE(window::WaitFor([&] { return !editor.CommandWindow(); }));
    ASSERT_TRUE(editor.RunCommandLine(L"e a|b\"c.txt"));
    ASSERT_TRUE(editor.Answer(L"Create file a|b\"c.txt?", L"No"));
    Drop({scratch.Folder() + L"\\" + longName});
    ASSERT_TRUE(AnswerShortened(L"Failed opening file: " + scratch.Folder() + L"\\n", L"nnn", L"OK"));
    EXPECT_TRUE(Modify(L"a.txt"));
    EXPECT_EQ(WindowItems().size(), 1u);
}

TEST_F(FrameFileTest, AFileIsOpenOnceAsTextOrAsBytes) {
    ASSERT_TRUE(files::Write(Path(L"a.bin"), "abc"));
    ASSERT_TRUE(files::Write(Path(L"b.txt"), "1\n2"));
    ASSERT_TRUE(Start(L"b.txt -b a.bin"));
    ASSERT_TRUE(WaitForFile(L"a.bin"));
    ASSERT_TRUE(editor.RunCommandLine(L"eb B.TXT"));
    EXPECT_TRUE(WaitForFile(L"b.txt"));
    EXPECT_TRUE(editor.WaitForStatus(2, L"\tLn 1"));
    ASSERT_TRUE(editor.RunCommandLine(L"e A.bin"));
    EXPECT_TRUE(WaitForFile(L"a.bin"));
    EXPECT_EQ(WindowItems(), (Names{L"&1 " + Path(L"b.txt"), L"&2 " + Path(L"a.bin")}));
}

// While a question is open in the middle of many files, what is below it is drawn.
TEST_F(FrameFileTest, AQuestionInTheMiddleOfAScriptShowsWhatWasOpened) {
    ASSERT_TRUE(files::Write(Path(L"a.txt"), "1\n2\n3"));
    ASSERT_TRUE(files::Write(Path(L"b.txt"), "1\n2"));
    ASSERT_TRUE(files::Write(Path(L"s"), "e a.txt\nl 3\ne missing\ne b.txt\nl 2\n"));
    ASSERT_TRUE(Start());
    ASSERT_TRUE(editor.WaitForTitle(L"Untitled1 - Orvane"));
    ASSERT_TRUE(editor.RunCommandLine(L"run s"));
    ASSERT_TRUE(editor.WaitForDialog());
    EXPECT_TRUE(WaitForFile(L"a.txt"));
    EXPECT_TRUE(editor.WaitForStatus(2, L"\tLn 3"));
    EXPECT_TRUE(IsWindowVisible(Panes()[0]));
    EXPECT_TRUE(editor.Answer(L"Create file missing?", L"No"));
    EXPECT_TRUE(WaitForFile(L"b.txt"));
    EXPECT_TRUE(editor.WaitForStatus(2, L"\tLn 2"));
    EXPECT_TRUE(IsWindowVisible(Panes()[0]));
    EXPECT_TRUE(Modify(L"b.txt"));
}
