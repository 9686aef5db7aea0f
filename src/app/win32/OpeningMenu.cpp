#include "app/win32/OpeningMenu.h"

#include "app/DocumentList.h"
#include "app/FrameTitle.h"
#include "app/win32/MenuCommands.h"
#include "resource.h"

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
    constexpr uint32_t MaxItems = IDM_FIRST_TOOL - IDM_FIRST_DOCUMENT;
    for (const DocumentList::Node* node = documents.Head(); node && index < MaxItems; node = node->next, ++index) {
        WString text;
        if (BuildWindowItem(index, *node->document, text))
            AppendMenuW(menu, MF_STRING, IDM_FIRST_DOCUMENT + index, Wide(text.Text()));
    }
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
