#include "settings/SetOptionCommand.h"

#include "base/Text.h"
#include "base/WString.h"

namespace {

void SkipBlanks(const Char*& cursor) {
    while (Text::IsBlank(*cursor)) ++cursor;
}

// Reads up to the next space (a tab does not end a word) or, after a double quote, up to the next one,
// and moves past it. False without memory. `closed` says whether that end was there.
bool ReadToken(const Char*& cursor, WString& token, bool& closed) {
    const Char end = *cursor == u'"' ? u'"' : u' ';
    if (end == u'"') ++cursor;
    const Char* start = cursor;
    while (*cursor != 0 && *cursor != end) ++cursor;
    const bool kept = token.Assign(start, cursor - start);
    closed = *cursor != 0;
    if (closed) ++cursor;
    return kept;
}

} // namespace

bool ExecuteSetOption(const Char* argument, SettingsChanges& changes) {
    WString key;
    WString value;
    bool keyClosed = false;
    bool valueClosed = false; // of no consequence
    SkipBlanks(argument);
    if (!ReadToken(argument, key, keyClosed) || !keyClosed) return false;
    SkipBlanks(argument);
    if (!ReadToken(argument, value, valueClosed)) return false;
    changes = SetOption(nullptr, key.Text(), value.Text());
    return true;
}
