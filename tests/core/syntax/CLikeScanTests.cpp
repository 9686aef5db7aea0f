#include "SyntaxTestSupport.h"

namespace {

class CLikeScan : public SyntaxTest {
protected:
    static EngineHandle Custom(const std::u16string& keys) {
        Load(u"[Engine_Q]\nExtensions=q\nKeywords=k\n" + keys);
        return Choose(u"q");
    }
    EngineHandle cpp = Choose(u"cpp");
};

} // namespace

TEST_F(CLikeScan, LongComments) {
    EXPECT_EQ(ScanText(*cpp, u"a /* b\n"), (Scanned{1, 7}));
    EXPECT_EQ(ScanText(*cpp, u"a /* b\n c */ d"), (Scanned{0, 14}));
    EXPECT_EQ(ScanText(*cpp, u"/*"), (Scanned{1, 2}));
    EXPECT_EQ(ScanText(*cpp, u"/*/"), (Scanned{1, 3}));
    EXPECT_EQ(ScanText(*cpp, u"/**/"), (Scanned{0, 4}));
    EXPECT_EQ(ScanText(*cpp, u"/**//*"), (Scanned{1, 6}));
}

TEST_F(CLikeScan, GoesOnFromTheGivenState) {
    EXPECT_EQ(ScanText(*cpp, u"b */ c /* d", 0, 1), (Scanned{1, 11}));
    EXPECT_EQ(ScanText(*cpp, u"b */ c", 0, 1), (Scanned{0, 6}));
    EXPECT_EQ(ScanText(*cpp, u"b c", 0, 1), (Scanned{1, 3}));
    EXPECT_EQ(ScanText(*cpp, u"", 0, 1), (Scanned{1, 0}));
    EXPECT_EQ(ScanText(*cpp, u"x", 0, 14), (Scanned{0, 1}));
}

TEST_F(CLikeScan, GoesOnFromTheGivenOffset) {
    EXPECT_EQ(ScanText(*cpp, u"/* x */ /*", 3, 0), (Scanned{1, 10}));
    EXPECT_EQ(ScanText(*cpp, u"/* x", 2, 0), (Scanned{0, 4}));
    EXPECT_EQ(ScanText(*cpp, u"abc", 3, 1), (Scanned{1, 3}));
}

TEST_F(CLikeScan, StartsOverFromBeyondTheEnd) {
    EXPECT_EQ(ScanText(*cpp, u"/* x", 5, 1), (Scanned{1, 4}));
    EXPECT_EQ(ScanText(*cpp, u"x", 9, 1), (Scanned{0, 1}));
}

TEST_F(CLikeScan, LineCommentsHideTheRestOfTheirLine) {
    EXPECT_EQ(ScanText(*cpp, u"// /* a\nb"), (Scanned{0, 9}));
    EXPECT_EQ(ScanText(*cpp, u"// \"\n/*"), (Scanned{1, 7}));
    EXPECT_EQ(ScanText(*cpp, u"// x"), (Scanned{0, 4}));
    // The line feed goes with them.
    ASSERT_TRUE(cpp->SetEndMarker(u"\n"));
    EXPECT_EQ(ScanText(*cpp, u"// a\nb\nc"), (Scanned{0, 6}));
}

TEST_F(CLikeScan, AStringHidesALongCommentStart) {
    EXPECT_EQ(ScanText(*cpp, u"printf(\"/*\");"), (Scanned{0, 13}));
    EXPECT_EQ(ScanText(*cpp, u"'/*' /*"), (Scanned{1, 7}));
    EXPECT_EQ(ScanText(*cpp, u"\"\\\"/*\""), (Scanned{0, 6}));
    EXPECT_EQ(ScanText(*cpp, u"\"\\\\\"/*"), (Scanned{1, 6}));
    EXPECT_EQ(ScanText(*cpp, u"\"\\"), (Scanned{0, 2}));
}

TEST_F(CLikeScan, AStringMayGoOnOverLines) {
    EXPECT_EQ(ScanText(*cpp, u"don't\n/* x\n"), (Scanned{0, 11}));
    EXPECT_EQ(ScanText(*cpp, u"don't\nwon't /* x\n"), (Scanned{1, 17}));
    // Colouring line by line ends it with its line.
    EXPECT_EQ(CarryState(*cpp, u"don't\n/* x\n"), 1u);
}

TEST_F(CLikeScan, ScanningWholeLinesEndsStringsWithTheirLine) {
    const auto lines = [&](const std::u16string& text, uint32_t state = 0) {
        return cpp->ScanLines(text.data(), static_cast<uint32_t>(text.size()), state);
    };
    EXPECT_EQ(lines(u"don't\n/* x\n"), 1u);
    EXPECT_EQ(lines(u"don't\nwon't /* x\n"), 0u);
    EXPECT_EQ(lines(u"\"\\\n/* x\n"), 1u);
    EXPECT_EQ(lines(u"\"a\\\"b\n/* x\n"), 1u);
    EXPECT_EQ(lines(u"\"/*\" x\n"), 0u);
    EXPECT_EQ(lines(u"*/ \"/*\n", 1), 0u);
}

