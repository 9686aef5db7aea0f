#pragma once

#include "base/win32/Windows.h"

class IniFile;
class SettingsChanges;

// Edits the settings on three pages. True when the user confirmed: the settings are then live, their
// handlers have run, `file` holds them and `changes` says what differs. Repainting and saving are the caller's.
bool RunOptionsDialog(HWND owner, IniFile& file, SettingsChanges& changes);
