#pragma once

// ORVANE_ASSERT(condition) ends the program when an invariant does not hold that only a mistake of our own can break;
// what can fail is answered with a result instead. It is active in debug builds and under the sanitizers and fuzzers
// (CMake defines ORVANE_ASSERTIONS there). Elsewhere the condition is compiled, so that it stays correct, but never
// evaluated: no side effects. Where coverage is measured it is left out, for its && and || would count as missed.
#ifdef ORVANE_ASSERTIONS
#define ORVANE_ASSERT(condition)                                                                                       \
    (static_cast<bool>(condition) ? static_cast<void>(0) : AssertionFailed(#condition, __FILE__, __LINE__))
#elif defined(ORVANE_COVERAGE)
#define ORVANE_ASSERT(condition) static_cast<void>(0)
#else
#define ORVANE_ASSERT(condition) static_cast<void>(sizeof(static_cast<bool>(condition)))
#endif

// Writes the condition and its place to the standard error stream and aborts.
[[noreturn]] void AssertionFailed(const char* condition, const char* file, int line);
