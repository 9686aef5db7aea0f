#pragma once

#include "base/win32/Windows.h"

class IniFile;

// Edits the external tools. True when the user confirmed: the Tool sections of `file` were rewritten,
// the tool list reloaded from it and the file saved to `path`.
bool RunToolsDialog(HWND owner, IniFile& file, const Char* path);
