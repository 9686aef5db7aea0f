#include "SyntaxTestSupport.h"

#include "support/FailureInjection.h"

namespace {

constexpr Char Inner[] = u"[Engine_Js]\nExtensions=js\nTreatAs=cpp\n[Engine_Php]\nExtensions=phps\nKeywords=echo\n"
                         u"LongCommentStart=/*\nLongCommentEnd=*/\nCommentStart=#\n";

class HtmlColour : public SyntaxTest {
protected:
    // With engines for script and php.
    static EngineHandle WithInner() {
        Load(Inner);
        return Choose(u"html");
    }
    EngineHandle html = Choose(u"html");
};

} // namespace

TEST_F(HtmlColour, ALinkHasTheseRuns) {
    const Painted painted = Paint(*html, u"<a href=\"x\">link</a>");
    EXPECT_EQ(painted.runs, "tag(<a ) attr(href) punct(=) quotedvalue(\"x\") tag(>) text(link) tag(</a>)");
    EXPECT_EQ(painted.state, 0u);
    EXPECT_EQ(painted.fill, "none");
    EXPECT_EQ(painted.coloured, 20u);
}

TEST_F(HtmlColour, AnOpenCommentGoesOnOverLines) {
    const Painted first = Paint(*html, u"a<!-- a <b>\n");
    EXPECT_EQ(first.runs, "text(a) markup(<!-- a <b>\\n)");
    EXPECT_EQ(first.state, 11u);
    EXPECT_EQ(first.fill, "markup");
    const Painted second = Paint(*html, u"- -- --> c", 11);
    EXPECT_EQ(second.runs, "markup(- -- -->) text( c)");
    EXPECT_EQ(second.state, 0u);
    EXPECT_EQ(second.fill, "none");
    EXPECT_EQ(Runs(*html, u"<!-->-->"), "markup(<!-->-->)");
    EXPECT_EQ(Runs(*html, u"<!- x>"), "tag(<!- ) attr(x) tag(>)");
}

TEST_F(HtmlColour, ScriptElementsInAnyCase) {
    const Painted painted = Paint(*html, u"<SCRIPT>a<b");
    EXPECT_EQ(painted.runs, "tag(<SCRIPT>) text(a<b)");
    EXPECT_EQ(painted.state, 14u);
    // The closing tag is coloured like any other.
    EXPECT_EQ(Runs(*html, u"<SCRIPT>x</Script >y"), "tag(<SCRIPT>) text(x) tag(</Script >) text(y)");
    EXPECT_EQ(Paint(*html, u"<script src=\"a.js\">x").state, 14u);
    EXPECT_EQ(Paint(*html, u"<script src=a>x").state, 14u);
    EXPECT_EQ(Paint(*html, u"<scripting>x").state, 14u);
}

TEST_F(HtmlColour, AScriptTagWhoseLastAttributeHasNoValueIsOrdinary) {
    const Painted painted = Paint(*html, u"<script async>x");
    EXPECT_EQ(painted.runs, "tag(<script ) attr(async) tag(>) text(x)");
    EXPECT_EQ(painted.state, 0u);
}

TEST_F(HtmlColour, PhpBlocks) {
    const Painted painted = Paint(*html, u"<?php echo 1; ?>");
    EXPECT_EQ(painted.runs, "tag(<?php) text( echo 1; ) tag(?>)");
    EXPECT_EQ(painted.state, 0u);
    EXPECT_EQ(Runs(*html, u"<?PHP x?>y"), "tag(<?PHP) text( x) tag(?>) text(y)");
    EXPECT_EQ(Paint(*html, u"<?php x").state, 16u);
    EXPECT_EQ(Runs(*html, u"?>y", 16), "tag(?>) text(y)");
    // The name takes what is not blank.
    EXPECT_EQ(Runs(*html, u"<?php?>"), "tag(<?php?) text(>)");
}

