// Whatever was done to a frame, each of its windows shows what it would show if all of it were painted again.
//
// ORVANE_PAINT_SECONDS gives the test more time than it takes otherwise, ORVANE_PAINT_SEED says which of the random
// runs comes first.
#include "CallCounter.h"
#include "OwnFrameTest.h"
#include "RandomActions.h"
#include "app/OpenFiles.h"
#include "binary/win32/HexView.h"
#include "resource.h"
#include "support/ScratchFolder.h"
#include "viewbase/FindState.h"
#include "viewbase/win32/Clipboard.h"

#include <cstdlib>

namespace {

constexpr uint32_t StepsPerSeed = 150;

constexpr Char SettingsText[] = u"[General]\nFontName=Courier New\nFontSize=10\n"
                                u"[Engine_Cpp]\nExtensions=cpp c\nKeywords=int if return a\nCommentStart=//\n"
                                u"LongCommentStart=/*\nLongCommentEnd=*/\n"
                                u"[Engine_Html]\nExtensions=html\nHTML=1\nKeywords=b\n";

uint32_t FromEnvironment(const char* name, uint32_t otherwise) {
    const char* const value = std::getenv(name);
    return value ? static_cast<uint32_t>(std::strtoul(value, nullptr, 10)) : otherwise;
}

class RandomPaintTest : public OwnFrameTest {
protected:
    void BeforeFrame() override { ASSERT_TRUE(store.Load()); }
    void SetUp() override {
        ASSERT_NO_FATAL_FAILURE(OwnFrameTest::SetUp());
        ShowWindow(frame, SW_HIDE);
        SetForegroundWindow(main->Window());
    }
    void TearDown() override {
        CloseEverything();
        findState.Release();
        OwnFrameTest::TearDown();
    }

    static std::string Source() {
        std::string text;
        for (int i = 0; i < 12; ++i)
            text += "int a = (1 + [2]);\n\t\tif (a) {\n\t\t\treturn \"text\"; // why\n\t}\n/* over\n lines */ }\n" +
                    std::string(static_cast<size_t>(i) * 20, 'x') + "\n";
        return text;
    }
    static std::string Page() {
        std::string text = "<html><!-- over\nlines -->\n";
        for (int i = 0; i < 15; ++i) text += "<b a=1 c='(2'\n d=\"3\">text) &amp; <i>\n</b>\n";
        return text;
    }
    void CloseEverything() const {
        for (size_t i = RandomActions::PanesOf(main->Window()).size(); i > 1; --i) Command(IDM_CLOSE_PANE);
        for (uint32_t i = main->Commands().Documents().Count(); i > 0; --i) Command(IDM_CLOSE);
        ASSERT_EQ(main->Commands().Documents().Count(), 0u);
    }
    // As the program is when it was started, with three files.
    void Begin() {
        ASSERT_NO_FATAL_FAILURE(CloseEverything());
        findState.Release();
        ReleaseEngineDefinitions();
        store.Ini().Clear();
        std::u16string text = SettingsText;
        ASSERT_TRUE(store.Ini().Parse(text.data()));
        LoadSettings(store.Ini());
        LoadEngineDefinitions(store.Ini());
        main->ApplySettings(SettingsEffect::Engine);
        SetWindowPos(main->Window(), nullptr, 0, 0, 310, 240, SWP_NOZORDER);
        const ClipboardItem copied = {ClipboardFormat::UnicodeText, u"pasted (\ntext", 28};
        ASSERT_TRUE(Clipboard::Write(main->Window(), &copied, 1));
        OpenFiles();
    }
    void OpenFiles() {
        folder.Write("a.cpp", Source());
        folder.Write("b.html", Page());
        std::string bytes;
        for (int i = 0; i < 1500; ++i) bytes += static_cast<char>(i * 7);
        folder.Write("data.bin", bytes);
        ASSERT_TRUE(OpenFileArgument(main->Commands(), folder.Path("b.html").c_str(), NoLine, false, false));
        ASSERT_TRUE(OpenBinaryArgument(main->Commands(), folder.Path("data.bin").c_str()));
        ASSERT_TRUE(OpenFileArgument(main->Commands(), folder.Path("a.cpp").c_str(), NoLine, false, false));
    }

