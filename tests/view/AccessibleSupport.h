#pragma once

#include "CallCounter.h"
#include "TextViewTest.h"
#include "base/win32/Ole.h"
#include "support/FakeSurface.h"
#include "viewbase/win32/AccessibleLibraries.h"

#include <optional>
#include <utility>

// What the automation library is called with while one of these lives.
class AutomationCalls {
public:
    struct Event {
        IRawElementProviderSimple* provider;
        int number; // of the event, or of the property
        std::u16string value;
    };

    AutomationCalls() {
        real = reinterpret_cast<decltype(real)>(find.Original());
        events.clear();
        disconnected.clear();
        isListening = true;
    }
    // Whether they will be seen: the libraries are there and have what it takes.
    bool AreRecorded() const {
        AccessibleLibraries libraries;
        return find.IsImported() && libraries.GetAutomation() && libraries.GetClassic() && returnProvider && disconnect;
    }

    static inline IRawElementProviderSimple* returned = nullptr; // to the last WM_GETOBJECT; not counted
    static inline std::vector<IRawElementProviderSimple*> disconnected;
    static inline std::vector<Event> events;
    static inline bool isListening = true;

private:
    static FARPROC WINAPI Find(HMODULE library, const char* name) {
        const FARPROC found = real(library, name);
        const std::string wanted = name;
        const auto replace = [&](auto& original, auto* replacement) {
            original = reinterpret_cast<std::remove_reference_t<decltype(original)>>(reinterpret_cast<void*>(found));
            return reinterpret_cast<FARPROC>(reinterpret_cast<void*>(replacement));
        };
        if (wanted == "UiaReturnRawElementProvider") return replace(returnProvider, Return);
        if (wanted == "UiaDisconnectProvider") return replace(disconnect, Disconnect);
        if (wanted == "UiaRaiseAutomationEvent") return replace(raiseEvent, Raise);
        if (wanted == "UiaRaiseAutomationPropertyChangedEvent") return replace(raiseChange, RaiseChange);
        if (wanted == "UiaClientsAreListening") return replace(listening, IsListening);
        return found;
    }
    static LRESULT WINAPI Return(HWND window, WPARAM wparam, LPARAM lparam, IRawElementProviderSimple* provider) {
        returned = provider;
        return returnProvider(window, wparam, lparam, provider);
    }
    static HRESULT WINAPI Disconnect(IRawElementProviderSimple* provider) {
        disconnected.push_back(provider);
        return disconnect(provider);
    }
    static HRESULT WINAPI Raise(IRawElementProviderSimple* provider, EVENTID event) {
        events.push_back({provider, event, u""});
        return raiseEvent(provider, event);
    }
    static HRESULT WINAPI RaiseChange(IRawElementProviderSimple* provider, PROPERTYID property, VARIANT before,
                                      VARIANT after) {
        events.push_back({provider, property, FromWide(after.bstrVal)});
        return raiseChange(provider, property, before, after);
    }
    static BOOL WINAPI IsListening() { return isListening; }

    static inline FARPROC(WINAPI* real)(HMODULE, const char*) = nullptr;
    static inline decltype(AccessibleLibraries::Automation::returnProvider) returnProvider = nullptr;
    static inline decltype(AccessibleLibraries::Automation::disconnect) disconnect = nullptr;
    static inline decltype(AccessibleLibraries::Automation::raiseEvent) raiseEvent = nullptr;
    static inline decltype(AccessibleLibraries::Automation::raisePropertyChange) raiseChange = nullptr;
    static inline decltype(AccessibleLibraries::Automation::areClientsListening) listening = nullptr;

    const ReplacedImport find{"GetProcAddress", reinterpret_cast<void*>(Find)};
};

inline void FreeText(BSTR text) { SysFreeString(text); }
// One of the test's own.
using HeldText = Held<BSTR, FreeText>;

// A text that a client was given, freed.
inline std::u16string Taken(BSTR text) {
    std::u16string out(text ? FromWide(text) : u"<none>", text ? SysStringLen(text) : 6);
    SysFreeString(text);
    return out;
}

// A text view that screen readers ask. The thread is in no apartment until they do.
class AccessibleViewTest : public TextViewTest {
protected:
    void SetUp() override {
        ASSERT_TRUE(automationCalls.AreRecorded());
        viewHost.useOle = [this] { return ole->Use(); };
        ASSERT_NO_FATAL_FAILURE(TextViewTest::SetUp());
    }
    // The view's frame is one that has OLE.
    void Show(const std::u16string& text) {
        ASSERT_NO_FATAL_FAILURE(TextViewTest::Show(text));
        view->SetHost(&viewHost);
    }
    // The element that the window answers with, counted for the caller.
    IRawElementProviderSimple* Ask() const {
        AutomationCalls::returned = nullptr;
        SendMessageW(Window(), WM_GETOBJECT, 0, Uia::RootObject);
        if (AutomationCalls::returned) AutomationCalls::returned->AddRef();
        return AutomationCalls::returned;
    }
    // Null when the element has no such pattern.
    template <class Pattern> static Pattern* PatternOf(IRawElementProviderSimple* element, PATTERNID number) {
        IUnknown* made = nullptr;
        EXPECT_EQ(element->GetPatternProvider(number, &made), S_OK);
        void* pattern = nullptr;
        if (!made) return nullptr;
        EXPECT_EQ(made->QueryInterface(__uuidof(Pattern), &pattern), S_OK);
        made->Release();
        return static_cast<Pattern*>(pattern);
    }

    const AutomationCalls automationCalls;
    std::optional<Ole> ole{std::in_place};
    FakeHost viewHost;
};
