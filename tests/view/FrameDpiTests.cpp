// The frame moves to a monitor of another density: font and metrics are rebuilt, and every view is laid
// out again with them.
#include "CallCounter.h"
#include "resource.h"
#include "view/OwnFrameTest.h"

namespace {

// The system's fonts are the test's while it lives.
class SystemFonts {
public:
    SystemFonts() { EXPECT_TRUE(parameters.IsImported() && density.IsImported()); }
    // Heights at 96 to the inch.
    void Use(UINT newDpi, LONG status, LONG message) const {
        dpi = newDpi;
        statusHeight = status;
        messageHeight = message;
    }

private:
    static BOOL WINAPI Answer(UINT action, UINT, PVOID out, UINT, UINT asked) {
        EXPECT_EQ(action, UINT{SPI_GETNONCLIENTMETRICS});
        auto& metrics = *static_cast<NONCLIENTMETRICSW*>(out);
        metrics.lfStatusFont.lfHeight = -MulDiv(statusHeight, static_cast<int>(asked), 96);
        metrics.lfMessageFont.lfHeight = -MulDiv(messageHeight, static_cast<int>(asked), 96);
        wcscpy(metrics.lfStatusFont.lfFaceName, L"Courier New");
        return TRUE;
    }
    static UINT WINAPI Density(HWND) { return dpi; }

    static inline UINT dpi = 96;
    static inline LONG statusHeight = 10;
    static inline LONG messageHeight = 10;
    ReplacedImport parameters{"SystemParametersInfoForDpi", reinterpret_cast<void*>(Answer)};
    ReplacedImport density{"GetDpiForWindow", reinterpret_cast<void*>(Density)};
};

class FrameDpiTest : public OwnFrameTest {
protected:
    void SetUp() override {
        ASSERT_NO_FATAL_FAILURE(OwnFrameTest::SetUp());
        DrawingObjects::RebuildForDpi(96); // whatever the screen of the test has
        main->Commands().NewDocument();
        text = static_cast<TextBuffer*>(main->Commands().Documents().At(0));
        ASSERT_NE(text, nullptr);
        view = static_cast<TextView*>(text->ActiveView()->AsView());
    }
    void TearDown() override {
        DrawingObjects::RebuildForDpi(96);
        OwnFrameTest::TearDown();
    }
    void MoveToDensity(WORD dpi) {
        RECT place = {};
        GetWindowRect(main->Window(), &place);
        ++place.right; // the system proposes another size
        SendMessageW(main->Window(), WM_DPICHANGED, MAKEWPARAM(dpi, dpi), reinterpret_cast<LPARAM>(&place));
        RECT taken = {};
        GetWindowRect(main->Window(), &taken);
        EXPECT_EQ(taken.right, place.right);
    }
    static LONG FontHeight() {
        LOGFONTW font = {};
        GetObjectW(DrawingObjects::EditorFont(), sizeof(font), &font);
        return font.lfHeight;
    }
    HWND StatusBar() const { return FindWindowExW(main->Window(), nullptr, STATUSCLASSNAMEW, nullptr); }
    HWND CommandLine() const { return FindWindowExW(main->Window(), nullptr, WC_EDITW, nullptr); }
    static std::pair<LONG, std::wstring> FontOf(HWND control) {
        LOGFONTW font = {};
        GetObjectW(reinterpret_cast<HGDIOBJ>(SendMessageW(control, WM_GETFONT, 0, 0)), sizeof(font), &font);
        return {font.lfHeight, font.lfFaceName};
    }
    RECT PlaceOf(HWND child) const {
        RECT place = {};
        GetWindowRect(child, &place);
        MapWindowPoints(nullptr, main->Window(), reinterpret_cast<POINT*>(&place), 2);
        return place;
    }
    int HeightOf(HWND child) const { return PlaceOf(child).bottom - PlaceOf(child).top; }
    // Expects pane, command window (if it is shown) and status bar one below the other, down to the end.
    void ExpectTiled() const {
        RECT client = {};
        GetClientRect(main->Window(), &client);
        const RECT status = PlaceOf(StatusBar());
        const RECT command = PlaceOf(CommandLine());
        const bool hasCommand = IsWindowVisible(CommandLine()) != 0;
        EXPECT_EQ(status.bottom, client.bottom);
        EXPECT_EQ(PlaceOf(view->GetWindow()).bottom, hasCommand ? command.top : status.top);
        if (!hasCommand) return;
        EXPECT_EQ(command.bottom, status.top);
    }
    int ClientHeight() const {
        RECT client = {};
        GetClientRect(view->GetWindow(), &client);
        return client.bottom;
    }

