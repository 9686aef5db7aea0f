#include "support/ColouredReaders.h"
#include "support/FailureInjection.h"
#include "support/Random.h"
#include "support/ViewTest.h"
#include "view/HtmlExport.h"
#include "view/RichTextExport.h"

#include <algorithm>

namespace {

// The table of the default colours, in the order of the settings; "int" has colour 9, text 4, strings 8,
// comments 7.
const std::string Header = "{\\rtf1\\ansi\\ansicpg1252\n{\\colortbl;"
                           "\\red0\\green128\\blue128;\\red220\\green220\\blue220;\\red0\\green255\\blue255;"
                           "\\red0\\green0\\blue0;\\red255\\green255\\blue255;\\red255\\green255\\blue220;"
                           "\\red0\\green128\\blue0;\\red255\\green0\\blue0;\\red0\\green0\\blue255;"
                           "\\red128\\green0\\blue0;\\red255\\green255\\blue0;\\red128\\green0\\blue128;"
                           "\\red255\\green0\\blue255;}";

// An engine that gives a line the same spans whatever its text, up to its length, and may give none.
class SpanEngine final : public SyntaxEngine {
public:
    uint32_t AddRef() override { return ++references; }
    uint32_t Release() override {
        if (--references) return references;
        delete this;
        return 0;
    }
    uint32_t ColourLine(uint32_t offset, const Char*, uint32_t length, uint32_t&, ColouredLine& line) override {
        spans[0] = {0x123456, settings.TextBg, length};
        line = {spans, offset >= blindFrom ? 0u : 1u, NoFill};
        return length;
    }
    uint32_t ScanState(const Char*, uint32_t length, uint32_t, uint32_t, uint32_t& stopped) override {
        stopped = length;
        return 0;
    }
    bool MayChangeState(const Char*, uint32_t) override { return false; }
    void SetHighlight(uint32_t, const HighlightRange*) override {}
    bool SetEndMarker(const Char*) override { return true; }
    const Char* BraceCharacters() const override { return u"()"; }

    uint32_t blindFrom = UINT32_MAX;

private:
    ~SpanEngine() = default;
    ColourSpan spans[1] = {};
    uint32_t references = 1;
};

struct ExportTest : ViewTest {
    std::string Rich(uint32_t from, uint32_t to) {
        WString out;
        result = WriteRichText(buffer(), {from, to}, out);
        return Plain({out.Text(), out.Length()});
    }
    // Without the header and the final brace.
    std::string RichBody(uint32_t from, uint32_t to) {
        const std::string all = Rich(from, to);
        EXPECT_EQ(all.substr(0, Header.size()), Header);
        EXPECT_EQ(all.back(), '}');
        return all.substr(Header.size(), all.size() - Header.size() - 1);
    }
    std::string Html(uint32_t from, uint32_t to) {
        WString out;
        result = WriteHtml(buffer(), {from, to}, out);
        return Plain({out.Text(), out.Length()});
    }
    ExportResult result = ExportResult::Done;
};

} // namespace

TEST_F(ExportTest, RichTextHasHeaderTableAndGroups) {
    Fill(u"int x", u"cpp");
    EXPECT_EQ(Rich(0, 5), Header + "{\\cf9 int}{\\cf4  x}}");
    EXPECT_EQ(result, ExportResult::Done);
}

TEST_F(ExportTest, EachFurtherLineStartsWithAParagraph) {
    Fill(u"int\nx\n\ny", u"cpp");
    EXPECT_EQ(RichBody(0, 8), "{\\cf9 int}{\\cf4 \n}\\par{\\cf4 x\n}\\par{\\cf4 \n}\\par{\\cf4 y}");
}

TEST_F(ExportTest, AnotherBackgroundIsAHighlight) {
    settings.CommentBg = settings.MarginColor;
    LoadEngineDefinitions(IniFile());
    Fill(u"a // b", u"cpp");
    EXPECT_EQ(RichBody(0, 6), "{\\cf4 a }{\\cf7\\highlight2 // b}");
}

TEST_F(ExportTest, BracesAndBackslashesAreEscaped) {
    Fill(u"a{b}\\c&d", u"txt");
    EXPECT_EQ(RichBody(0, 8), "{\\cf4 a\\{b\\}\\\\c&d}");
}

