// Searching the file of a BinaryDocument.

#include "base/CodePage.h"
#include "base/Scan.h"
#include "base/ScanBytes.h"
#include "binary/BinaryDocument.h"
#include "binary/HexPattern.h"

#include <algorithm>

namespace {

// The bytes that a pattern stands for; false without memory.
bool ToBytes(const WString& pattern, bool hexPattern, Array<uint8_t>& out) {
    if (hexPattern) return HexPattern::Parse(pattern.Text(), pattern.Length(), out) != HexPattern::Result::OutOfMemory;
    const size_t room = MaxBytes(CodePage::Ansi, pattern.Length());
    if (!out.SetCount(room)) return false;
    out.Truncate(FromUtf16(CodePage::Ansi, pattern.Text(), pattern.Length(), out.Items(), room));
    return true;
}

} // namespace

bool BinaryDocument::FindBytes(const WString& pattern, uint64_t from, uint64_t end, bool matchCase, bool backward,
                               bool hexPattern, uint64_t& found, bool& wrapped, uint32_t& matchLength) {
    wrapped = false;
    Array<uint8_t> bytes;
    if (!ToBytes(pattern, hexPattern, bytes) || bytes.IsEmpty() || bytes.Count() > WindowSize) return false;
    if (windowIsScratch) windowValid = 0;
    from = std::min(from, fileSize);
    end = std::min(end, fileSize);
    matchLength = static_cast<uint32_t>(bytes.Count());
    const Sought sought = {bytes.Items(), matchLength, matchCase || hexPattern};
    if (backward ? FindBackward(sought, from, 0, found) : FindForward(sought, from, end, found)) return true;
    wrapped = true;
    // What the first pass has seen is not looked at again.
    return backward ? FindBackward(sought, fileSize, from, found) : FindForward(sought, 0, std::min(from, end), found);
}

// The first match at a position in [from, end).
bool BinaryDocument::FindForward(const Sought& sought, uint64_t from, uint64_t end, uint64_t& found) {
    while (from < end) {
        if (!EnsureWindow(from, std::max(sought.count, PageSize))) return false;
        const auto start = static_cast<uint32_t>(from - windowStart);
        if (start > windowValid || windowValid - start < sought.count) return false; // nothing longer is left
        const uint64_t positions = std::min<uint64_t>(end - from, windowValid - start - sought.count + 1);
        const size_t at = Scan::FindBytes(window + start, static_cast<size_t>(positions) + sought.count - 1,
                                          sought.bytes, sought.count, sought.matchCase);
        if (at != Scan::NotFound) {
            found = from + at;
            return true;
        }
        from += positions;
    }
    return false;
}

// The last match at a position in [lowest, from).
bool BinaryDocument::FindBackward(const Sought& sought, uint64_t from, uint64_t lowest, uint64_t& found) {
    // The whole match must lie in the file.
    from = std::min(from, fileSize < sought.count ? 0 : fileSize - sought.count + 1);
    while (from > lowest) {
        const uint64_t last = from - 1;
        const uint64_t matchEnd = last + sought.count;
        // Asked for like this, a window that moves back ends with the match at the last position.
        const uint64_t wanted = std::min(last, matchEnd > PageSize ? matchEnd - PageSize : 0);
        if (!EnsureWindow(wanted, static_cast<uint32_t>(matchEnd - wanted))) return false;
        // A file that has become shorter may end before.
        const uint64_t windowEnd = windowStart + windowValid;
        const uint64_t lowestHere = std::max(lowest, windowStart);
        if (windowEnd >= lowestHere + sought.count) {
            const uint64_t positions = std::min(from, windowEnd - sought.count + 1) - lowestHere;
            const size_t at = Scan::FindLastBytes(window + (lowestHere - windowStart),
                                                  static_cast<size_t>(positions) + sought.count - 1, sought.bytes,
                                                  sought.count, sought.matchCase);
            if (at != Scan::NotFound) {
                found = lowestHere + at;
                return true;
            }
        }
        from = std::min(last, lowestHere);
    }
    return false;
}
