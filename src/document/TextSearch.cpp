#include "document/TextSearch.h"

#include "base/Scan.h"
#include "base/Text.h"

#include <algorithm>

uint32_t SearchQuery::Slice() const {
    constexpr uint32_t Most = 1u << 20;
    constexpr uint32_t Least = 32;
    constexpr uint32_t Comparisons = 1u << 26;
    return std::clamp(Comparisons / (length + 1), Least, Most);
}

bool TextSearch::IsWholeWord(const Char* text, uint32_t length, uint32_t offset, uint32_t count) {
    if (offset >= length) return false;
    if (offset > 0 && Text::IsWordChar(text[offset - 1])) return false;
    const uint64_t end = uint64_t{offset} + count;
    return end >= length || !Text::IsWordChar(text[end]);
}

bool TextSearch::Find(uint32_t from, uint32_t end, bool backward, SearchHit& hit, SearchProgress* progress) const {
    from = std::min(from, length);
    end = std::min(end, length);
    uint32_t found = NoOffset;
    bool wrapped = false;
    if (!Search(from, backward ? 0 : end, backward, found, progress)) return false;
    if (found == NoOffset) {
        // The second round leaves out what the first has gone through.
        wrapped = true;
        const uint32_t start = backward ? length : 0;
        if (!Search(start, backward ? from : std::min(from, end), backward, found, progress)) return false;
    }
    hit.wrapped = wrapped;
    if (found == NoOffset) return false;
    hit.offset = found;
    return true;
}

bool TextSearch::Search(uint32_t from, uint32_t stop, bool backward, uint32_t& found, SearchProgress* progress) const {
    const uint32_t slice = query.Slice();
    while (backward ? from > stop : from < stop) {
        const uint32_t rest = backward ? from - stop : stop - from;
        const uint32_t step = std::min(rest, slice);
        const uint32_t next = backward ? from - step : from + step;
        found = backward ? FindBelow(from, next) : FindFrom(from, next);
        if (found != NoOffset) return true;
        from = next;
        if (progress && !progress->Continue(backward ? length - from : from, length)) return false;
    }
    return true;
}

uint32_t TextSearch::FindFrom(uint32_t from, uint32_t end) const {
    while (from < end) {
        size_t at = from;
        if (query.length) at = Scan::FindForward(text, length, from, end, query.text, query.length, query.matchCase);
        if (at == Scan::NotFound) break;
        const auto candidate = static_cast<uint32_t>(at);
        if (Accepts(candidate)) return candidate;
        from = candidate + 1;
    }
    return NoOffset;
}

uint32_t TextSearch::FindBelow(uint32_t from, uint32_t lowest) const {
    while (from > lowest) {
        size_t at = from - lowest - 1;
        if (query.length) {
            at = Scan::FindBackward(text + lowest, length - lowest, from - lowest, query.text, query.length,
                                    query.matchCase);
        }
        if (at == Scan::NotFound) break;
        const auto candidate = static_cast<uint32_t>(lowest + at);
        if (Accepts(candidate)) return candidate;
        from = candidate;
    }
    return NoOffset;
}
