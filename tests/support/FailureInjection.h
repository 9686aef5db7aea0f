#pragma once

#include "base/Heap.h"
#include "base/Platform.h"

#include <cstdint>
#include <gtest/gtest.h>

// Makes the n-th allocation, or the n-th file call, of an operation fail, for n = 1, 2, ... until it
// runs through undisturbed.
//
//     FailEachAllocation([&] {
//         Thing thing;                            // a fresh object each time
//         const bool done = thing.Operation();
//         if (!done) { EXPECT_... that `thing` is as it was }
//         return done;
//     });
//
// A run with an injected failure may still succeed (an operation that can do without); the loop goes on
// until a run met none, and that one has to succeed. Preparations and checks that must not fail
// themselves are inside a FailurePause.
namespace failure {

struct Injection {
    uint64_t failAt = 0; // 0: never
    uint64_t calls = 0;
    uint32_t pauses = 0;
    bool injected = false;

    bool Ask() {
        if (pauses) return false;
        const bool fails = ++calls == failAt;
        injected = injected || fails;
        return fails;
    }
};

inline Injection allocations;
inline Injection fileCalls;

inline bool AskAllocation() { return allocations.Ask(); }
inline bool AskFileCall() { return fileCalls.Ask(); }

// Returns how many runs had a failure injected.
template <class Body> uint64_t FailEach(Injection& injection, Body& body, uint64_t most) {
    for (uint64_t n = 1; n <= most; ++n) {
        injection = Injection{.failAt = n};
        const bool done = body();
        const bool injected = injection.injected;
        injection = Injection{};
        if (!injected) {
            EXPECT_TRUE(done) << "fails although nothing was made to fail";
            return n - 1;
        }
        if (::testing::Test::HasFatalFailure()) return n;
    }
    ADD_FAILURE() << "never ran through within " << most << " injected failures";
    return most;
}

} // namespace failure

// Nothing is made to fail while one of these lives.
class FailurePause {
public:
    FailurePause() {
        ++failure::allocations.pauses;
        ++failure::fileCalls.pauses;
    }
    ~FailurePause() {
        --failure::allocations.pauses;
        --failure::fileCalls.pauses;
    }
    FailurePause(const FailurePause&) = delete;
    FailurePause& operator=(const FailurePause&) = delete;
};

// `body` runs the operation and returns whether it succeeded. The result is the number of allocations
// that were made to fail in turn; a test may require that there were any.
template <class Body> uint64_t FailEachAllocation(Body body, uint64_t most = 100000) {
    Heap::SetFailureHook(failure::AskAllocation);
    const uint64_t failures = failure::FailEach(failure::allocations, body, most);
    Heap::SetFailureHook(nullptr);
    return failures;
}

// The same for every call on a file.
template <class Body> uint64_t FailEachFileCall(Body body, uint64_t most = 100000) {
    Platform::SetFileFailureHook(failure::AskFileCall);
    const uint64_t failures = failure::FailEach(failure::fileCalls, body, most);
    Platform::SetFileFailureHook(nullptr);
    return failures;
}
