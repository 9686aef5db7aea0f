// The text of a view as UI Automation's clients read it, by calling its interfaces directly.
#include "AccessibleSupport.h"
#include "support/FailureInjection.h"
#include "support/Random.h"
#include "viewbase/win32/ScreenReader.h"

#include <climits>
#include <limits>

namespace {

class TextPatternTest : public AccessibleViewTest {
protected:
    using Range = ComReference<ITextRangeProvider>;

    void ShowText(const std::u16string& text) {
        ASSERT_NO_FATAL_FAILURE(Show(text));
        element.Reset(Ask());
        ASSERT_TRUE(element.IsValid());
        pattern.Reset(PatternOf<ITextProvider2>(element.Get(), UIA_TextPattern2Id));
        ASSERT_TRUE(pattern.IsValid());
    }
    ITextRangeProvider* All() const {
        ITextRangeProvider* range = nullptr;
        EXPECT_EQ(pattern->get_DocumentRange(&range), S_OK);
        return range;
    }
    // The characters [start, end).
    ITextRangeProvider* Part(int start, int end) const {
        ITextRangeProvider* range = All();
        const Range from(All());
        int moved = 0;
        from->MoveEndpointByUnit(TextPatternRangeEndpoint_Start, TextUnit_Character, start, &moved);
        range->MoveEndpointByRange(TextPatternRangeEndpoint_End, from.Get(), TextPatternRangeEndpoint_Start);
        range->MoveEndpointByUnit(TextPatternRangeEndpoint_End, TextUnit_Character, end - start, &moved);
        range->MoveEndpointByRange(TextPatternRangeEndpoint_Start, from.Get(), TextPatternRangeEndpoint_Start);
        return range;
    }
    static std::u16string Read(ITextRangeProvider* range, int limit = -1) {
        BSTR text = nullptr;
        EXPECT_EQ(range->GetText(limit, &text), S_OK);
        return Taken(text);
    }
    // The only range of an array, which is freed.
    static ITextRangeProvider* Only(SAFEARRAY* array) {
        void* range = nullptr;
        if (!array) return nullptr;
        EXPECT_EQ(array->rgsabound[0].cElements, 1u);
        (*static_cast<IUnknown**>(array->pvData))->QueryInterface(__uuidof(ITextRangeProvider), &range);
        SafeArrayDestroy(array);
        return static_cast<ITextRangeProvider*>(range);
    }
    static std::vector<double> Rectangles(ITextRangeProvider* range) {
        SAFEARRAY* array = nullptr;
        EXPECT_EQ(range->GetBoundingRectangles(&array), S_OK);
        if (!array) return {};
        const auto* sides = static_cast<double*>(array->pvData);
        const std::vector<double> out(sides, sides + array->rgsabound[0].cElements);
        SafeArrayDestroy(array);
        return out;
    }

