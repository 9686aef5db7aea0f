#pragma once

#include "base/Scan.h"
#include "document/SearchProgress.h"
#include "document/TextRange.h"

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

// Where a search begins, and which way it goes from there: to `end` and then from the start of the text, or backwards
// to the start and then from the end (`end` does not count).
struct SearchWay {
    uint32_t from = 0;
    uint32_t end = NoOffset;
    bool backward = false;
};

// Finds matches of a query in `length` characters at `content`, which it does not own. With the additional setting
// WholeCharacters no match begins or ends inside a pair of surrogates.
class TextSearch {
public:
    TextSearch(const Char* content, uint32_t contentLength, const SearchQuery& wanted)
        : text(content), length(contentLength), query(wanted) {}

    // The first and the last match that starts in `area`; NoOffset without one.
    uint32_t FindFrom(TextRange area) const;
    uint32_t FindLast(TextRange area) const;
    // Once around, back to where it began. False without a match and when `progress` (null for none) stops the
    // search.
    [[nodiscard]] bool Find(SearchWay way, SearchHit& hit, SearchProgress* progress) const;

    // Whether the characters in `range` of a text are a word, or several, and not a part of one.
    static bool IsWholeWord(const Char* text, uint32_t length, TextRange range);

private:
    // One round, slice by slice, to `end` also backwards. False when `progress` stops it.
    bool Search(SearchWay way, uint32_t& found, SearchProgress* progress) const;
    Scan::Pattern Pattern() const { return {query.text, query.length, query.matchCase}; }
    bool Accepts(uint32_t at) const;

    const Char* text;
    uint32_t length;
    SearchQuery query;
};
