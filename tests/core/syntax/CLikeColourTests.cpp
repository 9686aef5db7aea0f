#include "SyntaxTestSupport.h"

#include "support/FailureInjection.h"

namespace {

class CLikeColour : public SyntaxTest {
protected:
    static EngineHandle Custom(const std::u16string& keys) {
        Load(u"[Engine_Q]\nExtensions=q\n" + keys);
        return Choose(u"q");
    }
    EngineHandle cpp = Choose(u"cpp");
};

} // namespace

TEST_F(CLikeColour, KeywordTextNumberAndLineComment) {
    const Painted painted = Paint(*cpp, u"int x = 0x10; // note");
    EXPECT_EQ(painted.runs, "keyword(int) text( x = ) number(0x10) text(; ) comment(// note)");
    EXPECT_EQ(painted.fill, "comment");
    EXPECT_EQ(painted.state, 0u);
    EXPECT_EQ(painted.coloured, 21u);
}

TEST_F(CLikeColour, ALongCommentGoesOnOverLines) {
    const Painted first = Paint(*cpp, u"/* a");
    EXPECT_EQ(first.runs, "long(/* a)");
    EXPECT_EQ(first.state, 1u);
    EXPECT_EQ(first.fill, "long");
    const Painted second = Paint(*cpp, u"b */ c", first.state);
    EXPECT_EQ(second.runs, "long(b */) text( c)");
    EXPECT_EQ(second.state, 0u);
    EXPECT_EQ(second.fill, "none");
    const Painted between = Paint(*cpp, u"\n", 1);
    EXPECT_EQ(between.runs, "long(\\n)");
    EXPECT_EQ(between.state, 1u);
    EXPECT_EQ(between.fill, "long");
}

TEST_F(CLikeColour, EveryLongCommentIsARunOfItsOwn) {
    EXPECT_EQ(Runs(*cpp, u"/**//* b */x/* c"), "long(/**/) long(/* b */) text(x) long(/* c)");
    EXPECT_EQ(Runs(*cpp, u"a*//*b", 1), "long(a*/) long(/*b)");
    EXPECT_EQ(Runs(*cpp, u"/*/ still"), "long(/*/ still)");
}

TEST_F(CLikeColour, NothingInsideACommentCounts) {
    EXPECT_EQ(Runs(*cpp, u"// /* \"int\" 1 */\n"), "comment(// /* \"int\" 1 */\\n)");
    EXPECT_EQ(Paint(*cpp, u"// /*").state, 0u);
    EXPECT_EQ(Runs(*cpp, u"/* // */ 1"), "long(/* // */) text( ) number(1)");
}

TEST_F(CLikeColour, Strings) {
    EXPECT_EQ(Runs(*cpp, u"a \"b c\" d"), "text(a ) string(\"b c\") text( d)");
    EXPECT_EQ(Runs(*cpp, u"'\"' \"'\""), "string('\"') text( ) string(\"'\")");
    EXPECT_EQ(Runs(*cpp, u"\"\"\"\""), "string(\"\") string(\"\")");
    EXPECT_EQ(Runs(*cpp, u"\"// no\" 1"), "string(\"// no\") text( ) number(1)");
}

TEST_F(CLikeColour, BackslashesInStrings) {
    EXPECT_EQ(Runs(*cpp, u"\"a\\\"b\" c"), "string(\"a\\\"b\") text( c)");
    EXPECT_EQ(Runs(*cpp, u"\"a\\\\\" c"), "string(\"a\\\\\") text( c)");
    EXPECT_EQ(Runs(*cpp, u"\"a\\\\\\\" c"), "string(\"a\\\\\\\" c)");
    EXPECT_EQ(Runs(*cpp, u"\"a\\"), "string(\"a\\)");
    EXPECT_EQ(Runs(*cpp, u"\\\"x\" y"), "text(\\) string(\"x\") text( y)");
}

TEST_F(CLikeColour, AnOpenStringEndsWithItsLine) {
    const Painted painted = Paint(*cpp, u"x = \"abc\n");
    EXPECT_EQ(painted.runs, "text(x = ) string(\"abc\\n)");
    EXPECT_EQ(painted.state, 0u);
    EXPECT_EQ(painted.fill, "none");
    EXPECT_EQ(Runs(*cpp, u"\""), "string(\")");
}

