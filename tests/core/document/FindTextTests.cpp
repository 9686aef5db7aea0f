#include "document/TextBuffer.h"

#include "support/FakeView.h"
#include "support/Random.h"
#include "support/TestServices.h"
#include "support/TextDocument.h"

#include <gtest/gtest.h>
#include <optional>

namespace {

struct Rules {
    bool matchCase = true;
    bool wholeWord = false;
    bool backward = false;
};

struct Found {
    uint32_t at = NoOffset;
    bool wrapped = false;
    bool operator==(const Found&) const = default;
};

Found Find(TextBuffer& document, const std::u16string& pattern, uint32_t from, uint32_t end, Rules rules = {}) {
    Found result;
    SearchHit hit;
    const bool found =
        document.FindText(Query(pattern, rules.matchCase, rules.wholeWord), {from, end, rules.backward}, hit);
    result.wrapped = hit.wrapped;
    if (found) result.at = hit.offset;
    return result;
}

constexpr Rules Backward{.backward = true};
constexpr Rules NoCase{.matchCase = false};
constexpr Rules WholeWord{.wholeWord = true};
const Found NotFound{NoOffset, true};

} // namespace

TEST(FindText, ForwardFindsTheFirstAtOrAfterTheStart) {
    TextDocument document(u"abcabcabc");
    EXPECT_EQ(Find(*document, u"abc", 0, 9), (Found{0, false}));
    EXPECT_EQ(Find(*document, u"abc", 1, 9), (Found{3, false}));
    EXPECT_EQ(Find(*document, u"abc", 6, 9), (Found{6, false}));
}

TEST(FindText, ForwardWrapsOnceToTheStart) {
    TextDocument document(u"abcxyz");
    EXPECT_EQ(Find(*document, u"abc", 1, 6), (Found{0, true}));
    EXPECT_EQ(Find(*document, u"bcx", 1, 6), (Found{1, false}));
    EXPECT_EQ(Find(*document, u"bcx", 2, 6), (Found{1, true}));
    EXPECT_EQ(Find(*document, u"q", 0, 6), NotFound);
}

TEST(FindText, AMatchStartsBeforeTheEndAndMayReachBeyondIt) {
    TextDocument document(u"..abc..");
    EXPECT_EQ(Find(*document, u"abc", 0, 3), (Found{2, false}));
    EXPECT_EQ(Find(*document, u"abc", 0, 2), NotFound);
    EXPECT_EQ(Find(*document, u"abc", 5, 3), (Found{2, true})) << "a start past the end only wraps";
}

TEST(FindText, BackwardFindsTheLastBelowTheStart) {
    TextDocument document(u"abcabcabc");
    EXPECT_EQ(Find(*document, u"abc", 9, 9, Backward), (Found{6, false}));
    EXPECT_EQ(Find(*document, u"abc", 6, 9, Backward), (Found{3, false}));
    EXPECT_EQ(Find(*document, u"abc", 7, 9, Backward), (Found{6, false})) << "a match may reach beyond the start";
    EXPECT_EQ(Find(*document, u"abc", 0, 9, Backward), (Found{6, true}));
}

TEST(FindText, BackwardWrapsOnceToTheEnd) {
    TextDocument document(u"xyzabc");
    EXPECT_EQ(Find(*document, u"abc", 3, 6, Backward), (Found{3, true}));
    EXPECT_EQ(Find(*document, u"abc", 3, 0, Backward), (Found{3, true})) << "the end bounds no backward search";
    EXPECT_EQ(Find(*document, u"q", 3, 6, Backward), NotFound);
}

TEST(FindText, WithoutCaseOnlyAsciiLettersAreFolded) {
    TextDocument document(u"aBc \u00c4 [");
    EXPECT_EQ(Find(*document, u"AbC", 0, 8), NotFound);
    EXPECT_EQ(Find(*document, u"AbC", 0, 8, NoCase), (Found{0, false}));
    EXPECT_EQ(Find(*document, u"\u00e4", 0, 8, NoCase), NotFound) << "a letter beyond ASCII matches only itself";
    EXPECT_EQ(Find(*document, u"\u00c4", 0, 8, NoCase), (Found{4, false}));
    EXPECT_EQ(Find(*document, u"{", 0, 8, NoCase), NotFound) << "[ and { are no letters";
}

TEST(FindText, WholeWordPassesOverPartsOfWords) {
    TextDocument document(u"cats cat_ #cat cat9 cat");
    EXPECT_EQ(Find(*document, u"cat", 0, 23, WholeWord), (Found{20, false}));
    EXPECT_EQ(Find(*document, u"cat", 23, 23, {.wholeWord = true, .backward = true}), (Found{20, false}));
    EXPECT_EQ(Find(*document, u"cat", 20, 23, {.wholeWord = true, .backward = true}), (Found{20, true}));
}

TEST(FindText, NearTheEndNothingIsReadBeyondTheTerminator) {
    TextDocument document(u"aaab");
    EXPECT_EQ(Find(*document, u"abab", 0, 4), NotFound);
    EXPECT_EQ(Find(*document, u"aaabb", 0, 4), NotFound);
    EXPECT_EQ(Find(*document, u"aaab", 0, 4), (Found{0, false}));
    EXPECT_EQ(Find(*document, u"bb", 4, 4, Backward), NotFound);
    EXPECT_EQ(Find(*document, u"longer than the text", 0, 4), NotFound);
}

TEST(FindText, ANulInTheTextMatchesNothing) {
    TextDocument document(std::u16string(u"a\0b", 3));
    EXPECT_EQ(Find(*document, u"ab", 0, 3), NotFound);
    EXPECT_EQ(Find(*document, u"b", 0, 3), (Found{2, false}));
}

