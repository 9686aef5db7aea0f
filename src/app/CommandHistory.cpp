#include "app/CommandHistory.h"

#include "base/Text.h"

CommandHistory::~CommandHistory() {
    while (Entry* entry = entries.TakeHead()) delete entry;
}

bool CommandHistory::Add(const Char* text) {
    auto* entry = new Entry;
    if (!entry || !entry->text.Assign(text)) {
        delete entry;
        return false;
    }
    entries.Prepend(entry);
    cursor = nullptr;
    return true;
}

const Char* CommandHistory::Older() {
    if (!cursor)
        cursor = entries.head;
    else if (cursor->next)
        cursor = cursor->next;
    return cursor ? cursor->text.Text() : nullptr;
}

const Char* CommandHistory::Newer() {
    if (!cursor) return nullptr;
    if (cursor->previous) cursor = cursor->previous;
    return cursor->text.Text();
}

const Char* CommandHistory::FindPrefix(const Char* prefix, uint32_t count) {
    if (count == 0 || entries.IsEmpty()) return nullptr;
    Entry* const start = cursor ? cursor : entries.head;
    Entry* entry = start;
    do {
        // The start itself is looked at last, at the end of the round: see docs/oddities.md.
        entry = entry->next ? entry->next : entries.head;
        if (entry->text.Length() >= count && Text::EqualCount(entry->text.Text(), prefix, count)) {
            cursor = entry;
            return entry->text.Text();
        }
    } while (entry != start);
    return nullptr;
}
