#include "view/win32/TextRangeProvider.h"

#include "view/ShownText.h"

#include <initializer_list>

// A client may keep a range for longer than its view lives, and may look at the result of a call that has failed. So
// each operation first clears its out parameter, and then asks whether the link to the view is cut. QueryInterface
// needs no view.

namespace {

// Our own, which nobody else answers to.
constexpr GUID OwnClass = {0x9f0c6f0e, 0x5b0d, 0x4a53, {0x8e, 0x61, 0x2d, 0x47, 0x9a, 0x1c, 0x33, 0xb7}};

// Another number is the whole text.
AccessibleUnit UnitOf(TextUnit unit) { return static_cast<AccessibleUnit>(unit); }

RangeEnd EndOf(TextPatternRangeEndpoint end) {
    return end == TextPatternRangeEndpoint_Start ? RangeEnd::Start : RangeEnd::End;
}

// Left, top, width and height of each, in pixels of the screen.
SAFEARRAY* MakeRectangles(ViewProvider& provider, const Array<ClientRectangle>& seen) {
    POINT origin = {};
    ClientToScreen(provider.Window(), &origin);
    void* items = nullptr;
    SAFEARRAY* const array = provider.Libraries().MakeArray(VT_R8, static_cast<ULONG>(seen.Count() * 4), items);
    if (!array) return nullptr;
    auto* out = static_cast<double*>(items);
    for (size_t i = 0; i < seen.Count(); ++i) {
        const ClientRectangle& line = seen[i];
        for (const LONG side :
             {origin.x + line.left, origin.y + line.top, LONG{line.right - line.left}, LONG{line.bottom - line.top}})
            *out++ = side;
    }
    return array;
}

} // namespace

HRESULT TextRangeProvider::QueryInterface(REFIID id, void** out) {
    if (!out || id != OwnClass) return ComObject::QueryInterface(id, out);
    AddRef();
    *out = this;
    return S_OK;
}

HRESULT TextRangeProvider::Return(const AccessibleRange& made, ITextRangeProvider** out) const {
    *out = new TextRangeProvider(*provider.Get(), text, made);
    return *out ? S_OK : E_OUTOFMEMORY;
}

HRESULT TextRangeProvider::Open(ITextRangeProvider* other, ComReference<TextRangeProvider>& own) const {
    if (provider->IsCut()) return Uia::NotAvailable;
    void* object = nullptr;
    if (!other || FAILED(other->QueryInterface(OwnClass, &object))) return E_INVALIDARG;
    own.Reset(static_cast<TextRangeProvider*>(object));
    return own->provider.Get() == provider.Get() ? S_OK : E_INVALIDARG;
}

HRESULT TextRangeProvider::Clone(ITextRangeProvider** out) {
    if (!out) return E_INVALIDARG;
    *out = nullptr;
    return provider->IsCut() ? Uia::NotAvailable : Return(held.range, out);
}

HRESULT TextRangeProvider::Compare(ITextRangeProvider* other, BOOL* out) {
    if (!out) return E_INVALIDARG;
    *out = FALSE;
    ComReference<TextRangeProvider> own;
    const HRESULT result = Open(other, own);
    if (result == S_OK) *out = held.range.Within(text.Text()) == own->held.range.Within(text.Text());
    return result;
}

HRESULT TextRangeProvider::CompareEndpoints(TextPatternRangeEndpoint end, ITextRangeProvider* other,
                                            TextPatternRangeEndpoint otherEnd, int* out) {
    if (!out) return E_INVALIDARG;
    *out = 0;
    ComReference<TextRangeProvider> own;
    const HRESULT result = Open(other, own);
    if (result == S_OK) *out = held.range.Compare(text.Text(), EndOf(end), own->held.range, EndOf(otherEnd));
    return result;
}

HRESULT TextRangeProvider::ExpandToEnclosingUnit(TextUnit unit) {
    if (provider->IsCut()) return Uia::NotAvailable;
    held.range.Expand(text.Text(), UnitOf(unit));
    return S_OK;
}

bool TextRangeProvider::GetAttribute(TEXTATTRIBUTEID attribute, VARIANT& out) const {
    if (attribute != Uia::IsReadOnly && attribute != Uia::IsHidden) return false;
    out.vt = VT_BOOL;
    out.boolVal = attribute == Uia::IsReadOnly && text.IsReadOnly() ? VARIANT_TRUE : VARIANT_FALSE;
    return true;
}

// All of the text has the same attributes: what has a value is the whole range, or nothing. An empty range has none, so
// that a client that searches on after each hit terminates.
HRESULT TextRangeProvider::FindAttribute(TEXTATTRIBUTEID attribute, VARIANT value, BOOL, ITextRangeProvider** out) {
    if (!out) return E_INVALIDARG;
    *out = nullptr;
    if (provider->IsCut()) return Uia::NotAvailable;
    VARIANT own = {};
    const bool isFound = GetAttribute(attribute, own) && value.vt == VT_BOOL &&
                         (value.boolVal != VARIANT_FALSE) == (own.boolVal != VARIANT_FALSE) &&
                         !held.range.Within(text.Text()).IsEmpty();
    return isFound ? Return(held.range, out) : S_OK;
}

