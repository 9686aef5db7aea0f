#include "app/FileDialogTest.h"

// Save and Save As: what the dialog offers, and what is on the disk afterwards.

namespace {

enum { EncodingList = 1035, LineEndingList = 1068 };

class FrameSaveTest : public FileDialogTest {
protected:
    bool OpenSaveAs() {
        editor.Command(IDM_SAVE_AS);
        return WaitForDialogTitled(L"Save As");
    }
};

} // namespace

TEST_F(FrameSaveTest, TheListsShowWhatTheDocumentHas) {
    struct Case {
        std::string bytes;
        int encoding;
        int lineEnding;
    };
    const Case cases[] = {{"a\r\nb", 0, 1},
                          {"a\nb", 0, 0},
                          {"a\r\nb\nc", 0, 1}, // mixed
                          {"\xFF\xFE" + files::Utf16(L"a\nb"), 1, 0},
                          {"\xFE\xFF" + files::Utf16(L"a\r\nb", true), 2, 1},
                          {"\xEF\xBB\xBF"
                           "a\nb",
                           3, 0}};
    for (size_t i = 0; i < std::size(cases); i++)
        ASSERT_TRUE(files::Write(Path(std::to_wstring(i) + L".txt"), cases[i].bytes));
    ASSERT_TRUE(Start(L"0.txt 1.txt 2.txt 3.txt 4.txt 5.txt"));
    for (size_t i = 0; i < std::size(cases); i++) {
        ASSERT_TRUE(editor.Keys(L"Ctrl+" + std::to_wstring(i + 1)));
        ASSERT_TRUE(WaitForFile(std::to_wstring(i) + L".txt"));
        ASSERT_TRUE(OpenSaveAs());
        EXPECT_EQ(ListItems(EncodingList), (Names{L"ANSI", L"Unicode", L"Unicode Big Endian", L"UTF8"}));
        EXPECT_EQ(ListItems(LineEndingList), (Names{L"Unix", L"Dos"}));
        EXPECT_EQ(Selected(EncodingList), cases[i].encoding) << i;
        EXPECT_EQ(Selected(LineEndingList), cases[i].lineEnding) << i;
        ASSERT_TRUE(EndDialog(L"Cancel"));
        EXPECT_EQ(files::Read(Path(std::to_wstring(i) + L".txt")), cases[i].bytes);
    }
}

TEST_F(FrameSaveTest, WhatIsChosenIsWritten) {
    struct Case {
        const wchar_t* encoding;
        const wchar_t* lineEnding;
        std::string bytes;
    };
    const Case cases[] = {{L"Unicode", L"Unix", "\xFF\xFE" + files::Utf16(L"\xE4\nb")},
                          {L"Unicode Big Endian", L"Dos", "\xFE\xFF" + files::Utf16(L"\xE4\r\nb", true)},
                          {L"UTF8", L"Unix", "\xEF\xBB\xBF\xC3\xA4\nb"},
                          {L"ANSI", L"Dos", "\xE4\r\nb"},
                          {L"ANSI", L"Unix", "\xE4\nb"}};
    ASSERT_TRUE(OpenFile(L"a.txt", "\xE4\r\nb"));
    for (size_t i = 0; i < std::size(cases); i++) {
        const std::wstring name = std::to_wstring(i) + L".txt";
        ASSERT_TRUE(OpenSaveAs());
        ASSERT_TRUE(Choose(EncodingList, cases[i].encoding));
        ASSERT_TRUE(Choose(LineEndingList, cases[i].lineEnding));
        ASSERT_TRUE(TypeFileName(Path(name)));
        EXPECT_TRUE(WaitForFile(name));
        EXPECT_EQ(files::Read(Path(name)), cases[i].bytes) << i;
        EXPECT_TRUE(editor.WaitForStatus(1, std::wstring(L"\t") + cases[i].lineEnding));
    }
    EXPECT_EQ(files::Read(Path(L"a.txt")), "\xE4\r\nb");
    // From now on that is what the document is.
    ASSERT_TRUE(Modify(L"4.txt"));
    EXPECT_EQ(SaveAndRead(L"4.txt"), "x\xE4\nb");
    EXPECT_EQ(WindowItems(), Names{L"&1 " + Path(L"4.txt")});
}

TEST_F(FrameSaveTest, WithUtf8SetTheListHasTheOneWithoutASignatureToo) {
    ASSERT_TRUE(files::Write(files::SettingsPath(), "[General]\r\nUtf8=1\r\n"));
    ASSERT_TRUE(OpenFile(L"a.txt", "\xC5\x82\nb"));
    ASSERT_TRUE(OpenSaveAs());
    EXPECT_EQ(ListItems(EncodingList),
              (Names{L"ANSI", L"Unicode", L"Unicode Big Endian", L"UTF8", L"UTF8 without signature"}));
    EXPECT_EQ(Selected(EncodingList), 4);
    ASSERT_TRUE(Choose(EncodingList, L"UTF8"));
    ASSERT_TRUE(TypeFileName(Path(L"b.txt")));
    EXPECT_TRUE(WaitForFile(L"b.txt"));
    EXPECT_EQ(files::Read(Path(L"b.txt")), "\xEF\xBB\xBF\xC5\x82\nb");
    ASSERT_TRUE(OpenSaveAs());
    ASSERT_TRUE(Choose(EncodingList, L"UTF8 without signature"));
    ASSERT_TRUE(TypeFileName(Path(L"c.txt")));
    EXPECT_TRUE(WaitForFile(L"c.txt"));
    EXPECT_EQ(files::Read(Path(L"c.txt")), "\xC5\x82\nb");
}

