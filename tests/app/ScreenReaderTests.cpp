// What another program hears of a pane, by way of the system's own client for screen readers.
#include "app/FileDialogTest.h"

#include <ole2.h>

#include <oleacc.h>

#include <algorithm>

namespace {

// The windows of the program that have said that their name is another one.
std::vector<HWND> renamed;

void CALLBACK TakeRenamed(HWINEVENTHOOK, DWORD, HWND window, LONG object, LONG, DWORD, DWORD) {
    if (object == OBJID_CLIENT) renamed.push_back(window);
}

// Whether a window has said so by now.
bool IsRenamed(HWND window) {
    MSG message;
    while (PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE)) DispatchMessageW(&message);
    return std::find(renamed.begin(), renamed.end(), window) != renamed.end();
}

class ScreenReaderTest : public FileDialogTest {
protected:
    void SetUp() override {
        ASSERT_TRUE(SUCCEEDED(OleInitialize(nullptr)));
        library = LoadLibraryW(L"oleacc.dll");
        find = reinterpret_cast<LPFNACCESSIBLEOBJECTFROMWINDOW>(
            reinterpret_cast<void*>(GetProcAddress(library, "AccessibleObjectFromWindow")));
        ASSERT_NE(find, nullptr);
        FileDialogTest::SetUp();
    }
    void TearDown() override {
        FileDialogTest::TearDown();
        if (pane) pane->Release();
        OleUninitialize();
    }
    void Ask() { Ask(editor.Panes().at(0)); }
    void Ask(HWND window) {
        void* object = nullptr;
        ASSERT_EQ(find(window, static_cast<DWORD>(OBJID_CLIENT), __uuidof(IAccessible), &object), S_OK);
        pane = static_cast<IAccessible*>(object);
    }
    static VARIANT Self() {
        VARIANT self = {};
        self.vt = VT_I4;
        self.lVal = CHILDID_SELF;
        return self;
    }
    static std::wstring Take(HRESULT result, BSTR text) {
        const std::wstring taken = result == S_OK && text ? text : L"<nothing>";
        SysFreeString(text);
        return taken;
    }
    std::wstring Name() const {
        BSTR text = nullptr;
        const HRESULT result = pane->get_accName(Self(), &text);
        return Take(result, text);
    }
    std::wstring Value() const {
        BSTR text = nullptr;
        const HRESULT result = pane->get_accValue(Self(), &text);
        return Take(result, text);
    }

    HMODULE library = nullptr;
    LPFNACCESSIBLEOBJECTFROMWINDOW find = nullptr;
    IAccessible* pane = nullptr;
};

TEST_F(ScreenReaderTest, APaneSaysItsNameAndTheLineOfItsCaret) {
    ASSERT_TRUE(OpenFile(L"a.txt", "one\r\ntwo\r\n"));
    ASSERT_NO_FATAL_FAILURE(Ask());
    EXPECT_EQ(Name(), Path(L"a.txt"));
    EXPECT_EQ(Value(), L"one");
    ASSERT_TRUE(editor.Keys(L"Down"));
    ASSERT_TRUE(editor.Type(L"x"));
    ASSERT_TRUE(editor.WaitForTitle(Path(L"a.txt") + L"* - Orvane"));
    EXPECT_EQ(Value(), L"xtwo");
}

TEST_F(ScreenReaderTest, APaneSaysThatItsNameIsAnotherOne) {
    ASSERT_TRUE(OpenFile(L"a.txt", "one"));
    ASSERT_NO_FATAL_FAILURE(Ask());
    EXPECT_EQ(Name(), Path(L"a.txt"));
    renamed.clear();
    const HWINEVENTHOOK hook = SetWinEventHook(EVENT_OBJECT_NAMECHANGE, EVENT_OBJECT_NAMECHANGE, nullptr, TakeRenamed,
                                               editor.Process(), 0, WINEVENT_OUTOFCONTEXT);
    ASSERT_NE(hook, nullptr);
    editor.Command(IDM_SAVE_AS);
    ASSERT_TRUE(WaitForDialogTitled(L"Save As"));
    ASSERT_TRUE(TypeFileName(Path(L"b.txt")));
    const HWND shown = editor.Panes().at(0);
    EXPECT_TRUE(window::WaitFor([&] { return IsRenamed(shown); }));
    EXPECT_EQ(Name(), Path(L"b.txt"));
    UnhookWinEvent(hook);
}

// Its message, which is its first part, is none.
TEST_F(ScreenReaderTest, TheStatusBarHasAName) {
    ASSERT_TRUE(OpenFile(L"a.txt", "one"));
    ASSERT_NO_FATAL_FAILURE(Ask(window::Children(editor.Main(), STATUSCLASSNAMEW).at(0)));
    EXPECT_EQ(Name(), L"Status");
    ASSERT_TRUE(editor.Keys(L"Ctrl+End"));
    ASSERT_TRUE(editor.WaitForStatus(3, L"\tCol 4")) << "the parts are as before";
}

TEST_F(ScreenReaderTest, TheEditorEndsWhoeverStillAsks) {
    ASSERT_TRUE(OpenFile(L"a.txt", "one"));
    ASSERT_NO_FATAL_FAILURE(Ask());
    EXPECT_EQ(Value(), L"one");
    editor.Close();
    DWORD exitCode = 1;
    ASSERT_TRUE(editor.WaitForEnd(exitCode));
    EXPECT_EQ(exitCode, 0u);
    EXPECT_EQ(Value(), L"<nothing>");
}

} // namespace
