#pragma once

#include "base/Types.h"
#include "document/SearchProgress.h"

// What is searched for. `text` holds no NUL; an empty one is found everywhere.
struct SearchQuery {
    const Char* text = nullptr;
    uint32_t length = 0;
    bool matchCase = false;
    bool wholeWord = false;

    // Positions to search between two reports of progress: a long text may have to be compared almost whole
    // at every one of them.
    uint32_t Slice() const;
};

struct SearchHit {
    uint32_t offset = 0;
    bool wrapped = false; // it is on the other side of the text's end (or start), seen from where the search began
};

// Finds matches of a query in `length` characters at `content`, which it does not own.
class TextSearch {
public:
    TextSearch(const Char* content, uint32_t contentLength, const SearchQuery& wanted)
        : text(content), length(contentLength), query(wanted) {}

    // The first match that starts in [from, end), and the last one in [lowest, from); NoOffset without one.
    uint32_t FindFrom(uint32_t from, uint32_t end) const;
    uint32_t FindBelow(uint32_t from, uint32_t lowest) const;
    // From `from` to `end`, then from the start to `from`; backwards from `from` to the start, then from the
    // end to `from`. False without a match and when `progress` (null for none) stops the search.
    [[nodiscard]] bool Find(uint32_t from, uint32_t end, bool backward, SearchHit& hit, SearchProgress* progress) const;

    // Whether the `count` characters at `offset` of a text are a word, or several, and not a part of one.
    static bool IsWholeWord(const Char* text, uint32_t length, uint32_t offset, uint32_t count);

private:
    // One round, slice by slice. False when `progress` stops it.
    bool Search(uint32_t from, uint32_t stop, bool backward, uint32_t& found, SearchProgress* progress) const;
    bool Accepts(uint32_t at) const { return !query.wholeWord || IsWholeWord(text, length, at, query.length); }

    const Char* text;
    uint32_t length;
    SearchQuery query;
};
