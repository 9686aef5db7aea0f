#include "base/Heap.h"

#include "support/FailureInjection.h"
#include "support/Random.h"

#include <algorithm>
#include <cstring>
#include <gtest/gtest.h>

namespace {

constexpr size_t Mebi = size_t{1} << 20;

bool IsZero(const uint8_t* bytes, size_t from, size_t to) {
    for (size_t i = from; i < to; ++i)
        if (bytes[i] != 0) return false;
    return true;
}

bool FailAlways() { return true; }

struct Small : HeapObject {
    int value = 7;
};

// Never zero, and different in neighbouring places.
uint8_t PatternAt(size_t i) { return static_cast<uint8_t>(1 + i % 251); }

void FillPattern(uint8_t* bytes, size_t from, size_t to) {
    for (size_t i = from; i < to; ++i) bytes[i] = PatternAt(i);
}

bool HasPattern(const uint8_t* bytes, size_t from, size_t to) {
    for (size_t i = from; i < to; ++i)
        if (bytes[i] != PatternAt(i)) return false;
    return true;
}

} // namespace

TEST(Heap, NewBlocksAreZeroFilled) {
    for (const size_t size : {size_t{1}, size_t{24}, size_t{4096}, Mebi - 1, Mebi, 3 * Mebi + 5}) {
        // The second block may have what the first one left.
        for (int turn = 0; turn < 2; ++turn) {
            auto* block = static_cast<uint8_t*>(Heap::Allocate(size));
            ASSERT_NE(block, nullptr);
            EXPECT_TRUE(IsZero(block, 0, size)) << size;
            std::memset(block, 0xAA, size);
            Heap::Free(block);
        }
    }
}

TEST(Heap, FreeAcceptsNull) {
    Heap::Free(nullptr);
    Small* object = nullptr;
    delete object;
    SUCCEED();
}

TEST(Heap, ARequestForNothingYieldsABlock) {
    void* block = Heap::Allocate(0);
    EXPECT_NE(block, nullptr);
    Heap::Free(block);
}

TEST(Heap, ARequestThatCannotBeMetYieldsNull) {
    EXPECT_EQ(Heap::Allocate(SIZE_MAX), nullptr);
    EXPECT_EQ(Heap::Allocate(SIZE_MAX / 2 + 1), nullptr);
    EXPECT_EQ(Heap::AllocateArray<uint64_t>(SIZE_MAX / 8 + 1), nullptr);
    EXPECT_EQ(Heap::AllocateArray<uint64_t>(SIZE_MAX / 4), nullptr);
}

TEST(Heap, ResizeOfNullAllocates) {
    auto* block = static_cast<uint8_t*>(Heap::Resize(nullptr, 0, 100));
    ASSERT_NE(block, nullptr);
    EXPECT_TRUE(IsZero(block, 0, 100));
    Heap::Free(block);
}

