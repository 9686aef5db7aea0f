#pragma once

#include "base/Text.h"
#include "base/WString.h"
#include "syntax/CharSearchSet.h"

// Whether the text at `at` begins with `marker`. It never does when the marker is empty or does not fit
// before `end`.
inline bool MarkerAt(const Char* at, const Char* end, const WString& marker, bool foldCase) {
    const uint32_t length = marker.Length();
    if (length == 0 || static_cast<size_t>(end - at) < length) return false;
    const Char* text = marker.Text();
    for (uint32_t i = 0; i < length; ++i) {
        if (at[i] == text[i]) continue;
        if (!foldCase || Text::FoldCase(at[i]) != Text::FoldCase(text[i])) return false;
    }
    return true;
}

// Finds one marker in long stretches of text. Refers to the marker, which must stay as it is.
class MarkerSearch {
public:
    void Set(const WString& newMarker, bool newFoldCase) {
        marker = &newMarker;
        foldCase = newFoldCase;
        stops.Clear();
        if (!marker->IsEmpty()) stops.Add((*marker)[0], foldCase);
    }

    bool At(const Char* at, const Char* end) const { return MarkerAt(at, end, *marker, foldCase); }

    // The first occurrence of the marker in [at, end); `end` when there is none.
    const Char* Find(const Char* at, const Char* end) const {
        if (marker->IsEmpty()) return end;
        while ((at = stops.Find(at, end)) < end && !At(at, end)) ++at;
        return at;
    }
    uint32_t Length() const { return marker->Length(); }

private:
    const WString* marker = nullptr;
    bool foldCase = false;
    CharSearchSet stops;
};
