// From the start of the program until it waits for the user with its text painted, against a program that does nothing
// but show a window of the same size with the same text; with a small file, with large ones and with many. These times
// are what a user waits.
//
// Called with arguments it is that other program itself:
//     StartBench LEFT TOP WIDTH HEIGHT FILE
// It reads the file, makes UTF-16 of it and shows it.
#include "PlainText.h"
#include "Ratio.h"
#include "base/win32/Handles.h"
#include "base/win32/Windows.h"

#include <algorithm>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <psapi.h>
#include <string>
#include <vector>

namespace {

constexpr int Lines = 60; // more than the window shows
constexpr char Line[] = "    for (size_t at = 0; at < count; ++at) total += items[at]; // a line of text\r\n";
constexpr size_t LineLength = sizeof(Line) - 1;
constexpr DWORD Patience = 60'000; // milliseconds

// The bare program.

struct WideText {
    Char* items = nullptr;
    size_t count = 0;
};

WideText shownText; // never freed

WideText ReadWide(const char* name) {
    const KernelHandle file(CreateFileA(name, GENERIC_READ, FILE_SHARE_READ, nullptr, OPEN_EXISTING, 0, nullptr));
    DWORD count = GetFileSize(file.Get(), nullptr);
    auto* const bytes = static_cast<uint8_t*>(std::malloc(count));
    auto* const items = static_cast<Char*>(std::malloc(count * sizeof(Char)));
    Bench::Check(bytes && items && ReadFile(file.Get(), bytes, count, &count, nullptr), "reading the file");
    Bench::WidenPlain(bytes, count, items);
    std::free(bytes);
    return {items, count};
}

void Paint(HWND window) {
    PAINTSTRUCT paint;
    const HDC target = BeginPaint(window, &paint);
    const HFONT font =
        CreateFontW(-13, 0, 0, 0, FW_NORMAL, 0, 0, 0, DEFAULT_CHARSET, 0, 0, 0, FIXED_PITCH, L"Courier New");
    const HGDIOBJ before = SelectObject(target, font);
    TEXTMETRICW metrics = {};
    GetTextMetricsW(target, &metrics);
    size_t start = 0;
    for (int row = 0; row < Lines && start + LineLength <= shownText.count; ++row, start += LineLength)
        TextOutW(target, 0, row * metrics.tmHeight, Wide(shownText.items + start), static_cast<int>(LineLength) - 2);
    SelectObject(target, before);
    DeleteObject(font);
    EndPaint(window, &paint);
}

LRESULT CALLBACK BareProc(HWND window, UINT message, WPARAM wparam, LPARAM lparam) {
    if (message == WM_PAINT) return Paint(window), 0;
    if (message == WM_DESTROY) PostQuitMessage(0);
    return DefWindowProcW(window, message, wparam, lparam);
}

int ShowBare(char** arguments) {
    shownText = ReadWide(arguments[4]);
    WNDCLASSW bare = {};
    bare.lpfnWndProc = BareProc;
    bare.hbrBackground = reinterpret_cast<HBRUSH>(COLOR_WINDOW + 1);
    bare.lpszClassName = L"BareWindow";
    RegisterClassW(&bare);
    const HWND window = CreateWindowW(bare.lpszClassName, L"Bare", WS_OVERLAPPEDWINDOW, std::atoi(arguments[0]),
                                      std::atoi(arguments[1]), std::atoi(arguments[2]), std::atoi(arguments[3]),
                                      nullptr, nullptr, nullptr, nullptr);
    ShowWindow(window, SW_SHOW);
    UpdateWindow(window);
    SetWindowTextW(window, L"Bare");
    MSG message;
    while (GetMessageW(&message, nullptr, 0, 0) > 0) DispatchMessageW(&message);
    return 0;
}

// The measuring one.

std::wstring OwnFolder() {
    wchar_t name[MAX_PATH];
    GetModuleFileNameW(nullptr, name, MAX_PATH);
    const std::wstring path = name;
    return path.substr(0, path.rfind(L'\\') + 1);
}

BOOL CALLBACK NoteUnpainted(HWND window, LPARAM unpainted) {
    if (IsWindowVisible(window) && GetUpdateRect(window, nullptr, FALSE)) *reinterpret_cast<bool*>(unpainted) = true;
    return TRUE;
}

// Whether the window shows the text whose name is in its title, and waits for the user.
bool IsReady(HWND window, const std::wstring& title) {
    wchar_t text[MAX_PATH] = {};
    GetWindowTextW(window, text, MAX_PATH);
    if (!std::wstring(text).starts_with(title)) return false;
    bool unpainted = false;
    NoteUnpainted(window, reinterpret_cast<LPARAM>(&unpainted));
    EnumChildWindows(window, NoteUnpainted, reinterpret_cast<LPARAM>(&unpainted));
    if (unpainted) return false;
    // It is answered once the painting that has begun is done.
    SendMessageW(window, WM_NULL, 0, 0);
    return true;
}

// What the programs belong to: they end with this one, however it ends.
HANDLE JobOfAll() {
    static const HANDLE job = [] {
        const HANDLE made = CreateJobObjectW(nullptr, nullptr);
        JOBOBJECT_EXTENDED_LIMIT_INFORMATION limits = {};
        limits.BasicLimitInformation.LimitFlags = JOB_OBJECT_LIMIT_KILL_ON_JOB_CLOSE;
        SetInformationJobObject(made, JobObjectExtendedLimitInformation, &limits, sizeof(limits));
        return made;
    }();
    return job;
}

// A program that runs until the end of the scope.
class Started {
public:
    // Comes back when its window is ready.
    Started(std::wstring commandLine, const std::wstring& title) {
        STARTUPINFOW startup = {};
        startup.cb = sizeof(startup);
        PROCESS_INFORMATION made = {};
        Bench::Check(
            CreateProcessW(nullptr, commandLine.data(), nullptr, nullptr, FALSE, 0, nullptr, nullptr, &startup, &made),
            "the program starts");
        CloseHandle(made.hThread);
        process.Reset(made.hProcess);
        AssignProcessToJobObject(JobOfAll(), made.hProcess);
        id = made.dwProcessId;
        const ULONGLONG deadline = GetTickCount64() + Patience;
        while (!window && GetTickCount64() < deadline) {
            Sleep(1);
            const HWND shown = Shown();
            if (shown && IsReady(shown, title)) window = shown;
        }
        Bench::Check(window, "the program shows its window");
    }
    ~Started() {
        PostMessageW(window, WM_CLOSE, 0, 0);
        WaitForSingleObject(process.Get(), Patience);
    }
    Started(const Started&) = delete;
    Started& operator=(const Started&) = delete;

