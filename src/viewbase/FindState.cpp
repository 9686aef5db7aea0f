#include "viewbase/FindState.h"

#include "base/Text.h"

#include <utility>

FindState findState;

bool History::Add(const Char* text, uint32_t length) {
    WString added;
    uint32_t gone = 0; // the entry to be replaced: an equal one, or the oldest of a full history
    while (gone < count && (entries[gone].Length() != length || !Text::EqualCount(entries[gone].Text(), text, length)))
        ++gone;
    if (gone < count) {
        added = std::move(entries[gone]);
    } else {
        if (!added.Assign(text, length)) return false;
        if (count < Limit) {
            entries[count++] = std::move(added);
            return true;
        }
        gone = 0;
    }
    for (uint32_t i = gone; i + 1 < count; ++i) entries[i] = std::move(entries[i + 1]);
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
