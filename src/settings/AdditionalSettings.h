#pragma once

#include "base/Types.h"

class IniSection;

// The additional settings: opt-in changes of long-standing behaviour. All are numbers and 0 unless the settings file
// says otherwise; they live in its General section next to those of SettingsRecord, and the dialogs do not show them.
// Nothing validates a value.
struct AdditionalSettings {
    uint32_t Utf8 = 0;            // files in UTF-8 are recognised and decoded as such
    uint32_t AltGr = 0;           // characters typed with Ctrl and Alt down are inserted
    uint32_t WholeCharacters = 0; // caret and matches never split what is seen as one character
    uint32_t OutputCodePage = 0;  // how the output of commands is decoded: a page's number as in CodePage
    uint32_t UnixNewFiles = 0;    // new documents have LF line ends
    uint32_t MarkActivePane = 0;  // of several panes the active one has an edge in the highlight colour
};

// The process-wide values that everything reads.
extern AdditionalSettings additionalSettings;

// Each takes its key's value, or 0 without one. `general` may be null.
void ApplyAdditionalSettings(const IniSection* general);
// Adds to `stored`, in the order of the record, those that `general` (may be null) has a key for and those that are
// not 0: the file of a user who has set none of them stays as it is. False without memory; `stored` may then have
// some of them.
[[nodiscard]] bool StoreAdditionalSettings(const IniSection* general, IniSection& stored);
// Sets one by its name, matched without regard to case. False, with nothing changed, when there is none of that name.
bool SetAdditionalOption(const Char* key, const Char* value);
// The key of one by its place in the record, 0 for the first; null past the last.
const Char* AdditionalSettingKey(uint32_t place);
