// How a text view treats its window: class, attaching, messages, caret, scroll bars.
#include "CallCounter.h"
#include "TextViewTest.h"
#include "WheelScreen.h"
#include "support/FakeSurface.h"
#include "viewbase/win32/Clipboard.h"

namespace {

class ViewWindowTest : public TextViewTest {
protected:
    static GUITHREADINFO ThreadInfo() {
        GUITHREADINFO info = {};
        info.cbSize = sizeof(info);
        GetGUIThreadInfo(GetCurrentThreadId(), &info);
        return info;
    }
    SCROLLINFO Bar(int bar) const {
        SCROLLINFO info = {};
        info.cbSize = sizeof(info);
        info.fMask = SIF_ALL;
        GetScrollInfo(Window(), bar, &info);
        return info;
    }
    static std::u16string Lines(int count) { return std::u16string(static_cast<size_t>(count - 1), u'\n'); }
};

TEST_F(ViewWindowTest, TheClassIsAsDocumentsExpectIt) {
    WNDCLASSEXW definition = {};
    definition.cbSize = sizeof(definition);
    ASSERT_TRUE(GetClassInfoExW(GetModuleHandleW(nullptr), L"OrvaneView", &definition));
    EXPECT_EQ(definition.style, 11u); // CS_VREDRAW, CS_HREDRAW, CS_DBLCLKS
    EXPECT_EQ(definition.hCursor, LoadCursorW(nullptr, IDC_ARROW));
    EXPECT_EQ(definition.hbrBackground, nullptr);
    EXPECT_EQ(Clipboard::WholeLineFormat(), RegisterClipboardFormatW(L"orvane_singleline"));
}

TEST_F(ViewWindowTest, AttachingTakesAWindowOverAndDetachingGivesItBack) {
    document = std::make_unique<TextDocument>(u"abc");
    auto* made = static_cast<TextView*>((*document)->CreateView(nullptr)->AsView());
    EXPECT_EQ(made->GetWindow(), nullptr);
    const HWND pane = CreateWindowExW(0, L"STATIC", L"", WS_CHILD | WS_VISIBLE | WS_VSCROLL | WS_HSCROLL, 0, 0, 200,
                                      100, frame, nullptr, GetModuleHandleW(nullptr), nullptr);
    const LONG_PTR procedure = GetWindowLongPtrW(pane, GWLP_WNDPROC);
    SetWindowLongPtrW(pane, GWLP_USERDATA, 42);
    EXPECT_EQ(made->Attach(pane), static_cast<Document*>(&**document));
    EXPECT_EQ(made->GetWindow(), pane);
    EXPECT_EQ(GetWindowLongPtrW(pane, GWLP_USERDATA), reinterpret_cast<LONG_PTR>(static_cast<View*>(made)));
    EXPECT_NE(GetWindowLongPtrW(pane, GWLP_WNDPROC), procedure);
    EXPECT_EQ((*document)->ActiveView(), &made->Editor());
    made->Detach();
    EXPECT_EQ(made->GetWindow(), nullptr);
    EXPECT_EQ(GetWindowLongPtrW(pane, GWLP_USERDATA), 42);
    EXPECT_EQ(GetWindowLongPtrW(pane, GWLP_WNDPROC), procedure);
    DestroyWindow(pane);
    EXPECT_EQ(document->Text(), u"abc");
}

TEST_F(ViewWindowTest, ADoubleClickSelectsAWord) {
    Show(u"one two");
    SendMessageW(Window(), WM_LBUTTONDBLCLK, MK_LBUTTON, MAKELPARAM(ColumnX(5), 1));
    EXPECT_EQ(Editor().Caret().SelectionStart(), 0u);
    EXPECT_EQ(Editor().Caret().SelectionEnd(), 3u);
}

// Where menus were shown, instead of showing them.
struct ShownMenu {
    POINT place;
    HWND focus;
};
std::vector<ShownMenu> shownMenus;

BOOL WINAPI TakeMenu(HMENU, UINT, int x, int y, int, HWND, const RECT*) {
    shownMenus.push_back({{x, y}, GetFocus()});
    return TRUE;
}

class ContextMenuTest : public ViewWindowTest {
protected:
    void SetUp() override {
        ASSERT_NO_FATAL_FAILURE(ViewWindowTest::SetUp());
        ASSERT_TRUE(track.IsImported());
        shownMenus.clear();
    }
    // In client pixels.
    void ExpectMenuAt(int x, int y) const {
        ASSERT_EQ(shownMenus.size(), 1u);
        POINT place = shownMenus[0].place;
        ScreenToClient(Window(), &place);
        EXPECT_EQ(place.x, x);
        EXPECT_EQ(place.y, y);
        EXPECT_EQ(shownMenus[0].focus, Window());
        shownMenus.clear();
    }

