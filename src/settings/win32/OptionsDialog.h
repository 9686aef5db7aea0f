#pragma once

#include "base/win32/Windows.h"

class IniFile;
class SettingsChanges;

enum class OptionsOutcome {
    Cancelled,
    Unstored, // confirmed, but memory ran out: the model has some old values, and the file should not be written
    Stored,   // confirmed, and the model holds the settings
};

// Edits the settings on three pages. Once the user has confirmed, the settings are live, their handlers have run and
// `changes` says what differs. Repainting and saving are the caller's. `page`, 0 to 2, is the page that is shown first,
// and then the one that was shown last.
[[nodiscard]] OptionsOutcome RunOptionsDialog(HWND owner, IniFile& file, SettingsChanges& changes, uint32_t& page);
