#pragma once

#include <cstddef>
#include <cstdint>
#include <iterator>
#include <random>

// Random numbers that are the same on every platform and in every run.
class Random {
public:
    explicit Random(uint32_t seed) : engine(seed) {}
    // 0 .. limit - 1; 0 for a limit of 0.
    uint32_t Below(size_t limit) {
        return limit ? static_cast<uint32_t>((static_cast<uint64_t>(engine()) * limit) >> 32) : 0;
    }
    bool OneIn(uint32_t n) { return Below(n) == 0; }
    template <class Container> auto& Pick(Container& items) { return items[Below(std::size(items))]; }

private:
    std::mt19937 engine;
};
