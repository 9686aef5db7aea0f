#pragma once

#include "base/Heap.h"
#include "base/List.h"
#include "base/WString.h"

// The lines typed into the command window, newest first, with a cursor for walking them. Texts that
// are returned belong to the history; null means that the window's text stays.
class CommandHistory {
public:
    CommandHistory() = default;
    ~CommandHistory();
    CommandHistory(const CommandHistory&) = delete;
    CommandHistory& operator=(const CommandHistory&) = delete;

    // Adds the newest entry and ends walking. False without memory.
    [[nodiscard]] bool Add(const Char* text);
    // The entry one step older (from no cursor: the newest) or newer; at the end the same one again.
    const Char* Older();
    const Char* Newer();
    // Walks towards older entries, wrapping once, to the next that begins with the `count` characters
    // of `prefix`, case-sensitively. Null when there is none or `count` is 0.
    const Char* FindPrefix(const Char* prefix, uint32_t count);

private:
    struct Entry : HeapObject {
        WString text;
        Entry* next = nullptr; // older
        Entry* previous = nullptr;
    };

    List<Entry> entries;
    Entry* cursor = nullptr;
};
