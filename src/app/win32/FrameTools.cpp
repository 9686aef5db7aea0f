// The user's external tools, and commands whose output is collected.
#include "app/ToolVariables.h"
#include "app/win32/MainFrame.h"
#include "base/Text.h"
#include "base/win32/WindowText.h"
#include "document/CommandProcess.h"
#include "document/TextBuffer.h"
#include "resource.h"
#include "settings/ToolList.h"
#include "settings/win32/DialogBase.h"

namespace {

class ToolArgumentsDialog final : public DialogBase {
public:
    explicit ToolArgumentsDialog(ToolRecord& started) : tool(started) {}

    void Init() override {
        CentreOverParent();
        SetDlgItemTextW(window, IDC_TOOL_ARGUMENTS_COMMAND, Wide(tool.command.Text()));
        SetDlgItemTextW(window, IDC_TOOL_ARGUMENTS_EDIT, Wide(tool.lastArgs.Text()));
    }

    void Ok() override {
        // Without memory the dialog stays, so that the tool is not run with other arguments than those shown.
        if (TextOfWindow(GetDlgItem(window, IDC_TOOL_ARGUMENTS_EDIT), tool.lastArgs)) DialogBase::Ok();
    }

private:
    ToolRecord& tool;
};

// Starts a program of its own, which nobody waits for; one that cannot be started is passed over.
void StartDetached(WString& line, const WString& directory) {
    if (line.Length() > CommandProcess::MostCharacters) return;
    STARTUPINFOW startup = {};
    startup.cb = sizeof(startup);
    startup.dwFlags = STARTF_USESHOWWINDOW;
    startup.wShowWindow = SW_SHOWNORMAL;
    PROCESS_INFORMATION started = {};
    if (!CreateProcessW(nullptr, Wide(line.Data()), nullptr, nullptr, TRUE, CREATE_NEW_PROCESS_GROUP, nullptr,
                        Wide(directory.Text()), &startup, &started))
        return;
    CloseHandle(started.hThread);
    CloseHandle(started.hProcess);
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

void MainFrame::RebuildToolMenu() {
    UINT position = 0;
    const HMENU popup = FindToolItems(GetMenu(window), position);
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

void MainFrame::RunTool(ToolRecord& tool) {
    if (tool.promptArgs && ToolArgumentsDialog(tool).Run(IDD_TOOL_ARGUMENTS, window) != IDOK) return;
    WString line;
    if (!ToolCommandLine(tool, line)) return;
    if (tool.redirectOutput) {
        CollectOutput(line.Text(), tool.startDir.Text());
        return;
    }
    WString expanded;
    WString directory;
    if (ExpandToolVariables(*this, line.Text(), expanded) &&
        ExpandStartDirectory(*this, tool.startDir.Text(), directory))
        StartDetached(expanded, directory);
}

// An empty or blank line of a script or of the command window names nothing that could be run.
bool MainFrame::RunCapturedCommand(const Char* command, const Char* startDirectory) {
    return !Text::IsBlankText(command) && CollectOutput(command, startDirectory);
}

bool MainFrame::CollectOutput(const Char* command, const Char* startDirectory) {
    WString line;
    WString directory;
    if (!ExpandToolVariables(*this, command, line) || !ExpandStartDirectory(*this, startDirectory, directory))
        return false;
    TextBuffer* const output = commands.console ? ConsoleOutput() : OutputNamed(line.Text());
    return output && output->RunCommand(line.Text(), directory.Text());
}

TextBuffer* MainFrame::ConsoleOutput() {
    Document* const output = SharedOutput();
    Pane* const pane = TargetPane();
    if (!output || !pane) return nullptr;
    ShowDocument(output, pane);
    return static_cast<TextBuffer*>(output);
}

// The emptied output document of that title, made if there is none, shown beside the active pane.
TextBuffer* MainFrame::OutputNamed(const Char* title) {
    Pane* const active = TargetPane();
    if (!active) return nullptr;
    // A document that the user types in may be called like the command, and is not to be emptied.
    Document* const known = documents.FindOutput(title);
    TextBuffer* const output = known ? static_cast<TextBuffer*>(known) : NewOutput(title);
    if (!output) return nullptr;
    if (known) output->EmptyAndResetUndo();
    ShowDocument(output, panes.Next(*active));
    return output;
}
