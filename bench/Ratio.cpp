#include "Ratio.h"

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <ctime>

namespace {

bool allAsWanted = true;

// Windows counts a process's time in ticks of 10 milliseconds and more, and Wine does part of the work in
// another process: there the time on the wall is measured.
#ifdef _WIN32
constexpr clockid_t Clock = CLOCK_MONOTONIC;
#else
constexpr clockid_t Clock = CLOCK_PROCESS_CPUTIME_ID;
#endif

double Milliseconds(const Bench::Side& side) {
    if (side.before) side.before();
    const double start = Bench::ProcessorMilliseconds();
    side.run();
    return Bench::ProcessorMilliseconds() - start;
}

void Note(double ratio, double wanted) {
    if (ratio > wanted) allAsWanted = false;
    std::puts(ratio > wanted ? "  MISSED" : "");
    std::fflush(stdout);
}

} // namespace

double Bench::ProcessorMilliseconds() {
    timespec time = {};
    clock_gettime(Clock, &time);
    return static_cast<double>(time.tv_sec) * 1e3 + static_cast<double>(time.tv_nsec) / 1e6;
}

// The shortest time is the one least disturbed by the rest of the machine; taking turns spreads a
// slow spell over both sides.
double Bench::Compare(const char* name, const Side& candidate, const Side& reference, double wanted, int rounds) {
    double candidateTime = Milliseconds(candidate);
    double referenceTime = Milliseconds(reference);
    for (int round = 1; round < rounds; ++round) {
        candidateTime = std::min(candidateTime, Milliseconds(candidate));
        referenceTime = std::min(referenceTime, Milliseconds(reference));
    }
    const double ratio = candidateTime / referenceTime;
    std::printf("%s: ratio %.3f (candidate %.3f ms, reference %.3f ms), wanted <= %.3f", name, ratio, candidateTime,
                referenceTime, wanted);
    Note(ratio, wanted);
    return ratio;
}

double Bench::Compare(const char* name, const Action& candidate, const Action& reference, double wanted, int rounds) {
    return Compare(name, Side{candidate}, Side{reference}, wanted, rounds);
}

void Bench::Report(const char* name, double ratio, double wanted) {
    std::printf("%s: %.4f, wanted <= %.4f", name, ratio, wanted);
    Note(ratio, wanted);
}

void Bench::Check(bool right, const char* what) {
    if (right) return;
    std::printf("WRONG: %s\n", what);
    std::exit(1);
}

int Bench::ExitStatus() { return allAsWanted ? 0 : 2; }
