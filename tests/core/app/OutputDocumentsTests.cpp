#include "app/OutputDocuments.h"
#include "core/app/FakeFrame.h"
#include "core/app/FakePanes.h"
#include "document/TextBuffer.h"
#include "support/FailureInjection.h"

namespace {

class OutputDocumentsTest : public PaneDocumentsTest {
protected:
    static std::u16string TextOf(const TextBuffer& document) { return {document.Content(), document.Length()}; }

    OutputDocuments outputs{services.text, documents, display, panes};
};

TEST_F(OutputDocumentsTest, TheSharedOneIsMadeOnceAndShownInTheActivePane) {
    TextBuffer* const shared = outputs.ShowShared();
    ASSERT_NE(shared, nullptr);
    EXPECT_EQ(Str(shared->GetTitle()), u"Output");
    EXPECT_TRUE(shared->IsOutput());
    EXPECT_EQ(display.Active(), shared);
    ASSERT_TRUE(display.ShowNew(AddFile(u"a")));
    EXPECT_EQ(outputs.ShowShared(), shared);
    EXPECT_EQ(display.Active(), shared);
    EXPECT_EQ(documents.Count(), 2u);
}

TEST_F(OutputDocumentsTest, TextIsAppendedToTheSharedOneUntilItIsCleared) {
    outputs.Clear(); // there is none yet
    EXPECT_TRUE(documents.IsEmpty());
    EXPECT_TRUE(outputs.Append(u"one\r\n"));
    EXPECT_TRUE(outputs.Append(u"two"));
    EXPECT_TRUE(outputs.Append(u""));
    auto& shared = static_cast<TextBuffer&>(*documents.At(0));
    EXPECT_EQ(TextOf(shared), u"one\ntwo");
    outputs.Clear();
    EXPECT_EQ(TextOf(shared), u"");
}

TEST_F(OutputDocumentsTest, ANamedOneIsShownInTheNextPaneAndEmptiedForTheNextRun) {
    ASSERT_TRUE(display.ShowNew(AddFile(u"a")));
    Pane& second = panes.Add();
    TextBuffer* const output = outputs.ShowNamed(u"make all");
    ASSERT_NE(output, nullptr);
    EXPECT_TRUE(output->IsOutput());
    EXPECT_EQ(panes.DocumentIn(second), output);
    EXPECT_NE(display.Active(), output);
    std::u16string text = u"text";
    ASSERT_TRUE(output->AppendOutputText(text.data()));
    EXPECT_EQ(outputs.ShowNamed(u"make all"), output);
    EXPECT_EQ(TextOf(*output), u"");
    EXPECT_NE(outputs.ShowNamed(u"make"), output);
    EXPECT_EQ(documents.Count(), 3u);
}

TEST_F(OutputDocumentsTest, ADocumentOfTheUserWithThatTitleIsLeftAlone) {
    EXPECT_TRUE(documents.Add(FakeDocument::WithTitle(u"make")));
    TextBuffer* const output = outputs.ShowNamed(u"make");
    ASSERT_NE(output, nullptr);
    EXPECT_EQ(documents.Count(), 2u);
    EXPECT_EQ(documents.At(1), output);
}

TEST_F(OutputDocumentsTest, WithoutAPaneThereIsNone) {
    panes.makesPanes = false;
    EXPECT_EQ(outputs.ShowShared(), nullptr);
    EXPECT_EQ(outputs.ShowNamed(u"make"), nullptr);
    EXPECT_FALSE(outputs.Append(u"text"));
    EXPECT_TRUE(documents.IsEmpty());
}

} // namespace
