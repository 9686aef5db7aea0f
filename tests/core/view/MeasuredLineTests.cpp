#include "support/Random.h"
#include "support/ViewTest.h"
#include "view/MeasuredLine.h"
#include "view/RowPlan.h"

namespace {

constexpr uint32_t Long = 2 * MeasuredLine::ShortLine;

struct MeasuredLineTest : ViewTest {
    // Printable ASCII for the most part, then everything.
    static std::u16string LongLine(Random& random, uint32_t length) {
        std::u16string text(length, u'a');
        for (uint32_t i = 0; i < length; ++i) {
            if (random.OneIn(50)) text[i] = i < length - length / 8 ? u'i' : random.Pick(Others);
        }
        return text;
    }
    static TextSpan Span(const std::u16string& text) { return {text.data(), static_cast<uint32_t>(text.size())}; }
    LineLayout Layout() const { return {surface().metrics, surface().Widths()}; }

    std::string Painted() const {
        RowPlan plan;
        RowPicture row;
        std::string out;
        for (bool more = plan.Begin(view(), 0, 0) && plan.Next(row); more; more = plan.Next(row)) {
            for (uint32_t i = 0; i < row.runCount; ++i) {
                const DrawRun& run = row.runs[i];
                out += std::to_string(run.x) + '+' + std::to_string(run.width) + ' ' +
                       Plain({row.text + run.start, run.count}) + '\n';
            }
        }
        return out;
    }
    // The caret is where it is when the line is measured from its start.
    void ExpectCaret() const {
        const int64_t x = Layout().PositionOf(view().Text().Line(view().CaretLine()), view().CaretColumn());
        ASSERT_EQ(surface().caretX, x - view().Viewport().HorizontalScroll() + view().Viewport().TextLeft());
    }
    // So does the picture. What was measured is forgotten then.
    void ExpectPicture() const {
        const std::string painted = Painted();
        input().OnSize(false);
        ASSERT_EQ(painted, Painted());
    }

    static constexpr Char Others[] = {u'\t', u'i', 0x4E2D, 0x7F, u' '};
};

} // namespace

TEST_F(MeasuredLineTest, MeasuresFromAPlaceAsFromTheStart) {
    Random random(5);
    const std::u16string text = LongLine(random, 3 * Long);
    MeasuredLine measured;
    for (int i = 0; i < 200; ++i) {
        const uint32_t column = random.Below(3 * Long + 1);
        ASSERT_EQ(measured.PositionOf(Layout(), Span(text), {7, column}), Layout().PositionOf(Span(text), column));
        const LinePlace place = measured.PlaceIn({7});
        ASSERT_EQ(place.position, Layout().PositionOf(Span(text), place.column));
        const int64_t limit = place.position + random.Below(5000);
        ASSERT_EQ(Layout().ColumnsWithin(Span(text), limit, place), Layout().ColumnsWithin(Span(text), limit));
    }
}

TEST_F(MeasuredLineTest, APlaceIsKeptAheadOfAFollowingCaret) {
    const std::u16string text(4 * Long, u'a');
    MeasuredLine measured;
    for (uint32_t column = Long; column <= 4 * Long; column += Long) {
        measured.PositionOf(Layout(), Span(text), {0, column});
        EXPECT_EQ(measured.PlaceIn({0}).column, column - MeasuredLine::Lead);
    }
    measured.PositionOf(Layout(), Span(text), {0, 10});
    EXPECT_EQ(measured.PlaceIn({0}).column, 4 * Long - MeasuredLine::Lead) << "short ways need no place";
}

TEST_F(MeasuredLineTest, AWindowThatCanScrollNoFurtherHasAPlaceOfItsOwn) {
    surface().SetFont({16, 65535, 65535});
    const std::u16string text(6 * Long, u'a');
    constexpr auto Last = static_cast<uint32_t>(MeasuredLine::FarthestScroll / 65535);
    for (const uint32_t step : {Long / 8, Long}) {
        MeasuredLine measured;
        for (uint32_t column = step; column <= 6 * Long; column += step) {
            measured.PositionOf(Layout(), Span(text), {0, column});
            const LinePlace place = measured.PlaceIn({0, MeasuredLine::FarthestScroll});
            if (column - MeasuredLine::Lead > Last) {
                EXPECT_EQ(place.column, Last);
            } else if (column > MeasuredLine::ShortLine) {
                EXPECT_EQ(place.column, column - MeasuredLine::Lead);
            }
            EXPECT_EQ(place.position, int64_t{place.column} * 65535);
        }
        EXPECT_EQ(measured.PlaceIn({0}).column, 6 * Long - MeasuredLine::Lead);
        EXPECT_EQ(measured.PlaceIn({0, 1}).column, 0u);
    }
}

TEST_F(MeasuredLineTest, APlaceInReachIsOneOfItsOwnLine) {
    surface().SetFont({16, 65535, 65535});
    const std::u16string text(3 * Long, u'a');
    MeasuredLine measured;
    measured.PositionOf(Layout(), Span(text), {0, 3 * Long});
    measured.PositionOf(Layout(), Span(text), {7, Long});
    EXPECT_EQ(measured.PlaceIn({7, MeasuredLine::FarthestScroll}).column, Long - MeasuredLine::Lead);
    EXPECT_EQ(measured.PlaceIn({0, MeasuredLine::FarthestScroll}).column, 0u);
}

