#include "document/CommandProcess.h"

#include "base/Platform.h"
#include "base/TextFormat.h"
#include "base/posix/NativeText.h"
#include "document/OutputRun.h"

#include <csignal>
#include <cstdlib>
#include <fcntl.h>
#include <spawn.h>
#include <string.h>
#include <sys/stat.h>
#include <sys/statvfs.h>
#include <sys/wait.h>
#include <unistd.h>

namespace {

// Returns false; without memory no reason is recorded.
bool Fail(OutputRun& run, const Char* what) {
    static_cast<void>(Text::AppendFormat(run.failure, u"%s.", what));
    return false;
}

int Descriptor(intptr_t handle) { return static_cast<int>(handle); }

void CloseOne(intptr_t& handle) {
    if (handle != -1) close(Descriptor(handle));
    handle = -1;
}

// What is to be done between the start of the process and that of its program.
struct SpawnRules {
    posix_spawn_file_actions_t files;
    posix_spawnattr_t attributes;

    SpawnRules() {
        posix_spawn_file_actions_init(&files);
        posix_spawnattr_init(&attributes);
    }
    ~SpawnRules() {
        posix_spawn_file_actions_destroy(&files);
        posix_spawnattr_destroy(&attributes);
    }
    SpawnRules(const SpawnRules&) = delete;
    SpawnRules& operator=(const SpawnRules&) = delete;

    bool Set(int output, const char* directory) {
        for (int standard = STDIN_FILENO; standard <= STDERR_FILENO; ++standard)
            if (posix_spawn_file_actions_adddup2(&files, output, standard) != 0) return false;
        if (*directory && posix_spawn_file_actions_addchdir_np(&files, directory) != 0) return false;
        return posix_spawnattr_setflags(&attributes, POSIX_SPAWN_SETPGROUP) == 0;
    }
};

} // namespace

bool CommandProcess::OpenOutput(OutputRun& run) {
    const char* directory = std::getenv("TMPDIR");
    if (!directory || !*directory) directory = "/tmp";
    static constexpr char Name[] = "/OrvaneXXXXXX";
    const size_t room = strlen(directory) + sizeof(Name);
    char* const path = Heap::AllocateArray<char>(room);
    if (!path) return false;
    stpcpy(stpcpy(path, directory), Name);
    run.outputWrite = Platform::FileCallShouldFail() ? -1 : mkostemp(path, O_CLOEXEC);
    if (run.outputWrite != -1) {
        run.outputRead = Platform::FileCallShouldFail() ? -1 : open(path, O_RDONLY | O_CLOEXEC | O_NOFOLLOW);
        unlink(path);
    }
    Heap::Free(path);
    return run.outputRead != -1 || Fail(run, Failure::NoFile);
}

bool CommandProcess::Start(OutputRun& run, const Char* command) {
    const NativeText line(command ? command : u"", NativeText::Kind::Plain);
    const NativeText directory(run.startDir.Text(), NativeText::Kind::Path);
    SpawnRules rules;
    if (!line.Text() || !directory.Text() || !rules.Set(Descriptor(run.outputWrite), directory.Text())) return false;
    const char* const arguments[] = {"sh", "-c", line.Text(), nullptr};
    pid_t process = 0;
    if (posix_spawn(&process, "/bin/sh", &rules.files, &rules.attributes, const_cast<char* const*>(arguments),
                    environ) != 0)
        return Fail(run, Failure::NoProcess);
    // A handle is a pointer in the record that both systems share. NOLINTNEXTLINE(performance-no-int-to-ptr)
    run.process = reinterpret_cast<void*>(static_cast<intptr_t>(process));
    run.processId = static_cast<uint32_t>(process);
    return true;
}

bool CommandProcess::HasEnded(const OutputRun& run) {
    return waitpid(static_cast<pid_t>(run.processId), nullptr, WNOHANG) != 0;
}

bool CommandProcess::OutputSize(const OutputRun& run, uint64_t& size) {
    struct stat status;
    if (Platform::FileCallShouldFail() || fstat(Descriptor(run.outputRead), &status) != 0) return false;
    size = static_cast<uint64_t>(status.st_size);
    return true;
}

bool CommandProcess::ReadOutput(const OutputRun& run, uint64_t offset, uint8_t* out, uint32_t count, uint32_t& read) {
    if (Platform::FileCallShouldFail()) return false;
    const ssize_t got = pread(Descriptor(run.outputRead), out, count, static_cast<off_t>(offset));
    if (got < 0) return false;
    read = static_cast<uint32_t>(got);
    return true;
}

void CommandProcess::AskToClose(const OutputRun&) {
    // No process has windows here.
}

// The process leads a group of its own, which what it starts belongs to.
void CommandProcess::EndAll(const OutputRun& run) { kill(-static_cast<pid_t>(run.processId), SIGKILL); }

bool CommandProcess::HasRoom(const OutputRun& run) {
    struct statvfs disk;
    return fstatvfs(Descriptor(run.outputRead), &disk) != 0 || disk.f_bavail > 0;
}

void CommandProcess::Close(OutputRun& run) {
    run.process = nullptr;
    run.processId = 0;
    CloseOne(run.outputRead);
    CloseOne(run.outputWrite);
}
