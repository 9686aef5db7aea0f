// What input methods, dead keys and input tools do to a text view.
#include "CallCounter.h"
#include "InputMethodLibrary.h"
#include "TextViewTest.h"
#include "support/WithAdditional.h"
#include "viewbase/win32/InputMethod.h"

namespace {

using CompositionTest = TextViewTest;

TEST_F(CompositionTest, TheCompositionIsAtTheCaretInTheViewsFont) {
    UseSettings(u"FontSize=17\nFontBold=1");
    Show(u"abcdef\nabcdef\nabcdef");
    FocusView();
    Editor().MoveCaret({2, 3}, false);
    SendMessageW(Window(), WM_IME_STARTCOMPOSITION, 0, 0);
    const InputMethodLibrary library;
    const HIMC context = library.getContext(Window());
    ASSERT_NE(context, nullptr);
    COMPOSITIONFORM form = {};
    EXPECT_TRUE(library.getWindow(context, &form));
    EXPECT_EQ(form.dwStyle, static_cast<DWORD>(CFS_POINT));
    EXPECT_EQ(form.ptCurrentPos.x, ColumnX(3));
    EXPECT_EQ(form.ptCurrentPos.y, 2 * LineHeight());
    LOGFONTW expected = {};
    GetObjectW(DrawingObjects::EditorFont(), sizeof(expected), &expected);
    LOGFONTW font = {};
    EXPECT_TRUE(library.getFont(context, &font));
    EXPECT_EQ(font.lfHeight, expected.lfHeight);
    EXPECT_EQ(font.lfWeight, FW_BOLD);
    EXPECT_STREQ(font.lfFaceName, expected.lfFaceName);
    library.releaseContext(Window(), context);
}

// What an input method was told last of where to write, and in how high a font.
struct Composition {
    POINT place = {};
    RECT line = {}; // the rest of it, that candidates leave free
    LONG fontHeight = 0;
    RECT client = {};