TEST_F(FrameSaveTest, AnExistingFileIsReplacedOnYesOnly) {
    ASSERT_TRUE(OpenFiles({L"a.txt"}));
    ASSERT_TRUE(files::Write(Path(L"b.txt"), "old"));
    ASSERT_TRUE(Modify(L"a.txt"));
    ASSERT_TRUE(OpenSaveAs());
    const HWND dialog = editor.Dialog();
    ASSERT_TRUE(FillFileName(Path(L"b.txt")));
    ASSERT_TRUE(editor.Keys(L"Enter"));
    ASSERT_TRUE(window::WaitFor([&] { return editor.Dialog() && editor.Dialog() != dialog; }));
    ASSERT_TRUE(EndDialog(L"No"));
    EXPECT_TRUE(window::WaitFor([&] { return editor.Dialog() == dialog; }));
    ASSERT_TRUE(editor.Keys(L"Enter"));
    ASSERT_TRUE(window::WaitFor([&] { return editor.Dialog() && editor.Dialog() != dialog; }));
    EXPECT_EQ(files::Read(Path(L"b.txt")), "old");
    ASSERT_TRUE(EndDialog(L"Yes"));
    EXPECT_TRUE(WaitForFile(L"b.txt"));
    EXPECT_EQ(files::Read(Path(L"b.txt")), "xa.txt");
    EXPECT_EQ(files::Read(Path(L"a.txt")), "a.txt");
}

TEST_F(FrameSaveTest, AFailureKeepsNameAndChange) {
    ASSERT_TRUE(OpenFiles({L"a.txt"}));
    ASSERT_TRUE(files::Write(Path(L"b.txt"), "old"));
    ASSERT_TRUE(Modify(L"a.txt"));
    const HANDLE held = CreateFileW(Path(L"b.txt").c_str(), GENERIC_READ, 0, nullptr, OPEN_EXISTING, 0, nullptr);
    ASSERT_TRUE(OpenSaveAs());
    const HWND dialog = editor.Dialog();
    ASSERT_TRUE(FillFileName(Path(L"b.txt")));
    ASSERT_TRUE(editor.Keys(L"Enter"));
    ASSERT_TRUE(window::WaitFor([&] { return editor.Dialog() && editor.Dialog() != dialog; }));
    ASSERT_TRUE(EndDialog(L"Yes"));
    EXPECT_TRUE(editor.Answer(L"Failed saving file: " + Path(L"b.txt"), L"OK"));
    CloseHandle(held);
    EXPECT_TRUE(WaitForFile(L"a.txt", true));
    EXPECT_EQ(SaveAndRead(L"a.txt"), "xa.txt");
}

TEST_F(FrameSaveTest, ANewNameChoosesTheEngineAgain) {
    // What it colours is seen in what the clipboard gets.
    ASSERT_TRUE(OpenFile(L"a.txt", "int"));
    ASSERT_TRUE(editor.Keys(L"Ctrl+A Ctrl+Shift+H"));
    const auto copied = [] { return clipboard::Bytes(L"HTML Format"); };
    ASSERT_TRUE(window::WaitFor([&] { return copied().find("int") != std::string::npos; }));
    const std::string plain = copied();
    ASSERT_TRUE(OpenSaveAs());
    ASSERT_TRUE(TypeFileName(Path(L"a.c")));
    ASSERT_TRUE(WaitForFile(L"a.c"));
    ASSERT_TRUE(editor.Keys(L"Ctrl+A Ctrl+Shift+H"));
    EXPECT_TRUE(window::WaitFor([&] { return !copied().empty() && copied() != plain; }));
}

TEST_F(FrameSaveTest, SaveWritesEncodingAndBreaksAsTheyWere) {
    const std::string bytes = "\xFE\xFF" + files::Utf16(L"a\nb", true);
    ASSERT_TRUE(OpenFile(L"a.txt", bytes));
    ASSERT_TRUE(Modify(L"a.txt"));
    EXPECT_EQ(SaveAndRead(L"a.txt"), "\xFE\xFF" + files::Utf16(L"xa\nb", true));
}

TEST_F(FrameSaveTest, ADocumentOfBytesIsSavedInItsPlaceOnly) {
    ASSERT_TRUE(files::Write(Path(L"a.bin"), "abc"));
    ASSERT_TRUE(Start(L"-b a.bin"));
    ASSERT_TRUE(WaitForFile(L"a.bin"));
    EXPECT_FALSE(IsEnabled(IDM_SAVE_AS));
    EXPECT_TRUE(IsEnabled(IDM_SAVE));
    ASSERT_TRUE(editor.Type(L"7"));
    ASSERT_TRUE(WaitForFile(L"a.bin", true));
    ASSERT_TRUE(editor.Keys(L"Ctrl+S"));
    EXPECT_TRUE(WaitForFile(L"a.bin"));
    EXPECT_NE(files::Read(Path(L"a.bin")), "abc");
    EXPECT_EQ(files::Read(Path(L"a.bin")).size(), 3u);
    // It has no encoding to choose from.
    ASSERT_TRUE(OpenSaveAs());
    EXPECT_EQ(ListItems(EncodingList), Names{L"None"});
    EXPECT_EQ(Selected(EncodingList), 0);
    EXPECT_TRUE(EndDialog(L"Cancel"));
}
