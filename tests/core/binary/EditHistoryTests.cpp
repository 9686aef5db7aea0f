#include "binary/EditHistory.h"
#include "document/StepSerial.h"

#include <gtest/gtest.h>

namespace {

class EditHistoryTest : public ::testing::Test {
protected:
    // Takes part in the history, which owns it.
    ByteEdit* Add() {
        auto* edit = new ByteEdit;
        history.Add(edit);
        return edit;
    }

    EditHistory history;
};

TEST_F(EditHistoryTest, TheLastEditIsUndoneFirst) {
    ByteEdit* first = Add();
    ByteEdit* second = Add();
    EXPECT_EQ(history.Undoable(), second);
    history.MoveToRedo();
    EXPECT_EQ(history.Undoable(), first);
    EXPECT_EQ(history.Redoable(), second);
    history.MoveToRedo();
    EXPECT_EQ(history.Undoable(), nullptr);
    EXPECT_EQ(history.Redoable(), first);
    history.MoveToUndo();
    EXPECT_EQ(history.Undoable(), first);
    EXPECT_EQ(history.Redoable(), second);
}

TEST_F(EditHistoryTest, ANewEditEndsWhatCouldBeRedone) {
    Add();
    history.MoveToRedo();
    ByteEdit* edit = Add();
    EXPECT_EQ(history.Redoable(), nullptr);
    EXPECT_EQ(history.Undoable(), edit);
}

TEST_F(EditHistoryTest, TheDocumentIsModifiedUnlessItIsAsSaved) {
    EXPECT_FALSE(history.IsModified());
    Add();
    EXPECT_TRUE(history.IsModified());
    history.MoveToRedo();
    EXPECT_FALSE(history.IsModified());
    history.MoveToUndo();
    history.MarkSaved();
    EXPECT_FALSE(history.IsModified());
    history.MoveToRedo();
    EXPECT_TRUE(history.IsModified());
}

TEST_F(EditHistoryTest, AnotherEditIsNotTakenForTheSavedOne) {
    Add();
    history.MarkSaved();
    history.MoveToRedo();
    Add(); // frees the saved one, whose place in memory may be used again
    EXPECT_TRUE(history.IsModified());
}

TEST_F(EditHistoryTest, AHalfWrittenFileIsModifiedWhateverIsUndone) {
    Add();
    history.MarkPartlySaved();
    EXPECT_TRUE(history.IsModified());
    history.MoveToRedo();
    EXPECT_TRUE(history.IsModified());
    history.MarkSaved();
    EXPECT_FALSE(history.IsModified());
}

TEST_F(EditHistoryTest, ClearedItIsAsNew) {
    Add();
    Add();
    history.MoveToRedo();
    history.Clear();
    EXPECT_EQ(history.Undoable(), nullptr);
    EXPECT_EQ(history.Redoable(), nullptr);
    EXPECT_FALSE(history.IsModified());
}

TEST_F(EditHistoryTest, JoinedEditsAreOneStep) {
    Add();
    const uint32_t moment = StepSerial::Latest();
    Add();
    Add();
    history.JoinSteps(moment);
    Add();
    history.MoveToRedo();
    EXPECT_FALSE(history.IsInsideStep()) << "it was made later";
    history.MoveToRedo();
    EXPECT_TRUE(history.IsInsideStep());
    history.MoveToRedo();
    EXPECT_FALSE(history.IsInsideStep()) << "the first of the step is undone, too";
    history.MoveToRedo();
    EXPECT_FALSE(history.IsInsideStep());
    history.MoveToUndo();
    EXPECT_FALSE(history.IsInsideStep());
    history.MoveToUndo();
    EXPECT_TRUE(history.IsInsideStep());
    history.MoveToUndo();
    EXPECT_FALSE(history.IsInsideStep());
}

TEST_F(EditHistoryTest, OneEditJoinsNoneBeforeIt) {
    Add();
    const uint32_t moment = StepSerial::Latest();
    history.JoinSteps(moment);
    Add();
    history.JoinSteps(moment);
    history.MoveToRedo();
    EXPECT_FALSE(history.IsInsideStep());
}

} // namespace
