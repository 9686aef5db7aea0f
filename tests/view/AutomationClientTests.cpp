// What UI Automation's own client reads of a text view's window, from another thread as every client does.
#include "AccessibleSupport.h"
#include "base/win32/SystemLibrary.h"

#include <functional>

namespace {

using Node = struct NodeObject*;
using Pattern = struct PatternObject*;
using TextRangeHandle = struct TextRangeObject*;

// The client's functions that the compiler's libraries do not have.
struct Client {
    HRESULT(WINAPI* nodeFromHandle)(HWND window, Node* out);
    HRESULT(WINAPI* getProperty)(Node node, PROPERTYID property, VARIANT* out);
    HRESULT(WINAPI* getPattern)(Node node, PATTERNID pattern, Pattern* out);
    HRESULT(WINAPI* getDocument)(Pattern pattern, TextRangeHandle* out);
    HRESULT(WINAPI* expand)(TextRangeHandle range, TextUnit unit);
    HRESULT(WINAPI* move)(TextRangeHandle range, TextUnit unit, int count, int* moved);
    HRESULT(WINAPI* getText)(TextRangeHandle range, int limit, BSTR* out);
    BOOL(WINAPI* releaseNode)(Node node);
    BOOL(WINAPI* releasePattern)(Pattern pattern);
    BOOL(WINAPI* releaseRange)(TextRangeHandle range);

    bool Load() {
        using SystemLibrary::Find;
        const HMODULE library = SystemLibrary::Load(L"\\uiautomationcore.dll");
        return library && Find(library, nodeFromHandle, "UiaNodeFromHandle") &&
               Find(library, getProperty, "UiaGetPropertyValue") &&
               Find(library, getPattern, "UiaGetPatternProvider") &&
               Find(library, getDocument, "TextPattern_get_DocumentRange") &&
               Find(library, expand, "TextRange_ExpandToEnclosingUnit") && Find(library, move, "TextRange_Move") &&
               Find(library, getText, "TextRange_GetText") && Find(library, releaseNode, "UiaNodeRelease") &&
               Find(library, releasePattern, "UiaPatternRelease") && Find(library, releaseRange, "UiaTextRangeRelease");
    }
};

bool IsWine() {
    const HMODULE library = GetModuleHandleW(L"ntdll.dll");
    return GetProcAddress(library, "wine_get_version") != nullptr;
}

class AutomationClientTest : public AccessibleViewTest {
protected:
    void SetUp() override {
        ASSERT_NO_FATAL_FAILURE(AccessibleViewTest::SetUp());
        ASSERT_TRUE(client.Load());
    }
    // Runs `asking` on a client's thread while this one handles its messages.
    static void InClient(const std::function<void()>& asking) {
        auto* const run = +[](void* what) -> DWORD {
            if (FAILED(CoInitializeEx(nullptr, COINIT_MULTITHREADED))) return 1;
            (*static_cast<const std::function<void()>*>(what))();
            CoUninitialize();
            return 0;
        };
        const HANDLE thread = CreateThread(nullptr, 0, run, const_cast<std::function<void()>*>(&asking), 0, nullptr);
        ASSERT_NE(thread, nullptr);
        while (MsgWaitForMultipleObjects(1, &thread, FALSE, INFINITE, QS_ALLINPUT) != WAIT_OBJECT_0) {
            MSG message;
            while (PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE)) DispatchMessageW(&message);
        }
        DWORD result = 1;
        EXPECT_TRUE(GetExitCodeThread(thread, &result));
        EXPECT_EQ(result, 0u);
        CloseHandle(thread);
    }
    // The same with the element of the view's window.
    void InNode(const std::function<void(Node)>& asking) const {
        const HWND window = Window();
        InClient([&] {
            Node node = nullptr;
            ASSERT_EQ(client.nodeFromHandle(window, &node), S_OK);
            asking(node);
            client.releaseNode(node);
        });
    }
    VARIANT Property(Node node, PROPERTYID property) const {
        VARIANT value = {};
        EXPECT_EQ(client.getProperty(node, property, &value), S_OK) << property;
        return value;
    }
    std::u16string Read(TextRangeHandle range) const {
        BSTR text = nullptr;
        EXPECT_EQ(client.getText(range, -1, &text), S_OK);
        return Taken(text);
    }

    Client client = {};
};

TEST_F(AutomationClientTest, ReadsWhatTheElementIs) {
    Show(u"one\ntwo");
    ASSERT_TRUE((*document)->SetTitle(u"New 1"));
    FocusView();
    InNode([&](Node node) {
        const VARIANT name = Property(node, UIA_NamePropertyId);
        ASSERT_EQ(name.vt, VT_BSTR);
        EXPECT_EQ(Taken(name.bstrVal), u"New 1");
        EXPECT_EQ(Property(node, UIA_ControlTypePropertyId).lVal, Uia::DocumentControl);
        EXPECT_EQ(Property(node, UIA_HasKeyboardFocusPropertyId).boolVal, VARIANT_TRUE);
    });
}

TEST_F(AutomationClientTest, ReadsTheValue) {
    if (IsWine()) GTEST_SKIP() << "Wine's client has no properties of patterns";
    Show(u"one\ntwo three");
    Editor().MoveCaret({1, 0});
    InNode([&](Node node) {
        const VARIANT value = Property(node, UIA_ValueValuePropertyId);
        ASSERT_EQ(value.vt, VT_BSTR);
        EXPECT_EQ(Taken(value.bstrVal), u"two three");
    });
}

TEST_F(AutomationClientTest, ReadsTheText) {
    if (IsWine()) GTEST_SKIP() << "Wine's client has no text patterns";
    Show(u"one\ntwo three");
    InNode([&](Node node) {
        Pattern pattern = nullptr;
        TextRangeHandle range = nullptr;
        ASSERT_EQ(client.getPattern(node, UIA_TextPatternId, &pattern), S_OK);
        ASSERT_EQ(client.getDocument(pattern, &range), S_OK);
        EXPECT_EQ(Read(range), u"one\ntwo three");
        EXPECT_EQ(client.expand(range, TextUnit_Line), S_OK);
        EXPECT_EQ(Read(range), u"one\n");
        int moved = 0;
        EXPECT_EQ(client.move(range, TextUnit_Word, 3, &moved), S_OK);
        EXPECT_EQ(moved, 3);
        EXPECT_EQ(Read(range), u" three");
        client.releaseRange(range);
        client.releasePattern(pattern);
    });
}

} // namespace
