#include "document/LineMarks.h"

#include "document/TextPosition.h"

#include "support/FailureInjection.h"
#include "support/Random.h"

#include <gtest/gtest.h>
#include <set>
#include <vector>

namespace {

using Lines = std::vector<uint32_t>;

constexpr auto Other = static_cast<LineMark::Flags>(2);
constexpr auto Any = static_cast<LineMark::Flags>(UINT32_MAX);

Lines LinesOf(const LineMarks& marks) {
    Lines lines;
    const LineMark* previous = nullptr;
    for (const LineMark* mark = marks.Head(); mark; mark = mark->next) {
        EXPECT_EQ(mark->previous, previous);
        EXPECT_NE(mark->flags, 0u);
        if (previous) {
            EXPECT_LT(previous->line, mark->line);
        }
        lines.push_back(mark->line);
        previous = mark;
    }
    EXPECT_EQ(marks.Previous(UINT32_MAX, Any, true), previous);
    return lines;
}

void Toggle(LineMarks& marks, std::initializer_list<uint32_t> lines) {
    for (uint32_t line : lines) ASSERT_TRUE(marks.ToggleBookmark(line));
}

uint32_t LineOf(const LineMark* mark) { return mark ? mark->line : NoLine; }

} // namespace

TEST(LineMarks, AreKeptInAscendingOrder) {
    LineMarks marks;
    Toggle(marks, {5, 1, 9, 3, 0});
    EXPECT_EQ(LinesOf(marks), (Lines{0, 1, 3, 5, 9}));
    EXPECT_EQ(marks.Find(3)->flags, LineMark::Bookmark);
}

TEST(LineMarks, ToggledTwiceAreGone) {
    LineMarks marks;
    Toggle(marks, {5, 1, 5});
    EXPECT_EQ(LinesOf(marks), (Lines{1}));
}

TEST(LineMarks, AreFoundByLine) {
    LineMarks marks;
    Toggle(marks, {2, 4});
    EXPECT_EQ(LineOf(marks.Find(4)), 4u);
    EXPECT_EQ(marks.Find(3), nullptr);
    EXPECT_EQ(marks.Find(9), nullptr);
}

TEST(LineMarks, NextIsTheFirstOnOrAfterTheLine) {
    LineMarks marks;
    Toggle(marks, {2, 4});
    EXPECT_EQ(LineOf(marks.Next(2, LineMark::Bookmark, false)), 4u);
    EXPECT_EQ(LineOf(marks.Next(2, LineMark::Bookmark, true)), 2u);
    EXPECT_EQ(LineOf(marks.Next(3, LineMark::Bookmark, true)), 4u);
    EXPECT_EQ(marks.Next(4, LineMark::Bookmark, false), nullptr);
    EXPECT_EQ(marks.Next(0, Other, true), nullptr) << "no node with a flag of the mask";
}

TEST(LineMarks, PreviousIsTheLastBeforeOrOnTheLine) {
    LineMarks marks;
    Toggle(marks, {2, 4});
    EXPECT_EQ(LineOf(marks.Previous(4, LineMark::Bookmark, false)), 2u);
    EXPECT_EQ(LineOf(marks.Previous(4, LineMark::Bookmark, true)), 4u);
    EXPECT_EQ(LineOf(marks.Previous(3, LineMark::Bookmark, true)), 2u);
    EXPECT_EQ(marks.Previous(2, LineMark::Bookmark, false), nullptr);
    EXPECT_EQ(marks.Previous(9, Other, true), nullptr) << "no node with a flag of the mask";
}

TEST(LineMarks, AMarkWithAnotherFlagStaysWhenItsBookmarkGoes) {
    LineMarks marks;
    Toggle(marks, {2, 4});
    marks.Find(2)->flags |= Other;
    ASSERT_TRUE(marks.ToggleBookmark(2));
    EXPECT_EQ(LinesOf(marks), (Lines{2, 4}));
    EXPECT_EQ(LineOf(marks.Next(0, LineMark::Bookmark, true)), 4u);
    marks.ClearBookmarks();
    EXPECT_EQ(LinesOf(marks), (Lines{2}));
}

TEST(LineMarks, FollowInsertedLines) {
    LineMarks marks;
    Toggle(marks, {1, 2, 3});
    marks.LinesInserted({2, 10});
    EXPECT_EQ(LinesOf(marks), (Lines{1, 2, 13}));
}

TEST(LineMarks, FollowDeletedLinesAndGoWithThem) {
    LineMarks marks;
    Toggle(marks, {1, 2, 3, 4, 5, 9});
    marks.LinesDeleted({2, 2}); // lines 3 and 4
    EXPECT_EQ(LinesOf(marks), (Lines{1, 2, 3, 7}));
}

TEST(LineMarks, MoveBackWhenAnInsertionIsTakenBack) {
    LineMarks marks;
    Toggle(marks, {2, 6});
    marks.LinesTakenBack({2, 3});
    EXPECT_EQ(LinesOf(marks), (Lines{2, 3}));
}

TEST(LineMarks, StaySortedWhenAMarkInsideTheLinesTakenBackMovesUp) {
    LineMarks marks;
    Toggle(marks, {0, 2, 4, 6, 8});
    marks.LinesTakenBack({4, 5}); // 6 moves to 1, 8 to 3
    EXPECT_EQ(LinesOf(marks), (Lines{0, 1, 2, 3, 4}));
    marks.LinesTakenBack({0, 2}); // 1 and 2 to 0, 3 to 1, 4 to 2
    EXPECT_EQ(LinesOf(marks), (Lines{0, 1, 2}));
}

TEST(LineMarks, AreUnchangedWithoutMemory) {
    FailEachAllocation([] {
        LineMarks marks;
        {
            FailurePause pause;
            Toggle(marks, {1});
        }
        const bool done = marks.ToggleBookmark(2);
        EXPECT_EQ(LinesOf(marks), done ? (Lines{1, 2}) : (Lines{1}));
        return done;
    });
}

TEST(LineMarks, BehaveLikeAPlainSetOnRandomOperations) {
    Random random(2);
    LineMarks marks;
    std::set<uint32_t> model;
    for (int step = 0; step < 50000; ++step) {
        const uint32_t line = random.Below(60);
        const uint32_t count = random.Below(8);
        std::set<uint32_t> next;
        switch (random.Below(8)) {
        default:
            ASSERT_TRUE(marks.ToggleBookmark(line));
            next = model;
            if (!next.erase(line)) next.insert(line);
            break;
        case 0:
            marks.LinesInserted({line, count});
            for (uint32_t m : model) next.insert(m > line ? m + count : m);
            break;
        case 1:
            marks.LinesDeleted({line, count});
            for (uint32_t m : model) {
                if (m <= line) next.insert(m);
                if (m > line + count) next.insert(m - count);
            }
            break;
        case 2:
            marks.LinesTakenBack({line, count});
            for (uint32_t m : model) next.insert(m <= line ? m : m > count ? m - count : 0);
            break;
        case 3:
            if (random.Below(20) == 0) {
                marks.ClearBookmarks();
            } else {
                next = model;
            }
            break;
        }
        model = next;
        ASSERT_EQ(LinesOf(marks), Lines(model.begin(), model.end())) << "step " << step;
    }
}
