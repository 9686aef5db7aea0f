#pragma once

#include "viewbase/win32/ViewProvider.h"

// A view's window as older clients see it (MSAA): one object without children, with a name, a role, a state and a
// value. Parent and navigation are left to the system's object for the window. Late binding is not supported.
class ViewAccessible final : public ComObject<IAccessible, IDispatch> {
public:
    // `ofWindow` is the system's object for the window; null for none.
    ViewAccessible(ViewProvider& element, IAccessible* ofWindow) {
        provider.Share(&element);
        systemObject.Share(ofWindow);
    }

    // IDispatch.
    HRESULT STDMETHODCALLTYPE GetTypeInfoCount(UINT* out) override;
    HRESULT STDMETHODCALLTYPE GetTypeInfo(UINT, LCID, ITypeInfo** out) override;
    HRESULT STDMETHODCALLTYPE GetIDsOfNames(REFIID, LPOLESTR*, UINT, LCID, DISPID*) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE Invoke(DISPID, REFIID, LCID, WORD, DISPPARAMS*, VARIANT*, EXCEPINFO*, UINT*) override {
        return E_NOTIMPL;
    }

    // IAccessible.
    HRESULT STDMETHODCALLTYPE get_accParent(IDispatch** out) override;
    HRESULT STDMETHODCALLTYPE get_accChildCount(LONG* out) override;
    HRESULT STDMETHODCALLTYPE get_accChild(VARIANT child, IDispatch** out) override;
    HRESULT STDMETHODCALLTYPE get_accName(VARIANT child, BSTR* out) override;
    HRESULT STDMETHODCALLTYPE get_accValue(VARIANT child, BSTR* out) override;
    HRESULT STDMETHODCALLTYPE get_accDescription(VARIANT child, BSTR* out) override { return NoText(child, out); }
    HRESULT STDMETHODCALLTYPE get_accRole(VARIANT child, VARIANT* out) override;
    HRESULT STDMETHODCALLTYPE get_accState(VARIANT child, VARIANT* out) override;
    HRESULT STDMETHODCALLTYPE get_accHelp(VARIANT child, BSTR* out) override { return NoText(child, out); }
    HRESULT STDMETHODCALLTYPE get_accHelpTopic(BSTR* file, VARIANT child, LONG* out) override;
    HRESULT STDMETHODCALLTYPE get_accKeyboardShortcut(VARIANT child, BSTR* out) override { return NoText(child, out); }
    HRESULT STDMETHODCALLTYPE get_accFocus(VARIANT* out) override;
    HRESULT STDMETHODCALLTYPE get_accSelection(VARIANT* out) override;
    HRESULT STDMETHODCALLTYPE get_accDefaultAction(VARIANT child, BSTR* out) override { return NoText(child, out); }
    HRESULT STDMETHODCALLTYPE accSelect(LONG flags, VARIANT child) override;
    HRESULT STDMETHODCALLTYPE accLocation(LONG* left, LONG* top, LONG* width, LONG* height, VARIANT child) override;
    HRESULT STDMETHODCALLTYPE accNavigate(LONG direction, VARIANT start, VARIANT* out) override;
    HRESULT STDMETHODCALLTYPE accHitTest(LONG x, LONG y, VARIANT* out) override;
    HRESULT STDMETHODCALLTYPE accDoDefaultAction(VARIANT child) override;
    HRESULT STDMETHODCALLTYPE put_accName(VARIANT, BSTR) override { return DISP_E_MEMBERNOTFOUND; }
    HRESULT STDMETHODCALLTYPE put_accValue(VARIANT, BSTR) override { return DISP_E_MEMBERNOTFOUND; }

private:
    // S_OK when the view is there and `child` is the object itself.
    HRESULT Check(const VARIANT& child) const;
    // The answer to what is asked of a text that there is not.
    HRESULT NoText(const VARIANT& child, BSTR* out) const;

    ComReference<ViewProvider> provider;
    ComReference<IAccessible> systemObject;
};
