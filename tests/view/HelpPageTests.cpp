// Where the manual is looked for and what is said without it. The program's place and the system's call that shows the
// page are replaced.

#include "CallCounter.h"
#include "app/UserPrompt.h"
#include "app/win32/AboutDialog.h"
#include "app/win32/HelpPage.h"
#include "base/win32/Ole.h"
#include "base/win32/Windows.h"
#include "resource.h"
#include "support/FailureInjection.h"
#include "support/ScratchFolder.h"
#include "view/DialogDriver.h"

#include <gtest/gtest.h>
#include <string>

namespace {

std::wstring program;
std::wstring shown;
std::wstring verb;
INT_PTR showResult;

DWORD WINAPI NameOfProgram(HMODULE, LPWSTR name, DWORD size) {
    if (program.size() >= size) return size;
    std::wcscpy(name, program.c_str());
    return static_cast<DWORD>(program.size());
}

HINSTANCE WINAPI Show(HWND, LPCWSTR operation, LPCWSTR file, LPCWSTR, LPCWSTR, INT) {
    verb = operation;
    shown = file;
    return reinterpret_cast<HINSTANCE>(showResult);
}

DWORD WINAPI IsThere(LPCWSTR) { return FILE_ATTRIBUTE_NORMAL; }

class Prompt final : public UserPrompt {
public:
    Answer AskUser(const Char* text, MessageKind kind) override {
        EXPECT_EQ(kind, MessageKind::Warning);
        said += text;
        return Answer::Ok;
    }
    std::u16string said;
};

class HelpPageTest : public testing::Test {
protected:
    HelpPageTest() {
        EXPECT_TRUE(place.IsImported() && show.IsImported());
        program = folder.File("orvane.exe").wstring();
        shown = verb = L"";
        showResult = 42;
    }

    ScratchFolder folder;
    Prompt prompt;
    Ole ole;

private:
    ReplacedImport place{"GetModuleFileNameW", reinterpret_cast<void*>(NameOfProgram)};
    ReplacedImport show{"ShellExecuteW", reinterpret_cast<void*>(Show)};
};

} // namespace

TEST_F(HelpPageTest, IsThePageBesideTheProgram) {
    folder.Write("orvane.html", "<p>Manual</p>");
    OpenHelpPage(nullptr, prompt, ole);
    EXPECT_EQ(verb, L"open");
    EXPECT_EQ(shown, folder.File("orvane.html").wstring());
    EXPECT_EQ(prompt.said, u"");
}

TEST_F(HelpPageTest, IsSaidToBeMissing) {
    OpenHelpPage(nullptr, prompt, ole);
    EXPECT_EQ(shown, L"");
    EXPECT_EQ(prompt.said, u"The manual is missing: " + folder.Path("orvane.html"));
}

// A path that is longer than the system takes it has to be copied first.
TEST_F(HelpPageTest, IsNotSaidToBeMissingWithoutMemoryToLook) {
    const std::wstring longFolder = L"C:\\" + std::wstring(MAX_PATH, L'n') + L"\\";
    const ReplacedImport kind("GetFileAttributesW", reinterpret_cast<void*>(IsThere));
    ASSERT_TRUE(kind.IsImported());
    program = longFolder + L"orvane.exe";
    const uint64_t failures = FailEachAllocation([&] {
        shown = L"";
        OpenHelpPage(nullptr, prompt, ole);
        return shown == longFolder + L"orvane.html";
    });
    EXPECT_GT(failures, 2u);
    EXPECT_EQ(prompt.said, u"");
}

TEST_F(HelpPageTest, IsSaidNotToOpen) {
    folder.Write("orvane.html", "<p>Manual</p>");
    showResult = SE_ERR_NOASSOC;
    OpenHelpPage(nullptr, prompt, ole);
    EXPECT_EQ(prompt.said, u"Failed opening file: " + folder.Path("orvane.html"));
}

TEST_F(HelpPageTest, IsAButtonAwayFromVersionAndLicense) {
    folder.Write("orvane.html", "<p>Manual</p>");
    const dialog::Parent parent(400, 300);
    std::wstring texts;
    dialog::WhenShown([&](HWND about) {
        for (HWND control = GetWindow(about, GW_CHILD); control; control = GetWindow(control, GW_HWNDNEXT)) {
            wchar_t text[100] = {};
            GetWindowTextW(control, text, 100);
            texts += std::wstring(text) + L'|';
        }
        dialog::Click(about, IDC_ABOUT_MANUAL);
        EXPECT_EQ(shown, folder.File("orvane.html").wstring());
        EXPECT_TRUE(IsWindow(about));
        dialog::Ok(about);
    });
    EXPECT_EQ(AboutDialog(prompt, ole).Run(IDD_ABOUT, parent.Get()), 1u);
    EXPECT_NE(texts.find(L"Orvane "), std::wstring::npos) << ::testing::PrintToString(texts);
    EXPECT_NE(texts.find(L"MIT License"), std::wstring::npos) << ::testing::PrintToString(texts);
}
