// With the additional setting WholeCharacters on: nothing stops inside of what is seen as one character.

#include "base/Surrogates.h"
#include "support/FailureInjection.h"
#include "support/Random.h"
#include "support/ViewTest.h"
#include "support/WithAdditional.h"
#include "view/EditorFind.h"
#include "view/EditorNavigation.h"

namespace {

constexpr Char Smile[] = u"\U0001F600";
constexpr Char HighHalf = 0xD83D;
constexpr Char LowHalf = 0xDE00;

struct WholeCharacterTest : ViewTest {
    WholeCharacterTest() { on->WholeCharacters = 1; }

    uint32_t Column() const { return view().CaretColumn(); }
    void PutAt(uint32_t line, uint32_t column) { view().MoveCaret({line, column}, false); }
    // The columns at which a key stops on its way through the caret line.
    std::vector<uint32_t> Stops(uint32_t key, bool ctrl = false) {
        std::vector<uint32_t> stops = {Column()};
        for (;;) {
            const TextPosition before = view().CaretPosition();
            Press(key, ctrl);
            if (view().CaretPosition() == before || view().CaretLine() != before.line) return stops;
            stops.push_back(Column());
        }
    }
    void SearchFor(const std::u16string& text) {
        EXPECT_TRUE(findState.searchText.Assign(text.data(), static_cast<int64_t>(text.size())));
    }

    const WithAdditional on;
};

using Columns = std::vector<uint32_t>;

} // namespace

TEST_F(WholeCharacterTest, ByDefaultEveryUnitIsAStop) {
    on->WholeCharacters = 0;
    Fill(u"a\U0001F600e\u0301z");
    EXPECT_EQ(Stops(ViewKey::Right), (Columns{0, 1, 2, 3, 4, 5, 6}));
    EXPECT_EQ(Stops(ViewKey::Left), (Columns{6, 5, 4, 3, 2, 1, 0}));
    PutAt(0, 3);
    Press(ViewKey::Backspace);
    EXPECT_EQ(Text(), (std::u16string{u'a', HighHalf, u'e', 0x301, u'z'}));
}

TEST_F(WholeCharacterTest, TheArrowsPassPairsAndMarks) {
    Fill(u"a\U0001F600e\u0301\u0302z");
    EXPECT_EQ(Stops(ViewKey::Right), (Columns{0, 1, 3, 6, 7}));
    EXPECT_EQ(Stops(ViewKey::Left), (Columns{7, 6, 3, 1, 0}));
}

// Vowel signs and the like of every script, also those beyond U+FFFF.
TEST_F(WholeCharacterTest, TheArrowsPassTheMarksOfEveryScript) {
    Fill(u"\u0939\u093F\u0928\u094D\u0926\u0940"); // Devanagari
    EXPECT_EQ(Stops(ViewKey::Right), (Columns{0, 2, 4, 6}));
    Fill(u"\u0E17\u0E35\u0E48\u0E44"); // Thai
    EXPECT_EQ(Stops(ViewKey::Right), (Columns{0, 3, 4}));
    Fill(u"\u0F56\u0F66\u0F90\u0F71"); // Tibetan
    EXPECT_EQ(Stops(ViewKey::Right), (Columns{0, 1, 4}));
    Fill(u"\u1781\u17D2\u1798\u17C2"); // Khmer
    EXPECT_EQ(Stops(ViewKey::Right), (Columns{0, 2, 4}));
    Fill(u"\u304B\u3099\u304D"); // Japanese
    EXPECT_EQ(Stops(ViewKey::Right), (Columns{0, 2, 3}));
    Fill(u"\U0001E922\U0001E944\u845B\U000E0100x"); // Adlam, and an ideograph's variant
    EXPECT_EQ(Stops(ViewKey::Right), (Columns{0, 4, 7, 8}));
    EXPECT_EQ(Stops(ViewKey::Left), (Columns{8, 7, 4, 0}));
    PutAt(0, 4);
    Press(ViewKey::Backspace);
    EXPECT_EQ(Text(), u"\U0001E922\u845B\U000E0100x");
}

