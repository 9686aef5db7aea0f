#include "SyntaxTestSupport.h"

#include "support/FailureInjection.h"
#include "support/Random.h"

namespace {

constexpr Char Inner[] = u"[Engine_Js]\nExtensions=js\nTreatAs=cpp\n[Engine_Php]\nExtensions=phps\nTreatAs=cpp\n";

class HtmlScan : public SyntaxTest {
protected:
    static EngineHandle WithInner() {
        Load(Inner);
        return Choose(u"html");
    }
    EngineHandle html = Choose(u"html");
};

} // namespace

TEST_F(HtmlScan, StatesOfMarkup) {
    EXPECT_EQ(ScanText(*html, u"a<b>c"), (Scanned{0, 5}));
    EXPECT_EQ(ScanText(*html, u"<b "), (Scanned{6, 3}));
    EXPECT_EQ(ScanText(*html, u"<b c"), (Scanned{7, 4}));
    EXPECT_EQ(ScanText(*html, u"<b c="), (Scanned{8, 5}));
    EXPECT_EQ(ScanText(*html, u"<b c=d"), (Scanned{6, 6}));
    EXPECT_EQ(ScanText(*html, u"<b c='d' "), (Scanned{6, 9}));
    EXPECT_EQ(ScanText(*html, u"<!-- x\n--"), (Scanned{11, 9}));
    EXPECT_EQ(ScanText(*html, u"<!-- x\n-->"), (Scanned{0, 10}));
    EXPECT_EQ(ScanText(*html, u"<script a=b "), (Scanned{13, 12}));
    EXPECT_EQ(ScanText(*html, u"<script>"), (Scanned{14, 8}));
    EXPECT_EQ(ScanText(*html, u"<?php "), (Scanned{16, 6}));
}

TEST_F(HtmlScan, ATagNameEndsAtALineFeed) {
    // The line feed then begins an attribute; colouring takes it into the name.
    EXPECT_EQ(ScanText(*html, u"<a\n").state, 7u);
    EXPECT_EQ(Paint(*html, u"<a\n").state, 6u);
    EXPECT_EQ(ScanText(*html, u"<a\n>").state, 0u);
}

TEST_F(HtmlScan, StartsWithTheOrdinaryReturnState) {
    ASSERT_EQ(Paint(*html, u"<script a='b'").state, 13u);
    EXPECT_EQ(ScanText(*html, u"a=b ", 0, 6).state, 6u);
}

TEST_F(HtmlScan, StartsOverFromBeyondTheEnd) {
    EXPECT_EQ(ScanText(*html, u"<b c", 5, 11), (Scanned{7, 4}));
    EXPECT_EQ(ScanText(*html, u"<b c", 4, 11), (Scanned{11, 4}));
    EXPECT_EQ(ScanText(*html, u"<b c", 1, 0), (Scanned{0, 4}));
}

TEST_F(HtmlScan, EmbeddedCode) {
    const EngineHandle engine = WithInner();
    EXPECT_EQ(ScanText(*engine, u"<script>\n/* a"), (Scanned{15, 13}));
    EXPECT_EQ(ScanText(*engine, u"<script>\n/* a */"), (Scanned{14, 16}));
    EXPECT_EQ(ScanText(*engine, u"a */ </script><b ", 0, 15), (Scanned{6, 17}));
    EXPECT_EQ(ScanText(*engine, u"<?php /*"), (Scanned{17, 8}));
    EXPECT_EQ(ScanText(*engine, u"<?php ?> <b "), (Scanned{6, 12}));
    EXPECT_EQ(ScanText(*engine, u"<?php\n\"?>\" ?>"), (Scanned{0, 13}));
    EXPECT_EQ(ScanText(*engine, u"x\n?>", 0, 16), (Scanned{0, 4}));
}

TEST_F(HtmlScan, APlainInnerEngineRunsToTheEnd) {
    // Its scan looks for no end marker.
    EXPECT_EQ(ScanText(*html, u"<script>x</script>y"), (Scanned{14, 19}));
    EXPECT_EQ(ScanText(*html, u"<?php x ?> y"), (Scanned{16, 12}));
}

