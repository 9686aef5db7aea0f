#include "document/TextBuffer.h"

#include "document/StepSerial.h"
#include "support/FailureInjection.h"
#include "support/FakeView.h"
#include "support/TextDocument.h"

#include <gtest/gtest.h>

namespace {

using States = std::vector<uint32_t>;
using Lines = std::vector<uint32_t>;

class UndoTest : public ::testing::Test {
protected:
    void Start(const std::u16string& text) {
        TextBufferProbe::Fill(*document, text);
        view = FakeView::Create(*document);
        view->Activate();
        view->ForgetCalls();
    }
    void Type(const std::u16string& text) {
        for (Char ch : text) ASSERT_TRUE(document->TypeChar(view, ch, view->CaretColumn(), true, false));
    }
    bool Insert(uint32_t offset, const std::u16string& text) {
        return document->InsertText(offset, text.data(), static_cast<uint32_t>(text.size()));
    }

    TextDocument document;
    FakeView* view = nullptr;
};

bool Refuse() { return true; }

// While one lives there is no memory.
struct NoMemory {
    NoMemory() { Heap::SetFailureHook(Refuse); }
    ~NoMemory() { Heap::SetFailureHook(nullptr); }
};

} // namespace

TEST_F(UndoTest, AnInsertionIsTakenBackAndDoneAgain) {
    Start(u"one\ntwo");
    Insert(3, u"X\nY");
    EXPECT_TRUE(document->Undo());
    EXPECT_EQ(document.Store(), u"one\ntwo");
    EXPECT_EQ(document->GetLineCount(), 2u);
    EXPECT_TRUE(document->Redo());
    EXPECT_EQ(document.Store(), u"oneX\nY\ntwo");
    EXPECT_EQ(document->GetLineCount(), 3u);
}

TEST_F(UndoTest, ADeletionIsTakenBackAndDoneAgain) {
    Start(u"one\ntwo");
    EXPECT_TRUE(document->DeleteText({2, 5}));
    EXPECT_EQ(document.Store(), u"onwo");
    EXPECT_TRUE(document->Undo());
    EXPECT_EQ(document.Store(), u"one\ntwo");
    EXPECT_EQ(document->GetLineCount(), 2u);
    EXPECT_TRUE(document->Redo());
    EXPECT_EQ(document.Store(), u"onwo");
}

TEST_F(UndoTest, WithNothingToUndoNothingChangesAndTheFrameIsStillNotified) {
    Start(u"abc");
    EXPECT_TRUE(document->Undo());
    EXPECT_EQ(view->documentChanges, 1);
    EXPECT_TRUE(document->Redo());
    EXPECT_EQ(view->documentChanges, 2);
    EXPECT_EQ(document.Text(), u"abc");
}

TEST_F(UndoTest, TheFrameIsNotifiedOnceForEveryStep) {
    Start(u"abc");
    EXPECT_TRUE(document->BeginGroup());
    EXPECT_EQ(view->documentChanges, 0) << "a marker alone is not reported";
    Insert(0, u"x");
    Insert(1, u"y");
    EXPECT_TRUE(document->EndGroup());
    EXPECT_EQ(view->documentChanges, 2) << "performing is reported for each record";
    EXPECT_TRUE(document->Undo());
    EXPECT_EQ(view->documentChanges, 3);
}

TEST_F(UndoTest, AGroupIsOneStep) {
    Start(u"abc");
    EXPECT_TRUE(document->BeginGroup());
    Insert(0, u"x");
    EXPECT_TRUE(document->DeleteText({1, 2}));
    EXPECT_TRUE(document->EndGroup());
    EXPECT_EQ(document.UndoStates(), (States{1, 2, 2, 0}));
    EXPECT_TRUE(document->Undo());
    EXPECT_EQ(document.Store(), u"abc");
    EXPECT_EQ(document.UndoStates(), (States{}));
    EXPECT_EQ(document.RedoStates(), (States{0, 2, 2, 1}));
    EXPECT_TRUE(document->Redo());
    EXPECT_EQ(document.Store(), u"xbc");
    EXPECT_EQ(document.UndoStates(), (States{1, 2, 2, 0}));
}

