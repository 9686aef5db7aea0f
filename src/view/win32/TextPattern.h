#pragma once

#include "view/AccessibleText.h"
#include "viewbase/win32/ViewProvider.h"

// The text of a text view, for screen readers. `shown` is the view's, for as long as the link of `provider` is not cut.
class TextPattern final : public ComObject<ITextProvider2, ITextProvider> {
public:
    TextPattern(ViewProvider& element, AccessibleText& shown) : text(shown) { provider.Share(&element); }

    // ITextProvider2.
    HRESULT STDMETHODCALLTYPE GetSelection(SAFEARRAY** out) override;
    HRESULT STDMETHODCALLTYPE GetVisibleRanges(SAFEARRAY** out) override;
    HRESULT STDMETHODCALLTYPE RangeFromChild(IRawElementProviderSimple* child, ITextRangeProvider** out) override;
    HRESULT STDMETHODCALLTYPE RangeFromPoint(UiaPoint point, ITextRangeProvider** out) override;
    HRESULT STDMETHODCALLTYPE get_DocumentRange(ITextRangeProvider** out) override;
    HRESULT STDMETHODCALLTYPE get_SupportedTextSelection(SupportedTextSelection* out) override;
    HRESULT STDMETHODCALLTYPE RangeFromAnnotation(IRawElementProviderSimple* annotation,
                                                  ITextRangeProvider** out) override;
    HRESULT STDMETHODCALLTYPE GetCaretRange(BOOL* isActive, ITextRangeProvider** out) override;

private:
    HRESULT Return(TextRange range, ITextRangeProvider** out) const;
    HRESULT ReturnArray(TextRange range, SAFEARRAY** out) const;

    ComReference<ViewProvider> provider;
    AccessibleText& text;
};
