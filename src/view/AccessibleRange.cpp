#include "view/AccessibleRange.h"

#include "base/Scan.h"
#include "base/Surrogates.h"
#include "base/SystemCase.h"
#include "base/WString.h"
#include "document/TextBuffer.h"
#include "document/TextChange.h"
#include "view/ShownText.h"

#include <algorithm>

namespace {

// Where the characters are in the document's content; null when they are not there, since some of them are pending.
const Char* InContent(const ShownText& text, TextRange part) {
    const TextBuffer* document = text.Document();
    if (!document || !document->Content() || document->HasPendingEdit()) return nullptr;
    return document->Content() + part.start;
}

size_t FindIn(const Char* text, size_t count, const AccessibleRange::Wanted& wanted) {
    const Scan::Pattern pattern = {wanted.text, wanted.count, wanted.matchCase};
    return wanted.backward ? Scan::FindBackward(text, count, {0, count}, pattern)
                           : Scan::FindForward(text, count, {0, count}, pattern);
}

bool NeedsFolding(const AccessibleRange::Wanted& wanted) {
    constexpr Char LastAscii = 0x7F; // up to there the search folds by itself
    const auto isOther = [](Char c) { return c > LastAscii; };
    return !wanted.matchCase && std::any_of(wanted.text, wanted.text + wanted.count, isOther);
}

bool CopyText(const ShownText& text, TextRange part, WString& out) {
    if (!out.Reserve(part.Length())) return false;
    text.Copy(part, out.Data());
    return true;
}

} // namespace

void AccessibleRange::Follow(const TextChange& change) {
    // What comes in right before the first character pushes it on; Moved leaves a place at the start of a change alone.
    const bool isBefore = change.start == range.start && change.removed.characters == 0 && !range.IsEmpty();
    range.start = isBefore ? range.start + change.inserted.characters : change.Moved(range.start);
    range.end = change.Moved(range.end);
}

TextRange AccessibleRange::Within(const ShownText& text) const {
    const uint32_t end = std::min(range.end, text.Length());
    return {std::min(range.start, end), end};
}

int32_t AccessibleRange::Compare(const ShownText& text, RangeEnd own, const AccessibleRange& other,
                                 RangeEnd otherEnd) const {
    const uint32_t left = Of(Within(text), own);
    const uint32_t right = Of(other.Within(text), otherEnd);
    return (left > right) - (left < right);
}

void AccessibleRange::Expand(const ShownText& text, AccessibleUnit unit) {
    int32_t moved = 0;
    range.start = AccessibleUnits::StartOf(text, unit, Within(text).start);
    range.end = AccessibleUnits::Move(text, unit, range.start, 1, moved);
}

int32_t AccessibleRange::Move(const ShownText& text, AccessibleUnit unit, int32_t count) {
    range = Within(text);
    int32_t moved = 0;
    if (range.IsEmpty()) {
        range.start = range.end = AccessibleUnits::Move(text, unit, range.start, count, moved);
        return moved;
    }
    // A range that is not empty moves as units do: from the start of the one it begins in, and becomes a whole one.
    const uint32_t from = AccessibleUnits::StartOf(text, unit, range.start);
    range.start = AccessibleUnits::Move(text, unit, from, count, moved);
    // No unit but an empty line starts at the text's end.
    const uint32_t last = AccessibleUnits::LastStart(text, unit);
    if (moved > 0 && range.start > last) {
        range.start = last;
        --moved;
    }
    range.end = range.start;
    Expand(text, unit);
    return moved;
}

int32_t AccessibleRange::MoveEnd(const ShownText& text, RangeEnd end, AccessibleUnit unit, int32_t count) {
    const TextRange clamped = Within(text);
    int32_t moved = 0;
    Place(clamped, end, AccessibleUnits::Move(text, unit, Of(clamped, end), count, moved));
    return moved;
}

void AccessibleRange::MoveEndTo(const ShownText& text, RangeEnd end, const AccessibleRange& other, RangeEnd otherEnd) {
    Place(Within(text), end, Of(other.Within(text), otherEnd));
}

void AccessibleRange::Place(TextRange clamped, RangeEnd end, uint32_t offset) {
    if (end == RangeEnd::Start) {
        range = {offset, std::max(offset, clamped.end)};
    } else {
        range = {std::min(offset, clamped.start), offset};
    }
}

bool AccessibleRange::Find(const ShownText& text, const Wanted& wanted, uint32_t& found) const {
    found = NoOffset;
    const TextRange part = Within(text);
    if (wanted.count == 0 || wanted.count > part.Length()) return true;
    const bool folds = NeedsFolding(wanted);
    // Nothing is written back for a search: whoever listens edits nothing.
    const Char* searched = folds ? nullptr : InContent(text, part);
    WString copy;
    if (!searched) {
        if (!CopyText(text, part, copy)) return false;
        searched = copy.Data();
    }
    WString folded;
    Wanted query = wanted;
    if (folds) {
        if (!folded.Assign(wanted.text, wanted.count) || !SystemCase::Fold(folded.Data(), wanted.count) ||
            !SystemCase::Fold(copy.Data(), part.Length()))
            return false;
        query = {folded.Text(), wanted.count, wanted.backward, true};
    }
    const size_t at = FindIn(searched, part.Length(), query);
    if (at != Scan::NotFound) found = part.start + static_cast<uint32_t>(at);
    return true;
}

TextRange AccessibleRange::Readable(const ShownText& text, int32_t limit) const {
    TextRange part = Within(text);
    if (limit < 0 || static_cast<uint32_t>(limit) >= part.Length()) return part;
    const uint32_t end = part.start + static_cast<uint32_t>(limit);
    const bool splitsPair =
        limit > 1 && Surrogates::IsFirst(text.CharacterAt(end - 1)) && Surrogates::IsSecond(text.CharacterAt(end));
    return {part.start, splitsPair ? end - 1 : end};
}
