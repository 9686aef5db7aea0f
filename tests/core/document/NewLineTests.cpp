#include "document/TextBuffer.h"

#include "support/FakeView.h"
#include "support/TextDocument.h"

#include <gtest/gtest.h>

namespace {

using States = std::vector<uint32_t>;

class NewLineTest : public ::testing::Test {
protected:
    // Presses Enter at (line, column) of a fresh text.
    void Enter(const std::u16string& text, uint32_t line, uint32_t column) {
        TextBufferProbe::Fill(*document, text);
        view = FakeView::Create(*document);
        view->PutCaret(line, column);
        view->Activate();
        ASSERT_TRUE(document->TypeChar(view, u'\r', column, true, false));
    }

    TextDocument document;
    FakeView* view = nullptr;
};

} // namespace

TEST_F(NewLineTest, BreaksTheLineAtTheCaret) {
    Enter(u"abcd\nef", 0, 2);
    EXPECT_EQ(document.Store(), u"ab\ncd\nef");
    EXPECT_EQ(document->GetLineCount(), 3u);
    EXPECT_EQ(view->CaretLine(), 1u);
    EXPECT_EQ(view->CaretColumn(), 0u);
    EXPECT_EQ(document.UndoStates(), (States{2}));
}

TEST_F(NewLineTest, ATypedLineFeedBreaksTheLineToo) {
    Enter(u"a", 0, 1);
    EXPECT_TRUE(document->TypeChar(view, u'\n', 0, true, false));
    EXPECT_EQ(document.Text(), u"a\n\n");
    EXPECT_EQ(document->GetLineCount(), 3u);
}

TEST_F(NewLineTest, WritesBackWhatIsPendingFirst) {
    Enter(u"", 0, 0);
    for (Char ch : std::u16string(u"ab")) EXPECT_TRUE(document->TypeChar(view, ch, view->CaretColumn(), true, false));
    EXPECT_TRUE(document->NewLine(view, 1));
    EXPECT_EQ(document.Store(), u"\na\nb");
}

TEST_F(NewLineTest, TakesTheLeadingBlanksAlong) {
    Enter(u" \t x", 0, 4);
    EXPECT_EQ(document.Store(), u" \t x\n \t ");
    EXPECT_EQ(view->CaretColumn(), 3u);
}

TEST_F(NewLineTest, TakesAtMostAsManyBlanksAsAreBeforeTheCaret) {
    Enter(u"    x", 0, 2);
    EXPECT_EQ(document.Store(), u"  \n    x") << "two blanks are inserted, two were after the caret";
    EXPECT_TRUE(document->Undo());
    EXPECT_EQ(document.Store(), u"    x");
}

TEST_F(NewLineTest, OnALineIndentedByFourSpacesAtColumnTwoTheNewLineStartsWithTwo) {
    Enter(u"    ", 0, 2);
    EXPECT_EQ(document.Store(), u"  \n  ");
    EXPECT_EQ(view->CaretColumn(), 2u);
}

TEST_F(NewLineTest, RemovesTheBlanksAfterTheCaretInOneStep) {
    Enter(u"x   \ny", 0, 1);
    EXPECT_EQ(document.Store(), u"x\n\ny");
    EXPECT_EQ(document.UndoStates(), (States{1, 2, 2, 0}));
    EXPECT_EQ(document.UndoSteps(), 1u);
    EXPECT_TRUE(document->Undo());
    EXPECT_EQ(document.Store(), u"x   \ny");
    EXPECT_EQ(view->CaretLine(), 0u);
    EXPECT_EQ(view->CaretColumn(), 1u);
    EXPECT_TRUE(document->Redo());
    EXPECT_EQ(document.Store(), u"x\n\ny");
    EXPECT_FALSE(document->CanDo(DocumentCommand::Redo));
}

TEST_F(NewLineTest, RemovesTheBlanksAfterTheCaretInTheLastLineToo) {
    Enter(u"x   ", 0, 1);
    EXPECT_EQ(document.Store(), u"x\n");
    EXPECT_EQ(document.UndoStates(), (States{1, 2, 2, 0}));
    EXPECT_TRUE(document->Undo());
    EXPECT_EQ(document.Store(), u"x   ");
    EXPECT_TRUE(document->Redo());
    EXPECT_EQ(document.Store(), u"x\n");
}

TEST_F(NewLineTest, RemovesTabsAsWellAndIndentsWithTheLeadingBlanks) {
    Enter(u"\tx \t \n", 0, 2);
    EXPECT_EQ(document.Store(), u"\tx\n\t\n");
}

TEST_F(NewLineTest, KeepsBlanksThatAreFollowedByText) {
    Enter(u"x   y\n", 0, 1);
    EXPECT_EQ(document.Store(), u"x\n   y\n");
    EXPECT_EQ(document.UndoStates(), (States{2}));
}

TEST_F(NewLineTest, OnAnEmptyLineNothingIsRemoved) {
    Enter(u"\n", 0, 0);
    EXPECT_EQ(document.Store(), u"\n\n");
    EXPECT_EQ(document.UndoStates(), (States{2}));
}

TEST_F(NewLineTest, ALineOfBlanksIsCutAtTheCaret) {
    Enter(u"   \nz", 0, 0);
    EXPECT_EQ(document.Store(), u"\n\nz");
}

TEST_F(NewLineTest, ForgetsWhatCouldBeRedone) {
    Enter(u"x  \n", 0, 1);
    EXPECT_TRUE(document->Undo());
    view->PutCaret(0, 1);
    ASSERT_TRUE(document->NewLine(view, 1));
    EXPECT_FALSE(document->CanDo(DocumentCommand::Redo));
    EXPECT_EQ(document.Store(), u"x\n\n");
}
