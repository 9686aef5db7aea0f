#include "core/app/PaneTestSupport.h"

#include <algorithm>
#include <map>
#include <random>
#include <string>

// Random splits, closes and drags in windows of every size, compared with a plain model of the rules. After
// each of them the panes cover the whole area without overlap, or a rule about closing forbids it by name.

namespace {

using Places = std::vector<Fraction>;

// What the rule about closing panes does to a covered area.
constexpr char Covers[] = "";
constexpr char NobodyFits[] = "every neighbour is wider or taller than the closed pane";
constexpr char SomeDoNotFit[] = "some neighbours of the side that takes over are too wide or too tall";
constexpr char SomeStickOut[] = "a neighbour that takes over reaches under panes beside the closed one";
constexpr char SomeAreBuried[] = "a neighbour that takes over covers all of a pane beside the closed one";

struct Neighbour {
    int kind; // 0 below, 1 above, 2 to the right, 3 to the left
    bool exact;
};

uint32_t Shared(uint32_t a, uint32_t sizeA, uint32_t b, uint32_t sizeB) {
    const uint32_t start = std::max(a, b);
    const uint32_t end = std::min(a + sizeA, b + sizeB);
    return end > start ? end - start : 0;
}

bool IsNeighbour(const Fraction& pane, const Fraction& closed, const Neighbour& wanted) {
    const bool touches[] = {pane.top == closed.top + closed.height, pane.top + pane.height == closed.top,
                            pane.left == closed.left + closed.width, pane.left + pane.width == closed.left};
    const bool sameColumns = pane.left == closed.left && pane.width == closed.width;
    const bool sameRows = pane.top == closed.top && pane.height == closed.height;
    const bool notWider =
        pane.width <= closed.width && Shared(pane.left, pane.width, closed.left, closed.width) > Sliver;
    const bool notTaller =
        pane.height <= closed.height && Shared(pane.top, pane.height, closed.top, closed.height) > Sliver;
    if (!touches[wanted.kind]) return false;
    if (wanted.kind < 2) return wanted.exact ? sameColumns : notWider;
    return wanted.exact ? sameRows : notTaller;
}

void Grow(Fraction& pane, const Fraction& closed, int kind) {
    if (kind == 0) pane.top = closed.top;
    if (kind == 2) pane.left = closed.left;
    (kind < 2 ? pane.height : pane.width) += kind < 2 ? closed.height : closed.width;
}

// The indexes of the panes that take over, and the kind that they are.
struct Heirs {
    std::vector<size_t> panes;
    int kind = 0;
};

Heirs HeirsOf(const Places& places, const Fraction& closed) {
    Heirs heirs;
    for (const bool exact : {true, false}) {
        for (heirs.kind = 0; heirs.kind < 4; ++heirs.kind) {
            for (size_t i = 0; i < places.size(); ++i)
                if (IsNeighbour(places[i], closed, {heirs.kind, exact})) heirs.panes.push_back(i);
            if (!heirs.panes.empty()) return heirs;
        }
    }
    return heirs;
}

// Whether a pane would be left with nothing usable on any side of another.
bool Buries(const Fraction& grown, const Fraction& pane) {
    const auto usable = [](uint32_t from, uint32_t to) { return to > from && to - from >= Whole / 32; };
    return !usable(pane.left, grown.left) && !usable(grown.left + grown.width, pane.left + pane.width) &&
           !usable(pane.top, grown.top) && !usable(grown.top + grown.height, pane.top + pane.height);
}

const char* RuleOf(const Places& places, const Fraction& closed, const Heirs& heirs) {
    if (heirs.panes.empty()) return NobodyFits;
    uint64_t reached = 0;
    const char* rule = Covers;
    for (const size_t heir : heirs.panes) {
        Fraction grown = places[heir];
        Grow(grown, closed, heirs.kind);
        for (size_t i = 0; i < places.size(); ++i) {
            if (i == heir || !Overlap(places[i], grown)) continue;
            if (Buries(grown, places[i])) return SomeAreBuried;
            rule = SomeStickOut;
        }
        reached += Shared(grown.left, grown.width, closed.left, closed.width) *
                   uint64_t{Shared(grown.top, grown.height, closed.top, closed.height)};
    }
    return rule == Covers && reached < closed.Area() ? SomeDoNotFit : rule;
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
        const PixelRect rect = PaneLayout::Rectangle(*pane, {width, height});
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

// A window in which none of the panes is too small to be dragged: 32 pixels are the least.
uint32_t WindowFor(const Places& places) {
    const bool areLarge = std::all_of(places.begin(), places.end(), [](const Fraction& place) {
        return std::min(place.width, place.height) >= Whole / 16;
    });
    return areLarge ? 1024 : 8192;
}

class PaneRandomTest : public ::testing::TestWithParam<unsigned> {
protected:
    uint32_t Random(uint32_t below) { return std::uniform_int_distribution<uint32_t>(0, below - 1)(random); }
    size_t AnyPane() { return Random(static_cast<uint32_t>(layout.Places().size())); }
    uint32_t AnySize() { return Random(8) == 0 ? Random(70) : 200 + Random(4000); }

    void Split() {
        const size_t index = AnyPane();
        const bool vertical = Random(2) == 0;
        model = layout.Places();
        ModelSplit(model, index, vertical);
        layout.Split(PaneAt(layout, index), vertical);
        ASSERT_EQ(layout.Places(), model);
        ASSERT_NO_FATAL_FAILURE(Check());
    }
    void Close() {
        const size_t index = AnyPane();
        const bool only = layout.Places().size() == 1;
        layout.CloseSlivers();
        model = layout.Places();
        const Fraction closed = model[index];
        if (!only) model.erase(model.begin() + static_cast<std::ptrdiff_t>(index));
        const Heirs heirs = HeirsOf(model, closed);
        const char* const reason = model.size() == 1 ? Covers : RuleOf(model, closed, heirs);
        if (rule == Covers || reason == SomeAreBuried) rule = reason;
        Pane* heir = nullptr;
        ASSERT_EQ(layout.Close(PaneAt(layout, index), heir), !only);
        if (only) return;
        ++closes[reason];
        if (reason != Covers) uncovered = Uncovered(layout.Places());
        ASSERT_NO_FATAL_FAILURE(CheckHeirs(closed, heirs, heir, reason));
        ASSERT_NO_FATAL_FAILURE(Check());
    }
    void CheckHeirs(const Fraction& closed, const Heirs& heirs, const Pane* first, const char* reason) {
        if (model.size() == 1) {
            ASSERT_EQ(layout.Places(), (Places{{0, 0, Whole, Whole}}));
            return;
        }
        ASSERT_EQ(first, heirs.panes.empty() ? nullptr : PaneAt(layout, heirs.panes[0]));
        for (const size_t i : heirs.panes) {
            Grow(model[i], closed, heirs.kind);
            ASSERT_EQ(FractionOf(*PaneAt(layout, i)), model[i]);
        }
        // Nobody else has moved.
        if (reason != SomeStickOut && reason != SomeAreBuried) {
            ASSERT_EQ(layout.Places(), model);
        }
    }
    // From a point on some pane's side to a few places.
    void Drag() {
        const uint32_t width = AnySize();
        const uint32_t height = AnySize();
        const Fraction pane = layout.Places()[AnyPane()];
        const uint32_t corner = Random(4);
        const uint32_t along = corner < 2 ? Random(pane.height + 1) : Random(pane.width + 1);
        const uint32_t x = corner < 2 ? pane.left + (corner == 0 ? 0 : pane.width) : pane.left + along;
        const uint32_t y = corner < 2 ? pane.top + along : pane.top + (corner == 2 ? 0 : pane.height);
        const PaneArea area = {width, height};
        layout.drag.Begin(
            {static_cast<int32_t>(uint64_t{x} * width >> 16), static_cast<int32_t>(uint64_t{y} * height >> 16)}, area);
        for (int i = 0; i < 3; ++i) {
            layout.drag.MoveTo(
                {static_cast<int32_t>(Random(width + 200)) - 100, static_cast<int32_t>(Random(height + 200)) - 100},
                area);
            ASSERT_NO_FATAL_FAILURE(Check());
        }
        layout.drag.End();
    }
    void Check() {
        if (layout.Places().size() == 1) rule = Covers;
        if (rule == SomeAreBuried) return;
        ASSERT_FALSE(AnyOverlap(layout.Places())) << rule;
        if (rule == Covers) {
            ASSERT_EQ(Holes(layout.Places()), Places{});
        }
        for (int i = 0; i < 3; ++i) ASSERT_NO_FATAL_FAILURE(ExpectPixelsApart(layout, AnySize(), AnySize()));
        for (const uint32_t size : {0u, 1u, 2u, 3u, 64u})
            ASSERT_NO_FATAL_FAILURE(ExpectPixelsApart(layout, size, size));
    }
    // Those that a rule has left do not grow, and they can be dragged shut.
    void CheckHoles() {
        const Places places = layout.Places();
        if (Holes(places).empty()) {
            rule = Covers;
            uncovered = Uncovered(places);
            return;
        }
        ++holesSeen;
        ASSERT_LE(Uncovered(places), uncovered + 2 * Sliver * uint64_t{Whole}) << rule;
        ASSERT_TRUE(DragShut(WindowFor(places))) << ::testing::PrintToString(places);
        ASSERT_FALSE(AnyOverlap(layout.Places())) << ::testing::PrintToString(places);
        if (Random(4) == 0) return;
        layout.Set(places);
        uncovered = Uncovered(places);
    }
    void StartOver() {
        layout.Set({{0, 0, Whole, Whole}});
        rule = Covers;
        uncovered = 0;
    }

    // Cuts most panes in two, one way or the other, which leaves some without a neighbour of their length.
    Places CutSome(const Places& places, bool vertical) {
        Places cut;
        for (const Fraction& place : places) {
            Fraction first = place;
            uint32_t& size = vertical ? first.width : first.height;
            const uint32_t whole = size;
            if (Random(3) != 0) size = Random(whole / 2) + whole / 4;
            cut.push_back(first);
            if (size == whole) continue;
            Fraction second = place;
            (vertical ? second.left : second.top) += size;
            (vertical ? second.width : second.height) -= size;
            cut.push_back(second);
        }
        return cut;
    }
    // Closes a pane of many that lie in any way.
    void CloseOneOfMany() {
        const bool vertical = Random(2) == 0;
        Places places = {{0, 0, Whole, Whole}};
        for (int i = 0; i < 4; ++i) places = CutSome(places, vertical == (i % 2 == 0));
        std::shuffle(places.begin(), places.end(), random);
        layout.Set(places);
        rule = Covers;
        ASSERT_NO_FATAL_FAILURE(Check());
        ASSERT_NO_FATAL_FAILURE(Close());
    }
    // Drags the sides of an empty place over it, as a user would; whether any of it is covered then.
    bool DragOver(const Fraction& hole, uint32_t size) {
        const uint64_t before = Uncovered(layout.Places());
        const auto pixel = [&](uint32_t units) { return static_cast<int32_t>(uint64_t{units} * size >> 16); };
        const int32_t left = pixel(hole.left), right = pixel(hole.left + hole.width);
        const int32_t top = pixel(hole.top), bottom = pixel(hole.top + hole.height);
        const int32_t x = pixel(hole.left + hole.width / 2), y = pixel(hole.top + hole.height / 2);
        const int32_t drags[][4] = {{left, y, right, y}, {right, y, left, y}, {x, top, x, bottom}, {x, bottom, x, top}};
        for (const auto& drag : drags) {
            layout.drag.Begin({drag[0], drag[1]}, {size, size});
            layout.drag.MoveTo({drag[2], drag[3]}, {size, size});
            layout.drag.End();
            if (Uncovered(layout.Places()) < before) return true;
        }
        return false;
    }
    // Whether all empty places can be dragged shut in an area of `size` by `size`.
    bool DragShut(uint32_t size) {
        bool done = true;
        while (done) {
            const Places holes = Holes(layout.Places());
            if (holes.empty()) return true;
            done = std::any_of(holes.begin(), holes.end(), [&](const Fraction& hole) { return DragOver(hole, size); });
        }
        return false;
    }

    std::mt19937 random{GetParam()};
    TestLayout layout;
    Places model;
    const char* rule = Covers; // why the area may not be covered now
    int holesSeen = 0;
    uint64_t uncovered = 0; // before the step, or what a rule has just left
    std::map<std::string, int> closes;
};

TEST_P(PaneRandomTest, SplitsAndDragsCoverTheWholeArea) {
    for (int step = 0; step < 4000; ++step) {
        if (layout.Places().size() > 14) StartOver();
        ASSERT_NO_FATAL_FAILURE(Random(4) == 0 ? Split() : Drag()) << "step " << step;
    }
}

TEST_P(PaneRandomTest, SplitsClosesAndDragsCoverTheWholeArea) {
    for (int step = 0; step < 4000; ++step) {
        const uint32_t choice = Random(10);
        if (choice < 3 && layout.Places().size() < 14)
            ASSERT_NO_FATAL_FAILURE(Split()) << "step " << step;
        else if (choice < 5)
            ASSERT_NO_FATAL_FAILURE(Close()) << "step " << step;
        else
            ASSERT_NO_FATAL_FAILURE(Drag()) << "step " << step;
        if (rule == SomeAreBuried)
            StartOver();
        else
            ASSERT_NO_FATAL_FAILURE(CheckHoles()) << "step " << step;
    }
    EXPECT_GT(closes[Covers], 500);
    EXPECT_GT(holesSeen, 5);
}

// Panes that lie in any way: each rule that forbids covering the area comes up by name.
TEST_P(PaneRandomTest, ClosesCoverTheWholeAreaUnlessTheRuleForbidsIt) {
    for (int round = 0; round < 2000; ++round) ASSERT_NO_FATAL_FAILURE(CloseOneOfMany()) << "round " << round;
    for (const char* name : {Covers, SomeDoNotFit, SomeStickOut, SomeAreBuried}) EXPECT_GT(closes[name], 0) << name;
}

// Halving far beyond what a window can show.
TEST_P(PaneRandomTest, EndlessSplitsStayConsistent) {
    for (int step = 0; step < 60; ++step) {
        ASSERT_NO_FATAL_FAILURE(Split());
        ASSERT_NO_FATAL_FAILURE(Drag());
    }
    while (layout.Places().size() > 1) ASSERT_NO_FATAL_FAILURE(Close());
}

// Whatever was split, dragged and closed before.
TEST_P(PaneRandomTest, ThePaneThatIsLeftAloneFillsTheArea) {
    for (int round = 0; round < 50; ++round) {
        for (int i = 0; i < 12; ++i) ASSERT_NO_FATAL_FAILURE(Random(2) ? Split() : Drag());
        while (layout.Places().size() > 1) ASSERT_NO_FATAL_FAILURE(Close());
        ASSERT_EQ(layout.Places(), (Places{{0, 0, Whole, Whole}}));
    }
}

TEST_P(PaneRandomTest, HolesCanBeDraggedShut) {
    int holes = 0;
    for (int round = 0; round < 2000; ++round) {
        ASSERT_NO_FATAL_FAILURE(CloseOneOfMany()) << "round " << round;
        const Places before = layout.Places();
        if (rule == SomeAreBuried || Holes(before).empty()) continue;
        ++holes;
        ASSERT_TRUE(DragShut(1024)) << ::testing::PrintToString(before);
        ASSERT_FALSE(AnyOverlap(layout.Places())) << ::testing::PrintToString(before);
    }
    EXPECT_GT(holes, 10);
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
            rects.push_back(
                PaneLayout::Rectangle(*pane, {static_cast<uint32_t>(width), static_cast<uint32_t>(height)}));
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
