#include "app/win32/SystemToolStarter.h"

#include "base/win32/Handles.h"
#include "base/win32/WindowText.h"
#include "document/CommandProcess.h"
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

} // namespace

bool SystemToolStarter::AskArguments(ToolRecord& tool) {
    return ToolArgumentsDialog(tool).Run(IDD_TOOL_ARGUMENTS, frame) == IDOK;
}

void SystemToolStarter::StartDetached(WString& commandLine, const WString& directory) {
    if (commandLine.Length() > CommandProcess::MaxCharacters) return;
    STARTUPINFOW startup = {};
    startup.cb = sizeof(startup);
    startup.dwFlags = STARTF_USESHOWWINDOW;
    startup.wShowWindow = SW_SHOWNORMAL;
    PROCESS_INFORMATION started = {};
    CreateProcessW(nullptr, Wide(commandLine.Data()), nullptr, nullptr, TRUE, CREATE_NEW_PROCESS_GROUP, nullptr,
                   Wide(directory.Text()), &startup, &started);
    const KernelHandle thread(started.hThread);
    const KernelHandle process(started.hProcess);
}
