#include "app/AppTest.h"

// Commands carried out on real documents, and the places a settings file may have.

namespace {

class CommandTest : public AppTest {
protected:
    void Open(const std::string& text) { ASSERT_TRUE(OpenFile(L"a.txt", text)); }
    // A command that hides the window when it is done.
    bool Run(const std::wstring& line) {
        return editor.RunCommandLine(line) && window::WaitFor([&] { return !editor.CommandWindow(); });
    }
    // In the document, whatever had the focus.
    bool KeysInText(const std::wstring& keys) {
        if (editor.CommandWindow() && !editor.Keys(L"Alt+C")) return false;
        return window::WaitFor([&] { return !editor.CommandWindow(); }) && editor.Keys(keys);
    }
    std::wstring AllText() {
        if (!clipboard::Clear() || !KeysInText(L"Ctrl+A Ctrl+C")) return L"no keys";
        window::WaitFor([] { return !clipboard::Text().empty(); });
        return clipboard::Text();
    }
};

} // namespace

// What an engine takes for a bracket shows which one it is.
TEST_F(CommandTest, SetengineChoosesByNameUntilTheFileIsSavedAsAnother) {
    ASSERT_NO_FATAL_FAILURE(Open("<abc>"));
    ASSERT_TRUE(Run(L"setengine html"));
    ASSERT_TRUE(KeysInText(L"Ctrl+Home Ctrl+]"));
    EXPECT_TRUE(editor.WaitForStatus(3, L"\tCol 5"));
    ASSERT_TRUE(Run(L"setengine no such engine"));
    ASSERT_TRUE(Run(L"setopt ReplaceTabs 1"));
    ASSERT_TRUE(KeysInText(L"Ctrl+Home Ctrl+]"));
    EXPECT_TRUE(editor.WaitForStatus(3, L"\tCol 5"));
    ASSERT_TRUE(Run(L"setengine cpp"));
    ASSERT_TRUE(KeysInText(L"Ctrl+Home Right Ctrl+] Right"));
    EXPECT_TRUE(editor.WaitForStatus(3, L"\tCol 3")) << "no bracket to jump to";
}

TEST_F(CommandTest, BookmarkMarksTheLineGivenOrThatOfTheCaret) {
    ASSERT_NO_FATAL_FAILURE(Open("1\n2\n3\n4\n5\n"));
    ASSERT_TRUE(editor.RunCommandLine(L"bookmark 2"));
    ASSERT_TRUE(Run(L"l 4"));
    ASSERT_TRUE(editor.RunCommandLine(L"bm"));
    ASSERT_TRUE(KeysInText(L"Ctrl+Home F2"));
    EXPECT_TRUE(editor.WaitForStatus(2, L"\tLn 2"));
    ASSERT_TRUE(KeysInText(L"F2"));
    EXPECT_TRUE(editor.WaitForStatus(2, L"\tLn 4"));
}

TEST_F(CommandTest, MkoutputMakesTheTextReadOnly) {
    ASSERT_NO_FATAL_FAILURE(Open("abc"));
    ASSERT_TRUE(Run(L"mkoutput"));
    ASSERT_TRUE(KeysInText(L"X Delete"));
    EXPECT_EQ(AllText(), L"abc");
    EXPECT_EQ(editor.Title().find(L'*'), std::wstring::npos);
}

TEST_F(CommandTest, OpenedListsTheDocumentsInTheOutputDocument) {
    ASSERT_TRUE(files::Write(Path(L"b.txt"), "b"));
    ASSERT_NO_FATAL_FAILURE(Open("a"));
    ASSERT_TRUE(Run(L"e b.txt"));
    ASSERT_TRUE(editor.WaitForTitle(Path(L"b.txt") + L" - Orvane"));
    ASSERT_TRUE(Run(L"opened"));
    ASSERT_TRUE(editor.WaitForTitle(L"Output - Orvane"));
    const std::wstring listed = AllText();
    const size_t first = listed.find(Path(L"a.txt"));
    EXPECT_NE(first, std::wstring::npos);
    EXPECT_GT(listed.find(Path(L"b.txt")), first);
    EXPECT_NE(listed.find(Path(L"b.txt")), std::wstring::npos);
}

TEST_F(CommandTest, WithoutADocumentTheyDoNothing) {
    ASSERT_NO_FATAL_FAILURE(Open("a"));
    ASSERT_TRUE(KeysInText(L"Ctrl+F4"));
    ASSERT_TRUE(editor.WaitForTitle(L"Orvane"));
    for (const wchar_t* line : {L"line 2", L"setengine cpp", L"mkoutput"}) ASSERT_TRUE(Run(line)) << line;
    for (const wchar_t* line : {L"bookmark 1", L"file"}) ASSERT_TRUE(editor.RunCommandLine(line)) << line;
    EXPECT_TRUE(editor.WaitForCommandText(L"file"));
    // Hiding the window leaves the keyboard to the frame.
    ASSERT_TRUE(editor.Keys(L"Escape"));
    ASSERT_TRUE(window::WaitFor([&] { return editor.Focus() == editor.Main(); }));
    ASSERT_TRUE(editor.Keys(L"Ctrl+N"));
    EXPECT_TRUE(editor.WaitForTitle(L"Untitled1 - Orvane"));
}

