#include "viewbase/win32/ScreenReader.h"

#include "viewbase/win32/ViewAccessible.h"

namespace {

constexpr DWORD TextSelectionChanged = 0x8014; // EVENT_OBJECT_TEXTSELECTIONCHANGED

} // namespace

ViewProvider* ScreenReader::Provider(HWND window) {
    if (!provider.IsValid()) provider.Reset(new ViewProvider(window, source));
    return provider.Get();
}

LRESULT ScreenReader::Answer(HWND window, WPARAM wparam, LPARAM lparam) {
    // The number is a signed one of 32 bits, which not every sender extends.
    const auto object = static_cast<LONG>(lparam);
    if (object != Uia::RootObject && object != static_cast<LONG>(OBJID_CLIENT)) return 0;
    // Before the first object is made: without an apartment on this thread, clients would call it on their own threads.
    if (!source.UseOle()) return 0;
    isAsked = true;
    if (!provider.IsValid()) changes.Skip(source.Accessible().State()); // it reads that by itself
    if (!Provider(window)) return 0;
    if (object == static_cast<LONG>(OBJID_CLIENT)) return AnswerClassic(window, wparam);
    const auto* automation = provider->Libraries().GetAutomation();
    return automation ? automation->returnProvider(window, wparam, object, provider.Get()) : 0;
}

LRESULT ScreenReader::AnswerClassic(HWND window, WPARAM wparam) {
    const auto* classic = provider->Libraries().GetClassic();
    if (!classic) return 0;
    void* standard = nullptr;
    if (FAILED(classic->standardObject(window, OBJID_CLIENT, __uuidof(IAccessible), &standard))) standard = nullptr;
    const ComReference<IAccessible> systemObject(static_cast<IAccessible*>(standard));
    const ComReference<IAccessible> object(new ViewAccessible(*provider.Get(), systemObject.Get()));
    return object.IsValid() ? classic->resultFromObject(__uuidof(IAccessible), wparam, object.Get()) : 0;
}

void ScreenReader::Shown(HWND window) {
    if (!isAsked && !IsWinEventHookInstalled(EVENT_OBJECT_FOCUS)) return;
    changes.DocumentShown();
    StartTimer(window);
}

void ScreenReader::StartTimer(HWND window) {
    if (!timerSet) timerSet = timer.Set(window, TimerNumber, Delay);
}

void ScreenReader::OnTimer(HWND window) {
    timer.Stop();
    timerSet = false;
    const AccessibleState now = source.Accessible().State();
    if (GetFocus() != window) return changes.Skip(now);
    Tell(window, changes.Take(now));
}

void ScreenReader::Tell(HWND window, const AccessibleEvents& events) {
    if (events.focus) NotifyWinEvent(EVENT_OBJECT_FOCUS, window, OBJID_CLIENT, CHILDID_SELF);
    if (events.name) NotifyWinEvent(EVENT_OBJECT_NAMECHANGE, window, OBJID_CLIENT, CHILDID_SELF);
    if (events.value) NotifyWinEvent(EVENT_OBJECT_VALUECHANGE, window, OBJID_CLIENT, CHILDID_SELF);
    if (events.selection) NotifyWinEvent(TextSelectionChanged, window, OBJID_CLIENT, CHILDID_SELF);
    // The library may have been loaded for another view's window.
    if (!AccessibleLibraries::IsAutomationLoaded() || !Provider(window)) return;
    const auto* automation = provider->Libraries().GetAutomation();
    if (automation && automation->areClientsListening()) TellAutomation(*automation, events);
}

// The value last: a client may read what the events before it have announced.
void ScreenReader::TellAutomation(const Automation& automation, const AccessibleEvents& events) {
    isAsked = true; // clients get the element with the event
    // A client that is told may have the window closed before the next event.
    ComReference<ViewProvider> told;
    told.Share(provider.Get());
    const bool hasText = told->Element().HasText();
    if (events.focus) automation.raiseEvent(told.Get(), Uia::FocusChanged);
    if (events.text && hasText) automation.raiseEvent(told.Get(), Uia::TextChanged);
    if (events.selection && hasText) automation.raiseEvent(told.Get(), Uia::SelectionChanged);
    BSTR text = nullptr;
    if (events.name && !told->IsCut() && AccessibleTexts::GetName(*told.Get(), text) == S_OK)
        TellText(automation, *told.Get(), UIA_NamePropertyId, text);
    if (events.value && !told->IsCut() && AccessibleTexts::GetValue(*told.Get(), text) == S_OK)
        TellText(automation, *told.Get(), UIA_ValueValuePropertyId, text);
}

// Takes the text over.
void ScreenReader::TellText(const Automation& automation, ViewProvider& told, PROPERTYID property, BSTR text) {
    const VARIANT before = {};
    VARIANT now = {};
    now.vt = VT_BSTR;
    now.bstrVal = text;
    automation.raisePropertyChange(&told, property, before, now);
    told.Libraries().FreeText(text);
}

void ScreenReader::Leave() {
    timer.Stop();
    timerSet = false;
    if (!provider.IsValid()) return;
    provider->Cut();
    if (const auto* automation = provider->Libraries().FoundAutomation()) {
        // Both let go of what clients still hold: of the window's and of the element's.
        automation->returnProvider(provider->Window(), 0, 0, nullptr);
        automation->disconnect(provider.Get());
    }
    provider.Reset();
}
