// Bytes in panes, and the dialogs over them.

#include "DialogDriver.h"
#include "HexFrameTest.h"
#include "InputMethodLibrary.h"
#include "support/SparseFile.h"
#include "viewbase/FindState.h"
#include "viewbase/win32/Clipboard.h"

namespace {

class HexPanesTest : public HexFrameTest {
protected:
    void TearDown() override {
        HexFrameTest::TearDown();
        findState.Release();
        findState.matchCase = findState.hexPattern = findState.searchUp = false;
    }

    // As the Edit menu has an item when it opens.
    bool IsEnabled(UINT item) const {
        const HMENU edit = GetSubMenu(GetMenu(main->Window()), 1);
        SendMessageW(main->Window(), WM_INITMENUPOPUP, reinterpret_cast<WPARAM>(edit), 1);
        return (GetMenuState(edit, item, MF_BYCOMMAND) & (MF_GRAYED | MF_DISABLED)) == 0;
    }
    static void PutOnClipboard(const std::u16string& text) {
        const ClipboardItem item = {ClipboardFormat::UnicodeText, text.c_str(), (text.size() + 1) * sizeof(Char)};
        ASSERT_TRUE(Clipboard::Write(nullptr, &item, 1));
    }

    static constexpr WPARAM MessagePart = 0;
    static constexpr WPARAM OffsetPart = 2;

    std::wstring Status(WPARAM part) const {
        const HWND bar = FindWindowExW(main->Window(), nullptr, STATUSCLASSNAMEW, nullptr);
        wchar_t text[256] = {};
        SendMessageW(bar, SB_GETTEXTW, part, reinterpret_cast<LPARAM>(text));
        return text;
    }
    void Find(const wchar_t* text, int direction) const {
        dialog::WhenShown([&](HWND window) {
            dialog::SetText(window, IDC_FIND_WHAT, text);
            CheckDlgButton(window, IDC_HEX_PATTERN, BST_CHECKED);
            CheckRadioButton(window, IDC_FIND_UP, IDC_FIND_DOWN, direction);
            dialog::Ok(window);
            if (!messages.empty()) dialog::Cancel(window); // it stays when nothing was found
        });
        Command(IDM_FIND);
    }
    void DragFrom(HWND pane) const {
        SendMessageW(pane, WM_LBUTTONDOWN, MK_LBUTTON, MAKELPARAM(editor->Viewport().TextLeft(), 0));
        ASSERT_EQ(GetCapture(), pane);
    }
    void MoveMouse(HWND pane) const {
        SendMessageW(pane, WM_MOUSEMOVE, 0, MAKELPARAM(editor->Viewport().TextLeft(), 2 * LineHeight()));
        SendMessageW(pane, WM_TIMER, 1, 0);
    }
};

using HexDialogsTest = HexPanesTest;

} // namespace

TEST_F(HexDialogsTest, TheFindDialogSearchesInTheDirectionThatIsChosen) {
    Open("-needle-needle-needle-");
    editor->GoTo(10);
    Find(L"6e 65", IDC_FIND_UP);
    EXPECT_EQ(editor->Caret(), 8u);
    Find(L"6E65", IDC_FIND_DOWN);
    EXPECT_EQ(editor->Caret(), 15u);
    EXPECT_TRUE(messages.empty());
}

TEST_F(HexDialogsTest, TheFindDialogLeavesWordThatItPassedTheEnd) {
    Open("-needle-");
    SetFocus(Panes().at(0));
    ASSERT_TRUE(editor->HasFocus());
    editor->GoTo(5);
    Find(L"6e", IDC_FIND_DOWN);
    EXPECT_EQ(Status(MessagePart), L"Passed end of file");
    EXPECT_EQ(Status(OffsetPart), L"0000000001");
    EXPECT_TRUE(messages.empty());
}

TEST_F(HexDialogsTest, AnInvalidHexPatternIsNotFound) {
    Open("-needle-");
    for (const wchar_t* pattern : {L"6", L"6e6", L"6g", L"", L"6e-65"}) {
        messages.clear();
        Find(pattern, IDC_FIND_DOWN);
        EXPECT_EQ(messages, Messages{L"Text not found"}) << pattern;
    }
    EXPECT_EQ(editor->Caret(), 0u);
    EXPECT_FALSE(editor->HasSelection());
}

TEST_F(HexDialogsTest, OffsetsBeyondFourGigabytesAreShownAndTakenWhole) {
    folder.Write("data.bin", "");
    if (!ResizeSparsely(folder.File("data.bin"), (uint64_t{5} << 32) + 7)) GTEST_SKIP() << "no room for a sparse file";
    ASSERT_TRUE(OpenBinaryArgument(main->Commands(), folder.Path("data.bin").c_str()));
    file = static_cast<BinaryDocument*>(main->Commands().Documents().At(0));
    editor = Views().at(0);
    SetFocus(Panes().at(0));
    editor->SelectBytes({0x312345678, 0x4A0000000});
    std::wstring shown;
    const auto goTo = [&](const wchar_t* offset) {
        dialog::WhenShown([&](HWND window) {
            shown = dialog::TextOf(window, IDC_GOTO_NUMBER);
            dialog::SetText(window, IDC_GOTO_NUMBER, offset);
            dialog::Ok(window);
        });
        Command(IDM_GOTO);
    };
    goTo(L"4fffffff1");
    EXPECT_EQ(shown, L"0312345678"); // the anchor
    EXPECT_EQ(editor->Caret(), 0x4FFFFFFF1u);
    EXPECT_EQ(Status(OffsetPart), L"04FFFFFFF1");
    goTo(L"500000008");
    EXPECT_EQ(shown, L"04FFFFFFF1");
    EXPECT_EQ(Status(OffsetPart), L"0500000007");
}

