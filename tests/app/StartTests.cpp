#include "app/AppTest.h"

#include <algorithm>

// The program's command line, its settings file, and how it ends.

using Names = std::vector<std::wstring>;

using StartTest = AppTest;

TEST_F(StartTest, WithoutFilesAnUntitledDocumentIsMade) {
    ASSERT_TRUE(Start());
    EXPECT_TRUE(editor.WaitForTitle(L"Untitled1 - Orvane"));
    EXPECT_EQ(editor.Panes().size(), 1u);
    editor.Close();
    DWORD code = 1;
    EXPECT_TRUE(editor.WaitForEnd(code));
    EXPECT_EQ(code, 0u);
    EXPECT_FALSE(files::Exists(files::SettingsPath()));
}

TEST_F(StartTest, ClosingAModifiedDocumentAsks) {
    ASSERT_TRUE(OpenFile(L"a.txt", "one"));
    ASSERT_TRUE(editor.Type(L"x"));
    ASSERT_TRUE(editor.WaitForTitle(Path(L"a.txt") + L"* - Orvane"));
    const std::wstring question = L"Save changes to " + Path(L"a.txt") + L"?";
    editor.Close();
    EXPECT_TRUE(editor.Answer(question, L"Cancel"));
    EXPECT_EQ(editor.Title(), Path(L"a.txt") + L"* - Orvane");
    editor.Close();
    EXPECT_TRUE(editor.Answer(question, L"Yes"));
    DWORD code = 1;
    EXPECT_TRUE(editor.WaitForEnd(code));
    EXPECT_EQ(code, 0u);
    EXPECT_EQ(files::Read(Path(L"a.txt")), "xone");
}

TEST_F(StartTest, ClosingWithNoDropsTheChange) {
    ASSERT_TRUE(OpenFile(L"a.txt", "one"));
    ASSERT_TRUE(editor.Type(L"x"));
    ASSERT_TRUE(editor.WaitForTitle(Path(L"a.txt") + L"* - Orvane"));
    editor.Close();
    EXPECT_TRUE(editor.Answer(L"Save changes to " + Path(L"a.txt") + L"?", L"No"));
    DWORD code = 1;
    EXPECT_TRUE(editor.WaitForEnd(code));
    EXPECT_EQ(code, 0u);
    EXPECT_EQ(files::Read(Path(L"a.txt")), "one");
}

TEST_F(StartTest, MissingFileIsMadeOnYesAndWrittenBySave) {
    ASSERT_TRUE(Start(L"new.txt"));
    const HWND box = editor.WaitForDialog();
    ASSERT_TRUE(box);
    EXPECT_EQ(window::TextOf(box), L"Orvane");
    EXPECT_TRUE(editor.Answer(L"Create file new.txt?", L"Yes"));
    EXPECT_TRUE(editor.WaitForTitle(Path(L"new.txt") + L" - Orvane"));
    ASSERT_TRUE(editor.Type(L"hello"));
    EXPECT_EQ(SaveAndRead(L"new.txt"), "hello");
}

TEST_F(StartTest, MissingFileIsLeftOutOnNo) {
    ASSERT_TRUE(Start(L"sub/new.txt"));
    EXPECT_TRUE(editor.Answer(L"Create file sub\\new.txt?", L"No"));
    EXPECT_TRUE(editor.WaitForTitle(L"Untitled1 - Orvane"));
    EXPECT_FALSE(files::Exists(Path(L"sub\\new.txt")));
}

TEST_F(StartTest, LineOptionHoldsForTheNextFileOnly) {
    ASSERT_TRUE(files::Write(Path(L"b.txt"), "1\n2\n3\n"));
    ASSERT_TRUE(files::Write(Path(L"a.txt"), "1\n2\n3\n"));
    ASSERT_TRUE(Start(L"-l 2 a.txt b.txt"));
    ASSERT_TRUE(editor.WaitForTitle(Path(L"b.txt") + L" - Orvane"));
    EXPECT_TRUE(editor.WaitForStatus(2, L"\tLn 1"));
    ASSERT_TRUE(editor.Keys(L"Ctrl+1"));
    ASSERT_TRUE(editor.WaitForTitle(Path(L"a.txt") + L" - Orvane"));
    EXPECT_TRUE(editor.WaitForStatus(2, L"\tLn 2"));
}

TEST_F(StartTest, OnlyTheSecondCharacterOfAnOptionCounts) {
    ASSERT_TRUE(OpenFile(L"a.txt", "1\n2\n3\n", L"/LINE 3x -unknown "));
    EXPECT_TRUE(editor.WaitForStatus(2, L"\tLn 3"));
}

TEST_F(StartTest, LineZeroMeansNoLine) {
    ASSERT_TRUE(OpenFile(L"a.txt", "1\n2\n3\n", L"-l 0 "));
    EXPECT_TRUE(editor.WaitForStatus(2, L"\tLn 1"));
}

TEST_F(StartTest, EmptyQuotedArgumentEndsTheList) {
    ASSERT_TRUE(files::Write(Path(L"x"), ""));
    ASSERT_TRUE(files::Write(Path(L"y"), ""));
    ASSERT_TRUE(Start(L"x \"\" y"));
    ASSERT_TRUE(editor.WaitForTitle(Path(L"x") + L" - Orvane"));
    EXPECT_EQ(OpenDocuments(), Names{Path(L"x")});
}

TEST_F(StartTest, QuotedNameMayHoldBlanksAndGoOn) {
    ASSERT_TRUE(files::Write(Path(L"a bc"), ""));
    ASSERT_TRUE(Start(L"\"a b\"c"));
    EXPECT_TRUE(editor.WaitForTitle(Path(L"a bc") + L" - Orvane"));
}

