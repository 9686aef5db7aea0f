#include "document/TextSearch.h"

#include "base/Surrogates.h"
#include "base/Text.h"
#include "settings/AdditionalSettings.h"

#include <algorithm>

uint32_t SearchQuery::Slice() const {
    constexpr uint32_t Max = 1u << 20;
    constexpr uint32_t Min = 32; // however long the query: a search has to get on
    constexpr uint32_t Comparisons = 1u << 26;
    return std::clamp(Comparisons / (length + 1), Min, Max);
}

bool TextSearch::IsWholeWord(const Char* text, uint32_t length, TextRange range) {
    if (range.start >= length) return false;
    if (range.start > 0 && Text::IsWordChar(text[range.start - 1])) return false;
    return range.end >= length || !Text::IsWordChar(text[range.end]);
}

bool TextSearch::Accepts(uint32_t at) const {
    const TextRange match = {at, at + query.length};
    const bool isWhole = !additionalSettings.WholeCharacters || (!Surrogates::SplitsPair(text, length, match.start) &&
                                                                 !Surrogates::SplitsPair(text, length, match.end));
    return isWhole && (!query.wholeWord || IsWholeWord(text, length, match));
}

bool TextSearch::Find(SearchWay way, SearchHit& hit, SearchProgress* progress) const {
    const uint32_t from = std::min(way.from, length);
    const uint32_t end = std::min(way.end, length);
    uint32_t found = NoOffset;
    bool wrapped = false;
    if (!Search({from, way.backward ? 0 : end, way.backward}, found, progress)) return false;
    if (found == NoOffset) {
        // The second round leaves out what the first has gone through. It ends at the place and not at the end of a
        // match there, so that the only match of a text is found again from its own end.
        wrapped = true;
        const SearchWay rest = {way.backward ? length : 0, way.backward ? from : std::min(from, end), way.backward};
        if (!Search(rest, found, progress)) return false;
    }
    hit.wrapped = wrapped;
    if (found == NoOffset) return false;
    hit.offset = found;
    return true;
}

bool TextSearch::Search(SearchWay way, uint32_t& found, SearchProgress* progress) const {
    // A slice says where a match may start. It may end in the next one, so that none is missed in between.
    const uint32_t slice = query.Slice();
    uint32_t from = way.from;
    while (way.backward ? from > way.end : from < way.end) {
        const uint32_t rest = way.backward ? from - way.end : way.end - from;
        const uint32_t step = std::min(rest, slice);
        const uint32_t next = way.backward ? from - step : from + step;
        found = way.backward ? FindLast({next, from}) : FindFrom({from, next});
        if (found != NoOffset) return true;
        from = next;
        if (progress && !progress->Continue(way.backward ? length - from : from, length)) return false;
    }
    return true;
}

uint32_t TextSearch::FindFrom(TextRange area) const {
    for (uint32_t from = area.start; from < area.end;) {
        size_t at = from;
        if (query.length) at = Scan::FindForward(text, length, {from, area.end}, Pattern());
        if (at == Scan::NotFound) break;
        const auto candidate = static_cast<uint32_t>(at);
        if (Accepts(candidate)) return candidate;
        from = candidate + 1; // not its end: a match that counts may overlap with one that does not
    }
    return NoOffset;
}

uint32_t TextSearch::FindLast(TextRange area) const {
    for (uint32_t from = area.end; from > area.start;) {
        size_t at = from - 1;
        if (query.length) at = Scan::FindBackward(text, length, {area.start, from}, Pattern());
        if (at == Scan::NotFound) break;
        const auto candidate = static_cast<uint32_t>(at);
        if (Accepts(candidate)) return candidate;
        from = candidate;
    }
    return NoOffset;
}
