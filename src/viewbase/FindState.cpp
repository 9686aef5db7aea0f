#include "viewbase/FindState.h"

#include "base/Text.h"

#include <utility>

// Process-wide: every view and dialog continues the last search, whichever made it.
FindState findState;

bool History::Add(const Char* text, uint32_t length) {
    WString added;
    uint32_t old = 0; // the entry to be replaced: an equal one, or the oldest of a full history
    while (old < count && (entries[old].Length() != length || !Text::EqualCount(entries[old].Text(), text, length)))
        ++old;
    if (old < count) {
        added = std::move(entries[old]);
    } else {
        if (!added.Assign(text, length)) return false;
        if (count < Limit) {
            entries[count++] = std::move(added);
            return true;
        }
        old = 0;
    }
    for (uint32_t i = old; i + 1 < count; ++i) entries[i] = std::move(entries[i + 1]);
    entries[count - 1] = std::move(added);
    return true;
}

void History::Release() {
    for (WString& entry : entries) entry.Release();
    count = 0;
}

void FindState::Release() {
    searchText.Release();
    replaceText.Release();
    searchHistory.Release();
    replaceHistory.Release();
}
