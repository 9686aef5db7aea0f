#pragma once

#include "base/Types.h"

class CommandContext;
class OutputDocuments;
class TextBuffer;
class WString;
struct ToolRecord;

// What starting a tool needs of the system.
class ToolStarter {
public:
    // Shows the dialog of the tool's last arguments, which it changes. False when cancelled.
    [[nodiscard]] virtual bool AskArguments(ToolRecord& tool) = 0;
    // Starts an independent program, which is not waited for; one that cannot be started is ignored.
    virtual void StartDetached(WString& commandLine, const WString& directory) = 0;

protected:
    ~ToolStarter() = default;
};

// Runs the user's tools and other external commands.
class ToolRunner {
public:
    ToolRunner(CommandContext& frame, OutputDocuments& collected, ToolStarter& system)
        : context(frame), outputs(collected), starter(system) {}
    ToolRunner(const ToolRunner&) = delete;
    ToolRunner& operator=(const ToolRunner&) = delete;

    void Run(ToolRecord& tool);
    // Runs a command whose output is collected. Both texts may contain tool variables; an empty directory is
    // the current one. False when the run was not started. Reports the reason unless the command is blank; what
    // the document shows of a run that is not over yet is left alone.
    bool RunCaptured(const Char* command, const Char* startDirectory);
    // Asks the command that runs into a document to close its windows. When it was asked before, the user is asked
    // whether to end it with everything it has started.
    void Stop(TextBuffer& output);

private:
    bool Capture(const Char* command, const Char* startDirectory);
    bool Start(TextBuffer& output, const Char* line, const Char* directory);
    void Report(const Char* format, const Char* name);

    CommandContext& context;
    OutputDocuments& outputs;
    ToolStarter& starter;
};