TEST_F(CommandTest, ATextSetByACommandIsNotKeptInTheHistory) {
    ASSERT_NO_FATAL_FAILURE(Open("a"));
    ASSERT_TRUE(editor.RunCommandLine(L"pwd"));
    ASSERT_TRUE(editor.WaitForCommandText(scratch.Folder()));
    ASSERT_TRUE(editor.Keys(L"Up"));
    EXPECT_TRUE(editor.WaitForCommandText(L"pwd")) << "typed before the command set its text";
    ASSERT_TRUE(editor.Keys(L"Enter"));
    ASSERT_TRUE(editor.WaitForCommandText(scratch.Folder()));
    ASSERT_TRUE(editor.RunCommandLine(L"bookmark"));
    ASSERT_TRUE(editor.Keys(L"Up Up"));
    EXPECT_TRUE(editor.WaitForCommandText(L"pwd"));
    ASSERT_TRUE(editor.Keys(L"Up"));
    EXPECT_TRUE(editor.WaitForCommandText(L"pwd")) << "the line that was only recalled is not there twice";
    ASSERT_TRUE(editor.Keys(L"Down"));
    EXPECT_TRUE(editor.WaitForCommandText(L"bookmark"));
}

TEST_F(CommandTest, ReloadoptionsChoosesTheEnginesAgain) {
    ASSERT_NO_FATAL_FAILURE(Open("<abc>"));
    ASSERT_TRUE(files::Write(files::SettingsPath(), "[Engine_Text]\r\nExtensions=txt\r\nTreatAs=html\r\n"));
    ASSERT_TRUE(Run(L"reloadoptions"));
    ASSERT_TRUE(KeysInText(L"Ctrl+Home Ctrl+]"));
    EXPECT_TRUE(editor.WaitForStatus(3, L"\tCol 5"));
}

// Which are in no dialog; absent they are off.
TEST_F(CommandTest, AdditionalSettingsAreSetAndLoadedAgain) {
    ASSERT_TRUE(files::Write(files::SettingsPath(), "[General]\r\nFontSize=10\r\n"));
    ASSERT_TRUE(OpenFile(L"a.txt", "\xFF\xFE" + files::Utf16(L"\xD83D\xDE00")));
    const auto passes = [&](const std::wstring& column) {
        return editor.Keys(L"Home Right") && editor.WaitForStatus(3, L"\tCol " + column);
    };
    EXPECT_TRUE(passes(L"2"));
    ASSERT_TRUE(Run(L"setopt WholeCharacters 1"));
    EXPECT_TRUE(passes(L"3"));
    ASSERT_TRUE(Run(L"setopt wholecharacters 0"));
    EXPECT_TRUE(passes(L"2"));
    ASSERT_TRUE(Run(L"setopt WholeCharacters 1"));
    EXPECT_TRUE(passes(L"3"));
    ASSERT_TRUE(Run(L"reloadoptions"));
    EXPECT_TRUE(passes(L"2"));
    ASSERT_TRUE(files::Write(files::SettingsPath(), "[General]\r\nFontSize=10\r\nWholeCharacters=1\r\n"));
    ASSERT_TRUE(Run(L"reloadoptions"));
    EXPECT_TRUE(passes(L"3"));
}

TEST_F(CommandTest, ASettingsFileInTheCurrentFolderServesWhereThereIsNoOther) {
    ASSERT_TRUE(files::Write(Path(L"orvane.ini"), "[General]\r\nReplaceTabs=1\r\nSpacesPerTab=2\r\n"));
    ASSERT_TRUE(OpenFile(L"a.txt", "x"));
    ASSERT_TRUE(editor.Keys(L"Tab"));
    EXPECT_EQ(SaveAndRead(L"a.txt"), "  x");
}

TEST_F(CommandTest, ASettingsFileInTheDocumentsFolderComesFirst) {
    ASSERT_TRUE(files::Write(Path(L"orvane.ini"), "[General]\r\nReplaceTabs=1\r\nSpacesPerTab=2\r\n"));
    ASSERT_TRUE(files::Write(files::SettingsPath(), "[General]\r\nReplaceTabs=1\r\nSpacesPerTab=3\r\n"));
    ASSERT_TRUE(OpenFile(L"a.txt", "x"));
    ASSERT_TRUE(editor.Keys(L"Tab"));
    EXPECT_EQ(SaveAndRead(L"a.txt"), "   x");
}
