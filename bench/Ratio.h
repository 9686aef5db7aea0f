#pragma once

#include <functional>

// Measures by comparison: a bench times a candidate against a reference in the same run, because
// machines differ and times alone say little. A time is what the process spends on a processor, in the
// program and in the system for it, so that what else runs on the machine counts little; on Windows, whose
// processor times are coarse, it is what passes on the clock.
namespace Bench {

using Action = std::function<void()>;

// What is timed, and what is done untimed before each time (may be empty).
struct Side {
    Action run;
    Action before = {};
};

double ProcessorMilliseconds();

// Runs both sides in turn `rounds` times, takes the shortest time of each and prints
// "name: ratio R (candidate X ms, reference Y ms), wanted <= W". Returns R.
double Compare(const char* name, const Side& candidate, const Side& reference, double wanted, int rounds = 7);
double Compare(const char* name, const Action& candidate, const Action& reference, double wanted, int rounds = 7);

// For a ratio that was found otherwise: prints "name: R, wanted <= W".
void Report(const char* name, double ratio, double wanted);

// Ends the program with status 1 when a result is wrong: nothing wrong is worth timing.
void Check(bool right, const char* what);

// What `main` returns: 0 when every ratio was as wanted, else 2.
int ExitStatus();

// Keeps the compiler from dropping work whose result nobody reads.
template <class T> void Keep(const T& value) { asm volatile("" : : "g"(&value) : "memory"); }

} // namespace Bench