TEST_F(CLikeScan, LineCommentsAreTriedBeforeLongOnes) {
    const EngineHandle engine = Custom(u"CommentStart=/\nLongCommentStart=/*\nLongCommentEnd=*/\n");
    EXPECT_EQ(ScanText(*engine, u"/* a\n"), (Scanned{0, 5}));
    EXPECT_EQ(Paint(*engine, u"/* a\n").state, 1u);
    // What a view carries from line to line is what it paints.
    EXPECT_EQ(engine->ScanLines(u"/* a\n", 5, 0), 1u);
}

TEST_F(CLikeScan, ScanningWholeLinesPassesOverWhatColouringTakesWhole) {
    const auto lines = [](const std::u16string& keys, const std::u16string& text) {
        const EngineHandle engine = Custom(keys);
        return engine->ScanLines(text.data(), static_cast<uint32_t>(text.size()), 0);
    };
    const std::u16string words = u"LongCommentStart=BEGIN\nLongCommentEnd=END\n";
    EXPECT_EQ(lines(words, u"xBEGIN\n"), 0u);
    EXPECT_EQ(lines(words, u"x BEGIN\n"), 1u);
    const std::u16string dots = u"LongCommentStart=..\nLongCommentEnd=,,\n";
    EXPECT_EQ(lines(dots, u"1..5\n"), 0u);
    EXPECT_EQ(lines(dots, u"x..5\n"), 1u);
    Load(u"[Engine_Q]\nExtensions=q\nKeywords=don't a/*\nLongCommentStart=/*\nLongCommentEnd=*/\n");
    const EngineHandle engine = Choose(u"q");
    EXPECT_EQ(engine->ScanLines(u"don't /*\n", 9, 0), 1u);
    EXPECT_EQ(engine->ScanLines(u"a/*\n", 4, 0), 0u);
}

TEST_F(CLikeScan, WordBoundaryOfLineComments) {
    const EngineHandle engine = Custom(u"CommentStart=REM\nLongCommentStart=(*\nLongCommentEnd=*)\n");
    EXPECT_EQ(ScanText(*engine, u"REM (*\n"), (Scanned{0, 7}));
    EXPECT_EQ(ScanText(*engine, u"REMARK (*\n"), (Scanned{1, 10}));
    EXPECT_EQ(ScanText(*engine, u"REM"), (Scanned{0, 3}));
    // The scan looks at every position, also inside words.
    EXPECT_EQ(ScanText(*engine, u"xREM (*\n"), (Scanned{0, 8}));
}

TEST_F(CLikeScan, ComparesAsTheDefinitionSays) {
    const std::u16string keys = u"LongCommentStart=BEG\nLongCommentEnd=FIN\nCommentStart=REM\n";
    const EngineHandle folding = Custom(keys + u"CaseSensitive=0\n");
    EXPECT_EQ(ScanText(*folding, u"beg fin Beg"), (Scanned{1, 11}));
    EXPECT_EQ(ScanText(*folding, u"rem beg"), (Scanned{0, 7}));
    const EngineHandle exact = Custom(keys);
    EXPECT_EQ(ScanText(*exact, u"beg"), (Scanned{0, 3}));
    EXPECT_EQ(ScanText(*exact, u"BEG fin"), (Scanned{1, 7}));
}

TEST_F(CLikeScan, StopsAtTheEndMarkerInAnyCase) {
    ASSERT_TRUE(cpp->SetEndMarker(u"</script"));
    EXPECT_EQ(ScanText(*cpp, u"a();\n</SCRIPT> /*"), (Scanned{0, 5}));
    EXPECT_EQ(ScanText(*cpp, u"/* </script"), (Scanned{1, 11}));
    EXPECT_EQ(ScanText(*cpp, u"\"</script\""), (Scanned{0, 10}));
    EXPECT_EQ(ScanText(*cpp, u"// </script"), (Scanned{0, 11}));
    EXPECT_EQ(ScanText(*cpp, u"</scrip"), (Scanned{0, 7}));
}

TEST_F(CLikeScan, TheEndMarkerIsTriedBeforeStrings) {
    ASSERT_TRUE(cpp->SetEndMarker(u"'"));
    EXPECT_EQ(ScanText(*cpp, u"a 'b'"), (Scanned{0, 2}));
}

TEST_F(CLikeScan, EmptyMarkersNeverMatch) {
    const EngineHandle engine = Custom(u"CommentStart=\nLongCommentStart=(\nLongCommentEnd=\n");
    EXPECT_EQ(ScanText(*engine, u"a ( b ) c"), (Scanned{1, 9}));
}

TEST_F(CLikeScan, AllCommentStartsEqual) {
    const EngineHandle engine = Custom(u"CommentStart=--\nCommentStart_1=--\nCommentStart_2=--\nCommentStart_3=--\n"
                                       u"LongCommentStart=--\nLongCommentEnd=--\n");
    EXPECT_EQ(ScanText(*engine, u"a -- b\n-- c"), (Scanned{0, 11}));
}

TEST_F(CLikeScan, LongPlainStretches) {
    std::u16string text(100000, u'x');
    EXPECT_EQ(ScanText(*cpp, text), (Scanned{0, 100000}));
    EXPECT_EQ(ScanText(*cpp, text + u"/*"), (Scanned{1, 100002}));
    for (size_t at = 0; at < 40; ++at) {
        std::u16string marked(60, u'x');
        marked.replace(at, 2, u"/*");
        EXPECT_EQ(ScanText(*cpp, marked), (Scanned{1, 60})) << at;
    }
}