TEST_F(CLikeColour, Numbers) {
    EXPECT_EQ(Runs(*cpp, u"0x1F 1.5e3 12abc"), "number(0x1F) text( ) number(1.5e3) text( ) number(12abc)");
    EXPECT_EQ(Runs(*cpp, u".5"), "text(.) number(5)");
    EXPECT_EQ(Runs(*cpp, u"1..2.a_#.;"), "number(1..2.a_#.) text(;)");
    EXPECT_EQ(Runs(*cpp, u"a1 _2 #3"), "text(a1 _2 #3)");
    EXPECT_EQ(Runs(*cpp, u"1e-5"), "number(1e) text(-) number(5)");
}

TEST_F(CLikeColour, Keywords) {
    EXPECT_EQ(Runs(*cpp, u"#include <x>"), "keyword(#include) text( <x>)");
    EXPECT_EQ(Runs(*cpp, u"#includes"), "text(#includes)");
    EXPECT_EQ(Runs(*cpp, u"int2 Int xint int_"), "text(int2 Int xint int_)");
    EXPECT_EQ(Runs(*cpp, u"Return return"), "text(Return ) keyword(return)");
    EXPECT_EQ(Runs(*cpp, u"do double"), "keyword(do) text( ) keyword(double)");
    EXPECT_EQ(Runs(*cpp, u"(int)-int"), "text(() keyword(int) text()-) keyword(int)");
    EXPECT_EQ(Runs(*cpp, u"\"\"int"), "string(\"\") keyword(int)");
}

TEST_F(CLikeColour, TwoKeywordsInARowAreTwoRuns) {
    const EngineHandle engine = Custom(u"Keywords=@ $\n");
    EXPECT_EQ(Runs(*engine, u"@$@ x"), "keyword(@) keyword($) keyword(@) text( x)");
    EXPECT_EQ(Runs(*engine, u"@x"), "text(@x)");
}

TEST_F(CLikeColour, AdjacentTextIsOneRun) {
    EXPECT_EQ(Runs(*cpp, u"a+b -\t\u00E4\xD800(;x)"), "text(a+b -\\x0009\\x00E4\\xD800(;x))");
}

TEST_F(CLikeColour, CaseDoesNotMatterWhenTheDefinitionSaysSo) {
    const EngineHandle engine = Custom(u"Keywords=word\nCaseSensitive=0\nCommentStart=REM\nLongCommentStart=BEG\n"
                                       u"LongCommentEnd=FIN\n");
    EXPECT_EQ(Runs(*engine, u"BEGIN x"), "long(BEGIN x)");
    EXPECT_EQ(Runs(*engine, u".beg fIn Word rem WORD"),
              "text(.) long(beg fIn) text( ) keyword(Word) text( ) comment(rem WORD)");
    const EngineHandle exact = Custom(u"Keywords=begin\nCommentStart=REM\n");
    EXPECT_EQ(Runs(*exact, u"BEGIN begin rem REM"), "text(BEGIN ) keyword(begin) text( rem ) comment(REM)");
}

TEST_F(CLikeColour, AKeywordThatIgnoresCase) {
    EXPECT_EQ(Runs(*Custom(u"Keywords=begin\nCaseSensitive=0\n"), u"BEGIN"), "keyword(BEGIN)");
    EXPECT_EQ(Runs(*Custom(u"Keywords=select\nCaseSensitive=0\n"), u"SELECT *"), "keyword(SELECT) text( *)");
}

TEST_F(CLikeColour, ACommentStartThatEndsWithALetter) {
    const EngineHandle engine = Custom(u"Keywords=x\nCommentStart=REM\n");
    EXPECT_EQ(Runs(*engine, u"REM x"), "comment(REM x)");
    EXPECT_EQ(Runs(*engine, u"REMARK x"), "text(REMARK ) keyword(x)");
    EXPECT_EQ(Runs(*engine, u"REM1"), "comment(REM1)");
    EXPECT_EQ(Runs(*engine, u"REM"), "comment(REM)");
    // Inside a word it is not looked for.
    EXPECT_EQ(Runs(*engine, u"aREM"), "text(aREM)");
    EXPECT_EQ(Runs(*engine, u".REM"), "text(.) comment(REM)");
}

