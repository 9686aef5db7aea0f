#include "view/ShownText.h"

#include "support/FakeView.h"
#include "support/TextDocument.h"

#include <gtest/gtest.h>

#include <string>

namespace {

// A text whose second line is open and was typed into: "one", "twxyo", "three".
class ShownTextTest : public ::testing::Test {
protected:
    ShownTextTest() {
        FakeView* view = FakeView::Create(*document);
        view->Activate();
        view->PutCaret(1, 2);
        EXPECT_TRUE(document->TypeChar(view, u'x', 2, true, false));
        EXPECT_TRUE(document->TypeChar(view, u'y', 3, true, false));
        EXPECT_TRUE(document->HasPendingEdit());
        text.Show(&*document);
    }
    std::u16string Line(uint32_t line) const {
        const TextSpan span = text.Line(line);
        return {span.text, span.length};
    }

    TextDocument document{u"one\ntwo\nthree"};
    ShownText text;
};

TEST_F(ShownTextTest, TheOpenLineIsReadAsItWasEdited) {
    EXPECT_EQ(Line(0), u"one");
    EXPECT_EQ(Line(1), u"twxyo");
    EXPECT_EQ(Line(2), u"three");
    EXPECT_EQ(Line(9), u"three"); // past the end
    EXPECT_EQ(text.Length(), 15u);
    EXPECT_EQ(text.LineCount(), 3u);
}

TEST_F(ShownTextTest, OffsetsCountTheEditedLine) {
    EXPECT_EQ(text.LineStart(1), 4u);
    EXPECT_EQ(text.LineStart(2), 10u);
    EXPECT_EQ(text.PositionOf(3), (TextPosition{0, 3}));
    EXPECT_EQ(text.PositionOf(4), (TextPosition{1, 0}));
    EXPECT_EQ(text.PositionOf(9), (TextPosition{1, 5}));
    EXPECT_EQ(text.PositionOf(10), (TextPosition{2, 0}));
    EXPECT_EQ(text.LineOf(15), 2u);
}

TEST_F(ShownTextTest, PositionsAndOffsetsAgreeEverywhere) {
    for (uint32_t offset = 0; offset <= text.Length(); ++offset) {
        const TextPosition place = text.PositionOf(offset);
        EXPECT_EQ(text.LineStart(place.line) + place.column, offset);
    }
}

TEST(ShownText, WithoutADocumentThereIsOneEmptyLine) {
    ShownText text;
    EXPECT_EQ(text.LineCount(), 1u);
    EXPECT_EQ(text.Length(), 0u);
    EXPECT_EQ(text.Line(0).length, 0u);
    EXPECT_EQ(text.LineStart(3), 0u);
    EXPECT_EQ(text.PositionOf(7), TextPosition());
    EXPECT_EQ(text.StateAt(0), 0u);
}

} // namespace
