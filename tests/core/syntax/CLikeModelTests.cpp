#include "SyntaxTestSupport.h"

#include "support/Random.h"

#include <algorithm>

// The C-like engine against a plain model of its rules that looks at one character at a time.
namespace {

struct Rules {
    std::vector<std::u16string> keywords;
    bool caseSensitive = true;
    std::u16string longStart, longEnd, endMarker;
    std::vector<std::u16string> lineComments;
    HighlightRange highlights[2];

    std::u16string Section() const {
        std::u16string text = u"[Engine_Q]\nExtensions=q\nKeywords=";
        for (const std::u16string& word : keywords) text.append(word).append(u" ");
        text.append(u"\nCaseSensitive=").append(caseSensitive ? u"1" : u"0");
        text.append(u"\nLongCommentStart=").append(longStart).append(u"\nLongCommentEnd=").append(longEnd);
        for (size_t i = 0; i < lineComments.size(); ++i) {
            text.append(u"\nCommentStart");
            if (i != 0) text.append(u"_").append(1, static_cast<Char>(u'0' + i));
            text.append(u"=").append(lineComments[i]);
        }
        return text.append(u"\n");
    }
};

class Model {
public:
    Model(const Rules& engineRules, std::u16string_view lineText, uint32_t lineOffset)
        : rules(engineRules), text(lineText), offset(lineOffset) {}

    // The runs as Runs gives them, and the state.
    std::string Colour(uint32_t& state) {
        while (at < text.size() && !stopped) {
            if (state == 1)
                InLongComment(state);
            else
                Outside(state);
        }
        std::string out;
        size_t start = 0;
        for (const Run& run : runs) {
            if (start != 0) out += ' ';
            out += run.kind + '(' + Readable(text.data() + start, run.length) + ')';
            start += run.length;
        }
        return out;
    }
    std::string Fill(uint32_t state) const { return state == 1 ? "long" : fill; }

private:
    struct Run {
        std::string kind;
        size_t length;
    };

    bool IsNext(const std::u16string& marker, bool exact) const {
        if (marker.empty() || text.size() - at < marker.size()) return false;
        for (size_t i = 0; i < marker.size(); ++i) {
            const Char a = text[at + i], b = marker[i];
            if (exact ? a != b : Text::FoldCase(a) != Text::FoldCase(b)) return false;
        }
        return true;
    }
    void Take(const std::string& kind, size_t length) {
        runs.push_back({kind, length});
        at += length;
    }
    void Extend(size_t length) {
        runs.back().length += length;
        at += length;
    }

    void InLongComment(uint32_t& state) {
        if (runs.empty()) Take("long", 0);
        while (at < text.size() && !IsNext(rules.longEnd, rules.caseSensitive)) Extend(1);
        if (at == text.size()) return;
        Extend(rules.longEnd.size());
        state = 0;
    }

    bool LineCommentHere() const {
        return std::any_of(rules.lineComments.begin(), rules.lineComments.end(), [&](const std::u16string& marker) {
            if (!IsNext(marker, rules.caseSensitive)) return false;
            const size_t after = at + marker.size();
            return !Text::IsAsciiLetter(marker.back()) || after == text.size() || !Text::IsAsciiLetter(text[after]);
        });
    }

    size_t StringLength() const {
        bool live = false;
        for (size_t i = at + 1; i < text.size(); ++i) {
            if (text[i] == text[at] && !live) return i + 1 - at;
            live = text[i] == u'\\' && !live;
        }
        return text.size() - at;
    }

    size_t KeywordLength() const {
        std::vector<size_t> found;
        for (const std::u16string& word : rules.keywords) {
            const size_t after = at + word.size();
            if (!IsNext(word, rules.caseSensitive)) continue;
            if (after == text.size() || !Text::IsWordChar(text[after])) found.push_back(word.size());
        }
        return found.empty() ? 0 : *std::min_element(found.begin(), found.end());
    }

    bool Highlight() {
        for (const HighlightRange& range : rules.highlights) {
            const uint64_t position = offset + at;
            if (position < range.start || position >= range.end) continue;
            Take("brace", std::min<size_t>(range.end - range.start, text.size() - at));
            return true;
        }
        return false;
    }

