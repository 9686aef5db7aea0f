// What a text view's window answers to screen readers, and what it tells them.
#include "AccessibleSupport.h"
#include "document/TextBuffer.h"
#include "viewbase/win32/ScreenReader.h"

namespace {

constexpr LONG RoleDocument = 0x0F;
constexpr LONG FocusedFocusable = 0x100004;

VARIANT Child(LONG number) {
    VARIANT child = {};
    child.vt = VT_I4;
    child.lVal = number;
    return child;
}

struct WinEvent {
    DWORD event;
    HWND window;
    LONG object;
};
std::vector<WinEvent> winEvents;

BOOL isHooked; // whether somebody listens for events
BOOL WINAPI IsHooked(DWORD) { return isHooked; }

void WINAPI TakeWinEvent(DWORD event, HWND window, LONG object, LONG) { winEvents.push_back({event, window, object}); }

class ScreenReaderTest : public AccessibleViewTest {
protected:
    void SetUp() override {
        ASSERT_NO_FATAL_FAILURE(AccessibleViewTest::SetUp());
        ASSERT_TRUE(notify.IsImported() && hook.IsImported());
        winEvents.clear();
        isHooked = TRUE;
    }
    // As a client in the same process gets the older object.
    IAccessible* AskClassic() const {
        void* object = nullptr;
        const HRESULT result =
            accessibleObjectFromWindow(Window(), static_cast<DWORD>(OBJID_CLIENT), __uuidof(IAccessible), &object);
        EXPECT_EQ(result, S_OK);
        return static_cast<IAccessible*>(object);
    }
    // Handles messages until something was told; false when nothing is for a second.
    static bool WaitForEvents() {
        const uint64_t deadline = GetTickCount64() + 1000;
        while (winEvents.empty() && GetTickCount64() < deadline) {
            MSG message;
            while (PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE)) DispatchMessageW(&message);
            if (winEvents.empty()) MsgWaitForMultipleObjects(0, nullptr, FALSE, 50, QS_ALLINPUT);
        }
        return !winEvents.empty();
    }
    static std::vector<DWORD> TakeWinEvents() {
        std::vector<DWORD> taken;
        for (const WinEvent& each : winEvents) taken.push_back(each.event);
        winEvents.clear();
        return taken;
    }
    static std::vector<int> TakeEvents() {
        std::vector<int> taken;
        for (const auto& each : AutomationCalls::events) taken.push_back(each.number);
        AutomationCalls::events.clear();
        return taken;
    }

    // Whether a timer was set since the last question, as it is for something to tell.
    bool HasToTell() { return timers.Take() > 0; }

    const ReplacedImport hook{"IsWinEventHookInstalled", reinterpret_cast<void*>(IsHooked)};
    CallCounter<8, decltype(SetTimer)> timers{"SetTimer"};
    const ReplacedImport notify{"NotifyWinEvent", reinterpret_cast<void*>(TakeWinEvent)};
    const LPFNACCESSIBLEOBJECTFROMWINDOW accessibleObjectFromWindow = reinterpret_cast<LPFNACCESSIBLEOBJECTFROMWINDOW>(
        reinterpret_cast<void*>(GetProcAddress(LoadLibraryW(L"oleacc.dll"), "AccessibleObjectFromWindow")));
};

using Numbers = std::vector<int>;
using WinNumbers = std::vector<DWORD>;

constexpr DWORD NameChange = 0x800C;
constexpr DWORD ValueChange = 0x800E;
constexpr DWORD SelectionChange = 0x8014;
constexpr DWORD FocusChange = 0x8005;

TEST_F(ScreenReaderTest, TheWindowAnswersBothWays) {
    Show(u"abc");
    EXPECT_NE(SendMessageW(Window(), WM_GETOBJECT, 0, Uia::RootObject), 0);
    // With the number as a sender of 32 bits has it.
    EXPECT_NE(SendMessageW(Window(), WM_GETOBJECT, 0, static_cast<LPARAM>(static_cast<DWORD>(Uia::RootObject))), 0);
    EXPECT_NE(SendMessageW(Window(), WM_GETOBJECT, 0, static_cast<LONG>(OBJID_CLIENT)), 0);
    // The caret, the scroll bars and the rest are the system's.
    for (const LONG object : {OBJID_CARET, OBJID_VSCROLL, OBJID_WINDOW, LONG{0}, LONG{17}})
        EXPECT_EQ(SendMessageW(Window(), WM_GETOBJECT, 0, object), 0) << object;
}

