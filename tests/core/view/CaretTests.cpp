#include "HighlightEngine.h"
#include "support/ScratchFolder.h"
#include "support/ViewTest.h"
#include "view/EditorFind.h"

namespace {

using Pair = std::pair<uint32_t, uint32_t>;
using Strips = std::vector<std::pair<int32_t, int32_t>>;

struct CaretTest : ViewTest {
    // With a highlight engine attached before the caret is put.
    void ShowBraces(const std::u16string& text, uint32_t line, uint32_t column) {
        Fill(text);
        engine = new HighlightEngine;
        buffer().AttachEngine(engine);
        view().MoveCaret({line, column});
        surface().ForgetCalls();
    }
    Pair Match() const {
        return {BracketMatch::Highlighted(view().Text()).bracket.offset,
                BracketMatch::Highlighted(view().Text()).partner.offset};
    }

    HighlightEngine* engine = nullptr;
};

constexpr Pair NoMatch = {NoOffset, NoOffset};

} // namespace

TEST_F(CaretTest, LineAndColumnAreClamped) {
    Fill(u"abc\nde");
    view().MoveCaret({0, 99});
    EXPECT_EQ(Marked(), "abc|\nde");
    view().MoveCaret({99, 1});
    EXPECT_EQ(Marked(), "abc\nd|e");
    view().MoveCaret({99, 99});
    EXPECT_EQ(Marked(), "abc\nde|");
}

TEST_F(CaretTest, ThePreferredColumnIsTheOneAskedFor) {
    Fill(u"abc\nde");
    view().MoveCaret({1, 40});
    EXPECT_EQ(view().CaretColumn(), 2u);
    EXPECT_EQ(view().Caret().PreferredColumn(), 40u);
}

TEST_F(CaretTest, ExtendingLeavesTheAnchor) {
    Fill(u"abc\nde");
    view().MoveCaret({0, 1});
    view().MoveCaret({1, 1}, true);
    EXPECT_EQ(Marked(), "a^bc\nd|e");
    view().MoveCaret({0, 0}, true);
    EXPECT_EQ(Marked(), "|a^bc\nde");
    view().MoveCaret({0, 2}, false);
    EXPECT_EQ(Marked(), "ab|c\nde");
}

TEST_F(CaretTest, MovingTheActiveViewsCaretOpensItsLine) {
    Fill(u"abc\nde\nf");
    view().MoveCaret({1, 0});
    EXPECT_EQ(buffer().EditLineNumber(), 1u);
    Type(u"x");
    view().MoveCaret({2, 0});
    EXPECT_EQ(buffer().EditLineNumber(), 2u);
    EXPECT_FALSE(buffer().HasPendingEdit());
}

TEST_F(CaretTest, AnInactiveViewsCaretOpensNothing) {
    Fill(u"abc\nde\nf");
    TestView* second = TestView::Create(buffer());
    ASSERT_NE(second, nullptr);
    view().MoveCaret({1, 0});
    second->editor.MoveCaret({2, 0});
    EXPECT_EQ(buffer().EditLineNumber(), 1u);
    EXPECT_EQ(second->editor.CaretOffset(), 7u);
}

TEST_F(CaretTest, ASecondViewsOffsetsCountThePendingLine) {
    Show(u"ab|\ncd\nef");
    TestView* second = TestView::Create(buffer());
    Type(u"xyz");
    ASSERT_TRUE(buffer().HasPendingEdit());
    second->editor.MoveCaret({2, 1});
    EXPECT_EQ(second->editor.CaretOffset(), 10u);
    second->editor.SelectRange({10, 6});
    EXPECT_EQ(second->editor.CaretLine(), 1u);
    EXPECT_EQ(second->editor.CaretColumn(), 0u);
}

TEST_F(CaretTest, SelectRangeClampsToTheText) {
    Fill(u"abc\nde");
    view().SelectRange({1, 5});
    EXPECT_EQ(Marked(), "a^bc\nd|e");
    view().SelectRange({99, 2});
    EXPECT_EQ(Marked(), "ab|c\nde^");
    EXPECT_EQ(view().CaretLine(), 0u);
    EXPECT_EQ(view().CaretColumn(), 2u);
}

TEST_F(CaretTest, MovesClearTheMessageOfTheFocusedViewOnly) {
    host().SetStatusText(StatusField::Message, u"Passed end of file");
    surface().focus = false;
    view().MoveCaret({0, 0});
    EXPECT_EQ(Status(StatusField::Message), "Passed end of file");
    surface().focus = true;
    view().MoveCaret({0, 0});
    EXPECT_EQ(Status(StatusField::Message), "");
}

TEST_F(CaretTest, GoToLinePutsTheCaretAtItsStartAndSelectsIt) {
    Fill(u"abc\ndef\nghi");
    view().GoToLine(1, true);
    EXPECT_EQ(Marked(), "abc\n|def^\nghi");
    view().GoToLine(2, false);
    EXPECT_EQ(Marked(), "abc\ndef\n|ghi");
    view().GoToLine(4000, true);
    EXPECT_EQ(Marked(), "abc\ndef\n|ghi^");
}