    TextBuffer* text = nullptr;
};

TEST_F(FrameDpiTest, FontAndMetricsAreRebuilt) {
    ASSERT_EQ(FontHeight(), -13); // 10 points at 96
    const int oldHeight = LineHeight();
    const int oldAverage = Average();
    MoveToDensity(192);
    EXPECT_EQ(DrawingObjects::Dpi(), 192u);
    EXPECT_EQ(FontHeight(), -27); // MulDiv(10, 192, 72)
    EXPECT_GT(LineHeight(), oldHeight);
    EXPECT_GT(Average(), oldAverage);
    EXPECT_EQ(view->Metrics().lineHeight, LineHeight());
    EXPECT_EQ(view->Metrics().averageWidth, Average());
    EXPECT_EQ(view->Metrics().spaceWidth, DrawingObjects::SpaceWidth());
    EXPECT_EQ(view->Widths().Of(u'x'), Average()); // a fixed-pitch font measured again
}

TEST_F(FrameDpiTest, ViewsAreLaidOutAndPaintedWithTheNewFont) {
    UseSettings(u"LineNumBg=#00ff00\nTextFg=#ff0000");
    MoveToDensity(192);
    EXPECT_EQ(Editor().VisibleLines(), ClientHeight() / LineHeight());
    EXPECT_EQ(Gutter(), 7 * Average());
    EXPECT_TRUE(text->InsertText(0, u"HH\nHH", 5));
    const Picture picture = Paint();
    EXPECT_TRUE(picture.IsAll(Rgb(0, 255, 0), 0, 0, 6 * Average(), LineHeight()));
    // The second row is a new line height below the first, in the back buffer's new height.
    EXPECT_TRUE(picture.Has(Rgb(255, 0, 0), ColumnX(0), LineHeight(), ColumnX(2), 2 * LineHeight()));
    EXPECT_FALSE(picture.Has(Rgb(255, 0, 0), ColumnX(2), 0, picture.width, 2 * LineHeight()));
}

TEST_F(FrameDpiTest, TheCaretIsAsHighAsTheNewLines) {
    SetForegroundWindow(main->Window());
    SetFocus(view->GetWindow());
    ASSERT_EQ(GetFocus(), view->GetWindow());
    EXPECT_TRUE(text->InsertText(0, u"ab", 2));
    Editor().MoveCaret({0, 2}, false);
    MoveToDensity(192);
    GUITHREADINFO info = {};
    info.cbSize = sizeof(info);
    GetGUIThreadInfo(GetCurrentThreadId(), &info);
    ASSERT_EQ(info.hwndCaret, view->GetWindow());
    EXPECT_EQ(info.rcCaret.bottom - info.rcCaret.top, LineHeight());
    EXPECT_EQ(info.rcCaret.left, ColumnX(2));
}

TEST_F(FrameDpiTest, CaretAndMarginGrowAsTheFontDoes) {
    UseSettings(u"CaretWidth=3\nMarginWidth=20\nShowLineNumbers=0");
    SetForegroundWindow(main->Window());
    SetFocus(view->GetWindow());
    const auto caretWidth = [] {
        GUITHREADINFO info = {};
        info.cbSize = sizeof(info);
        GetGUIThreadInfo(GetCurrentThreadId(), &info);
        return info.rcCaret.right - info.rcCaret.left;
    };
    for (const WORD dpi : {WORD{96}, WORD{144}, WORD{192}}) {
        MoveToDensity(dpi);
        EXPECT_EQ(caretWidth(), MulDiv(3, dpi, 96));
        EXPECT_EQ(Editor().Viewport().TextLeft(), MulDiv(20, dpi, 96));
    }
}

TEST_F(FrameDpiTest, PartsOfTheSameSizeAreLaidOutAllTheSame) {
    const SystemFonts system;
    const int before = HeightOf(StatusBar());
    system.Use(192, 30, 20);
    RECT place = {};
    GetWindowRect(main->Window(), &place);
    SendMessageW(main->Window(), WM_DPICHANGED, MAKEWPARAM(192, 192), reinterpret_cast<LPARAM>(&place));
    EXPECT_EQ(FontOf(StatusBar()), std::make_pair(-60L, std::wstring(L"Courier New")));
    EXPECT_GT(HeightOf(StatusBar()), before);
    ExpectTiled();
    INT edges[5] = {};
    SendMessageW(StatusBar(), SB_GETPARTS, 5, reinterpret_cast<LPARAM>(edges));
    EXPECT_EQ(edges[4] - edges[3], 60);
}

TEST_F(FrameDpiTest, ChangedSystemFontsAreFollowed) {
    const SystemFonts system;
    Command(IDM_COMMAND_WINDOW);
    for (const int height : {30, 12}) {
        system.Use(96, height, height + 2);
        SendMessageW(main->Window(), WM_SETTINGCHANGE, SPI_SETNONCLIENTMETRICS, 0);
        EXPECT_EQ(FontOf(StatusBar()).first, -height);
        EXPECT_EQ(FontOf(CommandLine()).first, -height - 2);
        ExpectTiled();
    }
}

TEST_F(FrameDpiTest, ControlsHearOfChangedColours) {
    int heard = 0;
    const auto count = [](HWND window, UINT message, WPARAM wparam, LPARAM lparam, UINT_PTR,
                          DWORD_PTR counter) -> LRESULT {
        *reinterpret_cast<int*>(counter) += message == WM_SYSCOLORCHANGE;
        return DefSubclassProc(window, message, wparam, lparam);
    };
    const auto procedure = static_cast<SUBCLASSPROC>(count);
    for (const HWND control : {StatusBar(), CommandLine()})
        ASSERT_TRUE(SetWindowSubclass(control, procedure, 7, reinterpret_cast<DWORD_PTR>(&heard)));
    SendMessageW(main->Window(), WM_SYSCOLORCHANGE, 0, 0);
    EXPECT_EQ(heard, 2);
    for (const HWND control : {StatusBar(), CommandLine()}) RemoveWindowSubclass(control, procedure, 7);
}

TEST_F(FrameDpiTest, TheWayBackGivesTheOldPicture) {
    EXPECT_TRUE(text->InsertText(0, u"int x;\nab", 9));
    const Picture before = Paint();
    MoveToDensity(144);
    MoveToDensity(96);
    RECT place = {};
    GetWindowRect(main->Window(), &place);
    SetWindowPos(main->Window(), nullptr, 0, 0, place.right - place.left - 2, place.bottom - place.top,
                 SWP_NOMOVE | SWP_NOZORDER);
    EXPECT_EQ(Paint(), before);
}

} // namespace
