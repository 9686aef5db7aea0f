// Text of many scripts, opened, typed by the system's own messages, and saved.
#include "app/AppTest.h"
#include "support/ScriptSample.h"

namespace {

class ScriptTest : public AppTest, public testing::WithParamInterface<Encoding> {};

TEST_P(ScriptTest, TextOfEveryScriptIsTypedAndSaved) {
    ASSERT_TRUE(files::Write(files::SettingsPath(), "[General]\r\nUtf8=1\r\nWholeCharacters=1\r\n"));
    const std::vector<ScriptLine> sample = ReadScriptSample();
    ASSERT_GT(sample.size(), 20u);
    std::u16string before;
    std::u16string expected;
    for (const ScriptLine& line : sample) {
        before += line.text + u"\r\n";
        expected += line.text + line.text + u"\r\n";
    }
    ASSERT_TRUE(OpenFile(L"scripts.txt", PlainEncoding::FileOf(before, GetParam())));
    for (const ScriptLine& line : sample) {
        ASSERT_TRUE(editor.Keys(L"End"));
        ASSERT_TRUE(editor.Type(std::wstring(line.text.begin(), line.text.end())));
        ASSERT_TRUE(editor.Keys(L"Down"));
    }
    ASSERT_TRUE(editor.WaitForTitle(Path(L"scripts.txt") + L"* - Orvane"));
    EXPECT_EQ(SaveAndRead(L"scripts.txt"), PlainEncoding::FileOf(expected, GetParam()));
}

INSTANTIATE_TEST_SUITE_P(Files, ScriptTest, testing::Values(Encoding::PlainUtf8, Encoding::Unicode),
                         [](const auto& file) { return file.param == Encoding::Unicode ? "Utf16" : "Utf8"; });

} // namespace
