#pragma once

#include "base/win32/Windows.h"

class DocumentList;
class MenuCommands;

// Makes a menu of the frame say what is there and grey what cannot be done; for WM_INITMENUPOPUP.
void UpdateOpeningMenu(HMENU menu, const DocumentList& documents, const MenuCommands& commands);
