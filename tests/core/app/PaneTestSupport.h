#pragma once

#include "app/PaneDrag.h"
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
    PaneDrag drag{*this};

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

inline bool Overlap(const Fraction& a, const Fraction& b) {
    return a.left < b.left + b.width && b.left < a.left + a.width && a.top < b.top + b.height &&
           b.top < a.top + a.height;
}

// Of panes that do not overlap.
inline uint64_t Uncovered(const std::vector<Fraction>& panes) {
    uint64_t area = WholeArea;
    for (const Fraction& pane : panes) area -= pane.Area();
    return area;
}

inline bool AnyOverlap(const std::vector<Fraction>& panes) {
    for (size_t i = 0; i < panes.size(); ++i)
        for (size_t k = i + 1; k < panes.size(); ++k)
            if (Overlap(panes[i], panes[k])) return true;
    return false;
}

// A gap of rounded halves is no hole: a pixel in an area of 4096.
constexpr uint32_t Sliver = 16;

// Places that no pane covers, each more than a sliver wide and high.
std::vector<Fraction> Holes(const std::vector<Fraction>& panes);
