#include "support/FailureInjection.h"
#include "support/Random.h"
#include "support/ViewTest.h"

#include "syntax/EngineChoice.h"
#include "view/LineStates.h"
#include <algorithm>

namespace {

struct LineStatesTest : ViewTest {
    // Lines that open and close comments now and then, long enough for several remembered places.
    static std::u16string LongText(Random& random, uint32_t length) {
        std::u16string text;
        while (text.size() < length) {
            text += random.OneIn(9) ? u"a /* b" : random.OneIn(9) ? u"c */ d" : u"int x = 1; // y /*";
            text += std::u16string(random.Below(60), u' ') + u"\n";
        }
        return text;
    }
    static uint32_t StartOfLineAt(const std::u16string& text, uint32_t offset) {
        const size_t feed = offset ? text.rfind(u'\n', offset - 1) : text.npos;
        return feed == text.npos ? 0 : static_cast<uint32_t>(feed + 1);
    }
};

// Counts how many characters are scanned.
class CountingEngine final : public SyntaxEngine {
public:
    uint32_t AddRef() override { return 1; }
    uint32_t Release() override { return 1; }
    uint32_t ColourLine(uint32_t, const Char*, uint32_t length, uint32_t&, ColouredLine&) override { return length; }
    uint32_t ScanState(const Char* text, uint32_t length, uint32_t start, uint32_t state, uint32_t& stopped) override {
        stopped = length;
        scanned += length - start;
        return state +
               static_cast<uint32_t>(std::count(text + start, text + length, u'\n')); // the number of lines before
    }
    bool MayChangeState(const Char*, uint32_t) override { return false; }
    void SetHighlight(uint32_t, const HighlightRange*) override {}
    bool SetEndMarker(const Char*) override { return true; }
    const Char* BraceCharacters() const override { return u""; }

    uint64_t scanned = 0;
};

} // namespace

TEST_F(LineStatesTest, AnyOrderOfQuestionsGivesTheStateOfAScanFromTheTop) {
    Random random(5);
    Fill(u"", u"cpp");
    SyntaxEngine& engine = *buffer().Engine();
    std::u16string text = LongText(random, 3 * LineStates::Step);
    LineStates states;
    for (int i = 0; i < 200; ++i) {
        const uint32_t offset = StartOfLineAt(text, random.Below(static_cast<uint32_t>(text.size())));
        ASSERT_EQ(states.At(engine, text.data(), offset), engine.ScanLines(text.data(), offset, 0)) << offset;
        if (!random.OneIn(4)) continue;
        const uint32_t changed = random.Below(static_cast<uint32_t>(text.size()));
        text.insert(changed, random.OneIn(2) ? u"/*\n" : u"*/");
        states.ForgetAfter(changed);
    }
}

TEST_F(LineStatesTest, AQuestionNearbyIsAShortScan) {
    CountingEngine engine;
    std::u16string text;
    while (text.size() < 4 * LineStates::Step) text += std::u16string(31, u'x') + u"\n";
    const auto end = static_cast<uint32_t>(text.size());
    LineStates states;
    EXPECT_EQ(states.At(engine, text.data(), end), end / 32);
    EXPECT_EQ(engine.scanned, end);
    engine.scanned = 0;
    EXPECT_EQ(states.At(engine, text.data(), end - 32), end / 32 - 1); // one line up
    EXPECT_LE(engine.scanned, LineStates::Step + 32);
    engine.scanned = 0;
    EXPECT_EQ(states.At(engine, text.data(), end), end / 32);
    EXPECT_EQ(engine.scanned, 32u);
}

TEST_F(LineStatesTest, AChangeKeepsWhatIsBeforeIt) {
    CountingEngine engine;
    std::u16string text;
    while (text.size() < 4 * LineStates::Step) text += std::u16string(31, u'x') + u"\n";
    const auto end = static_cast<uint32_t>(text.size());
    LineStates states;
    states.At(engine, text.data(), end);
    states.ForgetAfter(end - 64);
    engine.scanned = 0;
    EXPECT_EQ(states.At(engine, text.data(), end), end / 32);
    EXPECT_LE(engine.scanned, LineStates::Step + 32);
    states.ForgetAfter(0);
    engine.scanned = 0;
    states.At(engine, text.data(), end);
    EXPECT_EQ(engine.scanned, end);
}

TEST_F(LineStatesTest, AStringLeftOpenEndsWithItsLineAsPaintingHasIt) {
    Fill(u"a \" b\n/* c\nd \" e", u"cpp");
    EXPECT_EQ(view().StateAt(1), 0u);
    EXPECT_EQ(view().StateAt(2), 1u);
}

TEST_F(LineStatesTest, WithoutMemoryTheAnswersStayRight) {
    std::u16string text;
    while (text.size() < 3 * LineStates::Step) text += std::u16string(31, u'x') + u"\n";
    const auto end = static_cast<uint32_t>(text.size());
    const uint64_t failures = FailEachAllocation([&] {
        CountingEngine engine;
        LineStates states;
        EXPECT_EQ(states.At(engine, text.data(), end), end / 32);
        EXPECT_EQ(states.At(engine, text.data(), end / 2), end / 64);
        return true;
    });
    EXPECT_GT(failures, 0u);
}

TEST_F(LineStatesTest, AnEditAboveTheTopLineIsSeenBelowIt) {
    std::u16string text;
    for (int i = 0; i < 50; ++i) text += u"int x;\n";
    Fill(text, u"cpp");
    view().SetTopLine(30);
    EXPECT_EQ(view().StateAt(30), 0u);
    EXPECT_TRUE(buffer().InsertText(0, u"/*", 2));
    EXPECT_EQ(view().StateAt(30), 1u);
    EXPECT_TRUE(buffer().Undo());
    EXPECT_EQ(view().StateAt(30), 0u);
}

TEST_F(LineStatesTest, AnotherEngineForgetsTheStatesOfTheOld) {
    std::u16string text = u"/*\n";
    for (int i = 0; i < 50; ++i) text += u"int x;\n";
    Fill(text, u"cpp");
    EXPECT_EQ(view().StateAt(30), 1u);
    buffer().AttachEngine(ChooseEngine(u"txt", nullptr));
    EXPECT_EQ(view().StateAt(30), 0u);
}

TEST_F(LineStatesTest, APendingCommentStartIsSeenByTheLinesBelow) {
    Fill(u"a\nb\nc", u"cpp");
    Type(u"/*");
    ASSERT_TRUE(buffer().HasPendingEdit());
    EXPECT_EQ(view().StateAt(0), 0u);
    EXPECT_EQ(view().StateAt(1), 1u);
    EXPECT_EQ(view().StateAt(2), 1u);
}