TEST_F(HtmlColour, InnerEnginesColourTheirCode) {
    const EngineHandle engine = WithInner();
    EXPECT_EQ(Runs(*engine, u"<script>int x=\"</script\"; // y</script>"),
              "tag(<script>) keyword(int) text( x=) string(\"</script\") text(; ) comment(// y</script>)");
    EXPECT_EQ(Runs(*engine, u"<script>int</SCRIPT>int"), "tag(<script>) keyword(int) tag(</SCRIPT>) text(int)");
    EXPECT_EQ(Runs(*engine, u"<?php echo 1; ?>2"),
              "tag(<?php) text( ) keyword(echo) text( ) number(1) text(; ) tag(?>) text(2)");
}

TEST_F(HtmlColour, TheInnerStateIsCarried) {
    const EngineHandle engine = WithInner();
    Painted painted = Paint(*engine, u"<script>/* a\n");
    EXPECT_EQ(painted.runs, "tag(<script>) long(/* a\\n)");
    EXPECT_EQ(painted.state, 15u);
    EXPECT_EQ(painted.fill, "none");
    painted = Paint(*engine, u"b */ int\n", painted.state);
    EXPECT_EQ(painted.runs, "long(b */) text( ) keyword(int) text(\\n)");
    EXPECT_EQ(painted.state, 14u);
    painted = Paint(*engine, u"</script>", painted.state);
    EXPECT_EQ(painted.runs, "tag(</script>)");
    EXPECT_EQ(painted.state, 0u);
    painted = Paint(*engine, u"<?php /*");
    EXPECT_EQ(painted.state, 17u);
    painted = Paint(*engine, u"*/ # x ?>", painted.state);
    EXPECT_EQ(painted.runs, "long(*/) text( ) comment(# x ?>)");
    EXPECT_EQ(painted.state, 16u);
}

TEST_F(HtmlColour, TagsAndAttributes) {
    EXPECT_EQ(Runs(*html, u"<br/><br />"), "tag(<br/>) tag(<br ) attr(/) tag(>)");
    EXPECT_EQ(Runs(*html, u"<a b c=d\te>"), "tag(<a ) attr(b c) punct(=) value(d) tag(\\x0009) attr(e) tag(>)");
    EXPECT_EQ(Runs(*html, u"<a b= \t'c d'e>"), "tag(<a ) attr(b) punct(= \\x0009) quotedvalue('c d') attr(e) tag(>)");
    EXPECT_EQ(Runs(*html, u"<a b=c>d"), "tag(<a ) attr(b) punct(=) value(c) tag(>) text(d)");
    EXPECT_EQ(Runs(*html, u"<a b=>d"), "tag(<a ) attr(b) punct(=) tag(>) text(d)");
    EXPECT_EQ(Runs(*html, u"<>< >"), "tag(<>) tag(< >)");
    EXPECT_EQ(Runs(*html, u"a > b"), "text(a > b)");
    EXPECT_EQ(Runs(*html, u"<a =b=c>"), "tag(<a ) attr(=b) punct(=) value(c) tag(>)");
    EXPECT_EQ(Runs(*html, u"<a b==c>"), "tag(<a ) attr(b) punct(=) value(=c) tag(>)");
}

TEST_F(HtmlColour, AQuotedValueEndsAtAGreaterSign) {
    const Painted painted = Paint(*html, u"<a t=\"x>y\">z");
    EXPECT_EQ(painted.runs, "tag(<a ) attr(t) punct(=) quotedvalue(\"x) tag(>) text(y\">z)");
    EXPECT_EQ(painted.state, 0u);
    EXPECT_EQ(Runs(*html, u"<a t='x\"y'>"), "tag(<a ) attr(t) punct(=) quotedvalue('x\"y') tag(>)");
}

