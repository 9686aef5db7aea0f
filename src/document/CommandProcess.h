#pragma once

#include "base/Types.h"

struct OutputRun;

// The system's side of a command's run: the process and the temporary file that its output goes to.
namespace CommandProcess {

// How long the command line of a new process may be. Not every system refuses a longer one: Wine runs what
// is left of it when its length is cut to 16 bits.
constexpr uint32_t MaxCharacters = 32766;

// Why a run could not be started, for the user; the system may add its own words.
namespace Failure {
constexpr Char NoFile[] = u"The file for its output cannot be made";
constexpr Char NoRoom[] = u"The disk that its output would go to is full.";
constexpr Char NoProcess[] = u"The command interpreter cannot be started";
} // namespace Failure

// Makes a temporary file that only the user may read, under a name that nothing had, and opens both of
// its sides. Here and in Start what was opened before a failure stays in `run` for Close; run.failure
// says why, unless there is no memory.
[[nodiscard]] bool OpenOutput(OutputRun& run);
// Starts `command` (null for none) hidden under the command interpreter, in run.startDir, with the file
// as its standard input, output and error.
[[nodiscard]] bool Start(OutputRun& run, const Char* command);
bool HasEnded(const OutputRun& run);

[[nodiscard]] bool OutputSize(const OutputRun& run, uint64_t& size);
// Reads up to `count` bytes at `offset` of the output; fewer (or none) at its end.
[[nodiscard]] bool ReadOutput(const OutputRun& run, uint64_t offset, uint8_t* out, uint32_t count, uint32_t& read);

// Asks the windows of the process to close; the process itself is left alone.
void AskToClose(const OutputRun& run);
// Ends the process with everything that it has started, and that has started in turn, but for programs that were
// started to live on their own. To be done at the user's word only.
void EndAll(const OutputRun& run);
// Whether the disk that the output goes to takes more. True also where that cannot be found out.
bool HasRoom(const OutputRun& run);
// Closes whatever is open; the temporary file goes with its last handle.
void Close(OutputRun& run);

} // namespace CommandProcess