    HWND Window() const { return window; }
    double PeakBytes() const {
        PROCESS_MEMORY_COUNTERS counters = {};
        Bench::Check(GetProcessMemoryInfo(process.Get(), &counters, sizeof(counters)), "the memory of a process");
        return static_cast<double>(counters.PeakWorkingSetSize);
    }

private:
    HWND Shown() const {
        for (HWND top = GetTopWindow(nullptr); top; top = GetWindow(top, GW_HWNDNEXT)) {
            DWORD owner = 0;
            GetWindowThreadProcessId(top, &owner);
            if (owner == id && IsWindowVisible(top) && !GetWindow(top, GW_OWNER)) return top;
        }
        return nullptr;
    }

    KernelHandle process;
    DWORD id = 0;
    HWND window = nullptr;
};

class Files {
public:
    Files() {
        wchar_t temporary[MAX_PATH];
        GetTempPathW(MAX_PATH, temporary);
        folder = std::wstring(temporary) + L"orvane-start-bench-" + std::to_wstring(GetCurrentProcessId()) + L"\\";
        Bench::Check(CreateDirectoryW(folder.c_str(), nullptr) || GetLastError() == ERROR_ALREADY_EXISTS, "a folder");
    }
    ~Files() {
        for (const std::wstring& file : files) DeleteFileW(file.c_str());
        RemoveDirectoryW(folder.c_str());
    }
    Files(const Files&) = delete;
    Files& operator=(const Files&) = delete;

