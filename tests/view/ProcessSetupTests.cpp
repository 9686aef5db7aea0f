// What the program asks of the system when it starts.

#include "CallCounter.h"
#include "app/UserPrompt.h"
#include "app/win32/Application.h"
#include "app/win32/CrashReport.h"
#include "app/win32/FileDialogs.h"
#include "app/win32/HelpPage.h"
#include "base/Heap.h"
#include "base/win32/Ole.h"
#include "support/TestRecovery.h"
#include "view/OwnFrameTest.h"
#include "viewbase/win32/InputMethod.h"

#include <gtest/gtest.h>
#include <string>
#include <vector>

namespace {

std::vector<std::string> calls;

BOOL WINAPI SetHeapInformation(HANDLE heap, HEAP_INFORMATION_CLASS what, PVOID, SIZE_T) {
    const bool isRight = !heap && what == HeapEnableTerminationOnCorruption;
    calls.push_back(isRight ? "damaged heaps end it" : "something else of a heap");
    return TRUE;
}
BOOL WINAPI SetDirectories(DWORD flags) {
    calls.push_back(flags == LOAD_LIBRARY_SEARCH_SYSTEM32 ? "libraries of the system" : "other libraries");
    return TRUE;
}
BOOL WINAPI SetDirectory(LPCWSTR path) {
    calls.push_back(path && !*path ? "no other folder" : "another folder");
    return TRUE;
}
BOOL WINAPI SetThreadMode(DWORD mode, LPDWORD) {
    calls.push_back(mode & SEM_FAILCRITICALERRORS ? "no boxes" : "boxes");
    return TRUE;
}
BOOL WINAPI SetInformation(HANDLE object, int index, PVOID value, DWORD size) {
    const bool isRight = object == GetCurrentProcess() && index == UOI_TIMERPROC_EXCEPTION_SUPPRESSION &&
                         size == sizeof(BOOL) && !*static_cast<BOOL*>(value);
    calls.push_back(isRight ? "exceptions seen" : "something else");
    return TRUE;
}
BOOL WINAPI GuaranteeStack(PULONG bytes) {
    calls.push_back(*bytes >= 0x4000 ? "stack for a report" : "little stack");
    return TRUE;
}
HRESULT initializes = S_OK;
HRESULT WINAPI Initialize(LPVOID) {
    calls.push_back("ole begins");
    return initializes;
}
void WINAPI Uninitialize() { calls.push_back("ole ends"); }
BOOL WINAPI AskForFile(LPOPENFILENAMEW) {
    calls.push_back("dialog");
    return FALSE;
}
HINSTANCE WINAPI ShowPage(HWND, LPCWSTR, LPCWSTR, LPCWSTR, LPCWSTR, INT) {
    calls.push_back("page");
    return reinterpret_cast<HINSTANCE>(INT_PTR{33});
}
DWORD WINAPI FindPage(LPCWSTR) { return FILE_ATTRIBUTE_NORMAL; }

class NoPrompt final : public UserPrompt {
public:
    Answer AskUser(const Char*, MessageKind) override { return Answer::Ok; }
};

HRESULT WINAPI FindFolder(HWND, int, HANDLE, DWORD, LPWSTR) {
    calls.push_back("shell");
    return E_FAIL;
}

std::wstring loaded;
HMODULE WINAPI TakeName(LPCWSTR name) {
    loaded = name;
    return nullptr;
}

// Of a crash: nothing is loaded, shown or ended.
HMODULE WINAPI LoadNoLibrary(LPCWSTR) {
    calls.push_back("library");
    return nullptr;
}
// What hangs does so until the test lets it go, which ends its thread.
HANDLE endOfHang = CreateEventW(nullptr, TRUE, FALSE, nullptr);
HANDLE hungThread = nullptr;
HMODULE WINAPI HangInLoading(LPCWSTR) {
    calls.push_back("library");
    DuplicateHandle(GetCurrentProcess(), GetCurrentThread(), GetCurrentProcess(), &hungThread, SYNCHRONIZE, FALSE, 0);
    constexpr DWORD Longer =
        10000; // than any wait below, so that a report that is waited for ends the test all the same
    if (WaitForSingleObjectEx(endOfHang, Longer, FALSE) == WAIT_OBJECT_0) ExitThread(0);
    return nullptr;
}
DWORD WINAPI WaitLess(HANDLE object, DWORD milliseconds) {
    const bool isLong = milliseconds > 5000 && milliseconds != INFINITE;
    return WaitForSingleObjectEx(object, isLong ? 500 : milliseconds, FALSE);
}
int WINAPI TakeBox(HWND, LPCWSTR, LPCWSTR, UINT) {
    calls.push_back("box");
    return IDOK;
}
BOOL WINAPI EndNothing(HANDLE, UINT) {
    calls.push_back("end");
    return TRUE;
}

DWORD WINAPI WaitAsLong(HANDLE object, DWORD milliseconds) {
    return WaitForSingleObjectEx(object, milliseconds, FALSE);
}

// Reports a crash of this thread with these in the place of LoadLibraryW and WaitForSingleObject. What is called is in
// `calls`.
void ReportCrash(HMODULE(WINAPI* load)(LPCWSTR), DWORD(WINAPI* wait)(HANDLE, DWORD)) {
    const ReplacedImport replaced[] = {
        {"SetThreadErrorMode", reinterpret_cast<void*>(SetThreadMode)},
        {"LoadLibraryW", reinterpret_cast<void*>(load)},
        {"MessageBoxW", reinterpret_cast<void*>(TakeBox)},
        {"WaitForSingleObject", reinterpret_cast<void*>(wait)},
        {"TerminateProcess", reinterpret_cast<void*>(EndNothing)},
    };
    for (const ReplacedImport& import : replaced) EXPECT_TRUE(import.IsImported());
    CrashReport report(recoveryServices.folder);
    const LPTOP_LEVEL_EXCEPTION_FILTER filter = SetUnhandledExceptionFilter(nullptr);
    ASSERT_TRUE(filter);
    EXCEPTION_RECORD record = {};
    CONTEXT context = {};
    EXCEPTION_POINTERS pointers = {&record, &context};
    calls.clear();
    filter(&pointers);
}

ATOM WINAPI RegisterNothing(const WNDCLASSEXW*) { return 0; }

} // namespace