TEST(Heap, ResizeKeepsTheContentAndZeroesWhatIsNew) {
    const size_t sizes[] = {10, 100, 5000, 70'000, Mebi - 64, Mebi + 1, 2 * Mebi, 9 * Mebi, 40 * Mebi, 41 * Mebi};
    auto* block = static_cast<uint8_t*>(Heap::Allocate(1));
    size_t size = 1;
    FillPattern(block, 0, 1);
    for (const size_t larger : sizes) {
        block = static_cast<uint8_t*>(Heap::Resize(block, size, larger));
        ASSERT_NE(block, nullptr);
        EXPECT_TRUE(HasPattern(block, 0, size)) << larger;
        EXPECT_TRUE(IsZero(block, size, larger)) << larger;
        FillPattern(block, size, larger);
        size = larger;
    }
    Heap::Free(block);
}

TEST(Heap, ABlockThatShrankAndGrowsAgainIsZeroAtItsEnd) {
    for (const size_t size : {size_t{1000}, 2 * Mebi + 777, 16 * Mebi}) {
        for (const size_t smaller : {size / 2, size - 1, size_t{3}}) {
            auto* block = static_cast<uint8_t*>(Heap::Allocate(size));
            ASSERT_NE(block, nullptr);
            FillPattern(block, 0, size);
            block = static_cast<uint8_t*>(Heap::Resize(block, size, smaller));
            ASSERT_NE(block, nullptr);
            EXPECT_TRUE(HasPattern(block, 0, smaller));
            block = static_cast<uint8_t*>(Heap::Resize(block, smaller, size));
            ASSERT_NE(block, nullptr);
            EXPECT_TRUE(HasPattern(block, 0, smaller));
            EXPECT_TRUE(IsZero(block, smaller, size)) << size << " " << smaller;
            Heap::Free(block);
        }
    }
}

TEST(Heap, AResizeThatCannotBeMetLeavesTheBlock) {
    for (const size_t size : {size_t{64}, 2 * Mebi}) {
        auto* block = static_cast<uint8_t*>(Heap::Allocate(size));
        ASSERT_NE(block, nullptr);
        FillPattern(block, 0, size);
        EXPECT_EQ(Heap::Resize(block, size, SIZE_MAX), nullptr);
        EXPECT_EQ(Heap::Resize(block, size, SIZE_MAX / 2 + 1), nullptr);
        EXPECT_TRUE(HasPattern(block, 0, size));
        Heap::Free(block);
    }
}

TEST(Heap, RandomBlocksNeverTouchEachOther) {
    struct Held {
        uint8_t* bytes = nullptr;
        size_t size = 0;
        uint8_t mark = 0;
    };
    Random random(7);
    Held blocks[40];
    for (int step = 0; step < 5000; ++step) {
        Held& held = blocks[random.Below(40)];
        if (held.bytes) {
            ASSERT_EQ(std::count(held.bytes, held.bytes + held.size, held.mark), static_cast<int64_t>(held.size));
        }
        if (random.OneIn(3)) {
            Heap::Free(held.bytes);
            held = {};
            continue;
        }
        const size_t size = 1 + random.Below(random.OneIn(8) ? 3 * Mebi : 3000);
        auto* const resized = static_cast<uint8_t*>(Heap::Resize(held.bytes, held.size, size));
        ASSERT_NE(resized, nullptr);
        const size_t kept = std::min(held.size, size);
        ASSERT_EQ(std::count(resized, resized + kept, held.mark), static_cast<int64_t>(kept));
        ASSERT_TRUE(IsZero(resized, kept, size));
        held = {resized, size, static_cast<uint8_t>(1 + random.Below(255))};
        std::memset(resized, held.mark, size);
    }
    for (const Held& held : blocks) Heap::Free(held.bytes);
}

TEST(Heap, TheHookMakesEveryKindOfRequestFail) {
    void* block = Heap::Allocate(8);
    Heap::SetFailureHook(FailAlways);
    void* const allocated = Heap::Allocate(8);
    void* const resized = Heap::Resize(block, 8, 16);
    Small* const object = new Small;
    Heap::SetFailureHook(nullptr);
    EXPECT_EQ(allocated, nullptr);
    EXPECT_EQ(resized, nullptr);
    EXPECT_EQ(object, nullptr);
    Heap::Free(block);
}

TEST(Heap, StopAndStartLeaveItUsable) {
    Heap::Start();
    Small* object = new Small;
    ASSERT_NE(object, nullptr);
    EXPECT_EQ(object->value, 7);
    delete object;
    Heap::Stop();
    Heap::Start();
    void* block = Heap::Allocate(16);
    EXPECT_NE(block, nullptr);
    Heap::Free(block);
}

TEST(FailureInjection, MakesEachAllocationFailInTurn) {
    int runs = 0;
    const uint64_t failures = FailEachAllocation([&] {
        ++runs;
        void* blocks[3] = {};
        bool done = true;
        for (void*& block : blocks) done = (block = Heap::Allocate(8)) != nullptr && done;
        for (void* block : blocks) Heap::Free(block);
        return done;
    });
    EXPECT_EQ(failures, 3u);
    EXPECT_EQ(runs, 4);
}

TEST(FailureInjection, APauseLetsEverythingThrough) {
    const uint64_t failures = FailEachAllocation([&] {
        void* paused = nullptr;
        {
            const FailurePause pause;
            paused = Heap::Allocate(8);
        }
        EXPECT_NE(paused, nullptr);
        Heap::Free(paused);
        void* block = Heap::Allocate(8);
        Heap::Free(block);
        return block != nullptr;
    });
    EXPECT_EQ(failures, 1u);
}
