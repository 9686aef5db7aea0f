#include "viewbase/win32/ViewProvider.h"

#include "base/Text.h"

namespace {

// The value is what is spoken of a view, not what it holds: it is edited by typing only.
class ValuePattern final : public ComObject<IValueProvider> {
public:
    explicit ValuePattern(ViewProvider& element) { provider.Share(&element); }

    HRESULT STDMETHODCALLTYPE SetValue(LPCWSTR) override {
        return provider->IsCut() ? Uia::NotAvailable : Uia::InvalidOperation;
    }
    HRESULT STDMETHODCALLTYPE get_Value(BSTR* out) override {
        if (!out) return E_INVALIDARG;
        *out = nullptr;
        return provider->IsCut() ? Uia::NotAvailable : AccessibleTexts::GetValue(*provider.Get(), *out);
    }
    HRESULT STDMETHODCALLTYPE get_IsReadOnly(BOOL* out) override {
        if (!out) return E_INVALIDARG;
        *out = TRUE;
        if (provider->IsCut()) return Uia::NotAvailable;
        *out = provider->Element().IsReadOnly();
        return S_OK;
    }

private:
    ComReference<ViewProvider> provider;
};

void SetFlag(VARIANT& out, bool value) {
    out.vt = VT_BOOL;
    out.boolVal = value ? VARIANT_TRUE : VARIANT_FALSE;
}

HRESULT FinishText(BSTR made, BSTR& out) {
    out = made;
    return made ? S_OK : E_OUTOFMEMORY;
}

} // namespace

HRESULT AccessibleTexts::GetName(ViewProvider& provider, BSTR& out) {
    const Char* name = provider.Element().Name();
    return FinishText(provider.Libraries().MakeText(name, Text::Length(name)), out);
}

HRESULT AccessibleTexts::GetValue(ViewProvider& provider, BSTR& out) {
    WString value;
    if (!provider.Element().AppendValue(value)) return E_OUTOFMEMORY;
    return FinishText(provider.Libraries().MakeText(value), out);
}

HRESULT ViewProvider::get_ProviderOptions(ProviderOptions* out) {
    if (!out) return E_INVALIDARG;
    *out = static_cast<ProviderOptions>(ProviderOptions_ServerSideProvider | ProviderOptions_UseComThreading);
    return S_OK;
}

HRESULT ViewProvider::GetPatternProvider(PATTERNID pattern, IUnknown** out) {
    if (!out) return E_INVALIDARG;
    *out = nullptr;
    if (IsCut()) return Uia::NotAvailable;
    const bool isText = pattern == UIA_TextPatternId || pattern == UIA_TextPattern2Id;
    if (!(isText && Element().HasText()) && pattern != UIA_ValuePatternId) return S_OK; // it has no such pattern
    *out = isText ? source->MakeTextPattern(*this) : new ValuePattern(*this);
    return *out ? S_OK : E_OUTOFMEMORY;
}

HRESULT ViewProvider::GetPropertyValue(PROPERTYID property, VARIANT* out) {
    if (!out) return E_INVALIDARG;
    *out = VARIANT(); // empty: the window's own
    if (IsCut()) return Uia::NotAvailable;
    switch (property) {
    case UIA_ControlTypePropertyId:
        out->vt = VT_I4;
        out->lVal = Element().HasText() ? Uia::DocumentControl : Uia::EditControl;
        break;
    case UIA_NamePropertyId: {
        const HRESULT result = AccessibleTexts::GetName(*this, out->bstrVal);
        if (result == S_OK) out->vt = VT_BSTR;
        return result;
    }
    case UIA_HasKeyboardFocusPropertyId:
        SetFlag(*out, HasFocus());
        break;
    case UIA_IsKeyboardFocusablePropertyId:
    case UIA_IsControlElementPropertyId:
    case UIA_IsContentElementPropertyId:
        SetFlag(*out, true);
        break;
    default:
        break;
    }
    return S_OK;
}

HRESULT ViewProvider::get_HostRawElementProvider(IRawElementProviderSimple** out) {
    if (!out) return E_INVALIDARG;
    *out = nullptr;
    if (IsCut()) return Uia::NotAvailable;
    const auto* automation = libraries.GetAutomation();
    return automation ? automation->hostProvider(window, out) : E_FAIL;
}