TEST_F(WholeCharacterTest, AMarkWithoutALetterAndHalfAPairAreStops) {
    Fill(std::u16string(u"\u0301a") + HighHalf + u"b" + HighHalf + HighHalf + u"z");
    EXPECT_EQ(Stops(ViewKey::Right), (Columns{0, 1, 2, 3, 4, 5, 6, 7}));
    Fill({u'a', LowHalf, LowHalf, u'b'});
    EXPECT_EQ(Stops(ViewKey::Right), (Columns{0, 1, 2, 3, 4}));
}

TEST_F(WholeCharacterTest, ShiftSelectsWholeCharacters) {
    Fill(u"a\U0001F600b");
    PutAt(0, 1);
    Press(ViewKey::Right, false, true);
    EXPECT_EQ(view().SelectionAnchor(), 1u);
    EXPECT_EQ(view().CaretOffset(), 3u);
}

TEST_F(WholeCharacterTest, UpAndDownLeaveCharactersAndKeepTheirColumn) {
    Fill(u"abcd\n\U0001F600\U0001F600\nabcd\nxe\u0301\nabcd");
    PutAt(0, 3);
    Press(ViewKey::Down);
    EXPECT_EQ(Column(), 2u);
    Press(ViewKey::Down);
    EXPECT_EQ(Column(), 3u);
    PutAt(2, 2);
    Press(ViewKey::Down);
    EXPECT_EQ(Column(), 1u);
    Press(ViewKey::Down);
    EXPECT_EQ(Column(), 2u);
    PutAt(0, 3);
    Press(ViewKey::PageDown);
    EXPECT_EQ(view().CaretLine(), 4u);
}

TEST_F(WholeCharacterTest, WordsTakeTheirMarksWithThem) {
    Fill(u"cafe\u0301 x");
    EXPECT_EQ(Stops(ViewKey::Right, true), (Columns{0, 5, 6, 7}));
    EXPECT_EQ(Stops(ViewKey::Left, true), (Columns{7, 6, 3, 0})) << "as far back as the letter of a mark";
    PutAt(0, 0);
    Ctrl(ViewKey::Delete);
    EXPECT_EQ(Text(), u" x");
}

TEST_F(WholeCharacterTest, ASelectedWordHasItsMarks) {
    Fill(u"cafe\u0301 x");
    PutAt(0, 1);
    input().OnDoubleClick();
    EXPECT_EQ(view().Selection().Range(), (TextRange{0, 5}));
}

TEST_F(WholeCharacterTest, BackspaceTakesAPairAndTheLastOfSeveralMarks) {
    Fill(u"ae\u0301\u0302\U0001F600");
    PutAt(0, 6);
    Press(ViewKey::Backspace);
    EXPECT_EQ(Text(), u"ae\u0301\u0302");
    Press(ViewKey::Backspace);
    EXPECT_EQ(Text(), u"ae\u0301");
    Press(ViewKey::Backspace);
    Press(ViewKey::Backspace);
    EXPECT_EQ(Text(), u"a");
    while (buffer().CanDo(DocumentCommand::Undo)) Ctrl(u'Z');
    EXPECT_EQ(Text(), u"ae\u0301\u0302\U0001F600");
}

TEST_F(WholeCharacterTest, DeleteTakesAPairAndALetterWithItsMarks) {
    Fill(u"\U0001F600e\u0301\u0302a\nb");
    Press(ViewKey::Delete);
    EXPECT_EQ(Text(), u"e\u0301\u0302a\nb");
    Press(ViewKey::Delete);
    EXPECT_EQ(Text(), u"a\nb");
    Press(ViewKey::Delete);
    Press(ViewKey::Delete);
    EXPECT_EQ(Text(), u"b");
}

TEST_F(WholeCharacterTest, HomeReachesColumnZeroPastALeadingMark) {
    Fill(u"  \u0301x");
    PutAt(0, 4);
    Press(ViewKey::Home);
    EXPECT_EQ(Column(), 1u) << "the mark stays on its blank";
    Press(ViewKey::Home);
    EXPECT_EQ(Column(), 0u);
    Press(ViewKey::Home);
    EXPECT_EQ(Column(), 1u);
}

TEST_F(WholeCharacterTest, SpacesBeforeTheCaretStillGoBackToATabStop) {
    Fill(u"        x");
    PutAt(0, 8);
    Press(ViewKey::Backspace);
    EXPECT_EQ(Text(), u"    x");
}

