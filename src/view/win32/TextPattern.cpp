#include "view/win32/TextPattern.h"

#include "view/win32/TextRangeProvider.h"

#include <algorithm>

namespace {

// A point may lie anywhere, and not be a number.
LONG ToPixel(double coordinate) {
    constexpr double Farthest = 1 << 24;
    return coordinate >= -Farthest && coordinate <= Farthest ? static_cast<LONG>(coordinate) : 0;
}

} // namespace

HRESULT TextPattern::Return(TextRange range, ITextRangeProvider** out) const {
    *out = new TextRangeProvider(*provider.Get(), text, AccessibleRange(range));
    return *out ? S_OK : E_OUTOFMEMORY;
}

HRESULT TextPattern::ReturnArray(TextRange range, SAFEARRAY** out) const {
    ComReference<ITextRangeProvider> only(new TextRangeProvider(*provider.Get(), text, AccessibleRange(range)));
    void* items = nullptr;
    if (only.IsValid()) *out = provider->Libraries().MakeArray(VT_UNKNOWN, 1, items);
    if (!*out) return E_OUTOFMEMORY;
    only->AddRef();
    *static_cast<IUnknown**>(items) = only.Get();
    return S_OK;
}

HRESULT TextPattern::GetSelection(SAFEARRAY** out) {
    if (!out) return E_INVALIDARG;
    *out = nullptr;
    return provider->IsCut() ? Uia::NotAvailable : ReturnArray(text.Selection(), out);
}

HRESULT TextPattern::GetVisibleRanges(SAFEARRAY** out) {
    if (!out) return E_INVALIDARG;
    *out = nullptr;
    return provider->IsCut() ? Uia::NotAvailable : ReturnArray(text.Seen(), out);
}

// There are no elements in the text.
HRESULT TextPattern::RangeFromChild(IRawElementProviderSimple*, ITextRangeProvider** out) {
    if (!out) return E_INVALIDARG;
    *out = nullptr;
    return provider->IsCut() ? Uia::NotAvailable : E_INVALIDARG;
}

HRESULT TextPattern::RangeFromAnnotation(IRawElementProviderSimple* annotation, ITextRangeProvider** out) {
    return RangeFromChild(annotation, out);
}

HRESULT TextPattern::RangeFromPoint(UiaPoint point, ITextRangeProvider** out) {
    if (!out) return E_INVALIDARG;
    *out = nullptr;
    if (provider->IsCut()) return Uia::NotAvailable;
    POINT place = {ToPixel(point.x), ToPixel(point.y)};
    ScreenToClient(provider->Window(), &place);
    return Return(text.At({place.x, place.y}), out);
}

HRESULT TextPattern::get_DocumentRange(ITextRangeProvider** out) {
    if (!out) return E_INVALIDARG;
    *out = nullptr;
    return provider->IsCut() ? Uia::NotAvailable : Return(text.All(), out);
}

HRESULT TextPattern::get_SupportedTextSelection(SupportedTextSelection* out) {
    if (!out) return E_INVALIDARG;
    *out = SupportedTextSelection_Single;
    return provider->IsCut() ? Uia::NotAvailable : S_OK;
}

HRESULT TextPattern::GetCaretRange(BOOL* isActive, ITextRangeProvider** out) {
    if (!isActive || !out) return E_INVALIDARG;
    *isActive = FALSE;
    *out = nullptr;
    if (provider->IsCut()) return Uia::NotAvailable;
    *isActive = provider->HasFocus();
    return Return(text.Caret(), out);
}
