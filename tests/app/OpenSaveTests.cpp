#include "app/AppTest.h"

// The main job on real files: shown, typed into, undone and saved, for every encoding and line-ending style.

enum class Encoding { Ansi, Unicode, UnicodeBigEndian, Utf8 };

struct FileFormat {
    const char* name;
    Encoding encoding;
    const wchar_t* lineBreak;
    const wchar_t* status;
};

namespace {

std::wstring WithBreaks(const std::wstring& text, const std::wstring& lineBreak) {
    std::wstring out;
    for (const wchar_t unit : text) out += unit == L'\n' ? lineBreak : std::wstring(1, unit);
    return out;
}

// The file of a text that holds nothing beyond ASCII and what every ANSI code page of the West has.
std::string Encode(const std::wstring& text, Encoding encoding) {
    if (encoding == Encoding::Unicode) return "\xFF\xFE" + files::Utf16(text);
    if (encoding == Encoding::UnicodeBigEndian) return "\xFE\xFF" + files::Utf16(text, true);
    if (encoding == Encoding::Utf8) return "\xEF\xBB\xBF" + files::Utf8(text);
    std::string bytes;
    for (const wchar_t unit : text) bytes += static_cast<char>(unit);
    return bytes;
}

// Asked before the first save over a file whose bytes do not all come back.
constexpr const wchar_t* LosesBytes = L" contains bytes that cannot be saved as they were.\nSave over it?";

} // namespace

class FormatTest : public AppTest, public testing::WithParamInterface<FileFormat> {};

TEST_P(FormatTest, TypingUndoAndSaveKeepTheFormat) {
    const FileFormat& format = GetParam();
    // The UTF-8 files here stay within ASCII: their other characters are read through the ANSI code page.
    const std::wstring text =
        format.encoding == Encoding::Utf8 ? L"first\n\tsecond\nthird" : L"f\xEFrst\n\tsecond\nthird";
    const std::string bytes = Encode(WithBreaks(text, format.lineBreak), format.encoding);
    ASSERT_TRUE(OpenFile(L"text.txt", bytes));
    EXPECT_TRUE(editor.WaitForStatus(1, format.status));
    EXPECT_TRUE(editor.WaitForStatus(2, L"\tLn 1"));
    EXPECT_TRUE(editor.WaitForStatus(3, L"\tCol 1"));
    EXPECT_TRUE(editor.WaitForStatus(4, L"\tINS"));

    ASSERT_TRUE(editor.Keys(L"Down End"));
    EXPECT_TRUE(editor.WaitForStatus(2, L"\tLn 2"));
    EXPECT_TRUE(editor.WaitForStatus(3, L"\tCol 8"));
    ASSERT_TRUE(editor.Type(L"abc"));
    EXPECT_TRUE(editor.WaitForTitle(Path(L"text.txt") + L"* - Orvane"));
    EXPECT_TRUE(editor.WaitForStatus(3, L"\tCol 11"));
    ASSERT_TRUE(editor.Keys(L"Ctrl+Z"));
    EXPECT_TRUE(editor.WaitForTitle(Path(L"text.txt") + L" - Orvane"));
    EXPECT_TRUE(editor.WaitForStatus(3, L"\tCol 8"));
    EXPECT_EQ(files::Read(Path(L"text.txt")), bytes);

    ASSERT_TRUE(editor.Type(L"X\nY"));
    EXPECT_TRUE(editor.WaitForTitle(Path(L"text.txt") + L"* - Orvane"));
    // The new line starts with the indent of the one before it.
    EXPECT_TRUE(editor.WaitForStatus(2, L"\tLn 3"));
    EXPECT_TRUE(editor.WaitForStatus(3, L"\tCol 3"));
    std::wstring changed = text;
    changed.insert(changed.find(L"\nthird"), L"X\n\tY");
    EXPECT_EQ(SaveAndRead(L"text.txt"), Encode(WithBreaks(changed, format.lineBreak), format.encoding));
}

INSTANTIATE_TEST_SUITE_P(Files, FormatTest,
                         testing::Values(FileFormat{"AnsiUnix", Encoding::Ansi, L"\n", L"\tUnix"},
                                         FileFormat{"AnsiDos", Encoding::Ansi, L"\r\n", L"\tDos"},
                                         FileFormat{"UnicodeUnix", Encoding::Unicode, L"\n", L"\tUnix"},
                                         FileFormat{"UnicodeDos", Encoding::Unicode, L"\r\n", L"\tDos"},
                                         FileFormat{"BigEndianUnix", Encoding::UnicodeBigEndian, L"\n", L"\tUnix"},
                                         FileFormat{"BigEndianDos", Encoding::UnicodeBigEndian, L"\r\n", L"\tDos"},
                                         FileFormat{"Utf8Unix", Encoding::Utf8, L"\n", L"\tUnix"},
                                         FileFormat{"Utf8Dos", Encoding::Utf8, L"\r\n", L"\tDos"}),
                         [](const auto& test) { return std::string(test.param.name); });

using OpenSaveTest = AppTest;

TEST_F(OpenSaveTest, MixedBreaksAreShownAndWrittenAsDos) {
    ASSERT_TRUE(OpenFile(L"mixed.txt", "a\r\nb\nc\rd"));
    EXPECT_TRUE(editor.WaitForStatus(1, L"\tMixed"));
    ASSERT_TRUE(editor.Type(L"x"));
    EXPECT_EQ(SaveAndRead(L"mixed.txt"), "xa\r\nb\r\nc\r\nd");
    EXPECT_TRUE(editor.WaitForStatus(1, L"\tDos"));
}