bool IsInApartment() {
    APTTYPE type = {};
    APTTYPEQUALIFIER qualifier = {};
    return CoGetApartmentType(&type, &qualifier) == S_OK && (type == APTTYPE_STA || type == APTTYPE_MAINSTA);
}

decltype(&OleInitialize) enterApartment;
int entered;

HRESULT WINAPI Enter(LPVOID reserved) {
    ++entered;
    return enterApartment(reserved);
}
HRESULT WINAPI EnterNothing(LPVOID) { return RPC_E_CHANGED_MODE; }

// Calls of what is handed out come on the window's thread only when it is in an apartment of its own. Input methods may
// have entered one, which the program must not count on.
TEST_F(ScreenReaderTest, TheThreadEntersAnApartmentForTheFirstQuestion) {
    const ReplacedImport enter("OleInitialize", reinterpret_cast<void*>(Enter));
    ASSERT_TRUE(enter.IsImported());
    enterApartment = reinterpret_cast<decltype(enterApartment)>(enter.Original());
    Show(u"abc");
    for (const LONG object : {Uia::RootObject, LONG{OBJID_CLIENT}}) {
        ole.emplace();
        entered = 0;
        SendMessageW(Window(), WM_GETOBJECT, 0, LONG{OBJID_CARET});
        EXPECT_EQ(entered, 0);
        EXPECT_NE(SendMessageW(Window(), WM_GETOBJECT, 0, object), 0);
        EXPECT_EQ(entered, 1);
        EXPECT_TRUE(IsInApartment());
        EXPECT_NE(SendMessageW(Window(), WM_GETOBJECT, 0, object), 0);
        EXPECT_EQ(entered, 1);
    }
}

TEST_F(ScreenReaderTest, WithoutAnApartmentNothingIsHandedOut) {
    Show(u"abc");
    const ReplacedImport enter("OleInitialize", reinterpret_cast<void*>(EnterNothing));
    ASSERT_TRUE(enter.IsImported());
    EXPECT_EQ(Ask(), nullptr);
    EXPECT_EQ(SendMessageW(Window(), WM_GETOBJECT, 0, LONG{OBJID_CLIENT}), 0);
}

TEST_F(ScreenReaderTest, AnOlderClientSeesADocument) {
    Show(u"one\ntwo");
    ASSERT_TRUE((*document)->SetTitle(u"New 1"));
    FocusView();
    Editor().MoveCaret({1, 0});
    const ComReference<IAccessible> object(AskClassic());
    ASSERT_TRUE(object.IsValid());
    BSTR text = nullptr;
    EXPECT_EQ(object->get_accName(Child(CHILDID_SELF), &text), S_OK);
    EXPECT_EQ(Taken(text), u"New 1");
    EXPECT_EQ(object->get_accValue(Child(CHILDID_SELF), &text), S_OK);
    EXPECT_EQ(Taken(text), u"two");
    VARIANT number = {};
    EXPECT_EQ(object->get_accRole(Child(CHILDID_SELF), &number), S_OK);
    EXPECT_EQ(number.lVal, RoleDocument);
    EXPECT_EQ(object->get_accState(Child(CHILDID_SELF), &number), S_OK);
    EXPECT_EQ(number.lVal, FocusedFocusable);
    EXPECT_EQ(object->get_accFocus(&number), S_OK);
    EXPECT_EQ(number.lVal, CHILDID_SELF);
    IDispatch* parent = nullptr;
    EXPECT_EQ(object->get_accParent(&parent), S_OK);
    ASSERT_NE(parent, nullptr);
    parent->Release();
}

TEST_F(ScreenReaderTest, AnOlderClientIsToldWhereItIs) {
    Show(u"abc");
    const ComReference<IAccessible> object(AskClassic());
    RECT client = {};
    GetClientRect(Window(), &client);
    POINT corner = {};
    ClientToScreen(Window(), &corner);
    LONG left = 0, top = 0, width = 0, height = 0;
    EXPECT_EQ(object->accLocation(&left, &top, &width, &height, Child(CHILDID_SELF)), S_OK);
    EXPECT_EQ(left, corner.x);
    EXPECT_EQ(top, corner.y);
    EXPECT_EQ(width, client.right);
    EXPECT_EQ(height, client.bottom);
    VARIANT hit = {};
    EXPECT_EQ(object->accHitTest(left, top, &hit), S_OK);
    EXPECT_EQ(hit.lVal, CHILDID_SELF);
    EXPECT_EQ(object->accHitTest(left - 1, top, &hit), S_FALSE);
    EXPECT_EQ(object->accHitTest(INT_MAX, INT_MIN, &hit), S_FALSE);
    EXPECT_EQ(object->accSelect(1, Child(CHILDID_SELF)), S_OK);
    EXPECT_EQ(GetFocus(), Window());
    EXPECT_EQ(object->accSelect(2, Child(CHILDID_SELF)), E_INVALIDARG);
}