    const ReplacedImport track{"TrackPopupMenu", reinterpret_cast<void*>(TakeMenu)};
};

TEST_F(ContextMenuTest, ARightClickOpensItInTheViewThatItActivates) {
    Show(u"abc");
    SetForegroundWindow(frame);
    SetFocus(frame);
    SendMessageW(Window(), WM_RBUTTONDOWN, MK_RBUTTON, MAKELPARAM(12, 34));
    SendMessageW(Window(), WM_RBUTTONUP, 0, MAKELPARAM(12, 34));
    ExpectMenuAt(12, 34);
    EXPECT_EQ(Editor().CaretColumn(), 0u);
}

TEST_F(ContextMenuTest, KeysOpenItBelowTheCaret) {
    Show(u"abc\nabcdef");
    FocusView();
    Editor().MoveCaret({1, 4}, false);
    SendMessageW(Window(), WM_CONTEXTMENU, reinterpret_cast<WPARAM>(Window()), -1);
    ExpectMenuAt(ColumnX(4), 2 * LineHeight());
    BYTE before[256] = {};
    ASSERT_TRUE(GetKeyboardState(before));
    BYTE held[256] = {};
    held[VK_SHIFT] = 0x80;
    ASSERT_TRUE(SetKeyboardState(held));
    SendMessageW(Window(), WM_SYSKEYDOWN, VK_F10, 1);
    SetKeyboardState(before);
    ExpectMenuAt(ColumnX(4), 2 * LineHeight());
}

TEST_F(ContextMenuTest, KeysOpenItInsideTheViewWhenTheCaretIsOutOfSight) {
    Show(Lines(500));
    FocusView();
    Editor().SetTopLine(100);
    Editor().UpdateCaret(false);
    SendMessageW(Window(), WM_CONTEXTMENU, reinterpret_cast<WPARAM>(Window()), -1);
    ExpectMenuAt(TextLeft(), 0);
}

// What was chosen from it is an event of the macro of its own, and nobody is there to choose.
TEST_F(ContextMenuTest, NoneIsOpenedWhileAMacroIsPlayed) {
    FakeHost host;
    Show(u"abc");
    view->SetHost(&host);
    FocusView();
    for (const MacroState state : {MacroState::Playing, MacroState::Recording, MacroState::Idle}) {
        shownMenus.clear();
        host.macroState = state;
        SendMessageW(Window(), WM_CONTEXTMENU, reinterpret_cast<WPARAM>(Window()), -1);
        EXPECT_EQ(shownMenus.size(), state == MacroState::Playing ? 0u : 1u);
    }
    view->SetHost(nullptr);
}

TEST_F(ContextMenuTest, TheScrollBarsHaveTheirOwn) {
    Show(Lines(500));
    RECT client = {};
    GetClientRect(Window(), &client);
    POINT onBar = {client.right + 2, 20};
    ClientToScreen(Window(), &onBar);
    SendMessageW(Window(), WM_CONTEXTMENU, reinterpret_cast<WPARAM>(Window()), MAKELPARAM(onBar.x, onBar.y));
    EXPECT_TRUE(shownMenus.empty());
}

// The system makes a WM_CONTEXTMENU of the Menu key, but only where it hears of the key.
UINT passedOn = 0;
decltype(&DefWindowProcW) defaultProcedure = nullptr;

LRESULT WINAPI NotePassedOn(HWND window, UINT message, WPARAM wparam, LPARAM lparam) {
    passedOn = message;
    return defaultProcedure(window, message, wparam, lparam);
}

TEST_F(ContextMenuTest, TheSystemHearsOfTheMenuKey) {
    Show(u"abc");
    const ReplacedImport procedure("DefWindowProcW", reinterpret_cast<void*>(NotePassedOn));
    ASSERT_TRUE(procedure.IsImported());
    defaultProcedure = reinterpret_cast<decltype(&DefWindowProcW)>(procedure.Original());
    SendMessageW(Window(), WM_KEYUP, VK_APPS, 1);
    EXPECT_EQ(passedOn, static_cast<UINT>(WM_KEYUP));
}

TEST_F(ViewWindowTest, AWindowThatIsDestroyedIsForgottenAndLayoutDoesNothing) {
    Show(u"abc");
    DestroyWindow(Window());
    EXPECT_EQ(Window(), nullptr);
    view->OnSize(SettingsEffect::Engine);
    view->Invalidate();
    view->SuspendRedraw(false);
    view->SuspendRedraw(true);
    Editor().MoveCaret({0, 2}, false);
    EXPECT_EQ(Editor().CaretColumn(), 2u);
    EXPECT_EQ(document->Text(), u"abc");
}

TEST_F(ViewWindowTest, TheHostIsNotifiedOfTheFocus) {
    Show(u"abc");
    FakeHost host;
    EXPECT_EQ(view->SetHost(&host), 1u);
    FocusView();
    EXPECT_EQ(host.activations, 1);
    EXPECT_EQ(host.status[StatusField::Line], u"\tLn 1");
    EXPECT_EQ((*document)->EditLineNumber(), 0u); // the caret line is open
    view->SetHost(nullptr);
}

TEST_F(ViewWindowTest, TheCaretIsThereWithTheFocusOnly) {
    UseSettings(u"CaretWidth=3");
    Show(u"abcdef\nabcdef\nabcdef");
    SetFocus(nullptr);
    EXPECT_EQ(ThreadInfo().hwndCaret, nullptr);
    Editor().MoveCaret({2, 3}, false);
    FocusView();
    const GUITHREADINFO info = ThreadInfo();
    ASSERT_EQ(info.hwndCaret, Window());
    EXPECT_EQ(info.rcCaret.left, ColumnX(3));
    EXPECT_EQ(info.rcCaret.top, 2 * LineHeight());
    EXPECT_EQ(info.rcCaret.right - info.rcCaret.left, CaretPixels(view->Metrics()));
    EXPECT_EQ(info.rcCaret.bottom - info.rcCaret.top, LineHeight());
    SetFocus(frame);
    EXPECT_EQ(ThreadInfo().hwndCaret, nullptr);
}

TEST_F(ViewWindowTest, AChangedCaretWidthTakesEffectOnTheNextResize) {
    Show(u"abc");
    FocusView();
    EXPECT_EQ(ThreadInfo().rcCaret.right - ThreadInfo().rcCaret.left, CaretPixels(view->Metrics()));
    settings.CaretWidth = 5;
    SendMessageW(Window(), WM_SIZE, SIZE_RESTORED, 0);
    EXPECT_EQ(ThreadInfo().rcCaret.right - ThreadInfo().rcCaret.left, CaretPixels(view->Metrics()));
}

TEST_F(ViewWindowTest, TheTextAreaShowsTheBeam) {
    Show(u"abc");
    SetCursor(LoadCursorW(nullptr, IDC_ARROW));
    SendMessageW(Window(), WM_SETCURSOR, reinterpret_cast<WPARAM>(Window()), MAKELPARAM(HTVSCROLL, WM_MOUSEMOVE));
    EXPECT_EQ(GetCursor(), LoadCursorW(nullptr, IDC_ARROW));
    EXPECT_EQ(
        SendMessageW(Window(), WM_SETCURSOR, reinterpret_cast<WPARAM>(Window()), MAKELPARAM(HTCLIENT, WM_MOUSEMOVE)),
        1);
    EXPECT_EQ(GetCursor(), LoadCursorW(nullptr, IDC_IBEAM));
}

TEST_F(ViewWindowTest, TheClickThatActivatesTheFrameIsEaten) {
    Show(u"abc");
    const auto activate = [&] {
        return SendMessageW(Window(), WM_MOUSEACTIVATE, reinterpret_cast<WPARAM>(frame),
                            MAKELPARAM(HTCLIENT, WM_LBUTTONDOWN));
    };
    FocusView();
    EXPECT_NE(activate(), MA_ACTIVATEANDEAT);
    const HWND other = CreateWindowExW(0, L"STATIC", L"", WS_POPUP | WS_VISIBLE, 0, 0, 10, 10, nullptr, nullptr,
                                       GetModuleHandleW(nullptr), nullptr);
    SetFocus(other);
    ASSERT_EQ(GetFocus(), other);
    EXPECT_EQ(activate(), MA_ACTIVATEANDEAT);
    DestroyWindow(other);
}

TEST_F(ViewWindowTest, TheBackgroundIsNeverErased) {
    Show(u"abc");
    const HDC memory = CreateCompatibleDC(nullptr);
    const HDC screen = GetDC(nullptr);
    const HBITMAP bitmap = CreateCompatibleBitmap(screen, 10, 10);
    ReleaseDC(nullptr, screen);
    const HGDIOBJ old = SelectObject(memory, bitmap);
    SetPixel(memory, 5, 5, RGB(255, 0, 0));
    EXPECT_NE(SendMessageW(Window(), WM_ERASEBKGND, reinterpret_cast<WPARAM>(memory), 0), 0);
    EXPECT_EQ(GetPixel(memory, 5, 5), RGB(255, 0, 0));
    SelectObject(memory, old);
    DeleteObject(bitmap);
    DeleteDC(memory);
}

TEST_F(ViewWindowTest, TheBarsShowLinesAndPixels) {
    Show(Lines(500));
    const SCROLLINFO vertical = Bar(SB_VERT);
    EXPECT_EQ(vertical.nMin, 0);
    EXPECT_EQ(vertical.nMax, 500);
    EXPECT_EQ(vertical.nPage, static_cast<UINT>(Editor().VisibleLines()));
    const SCROLLINFO horizontal = Bar(SB_HORZ);
    EXPECT_EQ(horizontal.nMin, 0);
    EXPECT_EQ(horizontal.nMax, 16384);
    EXPECT_EQ(horizontal.nPage, static_cast<UINT>(Editor().Viewport().VisibleColumns() * Average()));
    SendMessageW(Window(), WM_VSCROLL, SB_PAGEDOWN, 0);
    SendMessageW(Window(), WM_VSCROLL, SB_LINEDOWN, 0);
    EXPECT_EQ(Editor().TopLine(), static_cast<uint32_t>(Editor().VisibleLines()) + 1);
    EXPECT_EQ(Bar(SB_VERT).nPos, Editor().VisibleLines() + 1);
    SendMessageW(Window(), WM_VSCROLL, SB_BOTTOM, 0);
    EXPECT_EQ(Bar(SB_VERT).nPos, static_cast<int>(Editor().TopLine()));
    SendMessageW(Window(), WM_VSCROLL, SB_TOP, 0);
    EXPECT_EQ(Editor().TopLine(), 0u);
    SendMessageW(Window(), WM_HSCROLL, SB_LINERIGHT, 0);
    EXPECT_EQ(Editor().Viewport().HorizontalScroll(), Average());
    EXPECT_EQ(Bar(SB_HORZ).nPos, Average());
}

// The system clamps a position to the last page; the view must agree with it.
TEST_F(ViewWindowTest, TheViewIsWhereTheSystemHoldsTheBar) {
    Show(Lines(500));
    SendMessageW(Window(), WM_VSCROLL, SB_BOTTOM, 0);
    SCROLLINFO beyond = Bar(SB_VERT);
    beyond.fMask = SIF_POS;
    beyond.nPos = beyond.nMax;
    SetScrollInfo(Window(), SB_VERT, &beyond, FALSE);
    EXPECT_EQ(Bar(SB_VERT).nPos, static_cast<int>(Editor().TopLine()));
}

TEST_F(ViewWindowTest, ABarThatCannotScrollIsDisabledNotHidden) {
    Show(u"a");
    EXPECT_TRUE(GetWindowLongPtrW(Window(), GWL_STYLE) & WS_VSCROLL);
    SCROLLBARINFO info = {};
    info.cbSize = sizeof(info);
    ASSERT_TRUE(GetScrollBarInfo(Window(), OBJID_VSCROLL, &info));
    EXPECT_FALSE(info.rgstate[0] & STATE_SYSTEM_INVISIBLE);
    EXPECT_GT(info.rcScrollBar.right, info.rcScrollBar.left);
}

TEST_F(ViewWindowTest, TheWheelTurnsTheFontWithCtrl) {
    Show(Lines(500));
    FakeHost host;
    view->SetHost(&host);
    const uint32_t size = settings.FontSize;
    const int height = LineHeight();
    SendMessageW(Window(), WM_MOUSEWHEEL, MAKEWPARAM(MK_CONTROL, static_cast<WORD>(-WHEEL_DELTA)), 0);
    EXPECT_EQ(settings.FontSize, size + 1);
    EXPECT_GE(LineHeight(), height);
    EXPECT_EQ(host.status[StatusField::Message], u"Font Size: 11");
    EXPECT_EQ(host.applied, std::vector{SettingsEffect::Layout});
    SendMessageW(Window(), WM_MOUSEWHEEL, MAKEWPARAM(0, static_cast<WORD>(-WHEEL_DELTA)), 0);
    UINT lines = 3;
    SystemParametersInfoW(SPI_GETWHEELSCROLLLINES, 0, &lines, 0);
    EXPECT_EQ(Editor().TopLine(), lines);
    view->SetHost(nullptr);
}

TEST_F(ViewWindowTest, AWheelSetToScreensScrollsByTheVisibleLines) {
    Show(Lines(500));
    const WheelScreen wheel;
    ASSERT_TRUE(wheel.IsSet());
    SendMessageW(Window(), WM_MOUSEWHEEL, MAKEWPARAM(0, static_cast<WORD>(-WHEEL_DELTA)), 0);
    EXPECT_EQ(Editor().TopLine(), static_cast<uint32_t>(Editor().VisibleLines()));
    SendMessageW(Window(), WM_MOUSEWHEEL, MAKEWPARAM(0, WHEEL_DELTA), 0);
    EXPECT_EQ(Editor().TopLine(), 0u);
}

TEST_F(ViewWindowTest, TheSidewaysWheelScrollsByTheUsersCharacters) {
    Show(u"abc");
    UINT columns = 3;
    SystemParametersInfoW(SPI_GETWHEELSCROLLCHARS, 0, &columns, 0);
    const int notch = static_cast<int>(columns) * Average();
    const auto tilt = [this](int delta) {
        SendMessageW(Window(), WM_MOUSEHWHEEL, MAKEWPARAM(0, static_cast<WORD>(delta)), 0);
    };
    tilt(WHEEL_DELTA);
    EXPECT_EQ(Editor().Viewport().HorizontalScroll(), notch);
    tilt(WHEEL_DELTA / 2);
    tilt(WHEEL_DELTA / 2);
    EXPECT_EQ(Editor().Viewport().HorizontalScroll(), 2 * notch);
    EXPECT_EQ(Bar(SB_HORZ).nPos, 2 * notch);
    tilt(-5 * WHEEL_DELTA);
    EXPECT_EQ(Editor().Viewport().HorizontalScroll(), 0);
}

TEST_F(ViewWindowTest, DetachingEndsADrag) {
    Show(u"abcdef\nabcdef\nabcdef");
    FocusView();
    const HWND window = Window();
    SendMessageW(window, WM_LBUTTONDOWN, MK_LBUTTON, MAKELPARAM(ColumnX(1), 0));
    SendMessageW(window, WM_MOUSEMOVE, MK_LBUTTON, MAKELPARAM(ColumnX(3), 0));
    ASSERT_EQ(Editor().CaretColumn(), 3u);
    ASSERT_EQ(GetCapture(), window);
    view->Detach();
    EXPECT_EQ(GetCapture(), nullptr);
    view->Attach(window);
    SendMessageW(window, WM_MOUSEMOVE, MK_LBUTTON, MAKELPARAM(ColumnX(5), LineHeight()));
    EXPECT_EQ(Editor().CaretLine(), 0u);
    EXPECT_EQ(Editor().CaretColumn(), 3u);
}

TEST_F(ViewWindowTest, CharactersAndKeysReachTheEditor) {
    Show(u"abc");
    FocusView();
    SendMessageW(Window(), WM_KEYDOWN, VK_END, 1);
    SendMessageW(Window(), WM_CHAR, L'd', 1);
    EXPECT_EQ(document->Text(), u"abcd");
    SendMessageW(Window(), WM_KEYUP, VK_END, 1);
    EXPECT_EQ(Editor().CaretColumn(), 4u);
}

TEST_F(ViewWindowTest, AltGrRunsNoCtrlCommand) {
    Show(u"abc");
    FocusView();
    BYTE before[256] = {};
    ASSERT_TRUE(GetKeyboardState(before));
    BYTE held[256] = {};
    held[VK_CONTROL] = held[VK_MENU] = 0x80;
    ASSERT_TRUE(SetKeyboardState(held));
    SendMessageW(Window(), WM_KEYDOWN, 'X', 1);
    EXPECT_EQ(document->Text(), u"abc");
    held[VK_MENU] = 0;
    SetKeyboardState(held);
    SendMessageW(Window(), WM_KEYDOWN, 'X', 1);
    EXPECT_EQ(document->Text(), u"");
    SetKeyboardState(before);
}

} // namespace
