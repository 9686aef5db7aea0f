#include "syntax/CLikeEngine.h"

#include "base/Scan.h"

#include <algorithm>
#include <bit>

namespace {

constexpr uint32_t InLongComment = 1;

bool IsQuote(Char c) { return c == u'"' || c == u'\''; }

// What follows the string that the quote at `at` opens. With `LineByLine` it ends after the next line feed
// at the latest, even after one that follows a backslash.
template <bool LineByLine> const Char* AfterString(const Char* at, const Char* end) {
    const Char quote = *at++;
    while (at < end && *at != quote && !(LineByLine && *at == u'\n')) {
        // A backslash takes the next character with it, be it the quote or another backslash.
        if (*at == u'\\' && at + 1 < end && !(LineByLine && at[1] == u'\n')) ++at;
        ++at;
    }
    return at < end ? at + 1 : end;
}

} // namespace

CLikeEngine::CLikeEngine(const EngineDefinition& engineDefinition)
    : foldCase(!engineDefinition.caseSensitive), definition(engineDefinition), keywords(*engineDefinition.Keywords()) {
    longCommentStart.Set(definition.longCommentStart, foldCase);
    longCommentEnd.Set(definition.longCommentEnd, foldCase);
    BuildTables();
}

void CLikeEngine::BuildTables() {
    table = CharacterTable();
    scanStops.Clear();
    scanStops.Add(u'"');
    scanStops.Add(u'\'');
    AddMarker(definition.longCommentStart, foldCase);
    for (uint32_t i = 0; i < definition.lineCommentCount; ++i) AddMarker(definition.lineComments[i].marker, foldCase);
    AddMarker(endMarker, true);
    for (Char c = 0; c < CharacterTable::AsciiCount; ++c) {
        if (keywords.CanBegin(c)) table.Add(c, CharFlag::Keyword);
    }
    if (keywords.CanBeginBeyondAscii()) table.Add(CharacterTable::AsciiCount, CharFlag::Keyword);
    SetStops();
    everyMarkerMet = EveryMarkerIsMet();
}

// Whether colouring looks at every place outside comments and strings that has a marker or a quote. It
// does not when one may be inside a word, a number, a run of blanks or a keyword, which it takes whole.
bool CLikeEngine::EveryMarkerIsMet() const {
    for (Char c = 0; c <= CharacterTable::AsciiCount; ++c) {
        const uint32_t flags = table.Flags(c);
        if ((flags & CharFlag::Marker) && ((flags & (CharFlag::Word | CharFlag::Blank)) || c == u'.')) return false;
        if ((flags & (CharFlag::Marker | CharFlag::Quote)) && keywords.HoldsAfterFirst(c)) return false;
    }
    return true;
}

void CLikeEngine::SetStops() {
    scanner = TokenStartScanner();
    // A run of blanks is text as a whole, unless something may begin with a blank: then its start counts.
    const bool stopAtBlanks = (table.Flags(u' ') | table.Flags(u'\t')) & CharFlag::Special;
    const uint32_t stopping = CharFlag::Special | (stopAtBlanks ? CharFlag::Blank : 0);
    for (Char c = 0; c < CharacterTable::AsciiCount; ++c) {
        const uint32_t flags = table.Flags(c);
        if ((flags & stopping) && !(flags & CharFlag::Word)) scanner.AddStop(c);
    }
    if (table.Flags(CharacterTable::AsciiCount) & CharFlag::Special) scanner.StopEverywhere();
}

void CLikeEngine::AddMarker(const WString& marker, bool bothCases) {
    if (marker.IsEmpty()) return;
    table.Add(marker[0], CharFlag::Marker, bothCases);
    scanStops.Add(marker[0], bothCases);
}

bool CLikeEngine::LineCommentStartsAt(const Char* at, const Char* end, uint32_t& markerLength) const {
    for (uint32_t i = 0; i < definition.lineCommentCount; ++i) {
        const LineCommentStart& start = definition.lineComments[i];
        if (!MarkerAt(at, end, start.marker, foldCase)) continue;
        markerLength = start.marker.Length();
        const Char* after = at + markerLength;
        if (!start.wordBoundary || after == end || !Text::IsAsciiLetter(*after)) return true;
    }
    return false;
}

// The end of the long comment that continues at `at`; `end` and `inComment` set when it does not end.
const Char* CLikeEngine::AfterLongComment(const Char* at, const Char* end, bool& inComment) const {
    at = longCommentEnd.Find(at, end);
    inComment = at == end;
    return inComment ? end : at + longCommentEnd.Length();
}

