// Two panes of one frame that show one document.
#include "resource.h"
#include "view/OwnFrameTest.h"

namespace {

class FramePaneTest : public OwnFrameTest {
protected:
    void SetUp() override {
        ASSERT_NO_FATAL_FAILURE(OwnFrameTest::SetUp());
        SetForegroundWindow(main->Window());
        main->NewDocument();
        ASSERT_NE(Text(), nullptr);
    }

    TextBuffer* Text() const { return static_cast<TextBuffer*>(main->Documents().At(0)); }
    // The editor in the pane that has the focus, or in the other one.
    TextEditor* EditorOf(bool focused) const {
        ViewNode* next = nullptr;
        do {
            auto* const editor = static_cast<TextEditor*>(Text()->EnumViews(next, next));
            if (editor && editor->HasFocus() == focused) return editor;
        } while (next);
        return nullptr;
    }
    static void Type(const wchar_t* characters) {
        for (; *characters; ++characters) SendMessageW(GetFocus(), WM_CHAR, *characters, 1);
    }
    std::u16string Content() const {
        EXPECT_TRUE(Text()->CommitEdit());
        return {Text()->Content(), Text()->Length()};
    }
    // The document's text; the caret of the pane with the focus goes to its end.
    void Fill() {
        ASSERT_TRUE(Text()->InsertText(0, u"one\ntwo ", 8));
        EditorOf(true)->MoveCaret({1, 4}, false);
    }
    // A new view has its caret in the first line: another one than where the focus is.
    void ExpectTypingIsOneUndoStep() {
        EXPECT_EQ(Text()->ActiveView(), EditorOf(true));
        Type(L"hello");
        EXPECT_EQ(Content(), u"one\ntwo hello");
        Command(IDM_UNDO);
        EXPECT_EQ(Content(), u"one\ntwo ");
    }
};

} // namespace

TEST_F(FramePaneTest, TypingAfterASplitIsOneUndoStep) {
    ASSERT_NO_FATAL_FAILURE(Fill());
    Command(IDM_SPLIT_VERTICALLY);
    TextEditor* const other = EditorOf(false);
    ASSERT_TRUE(EditorOf(true) && other);
    ExpectTypingIsOneUndoStep();
    EXPECT_EQ(other->CaretOffset(), other->Text().LineStart(other->CaretLine()) + other->CaretColumn());
}

TEST_F(FramePaneTest, TypingAboveTheOtherPanesCaretMovesWhereThatTypes) {
    ASSERT_TRUE(Text()->InsertText(0, u"ab\nword", 7));
    Command(IDM_SPLIT_VERTICALLY);
    TextEditor* const other = EditorOf(false);
    TextEditor* const typing = EditorOf(true);
    ASSERT_TRUE(other && typing);
    other->MoveCaret({1, 4}, false);
    typing->MoveCaret({0, 2}, false);
    Type(L"cde");
    EXPECT_EQ(other->CaretLine(), 1u);
    EXPECT_EQ(other->CaretOffset(), other->Text().LineStart(1) + other->CaretColumn());
    Command(IDM_NEXT_PANE);
    ASSERT_TRUE(other->HasFocus());
    std::u16string expected = u"abcde\nword";
    expected.insert(6 + other->CaretColumn(), u"s");
    Type(L"s");
    EXPECT_EQ(Content(), expected);
}

TEST_F(FramePaneTest, TypingAfterAnotherPaneWasRefilledIsOneUndoStep) {
    ASSERT_NO_FATAL_FAILURE(Fill());
    main->NewDocument();
    Command(IDM_SPLIT_VERTICALLY);
    Command(IDM_CLOSE); // both panes show the first document now
    ASSERT_EQ(main->Documents().Count(), 1u);
    ASSERT_TRUE(EditorOf(true) && EditorOf(false));
    ExpectTypingIsOneUndoStep();
}

TEST_F(FramePaneTest, TheNewPaneTakesTypingOnceItHasTheFocus) {
    Command(IDM_SPLIT_HORIZONTALLY);
    Type(L"one");
    Command(IDM_NEXT_PANE);
    EditorOf(true)->MoveCaret({0, 0}, false);
    Type(L"two ");
    EXPECT_EQ(Content(), u"two one");
}
