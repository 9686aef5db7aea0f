#pragma once

#include "viewbase/AccessibleChanges.h"
#include "viewbase/win32/ViewProvider.h"

// A view's side of screen readers: answers their queries and raises events. Before one has queried it, nothing is
// loaded for it and one event alone is raised: that it has come under the focus, which the system raises for windows
// only. That is how a reader learns of a view that it is to query, so those that it has not queried have nothing else
// to tell.
//
// The focused window raises all pending events together when a timer fires that the first change has started: a reader
// hears of them when the user has paused, or some thirty times a second, and not once for each of 10,000 lines.
class ScreenReader : Guard {
public:
    static constexpr UINT Delay = 30; // milliseconds

    explicit ScreenReader(AccessibleWindow& accessibleWindow) : source(accessibleWindow) {}
    ~ScreenReader() { Leave(); }

    // WM_GETOBJECT: the answer, or 0 to let the system answer, as without OLE.
    LRESULT Answer(HWND window, WPARAM wparam, LPARAM lparam);
    // The window shows the view from now on, without a change of the focus, which it had already. Told to whoever
    // listens for the focus.
    void Shown(HWND window);
    // Something may be different: the caret has moved, or something is painted again.
    void Changed(HWND window) {
        if (isAsked) StartTimer(window);
    }
    // WM_TIMER of the number below.
    static constexpr UINT_PTR TimerNumber = 2;
    void OnTimer(HWND window);
    // The window, which is still there, shows the view no more.
    void Leave();

private:
    using Automation = AccessibleLibraries::Automation;

    // Null without memory.
    ViewProvider* Provider(HWND window);
    void StartTimer(HWND window);
    LRESULT AnswerClassic(HWND window, WPARAM wparam);
    void Tell(HWND window, const AccessibleEvents& events);
    void TellAutomation(const Automation& automation, const AccessibleEvents& events);
    static void TellText(const Automation& automation, ViewProvider& told, PROPERTYID property, BSTR text);

    AccessibleWindow& source;
    bool isAsked = false; // by any client, since the view exists
    ComReference<ViewProvider> provider;
    AccessibleChanges changes;
    WindowTimer timer;
    bool timerSet = false;
};
