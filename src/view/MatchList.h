#pragma once

#include "base/Array.h"
#include "document/TextBuffer.h"
#include "view/TextSpan.h"

enum class MatchResult : uint32_t { Done, Cancelled, NoMemory };

// The places that a replacement of all matches changes, found in one pass.
class MatchList {
public:
    // Finds every match in `area`, each searched for after the text that replaced the one before.
    // None reaches over its end. On failure the list is empty.
    [[nodiscard]] MatchResult Gather(const TextBuffer& document, const SearchQuery& search, TextRange area,
                                     TextSpan replacement, SearchProgress& progress);
    // How many characters the matches remove.
    uint64_t RemovedCount() const { return removed; }

    Array<ReplacedRange> changes;

private:
    [[nodiscard]] MatchResult Fail(MatchResult result);
    bool Accepts(const TextBuffer& document, const SearchQuery& search, uint32_t at) const;

    uint64_t removed = 0;
    uint32_t lastEnd = NoOffset; // after the last match
    Char before = 0;             // what precedes `lastEnd` once the match is replaced; 0 at the text's start
};