TEST_F(UndoTest, GroupsNest) {
    Start(u"");
    Insert(0, u"0");
    EXPECT_TRUE(document->BeginGroup());
    Insert(0, u"1");
    EXPECT_TRUE(document->BeginGroup());
    Insert(0, u"2");
    EXPECT_TRUE(document->EndGroup());
    Insert(0, u"3");
    EXPECT_TRUE(document->EndGroup());
    Insert(0, u"4");
    EXPECT_TRUE(document->Undo());
    EXPECT_EQ(document.Store(), u"3210");
    EXPECT_TRUE(document->Undo());
    EXPECT_EQ(document.Store(), u"0");
    EXPECT_TRUE(document->Redo());
    EXPECT_EQ(document.Store(), u"3210");
    EXPECT_TRUE(document->Redo());
    EXPECT_EQ(document.Store(), u"43210");
}

TEST_F(UndoTest, AnEmptyGroupIsAStep) {
    Start(u"a");
    Insert(0, u"x");
    EXPECT_TRUE(document->BeginGroup());
    EXPECT_TRUE(document->EndGroup());
    EXPECT_TRUE(document->Undo());
    EXPECT_EQ(document.Store(), u"xa");
    EXPECT_TRUE(document->Undo());
    EXPECT_EQ(document.Store(), u"a");
}

// Typing before, pending typing at the end, and a group in between.
TEST_F(UndoTest, WhatWasDoneAfterAMomentIsJoinedToOneStep) {
    Start(u"one\n");
    Type(u"ab");
    const uint32_t moment = StepSerial::Latest();
    document->JoinSteps(moment);
    Type(u"cd"); // would go on with the word before
    EXPECT_TRUE(document->BeginGroup());
    Insert(0, u"x\n");
    EXPECT_TRUE(document->DeleteText({0, 1}));
    EXPECT_TRUE(document->EndGroup());
    Type(u"ef");
    document->JoinSteps(moment);
    Type(u"g");
    EXPECT_EQ(document.Text(), u"efg\nabcdone\n");
    EXPECT_TRUE(document->Undo());
    EXPECT_EQ(document.Text(), u"ef\nabcdone\n");
    EXPECT_TRUE(document->Undo());
    EXPECT_EQ(document.Text(), u"abone\n");
    EXPECT_EQ(view->CaretColumn(), 2u);
    EXPECT_TRUE(document->IsModified());
    EXPECT_TRUE(document->Redo());
    EXPECT_EQ(document.Text(), u"ef\nabcdone\n");
    EXPECT_TRUE(document->Undo());
    EXPECT_TRUE(document->Undo());
    EXPECT_EQ(document.Text(), u"one\n");
    EXPECT_FALSE(document->IsModified());
}

TEST_F(UndoTest, ATypedCharacterEmptiesTheRedoListButAMarkerDoesNot) {
    Start(u"");
    Type(u"ab ");
    EXPECT_TRUE(document->Undo());
    EXPECT_TRUE(document->BeginGroup());
    EXPECT_TRUE(document->CanDo(DocumentCommand::Redo));
    EXPECT_TRUE(document->EndGroup());
    EXPECT_TRUE(document->CanDo(DocumentCommand::Redo));
    Type(u"c");
    EXPECT_FALSE(document->CanDo(DocumentCommand::Redo));
}

TEST_F(UndoTest, TypingOnAfterAPendingUndoEmptiesTheRedoListToo) {
    Start(u"one\n");
    Type(u"  ab");
    {
        NoMemory noMemory;
        EXPECT_TRUE(document->Undo());
        Type(u" "); // goes on with the step before
    }
    EXPECT_EQ(document.UndoStates(), (States{3}));
    EXPECT_FALSE(document->CanDo(DocumentCommand::Redo));
    EXPECT_EQ(document.Text(), u"   one\n");
}

TEST_F(UndoTest, EveryRecordTakesTheNextSerial) {
    Start(u"");
    EXPECT_TRUE(document->BeginGroup());
    Insert(0, u"a");
    Type(u"b");
    EXPECT_TRUE(document->EndGroup());
    const UndoRecord* record = TextBufferProbe::UndoHead(*document);
    for (uint32_t serial = record->serial; record; record = record->next) EXPECT_EQ(record->serial, serial--);
}

