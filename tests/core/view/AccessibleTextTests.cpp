// What a text view says of itself to screen readers.
#include "base/WString.h"
#include "support/FailureInjection.h"
#include "support/ViewTest.h"
#include "view/AccessibleText.h"

namespace {

// A window of 20 columns and 4 lines of 8 x 16 pixels, without gutter or margin.
class AccessibleTextTest : public ViewTest {
protected:
    void ShowIn(const std::u16string& text) {
        Show(text);
        Resize(20, 4);
    }
    AccessibleText Accessible() const { return AccessibleText(view()); }
    std::string Value() const {
        WString value;
        EXPECT_TRUE(Accessible().AppendValue(value));
        return Plain(std::u16string(value.Text(), value.Length()));
    }
    std::vector<ClientRectangle> Rectangles(uint32_t start, uint32_t end) const {
        Array<ClientRectangle> out;
        EXPECT_TRUE(Accessible().AppendRectangles(AccessibleRange({start, end}), out));
        return {out.Items(), out.Items() + out.Count()};
    }
    uint32_t At(int32_t x, int32_t y) const {
        const TextRange at = Accessible().At({x, y});
        EXPECT_TRUE(at.IsEmpty());
        return at.start;
    }
};

using Rectangles = std::vector<ClientRectangle>;

TEST_F(AccessibleTextTest, TheValueIsTheLineOfTheCaret) {
    ShowIn(u"one\ntwo|\nthree");
    EXPECT_EQ(Value(), "two");
    Type(u"!");
    EXPECT_EQ(Value(), "two!");
    Press(ViewKey::Down);
    EXPECT_EQ(Value(), "three");
    ShowIn(std::u16string(5000, u'x'));
    EXPECT_EQ(Value(), std::string(AccessibleElement::LongestValue, 'x'));
}

TEST_F(AccessibleTextTest, TheNameIsTheDocuments) {
    ShowIn(u"");
    ASSERT_TRUE(buffer().SetTitle(u"New 1"));
    EXPECT_STREQ(Plain(Accessible().Name()).c_str(), "New 1");
    EXPECT_FALSE(Accessible().IsReadOnly());
    view().SetDocument(nullptr);
    EXPECT_STREQ(Plain(Accessible().Name()).c_str(), "");
    EXPECT_EQ(Value(), "");
    EXPECT_TRUE(Accessible().IsReadOnly());
    delete shown; // no document owns it any more
}

TEST_F(AccessibleTextTest, AnotherNameChangesTheState) {
    ShowIn(u"");
    ASSERT_TRUE(buffer().SetTitle(u"New 1"));
    const AccessibleState before = Accessible().State();
    EXPECT_EQ(Accessible().State(), before);
    ASSERT_TRUE(buffer().SetTitle(u"New 2"));
    EXPECT_NE(Accessible().State().name, before.name);
    ASSERT_TRUE(buffer().SetTitle(u"New 1"));
    EXPECT_EQ(Accessible().State(), before);
}

TEST_F(AccessibleTextTest, EveryEditChangesTheState) {
    ShowIn(u"one\n|two");
    AccessibleState before = Accessible().State();
    EXPECT_EQ(before, (AccessibleState{4, 4, 1, before.edits, before.name}));
    Press(ViewKey::Left, false, true);
    EXPECT_EQ(Accessible().State(), (AccessibleState{4, 3, 0, before.edits, before.name}));
    // Typing in the open line, which the store does not see yet, as well as what is written back at once.
    Type(u"x");
    EXPECT_GT(Accessible().State().edits, before.edits);
    before = Accessible().State();
    Type(u"y");
    EXPECT_GT(Accessible().State().edits, before.edits);
    before = Accessible().State();
    EXPECT_TRUE(buffer().Undo());
    EXPECT_GT(Accessible().State().edits, before.edits);
}

TEST_F(AccessibleTextTest, SelectionCaretAndAllOfIt) {
    ShowIn(u"o|ne\ntw^o");
    EXPECT_EQ(Accessible().Selection(), (TextRange{1, 6}));
    EXPECT_EQ(Accessible().Caret(), (TextRange{1, 1}));
    EXPECT_EQ(Accessible().All(), (TextRange{0, 7}));
    Accessible().Select(AccessibleRange({2, 3}));
    EXPECT_EQ(Marked(), "on^e|\ntwo");
    Accessible().Select(AccessibleRange({900, 4000}));
    EXPECT_EQ(Marked(), "one\ntwo|");
}

TEST_F(AccessibleTextTest, TheLinesThatAreSeen) {
    ShowIn(u"0\n1\n2\n3\n4\n5\n6\n7");
    EXPECT_EQ(Accessible().Seen(), (TextRange{0, 7}));
    view().SetTopLine(2);
    EXPECT_EQ(Accessible().Seen(), (TextRange{4, 11}));
    // A half line is one.
    surface().SetSize(160, 4 * 16 + 1);
    input().OnSize(false);
    EXPECT_EQ(Accessible().Seen(), (TextRange{4, 13}));
    view().SetTopLine(7);
    EXPECT_EQ(Accessible().Seen(), (TextRange{14, 15}));
    surface().SetSize(0, 0);
    input().OnSize(false);
    EXPECT_EQ(Accessible().Seen(), (TextRange{14, 15}));
}

TEST_F(AccessibleTextTest, ScrollsToEitherEnd) {
    ShowIn(u"0\n1\n2\n3\n4\n5\n6\n7");
    Accessible().ScrollTo(AccessibleRange({4, 12}), true);
    EXPECT_EQ(view().TopLine(), 2u);
    Accessible().ScrollTo(AccessibleRange({4, 12}), false);
    EXPECT_EQ(view().TopLine(), 3u); // lines 3 to 6
    Accessible().ScrollTo(AccessibleRange({0, 2}), false);
    EXPECT_EQ(view().TopLine(), 0u);
    Accessible().ScrollTo(AccessibleRange({999, 999}), true);
    EXPECT_EQ(view().TopLine(), 7u);
}

TEST_F(AccessibleTextTest, ScrollsSidewaysToTheStart) {
    ShowIn(u"short\n" + std::u16string(100, u'x') + u"\nlast");
    const auto scroll = [&] { return view().Viewport().HorizontalScroll(); };
    // The area begins with what was right of it, or left; 20 characters fit.
    Accessible().ScrollTo(AccessibleRange({6 + 60, 6 + 70}), true);
    EXPECT_EQ(view().TopLine(), 1u);
    EXPECT_EQ(scroll(), 60 * 8);
    EXPECT_EQ(Rectangles(6 + 60, 6 + 70), (::Rectangles{{0, 0, 80, 16}}));
    Accessible().ScrollTo(AccessibleRange({6 + 40, 6 + 45}), false);
    EXPECT_EQ(scroll(), 40 * 8);
    // What is seen already is left where it is.
    Accessible().ScrollTo(AccessibleRange({6 + 59, 6 + 99}), true);
    EXPECT_EQ(scroll(), 40 * 8);
    Accessible().ScrollTo(AccessibleRange({6 + 60, 6 + 60}), true);
    EXPECT_EQ(scroll(), 60 * 8);
    // All the way to the left where that shows it as well.
    Accessible().ScrollTo(AccessibleRange({3, 5}), true);
    EXPECT_EQ(scroll(), 0);
}

TEST_F(AccessibleTextTest, ScrollsSidewaysInALineThatIsTypedIn) {
    ShowIn(std::u16string(60, u'x') + u"|");
    Type(u"yz");
    ASSERT_TRUE(buffer().HasPendingEdit());
    view().Viewport().SetHorizontalScroll(0);
    Accessible().ScrollTo(AccessibleRange({50, 62}), true);
    EXPECT_EQ(view().Viewport().HorizontalScroll(), 50 * 8);
    // Nor may a window narrower than its margin make it go back and forth.
    settings.MarginWidth = 500;
    input().OnSize(false);
    Accessible().ScrollTo(AccessibleRange({30, 31}), true);
    EXPECT_EQ(view().Viewport().HorizontalScroll(), 30 * 8);
    Accessible().ScrollTo(AccessibleRange({30, 31}), true);
    EXPECT_EQ(view().Viewport().HorizontalScroll(), 30 * 8);
}

TEST_F(AccessibleTextTest, APointIsTheNearestPlace) {
    ShowIn(u"abc\ndef");
    EXPECT_EQ(At(8, 0), 1u);
    EXPECT_EQ(At(11, 16), 5u);
    EXPECT_EQ(At(12, 17), 6u); // from the middle on it is the next
    EXPECT_EQ(At(-100, -100), 0u);
    EXPECT_EQ(At(150, 3), 3u);
    EXPECT_EQ(At(INT32_MAX, INT32_MAX), 7u);
    EXPECT_EQ(At(INT32_MIN, INT32_MIN), 0u);
}

TEST_F(AccessibleTextTest, ARectangleForEveryLineThatIsSeen) {
    ShowIn(u"abc\n\ndefghi\nj\nk");
    EXPECT_EQ(Rectangles(1, 2), (::Rectangles{{8, 0, 16, 16}}));
    // Line feeds are a character wide, also alone.
    EXPECT_EQ(Rectangles(1, 8), (::Rectangles{{8, 0, 32, 16}, {0, 16, 8, 32}, {0, 32, 24, 48}}));
    // The fifth line is below the window.
    EXPECT_EQ(Rectangles(12, 15), (::Rectangles{{0, 48, 16, 64}}));
    EXPECT_EQ(Rectangles(14, 15), ::Rectangles());
    EXPECT_EQ(Rectangles(2, 2), ::Rectangles());
    EXPECT_EQ(Rectangles(90, 99), ::Rectangles());
    // The end of the text is no line feed.
    view().SetTopLine(4);
    EXPECT_EQ(Rectangles(14, UINT32_MAX), (::Rectangles{{0, 0, 8, 16}}));
}

TEST_F(AccessibleTextTest, RectanglesEndAtTheTextAreasEdges) {
    settings.MarginWidth = 10;
    ShowIn(std::u16string(100, u'x') + u"\nab");
    const int32_t left = view().Viewport().TextLeft();
    EXPECT_EQ(left, 10);
    EXPECT_EQ(Rectangles(0, 100), (::Rectangles{{left, 0, left + 160, 16}}));
    view().Viewport().SetHorizontalScroll(4);
    EXPECT_EQ(Rectangles(0, 2), (::Rectangles{{left, 0, left + 12, 16}}));
    EXPECT_EQ(Rectangles(60, 70), ::Rectangles());
    // The second line is left of the window.
    view().Viewport().SetHorizontalScroll(500);
    EXPECT_EQ(Rectangles(101, 103), ::Rectangles());
    EXPECT_EQ(Rectangles(60, 70), (::Rectangles{{left, 0, left + 60, 16}}));
}

TEST_F(AccessibleTextTest, NoRectanglesWithoutAWindowOrMemory) {
    ShowIn(u"abc");
    FailEachAllocation([&] {
        Array<ClientRectangle> out;
        const bool done = Accessible().AppendRectangles(AccessibleRange({0, 3}), out);
        EXPECT_EQ(out.IsEmpty(), !done);
        return done;
    });
    surface().SetFont({});
    EXPECT_EQ(Rectangles(0, 3), ::Rectangles());
    EXPECT_EQ(At(5, 5), 3u); // nothing is wide
}

} // namespace
