#include "viewbase/LongOperation.h"

#include "support/FakeSurface.h"

#include <gtest/gtest.h>

namespace {

TEST(LongOperation, TheFrameKnowsOfAllThatRun) {
    FakeSurface surface;
    {
        const LongOperation outer(surface);
        EXPECT_EQ(surface.ownHost.longOperations, 1);
        {
            const LongOperation inner(surface);
            EXPECT_EQ(surface.ownHost.longOperations, 2);
        }
        EXPECT_EQ(surface.ownHost.longOperations, 1);
    }
    EXPECT_EQ(surface.ownHost.longOperations, 0);
}

TEST(LongOperation, RunsOutsideAFrameAsWell) {
    FakeSurface surface;
    surface.host = nullptr;
    LongOperation operation(surface);
    EXPECT_TRUE(operation.Continue(1, 2));
}

} // namespace
