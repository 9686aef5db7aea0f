// Text of many scripts, opened, edited at both ends of each line and saved, compared byte for byte with what plain
// strings become.

#include "support/NoRecoveryFolder.h"
#include "support/ScratchFolder.h"
#include "support/ScriptSample.h"
#include "support/ViewTest.h"
#include "support/WithAdditional.h"

#include <algorithm>

namespace {

class ScriptTest : public ViewTest {
protected:
    ScriptTest() { on->Utf8 = on->WholeCharacters = 1; }

    void ShowLine(const ScriptLine& line) {
        ASSERT_EQ(line.Stops().back(), line.text.size()) << line.name;
        Fill(line.text);
    }

    const WithAdditional on;
    const std::vector<ScriptLine> sample = ReadScriptSample();
};

} // namespace

TEST_F(ScriptTest, TheSampleHasMoreThanTwentyScripts) { EXPECT_GT(sample.size(), 20u); }

TEST_F(ScriptTest, ArrowsAndClicksStopBetweenCharacters) {
    for (const ScriptLine& line : sample) {
        ASSERT_NO_FATAL_FAILURE(ShowLine(line));
        const std::vector<uint32_t> stops = line.Stops();
        for (size_t i = 1; i < stops.size(); ++i) {
            Press(ViewKey::Right);
            EXPECT_EQ(view().CaretColumn(), stops[i]) << line.name;
        }
        for (size_t i = stops.size() - 1; i-- > 0;) {
            Press(ViewKey::Left);
            EXPECT_EQ(view().CaretColumn(), stops[i]) << line.name;
        }
        for (int32_t x = 0; x <= 8 * static_cast<int32_t>(line.text.size()); ++x) {
            input().Drag().OnLeftButtonDown({x, 0}, false);
            input().Drag().OnLeftButtonUp();
            EXPECT_TRUE(std::binary_search(stops.begin(), stops.end(), view().CaretColumn())) << line.name << x;
        }
    }
}

TEST_F(ScriptTest, DeleteTakesCharactersWithTheirMarks) {
    for (const ScriptLine& line : sample) {
        ASSERT_NO_FATAL_FAILURE(ShowLine(line));
        for (const uint32_t stop : line.Stops()) {
            EXPECT_EQ(Text(), line.text.substr(stop)) << line.name;
            Press(ViewKey::Delete);
        }
        while (buffer().CanDo(DocumentCommand::Undo)) Ctrl(u'Z');
        EXPECT_EQ(Text(), line.text) << line.name;
    }
}

// In each line the first character is deleted, and typed again at its end after two others.
TEST_F(ScriptTest, FilesAreOpenedEditedAndSavedInEveryEncoding) {
    std::u16string before;
    std::u16string expected;
    for (const ScriptLine& line : sample) {
        before += line.text + u"\r\n";
        expected += line.text.substr(line.First().size()) + u"\u0105\U0001F600" + line.First() + u"\r\n";
    }
    const NoRecoveryFolder none;
    for (const Encoding encoding :
         {Encoding::Unicode, Encoding::UnicodeBigEndian, Encoding::Utf8, Encoding::PlainUtf8}) {
        const ScratchFolder folder;
        const std::u16string path = folder.Write("scripts.txt", PlainEncoding::FileOf(before, encoding));
        Fill(u"");
        ASSERT_TRUE(buffer().Load(path.c_str(), false));
        for (uint32_t i = 0; i < sample.size(); ++i) {
            view().MoveCaret({i, 0});
            Press(ViewKey::Delete);
            Press(ViewKey::End);
            Type(u"\u0105\U0001F600" + sample[i].First());
        }
        ASSERT_TRUE(buffer().Save(path.c_str(), Encoding::Keep, LineEnding::Keep));
        EXPECT_EQ(folder.Read("scripts.txt"), PlainEncoding::FileOf(expected, encoding));
    }
}
