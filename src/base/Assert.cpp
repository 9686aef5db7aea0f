#include "base/Assert.h"

#include <cstdio>
#include <cstdlib>

void AssertionFailed(const char* condition, const char* file, int line) {
    std::fprintf(stderr, "%s:%d: assertion failed: %s\n", file, line, condition);
    std::abort();
}