TEST_F(ScreenReaderTest, AnOlderClientFindsNothingElse) {
    Show(u"abc");
    const ComReference<IAccessible> object(AskClassic());
    LONG count = 7;
    EXPECT_EQ(object->get_accChildCount(&count), S_OK);
    EXPECT_EQ(count, 0);
    BSTR text = nullptr;
    VARIANT out = {};
    EXPECT_EQ(object->get_accName(Child(1), &text), E_INVALIDARG);
    EXPECT_EQ(object->get_accName(VARIANT(), &text), E_INVALIDARG);
    EXPECT_EQ(object->get_accRole(Child(-1), &out), E_INVALIDARG);
    EXPECT_EQ(object->get_accDescription(Child(CHILDID_SELF), &text), S_FALSE);
    EXPECT_EQ(object->get_accHelp(Child(CHILDID_SELF), &text), S_FALSE);
    EXPECT_EQ(object->get_accKeyboardShortcut(Child(CHILDID_SELF), &text), S_FALSE);
    EXPECT_EQ(object->get_accDefaultAction(Child(CHILDID_SELF), &text), S_FALSE);
    EXPECT_EQ(object->get_accHelpTopic(&text, Child(CHILDID_SELF), &count), S_FALSE);
    EXPECT_EQ(object->get_accSelection(&out), S_FALSE);
    EXPECT_EQ(object->accDoDefaultAction(Child(CHILDID_SELF)), DISP_E_MEMBERNOTFOUND);
    EXPECT_EQ(object->put_accName(Child(CHILDID_SELF), nullptr), DISP_E_MEMBERNOTFOUND);
    EXPECT_EQ(object->put_accValue(Child(CHILDID_SELF), nullptr), DISP_E_MEMBERNOTFOUND);
    IDispatch* child = nullptr;
    EXPECT_EQ(object->get_accChild(Child(CHILDID_SELF), &child), S_FALSE);
    UINT types = 7;
    EXPECT_EQ(object->GetTypeInfoCount(&types), S_OK);
    EXPECT_EQ(types, 0u);
    object->accNavigate(5, Child(CHILDID_SELF), &out); // which is the system's answer
    EXPECT_EQ(object->get_accName(Child(CHILDID_SELF), nullptr), E_INVALIDARG);
    EXPECT_EQ(object->accHitTest(0, 0, nullptr), E_INVALIDARG);
}

TEST_F(ScreenReaderTest, AnOlderClientMayKeepTheObjectOfAClosedView) {
    Show(u"abc");
    const ComReference<IAccessible> object(AskClassic());
    document.reset();
    BSTR text = nullptr;
    VARIANT out = {};
    LONG number = 0;
    IDispatch* dispatch = nullptr;
    EXPECT_EQ(object->get_accName(Child(CHILDID_SELF), &text), CO_E_OBJNOTCONNECTED);
    EXPECT_EQ(object->get_accValue(Child(CHILDID_SELF), &text), CO_E_OBJNOTCONNECTED);
    EXPECT_EQ(object->get_accHelp(Child(CHILDID_SELF), &text), CO_E_OBJNOTCONNECTED);
    EXPECT_EQ(object->get_accRole(Child(CHILDID_SELF), &out), CO_E_OBJNOTCONNECTED);
    EXPECT_EQ(object->get_accState(Child(CHILDID_SELF), &out), CO_E_OBJNOTCONNECTED);
    EXPECT_EQ(object->get_accFocus(&out), CO_E_OBJNOTCONNECTED);
    EXPECT_EQ(object->get_accSelection(&out), CO_E_OBJNOTCONNECTED);
    EXPECT_EQ(object->get_accParent(&dispatch), CO_E_OBJNOTCONNECTED);
    EXPECT_EQ(object->get_accChildCount(&number), CO_E_OBJNOTCONNECTED);
    EXPECT_EQ(object->get_accChild(Child(CHILDID_SELF), &dispatch), CO_E_OBJNOTCONNECTED);
    EXPECT_EQ(object->accLocation(&number, &number, &number, &number, Child(CHILDID_SELF)), CO_E_OBJNOTCONNECTED);
    EXPECT_EQ(object->accHitTest(0, 0, &out), CO_E_OBJNOTCONNECTED);
    EXPECT_EQ(object->accNavigate(5, Child(CHILDID_SELF), &out), CO_E_OBJNOTCONNECTED);
    EXPECT_EQ(object->accSelect(1, Child(CHILDID_SELF)), CO_E_OBJNOTCONNECTED);
    EXPECT_EQ(object->accDoDefaultAction(Child(CHILDID_SELF)), CO_E_OBJNOTCONNECTED);
    EXPECT_EQ(text, nullptr);
    EXPECT_EQ(dispatch, nullptr);
}