TEST_F(WholeCharacterTest, AClickGoesToTheNearerEndOfACharacter) {
    // Each unit is 8 pixels wide.
    Fill(u"a\U0001F600b\ncafe\u0301\u0302z");
    const std::pair<int32_t, uint32_t> clicks[] = {{7, 1}, {12, 1}, {16, 1}, {17, 3}, {23, 3}, {30, 4}};
    for (const auto& [x, column] : clicks) {
        input().Drag().OnLeftButtonDown({x, 0}, false);
        EXPECT_EQ(Column(), column) << x;
        EXPECT_FALSE(view().Caret().HasSelection());
        input().Drag().OnLeftButtonUp();
    }
    input().Drag().OnLeftButtonDown({34, 16}, false);
    EXPECT_EQ(Column(), 3u);
    input().Drag().OnMouseMove({40, 16});
    EXPECT_EQ(Column(), 6u);
}

TEST_F(WholeCharacterTest, NoPlaceOrSelectionIsInsideAPair) {
    Fill(u"a\U0001F600b");
    PutAt(0, 2);
    EXPECT_EQ(Column(), 1u);
    view().MoveCaretToOffset(2, false);
    EXPECT_EQ(view().CaretOffset(), 1u);
    view().SelectRange({2, 4});
    EXPECT_EQ(view().SelectionAnchor(), 1u);
    EXPECT_EQ(view().CaretOffset(), 4u);
    view().PlaceSelection({0, 2});
    EXPECT_EQ(view().CaretOffset(), 1u);
}

TEST_F(WholeCharacterTest, SwitchedOnItMovesCaretAndSelectionOutOfPairs) {
    on->WholeCharacters = 0;
    Fill(u"a\U0001F600b\nc\U0001F600d");
    view().SelectRange({2, 7});
    EXPECT_EQ(view().SelectionAnchor(), 2u);
    EXPECT_EQ(view().CaretOffset(), 7u);
    on->WholeCharacters = 1;
    input().OnSize(false);
    EXPECT_EQ(view().SelectionAnchor(), 1u);
    EXPECT_EQ(view().CaretOffset(), 6u);
    EXPECT_EQ(view().CaretPosition(), (TextPosition{1, 1}));
    Press(ViewKey::Escape);
    Press(ViewKey::Backspace);
    EXPECT_EQ(Text(), u"a\U0001F600b\n\U0001F600d");
}

TEST_F(WholeCharacterTest, SwitchedOnItMovesTheCaretInALineThatIsTypedIn) {
    on->WholeCharacters = 0;
    Fill(u"x\ny");
    PutAt(1, 0);
    Type(Smile);
    Press(ViewKey::Left);
    ASSERT_EQ(Column(), 1u);
    on->WholeCharacters = 1;
    input().OnSize(false);
    EXPECT_EQ(Column(), 0u);
    EXPECT_EQ(view().CaretOffset(), 2u);
    EXPECT_EQ(Text(), u"x\n\U0001F600y");
}

TEST_F(WholeCharacterTest, HalfACharacterIsNotFoundInAWholeOne) {
    for (const std::u16string& half : {std::u16string{HighHalf}, std::u16string{LowHalf},
                                       std::u16string{u'a', HighHalf}, std::u16string{LowHalf, u'b'}}) {
        Fill(std::u16string(u"a") + Smile + u"b");
        SearchFor(half);
        EXPECT_FALSE(EditorFind::FindNext(view(), false));
        EXPECT_FALSE(EditorFind::FindNext(view(), true));
        on->WholeCharacters = 0;
        EXPECT_TRUE(EditorFind::FindNext(view(), false));
        on->WholeCharacters = 1;
    }
    Fill(std::u16string(u"\U0001F600") + LowHalf + u"b");
    SearchFor({LowHalf});
    EXPECT_TRUE(EditorFind::FindNext(view(), false));
    EXPECT_EQ(view().Selection().Range(), (TextRange{2, 3})) << "that one is no part of a character";
}

TEST_F(WholeCharacterTest, NoHalfIsReplaced) {
    Fill(std::u16string(Smile) + u"x" + LowHalf);
    SearchFor({LowHalf});
    EXPECT_TRUE(EditorFind::FindNext(view(), false));
    EXPECT_TRUE(EditorFind::ReplaceAll(view(), u"-", 1, false));
    EXPECT_EQ(Text(), u"\U0001F600x-");
}

