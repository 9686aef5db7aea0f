// How the ranges that screen readers hold move through the text, compared with a plain model.
#include "AccessibleModel.h"
#include "base/WString.h"
#include "support/FailureInjection.h"
#include "support/Random.h"
#include "support/ViewTest.h"
#include "view/AccessibleText.h"

#include <climits>

namespace {

constexpr AccessibleUnit Units[] = {AccessibleUnit::Character, AccessibleUnit::Format,    AccessibleUnit::Word,
                                    AccessibleUnit::Line,      AccessibleUnit::Paragraph, AccessibleUnit::Page,
                                    AccessibleUnit::Document};

class AccessibleRangeTest : public ViewTest {
protected:
    const ShownText& Shown() const { return view().Text(); }
    AccessibleRange Range(uint32_t start, uint32_t end) const { return AccessibleRange({start, end}); }
    TextRange Expanded(AccessibleUnit unit, uint32_t offset) const {
        AccessibleRange range = Range(offset, offset);
        range.Expand(Shown(), unit);
        return range.Within(Shown());
    }
    std::string Read(const AccessibleRange& range, int32_t limit = -1) const {
        const TextRange part = range.Readable(Shown(), limit);
        std::u16string text(part.Length(), u'?');
        Shown().Copy(part, text.data());
        return Plain(text);
    }
    // All units of a text in turn, as a reader goes through it.
    std::vector<std::string> Walked(AccessibleUnit unit) const {
        AccessibleRange range;
        range.Expand(Shown(), unit);
        std::vector<std::string> units = {Read(range)};
        while (range.Move(Shown(), unit, 1) == 1) units.push_back(Read(range));
        return units;
    }
    uint32_t Find(const AccessibleRange& range, const std::u16string& wanted, bool backward, bool matchCase) const {
        uint32_t found = 0;
        EXPECT_TRUE(
            range.Find(Shown(), {wanted.data(), static_cast<uint32_t>(wanted.size()), backward, matchCase}, found));
        return found;
    }
};

using Parts = std::vector<std::string>;

TEST_F(AccessibleRangeTest, WordsHaveTheBlanksBeforeThem) {
    Fill(u"  if (a == b)  \n\tx");
    EXPECT_EQ(Walked(AccessibleUnit::Word), (Parts{"  if", " (", "a", " ==", " b", ")", "  ", "\n", "\\tx"}));
    EXPECT_EQ(Walked(AccessibleUnit::Format), Walked(AccessibleUnit::Word));
}

TEST_F(AccessibleRangeTest, WordsAreThoseOfAnyScript) {
    Fill(u"Za\u017C\u00F3\u0142\u0107, \u044F\u0437\u044B\u043A\u3000\u6F22\u5B57\u3002\u201Cq\u201D");
    EXPECT_EQ(Expanded(AccessibleUnit::Word, 3), (TextRange{0, 6}));
    EXPECT_EQ(Expanded(AccessibleUnit::Word, 6), (TextRange{6, 7}));
    EXPECT_EQ(Expanded(AccessibleUnit::Word, 8), (TextRange{7, 12}));
    EXPECT_EQ(Expanded(AccessibleUnit::Word, 13), (TextRange{12, 15})); // an ideographic space is a blank
    EXPECT_EQ(Expanded(AccessibleUnit::Word, 17), (TextRange{17, 18})); // between quotation marks
}

// A letter and a punctuation mark of each script that has its own.
TEST_F(AccessibleRangeTest, PunctuationOfEveryScriptIsNoPartOfAWord) {
    constexpr Char Pairs[][2] = {
        {0x03B1, 0x037E}, {0x03B1, 0x0387}, {0x0561, 0x055D}, {0x0561, 0x0589}, {0x05D0, 0x05BE}, {0x05D0, 0x05C3},
        {0x0628, 0x060C}, {0x0628, 0x061B}, {0x0628, 0x061F}, {0x0661, 0x066B}, {0x0628, 0x066D}, {0x06A9, 0x06D4},
        {0x0710, 0x0700}, {0x0710, 0x070D}, {0x0915, 0x0964}, {0x0915, 0x0965}, {0x0995, 0x0964}, {0x0C15, 0x0C77},
        {0x0E01, 0x0E5A}, {0x0F40, 0x0F0D}, {0x1000, 0x104A}, {0x1000, 0x104B}, {0x10D0, 0x10FB}, {0x1200, 0x1361},
        {0x1200, 0x1368}, {0x1780, 0x17D4}, {0x1820, 0x1802}, {0x1820, 0x1803}, {0x30A2, 0x30FB}, {0x6F22, 0x3002},
        {0x6F22, 0xFF0C}, {0xFF21, 0xFF3B}, {0xFF21, 0xFF3E}, {0xFF21, 0xFF40}, {0xFF41, 0xFF5B}, {0xFF41, 0xFF5E},
        {0xFF71, 0xFF61}, {0xFF71, 0xFF65}, {0xAC00, 0x3001}, {0x0430, 0x2014}, {0x0061, 0x2E2E}};
    for (const auto& pair : Pairs) {
        Fill({pair[0], pair[0], pair[1], pair[0]});
        EXPECT_EQ(Expanded(AccessibleUnit::Word, 0), (TextRange{0, 2})) << std::hex << uint32_t{pair[1]};
        EXPECT_EQ(Expanded(AccessibleUnit::Word, 2), (TextRange{2, 3})) << std::hex << uint32_t{pair[1]};
    }
    // Their neighbours are letters and digits.
    constexpr Char Letters[] = {0x00C0, 0x00D6, 0x00D8, 0x00F6, 0x00F8, 0x037D, 0x0386, 0x0560, 0x0588, 0x0620,
                                0x0669, 0x06D3, 0x0966, 0x0E50, 0x0F20, 0x1040, 0x1369, 0x17D7, 0x1810, 0x3005,
                                0x30FC, 0xFF10, 0xFF19, 0xFF21, 0xFF3A, 0xFF41, 0xFF5A, 0xFF66, 0xFFDC};
    for (const Char c : Letters) {
        Fill({u'a', c, u'a'});
        EXPECT_EQ(Expanded(AccessibleUnit::Word, 2), (TextRange{0, 3})) << std::hex << uint32_t{c};
    }
}

// Wherever Ctrl+Right leaves the caret, the word there is what comes next and not what was passed.
TEST_F(AccessibleRangeTest, AWordStartsAtEveryStopOfTheWordKeys) {
    Fill(u"if (a == foo_bar) return;\n  x += 12;");
    for (uint32_t before = UINT32_MAX; view().CaretOffset() != before; Ctrl(ViewKey::Right)) {
        before = view().CaretOffset();
        const uint32_t start = Expanded(AccessibleUnit::Word, before).start;
        for (uint32_t at = start; at < before; ++at)
            EXPECT_TRUE(AccessibleModel::IsBlank(Shown().CharacterAt(at))) << "from " << start << " to " << before;
    }
}

TEST_F(AccessibleRangeTest, LinesHaveTheirLineFeedsAndTheLastMayBeEmpty) {
    Fill(u"one\n\ntwo\n");
    EXPECT_EQ(Walked(AccessibleUnit::Line), (Parts{"one\n", "\n", "two\n", ""}));
    EXPECT_EQ(Walked(AccessibleUnit::Paragraph), Walked(AccessibleUnit::Line));
    EXPECT_EQ(Walked(AccessibleUnit::Page), (Parts{"one\n\ntwo\n"}));
    EXPECT_EQ(Walked(AccessibleUnit::Document), (Parts{"one\n\ntwo\n"}));
}

TEST_F(AccessibleRangeTest, ACharacterIsAWholePair) {
    Fill(u"a\xD83D\xDE00\xDC00");
    EXPECT_EQ(Expanded(AccessibleUnit::Character, 2), (TextRange{1, 3}));
    EXPECT_EQ(Expanded(AccessibleUnit::Character, 3), (TextRange{3, 4})); // a half of nothing
    EXPECT_EQ(Range(0, 4).Readable(Shown(), 2), (TextRange{0, 1}));
    EXPECT_EQ(Range(0, 4).Readable(Shown(), 3), (TextRange{0, 3}));
    // Whoever asks for one character wants to know whether there is any.
    EXPECT_EQ(Range(1, 4).Readable(Shown(), 1), (TextRange{1, 2}));
    EXPECT_EQ(Range(1, 4).Readable(Shown(), 0), (TextRange{1, 1}));
    EXPECT_EQ(Range(1, 4).Readable(Shown(), 2), (TextRange{1, 3}));
}

TEST_F(AccessibleRangeTest, ACharacterHasItsMarks) {
    Fill(u"e\u0301\u0302x\n\u0301\u0915\u093F\U00011347\u200D");
    EXPECT_EQ(Expanded(AccessibleUnit::Character, 2), (TextRange{0, 3}));
    EXPECT_EQ(Expanded(AccessibleUnit::Character, 4), (TextRange{4, 5})) << "a line feed has none";
    EXPECT_EQ(Expanded(AccessibleUnit::Character, 5), (TextRange{5, 6})) << "nor has a mark without a letter a letter";
    EXPECT_EQ(Expanded(AccessibleUnit::Character, 9), (TextRange{6, 10})) << "a mark may be a pair";
    EXPECT_EQ(Range(0, 4).Readable(Shown(), 1), (TextRange{0, 1})) << "a letter is read without the rest of its marks";
    EXPECT_EQ(Range(0, 4).Readable(Shown(), 2), (TextRange{0, 2}));
    EXPECT_EQ(Range(6, 10).Readable(Shown(), 3), (TextRange{6, 8})) << "a mark that is a pair is not split";
    Fill(u"-\u0335 a");
    EXPECT_EQ(Expanded(AccessibleUnit::Word, 1), (TextRange{0, 2})) << "no word begins inside a character";
}

TEST_F(AccessibleRangeTest, AnEmptyTextHasOneEmptyUnit) {
    for (const AccessibleUnit unit : Units) {
        EXPECT_EQ(Walked(unit), (Parts{""}));
        AccessibleRange range = Range(0, 0);
        EXPECT_EQ(range.Move(Shown(), unit, -1), 0);
        EXPECT_EQ(range.MoveEnd(Shown(), RangeEnd::End, unit, 5), 0);
        EXPECT_EQ(range.Within(Shown()), (TextRange{0, 0}));
    }
    // So has a view whose document was taken away.
    view().SetDocument(nullptr);
    EXPECT_EQ(Expanded(AccessibleUnit::Word, 7), (TextRange{0, 0}));
    EXPECT_EQ(Find(Range(0, 9), u"x", false, false), NoOffset);
    delete shown; // no document owns it any more
}

TEST_F(AccessibleRangeTest, TheLargestCountsGoToTheEnds) {
    Fill(u"one two\nthree");
    AccessibleRange range = Range(5, 5);
    EXPECT_EQ(range.Move(Shown(), AccessibleUnit::Line, INT_MAX), 2);
    EXPECT_EQ(range.Within(Shown()), (TextRange{13, 13}));
    EXPECT_EQ(range.Move(Shown(), AccessibleUnit::Line, INT_MIN), -2);
    EXPECT_EQ(range.Within(Shown()), (TextRange{0, 0}));
    EXPECT_EQ(range.MoveEnd(Shown(), RangeEnd::End, AccessibleUnit::Word, INT_MAX), 4);
    EXPECT_EQ(range.MoveEnd(Shown(), RangeEnd::End, AccessibleUnit::Character, INT_MIN), -13);
}

TEST_F(AccessibleRangeTest, WhatLiesOutsideTheTextIsAtItsEnd) {
    Fill(u"abc");
    EXPECT_EQ(Range(7, UINT32_MAX).Within(Shown()), (TextRange{3, 3}));
    EXPECT_EQ(Range(1, 9).Within(Shown()), (TextRange{1, 3}));
    EXPECT_EQ(Range(5, 2).Within(Shown()), (TextRange{2, 2})); // upside down
    EXPECT_EQ(Range(9, 9).Compare(Shown(), RangeEnd::Start, Range(0, 3), RangeEnd::End), 0);
    AccessibleRange range = Range(8, 9);
    EXPECT_EQ(range.Move(Shown(), AccessibleUnit::Character, -1), -1);
    EXPECT_EQ(range.Within(Shown()), (TextRange{2, 2}));
}

TEST_F(AccessibleRangeTest, AnEndPushesTheOther) {
    Fill(u"abcdef");
    AccessibleRange range = Range(1, 3);
    range.MoveEndTo(Shown(), RangeEnd::Start, Range(5, 6), RangeEnd::Start);
    EXPECT_EQ(range.Within(Shown()), (TextRange{5, 5}));
    range.MoveEndTo(Shown(), RangeEnd::End, Range(2, 6), RangeEnd::Start);
    EXPECT_EQ(range.Within(Shown()), (TextRange{2, 2}));
    EXPECT_EQ(range.Compare(Shown(), RangeEnd::End, Range(3, 3), RangeEnd::Start), -1);
    EXPECT_EQ(Range(3, 4).Compare(Shown(), RangeEnd::End, range, RangeEnd::Start), 1);
}

TEST_F(AccessibleRangeTest, FindsInsideOnly) {
    Fill(u"one ONE one");
    EXPECT_EQ(Find(Range(0, 11), u"one", false, true), 0u);
    EXPECT_EQ(Find(Range(1, 11), u"one", false, true), 8u);
    EXPECT_EQ(Find(Range(1, 11), u"one", false, false), 4u);
    EXPECT_EQ(Find(Range(0, 11), u"one", true, true), 8u);
    EXPECT_EQ(Find(Range(0, 10), u"one", true, true), 0u);
    EXPECT_EQ(Find(Range(1, 6), u"one", true, false), NoOffset);
    EXPECT_EQ(Find(Range(0, 11), u"", false, true), NoOffset);
}

TEST_F(AccessibleRangeTest, FindsTheLettersOfEveryScriptInEitherCase) {
    Fill(u"\u017B\u00F3\u0142w. \u042F\u0437\u044B\u043A, \u039B\u039F\u0393\u039F\u03A3 \u017C\u00D3\u0141W");
    const AccessibleRange all = Range(0, 23);
    EXPECT_EQ(Find(all, u"\u017C\u00F3\u0142w", false, false), 0u);
    EXPECT_EQ(Find(all, u"\u017C\u00F3\u0142w", true, false), 18u);
    EXPECT_EQ(Find(all, u"\u017C\u00F3\u0142w", false, true), NoOffset);
    EXPECT_EQ(Find(Range(1, 22), u"\u017B\u00D3\u0141", false, false), 18u);
    EXPECT_EQ(Find(all, u"\u044F\u0417\u044B\u041A,", false, false), 6u);
    EXPECT_EQ(Find(all, u"\u03BB\u03BF\u03B3\u03BF\u03C2", false, false), 12u) << "the sigma of a word's end";
    EXPECT_EQ(Find(all, u"\u0142o", false, false), NoOffset);
    FailEachAllocation([&] {
        uint32_t found = 0;
        const bool done = all.Find(Shown(), {u"\u044F", 1, false, false}, found);
        EXPECT_EQ(found, done ? 6u : NoOffset);
        return done;
    });
}

// What was typed is found before it is written back, and finding does not write it back.
TEST_F(AccessibleRangeTest, FindsWhatIsPending) {
    Show(u"one\ntw|\nthree");
    Type(u"o");
    ASSERT_TRUE(buffer().HasPendingEdit());
    EXPECT_EQ(Find(Range(0, 13), u"two\nth", false, true), 4u);
    EXPECT_EQ(Find(Range(0, 13), u"e\nt", true, true), 2u);
    EXPECT_EQ(Read(Range(2, 9)), "e\ntwo\nt");
    EXPECT_TRUE(buffer().HasPendingEdit());
    FailEachAllocation([&] {
        uint32_t found = 0;
        const bool done = Range(0, 13).Find(Shown(), {u"two", 3, false, true}, found);
        EXPECT_EQ(found, done ? 4u : NoOffset);
        return done;
    });
}

// Offsets far outside, and edits in between, pending ones too.
class AccessibleRandomTest : public AccessibleRangeTest {
protected:
    uint32_t Offset() { return random.OneIn(10) ? UINT32_MAX - random.Below(3) : random.Below(model.text.size() + 3); }
    int32_t Count() {
        if (random.OneIn(20)) return random.OneIn(2) ? INT_MAX : INT_MIN;
        return static_cast<int32_t>(random.Below(11)) - 5;
    }
    void Edit() {
        constexpr Char Characters[] = {u'a', u'Z', u'_', u'.', u'(', u' ', u'\t', u'\n', 0x144, 0x301, 0xD83D, 0xDE00};
        view().MoveCaretToOffset(random.Below(model.text.size() + 1), false);
        if (model.text.size() > 60 || random.OneIn(4)) {
            Press(ViewKey::Delete);
        } else {
            const Char c = random.Pick(Characters);
            input().OnChar(c == u'\n' ? u'\r' : c);
        }
        model.text = Text();
    }
    void Compare(const AccessibleRange& moved, TextRange expected) {
        ASSERT_EQ(moved.Within(Shown()), expected) << Plain(model.text);
    }
    void Step();

