// What another program hears of a pane, by way of the system's own client for screen readers.
#include "app/AppTest.h"

#include <ole2.h>

#include <oleacc.h>

namespace {

class ScreenReaderTest : public AppTest {
protected:
    void SetUp() override {
        ASSERT_TRUE(SUCCEEDED(OleInitialize(nullptr)));
        library = LoadLibraryW(L"oleacc.dll");
        find = reinterpret_cast<LPFNACCESSIBLEOBJECTFROMWINDOW>(
            reinterpret_cast<void*>(GetProcAddress(library, "AccessibleObjectFromWindow")));
        ASSERT_NE(find, nullptr);
        AppTest::SetUp();
    }
    void TearDown() override {
        AppTest::TearDown();
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
