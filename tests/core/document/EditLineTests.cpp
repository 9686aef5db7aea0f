#include "document/TextBuffer.h"

#include "support/FakeEngine.h"
#include "support/FakeView.h"
#include "support/TextDocument.h"

#include <gtest/gtest.h>

namespace {

using States = std::vector<uint32_t>;

// A document with one active view, in which a user types.
class EditLineTest : public ::testing::Test {
protected:
    EditLineTest() { Start(u""); }
    void Start(const std::u16string& text) {
        TextBufferProbe::Fill(*document, text);
        if (!view) view = FakeView::Create(*document);
        view->Activate();
        view->ForgetCalls();
    }
    void Type(const std::u16string& text) {
        for (Char ch : text) ASSERT_TRUE(document->TypeChar(view, ch, view->CaretColumn(), true, false));
    }
    void Overtype(const std::u16string& text) {
        for (Char ch : text) ASSERT_TRUE(document->TypeChar(view, ch, view->CaretColumn(), true, true));
    }

    TextDocument document;
    FakeView* view = nullptr;
};

} // namespace

TEST_F(EditLineTest, HoldsTheLineWithItsLineFeed) {
    Start(u"one\ntwo\nthree");
    EXPECT_TRUE(document->LoadEditLine(1));
    EXPECT_EQ(document.EditLineText(), u"two\n");
    EXPECT_EQ(document->EditLineNumber(), 1u);
    EXPECT_EQ(document->EditLineStart(), 4u);
    EXPECT_EQ(document->EditLineStoreLength(), 4u);
    EXPECT_FALSE(document->HasPendingEdit());
}

TEST_F(EditLineTest, HoldsTheLastLineWithTheTerminator) {
    Start(u"one\ntwo");
    EXPECT_TRUE(document->LoadEditLine(1));
    EXPECT_EQ(document.EditLineText(), std::u16string(u"two\0", 4));
    EXPECT_EQ(document->EditLineStoreLength(), 4u);
}

TEST_F(EditLineTest, OfAFileEndingInALineFeedTheLastLineHoldsOnlyTheTerminator) {
    Start(u"one\n");
    EXPECT_TRUE(document->LoadEditLine(1));
    EXPECT_EQ(document.EditLineText(), std::u16string(u"\0", 1));
    EXPECT_EQ(document->EditLineStart(), 4u);
}

TEST_F(EditLineTest, ALinePastTheEndOpensTheLastOne) {
    Start(u"one\ntwo");
    EXPECT_TRUE(document->LoadEditLine(100));
    EXPECT_EQ(document->EditLineNumber(), 1u);
    EXPECT_EQ(document.EditLineText(), std::u16string(u"two\0", 4));
}

TEST_F(EditLineTest, TypingTouchesOnlyTheCopy) {
    Start(u"one\ntwo\n");
    Type(u"ab");
    EXPECT_EQ(document.Store(), u"one\ntwo\n");
    EXPECT_EQ(document.EditLineText(), u"abone\n");
    EXPECT_TRUE(document->HasPendingEdit());
    EXPECT_EQ(document.Text(), u"abone\ntwo\n");
    EXPECT_EQ(view->CaretColumn(), 2u);
    EXPECT_EQ(document.UndoStates(), (States{3}));
}

TEST_F(EditLineTest, LoadingTheLineThatIsOpenKeepsWhatIsPending) {
    Start(u"one\ntwo\n");
    Type(u"x");
    EXPECT_TRUE(document->LoadEditLine(0));
    EXPECT_EQ(document.EditLineText(), u"xone\n");
    EXPECT_TRUE(document->HasPendingEdit());
}

TEST_F(EditLineTest, LoadingAnotherLineWritesBackFirst) {
    Start(u"one\ntwo\n");
    Type(u"x");
    EXPECT_TRUE(document->LoadEditLine(1));
    EXPECT_EQ(document.Store(), u"xone\ntwo\n");
    EXPECT_EQ(document.EditLineText(), u"two\n");
    EXPECT_EQ(document->EditLineStart(), 5u);
    EXPECT_FALSE(document->HasPendingEdit());
    EXPECT_EQ(document.UndoStates(), (States{2}));
}

