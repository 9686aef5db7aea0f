#include "base/win32/Windows.h"
#include "resource.h"
#include "view/DialogLayout.h"

#include <algorithm>
#include <gtest/gtest.h>
#include <ostream>
#include <string>

// The small dialogs as their resources make them.

namespace {

struct DialogCase {
    const char* name;
    WORD resource;
};

void PrintTo(const DialogCase& test, std::ostream* out) { *out << test.name; }

class DialogLayout : public ::testing::TestWithParam<DialogCase> {
protected:
    void SetUp() override { Make(); }
    void TearDown() override { DestroyWindow(window); }

    void Make() {
        DestroyWindow(window);
        window = CreateDialogParamW(
            GetModuleHandleW(nullptr), MAKEINTRESOURCEW(GetParam().resource), nullptr,
            [](HWND, UINT, WPARAM, LPARAM) -> INT_PTR { return 0; }, 0);
        ASSERT_NE(window, nullptr);
    }

    HWND window = nullptr;
};

TEST_P(DialogLayout, IsClean) { dialog::ExpectCleanLayout(window); }

// Sizes are in units of the dialog's font, which grow with it, but not as evenly as its text.
TEST_P(DialogLayout, IsCleanOnFinerScreens) {
    for (const int dpi : {120, 144, 168, 192}) {
        SCOPED_TRACE(dpi);
        const dialog::Scaled scaled(dpi, dialog::FontPoints * dpi / 96);
        Make();
        dialog::ExpectCleanLayout(window);
    }
}

TEST_P(DialogLayout, AMnemonicLeadsToOneControl) {
    const std::wstring letters = dialog::Mnemonics(window);
    EXPECT_EQ(std::adjacent_find(letters.begin(), letters.end()), letters.end()) << ::testing::PrintToString(letters);
}

// A label passes the focus on to what follows it.
TEST_P(DialogLayout, ALabelComesBeforeWhatItNames) {
    for (HWND control = GetWindow(window, GW_CHILD); control; control = GetWindow(control, GW_HWNDNEXT)) {
        wchar_t kind[16] = {};
        wchar_t text[64] = {};
        GetClassNameW(control, kind, 16);
        GetWindowTextW(control, text, 64);
        if (lstrcmpiW(kind, L"Static") != 0 || std::wstring(text).find(L'&') == std::wstring::npos) continue;
        const HWND named = GetWindow(control, GW_HWNDNEXT);
        ASSERT_NE(named, nullptr);
        EXPECT_TRUE(GetWindowLongW(named, GWL_STYLE) & WS_TABSTOP) << ::testing::PrintToString(std::wstring(text));
    }
}

// Also of those that have tests of their own, and of the pages.
constexpr WORD AllDialogs[] = {
    IDD_GOTO,        IDD_BINARY_GOTO, IDD_FIND,          IDD_REPLACE, IDD_TOOL_ARGUMENTS,  IDD_ABOUT,
    IDD_SAVE_EXTRAS, IDD_OPTIONS,     IDD_OPTIONS_FONTS, IDD_TOOLS,   IDD_OPTIONS_GENERAL, IDD_OPTIONS_COLORS};

TEST(Dialogs, HaveTheFontOfTheSystem) {
    for (const WORD resource : AllDialogs)
        EXPECT_EQ(dialog::FontOf(resource), std::make_pair(std::wstring(L"Segoe UI"), dialog::FontPoints)) << resource;
}

TEST(Dialogs, EveryControlHasAName) {
    INITCOMMONCONTROLSEX controls = {sizeof(controls), ICC_TREEVIEW_CLASSES | ICC_HOTKEY_CLASS | ICC_STANDARD_CLASSES};
    InitCommonControlsEx(&controls);
    for (const WORD resource : AllDialogs) {
        // A page needs a window to be in.
        const HWND window = CreateDialogParamW(
            GetModuleHandleW(nullptr), MAKEINTRESOURCEW(resource), GetDesktopWindow(),
            [](HWND, UINT, WPARAM, LPARAM) -> INT_PTR { return 0; }, 0);
        ASSERT_NE(window, nullptr) << resource;
        for (HWND control = GetWindow(window, GW_CHILD); control; control = GetWindow(control, GW_HWNDNEXT)) {
            if (SendMessageW(control, STM_GETICON, 0, 0)) continue; // a picture that says nothing
            EXPECT_NE(dialog::NameOf(control), L"") << resource << ", " << GetDlgCtrlID(control);
        }
        DestroyWindow(window);
    }
}

INSTANTIATE_TEST_SUITE_P(Dialogs, DialogLayout,
                         ::testing::Values(DialogCase{"GoTo", IDD_GOTO}, DialogCase{"BinaryGoTo", IDD_BINARY_GOTO},
                                           DialogCase{"Find", IDD_FIND}, DialogCase{"Replace", IDD_REPLACE},
                                           DialogCase{"ToolArguments", IDD_TOOL_ARGUMENTS},
                                           DialogCase{"About", IDD_ABOUT}),
                         [](const auto& test) { return std::string(test.param.name); });

} // namespace