TEST_F(UndoTest, ARecordHoldsItsTextItsPlaceAndItsLines) {
    Start(u"one\ntwo\nthree");
    EXPECT_TRUE(document->DeleteText({2, 9}));
    auto* record = static_cast<const TextEdit*>(TextBufferProbe::UndoHead(*document));
    EXPECT_EQ(record->state, UndoRecord::State::InStore);
    EXPECT_EQ(&record->target.content, &*document);
    EXPECT_NE(record->isDelete, 0u);
    EXPECT_EQ(std::u16string(record->text.Text()), u"e\ntwo\nt");
    EXPECT_EQ(record->position, 2u);
    EXPECT_EQ(record->count, 7u);
    EXPECT_EQ(record->lineFeeds, 2u);
}

// Typed text, pending and written back.

TEST_F(UndoTest, TypedTextIsWrittenBackBeforeItIsUndone) {
    Start(u"one\n");
    Type(u"ab");
    EXPECT_TRUE(document->Undo());
    EXPECT_EQ(document.Store(), u"one\n");
    EXPECT_EQ(document.RedoStates(), (States{2}));
    EXPECT_EQ(view->CaretColumn(), 0u);
    EXPECT_TRUE(document->Redo());
    EXPECT_EQ(document.Store(), u"abone\n");
    EXPECT_EQ(view->CaretColumn(), 2u) << "an empty selection after the inserted text";
}

TEST_F(UndoTest, OvertypedTextComesBackAndGoesAgain) {
    Start(u"abc\n");
    EXPECT_TRUE(document->TypeChar(view, u'x', 1, true, true));
    EXPECT_TRUE(document->Undo());
    EXPECT_EQ(document.Store(), u"abc\n");
    EXPECT_TRUE(document->Redo());
    EXPECT_EQ(document.Store(), u"axc\n");
    EXPECT_EQ(TextBufferProbe::Capacity(*document), 5u) << "overtyping takes no more room";
}

TEST_F(UndoTest, TypedTextUndoneAfterTheCaretLeftTheLineChangesTheStore) {
    Start(u"one\ntwo\n");
    Type(u"ab");
    view->PutCaret(1, 0);
    EXPECT_EQ(document.Store(), u"abone\ntwo\n");
    EXPECT_TRUE(document->Undo());
    EXPECT_EQ(document.Store(), u"one\ntwo\n");
}

TEST_F(UndoTest, APendingWordIsUndoneInTheEditLineWithoutTouchingTheStore) {
    Start(u"one\n");
    Type(u"ab cd");
    {
        NoMemory noMemory; // to write the line back: the records stay pending
        EXPECT_TRUE(document->Undo());
    }
    EXPECT_EQ(document.Store(), u"one\n");
    EXPECT_EQ(document.EditLineText(), u"ab one\n");
    EXPECT_EQ(view->CaretColumn(), 3u);
    EXPECT_EQ(document.UndoStates(), (States{3, 3}));
    EXPECT_EQ(document.RedoStates(), (States{3}));
    {
        NoMemory noMemory;
        EXPECT_TRUE(document->Redo());
        EXPECT_EQ(document.EditLineText(), u"ab cdone\n");
        EXPECT_EQ(view->CaretColumn(), 5u);
        EXPECT_TRUE(document->Undo());
    }
    EXPECT_TRUE(document->CommitEdit());
    EXPECT_EQ(document.UndoStates(), (States{2, 2}));
    EXPECT_EQ(document.RedoStates(), (States{2})) << "the redo list is written back as well";
    EXPECT_TRUE(document->Redo());
    EXPECT_EQ(document.Store(), u"ab cdone\n");
}

TEST_F(UndoTest, APendingOvertypedCharacterAndAPendingDeletionAreUndoneInTheEditLine) {
    Start(u"abcd");
    Type(u"123");
    EXPECT_TRUE(document->TypeChar(view, u'x', 4, true, true));
    ASSERT_TRUE(document->DeleteInEditLine(view, {5, 7}));
    EXPECT_EQ(document.Text(), u"123ax");
    NoMemory noMemory;
    EXPECT_TRUE(document->Undo());
    EXPECT_EQ(document.Text(), u"123axcd");
    EXPECT_TRUE(document->Undo());
    EXPECT_EQ(document.Text(), u"123abcd");
    EXPECT_TRUE(document->Redo());
    EXPECT_TRUE(document->Redo());
    EXPECT_EQ(document.Text(), u"123ax");
    EXPECT_EQ(document.Store(), u"abcd");
}