TEST(ProcessSetup, ComesBeforeEverythingElse) {
    const ReplacedImport replaced[] = {
        {"HeapSetInformation", reinterpret_cast<void*>(SetHeapInformation)},
        {"SetDefaultDllDirectories", reinterpret_cast<void*>(SetDirectories)},
        {"SetDllDirectoryW", reinterpret_cast<void*>(SetDirectory)},
        {"SetThreadErrorMode", reinterpret_cast<void*>(SetThreadMode)},
        {"SetUserObjectInformationW", reinterpret_cast<void*>(SetInformation)},
        {"SetThreadStackGuarantee", reinterpret_cast<void*>(GuaranteeStack)},
        {"SHGetFolderPathW", reinterpret_cast<void*>(FindFolder)},
        {"RegisterClassExW", reinterpret_cast<void*>(RegisterNothing)}, // so that no window comes up
    };
    for (const ReplacedImport& import : replaced) EXPECT_TRUE(import.IsImported());
    calls.clear();
    ::Application::Run(GetModuleHandleW(nullptr), u"orvane.exe");
    Heap::Start(); // for the tests that follow
    const std::vector<std::string> expected = {"damaged heaps end it",
                                               "libraries of the system",
                                               "no other folder",
                                               "no boxes",
                                               "exceptions seen",
                                               "stack for a report",
                                               "shell"};
    EXPECT_EQ(calls, expected);
}

