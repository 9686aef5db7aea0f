#pragma once

#include "view/CallCounter.h"

#include <algorithm>
#include <gtest/gtest.h>
#include <string>
#include <vector>

// While it lives, the program's calls of CreateProcess are recorded and start nothing. They succeed with
// handles of events in place of the process and its thread, and with the number of the test's own
// process. One at a time.
class ProcessRecorder {
public:
    struct Call {
        bool namesProgram;
        std::wstring line;
        bool hasSecurity;
        bool inherits;
        DWORD flags;
        bool hasEnvironment;
        std::wstring directory;
        STARTUPINFOW startup;
        HANDLE process;
        HANDLE thread;
    };

    ProcessRecorder()
        : create("CreateProcessW", reinterpret_cast<void*>(Create)),
          close("CloseHandle", reinterpret_cast<void*>(Close)) {
        EXPECT_TRUE(create.IsImported() && close.IsImported());
        original = reinterpret_cast<decltype(&CloseHandle)>(close.Original());
        calls.clear();
        closed.clear();
    }
    static const std::vector<Call>& Calls() { return calls; }

    static bool IsClosed(HANDLE handle) { return std::count(closed.begin(), closed.end(), handle) == 1; }

private:
    static BOOL WINAPI Create(LPCWSTR program, LPWSTR line, LPSECURITY_ATTRIBUTES ofProcess,
                              LPSECURITY_ATTRIBUTES ofThread, BOOL inherits, DWORD flags, LPVOID environment,
                              LPCWSTR directory, LPSTARTUPINFOW startup, LPPROCESS_INFORMATION started) {
        started->hProcess = CreateEventW(nullptr, TRUE, FALSE, nullptr);
        started->hThread = CreateEventW(nullptr, TRUE, FALSE, nullptr);
        started->dwProcessId = GetCurrentProcessId();
        calls.push_back({program != nullptr, line, ofProcess || ofThread, inherits != 0, flags, environment != nullptr,
                         directory ? directory : L"", *startup, started->hProcess, started->hThread});
        return TRUE;
    }

    static BOOL WINAPI Close(HANDLE handle) {
        closed.push_back(handle);
        return original(handle);
    }

    static inline std::vector<Call> calls;
    static inline std::vector<HANDLE> closed;
    static inline decltype(&CloseHandle) original;
    ReplacedImport create;
    ReplacedImport close;
};