TEST_F(UndoTest, CommitPassesOverMarkersAndStopsAtAStoreRecord) {
    Start(u"");
    Insert(0, u"s");
    view->PutCaret(0, 1);
    Type(u"a");
    EXPECT_TRUE(document->BeginGroup());
    Type(u" ");
    EXPECT_EQ(document.UndoStates(), (States{3, 0, 3, 2}));
    EXPECT_TRUE(document->CommitEdit());
    EXPECT_EQ(document.UndoStates(), (States{2, 0, 2, 2}));
}

// The modified state.

TEST_F(UndoTest, ADocumentIsModifiedUntilItIsBackAtTheSavedRecord) {
    Start(u"");
    EXPECT_FALSE(document->IsModified());
    Insert(0, u"a");
    EXPECT_TRUE(document->IsModified());
    EXPECT_TRUE(document->Undo());
    EXPECT_FALSE(document->IsModified());
    EXPECT_TRUE(document->Redo());
    TextBufferProbe::MarkSaved(*document);
    EXPECT_FALSE(document->IsModified());
    EXPECT_TRUE(document->Undo());
    EXPECT_TRUE(document->IsModified());
    EXPECT_TRUE(document->Redo());
    EXPECT_FALSE(document->IsModified());
}

TEST_F(UndoTest, ANewRecordInPlaceOfTheSavedOneIsAModification) {
    Start(u"");
    Insert(0, u"a");
    TextBufferProbe::MarkSaved(*document);
    EXPECT_TRUE(document->Undo());
    Insert(0, u"b"); // frees the saved record; the new one may get its address
    EXPECT_TRUE(document->IsModified());
}

// Bookmarks.

TEST_F(UndoTest, BookmarksFollowAnInsertionItsUndoAndRedo) {
    Start(u"0\n1\n2\n3\n");
    for (uint32_t line : {1u, 3u}) document->ToggleBookmark(line);
    Insert(3, u"x\ny\n"); // at the end of line 1
    EXPECT_EQ(document.MarkedLines(), (Lines{1, 5}));
    EXPECT_TRUE(document->Undo());
    EXPECT_EQ(document.MarkedLines(), (Lines{1, 3}));
    EXPECT_TRUE(document->Redo());
    EXPECT_EQ(document.MarkedLines(), (Lines{1, 5}));
}

TEST_F(UndoTest, UndoingTheDeletionOfThreeLinesAboveABookmarkMovesItDownAndRedoBack) {
    Start(u"0\n1\n2\n3\n4\n5\n");
    document->ToggleBookmark(5);
    EXPECT_TRUE(document->DeleteText({2, 8})); // lines 1 to 3
    EXPECT_EQ(document.MarkedLines(), (Lines{2}));
    EXPECT_TRUE(document->Undo());
    EXPECT_EQ(document.MarkedLines(), (Lines{5}));
    EXPECT_TRUE(document->Redo());
    EXPECT_EQ(document.MarkedLines(), (Lines{2}));
}

TEST_F(UndoTest, ABookmarkOnADeletedLineIsRemoved) {
    Start(u"0\n1\n2\n3\n4\n");
    EXPECT_TRUE(document->DeleteText({2, 6}));
    EXPECT_TRUE(document->Undo());
    for (uint32_t line : {1u, 2u, 3u, 4u}) document->ToggleBookmark(line);
    EXPECT_TRUE(document->Redo()); // lines 2 and 3 are joined onto line 1, which stays
    EXPECT_EQ(document.MarkedLines(), (Lines{1, 2}));
    EXPECT_TRUE(document->Undo());
    EXPECT_EQ(document.MarkedLines(), (Lines{1, 4})) << "what the redo removed stays away";
}

TEST_F(UndoTest, AnEditWithinALineLeavesTheBookmarks) {
    Start(u"0\n1\n");
    document->ToggleBookmark(1);
    Insert(0, u"abc");
    EXPECT_TRUE(document->DeleteText({0, 2}));
    EXPECT_EQ(document.MarkedLines(), (Lines{1}));
}

// What a group that fails half-way leaves.

TEST_F(UndoTest, AGroupWhoseRecordsAreForgottenCanBeAbandoned) {
    Start(u"one");
    EXPECT_TRUE(document->BeginGroup());
    Insert(0, u"x");
    document->EmptyAndResetUndo();
    document->AbandonGroup();
    EXPECT_EQ(document.Store(), u"");
    EXPECT_FALSE(document->IsModified());
    Insert(0, u"y");
    EXPECT_TRUE(document->Undo());
    document->AbandonGroup();
    EXPECT_TRUE(document->Redo());
    EXPECT_EQ(document.Store(), u"y");
}