TEST_F(CLikeColour, TheFirstCommentStartThatFitsCounts) {
    const EngineHandle engine =
        Custom(u"Keywords=k\nCommentStart=REM\nCommentStart_1=R\nCommentStart_2=--\nCommentStart_3=;\n");
    EXPECT_EQ(Runs(*engine, u"k -- k"), "keyword(k) text( ) comment(-- k)");
    EXPECT_EQ(Runs(*engine, u"k;"), "keyword(k) comment(;)");
    EXPECT_EQ(Runs(*engine, u"- R1"), "text(- ) comment(R1)");
    EXPECT_EQ(Runs(*engine, u"REx"), "text(REx)");
}

TEST_F(CLikeColour, AllCommentStartsEqual) {
    const EngineHandle engine = Custom(u"Keywords=k\nCommentStart=--\nCommentStart_1=--\nCommentStart_2=--\n"
                                       u"CommentStart_3=--\nLongCommentStart=--\nLongCommentEnd=--\n");
    EXPECT_EQ(Runs(*engine, u"k -- k -- k"), "keyword(k) text( ) long(-- k --) text( ) keyword(k)");
}

TEST_F(CLikeColour, LongCommentsAreTriedBeforeLineComments) {
    const EngineHandle engine = Custom(u"Keywords=k\nCommentStart=/\nLongCommentStart=/*\nLongCommentEnd=*/\n");
    EXPECT_EQ(Runs(*engine, u"/* a */ / b"), "long(/* a */) text( ) comment(/ b)");
}

TEST_F(CLikeColour, CommentsAreTriedBeforeStringsAndNumbers) {
    const EngineHandle engine = Custom(u"Keywords=k\nCommentStart='\nCommentStart_1=1\n");
    EXPECT_EQ(Runs(*engine, u"\"'\" 'x'"), "string(\"'\") text( ) comment('x')");
    EXPECT_EQ(Runs(*engine, u"2 1 2"), "number(2) text( ) comment(1 2)");
}

TEST_F(CLikeColour, EmptyMarkersNeverMatch) {
    const EngineHandle engine = Custom(u"Keywords=k\nCommentStart=\nLongCommentStart=\nLongCommentEnd=\n");
    EXPECT_EQ(Runs(*engine, u"k x"), "keyword(k) text( x)");
    const EngineHandle open = Custom(u"Keywords=k\nLongCommentStart=(\nLongCommentEnd=\n");
    const Painted painted = Paint(*open, u"k (x)");
    EXPECT_EQ(painted.runs, "keyword(k) text( ) long((x))");
    EXPECT_EQ(painted.state, 1u);
}

TEST_F(CLikeColour, MarkersDoNotGoBeyondTheLine) {
    EXPECT_EQ(Runs(*cpp, u"a /"), "text(a /)");
    EXPECT_EQ(Runs(*cpp, u"a *", 1), "long(a *)");
    EXPECT_EQ(Paint(*cpp, u"a *", 1).state, 1u);
}

TEST_F(CLikeColour, AMarkerThatBeginsWithABlank) {
    // A row of blanks is text as a whole, so only its first one can begin the marker.
    const EngineHandle engine = Custom(u"Keywords=k\nCommentStart= ;\n");
    EXPECT_EQ(Runs(*engine, u"k ;x"), "keyword(k) comment( ;x)");
    EXPECT_EQ(Runs(*engine, u"k  ;x"), "keyword(k) text(  ;x)");
    const EngineHandle tab = Custom(u"Keywords=k\nCommentStart=\t;\n");
    EXPECT_EQ(Runs(*tab, u"k\t;"), "keyword(k) comment(\\x0009;)");
    EXPECT_EQ(Runs(*tab, u"k \t;"), "keyword(k) text( \\x0009;)");
}

TEST_F(CLikeColour, TheEndMarkerStopsColouring) {
    ASSERT_TRUE(cpp->SetEndMarker(u"</script"));
    const Painted painted = Paint(*cpp, u"a();</SCRIPT>");
    EXPECT_EQ(painted.runs, "text(a();)");
    EXPECT_EQ(painted.coloured, 4u);
    EXPECT_EQ(Paint(*cpp, u"</script>").runs, "");
    EXPECT_EQ(Paint(*cpp, u"</script>").coloured, 0u);
    EXPECT_EQ(Runs(*cpp, u"int</script"), "keyword(int)");
}

