#include "app/ToolRunner.h"

#include "app/CommandContext.h"
#include "app/DocumentHold.h"
#include "app/OutputDocuments.h"
#include "app/ToolVariables.h"
#include "base/Text.h"
#include "base/TextFormat.h"
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
        Report(u"The command interpreter cannot run in this directory: %s", directory.Text());
        return false;
    }
    TextBuffer* const output = context.commands.console ? outputs.ShowShared() : outputs.ShowNamed(line.Text());
    return output && Start(*output, line.Text(), directory.Text());
}

bool ToolRunner::Start(TextBuffer& output, const Char* line, const Char* directory) {
    if (output.Output().IsRunning()) {
        Report(context.commands.console ? u"A command is still running in the document %s."
                                        : u"This command is still running: %s",
               output.GetName());
        return false;
    }
    if (output.RunCommand(line, directory)) return true;
    const bool inLine = output.Length() > 0 && output.Content()[output.Length() - 1] != u'\n';
    WString text;
    if (Text::AppendFormat(text, u"%sFailed starting command: %s\n%s\n", inLine ? u"\n" : u"", line,
                           output.Output().Failure()))
        static_cast<void>(output.AppendOutputText(text.Data())); // without memory there is no message
    return false;
}

void ToolRunner::Stop(TextBuffer& output) {
    const DocumentHold hold(output);
    const OutputCollector& collector = output.Output();
    const bool wasAsked = collector.WasAskedToClose();
    const uint32_t process = collector.Run().processId;
    output.StopProcess();
    WString question;
    if (!wasAsked || !Text::AppendFormat(question, u"%s is still running.\nEnd it with everything it has started?",
                                         output.GetName()))
        return;
    const Answer answer = context.AskUser(question.Text(), MessageKind::YesNo);
    // While the question was open the command may have ended, and another one may run.
    if (answer == Answer::Yes && collector.Run().processId == process) collector.EndAll();
}

void ToolRunner::Report(const Char* format, const Char* name) {
    WString message;
    if (Text::AppendFormat(message, format, name)) context.AskUser(message.Text(), MessageKind::Warning);
}
