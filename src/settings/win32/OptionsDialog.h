#pragma once

#include "base/win32/Windows.h"

class IniFile;
class SettingsChanges;

// Edits the settings on three pages. True when the user confirmed: the settings are then live, their
// handlers have run, `file` was saved to `path` and `changes` says what differs; repainting is the caller's.
bool RunOptionsDialog(HWND owner, IniFile& file, const Char* path, SettingsChanges& changes);