TEST_F(HtmlScan, ScanningEqualsCarryingTheStateFromLineToLine) {
    // Without what the two see differently on purpose: names and values that end with their line, and
    // tags that go on over lines.
    const std::u16string tokens[] = {u"text ",    u"<b>",           u"<a href=\"x\">", u"</a>",      u"<!-- c ",
                                     u" -->",     u"<br />",        u"<script>",       u"</script>", u"<?php ",
                                     u" ?>",      u"int x; ",       u"/* d ",          u" */",       u"<!--e-->",
                                     u" \"/*\" ", u"<i k=v>",       u"// l",           u"a > b ",    u"<script async>",
                                     u"<p>x</p>", u"<script t='u'>"};
    const EngineHandle engine = WithInner();
    Random random(45);
    for (int round = 0; round < 3000; ++round) {
        std::u16string text;
        for (uint32_t lines = 1 + random.Below(20); lines > 0; --lines) {
            for (uint32_t n = random.Below(5); n > 0; --n) text += tokens[random.Below(std::size(tokens))];
            text += u'\n';
        }
        ASSERT_EQ(ScanText(*engine, text).state, CarryState(*engine, text)) << Readable(text.data(), text.size());
    }
}

TEST_F(HtmlScan, ScanningWholeLinesComesOutOfAPlainInnerEngine) {
    const auto lines = [&](const std::u16string& text, uint32_t state = 0) {
        return html->ScanLines(text.data(), static_cast<uint32_t>(text.size()), state);
    };
    EXPECT_EQ(lines(u"<script>\nx\n</SCRIPT>\ny\n"), 0u);
    EXPECT_EQ(lines(u"<script>\nx\n"), 14u);
    EXPECT_EQ(lines(u"<?php\nx ?>\n<b \n"), 7u);
    EXPECT_EQ(lines(u"x ?><!--\n", 16), 11u);
    // A tag name takes its line feed, and quoted values end with their line.
    EXPECT_EQ(lines(u"<a\n"), 6u);
    EXPECT_EQ(lines(u"<a t=\"x\ny z\n"), 7u);
    EXPECT_EQ(lines(u"<script\n src='a'>\n"), 14u);
    EXPECT_EQ(lines(u" src='a'>\n", 13), 14u);
    html->SetCarriedState(6);
    EXPECT_EQ(lines(u"a=b\n", 6), 6u);
}

// After a value a tag goes on as the line before has left it, in colouring and in scanning.
TEST_F(HtmlScan, ATagOfSeveralLinesGoesOnAsTheLineBeforeLeftIt) {
    for (const uint32_t tag : {6u, 13u}) {
        html->SetCarriedState(tag);
        EXPECT_EQ(html->ScanLines(u"='b' ", 5, 7), tag);
        EXPECT_EQ(html->CarriedState(), tag);
        EXPECT_EQ(Paint(*html, u"='b' ", 7).state, tag);
    }
    EXPECT_EQ(html->ScanLines(u"<b a\n", 5, 0), 7u);
    EXPECT_EQ(html->CarriedState(), 6u);
    EXPECT_EQ(html->ScanLines(u"<script a\n", 10, 0), 7u);
    EXPECT_EQ(html->CarriedState(), 13u);
}

TEST_F(HtmlScan, ScanningWholeLinesEqualsColouringThemInTurn) {
    const std::u16string tokens[] = {u"<",      u">",    u"a",     u" ",       u"=",        u"\"",
                                     u"'",      u"<!--", u"-->",   u"<script", u"<script>", u"</script",
                                     u"<?php ", u"?>",   u"/*",    u"*/",      u"// it's",  u"<b c='d'>",
                                     u"\t",     u"\\",   u"don't", u"int x;",  u"-",        u"<p>text</p>"};
    Random random(49);
    for (const bool inner : {false, true}) {
        Load(inner ? Inner : u"");
        for (int round = 0; round < 3000; ++round) {
            std::u16string text;
            for (uint32_t n = random.Below(60); n > 0; --n) {
                text += tokens[random.Below(std::size(tokens))];
                if (random.OneIn(5)) text += u'\n';
            }
            text += u'\n';
            // What the engine coloured before would show in a tag.
            const EngineHandle fresh = Choose(u"html");
            ASSERT_EQ(fresh->ScanLines(text.data(), static_cast<uint32_t>(text.size()), 0), CarryState(*fresh, text))
                << Readable(text.data(), text.size());
        }
    }
}

TEST_F(HtmlScan, EndsWithoutMemoryForAnInnerEngine) {
    const std::u16string text = u"<script>x</script>y";
    const uint64_t failures = FailEachAllocation([&] {
        EngineHandle engine;
        {
            FailurePause pause;
            engine = Choose(u"html");
        }
        uint32_t stopped = 0;
        const uint32_t state = engine->ScanState(text.data(), static_cast<uint32_t>(text.size()), 0, 0, stopped);
        EXPECT_EQ(state, 14u);
        EXPECT_LE(stopped, text.size());
        return stopped == text.size();
    });
    EXPECT_GE(failures, 2u);
}
