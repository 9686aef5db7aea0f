#pragma once

#include "app/PaneLayout.h"

#include <cstdint>
#include <gtest/gtest.h>
#include <ostream>
#include <vector>

struct Fraction {
    uint32_t left, top, width, height;
    bool operator==(const Fraction&) const = default;
    uint64_t Area() const { return uint64_t{width} * height; }
};

inline std::ostream& operator<<(std::ostream& out, const Fraction& f) {
    return out << "{" << f.left << ", " << f.top << ", " << f.width << ", " << f.height << "}";
}

constexpr uint32_t Whole = 65536;
constexpr uint32_t Half = Whole / 2;
constexpr uint32_t Quarter = Whole / 4;
constexpr uint64_t WholeArea = uint64_t{Whole} * Whole;

inline Fraction FractionOf(const Pane& pane) { return {pane.left, pane.top, pane.width, pane.height}; }

inline std::vector<Fraction> FractionsOf(const PaneLayout& layout) {
    std::vector<Fraction> all;
    for (const Pane* pane = layout.Head(); pane; pane = pane->next) all.push_back(FractionOf(*pane));
    return all;
}

inline Pane* PaneAt(const PaneLayout& layout, size_t index) {
    Pane* pane = layout.Head();
    while (index-- > 0) pane = pane->next;
    return pane;
}

// A layout of its own with one pane.
struct TestLayout : PaneLayout {
    TestLayout() { Adopt(MakeFirst(), nullptr, false); }
    Pane* Split(Pane* pane, bool vertical) {
        Pane* made = MakeHalf(*pane, vertical, {});
        if (made) Adopt(made, pane, vertical);
        return made;
    }
    // Replaces the panes by ones of these places, made in this order.
    void Set(const std::vector<Fraction>& places) {
        Clear();
        for (const Fraction& place : places) {
            Pane* pane = MakeFirst();
            pane->left = place.left;
            pane->top = place.top;
            pane->width = place.width;
            pane->height = place.height;
            Adopt(pane, nullptr, false);
        }
    }
    std::vector<Fraction> Places() const { return FractionsOf(*this); }
};

inline void ExpectNoOverlap(const std::vector<Fraction>& panes) {
    for (size_t i = 0; i < panes.size(); ++i) {
        const Fraction& a = panes[i];
        ASSERT_LE(uint64_t{a.left} + a.width, Whole) << a;
        ASSERT_LE(uint64_t{a.top} + a.height, Whole) << a;
        for (size_t k = i + 1; k < panes.size(); ++k) {
            const Fraction& b = panes[k];
            if (a.Area() == 0 || b.Area() == 0) continue;
            const bool apart = a.left + a.width <= b.left || b.left + b.width <= a.left || a.top + a.height <= b.top ||
                               b.top + b.height <= a.top;
            ASSERT_TRUE(apart) << a << " and " << b;
        }
    }
}

// Of panes that do not overlap.
inline uint64_t Uncovered(const std::vector<Fraction>& panes) {
    uint64_t area = WholeArea;
    for (const Fraction& pane : panes) area -= pane.Area();
    return area;
}