TEST_F(StartTest, WildcardsOpenEveryMatch) {
    ASSERT_TRUE(files::Write(Path(L"a.c"), ""));
    ASSERT_TRUE(files::Write(Path(L"b.c"), ""));
    ASSERT_TRUE(files::Write(Path(L"c.h"), ""));
    ASSERT_TRUE(Start(L"*.c"));
    // Which of the two comes first is the system's choice.
    ASSERT_TRUE(window::WaitFor([&] {
        return editor.Title() == Path(L"a.c") + L" - Orvane" || editor.Title() == Path(L"b.c") + L" - Orvane";
    }));
    Names names = OpenDocuments();
    std::sort(names.begin(), names.end());
    EXPECT_EQ(names, (Names{Path(L"a.c"), Path(L"b.c")}));
}

TEST_F(StartTest, SubdirectoryModeSearchesOneLevelAndNoHiddenNames) {
    for (const wchar_t* folder : {L"x", L".git", L"x\\deep"}) ASSERT_TRUE(files::MakeFolder(Path(folder)));
    for (const wchar_t* name : {L"here.c", L"x\\in.c", L".git\\hidden.c", L"x\\deep\\deep.c"})
        ASSERT_TRUE(files::Write(Path(name), ""));
    ASSERT_TRUE(Start(L"-s *.c"));
    ASSERT_TRUE(editor.WaitForTitle(Path(L"x\\in.c") + L" - Orvane"));
    EXPECT_EQ(OpenDocuments(), Names{Path(L"x\\in.c")});
}

TEST_F(StartTest, ScriptOptionRunsAtOnce) {
    ASSERT_TRUE(files::Write(Path(L"a.txt"), "1\n2\n3\n"));
    ASSERT_TRUE(files::Write(Path(L"b.txt"), ""));
    ASSERT_TRUE(files::Write(Path(L"script"), "# a comment\r\nedit a.txt\r\nline 3\r\n"));
    ASSERT_TRUE(Start(L"-r script b.txt"));
    ASSERT_TRUE(editor.WaitForTitle(Path(L"b.txt") + L" - Orvane"));
    EXPECT_EQ(OpenDocuments(), (Names{Path(L"a.txt"), Path(L"b.txt")}));
    ASSERT_TRUE(editor.Keys(L"Ctrl+1"));
    EXPECT_TRUE(editor.WaitForStatus(2, L"\tLn 3"));
}

TEST_F(StartTest, SameFileInAnotherCaseIsOpenedOnce) {
    ASSERT_TRUE(files::Write(Path(L"name.txt"), "1\n2\n"));
    ASSERT_TRUE(Start(L"name.txt -l 2 NAME.TXT"));
    ASSERT_TRUE(editor.WaitForTitle(Path(L"name.txt") + L" - Orvane"));
    EXPECT_TRUE(editor.WaitForStatus(2, L"\tLn 2"));
    EXPECT_EQ(OpenDocuments().size(), 1u);
}

TEST_F(StartTest, SettingsFileOfTheDocumentsFolderIsRead) {
    // Tabs replaced by spaces show in the text that is written.
    ASSERT_TRUE(files::Write(files::SettingsPath(), "[General]\r\nReplaceTabs=1\r\nSpacesPerTab=3\r\n"));
    ASSERT_TRUE(OpenFile(L"a.txt", "x"));
    ASSERT_TRUE(editor.Keys(L"Tab"));
    EXPECT_EQ(SaveAndRead(L"a.txt"), "   x");
}

TEST_F(StartTest, SettingsFileBesideTheProgramServesAUserWithoutOne) {
    const std::string settings = "[General]\r\nReplaceTabs=1\r\nSpacesPerTab=2\r\n";
    ASSERT_TRUE(files::Write(files::ShippedSettingsPath(), settings));
    // It comes before one in the current folder.
    ASSERT_TRUE(files::Write(Path(L"orvane.ini"), "[General]\r\nReplaceTabs=1\r\nSpacesPerTab=5\r\n"));
    ASSERT_TRUE(OpenFile(L"a.txt", "x"));
    ASSERT_TRUE(editor.Keys(L"Tab"));
    EXPECT_EQ(SaveAndRead(L"a.txt"), "  x");
}

class HostileSettingsTest : public AppTest, public testing::WithParamInterface<const char*> {};

TEST_P(HostileSettingsTest, TheEditorStartsAndEdits) {
    std::string settings = GetParam();
    if (settings == "random") {
        uint32_t state = 12345;
        settings.clear();
        for (int i = 0; i < 20000; i++) {
            state = state * 1664525 + 1013904223;
            settings += static_cast<char>(state >> 24);
        }
    }
    ASSERT_TRUE(files::Write(files::SettingsPath(), settings));
    ASSERT_TRUE(OpenFile(L"a.txt", "one\ttwo\nthree"));
    ASSERT_TRUE(editor.Keys(L"End"));
    ASSERT_TRUE(editor.Type(L"x\n"));
    EXPECT_EQ(SaveAndRead(L"a.txt"), "one\ttwox\n\nthree");
}

INSTANTIATE_TEST_SUITE_P(Files, HostileSettingsTest,
                         testing::Values("[General]\nSpacesPerTab=0\n", "[General]\nFontSize=0\n",
                                         "[General]\nFontSize=4294967295\n", "[General]\nFontName=\n",
                                         "[General]\nSpacesPerTab=4294967295\nMarginWidth=4294967295\n",
                                         "[General]\nCaretWidth=4294967295\nColumnGuide=4294967295\n",
                                         "\xEF\xBB\xBF[General]\nSpacesPerTab=2\n", "[General", "random"));
