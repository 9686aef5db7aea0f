#include "app/ToolRunner.h"

#include "app/CommandContext.h"
#include "app/OutputDocuments.h"
#include "app/ToolVariables.h"
#include "base/Text.h"
#include "document/TextBuffer.h"
#include "settings/ToolList.h"

void ToolRunner::Run(ToolRecord& tool) {
    if (tool.promptArgs && !starter.AskArguments(tool)) return;
    WString line;
    if (!ToolCommandLine(tool, line)) return;
    if (tool.redirectOutput) {
        Capture(line.Text(), tool.startDir.Text());
        return;
    }
    WString expanded;
    WString directory;
    if (ExpandToolVariables(context, line.Text(), expanded) &&
        ExpandStartDirectory(context, tool.startDir.Text(), directory))
        starter.StartDetached(expanded, directory);
}

// An empty or blank line of a script or of the command window names nothing that could be run.
bool ToolRunner::RunCaptured(const Char* command, const Char* startDirectory) {
    return !Text::IsBlankText(command) && Capture(command, startDirectory);
}

bool ToolRunner::Capture(const Char* command, const Char* startDirectory) {
    WString line;
    WString directory;
    if (!ExpandToolVariables(context, command, line) || !ExpandStartDirectory(context, startDirectory, directory))
        return false;
    if (!InterpreterRunsIn(directory.Text())) {
        WString message;
        if (Text::AppendFormat(message, u"The command interpreter cannot run in this directory: %s", directory.Text()))
            context.AskUser(message.Text(), MessageKind::Warning);
        return false;
    }
    TextBuffer* const output = context.commands.console ? outputs.ShowShared() : outputs.ShowNamed(line.Text());
    return output && output->RunCommand(line.Text(), directory.Text());
}
