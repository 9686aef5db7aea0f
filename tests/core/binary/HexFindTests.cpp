#include "HexViewTest.h"
#include "support/FailureInjection.h"

namespace {

struct HexFindTest : HexViewTest {
    // The selection of the match; the caret's own offset for none.
    Two Find(bool backward = false) {
        if (!FindNext(backward)) return {view().Caret(), view().Caret()};
        return Selection();
    }
};

} // namespace

TEST_F(HexFindTest, TheMatchIsSelectedWithTheCaretAtItsStart) {
    Show("one two three two");
    SearchFor(u"two");
    EXPECT_TRUE(FindNext(false));
    EXPECT_EQ(view().Caret(), 4u);
    EXPECT_EQ(view().Selected().Start(), 4u);
    EXPECT_EQ(view().Selected().End(), 7u);
    EXPECT_FALSE(view().IsOnLowNibble());
}

TEST_F(HexFindTest, FurtherMatchesFollowInEitherDirection) {
    Show("one two three two");
    SearchFor(u"two");
    EXPECT_EQ(Find(), (Two{7, 4}));
    EXPECT_EQ(Find(), (Two{17, 14}));
    EXPECT_EQ(Status(StatusField::Message), u"");
    EXPECT_EQ(Find(), (Two{7, 4}));
    EXPECT_EQ(Status(StatusField::Message), u"Passed end of file");
    EXPECT_EQ(Find(true), (Two{17, 14}));
    EXPECT_EQ(Status(StatusField::Message), u"Passed end of file");
    EXPECT_EQ(Find(true), (Two{7, 4}));
    EXPECT_EQ(Status(StatusField::Message), u"");
}

TEST_F(HexFindTest, TheSearchStartsAtTheSelectionsEnds) {
    Show("aaaaaaaa");
    SearchFor(u"a");
    view().SelectBytes({2, 5});
    EXPECT_EQ(Find(), (Two{6, 5}));
    view().SelectBytes({5, 2});
    EXPECT_EQ(Find(), (Two{6, 5}));
    view().SelectBytes({2, 5});
    EXPECT_EQ(Find(true), (Two{2, 1}));
}

TEST_F(HexFindTest, F3FindsAndWithShiftBackwards) {
    Show("x.x.x");
    SearchFor(u"x");
    view().GoTo(1);
    Press(ViewKey::F3);
    EXPECT_EQ(view().Caret(), 2u);
    Press(ViewKey::F3);
    EXPECT_EQ(view().Caret(), 4u);
    Shift(ViewKey::F3);
    EXPECT_EQ(view().Caret(), 2u);
}

TEST_F(HexFindTest, TheNewestEntryOfTheHistoryIsSearchedFor) {
    Show("one two");
    SearchFor(u"one");
    SearchFor(u"two");
    ASSERT_TRUE(findState.searchText.Assign(u"one")); // belongs to the text views
    EXPECT_EQ(Find(), (Two{7, 4}));
}

TEST_F(HexFindTest, WithoutAHistoryNothingIsFound) {
    Show("one two");
    EXPECT_FALSE(FindNext(false));
    EXPECT_EQ(host().macroStops, 0);
}

TEST_F(HexFindTest, TheCaseCountsOnlyWhenAsked) {
    Show("TWO two");
    SearchFor(u"two");
    EXPECT_EQ(Find(), (Two{3, 0}));
    findState.matchCase = true;
    EXPECT_EQ(Find(), (Two{7, 4}));
}

TEST_F(HexFindTest, HexPatternsAreBytes) {
    Show(std::string("x\x00\xFF\x1Ay", 5));
    SearchFor(u"00ff 1A", true);
    EXPECT_EQ(Find(), (Two{4, 1}));
    SearchFor(u"00f", true); // an odd digit finds nothing
    EXPECT_FALSE(FindNext(false));
    findState.hexPattern = false;
    SearchFor(u"X");
    EXPECT_EQ(Find(), (Two{1, 0}));
}