TEST_F(EditLineTest, CommitWritesALongerAShorterAndAnEqualLineBack) {
    Start(u"abc\ndef");
    Type(u"12");
    EXPECT_TRUE(document->CommitEdit());
    EXPECT_EQ(document.Store(), u"12abc\ndef");
    EXPECT_EQ(document->EditLineNumber(), NoLine);

    view->PutCaret(1, 0);
    ASSERT_TRUE(document->DeleteInEditLine(view, {0, 2})); // the last line: pending
    EXPECT_TRUE(document->HasPendingEdit());
    EXPECT_TRUE(document->CommitEdit());
    EXPECT_EQ(document.Store(), u"12abc\nf");

    view->PutCaret(0, 0);
    Overtype(u"X");
    EXPECT_TRUE(document->CommitEdit());
    EXPECT_EQ(document.Store(), u"X2abc\nf");
    EXPECT_EQ(document->Content()[document->Length()], 0);
}

TEST_F(EditLineTest, CommitWithNothingPendingKeepsTheLineOpen) {
    Start(u"abc\n");
    EXPECT_TRUE(document->CommitEdit());
    EXPECT_EQ(document->EditLineNumber(), 0u);
}

TEST_F(EditLineTest, CommitKeepsTheLinesBelowFindable) {
    Start(u"0\n1\n2\n3\n");
    for (uint32_t line = 0; line < 5; ++line) document->LineToOffset(line);
    view->PutCaret(1, 0);
    Type(u"xyz");
    EXPECT_TRUE(document->CommitEdit());
    const uint32_t starts[] = {0, 2, 7, 9, 11};
    for (uint32_t line = 0; line < 5; ++line) EXPECT_EQ(document->LineToOffset(line), starts[line]);
    EXPECT_EQ(document->GetLineCount(), 5u);
}

TEST_F(EditLineTest, CommitEndsWithExactlyTheRoomNeeded) {
    Start(u"abc");
    Type(u"defgh");
    EXPECT_TRUE(document->CommitEdit());
    EXPECT_EQ(TextBufferProbe::Capacity(*document), 9u);
}

TEST_F(EditLineTest, TypingFollowsTheLineOfTheView) {
    Start(u"one\ntwo\n");
    EXPECT_TRUE(document->LoadEditLine(0));
    FakeView* other = FakeView::Create(*document);
    other->PutCaret(1, 3);
    EXPECT_TRUE(document->TypeChar(other, u'!', 3, true, false));
    EXPECT_TRUE(document->CommitEdit());
    EXPECT_EQ(document.Store(), u"one\ntwo!\n");
}

TEST_F(EditLineTest, AColumnPastTheLineEndTypesAtTheEnd) {
    Start(u"ab\ncd");
    EXPECT_TRUE(document->TypeChar(view, u'x', 50, true, false));
    EXPECT_EQ(document.Text(), u"abx\ncd");
    view->PutCaret(1, 0);
    EXPECT_TRUE(document->TypeChar(view, u'y', 50, true, true));
    EXPECT_EQ(document.Text(), u"abx\ncdy");
}

// Coalescing.

TEST_F(EditLineTest, AWordASpaceAndAWordAreThreeSteps) {
    Type(u"ab cd");
    EXPECT_EQ(document.UndoSteps(), 3u);
    EXPECT_TRUE(document->Undo());
    EXPECT_EQ(document.Text(), u"ab ");
    EXPECT_TRUE(document->Undo());
    EXPECT_EQ(document.Text(), u"ab");
    EXPECT_TRUE(document->Undo());
    EXPECT_EQ(document.Text(), u"");
}

TEST_F(EditLineTest, AHashBelongsToTheWord) {
    Type(u"a#b");
    EXPECT_EQ(document.UndoSteps(), 1u);
}

TEST_F(EditLineTest, WordCharactersAreAsciiLettersDigitsUnderscoreAndHash) {
    Type(u"azAZ09_#");
    EXPECT_EQ(document.UndoSteps(), 1u);
    Type(u" +-\u00e4\u03b1\t");
    EXPECT_EQ(document.UndoSteps(), 2u) << "all others are one class, letters beyond ASCII among them";
}

TEST_F(EditLineTest, ACharacterElsewhereInTheLineStartsAStep) {
    Type(u"ab");
    EXPECT_TRUE(document->TypeChar(view, u'c', 0, true, false));
    EXPECT_TRUE(document->TypeChar(view, u'd', 1, true, false));
    EXPECT_EQ(document.UndoSteps(), 2u);
    EXPECT_EQ(document.Text(), u"cdab");
}

TEST_F(EditLineTest, TypingAfterTheLineWasLeftStartsAStep) {
    Start(u"\n\n");
    Type(u"ab");
    view->PutCaret(1, 0);
    view->PutCaret(0, 2);
    Type(u"c");
    EXPECT_EQ(document.UndoStates(), (States{3, 2}));
}

