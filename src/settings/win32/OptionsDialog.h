#pragma once

#include "base/win32/Windows.h"

class IniFile;

// Edits the settings on three pages. True when the user confirmed: the settings are then live, their
// handlers have run and `file` was saved to `path`; repainting is the caller's.
bool RunOptionsDialog(HWND owner, IniFile& file, const Char* path);
