#include "CallCounter.h"
#include "TextViewTest.h"

#include <algorithm>

namespace {

using PaintTest = TextViewTest;

constexpr Colour Red = Rgb(255, 0, 0);
constexpr Colour White = Rgb(255, 255, 255);
constexpr Colour Black = Rgb(0, 0, 0);
constexpr Colour MarginGrey = Rgb(0xdc, 0xdc, 0xdc);

TEST_F(PaintTest, TextHasTextColours) {
    UseSettings(u"TextFg=#0000ff\nTextBg=#ffffc0");
    Show(u"HHHH");
    const Picture picture = Paint();
    EXPECT_TRUE(picture.Has(Rgb(0, 0, 255), ColumnX(0), 0, ColumnX(4), LineHeight()));
    EXPECT_TRUE(picture.IsAll(Rgb(255, 255, 0xc0), ColumnX(4), 0, ColumnX(20), LineHeight()));
}

TEST_F(PaintTest, EveryColourClassOfTheEngineShows) {
    UseSettings(u"KeywordFg=#010203\nStringFg=#040506\nNumberFg=#070809\nCommentFg=#0a0b0c\nCommentBg=#f0f1f2");
    Show(u"int \"HH\" 11 // HH", u"cpp");
    const Picture picture = Paint();
    EXPECT_TRUE(picture.Has(Rgb(1, 2, 3), ColumnX(0), 0, ColumnX(3), LineHeight()));
    EXPECT_TRUE(picture.Has(Rgb(4, 5, 6), ColumnX(4), 0, ColumnX(8), LineHeight()));
    EXPECT_TRUE(picture.Has(Rgb(7, 8, 9), ColumnX(9), 0, ColumnX(11), LineHeight()));
    EXPECT_TRUE(picture.Has(Rgb(10, 11, 12), ColumnX(12), 0, ColumnX(17), LineHeight()));
    // The comment's fill reaches the right edge.
    EXPECT_EQ(picture.At(picture.width - 1, LineHeight() / 2), Rgb(0xf0, 0xf1, 0xf2));
}

TEST_F(PaintTest, RestOfALineWithoutFillIsTextBackground) {
    UseSettings(u"TextBg=#102030");
    Show(u"x");
    EXPECT_EQ(Paint().At(WindowWidth - 40, 1), Rgb(0x10, 0x20, 0x30));
}

TEST_F(PaintTest, SelectionCutsTheRunsAndShowsTheLineEndAsOneCell) {
    UseSettings(u"SelFg=#ff0000\nSelBg=#00ff00");
    Show(u"HHHH\nHH");
    Editor().SelectRange({2, 5});
    const Picture picture = Paint();
    const Colour green = Rgb(0, 255, 0);
    EXPECT_FALSE(picture.Has(green, ColumnX(0), 0, ColumnX(2), LineHeight()));
    EXPECT_TRUE(picture.Has(green, ColumnX(2), 0, ColumnX(4), LineHeight()));
    EXPECT_TRUE(picture.Has(Red, ColumnX(2), 0, ColumnX(4), LineHeight()));
    // The cell after the last character represents the line feed.
    EXPECT_TRUE(picture.IsAll(green, ColumnX(4), 0, ColumnX(5), LineHeight()));
    EXPECT_FALSE(picture.Has(green, ColumnX(5), 0, picture.width, LineHeight()));
    EXPECT_FALSE(picture.Has(green, 0, LineHeight(), picture.width, 2 * LineHeight()));
}

TEST_F(PaintTest, LineNumbersAreRightAlignedInTheGutter) {
    UseSettings(u"LineNumFg=#ff0000\nLineNumBg=#00ff00");
    Show(u"a\nb");
    const Picture picture = Paint();
    EXPECT_EQ(Gutter(), 7 * Average());
    EXPECT_TRUE(picture.IsAll(Rgb(0, 255, 0), 0, 0, 6 * Average(), LineHeight()));
    EXPECT_TRUE(picture.Has(Red, 6 * Average(), 0, 7 * Average(), LineHeight()));
    EXPECT_TRUE(picture.Has(Red, 6 * Average(), LineHeight(), 7 * Average(), 2 * LineHeight()));
}

TEST_F(PaintTest, WithoutLineNumbersThereIsNoGutter) {
    UseSettings(u"ShowLineNumbers=0");
    Show(u"a");
    EXPECT_EQ(Gutter(), 0);
    EXPECT_TRUE(Paint().IsAll(MarginGrey, 0, 0, 20, LineHeight()));
}

TEST_F(PaintTest, RowsBelowTheLastLineHaveNoNumberButMarginAndColumnGuide) {
    UseSettings(u"TextBg=#ffffc0\nMarginColor=#dcdcdc\nGuideColor=#000000\nColumnGuide=20");
    Show(u"a");
    const Picture picture = Paint();
    const int top = 3 * LineHeight();
    EXPECT_TRUE(picture.IsAll(Rgb(255, 255, 0xc0), 0, top, Gutter(), top + LineHeight()));
    EXPECT_TRUE(picture.IsAll(MarginGrey, Gutter(), top, TextLeft(), top + LineHeight()));
    EXPECT_TRUE(picture.Has(Black, ColumnX(20), top, ColumnX(20) + 1, top + LineHeight()));
}

TEST_F(PaintTest, ColumnGuideIsDottedAndCanBeSwitchedOff) {
    UseSettings(u"GuideColor=#ff0000\nColumnGuide=10");
    Show(u"");
    const int dots = Paint().Count(Red, ColumnX(10), 0, ColumnX(10) + 1, LineHeight());
    EXPECT_GT(dots, LineHeight() / 3);
    EXPECT_LT(dots, LineHeight());
    UseSettings(u"GuideColor=#ff0000\nColumnGuide=0");
    EXPECT_FALSE(Paint().Has(Red, 0, 0, WindowWidth - 30, WindowHeight - 30));
}

TEST_F(PaintTest, BookmarkedLinesShowInTheMargin) {
    UseSettings(u"BookmarkColor=#00ffff");
    Show(u"a\nb\nc");
    Editor().ToggleBookmark(1);
    const Picture picture = Paint();
    const Colour cyan = Rgb(0, 255, 255);
    EXPECT_FALSE(picture.Has(cyan, 0, 0, picture.width, LineHeight()));
    EXPECT_EQ(picture.At(Gutter() + 10, LineHeight() + LineHeight() / 2), cyan);
    EXPECT_FALSE(picture.Has(cyan, 0, 2 * LineHeight(), picture.width, 3 * LineHeight()));
    // The corners are round: the margin shows there.
    EXPECT_EQ(picture.At(Gutter(), LineHeight()), MarginGrey);
}

// "With ShowWhitespace off a tab draws as plain background; on, as an arrow at most 12 pixels long."
TEST_F(PaintTest, TabsShowAsArrowsWhenWhitespaceIsShown) {
    UseSettings(u"SpaceColor=#ff0000\nShowWhitespace=0");
    Show(u"\tx");
    EXPECT_FALSE(Paint().Has(Red, ColumnX(0), 0, ColumnX(4), LineHeight()));
    UseSettings(u"SpaceColor=#ff0000\nShowWhitespace=1");
    const Picture picture = Paint();
    EXPECT_TRUE(picture.Has(Red, ColumnX(0), LineHeight() / 2, ColumnX(0) + 12, LineHeight() / 2 + 1));
    EXPECT_FALSE(picture.Has(Red, ColumnX(0) + 13, 0, ColumnX(4), LineHeight()));
}

TEST_F(PaintTest, SpacesShowAsDotsWhenWhitespaceIsShown) {
    UseSettings(u"SpaceColor=#ff0000\nShowWhitespace=1");
    Show(u"  ");
    const Picture picture = Paint();
    EXPECT_EQ(picture.Count(Red, ColumnX(0), 0, ColumnX(1), LineHeight()), 4);
    EXPECT_EQ(picture.Count(Red, ColumnX(1), 0, ColumnX(2), LineHeight()), 4);
    const int x = ColumnX(0) + (DrawingObjects::SpaceWidth() - 2) / 2;
    const int y = (LineHeight() - 2) / 2;
    EXPECT_TRUE(picture.IsAll(Red, x, y, x + 2, y + 2));
}

// "A tab after 3 characters with SpacesPerTab 4 is one space wide; right after 4 characters it is 4 wide."
TEST_F(PaintTest, TabsReachToTheNextStop) {
    UseSettings(u"SelBg=#00ff00\nSpacesPerTab=4");
    Show(u"HHH\tH\nHHHH\tH");
    Editor().SelectRange({3, 4});
    const Colour green = Rgb(0, 255, 0);
    const Picture shortTab = Paint();
    EXPECT_TRUE(shortTab.IsAll(green, ColumnX(3), 0, ColumnX(4), LineHeight()));
    EXPECT_FALSE(shortTab.Has(green, ColumnX(4), 0, ColumnX(9), LineHeight()));
    Editor().SelectRange({10, 11});
    const Picture longTab = Paint();
    EXPECT_TRUE(longTab.IsAll(green, ColumnX(4), LineHeight(), ColumnX(8), 2 * LineHeight()));
    EXPECT_FALSE(longTab.Has(green, ColumnX(8), LineHeight(), ColumnX(12), 2 * LineHeight()));
}

// "With IndentGuide on, a line indented by exactly one tab shows no guide; by two tabs, one guide."
TEST_F(PaintTest, GuidesAreAtLevelsFollowedByIndentation) {
    UseSettings(u"GuideColor=#ff0000\nColumnGuide=0\nSpacesPerTab=4\nIndentGuide=1");
    Show(u"\tx\n\t\tx\n\t\t\tx");
    const Picture picture = Paint();
    const int middle = Average() / 2;
    EXPECT_FALSE(picture.Has(Red, TextLeft(), 0, picture.width, LineHeight()));
    EXPECT_TRUE(picture.Has(Red, ColumnX(4) + middle, LineHeight(), ColumnX(4) + middle + 1, 2 * LineHeight()));
    EXPECT_FALSE(picture.Has(Red, ColumnX(8), LineHeight(), ColumnX(12), 2 * LineHeight()));
    EXPECT_TRUE(picture.Has(Red, ColumnX(8) + middle, 2 * LineHeight(), ColumnX(8) + middle + 1, 3 * LineHeight()));
    UseSettings(u"GuideColor=#ff0000\nColumnGuide=0\nIndentGuide=0");
    EXPECT_FALSE(Paint().Has(Red, 0, 0, WindowWidth - 30, WindowHeight - 30));
}

TEST_F(PaintTest, MatchingBracketsAreHighlightedAndCleared) {
    UseSettings(u"BraceMatchBg=#ffff00");
    Show(u"(a[b)c]", u"cpp");
    SetForegroundWindow(frame);
    SetFocus(view->GetWindow());
    ASSERT_EQ(GetFocus(), view->GetWindow());
    Editor().MoveCaret({0, 1}, false);
    const Colour yellow = Rgb(255, 255, 0);
    EXPECT_FALSE(Paint().Has(yellow, 0, 0, WindowWidth - 30, LineHeight()));
    Editor().MoveCaret({0, 0}, false);
    const Picture matched = Paint();
    EXPECT_TRUE(matched.Has(yellow, ColumnX(0), 0, ColumnX(1), LineHeight()));
    EXPECT_TRUE(matched.Has(yellow, ColumnX(4), 0, ColumnX(5), LineHeight()));
    EXPECT_FALSE(matched.Has(yellow, ColumnX(5), 0, ColumnX(9), LineHeight()));
    Editor().MoveCaret({0, 7}, false);
    EXPECT_TRUE(Paint().Has(yellow, ColumnX(2), 0, ColumnX(3), LineHeight())); // "]" right before the caret
}

// Everything but the guides is drawn alike, whether through the back buffer or straight.
TEST_F(PaintTest, BothSurfacesGiveTheSamePicture) {
    const std::u16string text = u"int a; // c\n\t\tif (x) \"s\"\n/* long\ncomment */ 12\n";
    UseSettings(u"RenderType=0\nIndentGuide=0\nShowWhitespace=1");
    Show(text, u"cpp");
    Editor().ToggleBookmark(2);
    Editor().SelectRange({4, 20});
    const Picture buffered = Paint();
    UseSettings(u"RenderType=2\nIndentGuide=0\nShowWhitespace=1");
    EXPECT_EQ(Paint(), buffered);
    UseSettings(u"RenderType=1\nIndentGuide=0\nShowWhitespace=1");
    EXPECT_EQ(Paint(), buffered);
    UseSettings(u"RenderType=77\nIndentGuide=0\nShowWhitespace=1");
    EXPECT_EQ(Paint(), buffered);
}

// "RenderType 2 paints straight to the window, and its indentation guides stay on the top row."
TEST_F(PaintTest, DrawnStraightTheGuidesStayOnTheTopRow) {
    UseSettings(u"RenderType=2\nGuideColor=#ff0000\nColumnGuide=0\nIndentGuide=1");
    Show(u"x\nx\n\t\tx");
    const Picture picture = Paint();
    const int x = ColumnX(4) + Average() / 2;
    EXPECT_TRUE(picture.Has(Red, x, 0, x + 1, LineHeight()));
    EXPECT_FALSE(picture.Has(Red, 0, LineHeight(), picture.width, picture.height));
}

TEST_F(PaintTest, ScrolledTextIsCutAtTheMarginAndNotDrawnOverIt) {
    UseSettings(u"TextFg=#ff0000");
    Show(std::u16string(500, u'H'));
    Editor().Viewport().SetHorizontalScroll(Average() / 2 + 3 * Average());
    const Picture picture = Paint();
    EXPECT_TRUE(picture.IsAll(MarginGrey, Gutter(), 0, TextLeft(), LineHeight()));
    EXPECT_FALSE(picture.Has(Red, 0, 0, TextLeft(), LineHeight()));
    EXPECT_TRUE(picture.Has(Red, TextLeft(), 0, TextLeft() + Average(), LineHeight()));
}

// A line that is open for editing is painted as edited; the lines after it in their own colours.
TEST_F(PaintTest, LineBeingEditedIsPaintedAsEdited) {
    UseSettings(u"KeywordFg=#ff0000");
    Show(u"\nint", u"cpp");
    SetForegroundWindow(frame);
    SetFocus(view->GetWindow());
    for (const Char c : std::u16string(u"int")) SendMessageW(view->GetWindow(), WM_CHAR, c, 1);
    ASSERT_TRUE((*document)->HasPendingEdit());
    const Picture picture = Paint();
    EXPECT_TRUE(picture.Has(Red, ColumnX(0), 0, ColumnX(3), LineHeight()));
    EXPECT_TRUE(picture.Has(Red, ColumnX(0), LineHeight(), ColumnX(3), 2 * LineHeight()));
}

TEST_F(PaintTest, PartialRepaintLeavesTheSamePictureAsAFullOne) {
    UseSettings(u"");
    Show(u"int a;\n/* b\nc */ d\nint e;\n", u"cpp");
    const Picture full = Paint();
    for (int y = 0; y < 5 * LineHeight(); y += 7) {
        const RECT strip = {0, y, WindowWidth, y + 5};
        InvalidateRect(view->GetWindow(), &strip, TRUE);
        UpdateWindow(view->GetWindow());
    }
    EXPECT_EQ(Picture(view->GetWindow()), full);
}

// Settings that nothing rejects when they are read.
TEST_F(PaintTest, AbsurdSettingsStillShowTheText) {
    Show(u"HHH\n\tH");
    for (const char16_t* lines : {u"SpacesPerTab=0", u"FontSize=0", u"FontSize=1", u"ColumnGuide=4294967295",
                                  u"CaretWidth=4294967295", u"FontName=No Such Font 42", u"FontName=",
                                  u"RenderType=4294967295", u"MarginWidth=0", u"VarWidthLineNumbers=4294967295"}) {
        SCOPED_TRACE(::testing::PrintToString(std::u16string(lines)));
        UseSettings(std::u16string(lines) + u"\nTextFg=#ff0000");
        const Picture picture = Paint();
        EXPECT_TRUE(picture.Has(Red, TextLeft(), 0, picture.width, LineHeight()));
        EXPECT_TRUE(picture.Has(Red, TextLeft(), LineHeight(), picture.width, 2 * LineHeight()));
        EXPECT_FALSE(picture.Has(Red, 0, 0, TextLeft(), picture.height));
    }
}

TEST_F(PaintTest, AFontLargerThanTheWindowShowsItsBackground) {
    Show(u"HHH");
    UseSettings(u"FontSize=4294967295\nShowLineNumbers=0\nTextBg=#ffffc0\nColumnGuide=0");
    const Picture picture = Paint();
    EXPECT_GE(LineHeight(), 1);
    EXPECT_TRUE(picture.IsAll(MarginGrey, 0, 0, TextLeft(), picture.height));
    EXPECT_TRUE(picture.Has(Rgb(255, 255, 0xc0), TextLeft(), 0, picture.width, picture.height));
}

TEST_F(PaintTest, ATabWithoutSpacesIsOneSpaceWide) {
    UseSettings(u"SpacesPerTab=0\nTextFg=#ff0000");
    Show(u"\t\tHH");
    const Picture picture = Paint();
    EXPECT_FALSE(picture.Has(Red, ColumnX(0), 0, ColumnX(2), LineHeight()));
    EXPECT_TRUE(picture.Has(Red, ColumnX(2), 0, ColumnX(4), LineHeight()));
}

TEST_F(PaintTest, AnEndlessTabLeavesTheRowToItsBackground) {
    UseSettings(u"SpacesPerTab=4294967295\nTextFg=#ff0000\nColumnGuide=0");
    Show(u"\tHH\nHH");
    const Picture picture = Paint();
    EXPECT_TRUE(picture.IsAll(White, TextLeft(), 0, picture.width, LineHeight()));
    EXPECT_TRUE(picture.Has(Red, ColumnX(0), LineHeight(), ColumnX(2), 2 * LineHeight()));
}

TEST_F(PaintTest, AMarginWiderThanTheWindowCoversIt) {
    for (const char16_t* lines : {u"MarginWidth=5000", u"MarginWidth=4294967295"}) {
        UseSettings(lines);
        Show(u"HHH\nH");
        const Picture picture = Paint();
        EXPECT_TRUE(picture.IsAll(MarginGrey, Gutter(), 0, picture.width, picture.height));
        Editor().MoveCaret({0, 3}, false);
        EXPECT_TRUE(Paint() == picture);
    }
}

TEST_F(PaintTest, OddCharactersAndLongLinesArePainted) {
    std::u16string text = std::u16string(100000, u'\t') + u"x\n";
    text += std::u16string(u"a\xD800z\xDC00\x0001\x001F\x007F\n");
    text += std::u16string(10000000, u'W') + u"\n";
    text += std::u16string(u"HH\0HH\nHHHH", 10);
    UseSettings(u"TextFg=#ff0000\nIndentGuide=0");
    Show(text, u"cpp");
    const Picture picture = Paint();
    EXPECT_TRUE(picture.Has(Red, ColumnX(0), LineHeight(), ColumnX(3), 2 * LineHeight()));
    EXPECT_TRUE(picture.Has(Red, picture.width - 40, 2 * LineHeight(), picture.width, 3 * LineHeight()));
    EXPECT_TRUE(picture.IsAll(White, TextLeft(), 0, ColumnX(40), LineHeight()));
    // A NUL ends what is seen of its line, and nothing else.
    EXPECT_TRUE(picture.Has(Red, ColumnX(0), 3 * LineHeight(), ColumnX(2), 4 * LineHeight()));
    EXPECT_FALSE(picture.Has(Red, ColumnX(2), 3 * LineHeight(), picture.width, 4 * LineHeight()));
    EXPECT_TRUE(picture.Has(Red, ColumnX(2), 4 * LineHeight(), ColumnX(4), 5 * LineHeight()));
}

// A key at the end of a line that is far longer than the window.
TEST_F(PaintTest, ALongLineIsEditedAtItsEnd) {
    UseSettings(u"TextFg=#ff0000\nColumnGuide=0");
    Show(std::u16string(10000000, u'W'));
    SetForegroundWindow(frame);
    SetFocus(view->GetWindow());
    SendMessageW(view->GetWindow(), WM_KEYDOWN, VK_END, 1);
    const Picture before = Paint();
    EXPECT_TRUE(before.Has(Red, TextLeft(), 0, TextLeft() + 40, LineHeight()));
    SendMessageW(view->GetWindow(), WM_CHAR, L' ', 1);
    EXPECT_EQ(Editor().CaretColumn(), 10000001u);
    // The text has moved by a cell, so that a blank is where the caret is.
    const Picture after = Paint();
    EXPECT_FALSE(after == before);
    EXPECT_TRUE(after.Has(Red, TextLeft(), 0, TextLeft() + 40, LineHeight()));
}

// The text-outs of a paint that draw characters.
struct TextCall {
    UINT options;
    int x;
    std::wstring text;
};
std::vector<TextCall> textCalls;
decltype(&ExtTextOutW) drawText = nullptr;

BOOL WINAPI TakeText(HDC dc, int x, int y, UINT options, const RECT* area, LPCWSTR text, UINT count,
                     const INT* advances) {
    if (count) textCalls.push_back({options, x, {text, count}});
    return drawText(dc, x, y, options, area, text, count, advances);
}

class PaintCallTest : public TextViewTest {
protected:
    std::vector<TextCall> Calls() {
        const ReplacedImport import("ExtTextOutW", reinterpret_cast<void*>(TakeText));
        EXPECT_TRUE(import.IsImported());
        drawText = reinterpret_cast<decltype(&ExtTextOutW)>(import.Original());
        textCalls.clear();
        Paint();
        return textCalls;
    }
    // The pixels of a cell of the first row.
    std::vector<Colour> Cell(const Picture& picture, int column) const {
        std::vector<Colour> pixels;
        for (int y = 0; y < LineHeight(); ++y)
            for (int x = ColumnX(column); x < ColumnX(column + 1); ++x) pixels.push_back(picture.At(x, y));
        return pixels;
    }
};

TEST_F(PaintCallTest, NumbersKeepLatinDigits) {
    UseSettings(u"ShowLineNumbers=1");
    Show(u"123");
    int drawn = 0;
    for (const TextCall& call : Calls()) {
        EXPECT_TRUE(call.options & ETO_NUMERICSLATIN);
        drawn += call.text == L"      1" || call.text == L"123";
    }
    EXPECT_EQ(drawn, 2);
}

TEST_F(PaintCallTest, RightToLeftLettersAreDrawnWhereTheCaretLooksForThem) {
    UseSettings(u"ShowLineNumbers=0");
    Show(u"a\u05D0\u05D1\u0627b\u05D2c");
    std::wstring drawn;
    for (const TextCall& call : Calls()) {
        const auto letters =
            std::count_if(call.text.begin(), call.text.end(), [](wchar_t c) { return c >= 0x590 && c < 0x900; });
        EXPECT_LE(letters, 1);
        EXPECT_TRUE(letters == 0 || call.text.size() == 1);
        Editor().MoveCaret({0, static_cast<uint32_t>(drawn.size())}, false);
        EXPECT_EQ(call.x, TextLeft() + Editor().Viewport().CaretX(Editor().Caret()));
        drawn += call.text;
    }
    EXPECT_EQ(drawn, L"a\u05D0\u05D1\u0627b\u05D2c");
}

TEST_F(PaintCallTest, ControlsThatReorderTextShowAndAreNotObeyed) {
    UseSettings(u"ShowLineNumbers=0\nTextFg=#ff0000\nTextBg=#ffffff");
    Show(u"abc");
    const Picture plain = Paint();
    Show(u"\u202Eabc\u202C");
    const Picture marked = Paint();
    for (int column = 0; column < 3; ++column) EXPECT_EQ(Cell(marked, column + 1), Cell(plain, column)) << column;
    for (const int column : {0, 4}) {
        // Reversed, a cell has more of the text's colour than of the background's.
        EXPECT_GT(marked.Count(Red, ColumnX(column), 0, ColumnX(column + 1), LineHeight()),
                  Average() * LineHeight() / 2);
        EXPECT_TRUE(marked.Has(White, ColumnX(column), 0, ColumnX(column + 1), LineHeight()));
    }
}

} // namespace
