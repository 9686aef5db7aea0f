// Two panes of one frame, and which of them commands are for.
#include "CallCounter.h"
#include "resource.h"
#include "view/OwnFrameTest.h"
#include "viewbase/win32/Clipboard.h"

namespace {

class FramePaneTest : public OwnFrameTest {
protected:
    void SetUp() override {
        ASSERT_NO_FATAL_FAILURE(OwnFrameTest::SetUp());
        SetForegroundWindow(main->Window());
        main->Commands().NewDocument();
        ASSERT_NE(Text(), nullptr);
    }

    TextBuffer* Text() const { return static_cast<TextBuffer*>(main->Commands().Documents().At(0)); }
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
    // A new view has its caret in the first line: another one than where the focus is. Two rules keep a word one step.
    // The view with the focus is the active one: broken, the first check fails. A line that is typed in stays open
    // (EditFlowTest.TypingGoesOnInItsLineWhileAnotherViewIsTheActiveOne): only with both broken is each key a step.
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
    main->Commands().NewDocument();
    Command(IDM_SPLIT_VERTICALLY);
    Command(IDM_CLOSE); // both panes show the first document now
    ASSERT_EQ(main->Commands().Documents().Count(), 1u);
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

namespace {

// The user chooses Cut from every context menu.
class PaneMenuTest : public FramePaneTest {
protected:
    TextBuffer* OtherText() const { return static_cast<TextBuffer*>(main->Commands().Documents().At(1)); }
    static TextEditor* OnlyEditorOf(TextBuffer* text) {
        ViewNode* next = nullptr;
        auto* const editor = static_cast<TextEditor*>(text->EnumViews(next, next));
        EXPECT_EQ(next, nullptr);
        return editor;
    }
    // The window of the pane without the focus.
    HWND OtherPane() const {
        HWND pane = nullptr;
        do pane = FindWindowExW(main->Window(), pane, L"OrvaneVWnd", nullptr);
        while (pane && pane == GetFocus());
        return pane;
    }
    static std::u16string Content(TextBuffer* text) {
        EXPECT_TRUE(text->CommitEdit());
        return {text->Content(), text->Length()};
    }

private:
    static BOOL WINAPI ChooseCut(HMENU, UINT, int, int, int, HWND owner, const RECT*) {
        SendMessageW(owner, WM_COMMAND, IDM_CUT, 0);
        return TRUE;
    }
    const ReplacedImport track{"TrackPopupMenu", reinterpret_cast<void*>(ChooseCut)};
};

} // namespace

TEST_F(PaneMenuTest, WhatIsChosenIsForThePaneThatWasClicked) {
    Command(IDM_SPLIT_VERTICALLY);
    main->Commands().NewDocument(); // takes one of the panes
    ASSERT_EQ(main->Commands().Documents().Count(), 2u);
    for (TextBuffer* const text : {Text(), OtherText()}) {
        ASSERT_TRUE(text->InsertText(0, u"one two", 7));
        TextEditor* const editor = OnlyEditorOf(text);
        ASSERT_NE(editor, nullptr);
        editor->MoveCaret({0, 0}, false);
        editor->MoveCaret({0, 4}, true);
    }
    const bool isFirst = !OnlyEditorOf(Text())->HasFocus();
    TextBuffer* const clicked = isFirst ? Text() : OtherText();
    TextBuffer* const active = isFirst ? OtherText() : Text();
    ASSERT_TRUE(OnlyEditorOf(active)->HasFocus());
    const HWND pane = OtherPane();
    POINT inside = {2, 2};
    ClientToScreen(pane, &inside);
    SendMessageW(pane, WM_CONTEXTMENU, reinterpret_cast<WPARAM>(pane), MAKELPARAM(inside.x, inside.y));
    EXPECT_EQ(Content(clicked), u"two");
    EXPECT_EQ(Content(active), u"one two");
    EXPECT_EQ(GetFocus(), pane);
}

TEST_F(FramePaneTest, TheMenuOffersNoChangesOfAReadOnlyText) {
    const ClipboardItem item = {ClipboardFormat::UnicodeText, u"words", 6 * sizeof(Char)};
    ASSERT_TRUE(Clipboard::Write(nullptr, &item, 1));
    const auto isEnabled = [this](UINT number) {
        const HMENU edit = GetSubMenu(GetMenu(main->Window()), 1);
        SendMessageW(main->Window(), WM_INITMENUPOPUP, reinterpret_cast<WPARAM>(edit), 1);
        return (GetMenuState(edit, number, MF_BYCOMMAND) & (MF_GRAYED | MF_DISABLED)) == 0;
    };
    ASSERT_TRUE(Text()->InsertText(0, u"words", 5));
    Command(IDM_SELECT_ALL);
    for (const UINT number : {IDM_CUT, IDM_PASTE, IDM_DELETE, IDM_COPY}) EXPECT_TRUE(isEnabled(number)) << number;
    ASSERT_TRUE(Text()->MarkAsOutput());
    for (const UINT number : {IDM_CUT, IDM_PASTE, IDM_DELETE}) EXPECT_FALSE(isEnabled(number)) << number;
    EXPECT_TRUE(isEnabled(IDM_COPY));
}
