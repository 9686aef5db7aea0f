#include "base/win32/Windows.h"

#include <ntsecapi.h>

// What the compiler's stack protector reads and calls. Its own library takes the number from the system's cryptographic
// providers, and so loads three libraries at every start.

// NOLINTBEGIN(bugprone-reserved-identifier): the compiler's names
extern "C" {

uintptr_t __stack_chk_guard = 0; // process-wide: known by its name

// An exception, which the crash report hears of.
[[noreturn]] void __stack_chk_fail() { __builtin_trap(); }

} // extern "C"
// NOLINTEND(bugprone-reserved-identifier)

namespace {

// Runs before any other code: a function entered with one guard value and left with another would trap.
__attribute__((constructor, no_stack_protector)) void MakeGuard() {
    uintptr_t number = 0;
    // Where the system has no random number, at least one that is another at each start.
    if (!RtlGenRandom(&number, sizeof(number))) number = reinterpret_cast<uintptr_t>(&number) ^ GetTickCount64();
    // A byte of zero, at which the copying of a string ends.
    __stack_chk_guard = number & ~uintptr_t{0xFF};
}

} // namespace