TEST_F(CaretTest, BookmarksOfTheCaretLineOrAnyOther) {
    Show(u"a\nb|\nc");
    view().ToggleBookmark(NoLine);
    view().ToggleBookmark(2);
    EXPECT_EQ(document->MarkedLines(), (std::vector<uint32_t>{1, 2}));
    view().ToggleBookmark(NoLine);
    EXPECT_EQ(document->MarkedLines(), (std::vector<uint32_t>{2}));
}

// Repainting.

TEST_F(CaretTest, ACaretMoveWithoutSelectionRepaintsNothing) {
    Fill(u"abc\nde");
    surface().ForgetCalls();
    view().MoveCaret({1, 1});
    EXPECT_EQ(surface().allInvalidations, 0);
    EXPECT_TRUE(surface().strips.empty());
}

TEST_F(CaretTest, CollapsingASelectionRepaintsItsLinesOnly) {
    Show(u"a\nb^\nc\nd|\ne");
    view().MoveCaret({0, 0});
    EXPECT_EQ(surface().strips, (Strips{{16, 64}}));
    EXPECT_EQ(surface().allInvalidations, 0);
}

TEST_F(CaretTest, ExtendingRepaintsWhatTheCaretPassed) {
    Show(u"a\nb|\nc\nd\ne");
    view().MoveCaret({3, 1}, true);
    EXPECT_EQ(surface().strips, (Strips{{16, 64}}));
    EXPECT_EQ(surface().allInvalidations, 0);
}

TEST_F(CaretTest, TypingInvalidatesOnlyItsLine) {
    Show(u"a\nb|\nc");
    Type(u"x");
    EXPECT_EQ(surface().strips, (Strips{{16, 32}}));
    EXPECT_EQ(surface().allInvalidations, 0);
}

// Status fields.

TEST_F(CaretTest, TheFieldsShowLineColumnModeAndLineEnding) {
    Show(u"a\n\tb|");
    EXPECT_EQ(Status(StatusField::Line), "\\tLn 2");
    EXPECT_EQ(Status(StatusField::Column), "\\tCol 3"); // a tab is one column
    EXPECT_EQ(Status(StatusField::Overwrite), "\\tINS");
    EXPECT_EQ(Status(StatusField::LineEnding), "\\tDos");
}

TEST_F(CaretTest, OverwriteModeShowsAtOnce) {
    view().ToggleOverwrite();
    EXPECT_EQ(Status(StatusField::Overwrite), "\\tOVR");
    view().ToggleOverwrite();
    EXPECT_EQ(Status(StatusField::Overwrite), "\\tINS");
}

TEST_F(CaretTest, EachLineEndingHasItsName) {
    const ScratchFolder folder;
    const auto shownFor = [&](const std::string& bytes) {
        EXPECT_TRUE(buffer().Load(folder.Write("a.txt", bytes).c_str(), false));
        view().RefreshStatus();
        return Status(StatusField::LineEnding);
    };
    EXPECT_EQ(shownFor("a\n"), "\\tUnix");
    EXPECT_EQ(shownFor("a\r\n"), "\\tDos");
    EXPECT_EQ(shownFor("a\r\nb\n"), "\\tMixed");
}

TEST_F(CaretTest, UnchangedFieldsAreNotSentAgain) {
    Fill(u"abc");
    host().statusCalls.clear();
    Press(ViewKey::Right);
    EXPECT_EQ(host().statusCalls[StatusField::Column], 1);
    EXPECT_EQ(host().statusCalls[StatusField::Line], 0);
    EXPECT_EQ(host().statusCalls[StatusField::LineEnding], 0);
    surface().focus = false;
    surface().TakeFocus(); // another view may have written into them meanwhile
    EXPECT_EQ(host().statusCalls[StatusField::Line], 1);
}

TEST_F(CaretTest, WithoutAFrameNothingIsShown) {
    surface().host = nullptr;
    Show(u"a");
    surface().host = nullptr;
    Type(u"b");
    EditorFind::FindNext(view(), false);
    input().OnWheel({-120, 3, true});
    EXPECT_EQ(Plain(Text()), "ba");
}

// Bracket match.

TEST_F(CaretTest, AnOpenerAtTheCaretAndItsCloserAreHighlighted) {
    settings.BraceMatchFg = 11;
    settings.BraceMatchBg = 22;
    settings.SelBg = 33;
    ShowBraces(u"f(a[b)c]", 0, 1);
    EXPECT_EQ(Match(), (Pair{1, 5}));
    EXPECT_EQ(engine->ranges[0].start, 1u);
    EXPECT_EQ(engine->ranges[0].end, 2u);
    EXPECT_EQ(engine->ranges[1].start, 5u);
    EXPECT_EQ(engine->ranges[1].end, 6u);
    EXPECT_EQ(engine->ranges[0].foreground, 11u);
    EXPECT_EQ(engine->ranges[0].background, 22u);
    EXPECT_EQ(engine->ranges[1].fill, 33u);
}