TEST_F(ScreenReaderTest, ManyChangesAreToldAtOnce) {
    Show(u"");
    FocusView();
    const ComReference<IRawElementProviderSimple> element(Ask());
    for (const Char c : std::u16string(u"one\rtwo")) SendMessageW(Window(), WM_CHAR, c, 1);
    EXPECT_TRUE(TakeEvents().empty());
    ASSERT_TRUE(WaitForEvents());
    EXPECT_EQ(TakeWinEvents(), (WinNumbers{ValueChange, SelectionChange}));
    ASSERT_FALSE(AutomationCalls::events.empty());
    EXPECT_EQ(AutomationCalls::events.back().value, u"two");
    EXPECT_EQ(AutomationCalls::events.back().provider, element.Get());
    EXPECT_EQ(TakeEvents(), (Numbers{Uia::TextChanged, Uia::SelectionChanged, UIA_ValueValuePropertyId}));
    // Painting again is no change.
    view->Invalidate();
    SendMessageW(Window(), WM_TIMER, ScreenReader::TimerNumber, 0);
    EXPECT_TRUE(TakeEvents().empty());
    EXPECT_TRUE(TakeWinEvents().empty());
}

TEST_F(ScreenReaderTest, AMoveOfTheCaretIsToldAlone) {
    Show(u"one\ntwo");
    FocusView();
    const ComReference<IRawElementProviderSimple> element(Ask());
    Editor().MoveCaret({0, 2});
    ASSERT_TRUE(WaitForEvents());
    EXPECT_EQ(TakeWinEvents(), (WinNumbers{SelectionChange}));
    EXPECT_EQ(TakeEvents(), (Numbers{Uia::SelectionChanged}));
    AutomationCalls::isListening = false;
    Editor().MoveCaret({1, 0});
    ASSERT_TRUE(WaitForEvents());
    EXPECT_EQ(TakeWinEvents(), (WinNumbers{ValueChange, SelectionChange}));
    EXPECT_TRUE(TakeEvents().empty());
}

TEST_F(ScreenReaderTest, AnotherNameIsTold) {
    Show(u"one");
    FocusView();
    const ComReference<IRawElementProviderSimple> element(Ask());
    ASSERT_TRUE((*document)->SetTitle(u"other"));
    Editor().UpdateCaret(false);
    ASSERT_TRUE(WaitForEvents());
    EXPECT_EQ(TakeWinEvents(), (WinNumbers{NameChange}));
    ASSERT_EQ(AutomationCalls::events.size(), 1u);
    EXPECT_EQ(AutomationCalls::events[0].value, u"other");
    EXPECT_EQ(TakeEvents(), (Numbers{UIA_NamePropertyId}));
}

TEST_F(ScreenReaderTest, AViewWithoutTheFocusTellsNothing) {
    Show(u"one\ntwo");
    FocusView();
    const ComReference<IRawElementProviderSimple> element(Ask());
    SetFocus(frame);
    EXPECT_TRUE((*document)->InsertText(0, u"1", 1));
    SendMessageW(Window(), WM_TIMER, ScreenReader::TimerNumber, 0);
    // Nor later: what is there is read when the focus comes.
    FocusView();
    SendMessageW(Window(), WM_TIMER, ScreenReader::TimerNumber, 0);
    EXPECT_TRUE(TakeWinEvents().empty());
    EXPECT_TRUE(TakeEvents().empty());
}

