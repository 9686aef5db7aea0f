#include "binary/ByteSearch.h"

#include "base/Array.h"
#include "base/CodePage.h"
#include "base/Scan.h"
#include "base/WString.h"
#include "binary/HexPattern.h"

#include <algorithm>

namespace {

// The bytes that a pattern means, none for text that the page cannot express: the question marks in its
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

bool ByteSearch::Find(const WString& pattern, ByteHit& hit) {
    Array<uint8_t> wanted;
    if (!ToBytes(pattern, query.hexPattern, wanted) || wanted.IsEmpty() || wanted.Count() > FileWindow::Capacity)
        return false;
    // The window may have served as scratch space, and the file may have been written since, by others too.
    file.Forget();
    bytes = wanted.Items();
    count = static_cast<uint32_t>(wanted.Count());
    matchCase = query.matchCase || query.hexPattern;
    headCount = std::min(count, FileWindow::Room);
    const Scan::ByteFinder finder(bytes, headCount, matchCase);
    head = &finder;
    hit.length = count;
    return FindAround(hit);
}

bool ByteSearch::FindAround(ByteHit& hit) {
    const uint64_t from = std::min(query.from, file.Size());
    const uint64_t end = std::min(query.end, file.Size());
    hit.wrapped = false;
    if (query.backward ? FindBackward(from, 0, hit.offset) : FindForward(from, end, hit.offset)) return true;
    if (cancelled || unreadable) return false;
    hit.wrapped = true;
    // What the first pass has seen is not looked at again.
    return query.backward ? FindBackward(file.Size(), from, hit.offset)
                          : FindForward(0, std::min(from, end), hit.offset);
}

// Whether the whole pattern is where its head was found.
bool ByteSearch::IsAt(uint64_t offset) {
    if (count == headCount) return true;
    unreadable = !file.Ensure(offset, count);
    if (unreadable) return false;
    const uint64_t start = offset - file.Start();
    return start + count <= file.Valid() && Scan::EqualBytes(file.Bytes() + start, bytes, count, matchCase);
}

// Counts bytes that were gone through; false once the search is cancelled.
bool ByteSearch::MayContinue(uint64_t more) {
    constexpr uint64_t Slice = 1u << 22; // asking more often would cost more than searching
    const uint64_t before = passed;
    passed += more;
    if (progress && passed / Slice != before / Slice) cancelled = !progress->Continue(passed, file.Size());
    return !cancelled;
}

// The first match at a position in [from, end). The system reads whole pages faster: the windows start with one and
// follow each other without overlapping. A head that crosses into the next window is found there, because Advance keeps
// its beginning in front of that window.
bool ByteSearch::FindForward(uint64_t from, uint64_t end, uint64_t& found) {
    end = std::min(end, PositionsEnd());
    if (from < end && !file.Ensure(from - from % SystemPage, SystemPage))
        unreadable = !file.Ensure(from, headCount); // less than a whole page of the system may do
    if (unreadable) return false;
    while (from < end) {
        const uint64_t windowEnd = file.End();
        if (from + headCount > windowEnd) {
            unreadable = !file.Advance(from < windowEnd ? static_cast<uint32_t>(windowEnd - from) : 0);
            // A file that has become shorter ends here.
            if (unreadable || file.Valid() == 0) return false;
            continue;
        }
        const uint8_t* const first = file.Bytes() + static_cast<int64_t>(from - file.Start());
        const uint64_t positions = std::min(end - from, windowEnd - from - headCount + 1);
        const size_t at = head->First(first, static_cast<size_t>(positions) + headCount - 1);
        const uint64_t skipped = at == Scan::NotFound ? positions : at;
        from += skipped;
        if (!MayContinue(skipped)) return false;
        if (at == Scan::NotFound) continue;
        found = from++;
        if (IsAt(found)) return true;
        if (unreadable) return false;
    }
    return false;
}

// Makes the window end with a head that ends there, or less than a cache line after it, when it moves back.
bool ByteSearch::PreviousWindow(uint64_t headEnd) {
    constexpr uint64_t Line = FileWindow::CacheLine;
    for (; reach >= headCount + Line; reach /= 2) {
        const uint64_t page = headEnd > reach ? headEnd - reach : 0;
        const uint64_t wanted = (page + Line - 1) / Line * Line;
        if (file.Ensure(wanted, static_cast<uint32_t>(headEnd - wanted))) return true;
        // Less of it may lie after the bytes that cannot be read.
    }
    unreadable = true;
    return false;
}

// The last match at a position in [lowest, from).
bool ByteSearch::FindBackward(uint64_t from, uint64_t lowest, uint64_t& found) {
    from = std::min(from, PositionsEnd());
    while (from > lowest) {
        const uint64_t headEnd = from - 1 + headCount;
        if (!PreviousWindow(headEnd)) return false;
        const uint64_t first = std::max(lowest, file.Start());
        // A file that has become shorter may end before.
        const uint64_t windowEnd = std::min(headEnd, file.End());
        const uint64_t searched = windowEnd > first ? windowEnd - first : 0;
        const size_t at = head->Last(file.Bytes() + (first - file.Start()), static_cast<size_t>(searched));
        const uint64_t before = from;
        from = at == Scan::NotFound ? first : first + at;
        if (!MayContinue(before - from)) return false;
        if (at == Scan::NotFound) continue;
        found = from;
        if (IsAt(found)) return true;
        if (unreadable) return false;
    }
    return false;
}