    Random random{20};
    AccessibleModel model;
    AccessibleRange range;
    AccessibleRange other;
};

void AccessibleRandomTest::Step() {
    const AccessibleUnit unit = random.Pick(Units);
    const auto end = static_cast<RangeEnd>(random.Below(2));
    const TextRange before = range.Within(Shown());
    const int32_t count = Count();
    int moved = 0;
    switch (random.Below(6)) {
    case 0: {
        const uint32_t start = Offset();
        range = Range(start, Offset());
        break;
    }
    case 1:
        range.Expand(Shown(), unit);
        return Compare(range, model.Expand(unit, before.start));
    case 2: {
        const TextRange expected = model.Move(before, unit, count, moved);
        ASSERT_EQ(range.Move(Shown(), unit, count), moved) << Plain(model.text) << " " << before.start;
        return Compare(range, expected);
    }
    case 3: {
        const size_t at = model.Walk(unit, end == RangeEnd::Start ? before.start : before.end, count, moved);
        ASSERT_EQ(range.MoveEnd(Shown(), end, unit, count), moved) << Plain(model.text);
        return Compare(range, model.Place(before, end, at));
    }
    case 4: {
        const TextRange held = other.Within(Shown());
        range.MoveEndTo(Shown(), end, other, RangeEnd::Start);
        Compare(range, model.Place(before, end, held.start));
        other = Range(before.start, before.end);
        return;
    }
    default:
        return Edit();
    }
}

TEST_F(AccessibleRandomTest, TheModelAgrees) {
    Fill(u"");
    for (int step = 0; step < 40000; ++step) {
        ASSERT_NO_FATAL_FAILURE(Step()) << step;
        std::u16string copy(model.text.size(), u'?');
        Shown().Copy({0, static_cast<uint32_t>(copy.size())}, copy.data());
        ASSERT_EQ(copy, model.text) << step;
        const uint32_t at = random.Below(copy.size() + 1);
        ASSERT_EQ(Shown().CharacterAt(at), at < copy.size() ? copy[at] : u'\0') << step;
    }
}

} // namespace