TEST_F(CaretTest, ParenthesesOnlyCountParentheses) {
    ShowBraces(u"(a[b)c]", 0, 0);
    EXPECT_EQ(Match(), (Pair{0, 4}));
}

TEST_F(CaretTest, ACloserBeforeTheCaretIsMatchedBackwards) {
    ShowBraces(u"{\n}\n", 1, 1);
    EXPECT_EQ(Match(), (Pair{2, 0}));
}

TEST_F(CaretTest, AnOpenerAtTheCaretComesFirst) {
    ShowBraces(u"()()", 0, 2);
    EXPECT_EQ(Match(), (Pair{2, 3}));
}

TEST_F(CaretTest, AnOpenerBeforeOrACloserAtTheCaretIsNotMatched) {
    ShowBraces(u"( )", 0, 1);
    EXPECT_EQ(Match(), NoMatch);
    ShowBraces(u"( )", 0, 2);
    EXPECT_EQ(Match(), NoMatch);
}

TEST_F(CaretTest, MovingAwayClearsTheHighlightsAndRepaintsTheirLines) {
    ShowBraces(u"x\n(\n\n)\n", 1, 0);
    EXPECT_EQ(Match(), (Pair{2, 5}));
    view().MoveCaret({0, 0});
    EXPECT_EQ(Match(), NoMatch);
    EXPECT_EQ(engine->ranges[0].start, NoOffset);
    EXPECT_EQ(engine->ranges[1].start, NoOffset);
    EXPECT_EQ(surface().strips, (Strips{{16, 32}, {48, 64}}));
    EXPECT_EQ(surface().allInvalidations, 0);
}

TEST_F(CaretTest, AnUnchangedPairRepaintsNothing) {
    ShowBraces(u"()", 0, 0);
    view().MoveCaret({0, 0});
    EXPECT_TRUE(surface().strips.empty());
}

TEST_F(CaretTest, WithoutFocusNothingIsMatched) {
    ShowBraces(u"x()", 0, 0);
    surface().focus = false;
    view().MoveCaret({0, 1});
    EXPECT_EQ(Match(), NoMatch);
}

TEST_F(CaretTest, EveryViewOfTheDocumentRepaintsTheMarks) {
    ShowBraces(u"(\n\n)\nx", 3, 0);
    TestView* other = TestView::Create(buffer());
    other->surface.SetSize(640, 160);
    other->input.OnSize(false);
    other->surface.ForgetCalls();
    view().MoveCaret({0, 0});
    EXPECT_EQ(other->surface.strips, (Strips{{0, 16}, {32, 48}}));
    other->surface.ForgetCalls();
    surface().ForgetCalls();
    // The focus goes there, where the caret is at no bracket.
    surface().focus = false;
    other->editor.MoveCaret({3, 0});
    other->surface.TakeFocus();
    EXPECT_EQ(BracketMatch::Highlighted(other->editor.Text()), BracketPair());
    EXPECT_EQ(surface().strips, (Strips{{0, 16}, {32, 48}}));
}

TEST_F(CaretTest, MarksStayWhenTheEngineIsReplaced) {
    ShowBraces(u"()", 0, 0);
    buffer().AttachEngine(new HighlightEngine);
    EXPECT_EQ(Match(), (Pair{0, 1}));
    input().OnSize(true); // as when colours were chosen
    EXPECT_EQ(Match(), (Pair{0, 1}));
    // Without the focus, as when a setting is changed in the command window, and in two steps.
    surface().focus = false;
    buffer().AttachEngine(nullptr);
    buffer().AttachEngine(new HighlightEngine);
    input().OnSize(true);
    EXPECT_EQ(Match(), (Pair{0, 1}));
    surface().TakeFocus();
    EXPECT_EQ(Match(), (Pair{0, 1}));
}

TEST_F(CaretTest, MarksGoWhenTheTextChangesWithoutTheFocus) {
    ShowBraces(u"x\n()", 1, 0);
    surface().focus = false;
    surface().ForgetCalls();
    EXPECT_TRUE(buffer().InsertText(0, u"yy\n", 3));
    EXPECT_EQ(Match(), NoMatch);
}

TEST_F(CaretTest, APendingEditIsWrittenBackBeforeTheSearch) {
    ShowBraces(u"(\n", 1, 0);
    Type(u"ab)");
    EXPECT_EQ(Match(), (Pair{4, 0}));
    EXPECT_FALSE(buffer().HasPendingEdit());
    EXPECT_EQ(buffer().EditLineNumber(), 1u);
}

TEST_F(CaretTest, TypingAwayFromBracketsWritesNothingBack) {
    ShowBraces(u"()\n", 1, 0);
    Type(u"abc");
    EXPECT_TRUE(buffer().HasPendingEdit());
    EXPECT_EQ(Plain(document->Store()), "()\n");
}