TEST_F(CLikeColour, TheEndMarkerIsTriedAfterCommentsAndStrings) {
    ASSERT_TRUE(cpp->SetEndMarker(u"</script"));
    EXPECT_EQ(Runs(*cpp, u"\"</script\" x"), "string(\"</script\") text( x)");
    EXPECT_EQ(Runs(*cpp, u"// </script"), "comment(// </script)");
    EXPECT_EQ(Runs(*cpp, u"</script */ x", 1), "long(</script */) text( x)");
    ASSERT_TRUE(cpp->SetEndMarker(u"'"));
    EXPECT_EQ(Runs(*cpp, u"a 'b' c"), "text(a ) string('b') text( c)");
    // It comes before numbers and keywords.
    ASSERT_TRUE(cpp->SetEndMarker(u"int"));
    EXPECT_EQ(Runs(*cpp, u"x INT"), "text(x )");
    ASSERT_TRUE(cpp->SetEndMarker(u"42"));
    EXPECT_EQ(Runs(*cpp, u"x 42"), "text(x )");
}

TEST_F(CLikeColour, HighlightedBraces) {
    const HighlightRange first = Brace(101, 102);
    const HighlightRange second = Brace(104, 105);
    cpp->SetHighlight(0, &first);
    cpp->SetHighlight(1, &second);
    EXPECT_EQ(Runs(*cpp, u"a(bc)d", 0, 100), "text(a) brace(() text(bc) brace()) text(d)");
    EXPECT_EQ(Runs(*cpp, u"a(bc)d", 0, 0), "text(a(bc)d)");
    EXPECT_EQ(Runs(*cpp, u"a(bc)d", 0, 105), "text(a(bc)d)");
    cpp->SetHighlight(0, nullptr);
    EXPECT_EQ(Runs(*cpp, u"a(bc)d", 0, 100), "text(a(bc) brace()) text(d)");
    cpp->SetHighlight(2, &first);
    cpp->SetHighlight(UINT32_MAX, nullptr);
    EXPECT_EQ(Runs(*cpp, u"a(bc)d", 0, 100), "text(a(bc) brace()) text(d)");
}

TEST_F(CLikeColour, BracesAreHighlightedInTextOnly) {
    HighlightRange range = Brace(1, 2);
    cpp->SetHighlight(0, &range);
    EXPECT_EQ(Runs(*cpp, u"\"(\""), "string(\"(\")");
    EXPECT_EQ(Runs(*cpp, u"//("), "comment(//()");
    EXPECT_EQ(Runs(*cpp, u"/*(*/"), "long(/*(*/)");
    EXPECT_EQ(Runs(*cpp, u"int x"), "keyword(int) text( x)");
    EXPECT_EQ(Runs(*cpp, u"1.2"), "number(1.2)");
    EXPECT_EQ(Runs(*cpp, u"abc"), "text(abc)");   // not met: the word is taken as a whole
    EXPECT_EQ(Runs(*cpp, u"   x"), "text(   x)"); // nor inside a row of blanks
    range = Brace(0, 1);
    cpp->SetHighlight(0, &range);
    EXPECT_EQ(Runs(*cpp, u"int x"), "keyword(int) text( x)");
    EXPECT_EQ(Runs(*cpp, u"abc"), "brace(a) text(bc)");
}

TEST_F(CLikeColour, ARangeTakesItsWholeLengthFromWhereItIsMet) {
    const HighlightRange range = Brace(2, 5);
    cpp->SetHighlight(0, &range);
    EXPECT_EQ(Runs(*cpp, u"((((((((("), "text((() brace(((() text((((()");
    // Met one character late, after a word.
    EXPECT_EQ(Runs(*cpp, u"abc;;;;;;"), "text(abc) brace(;;;) text(;;;)");
    // The line's end bounds it.
    EXPECT_EQ(Runs(*cpp, u"abc;"), "text(abc) brace(;)");
    const HighlightRange whole = {0, UINT32_MAX, BraceForeground, BraceBackground, NoFill};
    cpp->SetHighlight(1, &whole);
    EXPECT_EQ(Runs(*cpp, u";;;"), "brace(;;;)");
}

TEST_F(CLikeColour, EmptyAndReversedRangesAreNeverMet) {
    const HighlightRange empty = Brace(1, 1);
    const HighlightRange reversed = Brace(2, 1);
    cpp->SetHighlight(0, &empty);
    cpp->SetHighlight(1, &reversed);
    EXPECT_EQ(Runs(*cpp, u";;;"), "text(;;;)");
}

