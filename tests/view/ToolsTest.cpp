#include "view/ToolsTest.h"

const ToolsTest::Fields ToolsTest::NoFields = {L"", L"", L"", 0, false, false};

void ToolsTest::Load(std::u16string text) {
    ASSERT_TRUE(file.Parse(text.data()));
    ASSERT_TRUE(toolList.Load(file));
}

void ToolsTest::LoadThree() {
    file.Clear();
    Load(u"[General]\nFontSize=9\n"
         u"[Tool]\nDisplayName=One\nCommand=one.exe\nLastArgs=kept\nStartDir=C:\\1\nPromptArgs=1\n"
         u"[Tool]\nDisplayName=Two\nCommand=two.exe\nRedirectOutput=1\nHotKey=116\nHotKeyFlags=28\n"
         u"[Engine_X]\nBase=C\n"
         u"[Tool]\nDisplayName=Three\nCommand=three.exe\n");
}

ToolsTest::Fields ToolsTest::Shown(HWND tools) {
    return {
        dialog::TextOf(tools, IDC_TOOLS_TITLE),     dialog::TextOf(tools, IDC_TOOLS_COMMAND),
        dialog::TextOf(tools, IDC_TOOLS_DIRECTORY), SendDlgItemMessageW(tools, IDC_TOOLS_HOT_KEY, HKM_GETHOTKEY, 0, 0),
        dialog::IsChecked(tools, IDC_TOOLS_PROMPT), dialog::IsChecked(tools, IDC_TOOLS_REDIRECT)};
}

void ToolsTest::SetHotKey(HWND tools, BYTE key, BYTE modifiers) {
    SendDlgItemMessageW(tools, IDC_TOOLS_HOT_KEY, HKM_SETHOTKEY, MAKEWORD(key, modifiers), 0);
}
