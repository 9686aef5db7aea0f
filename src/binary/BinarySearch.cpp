// Searching the file of a BinaryDocument.

#include "base/CodePage.h"
#include "base/Scan.h"
#include "base/ScanBytes.h"
#include "binary/BinaryDocument.h"
#include "binary/HexPattern.h"

#include <algorithm>
#include <cstring>

namespace {

// The bytes that a pattern stands for, none for text that the page cannot express: the question marks in its
// place would be found. False without memory.
bool ToBytes(const WString& pattern, bool hexPattern, Array<uint8_t>& out) {
    if (hexPattern) return HexPattern::Parse(pattern.Text(), pattern.Length(), out) != HexPattern::Result::OutOfMemory;
    if (!CanExpress(CodePage::Ansi, pattern.Text(), pattern.Length())) return true;
    const size_t room = MaxBytes(CodePage::Ansi, pattern.Length());
    if (!out.SetCount(room)) return false;
    out.Truncate(FromUtf16(CodePage::Ansi, pattern.Text(), pattern.Length(), out.Items(), room));
    return true;
}

} // namespace

bool BinaryDocument::FindBytes(const WString& pattern, uint64_t from, uint64_t end, bool matchCase, bool backward,
                               bool hexPattern, uint64_t& found, bool& wrapped, uint32_t& matchLength,
                               SearchProgress* progress) {
    wrapped = searchFailed = false;
    Array<uint8_t> bytes;
    if (!ToBytes(pattern, hexPattern, bytes) || bytes.IsEmpty() || bytes.Count() > WindowSize) return false;
    // The window may have served as scratch space, and the file may have been written since, by others too.
    windowValid = 0;
    from = std::min(from, fileSize);
    end = std::min(end, fileSize);
    matchLength = static_cast<uint32_t>(bytes.Count());
    matchCase = matchCase || hexPattern;
    const uint32_t headCount = std::min(matchLength, LongestHead);
    const Scan::ByteFinder head(bytes.Items(), headCount, matchCase);
    Sought sought = {bytes.Items(), matchLength, matchCase, headCount, head, progress};
    bool done = backward ? FindBackward(sought, from, 0, found) : FindForward(sought, from, end, found);
    if (!done && !sought.brokenOff && !sought.unreadable) {
        wrapped = true;
        // What the first pass has seen is not looked at again.
        done =
            backward ? FindBackward(sought, fileSize, from, found) : FindForward(sought, 0, std::min(from, end), found);
    }
    searchFailed = sought.unreadable;
    return done;
}

// Whether the whole pattern stands where its head was found.
bool BinaryDocument::StandsAt(Sought& sought, uint64_t offset) {
    if (sought.count == sought.headCount) return true;
    sought.unreadable = !EnsureWindow(offset, sought.count);
    if (sought.unreadable) return false;
    const uint64_t start = offset - windowStart;
    return start + sought.count <= windowValid &&
           Scan::EqualBytes(window + start, sought.bytes, sought.count, sought.matchCase);
}

// Counts bytes that were gone through; false once the search is broken off.
bool BinaryDocument::MayGoOn(Sought& sought, uint64_t bytes) const {
    constexpr uint64_t Slice = 1u << 22; // asking more often would cost more than searching
    const uint64_t before = sought.gone;
    sought.gone += bytes;
    if (sought.progress && sought.gone / Slice != before / Slice)
        sought.brokenOff = !sought.progress->Continue(sought.gone, fileSize);
    return !sought.brokenOff;
}

// Moves the window on to what follows it, with the last `kept` bytes of the old one in front of the new one.
bool BinaryDocument::NextWindow(Sought& sought, uint32_t kept) {
    std::memmove(window - kept, window + windowValid - kept, kept);
    sought.unreadable = !EnsureWindow(windowStart + windowValid, 1);
    return !sought.unreadable && windowValid > 0;
}

// The first match at a position in [from, end). The system reads whole pages faster: the windows start with
// one and follow each other without overlapping. A head that reaches into the next window is found there, as
// what there is of it in this one stays in front.
bool BinaryDocument::FindForward(Sought& sought, uint64_t from, uint64_t end, uint64_t& found) {
    end = std::min(end, fileSize < sought.count ? 0 : fileSize - sought.count + 1);
    if (from < end && !EnsureWindow(from - from % SystemPage, SystemPage))
        sought.unreadable = !EnsureWindow(from, sought.headCount); // less than a whole page of the system may do
    if (sought.unreadable) return false;
    while (from < end) {
        const uint64_t windowEnd = windowStart + windowValid;
        if (from + sought.headCount > windowEnd) {
            // A file that has become shorter ends here.
            if (!NextWindow(sought, from < windowEnd ? static_cast<uint32_t>(windowEnd - from) : 0)) return false;
            continue;
        }
        const uint8_t* const bytes = window + static_cast<int64_t>(from - windowStart);
        const uint64_t positions = std::min(end - from, windowEnd - from - sought.headCount + 1);
        const size_t at = sought.head.First(bytes, static_cast<size_t>(positions) + sought.headCount - 1);
        from += at == Scan::NotFound ? positions : at;
        if (!MayGoOn(sought, at == Scan::NotFound ? positions : at)) return false;
        if (at == Scan::NotFound) continue;
        found = from++;
        if (StandsAt(sought, found)) return true;
        if (sought.unreadable) return false;
    }
    return false;
}

// Makes the window end with a head that ends there, or less than a cache line behind it, when it moves back.
bool BinaryDocument::PreviousWindow(Sought& sought, uint64_t headEnd) {
    for (; sought.reach >= sought.headCount + CacheLine; sought.reach /= 2) {
        const uint64_t page = headEnd > sought.reach ? headEnd - sought.reach : 0;
        const uint64_t wanted = (page + CacheLine - 1) / CacheLine * CacheLine;
        if (EnsureWindow(wanted, static_cast<uint32_t>(headEnd - wanted))) return true;
        // Less of it may lie behind the bytes that cannot be read.
    }
    sought.unreadable = true;
    return false;
}

// The last match at a position in [lowest, from).
bool BinaryDocument::FindBackward(Sought& sought, uint64_t from, uint64_t lowest, uint64_t& found) {
    from = std::min(from, fileSize < sought.count ? 0 : fileSize - sought.count + 1);
    while (from > lowest) {
        const uint64_t headEnd = from - 1 + sought.headCount;
        if (!PreviousWindow(sought, headEnd)) return false;
        const uint64_t first = std::max(lowest, windowStart);
        // A file that has become shorter may end before.
        const uint64_t windowEnd = std::min(headEnd, windowStart + windowValid);
        const uint64_t searched = windowEnd > first ? windowEnd - first : 0;
        const size_t at = sought.head.Last(window + (first - windowStart), static_cast<size_t>(searched));
        const uint64_t before = from;
        from = at == Scan::NotFound ? first : first + at;
        if (!MayGoOn(sought, before - from)) return false;
        if (at == Scan::NotFound) continue;
        found = from;
        if (StandsAt(sought, found)) return true;
        if (sought.unreadable) return false;
    }
    return false;
}
