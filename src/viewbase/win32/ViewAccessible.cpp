#include "viewbase/win32/ViewAccessible.h"

namespace {

// From the older library's documentation; the compiler's headers have some of these.
constexpr LONG RoleDocument = 0x0F;
constexpr LONG RoleText = 0x2A;
constexpr LONG StateFocused = 0x4;
constexpr LONG StateReadOnly = 0x40;
constexpr LONG StateFocusable = 0x100000;

HRESULT SetNumber(VARIANT& out, LONG number) {
    out.vt = VT_I4;
    out.lVal = number;
    return S_OK;
}

} // namespace

HRESULT ViewAccessible::Check(const VARIANT& child) const {
    if (provider->IsCut()) return CO_E_OBJNOTCONNECTED;
    return child.vt == VT_I4 && child.lVal == CHILDID_SELF ? S_OK : E_INVALIDARG;
}

HRESULT ViewAccessible::NoText(const VARIANT& child, BSTR* out) const {
    if (!out) return E_INVALIDARG;
    *out = nullptr;
    const HRESULT result = Check(child);
    return result == S_OK ? S_FALSE : result;
}

HRESULT ViewAccessible::GetTypeInfoCount(UINT* out) {
    if (!out) return E_INVALIDARG;
    *out = 0;
    return S_OK;
}

HRESULT ViewAccessible::GetTypeInfo(UINT, LCID, ITypeInfo** out) {
    if (out) *out = nullptr;
    return E_NOTIMPL;
}

HRESULT ViewAccessible::get_accParent(IDispatch** out) {
    if (!out) return E_INVALIDARG;
    *out = nullptr;
    if (provider->IsCut()) return CO_E_OBJNOTCONNECTED;
    return systemObject.IsValid() ? systemObject->get_accParent(out) : S_FALSE;
}

HRESULT ViewAccessible::get_accChildCount(LONG* out) {
    if (!out) return E_INVALIDARG;
    *out = 0;
    return provider->IsCut() ? CO_E_OBJNOTCONNECTED : S_OK;
}

HRESULT ViewAccessible::get_accChild(VARIANT child, IDispatch** out) {
    if (!out) return E_INVALIDARG;
    *out = nullptr;
    const HRESULT result = Check(child);
    return result == S_OK ? S_FALSE : result;
}

HRESULT ViewAccessible::get_accName(VARIANT child, BSTR* out) {
    const HRESULT result = NoText(child, out);
    return result == S_FALSE ? AccessibleTexts::GetName(*provider.Get(), *out) : result;
}

HRESULT ViewAccessible::get_accValue(VARIANT child, BSTR* out) {
    const HRESULT result = NoText(child, out);
    return result == S_FALSE ? AccessibleTexts::GetValue(*provider.Get(), *out) : result;
}

HRESULT ViewAccessible::get_accRole(VARIANT child, VARIANT* out) {
    if (!out) return E_INVALIDARG;
    *out = VARIANT();
    const HRESULT result = Check(child);
    return result == S_OK ? SetNumber(*out, provider->Element().HasText() ? RoleDocument : RoleText) : result;
}

HRESULT ViewAccessible::get_accState(VARIANT child, VARIANT* out) {
    if (!out) return E_INVALIDARG;
    *out = VARIANT();
    const HRESULT result = Check(child);
    if (result != S_OK) return result;
    return SetNumber(*out, StateFocusable | (provider->HasFocus() ? StateFocused : 0) |
                               (provider->Element().IsReadOnly() ? StateReadOnly : 0));
}

HRESULT ViewAccessible::get_accHelpTopic(BSTR* file, VARIANT child, LONG* out) {
    if (out) *out = 0;
    return NoText(child, file);
}

HRESULT ViewAccessible::get_accFocus(VARIANT* out) {
    if (!out) return E_INVALIDARG;
    *out = VARIANT();
    if (provider->IsCut()) return CO_E_OBJNOTCONNECTED;
    return provider->HasFocus() ? SetNumber(*out, CHILDID_SELF) : S_FALSE;
}

// It has no children that could be selected.
HRESULT ViewAccessible::get_accSelection(VARIANT* out) {
    if (!out) return E_INVALIDARG;
    *out = VARIANT();
    return provider->IsCut() ? CO_E_OBJNOTCONNECTED : S_FALSE;
}

HRESULT ViewAccessible::accSelect(LONG flags, VARIANT child) {
    constexpr LONG TakeFocus = 1;
    const HRESULT result = Check(child);
    if (result != S_OK) return result;
    if (flags != TakeFocus) return E_INVALIDARG;
    SetFocus(provider->Window());
    return S_OK;
}

HRESULT ViewAccessible::accLocation(LONG* left, LONG* top, LONG* width, LONG* height, VARIANT child) {
    if (!left || !top || !width || !height) return E_INVALIDARG;
    *left = *top = *width = *height = 0;
    const HRESULT result = Check(child);
    if (result != S_OK) return result;
    RECT client = {};
    GetClientRect(provider->Window(), &client);
    POINT corner = {};
    ClientToScreen(provider->Window(), &corner);
    *left = corner.x;
    *top = corner.y;
    *width = client.right;
    *height = client.bottom;
    return S_OK;
}

HRESULT ViewAccessible::accNavigate(LONG direction, VARIANT start, VARIANT* out) {
    if (!out) return E_INVALIDARG;
    *out = VARIANT();
    const HRESULT result = Check(start);
    if (result != S_OK) return result;
    return systemObject.IsValid() ? systemObject->accNavigate(direction, start, out) : S_FALSE;
}

HRESULT ViewAccessible::accHitTest(LONG x, LONG y, VARIANT* out) {
    if (!out) return E_INVALIDARG;
    *out = VARIANT();
    if (provider->IsCut()) return CO_E_OBJNOTCONNECTED;
    RECT client = {};
    GetClientRect(provider->Window(), &client);
    POINT point = {x, y};
    ScreenToClient(provider->Window(), &point);
    return PtInRect(&client, point) ? SetNumber(*out, CHILDID_SELF) : S_FALSE;
}

HRESULT ViewAccessible::accDoDefaultAction(VARIANT child) {
    const HRESULT result = Check(child);
    return result == S_OK ? DISP_E_MEMBERNOTFOUND : result;
}