TEST_F(WholeCharacterTest, APairIsTypedByItsHalvesAndOverwrittenAsOne) {
    Fill(u"ab");
    view().ToggleOverwrite();
    Type(Smile);
    EXPECT_EQ(Text(), u"\U0001F600b");
    EXPECT_EQ(Column(), 2u);
    PutAt(0, 0);
    Type(u"xy");
    EXPECT_EQ(Text(), u"xy");
    Ctrl(u'Z');
    Ctrl(u'Z');
    EXPECT_EQ(Text(), u"\U0001F600b") << "each is one step";
}

// Its halves come one by one.
TEST_F(WholeCharacterTest, APairIsTypedInOneStep) {
    Show(u"a|()", u"a.c"); // at a bracket, whose partner is looked for in between
    Type(Smile);
    EXPECT_EQ(Text(), u"a\U0001F600()");
    EXPECT_TRUE(buffer().Undo());
    EXPECT_EQ(Text(), u"a()");
    EXPECT_TRUE(buffer().Redo());
    EXPECT_EQ(Text(), u"a\U0001F600()");
    Show(u"|ab");
    view().ToggleOverwrite();
    Type(Smile);
    EXPECT_EQ(Text(), u"\U0001F600b");
    EXPECT_TRUE(buffer().Undo());
    EXPECT_EQ(Text(), u"ab");
    view().ToggleOverwrite();
    Show(u"a^bc|d");
    Type(Smile);
    EXPECT_EQ(Text(), u"a\U0001F600d");
    EXPECT_TRUE(buffer().Undo());
    EXPECT_EQ(Text(), u"ad") << "a deleted selection is a step of its own";
}

TEST_F(WholeCharacterTest, ATypedPairPaintsItsLine) {
    Show(u"a\nb|c\nd");
    Type(Smile);
    EXPECT_EQ(surface().allInvalidations, 0);
    ASSERT_FALSE(surface().strips.empty());
    for (const auto& strip : surface().strips) EXPECT_EQ(strip, (std::pair<int32_t, int32_t>(16, 32)));
}

TEST_F(WholeCharacterTest, HalvesAloneAreTypedAsTheyCome) {
    Fill(u"ab");
    PutAt(0, 1);
    Type({LowHalf});
    EXPECT_EQ(Text(), (std::u16string{u'a', LowHalf, u'b'}));
    Type({HighHalf});
    Press(ViewKey::Home);
    Type(u"x");
    EXPECT_EQ(Text(), (std::u16string{HighHalf, u'x', u'a', LowHalf, u'b'})) << "there is no pair to wait for";
    Type({HighHalf, HighHalf, LowHalf});
    EXPECT_EQ(Text(), (std::u16string{HighHalf, u'x', HighHalf, HighHalf, LowHalf, u'a', LowHalf, u'b'}));
}

TEST_F(WholeCharacterTest, ByDefaultEachHalfIsTypedAtOnce) {
    on->WholeCharacters = 0;
    Fill(u"ab");
    Type({HighHalf});
    EXPECT_EQ(Text(), (std::u16string{HighHalf, u'a', u'b'}));
    Press(ViewKey::Right);
    Type({LowHalf});
    EXPECT_EQ(Text(), (std::u16string{HighHalf, u'a', LowHalf, u'b'}));
}

TEST_F(WholeCharacterTest, NoPairIsTypedWhereNothingIs) {
    Fill(u"ab");
    surface().ctrl = true;
    Type(Smile);
    surface().ctrl = false;
    ASSERT_TRUE(buffer().MarkAsOutput());
    Type(Smile);
    EXPECT_EQ(Text(), u"ab");
    EXPECT_FALSE(buffer().CanDo(DocumentCommand::Undo));
}

TEST_F(WholeCharacterTest, APairIsTypedAsAWholeOrNotAtAll) {
    for (const bool overwrites : {false, true}) {
        FailEachAllocation([&] {
            auto pause = std::make_unique<FailurePause>();
            Fill(u"\U0001F468b");
            if (overwrites) view().ToggleOverwrite();
            pause.reset();
            Type(Smile);
            const FailurePause checking;
            const std::u16string text = Text();
            const std::u16string typed = overwrites ? u"\U0001F600b" : u"\U0001F600\U0001F468b";
            EXPECT_TRUE(text == u"\U0001F468b" || text == typed) << Plain(text);
            return text == typed;
        });
    }
}

