#include "document/TextBuffer.h"

#include "support/FakeView.h"
#include "support/TextDocument.h"

#include <gtest/gtest.h>

namespace {

struct Place {
    uint32_t anchor;
    uint32_t caret;
    uint32_t topLine;
    bool operator==(const Place&) const = default;
};

Place PlaceOf(const FakeView* view) { return {view->SelectionAnchor(), view->CaretOffset(), view->TopLine()}; }

class ViewStateTest : public ::testing::Test {
protected:
    ViewStateTest() : document(u"0123\n5678\nABCD\nFGHI\n"), view(FakeView::Create(*document)) {}

    // Both selection and top line as captured for what comes after, with the caret set first.
    const ViewState& Insert(Place before, uint32_t offset, const std::u16string& text) {
        Put(before);
        EXPECT_TRUE(document->InsertText(offset, text.data(), static_cast<uint32_t>(text.size())));
        return Captured();
    }
    const ViewState& Delete(Place before, uint32_t offset, uint32_t count) {
        Put(before);
        EXPECT_TRUE(document->DeleteText({offset, offset + count}));
        return Captured();
    }
    void Put(Place place) {
        view->SelectRange(place.anchor, place.caret);
        view->SetTopLine(place.topLine);
    }
    const ViewState& Captured() {
        return static_cast<const TextEdit*>(TextBufferProbe::UndoHead(*document))->viewStates;
    }

    TextDocument document;
    FakeView* view;
};

Place Before(const ViewState& state) { return {state.before.anchor, state.before.caret, state.topLineBefore}; }
Place After(const ViewState& state) { return {state.after.anchor, state.after.caret, state.topLineAfter}; }

} // namespace

TEST_F(ViewStateTest, TheBeforeValuesAreThoseOfTheView) {
    const ViewState& state = Insert({3, 7, 1}, 10, u"x");
    EXPECT_EQ(state.view, view);
    EXPECT_EQ(Before(state), (Place{3, 7, 1}));
    EXPECT_EQ(state.next, nullptr);
}

TEST_F(ViewStateTest, ASelectionBeforeTheChangeStays) {
    EXPECT_EQ(After(Delete({1, 2, 0}, 3, 2)), (Place{1, 2, 0}));
    EXPECT_EQ(After(Insert({1, 2, 0}, 3, u"xy")), (Place{1, 2, 0}));
}

TEST_F(ViewStateTest, TheCaretIsComparedWithTheEndOfTheChange) {
    EXPECT_EQ(After(Delete({1, 4, 0}, 3, 2)), (Place{1, 4, 0})) << "the anchor lies before, the caret inside";
    EXPECT_EQ(After(Delete({1, 5, 0}, 3, 2)), (Place{3, 3, 0})) << "the caret at the end of the change";
}

TEST_F(ViewStateTest, ASelectionAfterTheChangeMovesWithTheText) {
    EXPECT_EQ(After(Delete({5, 9, 0}, 3, 2)), (Place{3, 7, 0}));
    EXPECT_EQ(After(Insert({5, 9, 0}, 3, u"xy")), (Place{7, 11, 0}));
}

TEST_F(ViewStateTest, AnyOtherSelectionGoesToTheChange) {
    EXPECT_EQ(After(Delete({3, 9, 0}, 3, 2)), (Place{3, 3, 0})) << "a deletion: to its start";
    EXPECT_EQ(After(Insert({3, 9, 0}, 3, u"xy")), (Place{5, 5, 0})) << "an insertion: to its end";
    EXPECT_EQ(After(Insert({9, 4, 0}, 3, u"xy")), (Place{5, 5, 0}));
}

TEST_F(ViewStateTest, ATopLineBeforeTheChangeStays) { EXPECT_EQ(After(Insert({0, 0, 1}, 6, u"x\n")).topLine, 1u); }

TEST_F(ViewStateTest, ATopLineInsideTheChangeBecomesTheLineOfItsStart) {
    EXPECT_EQ(After(Delete({0, 0, 2}, 6, 10)).topLine, 1u);
    EXPECT_TRUE(document->Undo());
    EXPECT_EQ(After(Delete({0, 0, 1}, 5, 5)).topLine, 1u) << "starting exactly there";
}

TEST_F(ViewStateTest, ATopLineAfterTheChangeMovesWithTheLines) {
    EXPECT_EQ(After(Delete({0, 0, 3}, 2, 5)).topLine, 2u);
    EXPECT_TRUE(document->Undo());
    EXPECT_EQ(After(Insert({0, 0, 3}, 2, u"\n\n")).topLine, 5u);
}

