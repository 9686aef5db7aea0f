// Every colour setting of the text view, where it shows and that it shows nowhere else.
#include "TextViewTest.h"

namespace {

constexpr Colour Marked = Rgb(0x12, 0xC3, 0x47); // no default and no other setting has it
constexpr char16_t MarkedText[] = u"=#12c347";

constexpr int ToTheEdge = 1000;

// A rectangle in columns of the text and in rows; a column below 0 is that many columns into the gutter.
struct Place {
    int left;
    int right;
    int row = 0;
};

struct ColourCase {
    const char16_t* setting;
    const char16_t* text;
    const char16_t* engine;
    Place place;                               // where it shows
    const char16_t* others = u"ColumnGuide=0"; // further settings
};

// Glyph pixels of the H (and other letters) show a foreground, the cells a background.
constexpr ColourCase Cases[] = {
    {u"TextFg", u"HHHH", u"txt", {0, 4}},
    {u"TextBg", u"HHHH", u"txt", {0, 4}},
    {u"CommentFg", u"a // HH", u"cpp", {2, 7}},
    {u"CommentBg", u"a // HH", u"cpp", {2, ToTheEdge}}, // with the rest of the row
    {u"LongCommentFg", u"a /* HH */ b", u"cpp", {2, 10}},
    {u"LongCommentBg", u"a /* HH */ b", u"cpp", {2, 10}},
    {u"LongCommentBg", u"a /* HH", u"cpp", {2, ToTheEdge}},
    {u"StringFg", u"a \"HH\" b", u"cpp", {2, 6}},
    {u"StringBg", u"a \"HH\" b", u"cpp", {2, 6}},
    {u"KeywordFg", u"a int b", u"cpp", {2, 5}},
    {u"KeywordBg", u"a int b", u"cpp", {2, 5}},
    {u"NumberFg", u"a 1234 b", u"cpp", {2, 6}},
    {u"NumberBg", u"a 1234 b", u"cpp", {2, 6}},
    {u"HtmlTagFg", u"a <HH> b", u"html", {2, 6}},
    {u"HtmlTagBg", u"a <HH> b", u"html", {2, 6}},
    {u"HtmlAttrFg", u"<b HHH=x>", u"html", {3, 6}},
    {u"HtmlAttrBg", u"<b HHH=x>", u"html", {3, 6}},
    {u"HtmlPunctFg", u"<b HHH=x>", u"html", {6, 7}},
    {u"HtmlPunctBg", u"<b HHH=x>", u"html", {6, 7}},
    {u"HtmlAttrValueFg", u"<b a=HHH>", u"html", {5, 8}},
    {u"HtmlAttrValueBg", u"<b a=HHH>", u"html", {5, 8}},
    {u"HtmlAttrQuotedValueFg", u"<b a=\"HH\">", u"html", {5, 9}},
    {u"HtmlAttrQuotedValueBg", u"<b a=\"HH\">", u"html", {5, 9}},
    {u"HtmlCommentFg", u"a <!--HH--> b", u"html", {2, 11}},
    {u"HtmlCommentBg", u"a <!--HH--> b", u"html", {2, 11}},
    {u"HtmlCommentBg", u"a <!--HH", u"html", {2, ToTheEdge}},
    {u"LineNumFg", u"a", u"txt", {-7, 0}, u"MarginWidth=0"},
    {u"LineNumBg", u"a", u"txt", {-7, 0}, u"MarginWidth=0"},
    {u"SpaceColor", u"a b", u"txt", {1, 2}, u"ShowWhitespace=1"},
    {u"SpaceColor", u"a\tb", u"txt", {1, 4}, u"ShowWhitespace=1"},
    {u"GuideColor", u"a", u"txt", {10, 11}, u"ColumnGuide=10"},
    {u"GuideColor", u"\t\tb", u"txt", {4, 5}, u"ColumnGuide=0\nIndentGuide=1\nSpacesPerTab=4"},
};

class PaintColourTest : public TextViewTest {
protected:
    // Everything of the row outside the columns; the gutter and the margin belong to its left part.
    bool ShowsElsewhere(const Picture& picture, const Place& place) {
        const int top = place.row * LineHeight();
        return picture.Has(Marked, 0, top, ColumnX(place.left), top + LineHeight()) ||
               picture.Has(Marked, Right(picture, place), top, picture.width, top + LineHeight());
    }
    bool ShowsAt(const Picture& picture, const Place& place) {
        const int top = place.row * LineHeight();
        return picture.Has(Marked, ColumnX(place.left), top, Right(picture, place), top + LineHeight());
    }
    int Right(const Picture& picture, const Place& place) {
        return place.right == ToTheEdge ? picture.width : ColumnX(place.right);
    }
};

TEST_F(PaintColourTest, EveryColourShowsWhereItBelongs) {
    for (const ColourCase& test : Cases) {
        SCOPED_TRACE(::testing::PrintToString(std::u16string(test.setting)) + " " +
                     ::testing::PrintToString(std::u16string(test.text)));
        const std::u16string others = std::u16string(test.others);
        // A background follows TextBg where it is not given; the text's own stays white here.
        const std::u16string setting = std::u16string(test.setting) + MarkedText;
        const bool isTextBg = std::u16string(test.setting) == u"TextBg";
        document.reset();
        UseSettings(others + u"\n" + setting);
        Show(test.text, test.engine);
        const Picture picture = Paint();
        EXPECT_TRUE(ShowsAt(picture, test.place));
        if (!isTextBg) {
            EXPECT_FALSE(ShowsElsewhere(picture, test.place));
        }
        UseSettings(others);
        EXPECT_FALSE(Paint().Has(Marked, 0, 0, picture.width, picture.height));
    }
}

TEST_F(PaintColourTest, TheTextBackgroundFillsTheRestOfRowsAndWhatLiesBelow) {
    UseSettings(u"TextBg=#12c347\nColumnGuide=0");
    Show(u"H");
    const Picture picture = Paint();
    EXPECT_TRUE(picture.IsAll(Marked, ColumnX(1), 0, picture.width, LineHeight()));
    EXPECT_TRUE(picture.IsAll(Marked, 0, LineHeight(), Gutter(), picture.height));
    EXPECT_TRUE(picture.IsAll(Marked, TextLeft(), LineHeight(), picture.width, picture.height));
}

TEST_F(PaintColourTest, SelectionColours) {
    for (const char16_t* setting : {u"SelFg=#12c347\nSelBg=#000001", u"SelBg=#12c347\nSelFg=#000001"}) {
        document.reset();
        UseSettings(setting);
        Show(u"HHHHHH");
        EXPECT_FALSE(ShowsAt(Paint(), {0, 6}));
        Editor().SelectRange({4, 2}); // the caret may be at either end
        const Picture picture = Paint();
        EXPECT_TRUE(ShowsAt(picture, {2, 4}));
        EXPECT_FALSE(ShowsElsewhere(picture, {2, 4}));
    }
}

TEST_F(PaintColourTest, TheSelectionCoversEveryOtherColour) {
    UseSettings(
        u"SelBg=#12c347\nSelFg=#000001\nCommentBg=#ff0000\nKeywordBg=#ff0000\nStringBg=#ff0000\nNumberBg=#ff0000\n"
        u"ShowWhitespace=1\nSpaceColor=#000001");
    const std::u16string text = u"int\t \"s\" 12 // c";
    Show(text, u"cpp");
    Editor().SelectRange({0, static_cast<uint32_t>(text.size())});
    const Picture picture = Paint();
    // 16 characters, of which the tab takes one column up to the stop.
    EXPECT_FALSE(picture.Has(Rgb(255, 0, 0), ColumnX(0), 0, ColumnX(16), LineHeight()));
    EXPECT_TRUE(picture.Has(Marked, ColumnX(0), 0, ColumnX(16), LineHeight()));
    // The fill after a comment is not text and stays as the engine wants it.
    EXPECT_TRUE(picture.IsAll(Rgb(255, 0, 0), ColumnX(18), 0, picture.width, LineHeight()));
}

TEST_F(PaintColourTest, BracketColours) {
    for (const char16_t* setting :
         {u"BraceMatchFg=#12c347\nBraceMatchBg=#000001", u"BraceMatchBg=#12c347\nBraceMatchFg=#000001"}) {
        document.reset();
        UseSettings(setting);
        Show(u"a(b)c", u"cpp");
        FocusView();
        Editor().MoveCaret({0, 1}, false);
        const Picture picture = Paint();
        EXPECT_TRUE(ShowsAt(picture, {1, 2}));
        EXPECT_TRUE(ShowsAt(picture, {3, 4}));
        EXPECT_FALSE(ShowsAt(picture, {2, 3}));
        EXPECT_FALSE(ShowsElsewhere(picture, {1, 4}));
        Editor().MoveCaret({0, 0}, false);
        EXPECT_FALSE(ShowsAt(Paint(), {0, 5}));
    }
}

TEST_F(PaintColourTest, MarginAndBookmark) {
    UseSettings(u"MarginColor=#12c347\nGuideColor=#000000");
    Show(u"a\nb");
    const Picture margin = Paint();
    EXPECT_TRUE(margin.IsAll(Marked, Gutter(), 0, TextLeft(), margin.height));
    EXPECT_FALSE(margin.Has(Marked, 0, 0, Gutter(), margin.height));
    EXPECT_FALSE(margin.Has(Marked, TextLeft(), 0, margin.width, margin.height));

    UseSettings(u"BookmarkColor=#12c347");
    EXPECT_FALSE(Paint().Has(Marked, 0, 0, margin.width, margin.height));
    Editor().ToggleBookmark(1);
    const Picture marked = Paint();
    EXPECT_TRUE(marked.Has(Marked, Gutter(), LineHeight(), TextLeft(), 2 * LineHeight()));
    EXPECT_FALSE(marked.Has(Marked, 0, 0, marked.width, LineHeight()));
    EXPECT_FALSE(marked.Has(Marked, TextLeft(), LineHeight(), marked.width, 2 * LineHeight()));
    // The outline is drawn with the pen of the device context, which is black.
    EXPECT_EQ(marked.At(Gutter(), LineHeight() + LineHeight() / 2), Rgb(0, 0, 0));
}

} // namespace