HRESULT TextRangeProvider::FindText(BSTR wanted, BOOL backward, BOOL ignoreCase, ITextRangeProvider** out) {
    if (!out) return E_INVALIDARG;
    *out = nullptr;
    if (!wanted) return E_INVALIDARG;
    if (provider->IsCut()) return Uia::NotAvailable;
    const AccessibleRange::Wanted query = {FromWide(wanted), provider->Libraries().LengthOf(wanted), backward != FALSE,
                                           ignoreCase == FALSE};
    uint32_t found = 0;
    if (!held.range.Find(text.Text(), query, found)) return E_OUTOFMEMORY;
    return found == NoOffset ? S_OK : Return(AccessibleRange({found, found + query.count}), out);
}

HRESULT TextRangeProvider::GetAttributeValue(TEXTATTRIBUTEID attribute, VARIANT* out) {
    if (!out) return E_INVALIDARG;
    *out = VARIANT();
    if (provider->IsCut()) return Uia::NotAvailable;
    if (GetAttribute(attribute, *out)) return S_OK;
    const auto* automation = provider->Libraries().GetAutomation();
    if (!automation) return E_FAIL;
    const HRESULT result = automation->notSupported(&out->punkVal);
    if (SUCCEEDED(result)) out->vt = VT_UNKNOWN;
    return result;
}

HRESULT TextRangeProvider::GetBoundingRectangles(SAFEARRAY** out) {
    if (!out) return E_INVALIDARG;
    *out = nullptr;
    if (provider->IsCut()) return Uia::NotAvailable;
    Array<ClientRectangle> seen;
    if (text.AppendRectangles(held.range, seen)) *out = MakeRectangles(*provider.Get(), seen);
    return *out ? S_OK : E_OUTOFMEMORY;
}

HRESULT TextRangeProvider::GetEnclosingElement(IRawElementProviderSimple** out) {
    if (!out) return E_INVALIDARG;
    *out = nullptr;
    if (provider->IsCut()) return Uia::NotAvailable;
    provider->AddRef();
    *out = provider.Get();
    return S_OK;
}

HRESULT TextRangeProvider::GetText(int limit, BSTR* out) {
    if (!out || limit < -1) return E_INVALIDARG;
    *out = nullptr;
    if (provider->IsCut()) return Uia::NotAvailable;
    const TextRange part = held.range.Readable(text.Text(), limit);
    *out = provider->Libraries().MakeText(nullptr, part.Length());
    if (!*out) return E_OUTOFMEMORY;
    text.Text().Copy(part, FromWide(*out));
    return S_OK;
}

HRESULT TextRangeProvider::Move(TextUnit unit, int count, int* out) {
    if (!out) return E_INVALIDARG;
    *out = 0;
    if (provider->IsCut()) return Uia::NotAvailable;
    *out = held.range.Move(text.Text(), UnitOf(unit), count);
    return S_OK;
}

HRESULT TextRangeProvider::MoveEndpointByUnit(TextPatternRangeEndpoint end, TextUnit unit, int count, int* out) {
    if (!out) return E_INVALIDARG;
    *out = 0;
    if (provider->IsCut()) return Uia::NotAvailable;
    *out = held.range.MoveEnd(text.Text(), EndOf(end), UnitOf(unit), count);
    return S_OK;
}

HRESULT TextRangeProvider::MoveEndpointByRange(TextPatternRangeEndpoint end, ITextRangeProvider* other,
                                               TextPatternRangeEndpoint otherEnd) {
    ComReference<TextRangeProvider> own;
    const HRESULT result = Open(other, own);
    if (result == S_OK) held.range.MoveEndTo(text.Text(), EndOf(end), own->held.range, EndOf(otherEnd));
    return result;
}

HRESULT TextRangeProvider::Select() {
    if (provider->IsCut()) return Uia::NotAvailable;
    text.Select(held.range);
    return S_OK;
}

// One piece at a time is selected.
HRESULT TextRangeProvider::AddToSelection() { return provider->IsCut() ? Uia::NotAvailable : Uia::InvalidOperation; }

HRESULT TextRangeProvider::RemoveFromSelection() { return AddToSelection(); }

HRESULT TextRangeProvider::ScrollIntoView(BOOL toTop) {
    if (provider->IsCut()) return Uia::NotAvailable;
    text.ScrollTo(held.range, toTop != FALSE);
    return S_OK;
}

HRESULT TextRangeProvider::GetChildren(SAFEARRAY** out) {
    if (!out) return E_INVALIDARG;
    *out = nullptr;
    if (provider->IsCut()) return Uia::NotAvailable;
    void* items = nullptr;
    *out = provider->Libraries().MakeArray(VT_UNKNOWN, 0, items);
    return *out ? S_OK : E_OUTOFMEMORY;
}
