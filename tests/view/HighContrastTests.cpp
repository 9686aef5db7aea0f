// High Contrast, dark title bars, and the colours of the command window, in a frame of the test's own.
#include "CallCounter.h"
#include "OwnFrameTest.h"
#include "app/CommandLanguage.h"
#include "settings/SystemColours.h"
#include "settings/win32/HighContrast.h"

namespace {

constexpr Colour ForestText = Rgb(0x10, 0xF0, 0x20);
constexpr Colour ForestBack = Rgb(0x05, 0x15, 0x05);

bool isHighContrast = false;
std::vector<BOOL> titleBars; // what each was made, in turn
decltype(&SystemParametersInfoW) realParameters = nullptr;
decltype(&GetSysColor) realColour = nullptr;
decltype(&GetProcAddress) realFind = nullptr;

BOOL WINAPI FakeParameters(UINT action, UINT size, void* value, UINT flags) {
    if (action != SPI_GETHIGHCONTRAST) return realParameters(action, size, value, flags);
    static_cast<HIGHCONTRASTW*>(value)->dwFlags = isHighContrast ? HCF_HIGHCONTRASTON : 0;
    return TRUE;
}

DWORD WINAPI FakeColour(int index) {
    if (isHighContrast && index == COLOR_WINDOW) return ForestBack;
    return isHighContrast && index == COLOR_WINDOWTEXT ? ForestText : realColour(index);
}

HRESULT WINAPI TakeAttribute(HWND, DWORD attribute, const void* value, DWORD size) {
    if (attribute == 20 && size == sizeof(BOOL)) titleBars.push_back(*static_cast<const BOOL*>(value));
    return S_OK;
}

FARPROC WINAPI FakeFind(HMODULE library, const char* name) {
    if (reinterpret_cast<ULONG_PTR>(name) > 0xFFFF && std::string(name) == "DwmSetWindowAttribute")
        return reinterpret_cast<FARPROC>(reinterpret_cast<void*>(TakeAttribute));
    return realFind(library, name);
}

class HighContrastTest : public OwnFrameTest {
protected:
    HighContrastTest() {
        realParameters = reinterpret_cast<decltype(realParameters)>(parameters.Original());
        realColour = reinterpret_cast<decltype(realColour)>(colour.Original());
        realFind = reinterpret_cast<decltype(realFind)>(find.Original());
        isHighContrast = false;
        titleBars.clear();
    }
    void BeforeFrame() override {
        ASSERT_TRUE(parameters.IsImported() && colour.IsImported() && find.IsImported());
        ASSERT_TRUE(store.Load());
    }
    void Switch(bool on) const {
        isHighContrast = on;
        SendMessageW(main->Window(), WM_SYSCOLORCHANGE, 0, 0);
    }
    // What the frame answers its command window, and the colours of the text then.
    struct Answer {
        Colour text;
        Colour back;
        Colour brush;
    };
    Answer AskForColours() const {
        const HWND edit = FindWindowExW(main->Window(), nullptr, L"Edit", nullptr);
        const HDC dc = GetDC(edit);
        const LRESULT brush =
            SendMessageW(main->Window(), WM_CTLCOLOREDIT, reinterpret_cast<WPARAM>(dc), reinterpret_cast<LPARAM>(edit));
        LOGBRUSH description = {};
        GetObjectW(reinterpret_cast<HBRUSH>(brush), sizeof(description), &description);
        const Answer answer = {GetTextColor(dc), GetBkColor(dc), description.lbColor};
        ReleaseDC(edit, dc);
        return answer;
    }

    const ReplacedImport parameters{"SystemParametersInfoW", reinterpret_cast<void*>(FakeParameters)};
    const ReplacedImport colour{"GetSysColor", reinterpret_cast<void*>(FakeColour)};
    const ReplacedImport find{"GetProcAddress", reinterpret_cast<void*>(FakeFind)};
};

using Bars = std::vector<BOOL>;

TEST_F(HighContrastTest, TheSystemsColoursComeAndGo) {
    const Colour text = settings.TextFg;
    const Colour comment = settings.CommentFg;
    Switch(true);
    EXPECT_EQ(settings.TextFg, ForestText);
    EXPECT_EQ(settings.TextBg, ForestBack);
    EXPECT_EQ(settings.CommentFg, ForestText);
    Switch(false);
    EXPECT_EQ(settings.TextFg, text);
    EXPECT_EQ(settings.TextBg, Rgb(255, 255, 255));
    EXPECT_EQ(settings.CommentFg, comment);
    // The setting may be told without the colours.
    isHighContrast = true;
    SendMessageW(main->Window(), WM_SETTINGCHANGE, SPI_SETHIGHCONTRAST, 0);
    EXPECT_EQ(settings.TextBg, ForestBack);
}

TEST_F(HighContrastTest, ItHoldsFromTheStartAndAfterAReload) {
    isHighContrast = true;
    ExecuteCommandLine(main->Commands(), u"reloadoptions");
    EXPECT_EQ(settings.TextFg, ForestText);
    ASSERT_TRUE(store.Load());
    EXPECT_EQ(settings.TextFg, ForestText);
}

TEST_F(HighContrastTest, ASetColourBringsTheUsersBack) {
    Switch(true);
    EXPECT_EQ(settings.TextBg, ForestBack);
    ExecuteCommandLine(main->Commands(), u"setopt KeywordFg #123456");
    EXPECT_EQ(settings.KeywordFg, Rgb(0x12, 0x34, 0x56));
    EXPECT_EQ(settings.TextBg, Rgb(255, 255, 255));
}

TEST_F(HighContrastTest, TheTitleBarIsDarkWithTheBackground) {
    EXPECT_EQ(titleBars, Bars()); // as the system made it
    ExecuteCommandLine(main->Commands(), u"setopt TextBg #1e1e2e");
    EXPECT_EQ(titleBars, (Bars{TRUE}));
    ExecuteCommandLine(main->Commands(), u"setopt TextFg #ffffff");
    EXPECT_EQ(titleBars, (Bars{TRUE}));
    // In High Contrast it is the system's.
    Switch(true);
    EXPECT_EQ(titleBars, (Bars{TRUE, FALSE}));
    Switch(false);
    ExecuteCommandLine(main->Commands(), u"setopt TextBg #ffffff");
    EXPECT_EQ(titleBars, (Bars{TRUE, FALSE, TRUE, FALSE}));
}

TEST_F(HighContrastTest, TheCommandWindowHasTheColoursOfTheText) {
    ExecuteCommandLine(main->Commands(), u"setopt TextBg #102030");
    ExecuteCommandLine(main->Commands(), u"setopt TextFg #f0e0d0");
    const Answer answer = AskForColours();
    EXPECT_EQ(answer.text, Rgb(0xf0, 0xe0, 0xd0));
    EXPECT_EQ(answer.back, Rgb(0x10, 0x20, 0x30));
    EXPECT_EQ(answer.brush, Rgb(0x10, 0x20, 0x30));
}

} // namespace