TEST_F(CLikeColour, AnEmptyLineHasNoRuns) {
    EXPECT_EQ(Runs(*cpp, u""), "");
    const Painted painted = Paint(*cpp, u"", 1);
    EXPECT_EQ(painted.state, 1u);
    EXPECT_EQ(painted.fill, "long");
    EXPECT_EQ(painted.coloured, 0u);
}

TEST_F(CLikeColour, StatesOfOtherEnginesAreNormal) {
    const Painted painted = Paint(*cpp, u"x", 14);
    EXPECT_EQ(painted.runs, "text(x)");
    EXPECT_EQ(painted.state, 0u);
}

TEST_F(CLikeColour, NulsAndOtherCharactersAreText) {
    EXPECT_EQ(Runs(*cpp, std::u16string_view(u"a\0int\0", 6)), "text(a\\x0000) keyword(int) text(\\x0000)");
    EXPECT_EQ(Runs(*cpp, u"\u2F2F\u2222\u3031x"), "text(\\x2F2F\\x2222\\x3031x)"); // bytes of / " 1 in them
}

TEST_F(CLikeColour, MayChangeStateAsksForLongCommentMarkers) {
    EXPECT_TRUE(MayChange(*cpp, u"a /* b"));
    EXPECT_TRUE(MayChange(*cpp, u"a */"));
    EXPECT_TRUE(MayChange(*cpp, u"\"/*\" // */"));
    EXPECT_FALSE(MayChange(*cpp, u"a // b * / \"'"));
    EXPECT_FALSE(MayChange(*cpp, u""));
    EXPECT_FALSE(MayChange(*cpp, u"/"));
    const EngineHandle engine = Custom(u"Keywords=k\nLongCommentStart=begin\nLongCommentEnd=end\nCaseSensitive=0\n");
    EXPECT_TRUE(MayChange(*engine, u"xBEGINx"));
    EXPECT_TRUE(MayChange(*engine, u"End"));
    EXPECT_FALSE(MayChange(*Custom(u"Keywords=k\nCommentStart=;\n"), u"; k"));
}

TEST_F(CLikeColour, AVeryLongLineTakesFewAllocations) {
    std::u16string text;
    for (int i = 0; i < 200000; ++i) text += u"int x(1); ";
    static uint64_t allocations;
    allocations = 0;
    Heap::SetFailureHook([] {
        ++allocations;
        return false;
    });
    ColouredLine line;
    uint32_t state = 0;
    const uint32_t coloured = cpp->ColourLine(0, text.data(), static_cast<uint32_t>(text.size()), state, line);
    const uint64_t few = allocations;
    // A second time there is storage enough.
    cpp->ColourLine(0, text.data(), static_cast<uint32_t>(text.size()), state, line);
    Heap::SetFailureHook(nullptr);
    EXPECT_EQ(coloured, text.size());
    EXPECT_EQ(line.count, 800000u);
    EXPECT_LE(few, 24u);
    EXPECT_EQ(allocations, few);
}

TEST_F(CLikeColour, WithoutMemoryNothingIsColoured) {
    const std::u16string text = u"a 1 2 3 4 5 6 7 8 9 /* b";
    const uint64_t failures = FailEachAllocation([&] {
        EngineHandle engine;
        {
            FailurePause pause;
            engine = Choose(u"cpp");
        }
        uint32_t state = 0;
        ColouredLine line;
        const uint32_t coloured = engine->ColourLine(0, text.data(), static_cast<uint32_t>(text.size()), state, line);
        if (coloured == 0) {
            EXPECT_EQ(line.count, 0u);
            EXPECT_EQ(state, 0u);
            return false;
        }
        EXPECT_EQ(coloured, text.size());
        EXPECT_EQ(state, 1u);
        return true;
    });
    EXPECT_GE(failures, 3u);
}

TEST_F(CLikeColour, AnEndMarkerThatDoesNotFitIntoMemoryChangesNothing) {
    ASSERT_TRUE(cpp->SetEndMarker(u"?>"));
    FailEachAllocation([&] {
        const bool done = cpp->SetEndMarker(u"a much longer marker than the one before");
        FailurePause pause;
        EXPECT_EQ(Paint(*cpp, u"x ?>").coloured, done ? 4u : 2u);
        return done;
    });
}
