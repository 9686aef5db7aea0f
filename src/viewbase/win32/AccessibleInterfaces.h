#pragma once

#include "base/win32/Windows.h"

#include <ole2.h>

#include <oleacc.h>
#include <uiautomationclient.h>
#include <uiautomationcore.h>

// What the compiler's headers lack of UI Automation; uiautomationcoreapi.h is for C only. The order of the functions is
// that of the system's interfaces and must not be changed.

struct UiaPoint {
    double x;
    double y;
};

// A client may send any number.
enum TextPatternRangeEndpoint : int { TextPatternRangeEndpoint_Start = 0, TextPatternRangeEndpoint_End = 1 };
enum SupportedTextSelection : int { SupportedTextSelection_None = 0, SupportedTextSelection_Single = 1 };
enum TextUnit : int {
    TextUnit_Character = 0,
    TextUnit_Format = 1,
    TextUnit_Word = 2,
    TextUnit_Line = 3,
    TextUnit_Paragraph = 4,
    TextUnit_Page = 5,
    TextUnit_Document = 6
};

namespace Uia {
constexpr CONTROLTYPEID EditControl = 50004;
constexpr CONTROLTYPEID DocumentControl = 50030;
constexpr EVENTID FocusChanged = 20005;
constexpr EVENTID SelectionChanged = 20014;
constexpr EVENTID TextChanged = 20015;
constexpr TEXTATTRIBUTEID IsHidden = 40013;
constexpr TEXTATTRIBUTEID IsReadOnly = 40015;
constexpr HRESULT NotAvailable = static_cast<HRESULT>(0x80040201);
constexpr HRESULT InvalidOperation = static_cast<HRESULT>(0x80131509);
constexpr LONG RootObject = -25; // what WM_GETOBJECT asks for
} // namespace Uia

struct IValueProvider : IUnknown {
    virtual HRESULT STDMETHODCALLTYPE SetValue(LPCWSTR value) = 0;
    virtual HRESULT STDMETHODCALLTYPE get_Value(BSTR* out) = 0;
    virtual HRESULT STDMETHODCALLTYPE get_IsReadOnly(BOOL* out) = 0;
};
__CRT_UUID_DECL(IValueProvider, 0xc7935180, 0x6fb3, 0x4201, 0xb1, 0x74, 0x7d, 0xf7, 0x3a, 0xdb, 0xf6, 0x4a)

struct ITextRangeProvider : IUnknown {
    virtual HRESULT STDMETHODCALLTYPE Clone(ITextRangeProvider** out) = 0;
    virtual HRESULT STDMETHODCALLTYPE Compare(ITextRangeProvider* other, BOOL* out) = 0;
    virtual HRESULT STDMETHODCALLTYPE CompareEndpoints(TextPatternRangeEndpoint end, ITextRangeProvider* other,
                                                       TextPatternRangeEndpoint otherEnd, int* out) = 0;
    virtual HRESULT STDMETHODCALLTYPE ExpandToEnclosingUnit(TextUnit unit) = 0;
    virtual HRESULT STDMETHODCALLTYPE FindAttribute(TEXTATTRIBUTEID attribute, VARIANT value, BOOL backward,
                                                    ITextRangeProvider** out) = 0;
    virtual HRESULT STDMETHODCALLTYPE FindText(BSTR text, BOOL backward, BOOL ignoreCase, ITextRangeProvider** out) = 0;
    virtual HRESULT STDMETHODCALLTYPE GetAttributeValue(TEXTATTRIBUTEID attribute, VARIANT* out) = 0;
    virtual HRESULT STDMETHODCALLTYPE GetBoundingRectangles(SAFEARRAY** out) = 0;
    virtual HRESULT STDMETHODCALLTYPE GetEnclosingElement(IRawElementProviderSimple** out) = 0;
    virtual HRESULT STDMETHODCALLTYPE GetText(int limit, BSTR* out) = 0;
    virtual HRESULT STDMETHODCALLTYPE Move(TextUnit unit, int count, int* out) = 0;
    virtual HRESULT STDMETHODCALLTYPE MoveEndpointByUnit(TextPatternRangeEndpoint end, TextUnit unit, int count,
                                                         int* out) = 0;
    virtual HRESULT STDMETHODCALLTYPE MoveEndpointByRange(TextPatternRangeEndpoint end, ITextRangeProvider* other,
                                                          TextPatternRangeEndpoint otherEnd) = 0;
    virtual HRESULT STDMETHODCALLTYPE Select() = 0;
    virtual HRESULT STDMETHODCALLTYPE AddToSelection() = 0;
    virtual HRESULT STDMETHODCALLTYPE RemoveFromSelection() = 0;
    virtual HRESULT STDMETHODCALLTYPE ScrollIntoView(BOOL toTop) = 0;
    virtual HRESULT STDMETHODCALLTYPE GetChildren(SAFEARRAY** out) = 0;
};
__CRT_UUID_DECL(ITextRangeProvider, 0x5347ad7b, 0xc355, 0x46f8, 0xaf, 0xf5, 0x90, 0x90, 0x33, 0x58, 0x2f, 0x63)

struct ITextProvider : IUnknown {
    virtual HRESULT STDMETHODCALLTYPE GetSelection(SAFEARRAY** out) = 0;
    virtual HRESULT STDMETHODCALLTYPE GetVisibleRanges(SAFEARRAY** out) = 0;
    virtual HRESULT STDMETHODCALLTYPE RangeFromChild(IRawElementProviderSimple* child, ITextRangeProvider** out) = 0;
    virtual HRESULT STDMETHODCALLTYPE RangeFromPoint(UiaPoint point, ITextRangeProvider** out) = 0;
    virtual HRESULT STDMETHODCALLTYPE get_DocumentRange(ITextRangeProvider** out) = 0;
    virtual HRESULT STDMETHODCALLTYPE get_SupportedTextSelection(SupportedTextSelection* out) = 0;
};
__CRT_UUID_DECL(ITextProvider, 0x3589c92c, 0x63f3, 0x4367, 0x99, 0xbb, 0xad, 0xa6, 0x53, 0xb7, 0x7c, 0xf2)

struct ITextProvider2 : ITextProvider {
    virtual HRESULT STDMETHODCALLTYPE RangeFromAnnotation(IRawElementProviderSimple* annotation,
                                                          ITextRangeProvider** out) = 0;
    virtual HRESULT STDMETHODCALLTYPE GetCaretRange(BOOL* isActive, ITextRangeProvider** out) = 0;
};
__CRT_UUID_DECL(ITextProvider2, 0x0dc5e6ed, 0x3e16, 0x4bf1, 0x8f, 0x9a, 0xa9, 0x79, 0x87, 0x8b, 0xc1, 0x95)
