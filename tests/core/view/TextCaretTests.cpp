#include "view/TextCaret.h"

#include "document/TextChange.h"
#include "support/TextDocument.h"
#include "view/ShownText.h"

#include <gtest/gtest.h>

#include <array>

namespace {

class TextCaretTest : public ::testing::Test {
protected:
    // Line, column, offset and anchor.
    using Place = std::array<uint32_t, 4>;

    TextCaretTest() { text.Show(&*document); }
    Place Caret() const { return {caret.Line(), caret.Column(), caret.Offset(), caret.Anchor()}; }

    TextDocument document{u"one\nthree\nsix"};
    ShownText text;
    TextCaret caret;
};

TEST_F(TextCaretTest, StartsAtTheStart) { EXPECT_EQ(Caret(), (Place{0, 0, 0, 0})); }

TEST_F(TextCaretTest, MovesWithItsAnchorUnlessItExtends) {
    caret.MoveTo(text, {1, 2}, false);
    EXPECT_EQ(Caret(), (Place{1, 2, 6, 6}));
    EXPECT_FALSE(caret.HasSelection());
    caret.MoveTo(text, {0, 1}, true);
    EXPECT_EQ(Caret(), (Place{0, 1, 1, 6}));
    EXPECT_EQ(caret.SelectionStart(), 1u);
    EXPECT_EQ(caret.SelectionEnd(), 6u);
    caret.Collapse();
    EXPECT_EQ(Caret(), (Place{0, 1, 1, 1}));
}

TEST_F(TextCaretTest, PlacesAreClampedToTheText) {
    caret.MoveTo(text, {0, 9}, false);
    EXPECT_EQ(Caret(), (Place{0, 3, 3, 3}));
    EXPECT_EQ(caret.PreferredColumn(), 9u); // for a longer line below
    caret.MoveTo(text, {9, 9}, false);
    EXPECT_EQ(Caret(), (Place{2, 3, 13, 13}));
    caret.SetAnchor(text, 99);
    EXPECT_EQ(caret.Anchor(), 13u);
}

TEST_F(TextCaretTest, StaysAtItsPlaceWhenTextBeforeItGrows) {
    caret.MoveTo(text, {1, 2}, false);
    caret.MoveTo(text, {1, 4}, true);
    ASSERT_TRUE(document->InsertText(4, u"xx", 2));
    TextChange change;
    change.start = 4;
    change.startLine = 1;
    change.inserted.characters = 2;
    caret.Follow(text, change);
    EXPECT_EQ(Caret(), (Place{1, 6, 10, 8}));
}

TEST_F(TextCaretTest, StaysAtItsPlaceWhenLinesComeBeforeIt) {
    caret.MoveTo(text, {2, 1}, false);
    ASSERT_TRUE(document->InsertText(3, u"\nx", 2));
    TextChange change;
    change.start = 3;
    change.inserted.characters = 2;
    change.inserted.lineFeeds = 1;
    caret.Follow(text, change);
    EXPECT_EQ(Caret(), (Place{3, 1, 13, 13}));
}

TEST_F(TextCaretTest, TextAfterItDoesNotMoveIt) {
    caret.MoveTo(text, {0, 2}, false);
    ASSERT_TRUE(document->InsertText(9, u"xx", 2));
    TextChange change;
    change.start = 9;
    change.startLine = 1;
    change.inserted.characters = 2;
    caret.Follow(text, change);
    EXPECT_EQ(Caret(), (Place{0, 2, 2, 2}));
}

} // namespace