TEST_F(UndoTest, AnAbandonedGroupLeavesNoTrace) {
    Start(u"one\ntwo");
    Insert(0, u"x");
    TextBufferProbe::MarkSaved(*document);
    EXPECT_TRUE(document->BeginGroup());
    Insert(1, u"abc\n");
    EXPECT_TRUE(document->BeginGroup());
    EXPECT_TRUE(document->DeleteText({0, 3}));
    EXPECT_TRUE(document->EndGroup());
    view->PutCaret(1, 0);
    Type(u"typed");
    document->AbandonGroup();
    EXPECT_EQ(document.Text(), u"xone\ntwo");
    EXPECT_EQ(document->GetLineCount(), 2u);
    EXPECT_EQ(document.UndoStates(), (States{2}));
    EXPECT_FALSE(document->IsModified());
}

TEST_F(UndoTest, AnAbandonedGroupBringsBackWhatCouldBeRedone) {
    Start(u"one\ntwo");
    Insert(0, u"x");
    EXPECT_TRUE(document->Undo());
    EXPECT_TRUE(document->BeginGroup());
    Insert(0, u"abc\n");
    EXPECT_TRUE(document->BeginGroup());
    EXPECT_TRUE(document->DeleteText({0, 3}));
    document->AbandonGroup();
    EXPECT_FALSE(document->CanDo(DocumentCommand::Redo)) << "the outer group's change is still there";
    document->AbandonGroup();
    EXPECT_TRUE(document->Redo());
    EXPECT_EQ(document.Text(), u"xone\ntwo");
    EXPECT_TRUE(document->Undo());
    EXPECT_TRUE(document->BeginGroup());
    Insert(0, u"abc\n");
    EXPECT_TRUE(document->EndGroup());
    EXPECT_FALSE(document->CanDo(DocumentCommand::Redo));
}

TEST_F(UndoTest, AGroupIsAbandonedWithoutMemory) {
    Start(u"one\ntwo");
    EXPECT_TRUE(document->BeginGroup());
    Insert(0, u"abc\n");
    EXPECT_TRUE(document->DeleteText({0, 6}));
    Type(u"typed");
    {
        NoMemory noMemory;
        document->AbandonGroup();
    }
    EXPECT_EQ(document.Text(), u"one\ntwo");
    EXPECT_EQ(document.UndoStates(), (States{}));
}

TEST_F(UndoTest, AStepThatFindsNoRoomChangesNothing) {
    Start(u"abcdefgh");
    Type(u"1");
    view->PutCaret(0, 0);
    ASSERT_TRUE(document->DeleteInEditLine(view, {0, 9}));
    ASSERT_TRUE(document->CommitEdit()); // the room for the typed character was never taken
    EXPECT_EQ(TextBufferProbe::Capacity(*document), 9u);
    {
        NoMemory noMemory;
        EXPECT_FALSE(document->Undo());
    }
    EXPECT_EQ(document.Text(), u"");
    EXPECT_EQ(document.UndoStates(), (States{2, 2}));
    EXPECT_EQ(document.RedoStates(), (States{}));
    EXPECT_TRUE(document->Undo());
    EXPECT_EQ(document.Text(), u"1abcdefgh");
}

TEST_F(UndoTest, UndoTakesExactlyTheRoomItNeedsOnTheWay) {
    Start(u"0123456789");
    EXPECT_TRUE(document->DeleteText({0, 10}));
    Insert(0, u"abc");
    EXPECT_TRUE(document->Undo());
    EXPECT_TRUE(document->Undo());
    EXPECT_EQ(TextBufferProbe::Capacity(*document), 11u);
    EXPECT_TRUE(document->BeginGroup());
    EXPECT_TRUE(document->DeleteText({0, 5}));
    Insert(0, u"0123456789");
    EXPECT_TRUE(document->EndGroup());
    EXPECT_EQ(TextBufferProbe::Capacity(*document), 16u);
    EXPECT_TRUE(document->Undo());
    EXPECT_EQ(document.Store(), u"0123456789");
    EXPECT_EQ(TextBufferProbe::Capacity(*document), 16u);
}