uint32_t CLikeEngine::ColourLine(uint32_t offset, const Char* text, uint32_t length, uint32_t& state,
                                 ColouredLine& line) {
    runs.Clear();
    line = {};
    Line current = {text,   text + length,     offset, TouchesHighlight(offset, length), state == InLongComment,
                    NoFill, {text, text, 0, 0}};
    const Char* at = text;
    if (!ColourTokens(current, at, &runs)) return 0;
    state = current.inComment ? InLongComment : 0;
    if (current.inComment) current.fill = definition.colours[ColourClassIndex::LongComment].background;
    line = {runs.Spans(), runs.Count(), current.fill};
    return static_cast<uint32_t>(at - text);
}

// Colours from `at` on and moves it to where colouring ends; `out` (may be null) gets the runs. False
// without memory.
bool CLikeEngine::ColourTokens(Line& line, const Char*& at, RunList* out) const {
    if (line.inComment && at < line.end) {
        const Char* start = at;
        at = AfterLongComment(at, line.end, line.inComment);
        if (out && !out->Append(definition.colours[ColourClassIndex::LongComment], start, at)) return false;
    }
    while (at < line.end) {
        Token token;
        const Char* start = at;
        at = TakeText(line, at, token);
        if (out && at > start && !out->Append(definition.colours[ColourClassIndex::Text], start, at)) return false;
        if (at == line.end || !token.end) break;
        start = at;
        at = token.end;
        if (out && !out->Append(token.colours, start, at)) return false;
    }
    return true;
}

// Passes over text up to the first place where something else begins, which `next` then holds.
const Char* CLikeEngine::TakeText(Line& line, const Char* at, Token& next) const {
    while (at < line.end) {
        if (at >= line.map.end) scanner.Map(at, line.end, line.highlighted, line.map);
        const auto passed = at - line.map.start;
        const uint64_t words = line.map.words >> passed;
        // Nothing begins inside a word: it is text as a whole. The bits before `at` are shifted out, so that what a
        // token has left of a word counts as a word of its own.
        const uint64_t candidates = (words & ~(words << 1)) | line.map.stops >> passed;
        if (candidates == 0) {
            at = line.map.end;
            continue;
        }
        const int skipped = std::countr_zero(candidates);
        at += skipped;
        const uint32_t flags = table.Flags(*at);
        const Char* wordEnd = at + std::countr_one(words >> skipped);
        // The map may end inside the word, which is then followed character by character.
        if (wordEnd == line.map.end) wordEnd = SkipWhile(wordEnd, line.end, CharFlag::Word);
        // Nearly every word ends here: the tables say that it begins nothing.
        const bool mayBegin =
            line.highlighted || (flags & CharFlag::NotKeyword) ||
            ((flags & CharFlag::Keyword) && keywords.MayMatchAt(at, static_cast<size_t>(wordEnd - at)));
        if (mayBegin && TokenAt(line, at, wordEnd, flags, next)) break;
        if (wordEnd > at) at = wordEnd;
        // A run of blanks is text as a whole, too.
        else
            at = flags & CharFlag::Blank ? SkipWhile(at, line.end, CharFlag::Blank) : at + 1;
    }
    return at;
}

// The first character from `at` on without `flag`.
const Char* CLikeEngine::SkipWhile(const Char* at, const Char* end, uint32_t flag) const {
    while (at < end && (table.Flags(*at) & flag)) ++at;
    return at;
}

// What begins at `at`, in order of precedence; false when it is text.
bool CLikeEngine::TokenAt(Line& line, const Char* at, const Char* wordEnd, uint32_t flags, Token& token) const {
    if ((flags & CharFlag::Marker) && CommentAt(line, at, token)) return true;
    if (flags & CharFlag::Quote) {
        token = {AfterString<false>(at, line.end), definition.colours[ColourClassIndex::String]};
        return true;
    }
    if ((flags & CharFlag::Marker) && MarkerAt(at, line.end, endMarker, true)) {
        token.end = nullptr;
        return true;
    }
    if (flags & CharFlag::Digit) {
        // Dots join words to one number, such as 1.5e3 or 0x1F.2.
        while (wordEnd < line.end && *wordEnd == u'.') wordEnd = SkipWhile(wordEnd + 1, line.end, CharFlag::Word);
        token = {wordEnd, definition.colours[ColourClassIndex::Number]};
        return true;
    }
    if (flags & CharFlag::Keyword) {
        if (const uint32_t length = keywords.Find(at, line.end, static_cast<size_t>(wordEnd - at))) {
            token = {at + length, definition.colours[ColourClassIndex::Keyword]};
            return true;
        }
    }
    return line.highlighted && HighlightAt(line, at, token);
}