    void Outside(uint32_t& state) {
        const Char c = text[at];
        if (IsNext(rules.longStart, rules.caseSensitive)) {
            Take("long", rules.longStart.size());
            state = 1;
        } else if (LineCommentHere()) {
            Take("comment", text.size() - at);
            fill = "comment";
        } else if (c == u'"' || c == u'\'') {
            Take("string", StringLength());
        } else if (IsNext(rules.endMarker, false)) {
            stopped = true;
        } else if (Text::IsDigit(c)) {
            Take("number", 0);
            while (at < text.size() && (text[at] == u'.' || Text::IsWordChar(text[at]))) Extend(1);
        } else if (const size_t length = KeywordLength()) {
            Take("keyword", length);
        } else if (!Highlight()) {
            TakeText();
        }
    }

    void TakeText() {
        if (runs.empty() || runs.back().kind != "text") Take("text", 0);
        const Char c = text[at];
        Extend(1);
        while (at < text.size() && Text::IsBlank(c) && Text::IsBlank(text[at])) Extend(1);
        while (at < text.size() && Text::IsWordChar(c) && Text::IsWordChar(text[at])) Extend(1);
    }

    const Rules& rules;
    std::u16string_view text;
    uint32_t offset;
    size_t at = 0;
    bool stopped = false;
    std::vector<Run> runs;
    std::string fill = "none";
};

// Few letters, so that everything meets everything.
constexpr std::u16string_view Letters = u"aAbB19_#.;/*-+\"'\\ \t\n(\u00FC\uFF41";

std::u16string Word(Random& random, size_t longest, std::u16string_view letters) {
    std::u16string text;
    for (uint32_t n = 1 + random.Below(longest); n > 0; --n) text += letters[random.Below(letters.size())];
    return text;
}

Rules MakeRules(Random& random) {
    constexpr std::u16string_view markerLetters = u"aAbB1_.;/*-\"' (\u00FC";
    Rules rules;
    for (uint32_t n = 1 + random.Below(6); n > 0; --n) {
        rules.keywords.push_back(Word(random, 4, u"aAbB19_#.;/*-+\u00FC"));
    }
    rules.caseSensitive = random.OneIn(2);
    rules.longStart = random.OneIn(4) ? u"" : Word(random, 2, markerLetters);
    rules.longEnd = random.OneIn(4) ? u"" : Word(random, 2, markerLetters);
    rules.endMarker = random.OneIn(2) ? u"" : Word(random, 3, markerLetters);
    for (uint32_t n = random.Below(5); n > 0; --n) rules.lineComments.push_back(Word(random, 3, markerLetters));
    return rules;
}

class CLikeModel : public SyntaxTest {};

} // namespace

TEST_F(CLikeModel, RandomRulesAndLines) {
    Random random(42);
    for (int round = 0; round < 1500; ++round) {
        Rules rules = MakeRules(random);
        Load(rules.Section());
        const EngineHandle engine = Choose(u"q");
        ASSERT_TRUE(engine->SetEndMarker(rules.endMarker.c_str()));
        for (int line = 0; line < 12; ++line) {
            const std::u16string text = Word(random, random.OneIn(3) ? 200 : 20, Letters);
            const uint32_t offset = random.Below(50);
            for (uint32_t i = 0; i < 2; ++i) {
                const uint32_t start = random.Below(120);
                rules.highlights[i] = random.OneIn(2) ? HighlightRange() : Brace(start, start + random.Below(5));
                engine->SetHighlight(i, &rules.highlights[i]);
            }
            uint32_t state = random.OneIn(4);
            Model model(rules, text, offset);
            const Painted painted = Paint(*engine, text, state, offset);
            ASSERT_EQ(painted.runs, model.Colour(state)) << Readable(rules.Section().data(), rules.Section().size());
            ASSERT_EQ(painted.state, state);
            ASSERT_EQ(painted.fill, model.Fill(state));
        }
    }
}

