#pragma once

#include "document/CommandProcess.h"
#include "document/OutputRun.h"
#include "document/PollTimer.h"
#include "document/TextStore.h"

// Runs a command and appends what it prints to a TextStore. Whoever owns it polls, keeps the timer, and tells
// the views.
class OutputCollector {
public:
    explicit OutputCollector(TextStore& target) : store(target) {}
    ~OutputCollector() { Close(); }
    OutputCollector(const OutputCollector&) = delete;
    OutputCollector& operator=(const OutputCollector&) = delete;

    const OutputRun& Run() const { return run; }
    bool IsRunning() const { return run.process != nullptr; }

    // Makes the file for the output and settles its code page, the one that is set; then starts a command (null for
    // none) under the command interpreter. After a failure of either, Close releases what was opened.
    [[nodiscard]] bool Open();
    [[nodiscard]] bool Start(const Char* command, const Char* directory);
    // Why the last start failed, for the user.
    const Char* Failure() const;
    // Appends what the output has grown by, as much as one slice of time is enough for. True when the run is
    // over: the process has ended and all that is to be read was.
    [[nodiscard]] bool Poll();
    // Milliseconds for which a timer was set; 0 for none.
    uint32_t Period() const { return run.pollTimer; }
    // Has the timer poll `document` as often as the output wants. False when it refuses, and without one: what was set
    // before stays.
    [[nodiscard]] bool SetTimer(PollTimer* timer, TextBuffer& document);
    // Asks the windows of the process to close; the process itself is left alone.
    void AskToClose();
    bool WasAskedToClose() const { return run.wasAskedToClose; }
    // See CommandProcess. Nothing happens unless a command runs.
    void EndAll() const;
    // Whether the file of the output could grow.
    bool HasRoom() const { return CommandProcess::HasRoom(run); }
    // Releases everything of a run; its process goes on without it.
    void Close();

private:
    enum class Appending { Done, OutOfTime, Failed };

    [[nodiscard]] Appending AppendNew();
    // Appends up to `count` bytes of the output. An unfinished character at their end is left alone unless this
    // `isRest`, after which nothing comes.
    [[nodiscard]] Appending AppendFromFile(uint64_t count, bool isRest);
    void AppendNote(const Char* note);
    [[nodiscard]] bool AppendChunk(uint32_t count, bool isRest);

    TextStore& store;
    OutputRun run;
    uint32_t wantedPeriod = 0; // milliseconds until the next poll
};