TEST_F(MeasuredLineTest, APictureBeyondTheFarthestScrollIsTheSame) {
    Fill(std::u16string(3 * Long, u'a'));
    surface().SetFont({16, 65535, 65535});
    input().OnSize(false);
    view().MoveCaret({0, UINT32_MAX}, false);
    EXPECT_EQ(view().Viewport().HorizontalScroll(), MeasuredLine::FarthestScroll);
    EXPECT_NE(Painted(), "");
    ExpectPicture();
}

TEST_F(MeasuredLineTest, APlaceGoesWithTheTextBeforeIt) {
    const std::u16string text(Long, u'a');
    MeasuredLine measured;
    measured.PositionOf(Layout(), Span(text), {100, Long});
    const uint32_t column = measured.PlaceIn({100}).column;
    EXPECT_GT(column, 0u);
    EXPECT_EQ(measured.PlaceIn({101}).column, 0u) << "of another line";
    measured.ForgetAfter(100 + column);
    EXPECT_EQ(measured.PlaceIn({100}).column, column);
    measured.ForgetAfter(100 + column - 1);
    EXPECT_EQ(measured.PlaceIn({100}).column, 0u);
    measured.PositionOf(Layout(), Span(text), {100, Long});
    measured.Forget();
    EXPECT_EQ(measured.PlaceIn({100}).column, 0u);
}

TEST_F(MeasuredLineTest, NoPlaceIsAfterATabOrANul) {
    for (const Char other : {u'\t', u'\0'}) {
        std::u16string text(Long, u'a');
        text[100] = other;
        MeasuredLine measured;
        EXPECT_EQ(measured.PositionOf(Layout(), Span(text), {0, Long}), Layout().PositionOf(Span(text), Long));
        EXPECT_EQ(measured.PlaceIn({0}).column, 0u);
    }
}

TEST_F(MeasuredLineTest, CaretAndPictureStayRightWhileALongLineIsEdited) {
    Random random(11);
    const auto atEnd = [&] { view().MoveCaret({1, UINT32_MAX}, false); };
    for (int i = 0; i < 2000; ++i) {
        if (i % 20 == 0) {
            Fill(u"first\n" + LongLine(random, Long) + u"\nlast");
            if (random.OneIn(2)) surface().SetFont({16, 7, 4}, {{u'i', 3}});
            input().OnSize(false);
        }
        switch (random.Below(7)) {
        case 0:
            view().MoveCaret({1, random.Below(view().Text().Line(1).length + 1)}, false);
            break;
        case 1:
            Type(random.OneIn(4) ? u"i\t" : u"b");
            break;
        case 2:
            Press(ViewKey::Delete);
            break;
        case 3:
            EXPECT_TRUE(buffer().InsertText(random.Below(buffer().Length()), random.OneIn(4) ? u"i\t" : u"ib", 2));
            atEnd();
            break;
        case 4: {
            const uint32_t offset = random.Below(buffer().Length() - 10);
            EXPECT_TRUE(buffer().DeleteText({offset, offset + random.Below(5)}));
            atEnd();
            break;
        }
        case 5:
            Ctrl(random.OneIn(2) ? u'Z' : u'Y');
            break;
        default:
            atEnd();
        }
        ExpectCaret();
        if (random.OneIn(4)) ExpectPicture();
    }
}

TEST_F(MeasuredLineTest, WhatIsTypedCountsAtOnce) {
    Fill(std::u16string(Long, u'a'));
    surface().SetFont({16, 7, 4}, {{u'i', 3}});
    input().OnSize(false);
    view().MoveCaret({0, UINT32_MAX}, false);
    view().MoveCaret({0, 10}, false);
    Type(u"ii");
    view().MoveCaret({0, UINT32_MAX}, false);
    EXPECT_TRUE(buffer().HasPendingEdit());
    ExpectCaret();
    ExpectPicture();
}

TEST_F(MeasuredLineTest, AnotherFontMeasuresAgain) {
    Fill(std::u16string(Long, u'i'));
    view().MoveCaret({0, UINT32_MAX}, false);
    surface().SetFont({16, 7, 4}, {{u'i', 3}});
    input().OnSize(false);
    view().MoveCaret({0, UINT32_MAX}, false);
    EXPECT_EQ(surface().caretX,
              int64_t{Long} * 3 - view().Viewport().HorizontalScroll() + view().Viewport().TextLeft());
}

TEST_F(MeasuredLineTest, AnEndlessLineIsFollowed) {
    Random random(2);
    Fill(u"");
    EXPECT_TRUE(buffer().MarkAsOutput());
    for (int i = 0; i < 20; ++i) {
        std::u16string more = i < 15 ? std::u16string(Long / 4, u'i') : LongLine(random, Long / 4);
        EXPECT_TRUE(buffer().AppendOutputText(more.data()));
        EXPECT_EQ(view().CaretOffset(), buffer().Length());
        ExpectCaret();
        if (i % 3 == 0) ExpectPicture();
    }
}
