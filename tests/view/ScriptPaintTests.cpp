// Text in the scripts of the world, as a window shows it.
#include "TextViewTest.h"
#include "support/ScriptSample.h"

namespace {

using ScriptPaintTest = TextViewTest;

TEST_F(ScriptPaintTest, EveryScriptIsSeenInItsRowAndNowhereElse) {
    UseSettings(u"ShowLineNumbers=0\nColumnGuide=0\nTextFg=#000000\nTextBg=#ffffff");
    constexpr Colour White = Rgb(255, 255, 255);
    const std::vector<ScriptLine> sample = ReadScriptSample();
    ASSERT_GE(sample.size(), 20u);
    for (const ScriptLine& line : sample) {
        SCOPED_TRACE(line.name);
        Show(u"\n" + line.text + u"\n");
        Editor().MoveCaret({1, static_cast<uint32_t>(line.text.size())}, false);
        const int64_t width = Editor().Viewport().CaretX(Editor().Caret());
        const int end = TextLeft() + static_cast<int>(width) + Average(); // a glyph may lean over its place
        const Picture picture = Paint();
        ASSERT_LT(end, picture.width);
        EXPECT_FALSE(picture.IsAll(White, TextLeft(), LineHeight(), end, 2 * LineHeight()));
        EXPECT_TRUE(picture.IsAll(White, end, LineHeight(), picture.width, 2 * LineHeight()));
        EXPECT_TRUE(picture.IsAll(White, TextLeft(), 0, picture.width, LineHeight()));
        EXPECT_TRUE(picture.IsAll(White, TextLeft(), 2 * LineHeight(), picture.width, picture.height));
    }
}

} // namespace
