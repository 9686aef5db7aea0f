#include "app/win32/ToolMenu.h"

#include "resource.h"
#include "settings/ToolList.h"

namespace {

static_assert(ToolCommandBase == IDM_FIRST_TOOL, "hot keys and the menu send the same commands");

// The popup of the menu bar that holds the tools, and the position of the first of them.
HMENU FindToolItems(HMENU bar, UINT& first) {
    for (int i = 0; const HMENU popup = GetSubMenu(bar, i); ++i) {
        const UINT count = static_cast<UINT>(GetMenuItemCount(popup));
        for (first = 0; first < count; ++first)
            if (GetMenuItemID(popup, static_cast<int>(first)) == IDM_FIRST_TOOL) return popup;
    }
    return nullptr;
}

} // namespace

void RebuildToolMenu(HMENU bar) {
    UINT position = 0;
    const HMENU popup = FindToolItems(bar, position);
    if (!popup) return;
    // A separator follows the tools.
    while (GetMenuItemID(popup, static_cast<int>(position)) >= IDM_FIRST_TOOL)
        if (!DeleteMenu(popup, position, MF_BYPOSITION)) break;
    UINT number = IDM_FIRST_TOOL;
    // A command has 16 bits for its number.
    for (const ToolRecord* tool = toolList.tools.head; tool && number <= UINT16_MAX; tool = tool->next)
        InsertMenuW(popup, position++, MF_BYPOSITION | MF_STRING, number++, Wide(tool->displayName.Text()));
    if (number == IDM_FIRST_TOOL)
        InsertMenuW(popup, position, MF_BYPOSITION | MF_STRING | MF_GRAYED, number, L"< no tools >");
}
