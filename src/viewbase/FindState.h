#pragma once

#include "base/Assert.h"
#include "base/Types.h"
#include "base/WString.h"

// The last texts of a dialog field, most recent last.
class History {
public:
    static constexpr uint32_t Limit = 20;

    // Moves an equal entry to the end or appends a copy; the oldest of 20 makes way. False without
    // memory, the history then being as it was.
    [[nodiscard]] bool Add(const Char* text, uint32_t length);
    [[nodiscard]] bool Add(const WString& text) { return Add(text.Text(), text.Length()); }
    uint32_t Count() const { return count; }
    const WString& operator[](uint32_t index) const {
        ORVANE_ASSERT(index < count);
        return entries[index];
    }
    const WString& Newest() const { return (*this)[count - 1]; } // of one that is not empty
    void Release();

private:
    WString entries[Limit];
    uint32_t count = 0;
};

// What the find and replace dialogs of all views share.
struct FindState {
    WString searchText;
    bool hexPattern = false; // read by the hex view only
    History searchHistory;
    WString replaceText;
    History replaceHistory;
    bool searchUp = false;
    bool matchCase = false;
    bool wholeWord = false;
    // The last search was cancelled, by the user or by bytes that cannot be read: it proved nothing.
    bool cancelled = false;

    // Frees everything; for shutdown, before the heap goes.
    void Release();
};

extern FindState findState;
