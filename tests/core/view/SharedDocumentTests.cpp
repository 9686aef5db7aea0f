#include "support/ViewTest.h"

#include <algorithm>
#include <vector>

namespace {

// One document in two views. `view` has the focus at first.
struct SharedDocumentTest : ViewTest {
    // Puts a second view beside the first, with its caret at `caret`.
    void Share(std::u16string text, uint32_t otherCaret, uint32_t otherAnchor) {
        Show(std::move(text));
        second = Open();
        second->editor.SelectRange(otherAnchor, otherCaret);
    }
    void Share(std::u16string text, uint32_t otherCaret) { Share(std::move(text), otherCaret, otherCaret); }
    TestView* Open() {
        TestView* made = TestView::Create(buffer());
        made->surface.SetSize(640, 160);
        made->editor.OnSize(1);
        made->editor.OnAttached();
        return made;
    }
    // What F6 does.
    void FocusSecond() {
        surface().focus = false;
        second->surface.TakeFocus();
    }
    void FocusFirst() {
        second->surface.focus = false;
        surface().TakeFocus();
    }
    // Line, column and offset of the caret mean the same place, and all is within the text.
    static void ExpectAgreement(const TextEditor& editor, const std::u16string& text) {
        const uint32_t caret = editor.CaretOffset();
        ASSERT_LE(caret, text.size());
        ASSERT_LE(editor.SelectionAnchor(), text.size());
        const std::u16string before = text.substr(0, caret);
        const size_t feed = before.rfind(u'\n');
        EXPECT_EQ(editor.CaretLine(), static_cast<size_t>(std::count(before.begin(), before.end(), u'\n')));
        EXPECT_EQ(editor.CaretColumn(), feed == before.npos ? before.size() : before.size() - feed - 1);
        const auto lines = static_cast<size_t>(std::count(text.begin(), text.end(), u'\n')) + 1;
        EXPECT_LT(editor.TopLine(), lines);
    }
    void ExpectAgreement() const {
        ExpectAgreement(view(), Text());
        ExpectAgreement(second->editor, Text());
    }

    TestView* second = nullptr;
};

} // namespace

TEST_F(SharedDocumentTest, AttachingAViewLeavesTheFocusedOneActive) {
    Share(u"one\n|two\n", 0);
    EXPECT_EQ(buffer().ActiveView(), &view());
    EXPECT_EQ(buffer().EditLineNumber(), 1u);
    Type(u"hello");
    EXPECT_EQ(document->UndoSteps(), 1u);
    EXPECT_EQ(document->Store(), u"one\ntwo\n") << "no key writes the line back";
    Ctrl(u'Z');
    EXPECT_EQ(Plain(Text()), Plain(u"one\ntwo\n"));
}

TEST_F(SharedDocumentTest, AnAttachedViewIsActiveWhileNoneHasTheFocus) {
    Show(u"one\ntwo\n");
    surface().focus = false;
    second = Open();
    EXPECT_EQ(buffer().ActiveView(), &second->editor);
}

TEST_F(SharedDocumentTest, TheViewWithTheFocusIsTheActiveOne) {
    Share(u"one\n|two\n", 0);
    FocusSecond();
    EXPECT_EQ(buffer().ActiveView(), &second->editor);
    FocusFirst();
    EXPECT_EQ(buffer().ActiveView(), &view());
    Open();
    EXPECT_EQ(buffer().ActiveView(), &view());
}
