#include "settings/IniFile.h"
#include "settings/Settings.h"
#include "support/FakeSurface.h"
#include "viewbase/MouseWheel.h"

#include <gtest/gtest.h>

namespace {

class MouseWheelTest : public ::testing::Test {
protected:
    MouseWheelTest() {
        LoadSettings(IniFile());
        settings.FontSize = 10;
    }
    ~MouseWheelTest() override { ReleaseSettings(); }
    int64_t Turn(int32_t delta, int32_t lines = 3, bool ctrl = false) {
        return wheel.Turn({delta, lines, ctrl}, &host);
    }

    MouseWheel wheel;
    FakeHost host;
};

TEST_F(MouseWheelTest, ANotchTowardsTheUserScrollsDown) {
    EXPECT_EQ(Turn(-120), 3);
    EXPECT_EQ(Turn(240), -6);
}

TEST_F(MouseWheelTest, PartsOfANotchAddUp) {
    EXPECT_EQ(Turn(-50), 0);
    EXPECT_EQ(Turn(-50), 0);
    EXPECT_EQ(Turn(-50), 3);
    EXPECT_EQ(Turn(-90), 3); // 30 were left
}

TEST_F(MouseWheelTest, AWheelThatScrollsNoLinesDoesNothing) {
    EXPECT_EQ(Turn(-120, 0), 0);
    EXPECT_EQ(Turn(-120, -1), 0);
    EXPECT_EQ(settings.FontSize, 10u);
}

TEST_F(MouseWheelTest, WithCtrlItChangesTheFontByOnePoint) {
    EXPECT_EQ(Turn(-240, 3, true), 0);
    EXPECT_EQ(settings.FontSize, 11u);
    EXPECT_EQ(host.status[StatusField::Message], u"Font Size: 11");
    EXPECT_EQ(host.applied, std::vector{SettingsEffect::Layout});
    EXPECT_EQ(Turn(120, 3, true), 0);
    EXPECT_EQ(settings.FontSize, 10u);
}

TEST_F(MouseWheelTest, TheFontNeverGetsSmallerThanOnePoint) {
    settings.FontSize = 1;
    Turn(120, 3, true);
    EXPECT_EQ(settings.FontSize, 1u);
}

TEST_F(MouseWheelTest, WithoutAFrameTheFontStillChanges) {
    EXPECT_EQ(wheel.Turn({-120, 3, true}, nullptr), 0);
    EXPECT_EQ(settings.FontSize, 11u);
}

} // namespace
