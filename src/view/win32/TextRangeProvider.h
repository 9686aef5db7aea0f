#pragma once

#include "view/AccessibleText.h"
#include "view/HeldRanges.h"
#include "viewbase/win32/ViewProvider.h"

// A piece of the text, for screen readers; AccessibleRange decides everything about it. `shown` is the view's, for as
// long as the link of `provider` is not cut.
class TextRangeProvider final : public ComObject<ITextRangeProvider> {
public:
    TextRangeProvider(ViewProvider& element, AccessibleText& shown, const AccessibleRange& covered)
        : text(shown), held(shown.Held(), covered) {
        provider.Share(&element);
    }

    // Also tells whether an object is one of these.
    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID id, void** out) override;

    // ITextRangeProvider.
    HRESULT STDMETHODCALLTYPE Clone(ITextRangeProvider** out) override;
    HRESULT STDMETHODCALLTYPE Compare(ITextRangeProvider* other, BOOL* out) override;
    HRESULT STDMETHODCALLTYPE CompareEndpoints(TextPatternRangeEndpoint end, ITextRangeProvider* other,
                                               TextPatternRangeEndpoint otherEnd, int* out) override;
    HRESULT STDMETHODCALLTYPE ExpandToEnclosingUnit(TextUnit unit) override;
    HRESULT STDMETHODCALLTYPE FindAttribute(TEXTATTRIBUTEID attribute, VARIANT value, BOOL backward,
                                            ITextRangeProvider** out) override;
    HRESULT STDMETHODCALLTYPE FindText(BSTR wanted, BOOL backward, BOOL ignoreCase, ITextRangeProvider** out) override;
    HRESULT STDMETHODCALLTYPE GetAttributeValue(TEXTATTRIBUTEID attribute, VARIANT* out) override;
    HRESULT STDMETHODCALLTYPE GetBoundingRectangles(SAFEARRAY** out) override;
    HRESULT STDMETHODCALLTYPE GetEnclosingElement(IRawElementProviderSimple** out) override;
    HRESULT STDMETHODCALLTYPE GetText(int limit, BSTR* out) override;
    HRESULT STDMETHODCALLTYPE Move(TextUnit unit, int count, int* out) override;
    HRESULT STDMETHODCALLTYPE MoveEndpointByUnit(TextPatternRangeEndpoint end, TextUnit unit, int count,
                                                 int* out) override;
    HRESULT STDMETHODCALLTYPE MoveEndpointByRange(TextPatternRangeEndpoint end, ITextRangeProvider* other,
                                                  TextPatternRangeEndpoint otherEnd) override;
    HRESULT STDMETHODCALLTYPE Select() override;
    HRESULT STDMETHODCALLTYPE AddToSelection() override;
    HRESULT STDMETHODCALLTYPE RemoveFromSelection() override;
    HRESULT STDMETHODCALLTYPE ScrollIntoView(BOOL toTop) override;
    HRESULT STDMETHODCALLTYPE GetChildren(SAFEARRAY** out) override;

private:
    // False, with `out` unchanged, for an attribute that is not supported.
    bool GetAttribute(TEXTATTRIBUTEID attribute, VARIANT& out) const;
    HRESULT Return(const AccessibleRange& made, ITextRangeProvider** out) const;
    // E_INVALIDARG for a range of another text or of somebody else; `own` holds it otherwise.
    HRESULT Open(ITextRangeProvider* other, ComReference<TextRangeProvider>& own) const;

    ComReference<ViewProvider> provider;
    AccessibleText& text;
    HeldRange held;
};