TEST_F(WholeCharacterTest, OverwritingAPairFailsAsAWhole) {
    FailEachAllocation([this] {
        auto pause = std::make_unique<FailurePause>();
        Fill(u"\U0001F600b");
        view().ToggleOverwrite();
        pause.reset();
        Type(u"x");
        const FailurePause checking;
        const std::u16string text = Text();
        EXPECT_TRUE(text == u"\U0001F600b" || text == u"xb");
        view().ToggleOverwrite();
        return text == u"xb";
    });
}

TEST_F(WholeCharacterTest, AnotherViewsCaretLeavesAPairThatAnEditMakes) {
    Fill(std::u16string{u'a', HighHalf, u'x', LowHalf, u'b'});
    TestView* const second = TestView::Create(buffer());
    second->surface.SetSize(640, 160);
    second->input.OnSize(false);
    second->input.OnAttached();
    second->editor.SelectRange({2, 3});
    PutAt(0, 2);
    Press(ViewKey::Delete);
    EXPECT_EQ(Text(), (std::u16string{u'a', HighHalf, LowHalf, u'b'}));
    EXPECT_EQ(Column(), 1u);
    EXPECT_EQ(second->editor.CaretOffset(), 1u);
    EXPECT_EQ(second->editor.CaretColumn(), 1u);
    EXPECT_EQ(second->editor.SelectionAnchor(), 1u);
}

TEST_F(WholeCharacterTest, RandomStepsNeverStopInsideAPair) {
    Random random(2026);
    const std::u16string parts[] = {u"\U0001F600", u"\U0001F468", u"e\u0301", u"a",       u" ",
                                    u"\n",         u"\t",         u"{",       {HighHalf}, {LowHalf}};
    constexpr uint32_t Keys[] = {ViewKey::Left,   ViewKey::Right,    ViewKey::Up,        ViewKey::Down,
                                 ViewKey::PageUp, ViewKey::Delete,   ViewKey::Backspace, ViewKey::Home,
                                 ViewKey::End,    ViewKey::PageDown, ViewKey::Escape,    ViewKey::Insert};
    for (int round = 0; round < 30; ++round) {
        std::u16string text;
        for (uint32_t i = random.Below(80); i; --i) text += random.Pick(parts);
        Fill(text);
        surface().clipboardHasText = true;
        TestView* const second = TestView::Create(buffer());
        second->surface.SetSize(640, 160);
        second->input.OnSize(false);
        second->input.OnAttached();
        for (int step = 0; step < 200; ++step) {
            const uint32_t place = random.Below(Text().size() + 2);
            switch (random.Below(8)) {
            case 0:
            case 1:
                Type(random.Pick(parts));
                break;
            case 2:
                Ctrl(random.Pick(u"ZYXVCW"));
                break;
            case 3:
                input().Drag().OnLeftButtonDown(
                    {static_cast<int32_t>(random.Below(300)), static_cast<int32_t>(random.Below(150))},
                    random.OneIn(2));
                input().Drag().OnMouseMove(
                    {static_cast<int32_t>(random.Below(300)), static_cast<int32_t>(random.Below(150))});
                input().Drag().OnLeftButtonUp();
                break;
            case 4:
                SearchFor(random.Pick(parts));
                EditorFind::FindNext(view(), random.OneIn(2));
                if (random.OneIn(3)) EditorFind::ReplaceAll(view(), Smile, random.Below(3), random.OneIn(2));
                break;
            case 5:
                second->editor.SelectRange({place, random.Below(Text().size() + 2)});
                break;
            default:
                Press(random.Pick(Keys), random.OneIn(4), random.OneIn(3));
            }
            for (const TextEditor* editor : {&view(), &second->editor}) {
                const std::u16string now = Text();
                for (const uint32_t offset : {editor->CaretOffset(), editor->SelectionAnchor()}) {
                    ASSERT_LE(offset, now.size());
                    ASSERT_FALSE(Surrogates::SplitsPair(now.data(), now.size(), offset)) << round << ' ' << step;
                }
                ASSERT_EQ(editor->Text().LineStart(editor->CaretLine()) + editor->CaretColumn(), editor->CaretOffset());
            }
        }
    }
}
