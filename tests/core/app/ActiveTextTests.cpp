#include "app/ActiveText.h"
#include "core/app/FakeFrame.h"
#include "core/app/FakePanes.h"
#include "support/ViewTest.h"

namespace {

// A text view in the active pane.
class ActiveTextTest : public ViewTest {
protected:
    ActiveTextTest() { panes.SetActive(&panes.Add()); }

    std::u16string Word() {
        panes.everywhere = &buffer();
        WString out;
        EXPECT_TRUE(active.AppendWordAtCaret(out));
        return Str(out);
    }
    std::u16string Selection() {
        panes.everywhere = &buffer();
        WString out;
        EXPECT_TRUE(out.Assign(u">") && active.AppendSelection(out));
        return Str(out);
    }

    FakePanes panes;
    ActiveText active{panes};
};

TEST_F(ActiveTextTest, TheWordIsThatAtTheCaretAndNoGap) {
    Show(u"one tw|o");
    EXPECT_EQ(Word(), u"two");
    Show(u"one  |  two");
    EXPECT_EQ(Word(), u"");
    Show(u"|");
    EXPECT_EQ(Word(), u"");
}

TEST_F(ActiveTextTest, TheSelectionIsAppendedElseTheWord) {
    Show(u"one ^two\nthr|ee");
    EXPECT_EQ(Selection(), u">two\nthr");
    Show(u"one tw|o");
    EXPECT_EQ(Selection(), u">two");
}

TEST_F(ActiveTextTest, TheSelectionHasWhatWasJustTyped) {
    Show(u"|");
    Type(u"word");
    view().SelectRange({1, 3});
    EXPECT_EQ(Selection(), u">or");
}

TEST_F(ActiveTextTest, TheFileNameAtTheCaretIsRead) {
    Show(u"#include \"dir/na|me.h\" // name");
    panes.everywhere = &buffer();
    WString name;
    EXPECT_TRUE(active.GetFileNameAtCaret(name));
    EXPECT_EQ(Str(name), u"dir/name.h");
}

TEST_F(ActiveTextTest, WithoutAPaneOrATextThereIsNothing) {
    WString out;
    const auto expectNothing = [&] {
        EXPECT_EQ(active.Document(), nullptr);
        EXPECT_EQ(active.Editor(), nullptr);
        EXPECT_TRUE(active.AppendWordAtCaret(out));
        EXPECT_TRUE(active.AppendSelection(out));
        EXPECT_TRUE(out.IsEmpty());
        EXPECT_FALSE(active.GetFileNameAtCaret(out));
        active.SetEngine(u"plain");
        active.MarkAsOutput();
    };
    expectNothing();
    FakeDocument* const bytes = FakeDocument::WithFile(u"a");
    bytes->binary = true;
    panes.everywhere = bytes;
    expectNothing();
    panes.everywhere = nullptr;
    panes.CloseAll();
    expectNothing();
    bytes->Release();
}

TEST_F(ActiveTextTest, TheTextIsMarkedAsOutput) {
    panes.everywhere = &buffer();
    EXPECT_EQ(active.Document(), &buffer());
    EXPECT_EQ(active.Editor(), &view());
    active.MarkAsOutput();
    EXPECT_TRUE(buffer().IsOutput());
}

} // namespace
