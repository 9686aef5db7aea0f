#include "support/ViewTest.h"
#include "view/EditorFind.h"

#include <algorithm>
#include <vector>

namespace {

// One document in two views. `view` has the focus at first.
struct SharedDocumentTest : ViewTest {
    // Puts a second view beside the first, with its caret at `caret`.
    void Share(std::u16string text, uint32_t otherCaret, uint32_t otherAnchor) {
        Show(std::move(text));
        second = Open();
        second->editor.SelectRange({otherAnchor, otherCaret});
    }
    void Share(std::u16string text, uint32_t otherCaret) { Share(std::move(text), otherCaret, otherCaret); }
    TestView* Open() {
        TestView* made = TestView::Create(buffer());
        made->surface.SetSize(640, 160);
        made->input.OnSize(false);
        made->input.OnAttached();
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

TEST_F(SharedDocumentTest, TypingAboveTakesTheOtherCaretAlong) {
    Share(u"|one\ntwo\nthree", 9);
    Type(u"abc");
    EXPECT_EQ(second->editor.CaretLine(), 2u);
    EXPECT_EQ(second->editor.CaretColumn(), 1u) << "where the first key put every caret";
    EXPECT_EQ(second->editor.CaretOffset(), 12u);
    EXPECT_EQ(second->editor.SelectionAnchor(), 12u);
    ExpectAgreement();
}

TEST_F(SharedDocumentTest, WhatIsTypedNextInTheOtherViewGoesToItsCaret) {
    Share(u"|one\ntwo\nthree", 8);
    Type(u"abcd");
    FocusSecond();
    second->input.OnKeyDown(ViewKey::Backspace);
    EXPECT_EQ(Plain(Text()), Plain(u"abcdone\ntwo\nhree"));
    ExpectAgreement();
}

TEST_F(SharedDocumentTest, ASelectionBelowKeepsItsTextWhileTypingGoesOn) {
    Share(u"|one\ntwo\nthree", 0);
    Type(u"a");
    second->editor.SelectRange({5, 8}); // "two"
    Type(u"bc");
    EXPECT_EQ(second->editor.SelectionAnchor(), 7u);
    EXPECT_EQ(second->editor.CaretOffset(), 10u);
    ExpectAgreement();
}

TEST_F(SharedDocumentTest, TypingOnTheSameLineTakesTheOtherCaretAlong) {
    Share(u"|one two", 0);
    Type(u"a");
    FocusSecond();
    second->editor.SelectRange({5, 8}); // "two"
    FocusFirst();
    Type(u"bc");
    EXPECT_EQ(second->editor.SelectionAnchor(), 7u);
    EXPECT_EQ(second->editor.CaretOffset(), 10u);
    EXPECT_EQ(second->editor.CaretColumn(), 10u);
    ExpectAgreement();
}

TEST_F(SharedDocumentTest, DeletingInTheLastLineTakesTheOtherCaretAlong) {
    Share(u"one\nab|cdef", 10, 8);
    Press(ViewKey::Delete);
    EXPECT_EQ(Plain(Text()), Plain(u"one\nabdef"));
    EXPECT_EQ(second->editor.SelectionAnchor(), 7u);
    EXPECT_EQ(second->editor.CaretOffset(), 9u);
    ExpectAgreement();
}

TEST_F(SharedDocumentTest, ViewsAgreeAfterATextMadeShorter) {
    Share(u"one\ntwo\nthree\nfour\n|", 19);
    second->editor.SetTopLine(4);
    view().SetTopLine(4);
    Ctrl(u'A');
    Type(u"x");
    ExpectAgreement();
    Ctrl(u'Z');
    ExpectAgreement();
    Ctrl(u'Z');
    EXPECT_EQ(Plain(Text()), Plain(u"one\ntwo\nthree\nfour\n"));
    ExpectAgreement();
    Ctrl(u'Y');
    ExpectAgreement();
}

TEST_F(SharedDocumentTest, AViewMadeAfterAStepFollowsWhenItIsUndone) {
    Show(u"one\n|two\nthree");
    Type(u"ab\rcd");
    EXPECT_TRUE(buffer().CommitEdit());
    second = Open();
    second->editor.SelectRange({11, 15}); // in "three"
    for (int steps = 0; steps < 3; ++steps) {
        Ctrl(u'Z');
        ExpectAgreement();
    }
    EXPECT_EQ(Plain(Text()), Plain(u"one\ntwo\nthree"));
    EXPECT_EQ(second->editor.CaretOffset(), 10u);
    EXPECT_EQ(second->editor.SelectionAnchor(), 6u);
    for (int steps = 0; steps < 3; ++steps) {
        Ctrl(u'Y');
        ExpectAgreement();
    }
    EXPECT_EQ(second->editor.CaretOffset(), 15u);
}

TEST_F(SharedDocumentTest, ViewsWithoutAWindowAgreeAfterEmptying) {
    Share(u"one\ntwo\nthree\n|", 14);
    second->editor.SetTopLine(3);
    second->surface.window = false;
    buffer().EmptyAndResetUndo();
    ExpectAgreement();
}

TEST_F(SharedDocumentTest, AViewMadeAfterAReplacementFollowsWhenItIsUndone) {
    Show(u"a\nbab\nc");
    EXPECT_TRUE(findState.searchHistory.Add(u"b", 1));
    EditorFind::ReplaceAll(view(), u"x\nyz", 4, false);
    EXPECT_EQ(Plain(Text()), "a\nx\nyzax\nyz\nc");
    second = Open();
    second->editor.SelectRange({12, 12}); // the last line
    second->editor.SetTopLine(4);
    Ctrl(u'Z');
    EXPECT_EQ(second->editor.CaretOffset(), 6u);
    EXPECT_EQ(second->editor.TopLine(), 2u);
    ExpectAgreement();
    Ctrl(u'Y');
    EXPECT_EQ(second->editor.CaretOffset(), 12u);
    ExpectAgreement();
}