TEST_F(HtmlColour, ATagOverSeveralLines) {
    Painted painted = Paint(*html, u"<a b=\"c\"\n");
    EXPECT_EQ(painted.runs, "tag(<a ) attr(b) punct(=) quotedvalue(\"c\") attr(\\n)");
    EXPECT_EQ(painted.state, 7u);
    painted = Paint(*html, u" d=e>\n", painted.state);
    EXPECT_EQ(painted.runs, "attr( d) punct(=) value(e) tag(>) text(\\n)");
    EXPECT_EQ(Paint(*html, u"<a ").state, 6u);
    EXPECT_EQ(Paint(*html, u"<script ").state, 13u);
    EXPECT_EQ(Runs(*html, u" x=1>", 13), "tag( ) attr(x) punct(=) value(1) tag(>)");
    EXPECT_EQ(Paint(*html, u"<a b=").state, 8u);
    // A value open at the end of a line ends there.
    EXPECT_EQ(Paint(*html, u"<a b=\"c\n").state, 6u);
    EXPECT_EQ(Paint(*html, u"<script b=c\n").state, 13u);
}

TEST_F(HtmlColour, LinesMayBeginInEveryState) {
    EXPECT_EQ(Runs(*html, u"x>", 6), "attr(x) text(>)"); // a new engine returns to text
    ASSERT_EQ(Runs(*html, u"<a>"), "tag(<a>)");
    EXPECT_EQ(Runs(*html, u"x>", 6), "attr(x) tag(>)");
    EXPECT_EQ(Runs(*html, u"x>", 7), "attr(x) tag(>)");
    EXPECT_EQ(Runs(*html, u"x>", 8), "value(x) tag(>)");
    EXPECT_EQ(Runs(*html, u"'x'>", 9), "quotedvalue('x') tag(>)");
    EXPECT_EQ(Runs(*html, u"\"x\">", 10), "quotedvalue(\"x\") tag(>)");
    EXPECT_EQ(Runs(*html, u">x", 13), "tag(>) text(x)");
    EXPECT_EQ(Paint(*html, u">x", 13).state, 14u);
    EXPECT_EQ(Runs(*html, u"</script>", 14), "tag(</script>)");
}

TEST_F(HtmlColour, TheReturnStateBelongsToTheEngine) {
    // A tag that goes on from another line returns to where the last coloured tag did.
    ASSERT_EQ(Paint(*html, u"<script a='b'").state, 13u);
    EXPECT_EQ(Paint(*html, u"a=b ", 6).state, 13u);
    ASSERT_EQ(Paint(*html, u"<p a='b'").state, 6u);
    EXPECT_EQ(Paint(*html, u"a=b ", 6).state, 6u);
    // Scanning leaves it alone.
    EXPECT_EQ(ScanText(*html, u"<script a").state, 7u);
    EXPECT_EQ(Paint(*html, u"a=b ", 6).state, 6u);
    // The end of embedded code makes it the ordinary one.
    ASSERT_EQ(Paint(*html, u"<script>").state, 14u);
    ASSERT_EQ(Paint(*html, u"</script", 14).state, 6u);
    EXPECT_EQ(Paint(*html, u"a=b ", 6).state, 6u);
    ASSERT_EQ(Paint(*html, u"<script a='b'").state, 13u);
    ASSERT_EQ(Paint(*html, u"?>", 16).state, 0u);
    EXPECT_EQ(Paint(*html, u"a=b ", 6).state, 6u);
}

TEST_F(HtmlColour, ANewEngineReturnsToText) { EXPECT_EQ(Paint(*html, u"a=b ", 6).state, 0u); }

TEST_F(HtmlColour, UnknownStatesAreText) {
    for (uint32_t state : {1u, 5u, 12u, 18u, 31u, UINT32_MAX}) {
        const Painted painted = Paint(*html, u"x", state);
        EXPECT_EQ(painted.runs, "text(x)");
        EXPECT_EQ(painted.state, 0u);
        EXPECT_EQ(ScanText(*html, u"x", 0, state), (Scanned{0, 1}));
    }
}

