#include "app/DocumentCloser.h"
#include "app/OutputDocuments.h"
#include "core/app/FakePanes.h"
#include "document/TextBuffer.h"

namespace {

class DocumentCloserTest : public PaneDocumentsTest {
protected:
    OutputDocuments outputs{services.text, documents, display, panes};
    DocumentCloser closer{documents, display, panes, outputs, batch};
};

TEST_F(DocumentCloserTest, TheLastDocumentTakesAllPanesWithIt) {
    FakeDocument& a = AddFile(u"a");
    ASSERT_TRUE(display.ShowNew(a));
    display.SplitActive(true);
    screen.titles = 0;
    EXPECT_TRUE(closer.Close(a));
    EXPECT_TRUE(documents.IsEmpty());
    EXPECT_EQ(panes.First(), nullptr);
    EXPECT_EQ(panes.Active(), nullptr);
    EXPECT_EQ(screen.clears, 1);
    EXPECT_EQ(screen.titles, 1);
}

TEST_F(DocumentCloserTest, EveryPaneOfItShowsTheDocumentBefore) {
    FakeDocument& a = AddFile(u"a");
    FakeDocument& b = AddFile(u"b");
    FakeDocument& c = AddFile(u"c");
    ASSERT_TRUE(display.ShowNew(b));
    display.SplitActive(true);
    Pane& third = panes.Add();
    display.Show(&c, &third);
    EXPECT_TRUE(closer.Close(b));
    EXPECT_EQ(documents.Count(), 2u);
    EXPECT_EQ(display.Active(), &a);
    EXPECT_EQ(panes.DocumentIn(*panes.First()->next), &a);
    EXPECT_EQ(panes.DocumentIn(third), &c);
    EXPECT_EQ(screen.clears, 0);
}

TEST_F(DocumentCloserTest, TheFirstDocumentIsReplacedByTheLast) {
    FakeDocument& a = AddFile(u"a");
    AddFile(u"b");
    FakeDocument& c = AddFile(u"c");
    ASSERT_TRUE(display.ShowNew(a));
    EXPECT_TRUE(closer.Close(a));
    EXPECT_EQ(display.Active(), &c);
}

TEST_F(DocumentCloserTest, WithoutAViewForTheSuccessorTheDocumentStaysOpen) {
    FakeDocument& a = AddFile(u"a");
    FakeDocument& b = AddFile(u"b");
    ASSERT_TRUE(display.ShowNew(b));
    display.Show(&a, &panes.Add());
    a.makesViews = false;
    EXPECT_FALSE(closer.Close(b));
    EXPECT_EQ(documents.Count(), 2u);
    EXPECT_EQ(display.Active(), &b);
}

TEST_F(DocumentCloserTest, FinishedOutputsAreClosedAndRunningOnesStay) {
    AddOutput(u"one", false);
    FakeDocument& running = AddOutput(u"two", true);
    FakeDocument& file = AddFile(u"a");
    AddOutput(u"three", false);
    closer.CloseOutputs();
    ASSERT_EQ(documents.Count(), 2u);
    EXPECT_EQ(documents.At(0), &running);
    EXPECT_EQ(documents.At(1), &file);
}

TEST_F(DocumentCloserTest, AfterTheSharedOutputWasClosedAnotherIsMade) {
    AddFile(u"a");
    TextBuffer* const shared = outputs.ShowShared();
    ASSERT_NE(shared, nullptr);
    EXPECT_TRUE(closer.Close(*shared));
    EXPECT_EQ(documents.Count(), 1u);
    EXPECT_NE(outputs.ShowShared(), nullptr);
    EXPECT_EQ(documents.Count(), 2u);
}

TEST_F(DocumentCloserTest, LeavingClosesEverything) {
    ASSERT_TRUE(display.ShowNew(AddFile(u"a")));
    ASSERT_NE(outputs.ShowShared(), nullptr);
    closer.CloseAll();
    EXPECT_TRUE(documents.IsEmpty());
    EXPECT_EQ(panes.First(), nullptr);
    outputs.Clear(); // there is none any more
}

} // namespace
