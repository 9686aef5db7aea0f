#include "base/Scan.h"

size_t Scan::FindForward(const Char* text, size_t count, size_t from, size_t end, const Char* pattern, size_t n,
                         bool matchCase) {
    return Reference::FindForward(text, count, from, end, pattern, n, matchCase);
}

size_t Scan::FindBackward(const Char* text, size_t count, size_t from, const Char* pattern, size_t n, bool matchCase) {
    return Reference::FindBackward(text, count, from, pattern, n, matchCase);
}