TEST_F(HexFindTest, WithoutAMatchTheSelectionStays) {
    Show("one two three");
    view().SelectBytes({2, 5});
    SearchFor(u"four");
    host().status[StatusField::Message] = u"message";
    EXPECT_FALSE(FindNext(false));
    EXPECT_FALSE(FindNext(true));
    EXPECT_EQ(Selection(), (Two{2, 5}));
    EXPECT_EQ(Status(StatusField::Message), u"");
    EXPECT_EQ(host().macroStops, 0);
}

TEST_F(HexFindTest, AFailedSearchStopsAMacro) {
    Show("one two three");
    host().macroState = MacroState::Playing;
    SearchFor(u"one");
    EXPECT_TRUE(FindNext(false));
    EXPECT_EQ(host().macroStops, 0);
    SearchFor(u"four");
    EXPECT_FALSE(FindNext(false));
    EXPECT_EQ(host().macroStops, 1);
}

TEST_F(HexFindTest, AMatchFarAwayIsScrolledIntoView) {
    std::string content(100000, '.');
    content.replace(90000, 6, "needle");
    Show(content);
    SearchFor(u"needle");
    EXPECT_EQ(Find(), (Two{90006, 90000}));
    EXPECT_EQ(view().Viewport().TopRow(), 90000u / 16 - 9);
    EXPECT_GE(surface().allInvalidations, 1);
}

TEST_F(HexFindTest, ALongSearchShowsItsProgressAndObeysEscape) {
    constexpr uint64_t Size = 64u << 20;
    if (!ShowEmpty(Size)) GTEST_SKIP() << "no room for a sparse file";
    surface().tickStep = 200;
    SearchFor(u"needle");
    EXPECT_FALSE(FindNext(false));
    EXPECT_TRUE(surface().everWaited);
    EXPECT_FALSE(surface().waiting);
    EXPECT_GT(host().statusCalls[StatusField::Message], 10);
    EXPECT_EQ(Status(StatusField::Message), u"");

    view().SelectBytes({3, 9});
    host().statusCalls.clear();
    for (const bool backward : {false, true}) {
        surface().escapePressed = true;
        EXPECT_FALSE(FindNext(backward));
        EXPECT_FALSE(surface().escapePressed);
        EXPECT_EQ(Selection(), (Two{3, 9}));
    }
    EXPECT_LT(host().statusCalls[StatusField::Message], 8); // cancelled the first time it asked
}

TEST_F(HexFindTest, AShortSearchAsksForNothing) {
    Show(std::string(100000, '.'));
    surface().escapePressed = true;
    SearchFor(u"needle");
    EXPECT_FALSE(FindNext(false));
    EXPECT_TRUE(surface().escapePressed);
    EXPECT_FALSE(surface().everWaited);
}

TEST_F(HexFindTest, WithoutMemoryOrReadsNothingIsFound) {
    Show("one two");
    SearchFor(u"two");
    const auto find = [this] {
        view().GoTo(1);
        const bool found = FindNext(false);
        EXPECT_EQ(Selection(), found ? (Two{7, 4}) : (Two{1, 1}));
        return found;
    };
    EXPECT_GE(FailEachAllocation(find), 1u);
    FailEachFileCall(find);
}

TEST_F(HexFindTest, WhatCannotBeReadIsNotReportedAsAbsent) {
    std::string content(100000, '.');
    content.replace(90000, 6, "needle");
    Show(content);
    const Damage damage(51200, 51300);
    host().macroState = MacroState::Playing;
    view().SelectBytes({3, 9});
    SearchFor(u"needle");
    EXPECT_FALSE(FindNext(false));
    EXPECT_EQ(Status(StatusField::Message), u"Failed reading the file");
    EXPECT_TRUE(findState.cancelled); // the dialog does not say that there is no such text
    EXPECT_EQ(Selection(), (Two{3, 9}));
    EXPECT_EQ(host().macroStops, 1);
    view().GoTo(60000);
    EXPECT_EQ(Find(), (Two{90006, 90000}));
    EXPECT_EQ(Status(StatusField::Message), u"");
    EXPECT_FALSE(findState.cancelled);
}
