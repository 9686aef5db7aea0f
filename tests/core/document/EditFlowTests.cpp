// An edit is made and recorded before the views are notified, and the edit line comes back once, at the end.

#include "document/TextBuffer.h"

#include "support/FakeView.h"
#include "support/TextDocument.h"

#include <gtest/gtest.h>

namespace {

using States = std::vector<uint32_t>;

class EditFlowTest : public ::testing::Test {
protected:
    EditFlowTest() : document(u"one   \ntwo\nthree"), view(FakeView::Create(*document)) {
        view->Activate();
        view->ForgetCalls();
        view->onMoved = [this] {
            recorded = document.UndoStates();
            undone = document.RedoStates();
            openLine = document->EditLineNumber();
        };
    }
    void ExpectOneEnd(uint32_t line) {
        EXPECT_EQ(view->editsFinished, 1);
        EXPECT_EQ(view->openLineAtEnd, line);
        EXPECT_EQ(document->EditLineNumber(), line);
        view->ForgetCalls();
    }

    TextDocument document;
    FakeView* view;
    // When an edit moved the view's caret last.
    States recorded;
    States undone;
    uint32_t openLine = NoLine;
};

} // namespace

TEST_F(EditFlowTest, AnInsertionIsRecordedBeforeTheViewMoves) {
    EXPECT_TRUE(document->InsertText(8, u"x\n", 2));
    EXPECT_EQ(recorded, (States{2}));
    EXPECT_EQ(openLine, NoLine) << "no line is open while the views are notified";
    ExpectOneEnd(2);
}

TEST_F(EditFlowTest, ATypedCharacterIsRecordedBeforeTheViewMoves) {
    EXPECT_TRUE(document->TypeChar(view, u'x', 0, true, false));
    EXPECT_EQ(recorded, (States{3}));
    ExpectOneEnd(0);
    EXPECT_TRUE(document->TypeChar(view, u'y', 1, true, false));
    EXPECT_EQ(document->EditLineNumber(), 0u);
    ExpectOneEnd(0);
}

TEST_F(EditFlowTest, UndoAndRedoHaveMovedTheRecordBeforeTheViewMoves) {
    EXPECT_TRUE(document->InsertText(8, u"x\n", 2));
    view->ForgetCalls();
    EXPECT_TRUE(document->Undo());
    EXPECT_EQ(recorded, (States{}));
    EXPECT_EQ(undone, (States{2}));
    ExpectOneEnd(0);
    EXPECT_TRUE(document->Redo());
    EXPECT_EQ(recorded, (States{2}));
    EXPECT_EQ(undone, (States{}));
    ExpectOneEnd(2);
}

TEST_F(EditFlowTest, AnEnterThatRemovesBlanksIsOneOperation) {
    EXPECT_TRUE(document->NewLine(view, 3));
    EXPECT_EQ(document.Text(), u"one\n\ntwo\nthree");
    ExpectOneEnd(1);
    EXPECT_TRUE(document->Undo());
    EXPECT_EQ(document.Text(), u"one   \ntwo\nthree");
    ExpectOneEnd(0);
}

TEST_F(EditFlowTest, AReplacementOfManyPlacesIsOneOperation) {
    Array<ReplacedRange> places;
    ASSERT_TRUE(places.Append({0, 1}) && places.Append({7, 1}));
    ASSERT_TRUE(document->ReplaceRanges(places, u"\n", 1));
    EXPECT_EQ(recorded, (States{2}));
    ExpectOneEnd(3);
}

TEST_F(EditFlowTest, TypingGoesOnInItsLineWhileAnotherViewIsTheActiveOne) {
    FakeView* other = FakeView::Create(*document);
    other->PutCaret(2, 0);
    document->SetActiveView(other);
    for (const Char ch : {u'a', u'b', u'c'})
        ASSERT_TRUE(document->TypeChar(view, ch, view->CaretColumn(), true, false));
    EXPECT_EQ(document.Text(), u"abcone   \ntwo\nthree");
    EXPECT_EQ(document.UndoSteps(), 1u);
    EXPECT_EQ(document.Store(), u"one   \ntwo\nthree");
}