TEST_F(HexPanesTest, WhatOnePaneSavesAllOfThemShowAsSaved) {
    Open("0123456789");
    Command(IDM_SPLIT_VERTICALLY);
    ASSERT_EQ(Panes().size(), 2u);
    Type(L"41");
    for (const HWND pane : Panes()) UpdateWindow(pane);
    Command(IDM_SAVE);
    for (const HWND pane : Panes()) EXPECT_TRUE(GetUpdateRect(pane, nullptr, FALSE));
    for (HexEditor* shown : Views()) {
        uint32_t count = 0;
        EXPECT_EQ(*shown->Page().BytesAt(*file, 0, count), 'A');
        EXPECT_FALSE(shown->Page().IsChanged(0));
    }
}

TEST_F(HexPanesTest, WhatWasTypedInAPaneThatIsClosedCanBeUndone) {
    Open("0123456789");
    Command(IDM_SPLIT_VERTICALLY);
    ASSERT_EQ(Views().size(), 2u);
    HexTyping::Type(*Views()[0], u'4');
    HexTyping::Type(*Views()[1], u'5');
    Command(IDM_CLOSE_PANE);
    ASSERT_EQ(Panes().size(), 1u);
    Command(IDM_UNDO);
    Command(IDM_UNDO);
    EXPECT_EQ(Content(), "0123456789");
    EXPECT_TRUE(TitleShows(false));
    Command(IDM_REDO);
    EXPECT_EQ(Content(), "@123456789");
}

TEST_F(HexPanesTest, ADragEndsWhenItsPaneShowsAnotherFile) {
    ASSERT_TRUE(OpenFileArgument(main->Commands(), folder.Write("a.txt", "a\nb\nc\nd").c_str(), NoLine, false, false));
    const std::u16string name = folder.Write("data.bin", std::string(100, 'x'));
    ASSERT_TRUE(OpenBinaryArgument(main->Commands(), name.c_str()));
    file = static_cast<BinaryDocument*>(main->Commands().Documents().At(1));
    editor = Views().at(0);
    const HWND pane = Panes().at(0);
    DragFrom(pane);
    Command(IDM_NEXT_FILE);
    EXPECT_EQ(GetCapture(), nullptr);
    MoveMouse(pane);
    Command(IDM_NEXT_FILE);
    MoveMouse(pane);
    EXPECT_EQ(editor->Caret(), 0u);
    EXPECT_FALSE(editor->HasSelection());
}

TEST_F(HexPanesTest, ADragEndsWithThePaneOrTheFileThatIsClosed) {
    Open(std::string(100, 'x'));
    Command(IDM_SPLIT_VERTICALLY);
    DragFrom(Panes().at(0));
    Command(IDM_CLOSE_PANE);
    ASSERT_EQ(Panes().size(), 1u);
    editor = Views().at(0);
    MoveMouse(Panes()[0]);
    EXPECT_EQ(editor->Caret(), 0u);
    DragFrom(Panes()[0]);
    Command(IDM_CLOSE);
    EXPECT_EQ(main->Commands().Documents().Count(), 0u);
    EXPECT_EQ(GetCapture(), nullptr);
}

TEST_F(HexPanesTest, TheMenuOffersWhatBytesCanDo) {
    Open("0123456789");
    PutOnClipboard(u"41\r\n42");
    EXPECT_TRUE(IsEnabled(IDM_PASTE));
    EXPECT_TRUE(IsEnabled(IDM_GOTO));
    EXPECT_FALSE(IsEnabled(IDM_CUT));
    EXPECT_FALSE(IsEnabled(IDM_BOOKMARK));
    PutOnClipboard(u"words");
    EXPECT_FALSE(IsEnabled(IDM_PASTE));
    main->Commands().NewDocument();
    for (const UINT item : {IDM_PASTE, IDM_CUT, IDM_BOOKMARK, IDM_GOTO}) EXPECT_TRUE(IsEnabled(item)) << item;
}

TEST_F(HexPanesTest, InputMethodsAreOffWhereBytesAreShown) {
    const InputMethodLibrary library;
    main->Commands().NewDocument();
    const HWND pane = Panes().at(0);
    ASSERT_TRUE(library.TakesText(pane));
    ASSERT_TRUE(OpenBinaryArgument(main->Commands(), folder.Write("data.bin", "0123456789").c_str()));
    EXPECT_FALSE(library.TakesText(pane));
    Command(IDM_NEXT_FILE);
    EXPECT_TRUE(library.TakesText(pane));
    Command(IDM_NEXT_FILE);
    EXPECT_FALSE(library.TakesText(pane));
    Command(IDM_CLOSE);
    EXPECT_TRUE(library.TakesText(pane));
}

TEST_F(HexPanesTest, TheSidewaysWheelMovesNothing) {
    Open("0123456789");
    EXPECT_EQ(SendMessageW(Panes().at(0), WM_MOUSEHWHEEL, MAKEWPARAM(0, WHEEL_DELTA), 0), 0);
    EXPECT_EQ(editor->Viewport().TopRow(), 0u);
}
