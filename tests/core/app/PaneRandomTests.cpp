#include "core/app/PaneTestSupport.h"

#include <algorithm>
#include <random>

// Random splits, closes and drags in windows of every size, compared with a plain model of the rules.

namespace {

using Places = std::vector<Fraction>;

struct Neighbour {
    int kind; // 0 below, 1 above, 2 to the right, 3 to the left
    bool exact;
};

bool IsNeighbour(const Fraction& pane, const Fraction& closed, const Neighbour& wanted) {
    const bool touches[] = {pane.top == closed.top + closed.height, pane.top + pane.height == closed.top,
                            pane.left == closed.left + closed.width, pane.left + pane.width == closed.left};
    const bool sameColumns = pane.left == closed.left && pane.width == closed.width;
    const bool sameRows = pane.top == closed.top && pane.height == closed.height;
    const bool withinColumns = pane.left >= closed.left && pane.left + pane.width <= closed.left + closed.width;
    const bool withinRows = pane.top >= closed.top && pane.top + pane.height <= closed.top + closed.height;
    if (!touches[wanted.kind]) return false;
    if (wanted.kind < 2) return wanted.exact ? sameColumns : withinColumns;
    return wanted.exact ? sameRows : withinRows;
}

void Grow(Fraction& pane, const Fraction& closed, int kind) {
    if (kind == 0) pane.top = closed.top;
    if (kind == 2) pane.left = closed.left;
    (kind < 2 ? pane.height : pane.width) += kind < 2 ? closed.height : closed.width;
}

void ModelClose(Places& places, size_t index) {
    const Fraction closed = places[index];
    places.erase(places.begin() + static_cast<std::ptrdiff_t>(index));
    for (const bool exact : {true, false}) {
        for (int kind = 0; kind < 4; ++kind) {
            bool any = false;
            for (Fraction& pane : places) {
                if (!IsNeighbour(pane, closed, {kind, exact})) continue;
                Grow(pane, closed, kind);
                any = true;
            }
            if (any) return;
        }
    }
}

void ModelSplit(Places& places, size_t index, bool vertical) {
    Fraction made = places[index];
    if ((vertical ? made.width : made.height) == 1) return; // cannot be halved
    (vertical ? made.width : made.height) /= 2;
    (vertical ? made.left : made.top) += vertical ? made.width : made.height;
    (vertical ? places[index].width : places[index].height) /= 2;
    places.push_back(made);
}

// No pane covers a pixel of another or one outside, whatever the size of the window.
void ExpectPixelsApart(const TestLayout& layout, uint32_t width, uint32_t height) {
    std::vector<PixelRect> rects;
    for (const Pane* pane = layout.Head(); pane; pane = pane->next) {
        const PixelRect rect = PaneLayout::Rectangle(*pane, width, height);
        ASSERT_GE(std::min(rect.x, rect.y), 0);
        ASSERT_GE(std::min(rect.width, rect.height), 0);
        if (rect.width == 0 || rect.height == 0) continue;
        ASSERT_LE(rect.x + rect.width, static_cast<int>(width));
        ASSERT_LE(rect.y + rect.height, static_cast<int>(height));
        for (const PixelRect& other : rects)
            ASSERT_TRUE(rect.x >= other.x + other.width || other.x >= rect.x + rect.width ||
                        rect.y >= other.y + other.height || other.y >= rect.y + rect.height);
        rects.push_back(rect);
    }
}

class PaneRandomTest : public ::testing::TestWithParam<unsigned> {
protected:
    uint32_t Random(uint32_t below) { return std::uniform_int_distribution<uint32_t>(0, below - 1)(random); }
    size_t AnyPane() { return Random(static_cast<uint32_t>(layout.Places().size())); }
    uint32_t AnySize() { return Random(8) == 0 ? Random(70) : 200 + Random(4000); }