TEST_F(ScreenReaderTest, AnotherViewInTheSameWindowIsToldAsAFocus) {
    Show(u"first");
    TextDocument other(u"second");
    auto* second = static_cast<TextView*>(other->CreateView(nullptr)->AsView());
    second->SetHost(&viewHost);
    FocusView();
    const HWND window = Window();
    const ComReference<IRawElementProviderSimple> element(Ask());
    view->Detach();
    EXPECT_EQ(AutomationCalls::disconnected.size(), 1u);
    VARIANT name = {};
    EXPECT_EQ(element->GetPropertyValue(UIA_NamePropertyId, &name), Uia::NotAvailable);
    second->Attach(window);
    ASSERT_TRUE(WaitForEvents());
    ASSERT_GE(winEvents.size(), 2u);
    EXPECT_EQ(winEvents[0].window, window);
    EXPECT_EQ(winEvents[0].object, static_cast<LONG>(OBJID_CLIENT));
    EXPECT_EQ(TakeWinEvents(), (WinNumbers{FocusChange, SelectionChange}));
    EXPECT_EQ(TakeEvents(), (Numbers{Uia::FocusChanged, Uia::SelectionChanged}));
    // The client has the new element with that, and may ask the window nothing.
    SendMessageW(window, WM_CHAR, 'x', 1);
    ASSERT_TRUE(WaitForEvents());
    EXPECT_EQ(TakeWinEvents(), (WinNumbers{ValueChange, SelectionChange}));
    EXPECT_EQ(TakeEvents(), (Numbers{Uia::TextChanged, Uia::SelectionChanged, UIA_ValueValuePropertyId}));
    second->Detach();
}

// The focus has led every client to a window of its own, and one that wants more to know of it asks it.
TEST_F(ScreenReaderTest, AWindowThatNobodyHasAskedTellsNothing) {
    Show(u"first");
    const ComReference<IRawElementProviderSimple> first(Ask());
    TextDocument other(u"");
    auto* second = static_cast<TextView*>(other->CreateView(frame)->AsView());
    second->SetHost(&viewHost);
    const HWND window = second->GetWindow();
    SetForegroundWindow(frame);
    SetFocus(window);
    ASSERT_EQ(GetFocus(), window);
    HasToTell();
    SendMessageW(window, WM_CHAR, 'x', 1);
    EXPECT_FALSE(HasToTell());
    EXPECT_NE(SendMessageW(window, WM_GETOBJECT, 0, Uia::RootObject), 0);
    SendMessageW(window, WM_CHAR, 'y', 1);
    EXPECT_TRUE(HasToTell());
    ASSERT_TRUE(WaitForEvents());
    EXPECT_EQ(winEvents[0].window, window);
    EXPECT_EQ(TakeWinEvents(), (WinNumbers{ValueChange, SelectionChange}));
    EXPECT_EQ(TakeEvents(), (Numbers{Uia::TextChanged, Uia::SelectionChanged, UIA_ValueValuePropertyId}));
}

// The system tells nobody of a view that comes into a window with the focus: only its reader can, and it was not asked.
TEST_F(ScreenReaderTest, AViewThatNobodyHasAskedTellsThatItIsShown) {
    AutomationCalls::isListening = false;
    Show(u"first");
    TextDocument other(u"second");
    auto* second = static_cast<TextView*>(other->CreateView(nullptr)->AsView());
    second->SetHost(&viewHost);
    FocusView();
    const HWND window = Window();
    view->Detach();
    HasToTell();
    isHooked = FALSE;
    second->Attach(window);
    EXPECT_FALSE(HasToTell()) << "nobody listens";
    second->Detach();
    isHooked = TRUE;
    second->Attach(window);
    EXPECT_TRUE(HasToTell());
    ASSERT_TRUE(WaitForEvents());
    EXPECT_EQ(TakeWinEvents(), (WinNumbers{FocusChange, SelectionChange}));
    EXPECT_TRUE(TakeEvents().empty());
    SendMessageW(window, WM_CHAR, 'x', 1);
    EXPECT_FALSE(HasToTell());
    second->Detach();
}

// Loaded by nobody who has not been asked for it, and never from where the program lies.
TEST_F(ScreenReaderTest, TheLibrariesAreNotImported) {
    EXPECT_EQ(ImportSlot("UiaReturnRawElementProvider"), nullptr);
    EXPECT_EQ(ImportSlot("LresultFromObject"), nullptr);
}

} // namespace
