// The frame's menus as they open, and the small commands of the Help menu.
#include "app/FrameTitle.h"
#include "app/win32/Application.h"
#include "app/win32/MainFrame.h"
#include "resource.h"
#include "settings/IniFile.h"
#include "settings/win32/DialogBase.h"
#include "settings/win32/OptionsDialog.h"
#include "settings/win32/ToolsDialog.h"

namespace {

constexpr wchar_t HelpPage[] = L"https://orvane.example/help";

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

class AboutDialog final : public DialogBase {
public:
    void Init() override { CentreOverParent(); }
};

} // namespace

void MainFrame::OnMenuOpens(HMENU menu) {
    RebuildDocumentItems(menu, documents);
    const int count = GetMenuItemCount(menu);
    for (int position = 0; position < count; ++position) {
        const UINT number = GetMenuItemID(menu, position);
        if (number == static_cast<UINT>(-1) || number >= IDM_FIRST_DOCUMENT) continue;
        const UINT state = IsMenuCommandEnabled(number) ? MF_ENABLED : MF_GRAYED;
        EnableMenuItem(menu, static_cast<UINT>(position), MF_BYPOSITION | state);
    }
}

void MainFrame::OpenHelp() { ShellExecuteW(window, L"open", HelpPage, nullptr, nullptr, SW_SHOWNORMAL); }

void MainFrame::ShowAbout() { AboutDialog().Run(IDD_ABOUT, window); }

void MainFrame::ShowTools() {
    using Application::globals;
    if (!RunToolsDialog(window, *globals.iniFile, globals.settingsPath.Text())) return;
    Application::RebuildToolAccelerators();
    RebuildToolMenu();
}

void MainFrame::ShowOptions() {
    using Application::globals;
    if (RunOptionsDialog(window, *globals.iniFile, globals.settingsPath.Text())) ReapplySettings();
}
