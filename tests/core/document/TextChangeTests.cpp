// Views are notified of where the text changed before they are asked anything.

#include "document/TextBuffer.h"

#include "support/FakeEngine.h"
#include "support/FakeView.h"
#include "support/TextDocument.h"

#include <gtest/gtest.h>

namespace {

using Offsets = std::vector<uint32_t>;

class TextChangeTest : public ::testing::Test {
protected:
    TextChangeTest() : document(u"one\ntwo\nthree\n"), view(FakeView::Create(*document)) {
        view->PutCaret(1, 0);
        view->Activate();
        view->ForgetCalls();
    }
    // What was reported since the last call.
    Offsets Told() {
        EXPECT_EQ(view->movesBeforeChange, 0) << "reported before the caret moves";
        Offsets told = view->textChanges;
        view->ForgetCalls();
        return told;
    }

    TextDocument document;
    FakeView* view;
};

} // namespace

TEST_F(TextChangeTest, StoreEditsReportTheirOffset) {
    EXPECT_TRUE(document->InsertText(9, u"x\n", 2));
    EXPECT_EQ(Told(), (Offsets{9}));
    EXPECT_TRUE(document->DeleteText({5, 8}));
    EXPECT_EQ(Told(), (Offsets{5}));
    EXPECT_TRUE(document->Undo());
    EXPECT_EQ(Told(), (Offsets{5}));
    EXPECT_TRUE(document->Redo());
    EXPECT_EQ(Told(), (Offsets{5}));
}

TEST_F(TextChangeTest, TypingTellsNothingUntilItIsWrittenBack) {
    EXPECT_TRUE(document->TypeChar(view, u'a', 0, true, false));
    EXPECT_TRUE(document->TypeChar(view, u'b', 1, true, false));
    EXPECT_EQ(view->textChanges, (Offsets{}));
    view->ForgetCalls();
    EXPECT_TRUE(document->CommitEdit());
    EXPECT_EQ(Told(), (Offsets{4})) << "the start of the line";
}

TEST_F(TextChangeTest, TypingThatReachesOnTellsTheStartOfItsLine) {
    document->AttachEngine(new FakeEngine);
    EXPECT_EQ(Told(), (Offsets{0})) << "another engine";
    EXPECT_TRUE(document->TypeChar(view, u'*', 0, true, false));
    EXPECT_EQ(Told(), (Offsets{4}));
    EXPECT_TRUE(document->TypeChar(view, u'+', 1, true, false));
    EXPECT_EQ(Told(), (Offsets{4}));
}

TEST_F(TextChangeTest, OvertypedCharactersReportTheirOffsetOnceWrittenBack) {
    EXPECT_TRUE(document->TypeChar(view, u'x', 2, true, true));
    EXPECT_TRUE(document->CommitEdit());
    view->ForgetCalls();
    EXPECT_TRUE(document->Undo());
    EXPECT_EQ(Told(), (Offsets{6}));
}

TEST_F(TextChangeTest, AnEmptiedTextTellsItsStart) {
    EXPECT_TRUE(document->MarkAsOutput());
    document->EmptyAndResetUndo();
    EXPECT_EQ(view->textChanges, (Offsets{0}));
}

TEST_F(TextChangeTest, AppendedOutputTellsTheOldEnd) {
    EXPECT_TRUE(document->MarkAsOutput());
    std::u16string more = u"more";
    EXPECT_TRUE(document->AppendOutputText(more.data()));
    EXPECT_EQ(Told(), (Offsets{14}));
}