    const std::wstring& Folder() const { return folder; }
    std::wstring Write(const std::wstring& name, size_t bytes) {
        std::string block;
        while (block.size() < (bytes < (1 << 20) ? bytes : 1 << 20)) block += Line;
        files.push_back(folder + name);
        const KernelHandle file(CreateFileW(files.back().c_str(), GENERIC_WRITE, 0, nullptr, CREATE_ALWAYS,
                                            FILE_ATTRIBUTE_NORMAL, nullptr));
        for (size_t left = bytes; left;) {
            const size_t part = left < block.size() ? left : block.size();
            DWORD written = 0;
            Bench::Check(WriteFile(file.Get(), block.data(), static_cast<DWORD>(part), &written, nullptr), "writing");
            left -= part;
        }
        return files.back();
    }

private:
    std::wstring folder;
    std::vector<std::wstring> files;
};

std::wstring editor; // its program, in quotes
std::wstring bare;   // the bare program with the place of its window

// Times only the start: the end of the program comes after it.
double Time(const std::wstring& commandLine, const std::wstring& title) {
    const double start = Bench::ProcessorMilliseconds();
    const Started program(commandLine, title);
    return Bench::ProcessorMilliseconds() - start;
}

double TimeEditor(const std::wstring& file) { return Time(editor + L" " + file, file); }
double TimeBare(const std::wstring& file) { return Time(bare + L" " + file, L"Bare"); }

// The window of the editor says where the bare one is to be.
void PlaceBare(const std::wstring& file) {
    const Started program(editor + L" " + file, file);
    RECT place = {};
    Bench::Check(GetWindowRect(program.Window(), &place), "the editor has a window");
    wchar_t own[MAX_PATH];
    GetModuleFileNameW(nullptr, own, MAX_PATH);
    bare = L"\"" + std::wstring(own) + L"\" " + std::to_wstring(place.left) + L" " + std::to_wstring(place.top) + L" " +
           std::to_wstring(place.right - place.left) + L" " + std::to_wstring(place.bottom - place.top);
}

void MeasureFile(const char* name, const std::wstring& file, double wanted, int rounds) {
    double candidate = TimeEditor(file);
    double reference = TimeBare(file);
    for (int round = 1; round < rounds; ++round) {
        candidate = std::min(candidate, TimeEditor(file));
        reference = std::min(reference, TimeBare(file));
    }
    std::printf("(%.1f ms, bare %.1f ms) ", candidate, reference);
    Bench::Report(name, candidate / reference, wanted);
}

void MeasurePeak(const char* name, const std::wstring& small, const std::wstring& file, double characters) {
    const double before = Started(editor + L" " + small, small).PeakBytes();
    const double after = Started(editor + L" " + file, file).PeakBytes();
    Bench::Report(name, (after - before) / characters, 2.1);
}

void MeasureManyFiles(Files& files, const std::wstring& small) {
    constexpr int Count = 2000;
    std::vector<std::string> names;
    std::wstring last;
    for (int i = 0; i < Count; ++i) {
        last = files.Write(L"many" + std::to_wstring(1000 + i) + L".txt", 10 * LineLength);
        names.emplace_back(last.begin(), last.end());
    }
    const double start = Bench::ProcessorMilliseconds();
    for (const std::string& name : names) std::free(ReadWide(name.c_str()).items);
    const double reading = Bench::ProcessorMilliseconds() - start;
    const double starting = std::min(TimeEditor(small), TimeEditor(small));
    const std::wstring line = editor + L" " + files.Folder() + L"many*.txt";
    const double time = std::min(Time(line, files.Folder()), Time(line, files.Folder()));
    std::printf("(%.0f ms, start %.0f ms, reading %.0f ms) ", time, starting, reading);
    Bench::Report("milliseconds for each of 2000 files beside its reading", (time - starting - reading) / Count, 1);
}

} // namespace

int main(int count, char** arguments) {
    if (count == 6) return ShowBare(arguments + 1);
    editor = L"\"" + OwnFolder() + L"orvane.exe\"";
    Files files;
    const std::wstring small = files.Write(L"small.txt", Lines * LineLength);
    PlaceBare(small);
    MeasureFile("start with a small file", small, 1.3, 15);
    MeasureManyFiles(files, small);
    MeasureFile("start with 100 MB", files.Write(L"large.txt", size_t{100} << 20), 1.3, 5);
    const std::wstring huge = files.Write(L"huge.txt", size_t{1} << 30);
    MeasureFile("start with 1 GB", huge, 1.3, 2);
    MeasurePeak("bytes a character at the peak with 1 GB", small, huge, 1 << 30);
    return Bench::ExitStatus();
}
