#pragma once

#include "base/win32/Windows.h"

class Ole;
class UserPrompt;

// Opens the manual, a page beside the program, with what the system shows such pages in. Where that fails, the user is
// told.
void OpenHelpPage(HWND owner, UserPrompt& prompt, Ole& ole);