    void Split() {
        const size_t index = AnyPane();
        const bool vertical = Random(2) == 0;
        ModelSplit(model, index, vertical);
        layout.Split(PaneAt(layout, index), vertical);
        ++splits;
        ASSERT_EQ(layout.Places(), model);
    }
    void Close() {
        Pane* heir = nullptr;
        const size_t index = AnyPane();
        const bool only = model.size() == 1;
        ASSERT_EQ(layout.Close(PaneAt(layout, index), heir), !only);
        if (only) return;
        ModelClose(model, index);
        ASSERT_EQ(layout.Places(), model);
    }
    // From a point on some pane's side to a few places.
    void Drag() {
        const uint32_t width = AnySize();
        const uint32_t height = AnySize();
        const Fraction pane = model[AnyPane()];
        const uint32_t corner = Random(4);
        const uint32_t along = corner < 2 ? Random(pane.height + 1) : Random(pane.width + 1);
        const uint32_t x = corner < 2 ? pane.left + (corner == 0 ? 0 : pane.width) : pane.left + along;
        const uint32_t y = corner < 2 ? pane.top + along : pane.top + (corner == 2 ? 0 : pane.height);
        layout.BeginDrag(static_cast<int32_t>(uint64_t{x} * width >> 16),
                         static_cast<int32_t>(uint64_t{y} * height >> 16), width, height);
        for (int i = 0; i < 3; ++i) DragStep(width, height);
        layout.EndDrag();
    }
    void DragStep(uint32_t width, uint32_t height) {
        const uint64_t uncovered = Uncovered(model);
        layout.Drag(static_cast<int32_t>(Random(width + 200)) - 100, static_cast<int32_t>(Random(height + 200)) - 100,
                    width, height);
        model = layout.Places();
        ASSERT_NO_FATAL_FAILURE(ExpectNoOverlap(model));
        // Only the slivers left by rounded halves may get longer: a unit for each split.
        ASSERT_LE(Uncovered(model), uncovered + splits * Whole);
    }
    void Check() {
        ASSERT_NO_FATAL_FAILURE(ExpectNoOverlap(layout.Places()));
        for (int i = 0; i < 3; ++i) ASSERT_NO_FATAL_FAILURE(ExpectPixelsApart(layout, AnySize(), AnySize()));
        for (const uint32_t size : {0u, 1u, 2u, 3u, 64u})
            ASSERT_NO_FATAL_FAILURE(ExpectPixelsApart(layout, size, size));
    }
    void StartOver() {
        layout.Set({{0, 0, Whole, Whole}});
        model = layout.Places();
        splits = 0;
    }

    std::mt19937 random{GetParam()};
    TestLayout layout;
    Places model{{0, 0, Whole, Whole}};
    uint64_t splits = 0;
};

TEST_P(PaneRandomTest, SplitsAndDragsLeaveNothingButRounding) {
    for (int step = 0; step < 4000; ++step) {
        if (splits == 14) StartOver();
        ASSERT_NO_FATAL_FAILURE(Random(4) == 0 ? Split() : Drag()) << "step " << step;
        ASSERT_NO_FATAL_FAILURE(Check()) << "step " << step;
        ASSERT_LE(Uncovered(model), splits * Whole) << "step " << step;
    }
}

TEST_P(PaneRandomTest, SplitsClosesAndDragsNeverOverlap) {
    for (int step = 0; step < 6000; ++step) {
        const uint32_t choice = Random(10);
        if (choice < 3 && model.size() < 14)
            ASSERT_NO_FATAL_FAILURE(Split()) << "step " << step;
        else if (choice < 5)
            ASSERT_NO_FATAL_FAILURE(Close()) << "step " << step;
        else
            ASSERT_NO_FATAL_FAILURE(Drag()) << "step " << step;
        ASSERT_NO_FATAL_FAILURE(Check()) << "step " << step;
    }
}

// Halving far beyond what a window can show.
TEST_P(PaneRandomTest, EndlessSplitsStayConsistent) {
    for (int step = 0; step < 60; ++step) {
        ASSERT_NO_FATAL_FAILURE(Split());
        ASSERT_NO_FATAL_FAILURE(Drag());
        ASSERT_NO_FATAL_FAILURE(Check());
    }
    while (model.size() > 1) {
        ASSERT_NO_FATAL_FAILURE(Close());
        ASSERT_NO_FATAL_FAILURE(Check());
    }
}

INSTANTIATE_TEST_SUITE_P(Seeds, PaneRandomTest, ::testing::Values(1u, 2u, 3u, 4u, 5u));

// Every pixel that no pane covers lies in a gap, within two pixels of some pane's side.
TEST_P(PaneRandomTest, PixelsOutsideThePanesAreGaps) {
    for (int round = 0; round < 20; ++round) {
        StartOver();
        for (int i = 0; i < 5; ++i) ASSERT_NO_FATAL_FAILURE(Random(2) ? Split() : Drag());
        const int width = static_cast<int>(100 + Random(100));
        const int height = static_cast<int>(100 + Random(100));
        std::vector<PixelRect> rects;
        for (const Pane* pane = layout.Head(); pane; pane = pane->next)
            rects.push_back(PaneLayout::Rectangle(*pane, static_cast<uint32_t>(width), static_cast<uint32_t>(height)));
        for (int y = 0; y < height; ++y)
            for (int x = 0; x < width; ++x)
                ASSERT_TRUE(std::any_of(rects.begin(), rects.end(),
                                        [&](const PixelRect& rect) {
                                            return x >= rect.x - 2 && x < rect.x + rect.width + 2 && y >= rect.y - 2 &&
                                                   y < rect.y + rect.height + 2;
                                        }))
                    << x << ", " << y << " of " << width << " x " << height;
    }
}

} // namespace
