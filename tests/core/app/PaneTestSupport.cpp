#include "core/app/PaneTestSupport.h"

#include <algorithm>

namespace {

// All the places where panes begin or end along one direction.
std::vector<uint32_t> Cuts(const std::vector<Fraction>& panes, uint32_t Fraction::*start, uint32_t Fraction::*size) {
    std::vector<uint32_t> cuts = {0, Whole};
    for (const Fraction& pane : panes) {
        cuts.push_back(pane.*start);
        cuts.push_back(pane.*start + pane.*size);
    }
    std::sort(cuts.begin(), cuts.end());
    cuts.erase(std::unique(cuts.begin(), cuts.end()), cuts.end());
    return cuts;
}

bool IsCovered(const std::vector<Fraction>& panes, uint32_t x, uint32_t y) {
    return std::any_of(panes.begin(), panes.end(), [&](const Fraction& pane) {
        return x >= pane.left && x < pane.left + pane.width && y >= pane.top && y < pane.top + pane.height;
    });
}

} // namespace

std::vector<Fraction> Holes(const std::vector<Fraction>& panes) {
    std::vector<Fraction> holes;
    const std::vector<uint32_t> xs = Cuts(panes, &Fraction::left, &Fraction::width);
    const std::vector<uint32_t> ys = Cuts(panes, &Fraction::top, &Fraction::height);
    const auto isRowFree = [&](size_t row, size_t from, size_t to) {
        for (size_t column = from; column < to; ++column)
            if (IsCovered(panes, xs[column], ys[row])) return false;
        return true;
    };
    for (size_t row = 0; row + 1 < ys.size(); ++row) {
        for (size_t column = 0; column + 1 < xs.size(); ++column) {
            size_t right = column;
            while (right + 1 < xs.size() && xs[right] - xs[column] <= Sliver && isRowFree(row, right, right + 1))
                ++right;
            size_t bottom = row;
            while (bottom + 1 < ys.size() && ys[bottom] - ys[row] <= Sliver && isRowFree(bottom, column, right))
                ++bottom;
            const Fraction free = {xs[column], ys[row], xs[right] - xs[column], ys[bottom] - ys[row]};
            if (std::min(free.width, free.height) > Sliver) holes.push_back(free);
        }
    }
    return holes;
}
