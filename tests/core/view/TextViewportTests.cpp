#include "view/TextViewport.h"

#include "settings/IniFile.h"
#include "settings/Settings.h"
#include "support/TestView.h"
#include "support/TextDocument.h"
#include "view/ShownText.h"
#include "view/TextCaret.h"

#include <gtest/gtest.h>

namespace {

// 100 lines of 200 characters in a window of 10 lines and 20 columns of 8 x 16 pixels, without gutter or margin.
class TextViewportTest : public ::testing::Test {
protected:
    TextViewportTest() {
        LoadSettings(IniFile());
        settings.MarginWidth = settings.ShowLineNumbers = 0;
        text.Show(&*document);
        surface.SetSize(20 * 8, 10 * 16);
        viewport.Reset();
        viewport.Measure();
    }
    ~TextViewportTest() override { ReleaseSettings(); }

    static std::u16string Lines() {
        std::u16string lines;
        for (int i = 0; i < 100; ++i) lines += std::u16string(200, u'x') + u'\n';
        lines.pop_back();
        return lines;
    }
    void Reveal(TextPosition place) {
        caret.MoveTo(text, place, false);
        viewport.ScrollIntoView(caret, viewport.CaretX(caret));
    }

    TextDocument document{Lines()};
    FakeTextSurface surface;
    Redraw redraw{surface};
    ShownText text;
    TextCaret caret;
    TextViewport viewport{surface, surface, text, redraw};
};

TEST_F(TextViewportTest, MeasuresTheWindow) {
    EXPECT_EQ(viewport.VisibleRows(), 10);
    EXPECT_EQ(viewport.VisibleColumns(), 20);
    EXPECT_TRUE(viewport.Rows().Holds(9));
    EXPECT_FALSE(viewport.Rows().Holds(10));
}

TEST_F(TextViewportTest, ScrollsNoFartherThanTheLastLine) {
    viewport.ScrollTo(500);
    EXPECT_EQ(viewport.TopLine(), 99u);
    viewport.SetHorizontalScroll(-5);
    EXPECT_EQ(viewport.HorizontalScroll(), 0);
}

TEST_F(TextViewportTest, AShortWayMovesThePictureAFarOneIsPaintedAgain) {
    viewport.ScrollTo(3);
    EXPECT_EQ(surface.scrolls, std::vector<int32_t>{-48});
    EXPECT_EQ(surface.allInvalidations, 0);
    viewport.ScrollTo(50);
    EXPECT_EQ(surface.scrolls.size(), 1u);
    EXPECT_EQ(surface.allInvalidations, 1);
}

TEST_F(TextViewportTest, WhileRedrawIsSuspendedNoPictureIsMoved) {
    redraw.Suspend();
    viewport.ScrollTo(3);
    EXPECT_TRUE(surface.scrolls.empty());
    EXPECT_EQ(viewport.TopLine(), 3u);
}

TEST_F(TextViewportTest, TheCaretIsScrolledIntoView) {
    Reveal({12, 0});
    EXPECT_EQ(viewport.TopLine(), 3u);
    Reveal({2, 0});
    EXPECT_EQ(viewport.TopLine(), 2u);
    Reveal({2, 30});
    EXPECT_EQ(viewport.HorizontalScroll(), 30 * 8 - 19 * 8); // a column is left free
    Reveal({2, 5});
    EXPECT_EQ(viewport.HorizontalScroll(), 0); // all the way back
}

TEST_F(TextViewportTest, APointIsAPlaceOfTheText) {
    viewport.ScrollTo(5);
    EXPECT_EQ(viewport.PositionAt({0, 0}), (TextPosition{5, 0}));
    EXPECT_EQ(viewport.PositionAt({27, 33}), (TextPosition{7, 3}));
    EXPECT_EQ(viewport.PositionAt({29, 33}), (TextPosition{7, 4})); // the right half of a character
    EXPECT_EQ(viewport.PositionAt({0, -16}), (TextPosition{4, 0}));
    EXPECT_EQ(viewport.PositionAt({0, -1000}), (TextPosition{0, 0}));
}

TEST_F(TextViewportTest, ThePointOfACaretIsItsPlace) {
    caret.MoveTo(text, {3, 4}, false);
    viewport.ShowCaret(caret, viewport.CaretX(caret));
    EXPECT_EQ(surface.caretX, 32);
    EXPECT_EQ(surface.caretY, 48);
    viewport.SetHorizontalScroll(40);
    viewport.ShowCaret(caret, viewport.CaretX(caret));
    EXPECT_FALSE(surface.caretShown); // left of the text area
}

TEST_F(TextViewportTest, TheGutterFollowsTheNumberOfLines) {
    settings.ShowLineNumbers = settings.VarWidthLineNumbers = 1;
    viewport.Measure();
    EXPECT_EQ(viewport.GutterWidth(), 4 * 8);
    EXPECT_FALSE(viewport.UpdateGutter());
    ASSERT_TRUE(document->DeleteText({0, 201 * 50}));
    EXPECT_TRUE(viewport.UpdateGutter());
    EXPECT_EQ(viewport.GutterWidth(), 3 * 8);
}

TEST_F(TextViewportTest, TheBarsSayWhatIsShown) {
    viewport.ScrollTo(7);
    viewport.SetHorizontalScroll(24);
    viewport.UpdateScrollBars();
    EXPECT_EQ(surface.bars[0], (ScrollBar{100, 10, 7}));
    EXPECT_EQ(surface.bars[1], (ScrollBar{16384, 160, 24}));
}

} // namespace