    static void Repaint(HWND window) {
        InvalidateRect(window, nullptr, TRUE);
        UpdateWindow(window);
    }
    static ::testing::AssertionResult IsUpToDate(HWND window) {
        HideCaret(window);
        UpdateWindow(window);
        const Picture shown(window);
        Repaint(window);
        const Picture whole(window);
        ShowCaret(window);
        for (int y = 0; y < whole.height; ++y)
            for (int x = 0; x < whole.width; ++x)
                if (shown.At(x, y) != whole.At(x, y))
                    return ::testing::AssertionFailure()
                           << "at " << x << "," << y << " of " << whole.width << "x" << whole.height << " (line height "
                           << LineHeightNow() << ") is " << std::hex << shown.At(x, y) << " instead of "
                           << whole.At(x, y);
        return ::testing::AssertionSuccess();
    }
    static int LineHeightNow() { return DrawingObjects::LineHeight(); }
    ::testing::AssertionResult AllAreUpToDate() const {
        int number = 0;
        for (const HWND pane : RandomActions::PanesOf(main->Window())) {
            const ::testing::AssertionResult result = IsUpToDate(pane);
            if (!result)
                return ::testing::AssertionFailure() << "pane " << number << (pane == GetFocus() ? " with" : " without")
                                                     << " the focus " << result.message();
            ++number;
        }
        const ::testing::AssertionResult gaps = IsUpToDate(main->Window());
        if (!gaps) return ::testing::AssertionFailure() << "the frame " << gaps.message();
        const ::testing::AssertionResult bar =
            IsUpToDate(FindWindowExW(main->Window(), nullptr, STATUSCLASSNAMEW, nullptr));
        if (!bar) return ::testing::AssertionFailure() << "the status bar " << bar.message();
        return ::testing::AssertionSuccess();
    }
    // One run. The steps are the same whenever the seed is.
    void Run(uint32_t seed, uint64_t deadline) {
        ASSERT_NO_FATAL_FAILURE(Begin());
        RandomActions actions(*main, seed);
        std::string before;
        for (uint32_t step = 0; step < StepsPerSeed && GetTickCount64() < deadline; ++step) {
            if (main->Commands().Documents().Count() < 3) {
                ASSERT_NO_FATAL_FAILURE(OpenFiles());
            }
            const std::string action = actions.Next();
            const ::testing::AssertionResult result = AllAreUpToDate();
            ASSERT_TRUE(result) << "seed " << seed << ", step " << step << ": " << action << "\nbefore: " << before;
            before = action + "; " + before.substr(0, 400);
        }
    }

    ScratchFolder folder;

private:
    static int WINAPI Agree(HWND, LPCWSTR, LPCWSTR, UINT kind) { return (kind & MB_TYPEMASK) == MB_OK ? IDOK : IDYES; }

    const ReplacedImport box{"MessageBoxW", reinterpret_cast<void*>(Agree)};
};

} // namespace

TEST_F(RandomPaintTest, EveryWindowShowsWhatAFullRepaintWould) {
    const uint64_t seconds = FromEnvironment("ORVANE_PAINT_SECONDS", 20);
    const uint64_t deadline = GetTickCount64() + 1000 * seconds;
    const uint32_t first = FromEnvironment("ORVANE_PAINT_SEED", 1);
    uint32_t seed = first;
    for (; GetTickCount64() < deadline; ++seed) ASSERT_NO_FATAL_FAILURE(Run(seed, deadline));
    RecordProperty("seeds", static_cast<int>(seed - first));
    printf("%u seeds of %u steps\n", seed - first, StepsPerSeed);
}