TEST_F(EditLineTest, TypingAfterAGroupMarkerStartsAStep) {
    Type(u"a");
    EXPECT_TRUE(document->BeginGroup());
    Type(u"b");
    EXPECT_TRUE(document->EndGroup());
    Type(u"c");
    EXPECT_EQ(document.UndoStates(), (States{3, 1, 3, 0, 3}));
}

TEST_F(EditLineTest, EndTypingStartsAStep) {
    Type(u"ab");
    document->EndTyping();
    Type(u"cd");
    EXPECT_EQ(document.UndoSteps(), 2u);
    EXPECT_TRUE(document->HasPendingEdit()) << "and does not write the line back";
}

TEST_F(EditLineTest, EveryOvertypedCharacterIsAStep) {
    Start(u"abc");
    Overtype(u"xy");
    EXPECT_EQ(document.UndoSteps(), 2u);
    EXPECT_EQ(document.Text(), u"xyc");
    Type(u"z");
    EXPECT_EQ(document.UndoSteps(), 3u) << "a record that remembers a replaced character takes no further ones";
    EXPECT_TRUE(document->Undo());
    EXPECT_TRUE(document->Undo());
    EXPECT_EQ(document.Text(), u"xbc");
    EXPECT_TRUE(document->Undo());
    EXPECT_EQ(document.Text(), u"abc");
}

TEST_F(EditLineTest, OvertypingAtTheLineEndInserts) {
    Start(u"a\nb");
    view->PutCaret(0, 1);
    Overtype(u"xy");
    EXPECT_EQ(document.Text(), u"axy\nb");
    EXPECT_TRUE(document->Undo());
    EXPECT_TRUE(document->Undo());
    EXPECT_EQ(document.Text(), u"a\nb");
}

TEST_F(EditLineTest, TypingAfterAPendingDeletionStartsAStep) {
    Start(u"abcd");
    ASSERT_TRUE(document->DeleteInEditLine(view, {1, 2}));
    ASSERT_TRUE(document->TypeChar(view, u'x', 2, true, false)); // column + 1 of the deletion
    EXPECT_EQ(document.UndoSteps(), 2u);
    EXPECT_TRUE(document->Undo());
    EXPECT_TRUE(document->Undo());
    EXPECT_EQ(document.Text(), u"abcd");
}

TEST_F(EditLineTest, CoalescedTypingMovesOnlyTheViewThatTypes) {
    Start(u"\nabc\n");
    FakeView* other = FakeView::Create(*document);
    other->PutCaret(1, 2);
    other->ForgetCalls();
    Type(u"a");
    EXPECT_EQ(other->CaretLine(), 1u);
    EXPECT_EQ(other->CaretColumn(), 1u) << "a new record moves every caret to its column";
    other->ForgetCalls();
    Type(u"b");
    EXPECT_EQ(view->CaretColumn(), 2u);
    EXPECT_EQ(other->caretMoves, 0);
}

// The engine and what is repainted.

TEST_F(EditLineTest, WithoutAnEngineOnlyTheEditLineIsRepainted) {
    Start(u"one\ntwo\n");
    view->PutCaret(1, 0);
    view->ForgetCalls();
    Type(u"ab");
    EXPECT_EQ(view->invalidations, 0);
    EXPECT_EQ(view->invalidatedLines, (std::vector<LineRange>{{1, 1}, {1, 1}}));
}

TEST_F(EditLineTest, TheEngineIsGivenTheLineAfterEveryChange) {
    Start(u"one\ntwo\n");
    auto* engine = new FakeEngine;
    document->AttachEngine(engine);
    Type(u"a");
    ASSERT_FALSE(engine->asked.empty());
    EXPECT_EQ(engine->asked.back(), u"aone\n") << "line feed included";
    Type(u"b");
    EXPECT_EQ(engine->asked.back(), u"abone\n");
    EXPECT_EQ(view->invalidations, 0);
}

TEST_F(EditLineTest, WhenLaterLinesMayChangeColourAllIsRepainted) {
    Start(u"one\ntwo\n");
    document->AttachEngine(new FakeEngine);
    Type(u"a");
    view->ForgetCalls();
    Type(u"*");
    EXPECT_EQ(view->invalidations, 1);
    EXPECT_TRUE(view->invalidatedLines.empty());
}

TEST_F(EditLineTest, AMarkerThatGoesAwayRepaintsAllAsWell) {
    Start(u"a*b\ntwo\n");
    document->AttachEngine(new FakeEngine);
    view->PutCaret(0, 1);
    view->ForgetCalls();
    Overtype(u"x");
    EXPECT_EQ(view->invalidations, 1);
    view->ForgetCalls();
    Overtype(u"y");
    EXPECT_EQ(view->invalidations, 0);
}

