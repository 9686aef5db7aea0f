#pragma once

// ORVANE_ASSERT(condition) ends the program with a message when an invariant does not hold. It is active
// in debug builds and under the sanitizers and fuzzers (CMake defines ORVANE_ASSERTIONS there). Elsewhere
// the condition is compiled, so that it stays correct, but never evaluated: it must have no side effects.
//
// It is for what only a mistake of our own can break. What can fail (memory, files, the system, a
// user's input) is answered with a result instead.
#ifdef ORVANE_ASSERTIONS
#define ORVANE_ASSERT(condition)                                                                                       \
    (static_cast<bool>(condition) ? static_cast<void>(0) : AssertionFailed(#condition, __FILE__, __LINE__))
#else
#define ORVANE_ASSERT(condition) static_cast<void>(sizeof(static_cast<bool>(condition)))
#endif

// Writes the condition and its place to the standard error stream and aborts.
[[noreturn]] void AssertionFailed(const char* condition, const char* file, int line);
