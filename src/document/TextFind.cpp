// Searching in a TextBuffer.

#include "base/Scan.h"
#include "base/Text.h"
#include "document/TextBuffer.h"

#include <algorithm>

bool TextBuffer::IsWholeWordAt(uint32_t offset, uint32_t count) const {
    if (offset >= length) return false;
    if (offset > 0 && Text::IsWordChar(text[offset - 1])) return false;
    const uint64_t behind = uint64_t{offset} + count;
    return behind >= length || !Text::IsWordChar(text[behind]);
}

bool TextBuffer::FindText(const Char* pattern, uint32_t from, uint32_t end, bool matchCase, bool wholeWord,
                          bool backward, uint32_t& found, bool& wrapped) {
    wrapped = false;
    if (!CommitEdit() || !text) return false;
    const Search search{pattern, Text::Length(pattern), matchCase, wholeWord};
    from = std::min(from, length);
    end = std::min(end, length);
    // The second round leaves out what the first has gone through.
    uint32_t at = backward ? FindBelow(search, from, 0) : FindFrom(search, from, end);
    if (at == None32) {
        wrapped = true;
        at = backward ? FindBelow(search, length, from) : FindFrom(search, 0, std::min(from, end));
    }
    if (at == None32) return false;
    found = at;
    return true;
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