TEST_F(CLikeModel, ScanningEqualsCarryingTheStateFromLineToLine) {
    // Lines as programs have them: strings end on their line.
    const std::u16string tokens[] = {u"int x = 1;", u" /* a", u" b */", u" // c /*", u" \"/*\"", u" '\\''", u" * /",
                                     u" \"\\\\\"",  u"/",     u"*",     u" x/y",     u" /**/",   u" #if",   u"\t"};
    const EngineHandle engine = Choose(u"cpp");
    Random random(43);
    for (int round = 0; round < 3000; ++round) {
        std::u16string text;
        std::vector<size_t> starts = {0};
        for (uint32_t lines = 1 + random.Below(30); lines > 0; --lines) {
            for (uint32_t n = random.Below(5); n > 0; --n) text += tokens[random.Below(std::size(tokens))];
            text += u'\n';
            starts.push_back(text.size());
        }
        ASSERT_EQ(ScanText(*engine, text).state, CarryState(*engine, text)) << Readable(text.data(), text.size());
        // From any line start to any other one, in one step or two.
        const size_t middle = random.Pick(starts);
        const std::u16string_view first = std::u16string_view(text).substr(0, middle);
        const uint32_t between = ScanText(*engine, first).state;
        ASSERT_EQ(between, CarryState(*engine, first));
        ASSERT_EQ(ScanText(*engine, text, static_cast<uint32_t>(middle), between), ScanText(*engine, text));
    }
}

TEST_F(CLikeModel, ScanningWholeLinesEqualsColouringThemInTurn) {
    const std::u16string letters = u"ab1 \"'\\/*#\n";
    const EngineHandle engine = Choose(u"cpp");
    Random random(47);
    for (int round = 0; round < 5000; ++round) {
        std::u16string text;
        for (uint32_t n = random.Below(80); n > 0; --n) text += random.Pick(letters);
        text += u'\n';
        for (const uint32_t state : {0u, 1u}) {
            ASSERT_EQ(engine->ScanLines(text.data(), static_cast<uint32_t>(text.size()), state),
                      CarryState(*engine, text, state))
                << Readable(text.data(), text.size());
        }
    }
}

TEST_F(CLikeModel, ScanningWholeLinesFollowsColouringWhateverTheMarkers) {
    Random random(48);
    for (int round = 0; round < 1500; ++round) {
        Rules rules = MakeRules(random);
        Load(rules.Section());
        const EngineHandle engine = Choose(u"q");
        for (int repeat = 0; repeat < 8; ++repeat) {
            const std::u16string text = Word(random, 200, Letters);
            const auto length = static_cast<uint32_t>(text.size());
            for (const uint32_t state : {0u, 1u}) {
                ASSERT_EQ(engine->ScanLines(text.data(), length, state), CarryState(*engine, text, state))
                    << Readable(rules.Section().data(), rules.Section().size()) << Readable(text.data(), text.size());
            }
        }
        // The end marker ends both at the same place.
        ASSERT_TRUE(engine->SetEndMarker(rules.endMarker.c_str()));
        for (int repeat = 0; repeat < 8; ++repeat) {
            std::u16string text = Word(random, 40, Letters);
            std::replace(text.begin(), text.end(), u'\n', u' ');
            const Painted painted = Paint(*engine, text);
            uint32_t stopped = 0;
            const auto length = static_cast<uint32_t>(text.size());
            ASSERT_EQ(engine->ScanLinesToEnd(text.data(), length, 0, stopped), painted.state);
            ASSERT_EQ(stopped, painted.coloured)
                << Readable(rules.Section().data(), rules.Section().size()) << Readable(text.data(), text.size());
        }
    }
}

TEST_F(CLikeModel, ColouringTwiceGivesTheSame) {
    Random random(44);
    const EngineHandle engine = Choose(u"cpp");
    for (int round = 0; round < 300; ++round) {
        const std::u16string text = Word(random, 300, Letters);
        const std::string once = Runs(*engine, text);
        Runs(*engine, Word(random, 300, Letters), 1);
        ASSERT_EQ(Runs(*engine, text), once);
    }
}
