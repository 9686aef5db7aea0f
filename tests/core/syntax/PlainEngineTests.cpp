#include "SyntaxTestSupport.h"

namespace {
class PlainEngine : public SyntaxTest {
protected:
    EngineHandle engine = Choose(u"txt");
};
} // namespace

TEST_F(PlainEngine, OneTextRunAndNoFill) {
    const Painted painted = Paint(*engine, u"int x; // \"y\"\n", 5);
    EXPECT_EQ(painted.runs, "text(int x; // \"y\"\\n)");
    EXPECT_EQ(painted.state, 0u);
    EXPECT_EQ(painted.coloured, 14u);
    EXPECT_EQ(painted.fill, "none");
}

TEST_F(PlainEngine, StopsBeforeItsEndMarkerInAnyCase) {
    ASSERT_TRUE(engine->SetEndMarker(u"</Script"));
    const Painted painted = Paint(*engine, u"a < b </SCRIPT> </script>");
    EXPECT_EQ(painted.runs, "text(a < b )");
    EXPECT_EQ(painted.coloured, 6u);
    EXPECT_EQ(Paint(*engine, u"</scrip").coloured, 7u);
    ASSERT_TRUE(engine->SetEndMarker(u""));
    EXPECT_EQ(Paint(*engine, u"</script").coloured, 8u);
    ASSERT_TRUE(engine->SetEndMarker(nullptr));
    EXPECT_EQ(Paint(*engine, u"</script").coloured, 8u);
}

TEST_F(PlainEngine, ScanStopsAtTheLength) {
    EXPECT_EQ(ScanText(*engine, u"/* a\n", 0, 1), (Scanned{0, 5}));
    EXPECT_EQ(ScanText(*engine, u"/* a\n", 3, 0), (Scanned{0, 5}));
    ASSERT_TRUE(engine->SetEndMarker(u"a"));
    EXPECT_EQ(ScanText(*engine, u"/* a\n"), (Scanned{0, 5}));
}

TEST_F(PlainEngine, ScanningWholeLinesStopsWhereColouringDoes) {
    ASSERT_TRUE(engine->SetEndMarker(u"?>"));
    uint32_t stopped = 0;
    EXPECT_EQ(engine->ScanLinesToEnd(u"a\nb ?> c", 8, 0, stopped), 0u);
    EXPECT_EQ(stopped, 4u);
    EXPECT_EQ(engine->ScanLinesToEnd(u"a\nb", 3, 0, stopped), 0u);
    EXPECT_EQ(stopped, 3u);
}

TEST_F(PlainEngine, NeverChangesState) { EXPECT_FALSE(MayChange(*engine, u"/* */ <script>")); }

TEST_F(PlainEngine, HighlightsAreIgnored) {
    const HighlightRange range = Brace(0, 1);
    engine->SetHighlight(0, &range);
    EXPECT_EQ(Runs(*engine, u"(a)"), "text((a))");
}
