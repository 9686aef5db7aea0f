#include "support/Random.h"
#include "support/ViewTest.h"

#include "syntax/EngineChoice.h"
#include "view/LineStates.h"
#include "view/RowPlan.h"
#include <vector>

// Tags of several lines: whatever was painted or asked before, a row has the colours that colouring every
// line from the top gives.

namespace {

struct TagColourTest : ViewTest {
    TagColourTest() {
        Colour colour = 1;
        for (Colour* cell : {&settings.TextFg, &settings.HtmlTagFg, &settings.HtmlAttrFg, &settings.HtmlAttrValueFg,
                             &settings.HtmlAttrQuotedValueFg, &settings.HtmlCommentFg, &settings.HtmlPunctFg})
            *cell = colour++;
        LoadEngineDefinitions(IniFile());
    }
    static std::u16string AnyLine(Random& random) {
        static constexpr const char16_t* Pieces[] = {u"<script ", u"<script\n", u"<b ",  u"<b\n", u"a=", u"c",
                                                     u"'x' ",     u"\"y",       u"\"",   u">",    u"> ", u"\n",
                                                     u"=",        u"</script>", u"text", u" ",    u"d ", u"<?php "};
        std::u16string line;
        for (uint32_t i = random.Below(6); i > 0; --i) line += random.Pick(Pieces);
        if (random.OneIn(40)) line += u"<!-- ";
        if (random.OneIn(10)) line += u"--> ";
        if (random.OneIn(10)) line += u"?> ";
        return line + u"\n";
    }
    static std::u16string AnyText(Random& random, size_t length, uint32_t padding) {
        std::u16string text;
        while (text.size() < length) {
            text += AnyLine(random);
            text.insert(text.size() - 1, random.Below(padding), u' ');
        }
        return text;
    }
    // The foreground of every character, coloured from the top.
    std::vector<std::vector<Colour>> FromTheTop() {
        std::vector<std::vector<Colour>> lines;
        const std::u16string text = Text();
        SyntaxEngine* engine = ChooseEngine(u"html", nullptr);
        uint32_t state = 0;
        for (size_t start = 0; start <= text.size();) {
            const size_t feed = std::min(text.find(u'\n', start), text.size());
            ColouredLine line;
            const std::u16string whole = text.substr(start, feed - start) + u'\n';
            engine->ColourLine(static_cast<uint32_t>(start), whole.data(), static_cast<uint32_t>(whole.size()), state,
                               line);
            lines.emplace_back();
            for (uint32_t i = 0; i < line.count; ++i)
                lines.back().insert(lines.back().end(), line.spans[i].length, line.spans[i].foreground);
            start = feed + 1;
        }
        engine->Release();
        return lines;
    }
    // Paints some rows of the window and compares what can be seen of each character.
    void PaintAndCompare(const std::vector<std::vector<Colour>>& expected, Random& random) {
        const int32_t height = 10 * surface().metrics.lineHeight;
        const auto top = static_cast<int32_t>(random.Below(static_cast<size_t>(height)));
        const auto bottom = top + 1 + static_cast<int32_t>(random.Below(static_cast<size_t>(height)));
        RowPlan plan;
        ASSERT_TRUE(plan.Begin(view(), top, bottom));
        RowPicture row;
        while (plan.Next(row)) {
            if (row.pastEnd) continue;
            ASSERT_LT(row.line, expected.size());
            size_t column = 0;
            for (uint32_t i = 0; i < row.runCount; ++i)
                for (uint32_t k = 0; k < row.runs[i].count; ++k, ++column)
                    if (row.text[row.runs[i].start + k] != u' ') {
                        ASSERT_EQ(row.runs[i].foreground, expected[row.line][column])
                            << "line " << row.line << " column " << column << "\n"
                            << Plain(Text().substr(0, 2000));
                    }
        }
    }
    void AnyMove(Random& random) {
        const uint32_t lines = view().Text().LineCount();
        if (random.OneIn(3))
            view().SetTopLine(random.Below(lines));
        else
            view().SetTopLine(std::min(view().TopLine() + random.Below(5), lines - 1));
        if (random.OneIn(4)) view().StateAt(random.Below(lines));
    }
};

} // namespace

TEST_F(TagColourTest, AValueGoesBackToTheTagOfItsLine) {
    Fill(u"<script a\n='b' c\n>x</script>\n<b a\n='b' c\n>", u"html");
    SyntaxEngine& engine = *buffer().Engine();
    ColouredLine line;
    EXPECT_EQ(view().StateAt(1), 7u); // the script tag has just been scanned
    uint32_t state = view().StateAt(4);
    engine.ColourLine(0, u"='b' ", 5, state, line);
    EXPECT_EQ(state, 6u);
    state = view().StateAt(1);
    engine.ColourLine(0, u"='b' ", 5, state, line);
    EXPECT_EQ(state, 13u);
}

TEST_F(TagColourTest, JumpsAndScrollsPaintTheColoursFromTheTop) {
    for (uint32_t seed = 1; seed <= 40; ++seed) {
        Random random(seed);
        Fill(AnyText(random, 1500, 3), u"html");
        const auto expected = FromTheTop();
        for (int i = 0; i < 60; ++i) {
            AnyMove(random);
            ASSERT_NO_FATAL_FAILURE(PaintAndCompare(expected, random)) << "seed " << seed;
        }
    }
}

TEST_F(TagColourTest, EditsBetweenPaintTheColoursFromTheTop) {
    for (uint32_t seed = 1; seed <= 20; ++seed) {
        Random random(seed);
        Fill(AnyText(random, 1500, 3), u"html");
        for (int i = 0; i < 60; ++i) {
            const uint32_t at = random.Below(buffer().Length());
            const std::u16string line = AnyLine(random);
            view().SelectRange({at, random.OneIn(3) ? std::min(at + random.Below(30), buffer().Length()) : at});
            if (random.OneIn(2)) {
                view().SelectRange({at, at});
                EXPECT_TRUE(buffer().InsertText(at, line.data(), static_cast<uint32_t>(line.size())));
            } else {
                Type(u"x" + line.substr(0, line.size() - 1)); // replaces the selection
            }
            AnyMove(random);
            const auto expected = FromTheTop();
            ASSERT_NO_FATAL_FAILURE(PaintAndCompare(expected, random)) << "seed " << seed;
        }
    }
}

// Long enough for the states of some lines to be remembered.
TEST_F(TagColourTest, RememberedStatesPaintTheColoursFromTheTop) {
    for (uint32_t seed = 1; seed <= 4; ++seed) {
        Random random(seed);
        Fill(AnyText(random, 3 * LineStates::Step, 200), u"html");
        const auto expected = FromTheTop();
        for (int i = 0; i < 300; ++i) {
            AnyMove(random);
            ASSERT_NO_FATAL_FAILURE(PaintAndCompare(expected, random)) << "seed " << seed;
        }
    }
}

// Of which painting colours what can be seen only.
TEST_F(TagColourTest, LongLinesPaintTheColoursFromTheTop) {
    for (uint32_t seed = 1; seed <= 4; ++seed) {
        Random random(seed);
        Fill(AnyText(random, LineStates::Step, 30000), u"html");
        const auto expected = FromTheTop();
        for (int i = 0; i < 40; ++i) {
            AnyMove(random);
            ASSERT_NO_FATAL_FAILURE(PaintAndCompare(expected, random)) << "seed " << seed;
        }
    }
}