TEST_F(ExportTest, SpansBeforeTheSelectionWriteEmptyGroups) {
    Fill(u"int x = 5; // c", u"cpp");
    // Spans: int, " x = ", 5, "; ", comment.
    EXPECT_EQ(RichBody(8, 9), "{\\cf9 }{\\cf4 }{\\cf10 5}{\\cf4 }{\\cf7 }");
    EXPECT_EQ(RichBody(6, 10), "{\\cf9 }{\\cf4 = }{\\cf10 5}{\\cf4 ;}{\\cf7 }");
}

TEST_F(ExportTest, ASelectionFromTheMiddleOfALineStartsThere) {
    Fill(u"one\ntwo\nthree", u"txt");
    EXPECT_EQ(RichBody(5, 10), "{\\cf4 wo\n}\\par{\\cf4 th}");
}

TEST_F(ExportTest, AColourThatTheTableLacksIsItsFirst) {
    Fill(u"x");
    buffer().AttachEngine(new SpanEngine);
    EXPECT_EQ(RichBody(0, 1), "{\\cf1 x}");
}

TEST_F(ExportTest, ALongCommentFromAboveIsCarriedIn) {
    Fill(u"/* a\nb */ int", u"cpp");
    EXPECT_EQ(RichBody(5, 13), "{\\cf7 b */}{\\cf4  }{\\cf9 int}{\\cf4 }"); // the terminator
}

TEST_F(ExportTest, TheColoursAreThoseOfTheScreen) {
    // An apostrophe left open ends with its line, as it does in the view.
    Fill(u"don't\nint x", u"cpp");
    EXPECT_EQ(RichBody(6, 9), "{\\cf9 int}{\\cf4 }");
    // After a script that no engine colours, tags have their colours again.
    Fill(u"<script>x\n</script>\n<b>", u"html");
    EXPECT_EQ(RichBody(20, 23), "{\\cf9 <b>}{\\cf4 }");
}

TEST_F(ExportTest, HtmlHasFontsInAPre) {
    Fill(u"int x", u"cpp");
    EXPECT_EQ(Html(0, 5), "<pre>\n<font color=\"#0000ff\">int</font><font color=\"#000000\"> x</font></pre>");
}

TEST_F(ExportTest, HtmlColoursAreRedGreenBlue) {
    settings.CommentBg = Rgb(1, 2, 3);
    settings.CommentFg = Rgb(0x10, 0x20, 0x30);
    LoadEngineDefinitions(IniFile());
    Fill(u"// b", u"cpp");
    EXPECT_EQ(Html(0, 4), "<pre>\n<font color=\"#102030\" style=\"background-color:#010203\">// b</font></pre>");
}

TEST_F(ExportTest, HtmlEscapesAnglesAndQuotesButNoAmpersand) {
    Fill(u"<a b=\"c\">&", u"txt");
    EXPECT_EQ(Html(0, 10), "<pre>\n<font color=\"#000000\">&lt;a b=&quot;c&quot;&gt;&</font></pre>");
}

TEST_F(ExportTest, HtmlLineFeedsEndTheLines) {
    Fill(u"a\nb", u"txt");
    EXPECT_EQ(Html(0, 3), "<pre>\n<font color=\"#000000\">a\n</font><font color=\"#000000\">b</font></pre>");
}

TEST_F(ExportTest, ALineWithoutSpansCutsTheTextShort) {
    Fill(u"a\nb\nc");
    auto* engine = new SpanEngine;
    engine->blindFrom = 2;
    buffer().AttachEngine(engine);
    EXPECT_EQ(Rich(0, 5), Header + "{\\cf1 a\n}");
    EXPECT_EQ(result, ExportResult::NoColours);
    EXPECT_EQ(Html(0, 5), "<pre>\n<font color=\"#563412\">a\n</font>");
    EXPECT_EQ(result, ExportResult::NoColours);
}

