#include "base/Assert.h"

#include <gtest/gtest.h>

namespace {

int evaluations = 0;

bool Evaluate(bool answer) {
    ++evaluations;
    return answer;
}

} // namespace

#ifdef ORVANE_ASSERTIONS

TEST(Assert, EndsTheProgramOnlyWhenTheConditionDoesNotHold) {
    evaluations = 0;
    ORVANE_ASSERT(Evaluate(true));
    EXPECT_EQ(evaluations, 1);
    EXPECT_DEATH(ORVANE_ASSERT(Evaluate(false)), "assertion failed: Evaluate\\(false\\)");
}

#else

TEST(Assert, EvaluatesNothingInARelease) {
    evaluations = 0;
    ORVANE_ASSERT(Evaluate(true));
    ORVANE_ASSERT(Evaluate(false));
    EXPECT_EQ(evaluations, 0);
}

#endif
