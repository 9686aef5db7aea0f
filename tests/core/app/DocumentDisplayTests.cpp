#include "core/app/FakePanes.h"

namespace {

using DocumentDisplayTest = PaneDocumentsTest;

TEST_F(DocumentDisplayTest, TheFirstPaneIsMadeActiveAndLaidOutAlsoInABatch) {
    batch.Begin();
    Pane* const pane = display.TargetPane();
    ASSERT_NE(pane, nullptr);
    EXPECT_EQ(panes.Active(), pane);
    EXPECT_EQ(screen.layouts, 1);
    EXPECT_EQ(display.TargetPane(), pane);
    EXPECT_EQ(screen.layouts, 1);
}

TEST_F(DocumentDisplayTest, WithoutAPaneNothingIsShown) {
    panes.makesPanes = false;
    EXPECT_EQ(display.TargetPane(), nullptr);
    EXPECT_FALSE(display.ShowNew(AddFile(u"a")));
    EXPECT_EQ(display.Active(), nullptr);
}

TEST_F(DocumentDisplayTest, ANewDocumentGetsTheFocusAndBecomesTheMostRecent) {
    FakeDocument& a = AddFile(u"a");
    FakeDocument& b = AddFile(u"b");
    ASSERT_TRUE(display.ShowNew(a));
    EXPECT_EQ(display.Active(), &a);
    EXPECT_EQ(documents.MostRecent(), &a);
    EXPECT_EQ(panes.focused, panes.Active());
    EXPECT_EQ(screen.titles, 1);
    ASSERT_TRUE(display.ShowNew(b));
    EXPECT_EQ(display.Active(), &b);
    EXPECT_EQ(documents.MostRecent(), &b);
}

TEST_F(DocumentDisplayTest, ADocumentIsShownInAHiddenViewElseInANewOne) {
    FakeDocument& a = AddFile(u"a");
    Pane& first = ActivePane();
    Pane& second = panes.Add();
    display.Show(&a, &first);
    EXPECT_EQ(&FakePanes::ViewIn(first), &a.view);
    display.Show(&a, &second);
    ASSERT_EQ(a.moreViews.size(), 1u);
    EXPECT_EQ(&FakePanes::ViewIn(second), &a.moreViews[0]);
    display.Show(&a, &first); // it is there
    EXPECT_EQ(a.moreViews.size(), 1u);
}

TEST_F(DocumentDisplayTest, WithoutMemoryForAViewThePaneStays) {
    FakeDocument& a = AddFile(u"a");
    FakeDocument& b = AddFile(u"b");
    Pane& first = ActivePane();
    Pane& second = panes.Add();
    display.Show(&a, &first);
    display.Show(&b, &second);
    a.makesViews = false;
    display.Show(&a, &second);
    EXPECT_EQ(panes.DocumentIn(second), &b);
}

TEST_F(DocumentDisplayTest, AnotherPaneThanTheActiveOneTakesNeitherFocusNorRank) {
    FakeDocument& a = AddFile(u"a");
    FakeDocument& b = AddFile(u"b");
    ASSERT_TRUE(display.ShowNew(a));
    const Pane* const first = panes.Active();
    display.Show(&b, &panes.Add());
    EXPECT_EQ(panes.Active(), first);
    EXPECT_EQ(panes.focused, first);
    EXPECT_EQ(documents.MostRecent(), &a);
}

TEST_F(DocumentDisplayTest, AViewThatGetsTheFocusMakesItsPaneTheActiveOne) {
    FakeDocument& a = AddFile(u"a");
    FakeDocument& b = AddFile(u"b");
    ASSERT_TRUE(display.ShowNew(a));
    Pane& second = panes.Add();
    display.Show(&b, &second);
    screen.titles = 0;
    display.ViewActivated(second.view);
    EXPECT_EQ(panes.Active(), &second);
    EXPECT_EQ(documents.MostRecent(), &b);
    EXPECT_EQ(screen.titles, 1);
    CaretView stranger;
    display.ViewActivated(stranger.AsView());
    EXPECT_EQ(panes.Active(), &second);
}

TEST_F(DocumentDisplayTest, NextAndPreviousFileWrapInOpeningOrder) {
    FakeDocument& a = AddFile(u"a");
    FakeDocument& b = AddFile(u"b");
    display.ShowNextFile(); // without a pane nothing happens
    ASSERT_TRUE(display.ShowNew(a));
    display.ShowNextFile();
    EXPECT_EQ(display.Active(), &b);
    display.ShowNextFile();
    EXPECT_EQ(display.Active(), &a);
    display.ShowPreviousFile();
    EXPECT_EQ(display.Active(), &b);
}

TEST_F(DocumentDisplayTest, SwitchingByUseFreezesTheOrderUntilItsEnd) {
    FakeDocument& a = AddFile(u"a");
    FakeDocument& b = AddFile(u"b");
    FakeDocument& c = AddFile(u"c");
    for (FakeDocument* document : {&c, &b, &a}) ASSERT_TRUE(display.ShowNew(*document));
    display.SwitchInMru(true);
    EXPECT_EQ(display.Active(), &b);
    display.SwitchInMru(true);
    EXPECT_EQ(display.Active(), &c);
    EXPECT_EQ(documents.MostRecent(), &a);
    EXPECT_TRUE(display.IsSwitching());
    display.FinishSwitching();
    EXPECT_FALSE(display.IsSwitching());
    EXPECT_EQ(documents.MostRecent(), &c);
    EXPECT_EQ(documents.NextInMru(&c), &a);
    display.SwitchInMru(false); // wraps to the least recent
    EXPECT_EQ(display.Active(), &b);
    display.AbandonSwitching();
    EXPECT_FALSE(display.IsSwitching());
    EXPECT_EQ(documents.MostRecent(), &b);
}

TEST_F(DocumentDisplayTest, LeavingAnOutputGoesToTheLastDocumentThatIsNone) {
    FakeDocument& a = AddFile(u"a");
    FakeDocument& one = AddOutput(u"one", false);
    FakeDocument& two = AddOutput(u"two", true);
    for (FakeDocument* document : {&a, &one, &two}) ASSERT_TRUE(display.ShowNew(*document));
    EXPECT_TRUE(display.LeaveOutput());
    EXPECT_EQ(display.Active(), &a);
    EXPECT_FALSE(display.LeaveOutput());
    EXPECT_EQ(display.Active(), &a);
}

TEST_F(DocumentDisplayTest, OutputsAloneAreNotLeft) {
    ASSERT_TRUE(display.ShowNew(AddOutput(u"one", false)));
    AddOutput(u"two", false);
    EXPECT_FALSE(display.LeaveOutput());
}

TEST_F(DocumentDisplayTest, ASplitShowsTheDocumentAgainAndKeepsTheActivePane) {
    FakeDocument& a = AddFile(u"a");
    display.SplitActive(true); // nothing to split
    EXPECT_TRUE(panes.splits.empty());
    ASSERT_TRUE(display.ShowNew(a));
    Pane* const first = panes.Active();
    screen.layouts = 0;
    display.SplitActive(true);
    EXPECT_EQ(panes.splits, std::vector<bool>{true});
    EXPECT_EQ(panes.Active(), first);
    EXPECT_EQ(panes.DocumentIn(*panes.Next(*first)), &a);
    EXPECT_NE(panes.Next(*first)->view, first->view);
    EXPECT_EQ(screen.layouts, 1);
    display.SplitActive(false);
    EXPECT_EQ(panes.splits, (std::vector<bool>{true, false}));
}

TEST_F(DocumentDisplayTest, ASplitThatFailsLeavesNoView) {
    FakeDocument& a = AddFile(u"a");
    ASSERT_TRUE(display.ShowNew(a));
    panes.makesPanes = false;
    display.SplitActive(true);
    ASSERT_EQ(a.moreViews.size(), 1u);
    EXPECT_TRUE(a.moreViews[0].destroyed);
}

TEST_F(DocumentDisplayTest, AClosedPaneGivesItsPlaceToAnother) {
    FakeDocument& a = AddFile(u"a");
    FakeDocument& b = AddFile(u"b");
    ASSERT_TRUE(display.ShowNew(a));
    display.CloseActivePane(); // the only one
    EXPECT_EQ(display.Active(), &a);
    Pane& second = panes.Add();
    display.Show(&b, &second);
    display.ViewActivated(second.view);
    display.CloseActivePane();
    EXPECT_EQ(display.Active(), &a);
    EXPECT_EQ(panes.focused, panes.Active());
    EXPECT_EQ(documents.MostRecent(), &a);
}

TEST_F(DocumentDisplayTest, TheFocusGoesAroundThePanes) {
    display.FocusNextPane(); // there is none
    EXPECT_EQ(panes.focused, nullptr);
    Pane& first = ActivePane();
    Pane& second = panes.Add();
    Pane& third = panes.Add();
    display.FocusNextPane();
    EXPECT_EQ(panes.focused, &second);
    display.FocusPreviousPane();
    EXPECT_EQ(panes.focused, &third);
    panes.SetActive(&third);
    display.FocusNextPane();
    EXPECT_EQ(panes.focused, &first);
}

} // namespace