    ComReference<IRawElementProviderSimple> element;
    ComReference<ITextProvider2> pattern;
};

TEST_F(TextPatternTest, WithoutMemoryAClientGetsTheWholeTextOrAnError) {
    ShowText(u"one\ntwo three");
    const uint64_t failures = FailEachAllocation([&] {
        ITextRangeProvider* made = nullptr;
        const HRESULT result = pattern->get_DocumentRange(&made);
        EXPECT_EQ(SUCCEEDED(result), made != nullptr);
        if (!made) return false;
        const Range range(made);
        BSTR text = nullptr;
        const bool isRead = SUCCEEDED(range->GetText(-1, &text));
        const FailurePause pause;
        EXPECT_EQ(Taken(text), isRead ? u"one\ntwo three" : u"<none>");
        return isRead;
    });
    EXPECT_GT(failures, 0u);
}

TEST_F(TextPatternTest, TheElementIsADocument) {
    ShowText(u"one\ntwo");
    ASSERT_TRUE((*document)->SetTitle(u"New 1"));
    ProviderOptions options = {};
    EXPECT_EQ(element->get_ProviderOptions(&options), S_OK);
    EXPECT_EQ(options, ProviderOptions_ServerSideProvider | ProviderOptions_UseComThreading);
    VARIANT value = {};
    EXPECT_EQ(element->GetPropertyValue(UIA_ControlTypePropertyId, &value), S_OK);
    EXPECT_EQ(value.lVal, Uia::DocumentControl);
    EXPECT_EQ(element->GetPropertyValue(UIA_NamePropertyId, &value), S_OK);
    EXPECT_EQ(Taken(value.bstrVal), u"New 1");
    EXPECT_EQ(element->GetPropertyValue(UIA_IsKeyboardFocusablePropertyId, &value), S_OK);
    EXPECT_EQ(value.boolVal, VARIANT_TRUE);
    SetFocus(frame);
    EXPECT_EQ(element->GetPropertyValue(UIA_HasKeyboardFocusPropertyId, &value), S_OK);
    EXPECT_EQ(value.boolVal, VARIANT_FALSE);
    FocusView();
    EXPECT_EQ(element->GetPropertyValue(UIA_HasKeyboardFocusPropertyId, &value), S_OK);
    EXPECT_EQ(value.boolVal, VARIANT_TRUE);
    // What it does not know is the window's own.
    EXPECT_EQ(element->GetPropertyValue(UIA_BoundingRectanglePropertyId, &value), S_OK);
    EXPECT_EQ(value.vt, VT_EMPTY);
    EXPECT_EQ(PatternOf<IUnknown>(element.Get(), UIA_TogglePatternId), nullptr);
    IRawElementProviderSimple* host = nullptr;
    EXPECT_EQ(element->get_HostRawElementProvider(&host), S_OK);
    ASSERT_NE(host, nullptr);
    host->Release();
}

TEST_F(TextPatternTest, TheValueIsReadNotWritten) {
    ShowText(u"one\ntwo");
    const ComReference<IValueProvider> value(PatternOf<IValueProvider>(element.Get(), UIA_ValuePatternId));
    BSTR text = nullptr;
    EXPECT_EQ(value->get_Value(&text), S_OK);
    EXPECT_EQ(Taken(text), u"one");
    BOOL readOnly = TRUE;
    EXPECT_EQ(value->get_IsReadOnly(&readOnly), S_OK);
    EXPECT_FALSE(readOnly);
    EXPECT_EQ(value->SetValue(L"x"), Uia::InvalidOperation);
    EXPECT_EQ(document->Text(), u"one\ntwo");
    document.reset();
    EXPECT_EQ(value->get_Value(&text), Uia::NotAvailable);
    EXPECT_EQ(value->get_IsReadOnly(&readOnly), Uia::NotAvailable);
    EXPECT_EQ(value->SetValue(L"x"), Uia::NotAvailable);
}

TEST_F(TextPatternTest, IsReadLineByLineAndWordByWord) {
    ShowText(u"if (a)\n\treturn;\n");
    const Range range(All());
    EXPECT_EQ(Read(range.Get()), u"if (a)\n\treturn;\n");
    EXPECT_EQ(Read(range.Get(), 4), u"if (");
    EXPECT_EQ(Read(range.Get(), 0), u"");
    EXPECT_EQ(range->ExpandToEnclosingUnit(TextUnit_Line), S_OK);
    EXPECT_EQ(Read(range.Get()), u"if (a)\n");
    int moved = 0;
    EXPECT_EQ(range->Move(TextUnit_Line, 1, &moved), S_OK);
    EXPECT_EQ(moved, 1);
    EXPECT_EQ(Read(range.Get()), u"\treturn;\n");
    EXPECT_EQ(range->Move(TextUnit_Line, 9, &moved), S_OK);
    EXPECT_EQ(moved, 1);
    EXPECT_EQ(Read(range.Get()), u"");
    EXPECT_EQ(range->Move(TextUnit_Word, -2, &moved), S_OK);
    EXPECT_EQ(moved, -2);
    EXPECT_EQ(range->ExpandToEnclosingUnit(TextUnit_Word), S_OK);
    EXPECT_EQ(Read(range.Get()), u";");
    BSTR text = nullptr;
    EXPECT_EQ(range->GetText(-2, &text), E_INVALIDARG);
    // A unit that there will be one day.
    EXPECT_EQ(range->ExpandToEnclosingUnit(static_cast<TextUnit>(99)), S_OK);
    EXPECT_EQ(Read(range.Get()), u"if (a)\n\treturn;\n");
}

TEST_F(TextPatternTest, RangesAreCompared) {
    ShowText(u"abcdef");
    const Range part(Part(1, 3));
    ITextRangeProvider* cloned = nullptr;
    EXPECT_EQ(part->Clone(&cloned), S_OK);
    const Range clone(cloned);
    BOOL same = FALSE;
    EXPECT_EQ(part->Compare(clone.Get(), &same), S_OK);
    EXPECT_TRUE(same);
    int moved = 0;
    EXPECT_EQ(clone->MoveEndpointByUnit(TextPatternRangeEndpoint_End, TextUnit_Character, 1, &moved), S_OK);
    EXPECT_EQ(part->Compare(clone.Get(), &same), S_OK);
    EXPECT_FALSE(same);
    int order = 7;
    EXPECT_EQ(
        part->CompareEndpoints(TextPatternRangeEndpoint_Start, clone.Get(), TextPatternRangeEndpoint_Start, &order),
        S_OK);
    EXPECT_EQ(order, 0);
    EXPECT_EQ(part->CompareEndpoints(TextPatternRangeEndpoint_End, clone.Get(), TextPatternRangeEndpoint_End, &order),
              S_OK);
    EXPECT_LT(order, 0);
    // Neither nothing nor a range of another view.
    TextDocument other(u"abcdef");
    auto* second = static_cast<TextView*>(other->CreateView(frame)->AsView());
    const ComReference<ViewProvider> link(new ViewProvider(second->GetWindow(), *second));
    const ComReference<ITextProvider2> foreign(PatternOf<ITextProvider2>(link.Get(), UIA_TextPatternId));
    ITextRangeProvider* elsewhere = nullptr;
    ASSERT_EQ(foreign->get_DocumentRange(&elsewhere), S_OK);
    const Range stranger(elsewhere);
    for (ITextRangeProvider* wrong : {stranger.Get(), static_cast<ITextRangeProvider*>(nullptr)}) {
        EXPECT_EQ(part->Compare(wrong, &same), E_INVALIDARG);
        EXPECT_EQ(part->CompareEndpoints(TextPatternRangeEndpoint_Start, wrong, TextPatternRangeEndpoint_End, &order),
                  E_INVALIDARG);
        EXPECT_EQ(part->MoveEndpointByRange(TextPatternRangeEndpoint_Start, wrong, TextPatternRangeEndpoint_End),
                  E_INVALIDARG);
    }
    EXPECT_EQ(Read(part.Get()), u"bc");
    link.Get()->Cut();
}

TEST_F(TextPatternTest, TextIsFound) {
    ShowText(u"one ONE one");
    const Range all(All());
    ITextRangeProvider* found = nullptr;
    const BSTR wanted = SysAllocString(L"ONE");
    EXPECT_EQ(all->FindText(wanted, FALSE, FALSE, &found), S_OK);
    Range match(found);
    const Range expected(Part(4, 7));
    BOOL same = FALSE;
    EXPECT_EQ(match->Compare(expected.Get(), &same), S_OK);
    EXPECT_TRUE(same);
    EXPECT_EQ(all->FindText(wanted, TRUE, TRUE, &found), S_OK);
    match.Reset(found);
    EXPECT_EQ(Read(match.Get()), u"one");
    EXPECT_EQ(match->FindText(wanted, FALSE, FALSE, &found), S_OK);
    EXPECT_EQ(found, nullptr);
    EXPECT_EQ(all->FindText(nullptr, FALSE, FALSE, &found), E_INVALIDARG);
    SysFreeString(wanted);
}

// The letters that differ in case are the system's to know.
TEST_F(TextPatternTest, LettersOfOtherAlphabetsAreFoundInEitherCase) {
    ShowText(u"a \u017B\u00F3\u0142w, \u042F\u0437\u044B\u043A, \u039B\u039F\u0393\u039F\u03A3");
    const Range all(All());
    const std::pair<const wchar_t*, const Char*> words[] = {
        {L"\u017C\u00D3\u0142W", u"\u017B\u00F3\u0142w"},
        {L"\u044F\u0417\u042B\u043A", u"\u042F\u0437\u044B\u043A"},
        {L"\u03BB\u03BF\u03B3\u03BF\u03C2", u"\u039B\u039F\u0393\u039F\u03A3"}};
    for (const auto& [wanted, expected] : words) {
        const HeldText text(SysAllocString(wanted));
        ITextRangeProvider* found = nullptr;
        EXPECT_EQ(all->FindText(text.Get(), FALSE, FALSE, &found), S_OK);
        EXPECT_EQ(found, nullptr);
        EXPECT_EQ(all->FindText(text.Get(), FALSE, TRUE, &found), S_OK);
        const Range match(found);
        ASSERT_TRUE(match.IsValid());
        EXPECT_EQ(Read(match.Get()), expected);
    }
}

// A reader may read a whole text by characters.
TEST_F(TextPatternTest, ReadingByCharactersLooksNoFunctionUp) {
    ShowText(u"one two three");
    const Range range(Part(0, 1));
    VARIANT value = {};
    CallCounter<9, decltype(GetProcAddress)> lookups("GetProcAddress");
    ASSERT_TRUE(lookups.IsImported());
    std::u16string read;
    int moved = 0;
    for (int i = 0; i < 13; ++i) {
        read += Read(range.Get());
        EXPECT_EQ(Rectangles(range.Get()).size(), 4u);
        EXPECT_EQ(range->GetAttributeValue(0, &value), S_OK);
        if (value.vt == VT_UNKNOWN) value.punkVal->Release();
        range->Move(TextUnit_Character, 1, &moved);
    }
    EXPECT_EQ(read, u"one two three");
    EXPECT_EQ(lookups.Take(), 0);
}

TEST_F(TextPatternTest, CaretAndSelectionAreRangesAndCanBeSet) {
    ShowText(u"one\ntwo");
    Editor().SelectRange({5, 2});
    SAFEARRAY* array = nullptr;
    EXPECT_EQ(pattern->GetSelection(&array), S_OK);
    const Range selected(Only(array));
    EXPECT_EQ(Read(selected.Get()), u"e\nt");
    BOOL isActive = TRUE;
    ITextRangeProvider* out = nullptr;
    SetFocus(frame);
    EXPECT_EQ(pattern->GetCaretRange(&isActive, &out), S_OK);
    const Range caret(out);
    EXPECT_FALSE(isActive);
    const Range expected(Part(2, 2));
    BOOL same = FALSE;
    EXPECT_EQ(caret->Compare(expected.Get(), &same), S_OK);
    EXPECT_TRUE(same);
    const Range part(Part(4, 6));
    EXPECT_EQ(part->Select(), S_OK);
    EXPECT_EQ(Editor().Selection(), (TextSelection{4, 6}));
    EXPECT_EQ(part->AddToSelection(), Uia::InvalidOperation);
    EXPECT_EQ(part->RemoveFromSelection(), Uia::InvalidOperation);
    SupportedTextSelection supported = SupportedTextSelection_None;
    EXPECT_EQ(pattern->get_SupportedTextSelection(&supported), S_OK);
    EXPECT_EQ(supported, SupportedTextSelection_Single);
}

TEST_F(TextPatternTest, PlacesAreThoseOfTheScreen) {
    ShowText(u"abc\nd");
    POINT corner = {};
    ClientToScreen(Window(), &corner);
    const Range line(Part(1, 5));
    const double left = corner.x + TextLeft();
    EXPECT_EQ(Rectangles(line.Get()),
              (std::vector<double>{left + Average(), double(corner.y), 3.0 * Average(), double(LineHeight()), left,
                                   double(corner.y + LineHeight()), double(Average()), double(LineHeight())}));
    const Range nothing(Part(2, 2));
    EXPECT_TRUE(Rectangles(nothing.Get()).empty());
    ITextRangeProvider* out = nullptr;
    EXPECT_EQ(pattern->RangeFromPoint({left + 2 * Average(), corner.y + 1.0}, &out), S_OK);
    const Range place(out);
    BOOL same = FALSE;
    EXPECT_EQ(place->Compare(nothing.Get(), &same), S_OK);
    EXPECT_TRUE(same);
    for (const double wrong : {-1e300, 1e300, 0.0 / corner.x - 1e19, __builtin_nan("")}) {
        EXPECT_EQ(pattern->RangeFromPoint({wrong, wrong}, &out), S_OK);
        out->Release();
    }
}

TEST_F(TextPatternTest, WhatIsSeenAndScrolledTo) {
    std::u16string text;
    for (int i = 0; i < 200; ++i) text += u"x\n";
    ShowText(text);
    const Range part(Part(100, 101)); // line 50
    EXPECT_EQ(part->ScrollIntoView(TRUE), S_OK);
    EXPECT_EQ(Editor().TopLine(), 50u);
    SAFEARRAY* array = nullptr;
    EXPECT_EQ(pattern->GetVisibleRanges(&array), S_OK);
    const Range seen(Only(array));
    int order = 7;
    EXPECT_EQ(
        seen->CompareEndpoints(TextPatternRangeEndpoint_Start, part.Get(), TextPatternRangeEndpoint_Start, &order),
        S_OK);
    EXPECT_EQ(order, 0);
    EXPECT_EQ(part->ScrollIntoView(FALSE), S_OK);
    EXPECT_EQ(Editor().TopLine(), 51u - static_cast<uint32_t>(Editor().VisibleLines()));
}

TEST_F(TextPatternTest, AttributesAndElements) {
    ShowText(u"abc");
    const Range all(All());
    VARIANT value = {};
    EXPECT_EQ(all->GetAttributeValue(Uia::IsReadOnly, &value), S_OK);
    EXPECT_EQ(value.boolVal, VARIANT_FALSE);
    EXPECT_EQ(all->GetAttributeValue(Uia::IsHidden, &value), S_OK);
    EXPECT_EQ(value.boolVal, VARIANT_FALSE);
    EXPECT_EQ(all->GetAttributeValue(40005, &value), S_OK); // the font: not told
    EXPECT_EQ(value.vt, VT_UNKNOWN);
    VariantClear(&value);
    ITextRangeProvider* found = nullptr;
    EXPECT_EQ(all->FindAttribute(Uia::IsReadOnly, VARIANT(), FALSE, &found), S_OK);
    EXPECT_EQ(found, nullptr) << "a value of another type";
    IRawElementProviderSimple* enclosing = nullptr;
    EXPECT_EQ(all->GetEnclosingElement(&enclosing), S_OK);
    EXPECT_EQ(enclosing, element.Get());
    enclosing->Release();
    SAFEARRAY* children = nullptr;
    EXPECT_EQ(all->GetChildren(&children), S_OK);
    ASSERT_NE(children, nullptr);
    EXPECT_EQ(children->rgsabound[0].cElements, 0u);
    SafeArrayDestroy(children);
    EXPECT_EQ(pattern->RangeFromChild(element.Get(), &found), E_INVALIDARG);
    EXPECT_EQ(pattern->RangeFromAnnotation(element.Get(), &found), E_INVALIDARG);
}

TEST_F(TextPatternTest, APieceWithAnAttributeIsFound) {
    ShowText(u"one two");
    const Range two(Part(4, 7));
    VARIANT value = {};
    value.vt = VT_BOOL;
    for (const TEXTATTRIBUTEID attribute : {Uia::IsReadOnly, Uia::IsHidden}) {
        for (const BOOL backward : {FALSE, TRUE}) {
            value.boolVal = VARIANT_FALSE;
            ITextRangeProvider* found = nullptr;
            EXPECT_EQ(two->FindAttribute(attribute, value, backward, &found), S_OK);
            ASSERT_NE(found, nullptr);
            EXPECT_NE(found, two.Get()) << "a range of the client's own";
            const Range copy(found);
            EXPECT_EQ(Read(copy.Get()), u"two");
            value.boolVal = VARIANT_TRUE;
            EXPECT_EQ(two->FindAttribute(attribute, value, backward, &found), S_OK);
            EXPECT_EQ(found, nullptr);
        }
    }
    ITextRangeProvider* found = nullptr;
    EXPECT_EQ(two->FindAttribute(40005, value, FALSE, &found), S_OK); // the font: not told
    EXPECT_EQ(found, nullptr);
    // Whoever goes on after what was found comes to an end.
    value.boolVal = VARIANT_FALSE;
    const Range nothing(Part(7, 7));
    EXPECT_EQ(nothing->FindAttribute(Uia::IsReadOnly, value, FALSE, &found), S_OK);
    EXPECT_EQ(found, nullptr);
}

TEST_F(TextPatternTest, RangesStayOnTheirCharacters) {
    ShowText(u"one two three");
    const Range two(Part(4, 7));
    ITextRangeProvider* copy = nullptr;
    ASSERT_EQ(two->Clone(&copy), S_OK);
    Range clone(copy);
    EXPECT_TRUE((*document)->InsertText(0, u"zero ", 5));
    EXPECT_EQ(Read(two.Get()), u"two");
    EXPECT_EQ(Read(clone.Get()), u"two");
    clone.Reset();
    EXPECT_TRUE((*document)->DeleteText({0, 7}));
    EXPECT_EQ(Read(two.Get()), u"two");
    SendMessageW(Window(), WM_CHAR, L'x', 1);
    EXPECT_EQ(Read(two.Get()), u"two");
}

// A range that was made for a longer text.
TEST_F(TextPatternTest, OffsetsOutsideTheTextAreAtItsEnd) {
    ShowText(u"one two three");
    const Range all(All());
    const Range tail(Part(8, 13));
    EXPECT_TRUE((*document)->DeleteText({3, 13}));
    EXPECT_EQ(Read(all.Get()), u"one");
    EXPECT_EQ(Read(tail.Get()), u"");
    EXPECT_TRUE(Rectangles(tail.Get()).empty());
    int moved = 0;
    EXPECT_EQ(tail->Move(TextUnit_Character, -1, &moved), S_OK);
    EXPECT_EQ(moved, -1);
    EXPECT_EQ(tail->MoveEndpointByUnit(TextPatternRangeEndpoint_End, TextUnit_Document, INT_MAX, &moved), S_OK);
    EXPECT_EQ(Read(tail.Get()), u"e");
    EXPECT_EQ(all->Select(), S_OK);
    EXPECT_EQ(Editor().Selection(), (TextSelection{0, 3}));
    EXPECT_EQ(all->ScrollIntoView(FALSE), S_OK);
}

// A client may send any number, and hold ranges while the text is edited under them.
class AnyCallTest : public TextPatternTest {
protected:
    int Number() {
        constexpr int Far[] = {INT_MIN, INT_MIN + 1, -1000, INT_MAX - 1, INT_MAX, 1 << 24};
        return random.OneIn(3) ? random.Pick(Far) : static_cast<int>(random.Below(21)) - 10;
    }
    double Coordinate() {
        constexpr double Far[] = {-1e300, 1e300, std::numeric_limits<double>::infinity(),
                                  std::numeric_limits<double>::quiet_NaN()};
        return random.OneIn(3) ? random.Pick(Far) : static_cast<double>(Number());
    }
    TextUnit Unit() { return static_cast<TextUnit>(random.OneIn(5) ? Number() : static_cast<int>(random.Below(7))); }
    TextPatternRangeEndpoint End() {
        return static_cast<TextPatternRangeEndpoint>(random.OneIn(5) ? Number() : static_cast<int>(random.Below(2)));
    }
    Range& Any() { return ranges[random.Below(std::size(ranges))]; }
    void Edit();
    void Replace(Range& range);
    void Call(Range& range);

