#include "support/FakeSurface.h"
#include "viewbase/DragSelection.h"

#include <gtest/gtest.h>

namespace {

class DragSelectionTest : public ::testing::Test {
protected:
    FakeSurface surface;
    DragSelection drag{surface};
};

TEST_F(DragSelectionTest, TheMouseIsCapturedWhileTheButtonIsHeld) {
    EXPECT_FALSE(drag.IsActive());
    drag.Begin({3, 4});
    EXPECT_TRUE(drag.IsActive());
    EXPECT_TRUE(surface.captured);
    drag.End();
    EXPECT_FALSE(surface.captured);
    drag.OnCaptureLost(); // as the window reports it
    EXPECT_FALSE(drag.IsActive());
}

TEST_F(DragSelectionTest, TheLastPointIsKeptForTheTimer) {
    drag.Begin({3, 4});
    EXPECT_EQ(drag.Point().x, 3);
    EXPECT_TRUE(drag.MoveTo({7, -20}));
    EXPECT_EQ(drag.Point().x, 7);
    EXPECT_EQ(drag.Point().y, -20);
}

TEST_F(DragSelectionTest, WithoutAButtonMovesMeanNothing) {
    EXPECT_FALSE(drag.MoveTo({7, 8}));
    EXPECT_EQ(drag.Point().x, 0);
    drag.End();
    drag.OnCaptureLost();
    EXPECT_FALSE(surface.captured);
}

TEST_F(DragSelectionTest, ACaptureThatIsTakenAwayEndsIt) {
    drag.Begin({3, 4});
    drag.OnCaptureLost();
    EXPECT_FALSE(drag.IsActive());
    EXPECT_FALSE(drag.MoveTo({7, 8}));
}

} // namespace