TEST_F(ViewStateTest, PerformingPutsAnEmptySelectionAtTheChange) {
    Insert({1, 1, 0}, 7, u"xyz");
    EXPECT_EQ(PlaceOf(view), (Place{10, 10, 0})) << "after an insertion, whatever was captured as the place after it";
    Delete({1, 1, 3}, 2, 5);
    EXPECT_EQ(PlaceOf(view), (Place{2, 2, 2}));
}

TEST_F(ViewStateTest, UndoRestoresSelectionAndTopLineAndRedoAppliesThemAgain) {
    Insert({3, 12, 2}, 7, u"x\nz");
    Put({0, 0, 0});
    EXPECT_TRUE(document->Undo());
    EXPECT_EQ(PlaceOf(view), (Place{3, 12, 2}));
    Put({0, 0, 0});
    EXPECT_TRUE(document->Redo());
    EXPECT_EQ(PlaceOf(view), (Place{10, 10, 3}));
}

TEST_F(ViewStateTest, EveryViewIsCapturedInTheirOrder) {
    FakeView* second = FakeView::Create(*document);
    FakeView* third = FakeView::Create(*document);
    second->SelectRange(2, 4);
    third->SelectRange(11, 8);
    const ViewState& state = Insert({1, 1, 0}, 6, u"x");
    ASSERT_NE(state.next, nullptr);
    ASSERT_NE(state.next->next, nullptr);
    EXPECT_EQ(state.next->view, second);
    EXPECT_EQ(Before(*state.next), (Place{2, 4, 0}));
    EXPECT_EQ(state.next->next->view, third);
    EXPECT_EQ(state.next->next->next, nullptr);
    EXPECT_EQ(PlaceOf(third), (Place{7, 7, 0})) << "every view gets the empty selection";
    EXPECT_TRUE(document->Undo());
    EXPECT_EQ(PlaceOf(second), (Place{2, 4, 0}));
    EXPECT_EQ(PlaceOf(third), (Place{11, 8, 0}));
}

TEST_F(ViewStateTest, AViewThatHasGoneIsPassedOver) {
    FakeView* second = FakeView::Create(*document);
    Insert({1, 1, 0}, 6, u"x");
    second->Destroy();
    EXPECT_TRUE(document->Undo());
    EXPECT_TRUE(document->Redo());
    EXPECT_EQ(PlaceOf(view), (Place{7, 7, 0}));
}

TEST_F(ViewStateTest, AViewMadeLaterKeepsItsOffsetsWithinTheText) {
    Insert({1, 1, 0}, 20, u"more text");
    FakeView* second = FakeView::Create(*document);
    second->SelectRange(2, 25);
    EXPECT_TRUE(document->Undo());
    EXPECT_EQ(PlaceOf(second), (Place{2, 20, 0}));
    EXPECT_EQ(second->CaretLine(), 4u);
    EXPECT_EQ(second->CaretColumn(), 0u);
    second->SelectRange(12, 12);
    EXPECT_TRUE(document->DeleteText({0, 5}));
    EXPECT_TRUE(document->Undo());
    EXPECT_TRUE(document->Redo());
    EXPECT_EQ(second->CaretLine(), 0u) << "captured by the new record";
}

TEST_F(ViewStateTest, EveryStepRepaintsAllViewsWithAWindow) {
    FakeView* hidden = FakeView::Create(*document, false);
    view->ForgetCalls();
    Insert({1, 1, 0}, 6, u"x");
    EXPECT_EQ(view->invalidations, 1);
    EXPECT_TRUE(document->Undo());
    EXPECT_EQ(view->invalidations, 2);
    EXPECT_TRUE(document->Redo());
    EXPECT_EQ(view->invalidations, 3);
    EXPECT_EQ(hidden->invalidations, 0);
    EXPECT_GT(hidden->lineCountChanges, 0) << "every view is notified of the line count";
}

TEST_F(ViewStateTest, ALineEditAppliesItsStatesOnceWrittenBack) {
    view->Activate();
    view->PutCaret(0, 2);
    EXPECT_TRUE(document->TypeChar(view, u'x', 2, true, false));
    EXPECT_TRUE(document->TypeChar(view, u'y', 3, true, false));
    EXPECT_EQ(view->CaretColumn(), 4u);
    EXPECT_TRUE(document->Undo());
    EXPECT_EQ(PlaceOf(view), (Place{2, 2, 0}));
    EXPECT_TRUE(document->Redo());
    EXPECT_EQ(PlaceOf(view), (Place{4, 4, 0}));
}
