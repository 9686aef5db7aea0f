// What a view must not do once it is warm: measure characters, allocate, set a scroll bar for nothing, or
// paint more than changed.
#include "CallCounter.h"
#include "TextViewTest.h"
#include "base/Heap.h"
#include "viewbase/ViewKey.h"

namespace {

// Every call that measures text and that the program knows.
class MeasuringCalls {
public:
    bool AreKnown() const {
        return widths.IsImported() && metrics.IsImported() && drawnText.IsImported() && extents.IsImported() &&
               glyphs.IsImported() && !ImportSlot("GetTextExtentPointW") && !ImportSlot("GetTextExtentExPointW") &&
               !ImportSlot("GetCharWidthW") && !ImportSlot("GetCharABCWidthsW") &&
               !ImportSlot("GetTabbedTextExtentW") && !ImportSlot("DrawTextExW");
    }
    int Take() { return TakePages() + glyphs.Take() + metrics.Take() + drawnText.Take() + extents.Take(); }
    // Of those that measure 256 characters at a time.
    int TakePages() { return widths.Take(); }

private:
    CallCounter<1, decltype(GetCharWidth32W)> widths{"GetCharWidth32W"};
    CallCounter<2, decltype(GetTextMetricsW)> metrics{"GetTextMetricsW"};
    CallCounter<3, decltype(DrawTextW)> drawnText{"DrawTextW"};
    CallCounter<4, decltype(GetTextExtentPoint32W)> extents{"GetTextExtentPoint32W"};
    CallCounter<5, decltype(GetGlyphIndicesW)> glyphs{"GetGlyphIndicesW"};
};

int allocations = 0;

int CountAllocations(const std::function<void()>& action) {
    allocations = 0;
    Heap::SetFailureHook([] {
        ++allocations;
        return false;
    });
    action();
    Heap::SetFailureHook(nullptr);
    return allocations;
}

class WarmViewTest : public TextViewTest {
protected:
    // Long enough to scroll, with everything that a row can show, and painted once.
    void Warm() {
        UseSettings(u"ShowWhitespace=1\nIndentGuide=1\nColumnGuide=40\nBookmarkColor=#00ff00");
        std::u16string text;
        for (int i = 0; i < 200; ++i) text += u"\t\tint x = 12; // \u00E9 \"s\"\n/* (a) */ if (x) \"t\"\n";
        Show(text, u"cpp");
        FocusView();
        Editor().ToggleBookmark(3);
        Editor().SelectRange({5, 60});
        Paint();
    }
    void Press(uint32_t key) { SendMessageW(Window(), WM_KEYDOWN, key, 1); }
    void PaintNow() {
        InvalidateRect(Window(), nullptr, TRUE);
        UpdateWindow(Window());
    }
    RECT ToBePainted() {
        RECT area = {};
        GetUpdateRect(Window(), &area, FALSE);
        return area;
    }
};

TEST_F(WarmViewTest, APaintMeasuresNothing) {
    Warm();
    MeasuringCalls calls;
    ASSERT_TRUE(calls.AreKnown());
    PaintNow();
    EXPECT_EQ(calls.Take(), 0);
}

TEST_F(WarmViewTest, ACaretMoveMeasuresNothing) {
    Warm();
    MeasuringCalls calls;
    ASSERT_TRUE(calls.AreKnown());
    for (const uint32_t key : {ViewKey::Right, ViewKey::Down, ViewKey::End, ViewKey::PageDown, ViewKey::Left,
                               ViewKey::Up, ViewKey::Home, ViewKey::PageUp}) {
        Press(key);
        UpdateWindow(Window());
        EXPECT_EQ(calls.Take(), 0) << "key " << key;
    }
}

TEST_F(WarmViewTest, AClickMeasuresNothing) {
    Warm();
    MeasuringCalls calls;
    const LPARAM point = MAKELPARAM(TextLeft() + 50, 3 * LineHeight());
    SendMessageW(Window(), WM_LBUTTONDOWN, MK_LBUTTON, point);
    SendMessageW(Window(), WM_LBUTTONUP, 0, point);
    EXPECT_EQ(Editor().CaretLine(), 3u);
    EXPECT_EQ(calls.Take(), 0);
}

// The proof that the counters count.
TEST_F(WarmViewTest, CharactersOfAnotherPageAreMeasuredOnce) {
    Warm();
    MeasuringCalls calls;
    const std::u16string greek = u"\u03B1\u03B2";
    EXPECT_TRUE((*document)->InsertText(0, greek.data(), 2));
    PaintNow();
    EXPECT_EQ(calls.TakePages(), 1);
    calls.Take();
    PaintNow();
    EXPECT_EQ(calls.Take(), 0);
}

TEST_F(WarmViewTest, APaintAllocatesNothing) {
    Warm();
    EXPECT_EQ(CountAllocations([&] { PaintNow(); }), 0);
    // Another place of the text needs no more either.
    Editor().SetTopLine(50);
    PaintNow();
    EXPECT_EQ(CountAllocations([&] {
                  Editor().SetTopLine(51);
                  PaintNow();
              }),
              0);
    const RECT strip = {0, 40, WindowWidth, 45};
    EXPECT_EQ(CountAllocations([&] {
                  InvalidateRect(Window(), &strip, TRUE);
                  UpdateWindow(Window());
              }),
              0);
}

TEST_F(WarmViewTest, ScrollBarsAreSetOnlyWhenAValueChanged) {
    Warm();
    CallCounter<0, decltype(SetScrollInfo)> sets("SetScrollInfo");
    ASSERT_TRUE(sets.IsImported());
    for (const uint32_t key : {ViewKey::Right, ViewKey::Down, ViewKey::End, ViewKey::Home, ViewKey::Up}) Press(key);
    SendMessageW(Window(), WM_CHAR, L'x', 1);
    PaintNow();
    SendMessageW(Window(), WM_SIZE, SIZE_RESTORED, 0);
    EXPECT_EQ(sets.Take(), 0);
    SendMessageW(Window(), WM_VSCROLL, SB_LINEDOWN, 0);
    EXPECT_EQ(sets.Take(), 1);
    SendMessageW(Window(), WM_HSCROLL, SB_LINERIGHT, 0);
    EXPECT_EQ(sets.Take(), 1);
    SendMessageW(Window(), WM_HSCROLL, SB_LINELEFT, 0);
    SendMessageW(Window(), WM_VSCROLL, SB_LINEUP, 0);
    EXPECT_EQ(sets.Take(), 2);
    EXPECT_TRUE((*document)->InsertText(0, u"\n", 1)); // one line more
    EXPECT_EQ(sets.Take(), 1);
}

TEST_F(WarmViewTest, ATypedCharacterRepaintsItsLineOnly) {
    Warm();
    Editor().MoveCaret({4, 0}, false);
    UpdateWindow(Window());
    SendMessageW(Window(), WM_CHAR, L'x', 1);
    const RECT area = ToBePainted();
    EXPECT_EQ(area.top, 4 * LineHeight());
    EXPECT_EQ(area.bottom, 5 * LineHeight());
}

TEST_F(WarmViewTest, ScrollingByALineRepaintsWhatComesIn) {
    Warm();
    RECT client = {};
    GetClientRect(Window(), &client);
    SendMessageW(Window(), WM_VSCROLL, SB_LINEDOWN, 0);
    RECT area = ToBePainted();
    EXPECT_EQ(area.top, client.bottom - LineHeight());
    EXPECT_EQ(area.bottom, client.bottom);
    UpdateWindow(Window());
    SendMessageW(Window(), WM_VSCROLL, SB_LINEUP, 0);
    area = ToBePainted();
    EXPECT_EQ(area.top, 0);
    EXPECT_EQ(area.bottom, LineHeight());
    UpdateWindow(Window());
    // What was moved is what a full paint shows.
    view->HideCaret();
    const Picture moved(Window());
    EXPECT_EQ(Paint(), moved);
}

TEST_F(WarmViewTest, AMoveOfTheCaretAlonePaintsNothing) {
    Warm();
    Editor().MoveCaret({6, 0}, false);
    UpdateWindow(Window());
    Press(ViewKey::Down);
    EXPECT_FALSE(GetUpdateRect(Window(), nullptr, FALSE));
}

} // namespace
