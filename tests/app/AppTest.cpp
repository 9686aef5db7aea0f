#include "app/AppTest.h"

#include "app/Input.h"
#include "app/Screen.h"

#include <iostream>

namespace {

// What is the user's own stays untouched while the tests run.
class UserKeptOut : public testing::Environment {
public:
    void SetUp() override {
        settings = new files::SavedSettings;
        recovery = new files::SavedRecovery;
        keyboard = new input::OnlyOurs;
    }
    void TearDown() override {
        delete keyboard;
        delete recovery;
        delete settings;
    }

private:
    files::SavedSettings* settings = nullptr;
    files::SavedRecovery* recovery = nullptr;
    input::OnlyOurs* keyboard = nullptr;
};

[[maybe_unused]] const testing::Environment* const registered = testing::AddGlobalTestEnvironment(new UserKeptOut);

} // namespace

void AppTest::SetUp() {
    DeleteFileW(files::SettingsPath().c_str());
    DeleteFileW(files::ShippedSettingsPath().c_str());
    // An editor that a test before ended with unsaved changes has left its journals.
    files::EmptyRecovery();
    // A window that comes up under the pointer would take over the state of the real keyboard.
    input::MoveMouse({GetSystemMetrics(SM_CXSCREEN) - 1, GetSystemMetrics(SM_CYSCREEN) - 1});
}

void AppTest::TearDown() {
    if (!HasFailure()) return;
    const HWND front = GetForegroundWindow();
    std::cout << "In front: " << testing::PrintToString(window::TextOf(front)) << ", class "
              << testing::PrintToString(window::ClassOf(front)) << "; the editor's focus: class "
              << testing::PrintToString(window::ClassOf(editor.Focus())) << '\n';
    wchar_t folder[1024] = {};
    if (!GetEnvironmentVariableW(L"ORVANE_TEST_PICTURES", folder, 1024)) return;
    std::wstring name;
    for (const char* at = testing::UnitTest::GetInstance()->current_test_info()->name(); *at; at++)
        name += static_cast<wchar_t>(*at);
    SaveScreen(std::wstring(folder) + L"\\" + name + L".bmp");
}

bool AppTest::OpenFile(const std::wstring& name, const std::string& bytes, const std::wstring& options) {
    return files::Write(Path(name), bytes) && Start(options + L"\"" + name + L"\"") &&
           editor.WaitForTitle(Path(name) + L" - Orvane");
}

std::string AppTest::SaveAndRead(const std::wstring& name) {
    if (!editor.WaitForTitle(Path(name) + L"* - Orvane")) return "not changed";
    if (!editor.Keys(L"Ctrl+S") || !editor.WaitForTitle(Path(name) + L" - Orvane")) return "not saved";
    return files::Read(Path(name));
}

std::vector<std::wstring> AppTest::OpenDocuments() {
    const std::wstring changed = L"* - Orvane";
    std::vector<std::wstring> names;
    for (int digit = 1; digit <= 9; digit++) {
        // Without such a document Ctrl+digit changes nothing, and the one before it answers again.
        if (!editor.Keys(L"Ctrl+" + std::to_wstring(digit)) || !editor.Type(L"x")) break;
        const auto isChanged = [&] {
            const std::wstring title = editor.Title();
            return title.size() > changed.size() && title.ends_with(changed);
        };
        if (!window::WaitFor(isChanged)) break;
        std::wstring name = editor.Title();
        name.resize(name.size() - changed.size());
        if (!editor.Keys(L"Ctrl+Z") || !editor.WaitForTitle(name + L" - Orvane")) break;
        if (!names.empty() && names.back() == name) break;
        names.push_back(name);
    }
    return names;
}