// A copy of the line made again would come from the store: without the mark, or written back with it before.
TEST_F(EditFlowTest, KeysWorkOnTheOneCopyOfTheirLine) {
    view->PutCaret(2, 0);
    TextBufferProbe::MarkEditLine(*document, 4, u'#');
    const auto expectCopy = [&](const std::u16string& line, const char* after) {
        EXPECT_EQ(document.EditLineText().substr(0, line.size()), line) << after;
        EXPECT_EQ(document.Store(), u"one   \ntwo\nthree") << after;
    };
    EXPECT_TRUE(document->TypeChar(view, u'x', 0, true, false));
    expectCopy(u"xthre#", "the first key of a run");
    EXPECT_TRUE(document->TypeChar(view, u'y', 1, true, false));
    expectCopy(u"xythre#", "one that extends it");
    EXPECT_TRUE(document->TypeChar(view, u'z', 0, true, true));
    expectCopy(u"zythre#", "one that overwrites");
    EXPECT_TRUE(document->DeleteInEditLine(view, {0, 1}));
    expectCopy(u"ythre#", "one that deletes");
}

TEST_F(EditFlowTest, AnEditThatChangesNothingIsNotReported) {
    EXPECT_TRUE(document->DeleteText({99, 104}));
    EXPECT_EQ(view->editsFinished, 0);
}

TEST_F(EditFlowTest, AnEmptiedOutputIsOneOperation) {
    EXPECT_TRUE(document->MarkAsOutput());
    view->PutCaret(2, 3);
    document->EmptyAndResetUndo();
    EXPECT_EQ(view->editsFinished, 1);
    EXPECT_EQ(view->CaretOffset(), 0u);
}

#ifdef ORVANE_ASSERTIONS

TEST_F(EditFlowTest, NothingMayEditWhileTheViewsAreNotified) {
    view->onMoved = [this] { static_cast<void>(document->InsertText(0, u"y", 1)); };
    EXPECT_DEATH(static_cast<void>(document->InsertText(0, u"x", 1)), "IsNotifying");
    view->onMoved = [this] { static_cast<void>(document->Undo()); };
    EXPECT_DEATH(static_cast<void>(document->InsertText(0, u"x", 1)), "IsNotifying");
    view->onMoved = [this] { static_cast<void>(document->LoadEditLine(2)); };
    EXPECT_DEATH(static_cast<void>(document->InsertText(0, u"x", 1)), "IsNotifying");
}

TEST_F(EditFlowTest, NorWhileTheFrameIsToldThatTheDocumentIsModified) {
    const auto edit = [this] { static_cast<void>(document->InsertText(0, u"y", 1)); };
    view->onModified = edit;
    EXPECT_DEATH(static_cast<void>(document->InsertText(0, u"x", 1)), "IsNotifying");
    view->onModified = [] {};
    ASSERT_TRUE(document->InsertText(0, u"x", 1));
    view->onModified = edit;
    EXPECT_DEATH(static_cast<void>(document->Undo()), "IsNotifying");
    ASSERT_TRUE(document->BeginGroup());
    EXPECT_DEATH(document->AbandonGroup(), "IsNotifying");
}

TEST_F(EditFlowTest, NorWhileTheyAreNotifiedOfWhatIsNoEdit) {
    EXPECT_TRUE(document->TypeChar(view, u'x', 0, true, false));
    view->onForgotten = [this] { static_cast<void>(document->LoadEditLine(1)); };
    EXPECT_DEATH(static_cast<void>(document->CommitEdit()), "IsNotifying") << "a line is written back";
    EXPECT_DEATH(document->AttachEngine(nullptr), "IsNotifying") << "the engine is another one";
}

#endif