TEST_F(EditLineTest, CoalescedTypingWithoutNotificationAsksAndPaintsNothing) {
    auto* engine = new FakeEngine;
    document->AttachEngine(engine);
    Type(u"a");
    engine->asked.clear();
    view->ForgetCalls();
    EXPECT_TRUE(document->TypeChar(view, u'b', 1, false, false));
    EXPECT_TRUE(engine->asked.empty());
    EXPECT_TRUE(view->invalidatedLines.empty());
    EXPECT_EQ(document.Text(), u"ab");
    EXPECT_EQ(view->CaretColumn(), 2u);
}

// Deleting.

TEST_F(EditLineTest, DeletingInALineWithALineFeedChangesTheStore) {
    Start(u"abcd\nef");
    Type(u"x");
    EXPECT_TRUE(document->DeleteInEditLine(view, {1, 3}));
    EXPECT_EQ(document.Store(), u"xcd\nef");
    EXPECT_EQ(document.UndoStates(), (States{2, 2}));
    EXPECT_TRUE(document->DeleteInEditLine(view, {3, 4}));
    EXPECT_EQ(document.Store(), u"xcdef") << "the line feed itself can go";
}

TEST_F(EditLineTest, DeletingInTheLastLineIsPending) {
    Start(u"one\nabcd");
    view->PutCaret(1, 1);
    EXPECT_TRUE(document->DeleteInEditLine(view, {1, 3}));
    EXPECT_EQ(document.Store(), u"one\nabcd");
    EXPECT_EQ(document.Text(), u"one\nad");
    EXPECT_EQ(document.UndoStates(), (States{3}));
    EXPECT_TRUE(document->Undo());
    EXPECT_EQ(document.Text(), u"one\nabcd");
}

TEST_F(EditLineTest, DeletingInTheLastLineStopsAtItsEnd) {
    Start(u"abcd");
    EXPECT_TRUE(document->DeleteInEditLine(view, {2, 102}));
    EXPECT_EQ(document.Text(), u"ab");
    EXPECT_TRUE(document->DeleteInEditLine(view, {1, 2}));
    EXPECT_EQ(document.Text(), u"a");
    EXPECT_TRUE(document->DeleteInEditLine(view, {0, UINT32_MAX}));
    EXPECT_EQ(document.Text(), u"");
}

TEST_F(EditLineTest, DeletingNothingInTheLastLineFails) {
    Start(u"abcd");
    EXPECT_FALSE(document->DeleteInEditLine(view, {4, 5}));
    EXPECT_FALSE(document->DeleteInEditLine(view, {9, 10}));
    EXPECT_FALSE(document->DeleteInEditLine(view, {1, 1}));
    EXPECT_EQ(document.UndoSteps(), 0u);
}

TEST_F(EditLineTest, DeletingWithoutAnEditLineFails) {
    TextDocument fresh(u"abc");
    EXPECT_FALSE(fresh->DeleteInEditLine(nullptr, {0, 1}));
}

// Read-only documents.

TEST_F(EditLineTest, EditsOfAReadOnlyDocumentSucceedAndChangeNothing) {
    Start(u"abc\n  ");
    EXPECT_TRUE(document->MarkAsOutput());
    EXPECT_TRUE(document->TypeChar(view, u'x', 0, true, false));
    EXPECT_TRUE(document->TypeChar(view, u'\r', 0, true, false));
    EXPECT_TRUE(document->NewLine(view, 1));
    EXPECT_TRUE(document->DeleteInEditLine(view, {0, 1}));
    EXPECT_TRUE(document->InsertText(0, u"x", 1));
    EXPECT_TRUE(document->DeleteText({0, 1}));
    EXPECT_TRUE(document->BeginGroup());
    EXPECT_TRUE(document->EndGroup());
    EXPECT_EQ(document.Text(), u"abc\n  ");
    EXPECT_EQ(document.UndoSteps(), 0u);
    EXPECT_FALSE(document->IsModified());
    EXPECT_EQ(view->documentChanges, 0);
}

TEST_F(EditLineTest, TheEditLineFollowsTheCaretOfTheActiveView) {
    Start(u"one\ntwo\nthree");
    view->PutCaret(2, 1);
    EXPECT_EQ(document->EditLineNumber(), 2u);
    EXPECT_TRUE(document->CommitEdit());
    EXPECT_TRUE(document->InsertText(0, u"x\n", 2)); // the caret follows to line 1
    EXPECT_EQ(view->CaretLine(), 1u);
    EXPECT_EQ(document->EditLineNumber(), 1u);
    EXPECT_EQ(document.EditLineText(), u"one\n");
}
