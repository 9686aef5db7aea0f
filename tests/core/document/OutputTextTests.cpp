#include "document/TextBuffer.h"

#include "support/FailureInjection.h"
#include "support/FakeView.h"
#include "support/TextDocument.h"

#include <gtest/gtest.h>

namespace {

bool Append(TextBuffer& document, std::u16string text) { return document.AppendOutputText(text.data()); }

} // namespace

TEST(OutputText, IsAppendedWithItsLineBreaksNormalised) {
    TextDocument document(u"a");
    EXPECT_TRUE(document->MarkAsOutput());
    EXPECT_TRUE(Append(*document, u"b\r\nc\rd\n"));
    EXPECT_EQ(document.Store(), u"ab\nc\nd\n");
    EXPECT_EQ(document->GetLineCount(), 4u);
    EXPECT_EQ(TextBufferProbe::Capacity(*document), 8u);
    EXPECT_FALSE(document->IsModified()) << "output is no change of the user's";
}

TEST(OutputText, IsRefusedByOtherDocuments) {
    TextDocument document(u"a");
    EXPECT_FALSE(Append(*document, u"b"));
    EXPECT_EQ(document.Store(), u"a");
}

TEST(OutputText, MovesTheCaretsThatStoodAtTheEndAndNoOthers) {
    TextDocument document(u"one\ntwo");
    EXPECT_TRUE(document->MarkAsOutput());
    FakeView* following = FakeView::Create(*document);
    FakeView* staying = FakeView::Create(*document);
    following->PutCaret(1, 3);
    staying->PutCaret(1, 2);
    following->ForgetCalls();
    EXPECT_TRUE(Append(*document, u"!\nmore"));
    EXPECT_EQ(following->CaretLine(), 2u);
    EXPECT_EQ(following->CaretColumn(), 4u);
    EXPECT_EQ(staying->CaretLine(), 1u);
    EXPECT_EQ(staying->CaretColumn(), 2u);
    EXPECT_EQ(following->invalidations, 1);
}

// The line of the caret is the one in the store, which is never an old one.
TEST(OutputText, HasNoEditLine) {
    TextDocument document(u"one");
    FakeView* view = FakeView::Create(*document);
    view->PutCaret(0, 1);
    view->Activate();
    EXPECT_EQ(document->EditLineNumber(), 0u);
    EXPECT_TRUE(document->MarkAsOutput());
    EXPECT_EQ(document->EditLineNumber(), NoLine);
    EXPECT_TRUE(document->LoadEditLine(0));
    EXPECT_TRUE(Append(*document, u" more\n"));
    EXPECT_EQ(document->EditLineNumber(), NoLine);
}

TEST(OutputText, IsNotAppendedWithoutMemory) {
    FailEachAllocation([] {
        std::u16string added = u"more\n";
        FailurePause* pause = new FailurePause;
        TextDocument document(u"one\n");
        EXPECT_TRUE(document->MarkAsOutput());
        delete pause;
        const bool done = document->AppendOutputText(added.data());
        EXPECT_EQ(document.Store(), done ? u"one\nmore\n" : u"one\n");
        EXPECT_EQ(document->GetLineCount(), done ? 3u : 2u);
        return done;
    });
}

TEST(OutputText, AnOutputDocumentTellsWhetherItsCommandRuns) {
    TextDocument document;
    bool running = true;
    EXPECT_FALSE(document->GetOutputState(running));
    EXPECT_TRUE(document->MarkAsOutput());
    EXPECT_TRUE(document->GetOutputState(running));
    EXPECT_FALSE(running);
}

TEST(OutputText, EmptyingForgetsTextUndoAndMarks) {
    TextDocument document(u"one\ntwo\n");
    ASSERT_TRUE(document->SetTitle(u"Output"));
    FakeView* view = FakeView::Create(*document);
    view->PutCaret(2, 0);
    view->Activate();
    EXPECT_TRUE(document->InsertText(0, u"x", 1));
    document->ToggleBookmark(1);
    view->ForgetCalls();
    document->EmptyAndResetUndo();
    EXPECT_EQ(document.Text(), u"");
    EXPECT_EQ(document->GetLineCount(), 1u);
    EXPECT_EQ(TextBufferProbe::Capacity(*document), 1u);
    EXPECT_EQ(document.UndoSteps(), 0u);
    EXPECT_FALSE(document->IsModified());
    EXPECT_TRUE(document.MarkedLines().empty());
    EXPECT_EQ(view->CaretOffset(), 0u);
    EXPECT_EQ(view->lineCountChanges, 1);
    EXPECT_EQ(view->invalidations, 1);
    EXPECT_EQ(std::u16string(document->GetTitle()), u"Output");
    EXPECT_EQ(document->EditLineNumber(), 0u);
}
