#include "view/MatchList.h"

#include "base/Text.h"

// Right after a match the character before is the last one of its replacement, not of the text that is still there.
bool MatchList::Accepts(const TextBuffer& document, const SearchQuery& search, uint32_t at) const {
    if (!search.wholeWord) return true;
    if (at != lastEnd) return document.IsWholeWordAt({at, at + search.length});
    const uint32_t after = at + search.length;
    return !Text::IsWordChar(before) && !(after < document.Length() && Text::IsWordChar(document.Content()[after]));
}

MatchResult MatchList::Gather(const TextBuffer& document, const SearchQuery& search, TextRange area,
                              TextSpan replacement, SearchProgress& progress) {
    // The rules of whole words are applied here.
    const SearchQuery anywhere = {search.text, search.length, search.matchCase, false};
    if (search.length == 0 || area.Length() < search.length) return MatchResult::Done;
    const uint32_t limit = area.end - search.length + 1; // no match may start here or later
    const uint32_t slice = search.Slice();
    uint32_t reported = area.start;
    for (uint32_t from = area.start; from < limit;) {
        const uint32_t stop = limit - from > slice ? from + slice : limit;
        const uint32_t at = document.FindFrom(anywhere, {from, stop});
        from = at == NoOffset ? stop : at + 1;
        if (at != NoOffset && Accepts(document, search, at)) {
            if (!changes.Append({at, search.length})) return Fail(MatchResult::NoMemory);
            // Where matches follow each other and nothing replaces them, what is before the first stays before the
            // next.
            const Char left = at == lastEnd ? before : at ? document.Content()[at - 1] : Char(0);
            before = replacement.length ? replacement.text[replacement.length - 1] : left;
            removed += search.length;
            from = lastEnd = at + search.length;
        }
        if (from - reported < slice) continue;
        reported = from;
        if (!progress.Continue(from, area.end)) return Fail(MatchResult::Cancelled);
    }
    return MatchResult::Done;
}

MatchResult MatchList::Fail(MatchResult result) {
    changes.Release();
    removed = 0;
    return result;
}