TEST(FindText, AnEmptyPatternIsEverywhere) {
    TextDocument document(u"ab cd");
    EXPECT_EQ(Find(*document, u"", 2, 5), (Found{2, false}));
    EXPECT_EQ(Find(*document, u"", 5, 5), (Found{0, true}));
    EXPECT_EQ(Find(*document, u"", 2, 5, Backward), (Found{1, false}));
    EXPECT_EQ(Find(*document, u"", 0, 5, Backward), (Found{4, true}));
    EXPECT_EQ(Find(*document, u"", 100, 5, Backward), (Found{4, false})) << "also from beyond the end";
    EXPECT_EQ(Find(*TextDocument(u""), u"", 0, 0), NotFound);
}

TEST(FindText, AStartBeyondTheTextIsItsEnd) {
    TextDocument document(u"abc");
    EXPECT_EQ(Find(*document, u"a", 100, UINT32_MAX), (Found{0, true}));
    EXPECT_EQ(Find(*document, u"c", 100, UINT32_MAX, Backward), (Found{2, false}));
}

TEST(FindText, SeesWhatIsPendingInTheEditLine) {
    TextDocument document(u"");
    FakeView* view = FakeView::Create(*document);
    view->Activate();
    EXPECT_TRUE(document->TypeChar(view, u'q', 0, true, false));
    EXPECT_EQ(Find(*document, u"q", 0, 1), (Found{0, false}));
    EXPECT_FALSE(document->HasPendingEdit());
}

TEST(FindText, FindsNothingWithoutAStore) {
    auto* document = new TextBuffer(textServices);
    document->AddRef();
    EXPECT_EQ(Find(*document, u"", 0, 0).at, NoOffset);
    EXPECT_EQ(Find(*document, u"a", 0, 5, Backward).at, NoOffset);
    document->Release();
}

TEST(IsWholeWordAt, LooksAtTheCharactersAroundTheMatch) {
    TextDocument document(u"ab cd-e_f#g");
    EXPECT_TRUE(document->IsWholeWordAt({0, 2}));
    EXPECT_FALSE(document->IsWholeWordAt({0, 1}));
    EXPECT_FALSE(document->IsWholeWordAt({1, 2}));
    EXPECT_TRUE(document->IsWholeWordAt({3, 5}));
    EXPECT_FALSE(document->IsWholeWordAt({6, 7})) << "an underscore is a word character";
    EXPECT_FALSE(document->IsWholeWordAt({10, 11})) << "and so is a hash";
    EXPECT_TRUE(document->IsWholeWordAt({6, 11})) << "the end of the text ends a word";
}

TEST(IsWholeWordAt, IsFalseAtAndBeyondTheEnd) {
    TextDocument document(u"ab ");
    EXPECT_FALSE(document->IsWholeWordAt({3, 3}));
    EXPECT_FALSE(document->IsWholeWordAt({UINT32_MAX, UINT32_MAX}));
    EXPECT_TRUE(document->IsWholeWordAt({0, UINT32_MAX})) << "a range beyond the end ends with the text";
}

// The rules word for word, one offset after the other.
namespace {

bool IsWord(char16_t c) {
    return (c >= u'0' && c <= u'9') || (c >= u'A' && c <= u'Z') || (c >= u'a' && c <= u'z') || c == u'_' || c == u'#';
}

char16_t Fold(char16_t c) { return c >= u'A' && c <= u'Z' ? static_cast<char16_t>(c - u'A' + u'a') : c; }

bool Matches(const std::u16string& text, const std::u16string& pattern, size_t at, Rules rules) {
    for (size_t i = 0; i < pattern.size(); ++i) {
        if (at + i >= text.size()) return false;
        const char16_t a = text[at + i];
        const char16_t b = pattern[i];
        if (rules.matchCase ? a != b : Fold(a) != Fold(b)) return false;
    }
    if (!rules.wholeWord) return true;
    const size_t after = at + pattern.size();
    return (at == 0 || !IsWord(text[at - 1])) && (after >= text.size() || !IsWord(text[after]));
}

Found PlainFind(const std::u16string& text, const std::u16string& pattern, size_t from, size_t end, Rules rules) {
    for (const bool wrapped : {false, true}) {
        if (rules.backward) {
            for (size_t at = wrapped ? text.size() : from; at >= 1; --at) {
                if (Matches(text, pattern, at - 1, rules)) return {static_cast<uint32_t>(at - 1), wrapped};
            }
        } else {
            for (size_t at = wrapped ? 0 : from; at < end; ++at) {
                if (Matches(text, pattern, at, rules)) return {static_cast<uint32_t>(at), wrapped};
            }
        }
    }
    return NotFound;
}

} // namespace

TEST(FindText, AgreesWithThePlainSearchOnRandomTexts) {
    Random random(3);
    const std::u16string letters = u"abAB _-#\n\u00e4";
    for (int round = 0; round < 20000; ++round) {
        std::u16string text(random.Below(80), u' ');
        for (char16_t& c : text) c = random.Pick(letters);
        std::u16string pattern(random.OneIn(20) ? 0 : 1 + random.Below(4), u' ');
        for (char16_t& c : pattern) c = random.Pick(letters);
        if (!text.empty() && random.OneIn(3)) pattern = text.substr(random.Below(text.size()), 1 + random.Below(12));
        TextDocument document(text);
        const auto from = random.Below(text.size() + 1);
        const auto end = random.Below(text.size() + 1);
        const Rules rules{random.OneIn(2), random.OneIn(2), random.OneIn(2)};
        ASSERT_EQ(Find(*document, pattern, from, end, rules), PlainFind(text, pattern, from, end, rules))
            << "round " << round;
    }
}
