#include "app/RunTest.h"

std::wstring RunTest::SpeakerPath() {
    wchar_t path[1024] = {};
    GetModuleFileNameW(nullptr, path, 1024);
    const std::wstring own = path;
    return own.substr(0, own.rfind(L'\\') + 1) + L"speaker.exe";
}

void RunTest::SetUp() {
    FrameTest::SetUp();
    SetEnvironment(L"SPEAK", SpeakerPath().c_str());
}

void RunTest::TearDown() {
    FrameTest::TearDown();
    for (auto variable = before.rbegin(); variable != before.rend(); ++variable)
        SetEnvironmentVariableW(variable->name.c_str(), variable->existed ? variable->value.c_str() : nullptr);
}

void RunTest::SetEnvironment(const wchar_t* name, const wchar_t* value) {
    wchar_t buffer[4096] = {};
    const bool existed = GetEnvironmentVariableW(name, buffer, 4096) != 0;
    before.push_back({name, buffer, existed});
    SetEnvironmentVariableW(name, value);
}

void RunTest::Script(const std::wstring& name, const std::string& text) const {
    ASSERT_TRUE(files::Write(Path(name), text));
}

RECT RunTest::Caret() const {
    GUITHREADINFO info = {};
    info.cbSize = sizeof info;
    return GetGUIThreadInfo(GetWindowThreadProcessId(editor.Main(), nullptr), &info) ? info.rcCaret : RECT{};
}

bool RunTest::WaitForCaretRow(int row) const {
    return window::WaitFor([&] {
        const RECT caret = Caret();
        return caret.bottom > caret.top && caret.top == row * (caret.bottom - caret.top);
    });
}

bool RunTest::LeaveTheCommandWindow() {
    return editor.CommandWindow() && editor.Keys(L"Alt+C") && window::WaitFor([&] { return !editor.CommandWindow(); });
}

std::wstring RunTest::Text() {
    clipboard::Clear();
    // Without any text nothing is copied. So another key follows of which something can be seen.
    if (!editor.Keys(L"Ctrl+A Ctrl+C Insert") || !editor.WaitForStatus(4, L"\tOVR")) return L"no copy";
    if (!editor.Keys(L"Insert") || !editor.WaitForStatus(4, L"\tINS")) return L"no copy";
    return clipboard::Text();
}

void ShippedSettingsTest::SetUp() {
    RunTest::SetUp();
    const std::string settings = files::ShippedSettings();
    ASSERT_FALSE(settings.empty());
    ASSERT_TRUE(files::Write(files::ShippedSettingsPath(), settings));
}
