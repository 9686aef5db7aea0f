#include "view/StatusFields.h"

#include "support/FakeSurface.h"

#include <gtest/gtest.h>

namespace {

TEST(StatusFields, SaysWhereTheCaretIsAndHowItTypes) {
    FakeHost host;
    StatusFields fields;
    fields.Show(host, {{0, 41}, false, LineEnding::Dos});
    EXPECT_EQ(host.status[StatusField::Line], u"\tLn 1");
    EXPECT_EQ(host.status[StatusField::Column], u"\tCol 42");
    EXPECT_EQ(host.status[StatusField::Overwrite], u"\tINS");
    EXPECT_EQ(host.status[StatusField::LineEnding], u"\tDos");
    fields.Show(host, {{0, 41}, true, LineEnding::Mixed});
    EXPECT_EQ(host.status[StatusField::Overwrite], u"\tOVR");
    EXPECT_EQ(host.status[StatusField::LineEnding], u"\tMixed");
}

TEST(StatusFields, LineEndingsHaveNames) {
    FakeHost host;
    StatusFields fields;
    const Char* const names[] = {u"\tUnknown", u"\tUnix", u"\tDos", u"\tMixed", u""};
    for (uint32_t ending = 0; ending < 5; ++ending) {
        fields.Show(host, {{}, false, static_cast<LineEnding>(ending)});
        EXPECT_EQ(host.status[StatusField::LineEnding], names[ending]);
    }
}

TEST(StatusFields, OnlyWhatChangedIsSent) {
    FakeHost host;
    StatusFields fields;
    fields.Show(host, {{1, 1}, false, LineEnding::Unix});
    fields.Show(host, {{1, 2}, false, LineEnding::Unix});
    EXPECT_EQ(host.statusCalls[StatusField::Line], 1);
    EXPECT_EQ(host.statusCalls[StatusField::Column], 2);
    EXPECT_EQ(host.statusCalls[StatusField::Overwrite], 1);
    fields.Forget();
    fields.Show(host, {{1, 2}, false, LineEnding::Unix});
    EXPECT_EQ(host.statusCalls[StatusField::Line], 2);
    EXPECT_EQ(host.statusCalls[StatusField::LineEnding], 2);
}

} // namespace