bool CLikeEngine::CommentAt(Line& line, const Char* at, Token& token) const {
    if (longCommentStart.At(at, line.end)) {
        const Char* inside = at + longCommentStart.Length();
        const Char* end = AfterLongComment(inside, line.end, line.inComment);
        token = {end, definition.colours[ColourClassIndex::LongComment]};
        return true;
    }
    uint32_t markerLength = 0;
    if (!LineCommentStartsAt(at, line.end, markerLength)) return false;
    token = {line.end, definition.colours[ColourClassIndex::Comment]};
    line.fill = token.colours.background;
    return true;
}

// A range that is met takes its whole length from there, even when it began before; the line's end
// bounds it.
bool CLikeEngine::HighlightAt(const Line& line, const Char* at, Token& token) const {
    const uint64_t offset = uint64_t{line.offset} + static_cast<uint64_t>(at - line.text);
    for (const HighlightRange& range : highlights) {
        if (offset < range.start || offset >= range.end) continue;
        const auto length = std::min<ptrdiff_t>(range.end - range.start, line.end - at);
        token = {at + length, {range.foreground, range.background}};
        return true;
    }
    return false;
}

bool CLikeEngine::TouchesHighlight(uint32_t offset, uint32_t length) const {
    const uint64_t end = uint64_t{offset} + length;
    for (const HighlightRange& range : highlights) {
        if (range.start < end && offset < range.end) return true;
    }
    return false;
}

void CLikeEngine::SetHighlight(uint32_t index, const HighlightRange* range) {
    if (index < HighlightCount) highlights[index] = range ? *range : HighlightRange();
}

HighlightRange CLikeEngine::Highlight(uint32_t index) const {
    return index < HighlightCount ? highlights[index] : HighlightRange();
}

bool CLikeEngine::MayChangeState(const Char* text, uint32_t length) {
    const Char* end = text + length;
    return longCommentStart.Find(text, end) < end || longCommentEnd.Find(text, end) < end;
}

uint32_t CLikeEngine::ScanState(const Char* text, uint32_t length, uint32_t start, uint32_t state, uint32_t& stopped) {
    // A start past the end is the start of the text, in the normal state.
    const Char* at = start > length ? text : text + start;
    bool inComment = start <= length && state == InLongComment;
    Scan<false>(at, text + length, inComment);
    stopped = static_cast<uint32_t>(at - text);
    return inComment ? InLongComment : 0;
}

uint32_t CLikeEngine::ScanLinesToEnd(const Char* text, uint32_t length, uint32_t state, uint32_t& stopped) {
    const Char* at = text;
    bool inComment = state == InLongComment;
    if (everyMarkerMet)
        Scan<true>(at, text + length, inComment);
    else
        WalkLines(at, text + length, inComment);
    stopped = static_cast<uint32_t>(at - text);
    return inComment ? InLongComment : 0;
}

// The slow way, for definitions with unusual markers: as colouring goes, without the runs.
void CLikeEngine::WalkLines(const Char*& at, const Char* end, bool& inComment) const {
    while (at < end) {
        const Char* lineEnd = at + ::Scan::FindLineFeed(at, static_cast<size_t>(end - at));
        if (lineEnd < end) ++lineEnd;
        Line line = {at, lineEnd, 0, false, inComment, NoFill, {at, at, 0, 0}};
        ColourTokens(line, at, nullptr);
        inComment = line.inComment;
        if (at < lineEnd) return;
    }
}

template <bool LineByLine> void CLikeEngine::Scan(const Char*& at, const Char* end, bool& inComment) const {
    for (;;) {
        if (inComment)
            at = AfterLongComment(at, end, inComment);
        else
            at = scanStops.Find(at, end);
        if (at == end || !ScanTokenAt<LineByLine>(at, end, inComment)) return;
    }
}

// Passes over whatever is at `at`, outside a long comment. False at the end marker.
template <bool LineByLine> bool CLikeEngine::ScanTokenAt(const Char*& at, const Char* end, bool& inComment) const {
    if (LineByLine && longCommentStart.At(at, end)) {
        at += longCommentStart.Length();
        inComment = true;
        return true;
    }
    // Unlike colouring, the scan of any text looks for line comments before long ones and for the end
    // marker before strings.
    uint32_t markerLength = 0;
    if (LineCommentStartsAt(at, end, markerLength)) {
        at += markerLength;
        at += ::Scan::FindLineFeed(at, static_cast<size_t>(end - at));
        if (at < end) ++at;
    } else if (!LineByLine && longCommentStart.At(at, end)) {
        at += longCommentStart.Length();
        inComment = true;
    } else if (LineByLine && IsQuote(*at)) {
        at = AfterString<LineByLine>(at, end);
    } else if (MarkerAt(at, end, endMarker, true)) {
        return false;
    } else {
        at = IsQuote(*at) ? AfterString<LineByLine>(at, end) : at + 1;
    }
    return true;
}
