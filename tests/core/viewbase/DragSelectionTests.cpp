#include "support/FakeSurface.h"
#include "viewbase/DragSelection.h"

#include <gtest/gtest.h>

namespace {

class DragSelectionTest : public ::testing::Test, public DragTarget {
protected:
    bool BeginSelection(ClientPoint point, bool extend) override {
        begun.emplace_back(point.x, point.y);
        extended = extend;
        return selects;
    }
    void ExtendSelection(ClientPoint point) override { reached.emplace_back(point.x, point.y); }

    using Points = std::vector<std::pair<int32_t, int32_t>>;
    FakeSurface surface;
    DragSelection drag{surface, *this};
    bool selects = true;
    bool extended = false;
    Points begun;
    Points reached;
};

TEST_F(DragSelectionTest, TheMouseIsCapturedWhileTheButtonIsHeld) {
    drag.OnLeftButtonDown({3, 4}, true);
    EXPECT_EQ(begun, (Points{{3, 4}}));
    EXPECT_TRUE(extended);
    EXPECT_TRUE(surface.captured);
    drag.OnLeftButtonUp();
    EXPECT_FALSE(surface.captured);
    drag.OnCaptureLost(); // as the window reports it
    drag.OnMouseMove({7, 8});
    EXPECT_TRUE(reached.empty());
}

TEST_F(DragSelectionTest, MovesAndTheTimerExtendToTheLastPoint) {
    drag.OnLeftButtonDown({3, 4}, false);
    EXPECT_FALSE(extended);
    drag.OnTimer();
    drag.OnMouseMove({7, -20});
    drag.OnTimer();
    EXPECT_EQ(reached, (Points{{3, 4}, {7, -20}, {7, -20}}));
}

TEST_F(DragSelectionTest, WithoutAButtonNothingIsSelected) {
    drag.OnMouseMove({7, 8});
    drag.OnTimer();
    drag.OnLeftButtonUp();
    drag.OnCaptureLost();
    EXPECT_TRUE(begun.empty());
    EXPECT_TRUE(reached.empty());
    EXPECT_FALSE(surface.captured);
}

TEST_F(DragSelectionTest, WhereNothingCanBeSelectedTheMouseStaysFree) {
    selects = false;
    drag.OnLeftButtonDown({3, 4}, false);
    EXPECT_FALSE(surface.captured);
    drag.OnMouseMove({7, 8});
    EXPECT_TRUE(reached.empty());
}

TEST_F(DragSelectionTest, ACaptureThatIsTakenAwayEndsIt) {
    drag.OnLeftButtonDown({3, 4}, false);
    drag.OnCaptureLost();
    drag.OnMouseMove({7, 8});
    EXPECT_TRUE(reached.empty());
}

} // namespace
