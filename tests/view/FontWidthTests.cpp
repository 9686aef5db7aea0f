// Widths of characters, those that the font lacks included.
#include "CallCounter.h"
#include "TextViewTest.h"

namespace {

// What the system says of a page of characters: that the font lacks those from U+4E80 on.
constexpr wchar_t FirstMissing = 0x4E80;
constexpr LONG LinkedWidth = 37;

DWORD WINAPI LackUpperHalf(HDC, LPCWSTR text, int count, LPWORD glyphs, DWORD flags) {
    for (int i = 0; i < count; ++i)
        glyphs[i] = text[i] >= FirstMissing && flags == GGI_MARK_NONEXISTING_GLYPHS ? 0xFFFF : 7;
    return static_cast<DWORD>(count);
}

BOOL WINAPI MeasureLinked(HDC, LPCWSTR text, int count, LPSIZE size) {
    if (*text == FirstMissing + 1) return FALSE;
    *size = {LinkedWidth * count, 10};
    return TRUE;
}

BOOL WINAPI MeasureNothing(HDC, LPCWSTR, int, LPSIZE) { return FALSE; }

DWORD WINAPI KnowNothing(HDC, LPCWSTR, int, LPWORD, DWORD) { return GDI_ERROR; }

BOOL WINAPI NineWide(HDC, UINT first, UINT last, LPINT widths) {
    std::fill_n(widths, last - first + 1, 9);
    return TRUE;
}

class FontWidthTest : public TextViewTest {
protected:
    void SetUp() override {
        ASSERT_NO_FATAL_FAILURE(TextViewTest::SetUp());
        ASSERT_TRUE(glyphs.IsImported() && extents.IsImported() && pages.IsImported());
        ViewFont::Refresh();
    }

    const ReplacedImport glyphs{"GetGlyphIndicesW", reinterpret_cast<void*>(LackUpperHalf)};
    const ReplacedImport extents{"GetTextExtentPoint32W", reinterpret_cast<void*>(MeasureLinked)};
    const ReplacedImport pages{"GetCharWidth32W", reinterpret_cast<void*>(NineWide)};
};

} // namespace

TEST_F(FontWidthTest, WhatTheFontLacksIsAsWideAsItIsDrawn) {
    CharWidths& widths = ViewFont::Widths();
    EXPECT_EQ(widths.Of(u'a'), 9);
    EXPECT_EQ(widths.Of(FirstMissing - 1), 9);
    EXPECT_EQ(widths.Of(FirstMissing), LinkedWidth);
    EXPECT_EQ(widths.Of(FirstMissing + 0x7F), LinkedWidth);
}

TEST_F(FontWidthTest, WhatCannotBeMeasuredHasTheFontsWidth) {
    EXPECT_EQ(ViewFont::Widths().Of(FirstMissing + 1), 9);
    const ReplacedImport unknown{"GetGlyphIndicesW", reinterpret_cast<void*>(KnowNothing)};
    ViewFont::Refresh();
    EXPECT_EQ(ViewFont::Widths().Of(FirstMissing), 9);
}

TEST_F(FontWidthTest, APairOfSurrogatesIsMeasuredAsOneCharacter) {
    EXPECT_EQ(ViewFont::Widths().OfPair(0xD83D, 0xDE00), 2 * LinkedWidth) << "by the two code units in one call";
    Show(u"a\U0001F600b");
    Editor().MoveCaret({0, 3}, false);
    EXPECT_EQ(Editor().Viewport().CaretX(Editor().Caret()), 9 + 2 * LinkedWidth);
    const ReplacedImport unknown{"GetTextExtentPoint32W", reinterpret_cast<void*>(MeasureNothing)};
    ViewFont::Refresh();
    EXPECT_EQ(ViewFont::Widths().OfPair(0xD83D, 0xDE00), Average());
}

TEST_F(FontWidthTest, TheCaretIsAfterWhatIsDrawn) {
    Show(u"a\u4E80b");
    Editor().MoveCaret({0, 2}, false);
    EXPECT_EQ(Editor().Viewport().CaretX(Editor().Caret()), 9 + LinkedWidth);
}
