#pragma once

#include "viewbase/AccessibleElement.h"
#include "viewbase/win32/AccessibleInterfaces.h"
#include "viewbase/win32/AccessibleLibraries.h"
#include "viewbase/win32/ComObject.h"

class ViewProvider;

// A window that can tell screen readers what it shows.
class AccessibleWindow {
public:
    virtual AccessibleElement& Accessible() = 0;
    // The text pattern of what is shown, with a reference for the caller. Null without memory, and when nothing is read
    // as a text.
    virtual IUnknown* MakeTextPattern(ViewProvider& provider) = 0;
    // Before the first object is made (ViewHost::UseOle).
    virtual bool UseOle() = 0;

protected:
    ~AccessibleWindow() = default;
};

// What UI Automation sees of a view's window: an element with a name, a value and perhaps a text. It is also
// the link that all other objects for clients hold to the view. A client may keep them longer than there is a window:
// the view cuts the link (Cut), and whatever is called from then on answers that the element is not available.
//
// Every call comes on the thread of the window, here and in all objects obtained from it. The element asks for it
// (ProviderOptions_UseComThreading), and the thread is a single-threaded apartment: ScreenReader enters it
// (AccessibleWindow::UseOle) before it makes the first object. Nothing is locked.
class ViewProvider final : public ComObject<IRawElementProviderSimple> {
public:
    ViewProvider(HWND shown, AccessibleWindow& accessibleWindow) : window(shown), source(&accessibleWindow) {}

    // The window is gone, or shows another view.
    void Cut() { source = nullptr; }
    bool IsCut() const { return source == nullptr; }
    // Of all objects that are had from here.
    AccessibleLibraries& Libraries() { return libraries; }
    // The rest is for as long as the link is not cut.
    HWND Window() const { return window; }
    AccessibleElement& Element() const { return source->Accessible(); }
    bool HasFocus() const { return GetFocus() == window; }

    // IRawElementProviderSimple.
    HRESULT STDMETHODCALLTYPE get_ProviderOptions(ProviderOptions* out) override;
    HRESULT STDMETHODCALLTYPE GetPatternProvider(PATTERNID pattern, IUnknown** out) override;
    HRESULT STDMETHODCALLTYPE GetPropertyValue(PROPERTYID property, VARIANT* out) override;
    HRESULT STDMETHODCALLTYPE get_HostRawElementProvider(IRawElementProviderSimple** out) override;

private:
    HWND window;
    AccessibleWindow* source;
    AccessibleLibraries libraries;
};

// The name and the value of an element, which is not cut, as strings for a client: E_OUTOFMEMORY without memory.
namespace AccessibleTexts {
HRESULT GetName(ViewProvider& provider, BSTR& out);
HRESULT GetValue(ViewProvider& provider, BSTR& out);
} // namespace AccessibleTexts
