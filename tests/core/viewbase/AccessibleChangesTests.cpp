#include "viewbase/AccessibleChanges.h"

#include <gtest/gtest.h>

namespace {

AccessibleEvents Events(bool focus, bool text, bool value, bool selection) {
    return {focus, text, value, false, selection};
}

TEST(AccessibleChangesTest, NothingIsToldTwice) {
    AccessibleChanges changes;
    changes.Skip({3, 5, 1, 9});
    EXPECT_EQ(changes.Take({3, 5, 1, 9}), AccessibleEvents());
    EXPECT_EQ(changes.Take({3, 6, 1, 9}), Events(false, false, false, true));
    EXPECT_EQ(changes.Take({3, 6, 1, 9}), AccessibleEvents());
}

TEST(AccessibleChangesTest, ManyChangesAreOne) {
    AccessibleChanges changes;
    changes.Skip({0, 0, 0, 0});
    EXPECT_EQ(changes.Take({40, 40, 2, 17}), Events(false, true, true, true));
    // Gone and come back is no change.
    EXPECT_EQ(changes.Take({40, 40, 2, 17}), AccessibleEvents());
}

TEST(AccessibleChangesTest, AnotherLineIsAnotherValue) {
    AccessibleChanges changes;
    changes.Skip({8, 8, 1, 0});
    EXPECT_EQ(changes.Take({8, 20, 2, 0}), Events(false, false, true, true));
    // An edit elsewhere moves no caret.
    EXPECT_EQ(changes.Take({8, 20, 2, 1}), Events(false, true, true, false));
}

TEST(AccessibleChangesTest, AnotherNameIsToldUnlessTheDocumentIsAnother) {
    AccessibleChanges changes;
    changes.Skip({3, 3, 1, 9, 1});
    AccessibleEvents named;
    named.name = true;
    EXPECT_EQ(changes.Take({3, 3, 1, 9, 2}), named);
    EXPECT_EQ(changes.Take({3, 3, 1, 9, 2}), AccessibleEvents());
    changes.DocumentShown();
    EXPECT_FALSE(changes.Take({3, 3, 1, 9, 4}).name);
    EXPECT_EQ(changes.Take({3, 3, 1, 9, 4}), AccessibleEvents());
}

TEST(AccessibleChangesTest, AnotherDocumentIsToldOnceWithItsCaret) {
    AccessibleChanges changes;
    changes.Skip({});
    changes.DocumentShown();
    EXPECT_EQ(changes.Take({}), Events(true, false, false, true));
    EXPECT_EQ(changes.Take({}), AccessibleEvents());
    changes.DocumentShown();
    changes.Skip({});
    EXPECT_EQ(changes.Take({}), AccessibleEvents());
}

} // namespace
