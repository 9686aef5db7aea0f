// The dialogs and the window of a text view while each allocation of the product fails in turn.

#include "TextViewTest.h"
#include "resource.h"
#include "support/FailureInjection.h"
#include "support/FakeSurface.h"
#include "view/DialogDriver.h"
#include "viewbase/FindState.h"

#include <functional>
#include <optional>

namespace {

class WindowFailureTest : public TextViewTest {
protected:
    static constexpr const Char* Original = u"one two\n\tthree two \u4E2D\u0416 four\nfive\n";

    void TearDown() override {
        TextViewTest::TearDown();
        ForgetSearch();
    }
    static void ForgetSearch() {
        findState.Release();
        findState.matchCase = findState.wholeWord = findState.searchUp = findState.cancelled = false;
    }
    void ShowOriginal() {
        ForgetSearch();
        Show(Original);
        view->SetHost(&host);
    }
    // Windows of this thread, with those inside them.
    static int Windows() {
        static constexpr auto add = [](HWND, LPARAM sum) -> BOOL {
            ++*reinterpret_cast<int*>(sum);
            return TRUE;
        };
        static constexpr auto addTree = [](HWND window, LPARAM sum) -> BOOL {
            ++*reinterpret_cast<int*>(sum);
            EnumChildWindows(window, add, sum);
            return TRUE;
        };
        int sum = 0;
        EnumThreadWindows(GetCurrentThreadId(), addTree, reinterpret_cast<LPARAM>(&sum));
        return sum;
    }

    // Opens the dialog of a command, fills it in, and presses a button, while nothing fails but what the product does
    // for it. `isDone` says whether that came to its end; the text is `Original` until then, and `after` that.
    uint64_t FailDialog(ViewCommand command, const std::function<void(HWND)>& fill, int button,
                        const std::function<bool()>& isDone, const std::u16string& after = Original) {
        return FailEachAllocation([&] {
            std::optional<FailurePause> pause(std::in_place);
            ShowOriginal();
            const int windows = Windows();
            bool done = false;
            dialog::WhenShown([&](HWND window) {
                pause.emplace();
                fill(window);
                pause.reset();
                dialog::Click(window, button);
                pause.emplace();
                done = isDone();
                if (IsWindowVisible(window)) dialog::Cancel(window);
            });
            pause.reset();
            view->ExecuteCommand(command);
            pause.emplace();
            EXPECT_EQ(Windows(), windows);
            const std::u16string now = document->Text();
            EXPECT_TRUE(now == Original || now == after);
            return done && now == after;
        });
    }
    bool IsSelected(uint32_t from, uint32_t to) const {
        return Editor().Caret().SelectionStart() == from && Editor().Caret().SelectionEnd() == to;
    }

    FakeHost host;
};

TEST_F(WindowFailureTest, Find) {
    const auto fill = [](HWND window) { dialog::SetText(window, IDC_FIND_WHAT, L"two"); };
    EXPECT_GT(FailDialog(ViewCommand::Find, fill, IDOK, [&] { return IsSelected(4, 7); }), 1u);
}

TEST_F(WindowFailureTest, ReplaceAll) {
    const auto fill = [](HWND window) {
        dialog::SetText(window, IDC_FIND_WHAT, L"two");
        dialog::SetText(window, IDC_REPLACE_WITH, L"second");
    };
    const std::u16string after = u"one second\n\tthree second \u4E2D\u0416 four\nfive\n";
    const auto isDone = [&] { return document->Text() == after; };
    EXPECT_GT(FailDialog(ViewCommand::Replace, fill, IDC_REPLACE_ALL, isDone, after), 4u);
}

TEST_F(WindowFailureTest, GoToLine) {
    const auto fill = [](HWND window) { dialog::SetText(window, IDC_GOTO_NUMBER, L"3"); };
    FailDialog(ViewCommand::GoToLine, fill, IDOK, [] { return true; });
    EXPECT_EQ(Editor().CaretLine(), 2u);
}

// Whatever was not painted for want of memory is when it is painted again.
TEST_F(WindowFailureTest, PaintingScrollingAndTyping) {
    ShowOriginal();
    const Picture before = Paint();
    const std::u16string after = std::u16string(u"x") + Original;
    const uint64_t failures = FailEachAllocation([&] {
        std::optional<FailurePause> pause(std::in_place);
        ShowOriginal();
        const HWND window = view->GetWindow();
        pause.reset();
        InvalidateRect(window, nullptr, TRUE);
        UpdateWindow(window);
        SendMessageW(window, WM_VSCROLL, SB_LINEDOWN, 0);
        SendMessageW(window, WM_MOUSEWHEEL, MAKEWPARAM(0, WHEEL_DELTA), 0);
        SendMessageW(window, WM_VSCROLL, SB_TOP, 0);
        UpdateWindow(window);
        SendMessageW(window, WM_CHAR, u'x', 0);
        UpdateWindow(window);
        pause.emplace();
        const std::u16string now = document->Text();
        EXPECT_TRUE(now == Original || now == after);
        const bool isTyped = now == after;
        if (isTyped) static_cast<void>((*document)->Undo());
        SendMessageW(window, WM_VSCROLL, SB_TOP, 0);
        EXPECT_TRUE(Paint() == before) << isTyped;
        return isTyped;
    });
    EXPECT_GT(failures, 3u);
}

} // namespace