    explicit Composition(HWND window) {
        const InputMethodLibrary library;
        const HIMC context = library.getContext(window);
        COMPOSITIONFORM form = {};
        CANDIDATEFORM candidates = {};
        LOGFONTW font = {};
        EXPECT_TRUE(library.getWindow(context, &form) && library.getFont(context, &font));
        EXPECT_TRUE(library.getCandidates(context, 0, &candidates));
        EXPECT_EQ(candidates.dwStyle, static_cast<DWORD>(CFS_EXCLUDE));
        library.releaseContext(window, context);
        place = form.ptCurrentPos;
        line = candidates.rcArea;
        fontHeight = font.lfHeight;
        GetClientRect(window, &client);
    }
    bool IsAt(int x, int y) const {
        return place.x == x && place.y == y && line.left == x && line.top == y && line.right == client.right &&
               line.bottom == y + LineHeight();
    }
    static int LineHeight() { return DrawingObjects::LineHeight(); }
};

// One that types goes on composing, at the new caret; and a pane's font may become another one meanwhile.
TEST_F(CompositionTest, ACompositionFollowsTheCaretWhileItLasts) {
    Show(u"abcdef" + std::u16string(39, u'\n'));
    FocusView();
    Editor().MoveCaret({2, 3}, false);
    SendMessageW(Window(), WM_IME_STARTCOMPOSITION, 0, 0);
    EXPECT_TRUE(Composition(Window()).IsAt(ColumnX(0), 2 * LineHeight()));
    SendMessageW(Window(), WM_CHAR, 0x3042, 1);
    EXPECT_EQ(Composition(Window()).place.x, Editor().Viewport().TextLeft() + ViewFont::Widths().Of(0x3042));
    SendMessageW(Window(), WM_CHAR, VK_RETURN, 1);
    EXPECT_TRUE(Composition(Window()).IsAt(ColumnX(0), 3 * LineHeight()));
    SendMessageW(Window(), WM_VSCROLL, SB_LINEDOWN, 0);
    EXPECT_TRUE(Composition(Window()).IsAt(ColumnX(0), 2 * LineHeight()));

    const int before = LineHeight();
    DrawingObjects::RebuildForDpi(192);
    view->OnSize(SettingsEffect::Layout);
    EXPECT_GT(LineHeight(), before);
    LOGFONTW font = {};
    GetObjectW(DrawingObjects::EditorFont(), sizeof(font), &font);
    EXPECT_TRUE(Composition(Window()).IsAt(ColumnX(0), 2 * LineHeight()));
    EXPECT_EQ(Composition(Window()).fontHeight, font.lfHeight);

    SendMessageW(Window(), WM_IME_ENDCOMPOSITION, 0, 0);
    Editor().MoveCaret({4, 0}, false);
    EXPECT_TRUE(Composition(Window()).IsAt(ColumnX(0), 2 * LineHeight())) << "nothing is told that nobody needs";
    SendMessageW(Window(), WM_IME_STARTCOMPOSITION, 0, 0);
    EXPECT_TRUE(Composition(Window()).IsAt(ColumnX(0), 3 * LineHeight()));
    DrawingObjects::RebuildForDpi(96);
}

TEST_F(CompositionTest, ACompositionBringsTheCaretIntoView) {
    Show(std::u16string(40, u'x') + std::u16string(500, u'\n'));
    FocusView();
    Editor().MoveCaret({0, 40}, false);
    for (int i = 0; i < 40; ++i)
        SendMessageW(Window(), WM_MOUSEWHEEL, MAKEWPARAM(0, static_cast<WORD>(-WHEEL_DELTA)), 0);
    ASSERT_GT(Editor().TopLine(), 0u);
    SendMessageW(Window(), WM_IME_STARTCOMPOSITION, 0, 0);
    EXPECT_EQ(Editor().TopLine(), 0u);
    EXPECT_TRUE(Composition(Window()).IsAt(ColumnX(40), 0));
    SendMessageW(Window(), WM_IME_ENDCOMPOSITION, 0, 0);

    for (int i = 0; i < 50; ++i) SendMessageW(Window(), WM_HSCROLL, SB_LINERIGHT, 0);
    ASSERT_EQ(Editor().Viewport().HorizontalScroll(), 50 * Average());
    SendMessageW(Window(), WM_IME_STARTCOMPOSITION, 0, 0);
    EXPECT_TRUE(Composition(Window()).IsAt(ColumnX(40), 0)) << "which scrolls all the way back";
}

TEST_F(CompositionTest, WhereNothingCanBeTypedACompositionScrollsNothing) {
    Show(std::u16string(500, u'\n'));
    FocusView();
    ASSERT_TRUE((*document)->MarkAsOutput());
    Editor().SetTopLine(100);
    SendMessageW(Window(), WM_IME_STARTCOMPOSITION, 0, 0);
    EXPECT_EQ(Editor().TopLine(), 100u);
}

// What keys make, and input tools send.

class CharacterTest : public TextViewTest {
protected:
    // Has the posted characters typed.
    void Pump() const {
        MSG message;
        while (
            PeekMessageW(&message, Window(), WM_CHAR, WM_CHAR, PM_REMOVE) ||
            PeekMessageW(&message, Window(), InputMethod::ComposedCharacter, InputMethod::ComposedCharacter, PM_REMOVE))
            DispatchMessageW(&message);
    }
    // Sends the characters while the keys are held.
    void SendHolding(std::initializer_list<int> keys, UINT message, const std::u16string& text) const {
        BYTE before[256] = {};
        ASSERT_TRUE(GetKeyboardState(before));
        BYTE held[256] = {};
        for (const int key : keys) held[key] = 0x80;
        ASSERT_TRUE(SetKeyboardState(held));
        for (const Char c : text) SendMessageW(Window(), message, c, 1);
        Pump();
        SetKeyboardState(before);
    }
    // What an input method has composed and commits with a key with Ctrl.
    void Commit(const std::u16string& text) const { SendHolding({VK_CONTROL}, WM_IME_CHAR, text); }
};

TEST_F(CharacterTest, WhatIsComposedIsTypedAlsoWithCtrlHeld) {
    Show(u"ab");
    FocusView();
    Editor().MoveCaret({0, 1}, false);
    Commit(u"\u65E5\U00020BB7");
    EXPECT_EQ(document->Text(), u"a\u65E5\U00020BB7b");
    EXPECT_EQ(Editor().CaretColumn(), 4u);
}

TEST_F(CharacterTest, WhatIsComposedIsNotTypedIntoWhatCannotBeEdited) {
    Show(u"ab");
    FocusView();
    ASSERT_TRUE((*document)->MarkAsOutput());
    Commit(u"\u65E5");
    EXPECT_EQ(document->Text(), u"ab");
}

TEST_F(CharacterTest, WhatAltGrTypesIsInsertedWhenThatIsSet) {
    const WithAdditional on;
    Show(u"ab");
    FocusView();
    SendHolding({VK_CONTROL, VK_MENU}, WM_CHAR, u"@");
    EXPECT_EQ(document->Text(), u"ab");
    on->AltGr = 1;
    SendHolding({VK_CONTROL, VK_MENU}, WM_CHAR, u"@\u0142");
    EXPECT_EQ(document->Text(), u"@\u0142ab");
    SendHolding({VK_CONTROL}, WM_CHAR, u"x");
    EXPECT_EQ(document->Text(), u"@\u0142ab");
}

TEST_F(CharacterTest, CodePointsAreTyped) {
    Show(u"ab");
    FocusView();
    Editor().MoveCaret({0, 1}, false);
    EXPECT_EQ(SendMessageW(Window(), WM_UNICHAR, UNICODE_NOCHAR, 0), TRUE) << "they are understood";
    EXPECT_EQ(SendMessageW(Window(), WM_UNICHAR, 0x17C, 1), FALSE);
    EXPECT_EQ(SendMessageW(Window(), WM_UNICHAR, 0x1F600, 1), FALSE);
    EXPECT_EQ(SendMessageW(Window(), WM_UNICHAR, 0x110000, 1), FALSE);
    Pump();
    EXPECT_EQ(document->Text(), u"a\u017C\U0001F600b");
    EXPECT_EQ(Editor().CaretColumn(), 4u);
}

TEST_F(CharacterTest, ACodePointIsOneStepAndOneStrip) {
    Show(u"ab\ncd\nef");
    FocusView();
    Editor().MoveCaret({1, 1}, false);
    UpdateWindow(Window());
    SendMessageW(Window(), WM_UNICHAR, 0x1F600, 1);
    Pump();
    RECT dirty = {};
    EXPECT_TRUE(GetUpdateRect(Window(), &dirty, FALSE));
    EXPECT_EQ(dirty.top, LineHeight());
    EXPECT_EQ(dirty.bottom, 2 * LineHeight());
    EXPECT_TRUE((*document)->Undo());
    EXPECT_EQ(document->Text(), u"ab\ncd\nef");
}

// The system makes one character of a dead key and the next one.
TEST_F(CharacterTest, ADeadKeyLeavesNothingBehind) {
    Show(u"");
    FocusView();
    SendMessageW(Window(), WM_DEADCHAR, 0xB4, 1);
    EXPECT_EQ(document->Text(), u"");
    EXPECT_EQ(Editor().CaretColumn(), 0u);
    SendMessageW(Window(), WM_CHAR, 0xE9, 1);
    EXPECT_EQ(document->Text(), u"\u00E9");
    SendMessageW(Window(), WM_SYSDEADCHAR, 0xB4, 1);
    EXPECT_EQ(document->Text(), u"\u00E9");
}

TEST_F(CompositionTest, EachViewReleasesTheLibraryThatItHasLoaded) {
    CallCounter<7, decltype(FreeLibrary)> released("FreeLibrary");
    ASSERT_TRUE(released.IsImported());
    Show(u"abc");
    document.reset();
    EXPECT_EQ(released.Take(), 0) << "nothing was composed";
    for (int i = 0; i < 2; ++i) {
        Show(u"abc");
        FocusView();
        SendMessageW(Window(), WM_IME_STARTCOMPOSITION, 0, 0);
        EXPECT_TRUE(Composition(Window()).IsAt(ColumnX(0), 0));
        SendMessageW(Window(), WM_IME_ENDCOMPOSITION, 0, 0);
        released.Take(); // the test's own
        document.reset();
        EXPECT_EQ(released.Take(), 1);
    }
}

FARPROC WINAPI FindNothing(HMODULE, LPCSTR) { return nullptr; }

TEST_F(CompositionTest, WithoutTheInputMethodsFunctionsTheViewWorksOn) {
    Show(u"abc");
    FocusView();
    {
        const ReplacedImport missing("GetProcAddress", reinterpret_cast<void*>(FindNothing));
        ASSERT_TRUE(missing.IsImported());
        CallCounter<7, decltype(FreeLibrary)> released("FreeLibrary");
        SendMessageW(Window(), WM_IME_STARTCOMPOSITION, 0, 0);
        EXPECT_EQ(released.Take(), 1) << "the library is given back";
    }
    SendMessageW(Window(), WM_CHAR, 'x', 0);
    EXPECT_EQ(document->Text(), u"xabc");
}

} // namespace