TEST_F(HtmlColour, AnEmptyLineKeepsItsState) {
    for (uint32_t state : {0u, 6u, 7u, 11u, 13u, 15u, 16u}) {
        const Painted painted = Paint(*html, u"", state);
        EXPECT_EQ(painted.runs, "");
        EXPECT_EQ(painted.state, state);
    }
    EXPECT_EQ(Paint(*html, u"", 11).fill, "markup");
}

TEST_F(HtmlColour, HighlightsReachTheInnerEnginesOnly) {
    const EngineHandle engine = WithInner();
    const std::u16string_view text = u"<script>(x)</script><?php (y) ?>(z)";
    const std::string plain = Runs(*engine, text);
    HighlightRange range = Brace(8, 9);
    engine->SetHighlight(0, &range);
    EXPECT_NE(Runs(*engine, text).find("tag(<script>) brace(() text(x))"), std::string::npos);
    range = Brace(26, 27);
    engine->SetHighlight(0, &range);
    EXPECT_NE(Runs(*engine, text).find("text( ) brace(() text(y) )"), std::string::npos);
    range = Brace(32, 33);
    engine->SetHighlight(0, &range);
    EXPECT_EQ(Runs(*engine, text), plain);
    engine->SetHighlight(0, nullptr);
    EXPECT_EQ(Runs(*engine, text), plain);
}

TEST_F(HtmlColour, HtmlInsideHtmlComesToAnEnd) {
    Load(u"[Engine_Js]\nExtensions=js phps\nHTML=1\n");
    const EngineHandle engine = Choose(u"html");
    std::u16string text;
    for (int i = 0; i < 2000; ++i) text += i % 3 ? u"<script>" : u"<?php ";
    const Painted painted = Paint(*engine, text + u"x");
    EXPECT_EQ(painted.coloured, text.size() + 1);
    EXPECT_EQ(painted.state, 16u);
    EXPECT_EQ(ScanText(*engine, text).stopped, text.size());
    // An inner engine's states other than 0 and 1 find no room.
    EXPECT_EQ(Paint(*engine, u"<script><a ").state, 14u);
}

TEST_F(HtmlColour, AnInnerDefinitionMayTreatItselfAsHtml) {
    Load(u"[Engine_Js]\nExtensions=js\nTreatAs=html\n");
    const EngineHandle engine = Choose(u"html");
    EXPECT_EQ(Runs(*engine, u"<script><b>x"), "tag(<script>) tag(<b>) text(x)");
}

TEST_F(HtmlColour, AlwaysMayChangeState) {
    EXPECT_TRUE(MayChange(*html, u"x"));
    EXPECT_TRUE(MayChange(*html, u""));
}

TEST_F(HtmlColour, ItsOwnEndMarkerDoesNotStopIt) {
    ASSERT_TRUE(html->SetEndMarker(u"x"));
    EXPECT_EQ(Paint(*html, u"a x b").coloured, 5u);
}

TEST_F(HtmlColour, WithoutMemoryNothingIsColoured) {
    const std::u16string text = u"<a b='c'>d</a><script>int x</script><?php echo 1 ?><!--";
    Load(Inner);
    const uint64_t failures = FailEachAllocation([&] {
        EngineHandle engine;
        {
            FailurePause pause;
            engine = Choose(u"html");
        }
        uint32_t state = 6;
        ColouredLine line;
        const uint32_t coloured = engine->ColourLine(0, text.data(), static_cast<uint32_t>(text.size()), state, line);
        if (coloured == 0) {
            EXPECT_EQ(line.count, 0u);
            EXPECT_EQ(state, 6u);
            FailurePause pause;
            // The return state of a new engine has not moved either.
            EXPECT_EQ(Paint(*engine, u"a=b ", 6).state, 0u);
            return false;
        }
        EXPECT_EQ(coloured, text.size());
        EXPECT_EQ(state, 11u);
        return true;
    });
    EXPECT_GE(failures, 8u);
}
