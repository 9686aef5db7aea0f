#include "view/BracketMatch.h"

#include "HighlightEngine.h"
#include "support/TextDocument.h"
#include "view/ShownText.h"
#include "view/TextCaret.h"

#include <gtest/gtest.h>

namespace {

class BracketMatchTest : public ::testing::Test {
protected:
    BracketMatchTest() {
        document->AttachEngine(engine);
        text.Show(&*document);
    }

    bool IsAtBracket(uint32_t line, uint32_t column) {
        caret.MoveTo(text, {line, column}, false);
        return BracketMatch::IsAtBracket(text, caret);
    }
    BracketPair Match(uint32_t line, uint32_t column) {
        caret.MoveTo(text, {line, column}, false);
        BracketMatch::Update(text, caret);
        return BracketMatch::Highlighted(text);
    }

    TextDocument document{u"f(a\n)("};
    HighlightEngine* engine = new HighlightEngine; // the document's
    ShownText text;
    TextCaret caret;
};

TEST_F(BracketMatchTest, AnOpenerAfterAndACloserBeforeTheCaretCount) {
    EXPECT_TRUE(IsAtBracket(0, 1));
    EXPECT_FALSE(IsAtBracket(0, 2)); // after an opener
    EXPECT_FALSE(IsAtBracket(0, 0));
    EXPECT_FALSE(IsAtBracket(1, 0)); // before a closer
    EXPECT_TRUE(IsAtBracket(1, 1));
}

TEST_F(BracketMatchTest, ThePairIsHighlightedFromEitherEnd) {
    const BracketPair opened = {{1, 0}, {4, 1}};
    EXPECT_EQ(Match(0, 1), opened);
    EXPECT_EQ(engine->ranges[0].start, 1u);
    EXPECT_EQ(engine->ranges[1].start, 4u);
    EXPECT_EQ(engine->ranges[1].end, 5u);
    EXPECT_EQ(Match(0, 0), BracketPair());
    EXPECT_EQ(engine->ranges[0].start, NoOffset);
}

TEST_F(BracketMatchTest, TheOpenerAfterTheCaretComesFirst) {
    EXPECT_TRUE(IsAtBracket(1, 1));
    EXPECT_EQ(Match(1, 1), BracketPair()); // it has no partner, though the closer before has one
}

TEST_F(BracketMatchTest, ClearedNothingIsHighlighted) {
    Match(0, 1);
    BracketMatch::Clear(text);
    EXPECT_EQ(BracketMatch::Highlighted(text), BracketPair());
    EXPECT_EQ(engine->ranges[0].start, NoOffset);
}

} // namespace