    Random random{31};
    Range ranges[4];
};

void AnyCallTest::Edit() {
    const uint32_t length = (*document)->Length();
    if (random.OneIn(3) && (*document)->CommitEdit()) {
        const uint32_t start = random.Below(length + 1);
        EXPECT_TRUE((*document)->DeleteText({start, start + random.Below(length - start + 1)}));
    } else {
        SendMessageW(Window(), WM_CHAR, random.Pick(u"ab .\r\u0301\xD83D\xDE00"), 1);
    }
}

void AnyCallTest::Replace(Range& range) {
    ITextRangeProvider* made = nullptr;
    switch (random.Below(3)) {
    case 0:
        made = All();
        break;
    case 1:
        EXPECT_EQ(pattern->RangeFromPoint({Coordinate(), Coordinate()}, &made), S_OK);
        break;
    default:
        EXPECT_EQ(Any()->Clone(&made), S_OK);
    }
    range.Reset(made);
}

void AnyCallTest::Call(Range& range) {
    int number = 0;
    BOOL same = FALSE;
    ITextRangeProvider* found = nullptr;
    const HeldText wanted(SysAllocString(L"a"));
    switch (random.Below(12)) {
    case 0:
        EXPECT_EQ(range->ExpandToEnclosingUnit(Unit()), S_OK);
        break;
    case 1:
        EXPECT_EQ(range->Move(Unit(), Number(), &number), S_OK);
        break;
    case 2:
        EXPECT_EQ(range->MoveEndpointByUnit(End(), Unit(), Number(), &number), S_OK);
        break;
    case 3:
        EXPECT_EQ(range->MoveEndpointByRange(End(), Any().Get(), End()), S_OK);
        break;
    case 4:
        EXPECT_EQ(range->CompareEndpoints(End(), Any().Get(), End(), &number), S_OK);
        break;
    case 5:
        EXPECT_EQ(range->Compare(Any().Get(), &same), S_OK);
        break;
    case 6:
        EXPECT_EQ(range->FindText(wanted.Get(), random.OneIn(2), random.OneIn(2), &found), S_OK);
        if (found) Any().Reset(found);
        break;
    case 7:
        EXPECT_EQ(range->Select(), S_OK);
        break;
    case 8:
        EXPECT_EQ(range->ScrollIntoView(random.OneIn(2)), S_OK);
        break;
    case 9:
        EXPECT_EQ(Rectangles(range.Get()).size() % 4, 0u);
        break;
    case 10:
        Replace(range);
        break;
    default:
        Edit();
    }
}

TEST_F(AnyCallTest, LeavesEveryRangeInTheText) {
    ShowText(u"one two\nthree \xD83D\xDE00 four\n");
    FocusView();
    for (Range& range : ranges) range.Reset(All());
    for (int step = 0; step < 5000; ++step) {
        Call(Any());
        for (const Range& range : ranges) {
            const std::u16string text = Read(range.Get());
            ASSERT_NE(document->Text().find(text), std::u16string::npos) << step;
            BSTR limited = nullptr;
            const int limit = static_cast<int>(random.Below(20)) - 1;
            ASSERT_EQ(range->GetText(limit, &limited), S_OK);
            ASSERT_TRUE(limit < 0 || static_cast<int>(SysStringLen(limited)) <= limit) << step;
            ASSERT_TRUE(limit == 0 || (SysStringLen(limited) == 0) == text.empty()) << step;
            SysFreeString(limited);
        }
    }
}

TEST_F(TextPatternTest, AClientMayKeepItLongerThanTheView) {
    ShowText(u"abc");
    const Range range(All());
    const ComReference<IRawElementProviderSimple> kept(Ask());
    document.reset();
    EXPECT_EQ(AutomationCalls::disconnected, (std::vector<IRawElementProviderSimple*>{element.Get()}));
    VARIANT value = {};
    IUnknown* made = nullptr;
    IRawElementProviderSimple* simple = nullptr;
    ITextRangeProvider* out = nullptr;
    SAFEARRAY* array = nullptr;
    BSTR text = nullptr;
    BOOL flag = FALSE;
    int number = 0;
    SupportedTextSelection supported = {};
    const BSTR wanted = SysAllocString(L"a");
    constexpr auto Start = TextPatternRangeEndpoint_Start;
    for (const HRESULT result : {element->GetPatternProvider(UIA_TextPatternId, &made),
                                 element->GetPropertyValue(UIA_NamePropertyId, &value),
                                 element->get_HostRawElementProvider(&simple),
                                 pattern->GetSelection(&array),
                                 pattern->GetVisibleRanges(&array),
                                 pattern->RangeFromChild(kept.Get(), &out),
                                 pattern->RangeFromPoint({0, 0}, &out),
                                 pattern->get_DocumentRange(&out),
                                 pattern->get_SupportedTextSelection(&supported),
                                 pattern->RangeFromAnnotation(kept.Get(), &out),
                                 pattern->GetCaretRange(&flag, &out),
                                 range->Clone(&out),
                                 range->Compare(range.Get(), &flag),
                                 range->CompareEndpoints(Start, range.Get(), Start, &number),
                                 range->ExpandToEnclosingUnit(TextUnit_Line),
                                 range->FindAttribute(0, VARIANT(), FALSE, &out),
                                 range->FindText(wanted, FALSE, FALSE, &out),
                                 range->GetAttributeValue(Uia::IsReadOnly, &value),
                                 range->GetBoundingRectangles(&array),
                                 range->GetEnclosingElement(&simple),
                                 range->GetText(-1, &text),
                                 range->Move(TextUnit_Word, 1, &number),
                                 range->MoveEndpointByUnit(Start, TextUnit_Word, 1, &number),
                                 range->MoveEndpointByRange(Start, range.Get(), Start),
                                 range->Select(),
                                 range->AddToSelection(),
                                 range->RemoveFromSelection(),
                                 range->ScrollIntoView(TRUE),
                                 range->GetChildren(&array)})
        EXPECT_EQ(result, Uia::NotAvailable);
    SysFreeString(wanted);
    EXPECT_EQ(out, nullptr);
    EXPECT_EQ(array, nullptr);
    EXPECT_EQ(text, nullptr);
    EXPECT_EQ(made, nullptr);
    EXPECT_EQ(simple, nullptr);
}

TEST_F(TextPatternTest, AnswersNeedAPlace) {
    ShowText(u"abc");
    const Range range(All());
    constexpr auto Start = TextPatternRangeEndpoint_Start;
    for (const HRESULT result : {element->get_ProviderOptions(nullptr),
                                 element->GetPatternProvider(UIA_TextPatternId, nullptr),
                                 element->GetPropertyValue(UIA_NamePropertyId, nullptr),
                                 element->get_HostRawElementProvider(nullptr),
                                 pattern->GetSelection(nullptr),
                                 pattern->GetVisibleRanges(nullptr),
                                 pattern->RangeFromChild(nullptr, nullptr),
                                 pattern->RangeFromPoint({0, 0}, nullptr),
                                 pattern->get_DocumentRange(nullptr),
                                 pattern->get_SupportedTextSelection(nullptr),
                                 pattern->GetCaretRange(nullptr, nullptr),
                                 range->Clone(nullptr),
                                 range->Compare(range.Get(), nullptr),
                                 range->CompareEndpoints(Start, range.Get(), Start, nullptr),
                                 range->FindAttribute(0, VARIANT(), FALSE, nullptr),
                                 range->FindText(nullptr, FALSE, FALSE, nullptr),
                                 range->GetAttributeValue(0, nullptr),
                                 range->GetBoundingRectangles(nullptr),
                                 range->GetEnclosingElement(nullptr),
                                 range->GetText(-1, nullptr),
                                 range->Move(TextUnit_Word, 1, nullptr),
                                 range->MoveEndpointByUnit(Start, TextUnit_Word, 1, nullptr),
                                 range->GetChildren(nullptr)})
        EXPECT_EQ(result, E_INVALIDARG);
}

TEST_F(TextPatternTest, ObjectsGoWithTheirLastReference) {
    ShowText(u"abc");
    ITextRangeProvider* range = All();
    EXPECT_EQ(range->AddRef(), 2u);
    void* same = nullptr;
    EXPECT_EQ(range->QueryInterface(__uuidof(ITextRangeProvider), &same), S_OK);
    EXPECT_EQ(same, range);
    EXPECT_EQ(range->QueryInterface(__uuidof(ITextProvider), &same), E_NOINTERFACE);
    EXPECT_EQ(same, nullptr);
    EXPECT_EQ(range->Release(), 2u);
    EXPECT_EQ(range->Release(), 1u);
    EXPECT_EQ(range->Release(), 0u);
    EXPECT_EQ(pattern->QueryInterface(__uuidof(ITextProvider), &same), S_OK);
    pattern->Release();
}

} // namespace
