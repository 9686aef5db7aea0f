// Searching in a TextBuffer.

#include "base/Scan.h"
#include "base/Text.h"
#include "document/TextBuffer.h"

#include <algorithm>

uint32_t TextBuffer::Search::Slice() const {
    constexpr uint32_t Most = 1u << 20;
    constexpr uint32_t Least = 32;
    constexpr uint32_t Comparisons = 1u << 26;
    return std::clamp(Comparisons / (count + 1), Least, Most);
}

bool TextBuffer::IsWholeWordAt(uint32_t offset, uint32_t count) const {
    if (offset >= length) return false;
    if (offset > 0 && Text::IsWordChar(text[offset - 1])) return false;
    const uint64_t behind = uint64_t{offset} + count;
    return behind >= length || !Text::IsWordChar(text[behind]);
}

bool TextBuffer::FindText(const Char* pattern, uint32_t from, uint32_t end, bool matchCase, bool wholeWord,
                          bool backward, uint32_t& found, bool& wrapped, SearchProgress* progress) {
    wrapped = false;
    if (!CommitEdit() || !text) return false;
    const Search search{pattern, Text::Length(pattern), matchCase, wholeWord};
    from = std::min(from, length);
    end = std::min(end, length);
    uint32_t at = None32;
    bool broken = false;
    const auto go = [&](uint32_t start, uint32_t stop) {
        at = backward ? FindSlicedBelow(search, start, stop, progress, broken)
                      : FindSliced(search, start, stop, progress, broken);
    };
    go(from, backward ? 0 : end);
    if (at == None32 && !broken) {
        // The second round leaves out what the first has gone through.
        wrapped = true;
        backward ? go(length, from) : go(0, std::min(from, end));
    }
    if (at == None32) return false;
    found = at;
    return true;
}

// Slice by slice, so that a search through a very long text can be broken off.
uint32_t TextBuffer::FindSliced(const Search& search, uint32_t from, uint32_t end, SearchProgress* progress,
                                bool& broken) const {
    const uint32_t slice = search.Slice();
    while (from < end && !broken) {
        const uint32_t stop = end - from > slice ? from + slice : end;
        const uint32_t at = FindFrom(search, from, stop);
        if (at != None32) return at;
        from = stop;
        broken = progress && !progress->Continue(from, length);
    }
    return None32;
}

uint32_t TextBuffer::FindSlicedBelow(const Search& search, uint32_t from, uint32_t lowest, SearchProgress* progress,
                                     bool& broken) const {
    const uint32_t slice = search.Slice();
    while (from > lowest && !broken) {
        const uint32_t stop = from - lowest > slice ? from - slice : lowest;
        const uint32_t at = FindBelow(search, from, stop);
        if (at != None32) return at;
        from = stop;
        broken = progress && !progress->Continue(length - from, length);
    }
    return None32;
}

uint32_t TextBuffer::FindFrom(const Search& search, uint32_t from, uint32_t end) const {
    while (from < end) {
        size_t at = from; // an empty pattern stands everywhere
        if (search.count)
            at = Scan::FindForward(text, length, from, end, search.pattern, search.count, search.matchCase);
        if (at == Scan::NotFound) break;
        const auto candidate = static_cast<uint32_t>(at);
        if (!search.wholeWord || IsWholeWordAt(candidate, search.count)) return candidate;
        from = candidate + 1;
    }
    return None32;
}

uint32_t TextBuffer::FindBelow(const Search& search, uint32_t from, uint32_t lowest) const {
    while (from > lowest) {
        size_t at = from - lowest - 1;
        if (search.count) {
            at = Scan::FindBackward(text + lowest, length - lowest, from - lowest, search.pattern, search.count,
                                    search.matchCase);
        }
        if (at == Scan::NotFound) break;
        const auto candidate = static_cast<uint32_t>(lowest + at);
        if (!search.wholeWord || IsWholeWordAt(candidate, search.count)) return candidate;
        from = candidate;
    }
    return None32;
}
