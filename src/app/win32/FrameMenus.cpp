#include "app/win32/FrameMenus.h"

#include "app/DocumentList.h"
#include "app/FrameTitle.h"
#include "app/win32/MenuCommands.h"
#include "resource.h"
#include "settings/ToolList.h"

namespace {

int PositionOf(HMENU menu, UINT number) {
    const int count = GetMenuItemCount(menu);
    for (int position = 0; position < count; ++position)
        if (GetMenuItemID(menu, position) == number) return position;
    return -1;
}

void DeleteFrom(HMENU menu, int first) {
    while (GetMenuItemCount(menu) > first) DeleteMenu(menu, static_cast<UINT>(first), MF_BYPOSITION);
}

void RebuildDocumentItems(HMENU menu, const DocumentList& documents) {
    const int first = PositionOf(menu, IDM_FIRST_DOCUMENT);
    if (first < 0) return;
    DeleteFrom(menu, first);
    if (documents.IsEmpty()) {
        AppendMenuW(menu, MF_STRING, IDM_FIRST_DOCUMENT, Wide(NoDocumentsItem));
        return;
    }
    uint32_t index = 0;
    // The numbers of more documents would be those of the tools.
    constexpr uint32_t MostItems = IDM_FIRST_TOOL - IDM_FIRST_DOCUMENT;
    for (const DocumentList::Node* node = documents.Head(); node && index < MostItems; node = node->next, ++index) {
        WString text;
        if (BuildWindowItem(index, *node->document, text))
            AppendMenuW(menu, MF_STRING, IDM_FIRST_DOCUMENT + index, Wide(text.Text()));
    }
}

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

void UpdateOpeningMenu(HMENU menu, const DocumentList& documents, const MenuCommands& commands) {
    RebuildDocumentItems(menu, documents);
    const int count = GetMenuItemCount(menu);
    for (int position = 0; position < count; ++position) {
        const UINT number = GetMenuItemID(menu, position);
        if (number == static_cast<UINT>(-1) || number >= IDM_FIRST_DOCUMENT) continue;
        const UINT state = commands.IsEnabled(number) ? MF_ENABLED : MF_GRAYED;
        EnableMenuItem(menu, static_cast<UINT>(position), MF_BYPOSITION | state);
    }
}

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