TEST(ProcessSetup, OleIsThereForTheShellFromTheFirstCallThatNeedsItOn) {
    const ReplacedImport replaced[] = {
        {"OleInitialize", reinterpret_cast<void*>(Initialize)},
        {"OleUninitialize", reinterpret_cast<void*>(Uninitialize)},
        {"GetOpenFileNameW", reinterpret_cast<void*>(AskForFile)},
        {"ShellExecuteW", reinterpret_cast<void*>(ShowPage)},
        {"GetFileAttributesW", reinterpret_cast<void*>(FindPage)},
    };
    for (const ReplacedImport& import : replaced) EXPECT_TRUE(import.IsImported());
    WString chosen;
    bool tooMany = false;
    NoPrompt prompt;
    calls.clear();
    {
        Ole ole;
        const FileDialogs dialogs(ole);
        EXPECT_TRUE(calls.empty());
        EXPECT_FALSE(dialogs.AskOpen(chosen, tooMany));
        EXPECT_EQ(calls, (std::vector<std::string>{"ole begins", "dialog"}));
        EXPECT_FALSE(dialogs.AskOpen(chosen, tooMany));
        OpenHelpPage(nullptr, prompt, ole);
    }
    EXPECT_EQ(calls, (std::vector<std::string>{"ole begins", "dialog", "dialog", "page", "ole ends"}));
    calls.clear();
    {
        Ole ole;
        OpenHelpPage(nullptr, prompt, ole);
    }
    EXPECT_EQ(calls, (std::vector<std::string>{"ole begins", "page", "ole ends"}));
    calls.clear();
    { const Ole ole; }
    EXPECT_TRUE(calls.empty());
}

// Another part of the process may have it at the same time, and has to have it afterwards.
TEST(ProcessSetup, OleEndsAsOftenAsItHasBegun) {
    const ReplacedImport begin("OleInitialize", reinterpret_cast<void*>(Initialize));
    const ReplacedImport end("OleUninitialize", reinterpret_cast<void*>(Uninitialize));
    ASSERT_TRUE(begin.IsImported() && end.IsImported());
    calls.clear();
    {
        Ole outer;
        EXPECT_TRUE(outer.Use());
        {
            Ole inner;
            EXPECT_TRUE(inner.Use());
            EXPECT_TRUE(inner.Use());
        }
        EXPECT_EQ(calls, (std::vector<std::string>{"ole begins", "ole begins", "ole ends"}));
    }
    EXPECT_EQ(calls.size(), 4u);
    initializes = RPC_E_CHANGED_MODE;
    calls.clear();
    {
        Ole refused;
        EXPECT_FALSE(refused.Use());
        EXPECT_FALSE(refused.Use());
    }
    initializes = S_OK;
    EXPECT_EQ(calls, (std::vector<std::string>{"ole begins", "ole begins"})) << "what was not given is not given back";
}

using FrameOleTest = OwnFrameTest;

TEST_F(FrameOleTest, WhatAViewHasBegunEndsWithTheFrame) {
    const ReplacedImport begin("OleInitialize", reinterpret_cast<void*>(Initialize));
    const ReplacedImport end("OleUninitialize", reinterpret_cast<void*>(Uninitialize));
    ASSERT_TRUE(begin.IsImported() && end.IsImported());
    calls.clear();
    ViewHost& host = *main;
    EXPECT_TRUE(host.UseOle());
    EXPECT_TRUE(host.UseOle());
    EXPECT_EQ(calls, (std::vector<std::string>{"ole begins"}));
    LeaveFrame();
    EXPECT_EQ(calls, (std::vector<std::string>{"ole begins", "ole ends"}));
}

// A lock that the crashed thread holds may keep its report from ever being written. Without the box, the end.
TEST(ProcessSetup, AReportThatHangsDoesNotKeepTheProcess) {
    ASSERT_NO_FATAL_FAILURE(ReportCrash(HangInLoading, WaitLess));
    EXPECT_EQ(calls, (std::vector<std::string>{"no boxes", "library", "end"}));
    SetEvent(endOfHang);
    WaitForSingleObjectEx(hungThread, INFINITE, FALSE);
}

// The mode is each thread's own, and the library may be on a disk that is gone.
TEST(ProcessSetup, TheThreadThatReportsACrashHasNoBoxesEither) {
    ASSERT_NO_FATAL_FAILURE(ReportCrash(LoadNoLibrary, WaitAsLong));
    EXPECT_EQ(calls, (std::vector<std::string>{"no boxes", "library", "box", "end"}));
}

TEST(ProcessSetup, TheInputMethodLibraryIsThatOfTheSystem) {
    const ReplacedImport load("LoadLibraryW", reinterpret_cast<void*>(TakeName));
    ASSERT_TRUE(load.IsImported());
    InputMethod().PlaceComposition(nullptr, {}, 0, nullptr);
    wchar_t folder[MAX_PATH] = {};
    ASSERT_NE(GetSystemDirectoryW(folder, MAX_PATH), 0u);
    EXPECT_EQ(loaded, std::wstring(folder) + L"\\imm32.dll");
}