TEST_F(ExportTest, BothReadBackToTheSelectedText) {
    Random random(11);
    const std::u16string letters = u"ab1 \t/*\"\\{}<>\n";
    for (int round = 0; round < 400; ++round) {
        std::u16string text;
        for (uint32_t i = random.Below(120); i; --i) text += random.Pick(letters);
        const bool code = random.OneIn(2);
        Fill(text, code ? u"cpp" : u"html");
        const uint32_t to = random.Below(static_cast<uint32_t>(text.size()) + 1);
        const uint32_t from = random.Below(to + 1);
        if (from == to) continue;
        const std::u16string wanted = text.substr(from, to - from);
        SCOPED_TRACE(Plain(wanted));
        WString rich;
        WString html;
        ASSERT_EQ(WriteRichText(buffer(), {from, to}, rich), ExportResult::Done);
        ASSERT_EQ(WriteHtml(buffer(), {from, to}, html), ExportResult::Done);
        const auto richRead = coloured::ReadRichText({rich.Text(), rich.Length()});
        const auto htmlRead = coloured::ReadHtml({html.Text(), html.Length()});
        ASSERT_TRUE(richRead.has_value());
        ASSERT_TRUE(htmlRead.has_value());
        EXPECT_EQ(coloured::TextOf(richRead->spans), wanted);
        EXPECT_EQ(coloured::TextOf(*htmlRead), wanted);
        // Within a tag the markup engine also goes by what it coloured before.
        if (code) {
            EXPECT_EQ(richRead->spans.size(), htmlRead->size());
        }
        // The line that a final line feed leads to is not part of the selection.
        const auto lines = static_cast<size_t>(std::count(wanted.begin(), wanted.end() - 1, u'\n'));
        EXPECT_EQ(richRead->paragraphs, lines);
    }
}

// The command.

TEST_F(ExportTest, TheClipboardGetsMarkupRichTextAndHtml) {
    Show(u"^int\u20AC|", u"txt");
    EXPECT_TRUE(input().ExecuteCommand(ViewCommand::CopyColoured));
    ASSERT_EQ(surface().written.size(), 3u);
    EXPECT_EQ(surface().written[0].first, ClipboardFormat::UnicodeText);
    EXPECT_EQ(surface().written[1].first, ClipboardFormat::RichText);
    EXPECT_EQ(surface().written[2].first, ClipboardFormat::Html);
    EXPECT_EQ(surface().written[1].second, Header + "{\\cf4 int\x80}}" + '\0');
    const std::string html = "<pre>\n<font color=\"#000000\">int\xE2\x82\xAC</font></pre>";
    EXPECT_EQ(surface().written[2].second, html + '\0');
    EXPECT_EQ(Plain(surface().clipboard), "<pre>\n<font color=\"#000000\">int?</font></pre>");
    EXPECT_EQ(surface().written[0].second.size(), surface().clipboard.size() * 2 + 2);
}

TEST_F(ExportTest, AnEmptySelectionCopiesNothing) {
    Show(u"in|t", u"cpp");
    EXPECT_TRUE(input().ExecuteCommand(ViewCommand::CopyColoured));
    EXPECT_TRUE(surface().written.empty());
}

TEST_F(ExportTest, APendingEditIsCopiedToo) {
    Show(u"|", u"txt");
    Type(u"ab");
    view().SelectRange({0, 2});
    input().ExecuteCommand(ViewCommand::CopyColoured);
    EXPECT_EQ(Plain(surface().clipboard), "<pre>\n<font color=\"#000000\">ab</font></pre>");
}

TEST_F(ExportTest, PartialTextsStillReachTheClipboard) {
    Show(u"^a\nb|");
    auto* engine = new SpanEngine;
    engine->blindFrom = 2;
    buffer().AttachEngine(engine);
    input().ExecuteCommand(ViewCommand::CopyColoured);
    EXPECT_EQ(Plain(surface().clipboard), "<pre>\n<font color=\"#563412\">a\n</font>");
}

TEST_F(ExportTest, WithoutMemoryNothingIsCopied) {
    const uint64_t failures = FailEachAllocation([&] {
        {
            FailurePause pause;
            Show(u"^int x;\n\"s\"|", u"cpp");
            surface().written.clear();
        }
        input().ExecuteCommand(ViewCommand::CopyColoured);
        FailurePause pause;
        if (surface().written.empty()) return false;
        EXPECT_EQ(surface().written.size(), 3u);
        // Without memory for colours a line ends the text early, as a line without spans does.
        const std::string& rich = surface().written[1].second;
        EXPECT_EQ(rich.substr(0, Header.size()), Header);
        return rich.find("\\cf8 \"s\"") != rich.npos;
    });
    EXPECT_GT(failures, 3u);
}