TEST_F(OpenSaveTest, LoneCarriageReturnsAreReadAsDos) {
    ASSERT_TRUE(OpenFile(L"old.txt", "a\rb"));
    EXPECT_TRUE(editor.WaitForStatus(1, L"\tDos"));
    ASSERT_TRUE(editor.Type(L"x"));
    EXPECT_EQ(SaveAndRead(L"old.txt"), "xa\r\nb");
}

TEST_F(OpenSaveTest, EmptyFileIsDosAndCanBeEmptyAgain) {
    ASSERT_TRUE(OpenFile(L"empty.txt", ""));
    EXPECT_TRUE(editor.WaitForStatus(1, L"\tDos"));
    ASSERT_TRUE(editor.Type(L"a\nb"));
    EXPECT_EQ(SaveAndRead(L"empty.txt"), "a\r\nb");
    ASSERT_TRUE(editor.Keys(L"Backspace Backspace Backspace"));
    EXPECT_EQ(SaveAndRead(L"empty.txt"), "");
}

TEST_F(OpenSaveTest, EveryAnsiByteSurvives) {
    std::string bytes;
    for (int value = 1; value < 256; value++)
        if (value != '\r' && value != '\n') bytes += static_cast<char>(value);
    ASSERT_TRUE(OpenFile(L"bytes.txt", bytes));
    ASSERT_TRUE(editor.Type(L"x"));
    EXPECT_EQ(SaveAndRead(L"bytes.txt"), "x" + bytes);
}

TEST_F(OpenSaveTest, Utf8IsReadThroughTheAnsiCodePageAndWrittenAsUtf8) {
    ASSERT_TRUE(OpenFile(L"utf8.txt", "\xEF\xBB\xBF\xC3\xA9"));
    ASSERT_TRUE(editor.Keys(L"End"));
    EXPECT_TRUE(editor.WaitForStatus(3, L"\tCol 3"));
    const char read[] = "\xC3\xA9";
    wchar_t shown[3] = {};
    ASSERT_EQ(MultiByteToWideChar(CP_ACP, 0, read, 2, shown, 2), 2);
    ASSERT_TRUE(editor.Type(L"x"));
    ASSERT_TRUE(editor.Keys(L"Ctrl+S"));
    EXPECT_TRUE(editor.Answer(Path(L"utf8.txt") + LosesBytes, L"Yes"));
    EXPECT_TRUE(editor.WaitForTitle(Path(L"utf8.txt") + L" - Orvane"));
    EXPECT_EQ(files::Read(Path(L"utf8.txt")), "\xEF\xBB\xBF" + files::Utf8(shown) + "x");
}

TEST_F(OpenSaveTest, ZeroBytesBecomeSpaces) {
    ASSERT_TRUE(OpenFile(L"zero.txt", std::string("a\0b", 3)));
    ASSERT_TRUE(editor.Type(L"x"));
    ASSERT_TRUE(editor.Keys(L"Ctrl+S"));
    EXPECT_TRUE(editor.Answer(Path(L"zero.txt") + LosesBytes, L"Yes"));
    EXPECT_TRUE(editor.WaitForTitle(Path(L"zero.txt") + L" - Orvane"));
    EXPECT_EQ(files::Read(Path(L"zero.txt")), "xa b");
}

TEST_F(OpenSaveTest, UndoBackToTheSavedTextTakesTheMarkAway) {
    ASSERT_TRUE(OpenFile(L"a.txt", "one"));
    ASSERT_TRUE(editor.Type(L"x"));
    EXPECT_EQ(SaveAndRead(L"a.txt"), "xone");
    ASSERT_TRUE(editor.Keys(L"Ctrl+Z"));
    EXPECT_TRUE(editor.WaitForTitle(Path(L"a.txt") + L"* - Orvane"));
    ASSERT_TRUE(editor.Keys(L"Ctrl+Y"));
    EXPECT_TRUE(editor.WaitForTitle(Path(L"a.txt") + L" - Orvane"));
}

TEST_F(OpenSaveTest, AFailedSaveIsReportedAndKeepsTheChange) {
    ASSERT_TRUE(OpenFile(L"a.txt", "one"));
    ASSERT_TRUE(editor.Type(L"x"));
    ASSERT_TRUE(editor.WaitForTitle(Path(L"a.txt") + L"* - Orvane"));
    // Held open without sharing, the file cannot be written.
    const HANDLE held = CreateFileW(Path(L"a.txt").c_str(), GENERIC_READ, 0, nullptr, OPEN_EXISTING, 0, nullptr);
    ASSERT_NE(held, INVALID_HANDLE_VALUE);
    ASSERT_TRUE(editor.Keys(L"Ctrl+S"));
    EXPECT_TRUE(editor.Answer(L"Failed saving file: " + Path(L"a.txt"), L"OK"));
    CloseHandle(held);
    EXPECT_EQ(editor.Title(), Path(L"a.txt") + L"* - Orvane");
    ASSERT_TRUE(editor.Keys(L"Ctrl+Z"));
    EXPECT_TRUE(editor.WaitForTitle(Path(L"a.txt") + L" - Orvane"));
    EXPECT_EQ(files::Read(Path(L"a.txt")), "one");
}

TEST_F(OpenSaveTest, OvertypeShowsAndReplaces) {
    ASSERT_TRUE(OpenFile(L"a.txt", "one"));
    ASSERT_TRUE(editor.Keys(L"Insert"));
    EXPECT_TRUE(editor.WaitForStatus(4, L"\tOVR"));
    ASSERT_TRUE(editor.Type(L"xy"));
    ASSERT_TRUE(editor.WaitForStatus(3, L"\tCol 3"));
    EXPECT_EQ(SaveAndRead(L"a.txt"), "xye");
}
