#pragma once

#include "base/win32/Windows.h"

class IniFile;

// Edits the external tools. True when the user confirmed: the Tool sections of `file` were rewritten,
// and the tool list reloaded from it. Saving is the caller's.
bool RunToolsDialog(HWND owner, IniFile& file);
