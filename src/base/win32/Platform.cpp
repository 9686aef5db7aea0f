#include "base/Platform.h"
#include "base/SystemClock.h"
#include "base/win32/SystemText.h"
#include "base/win32/Windows.h"

#include <utility>

bool Platform::FullPath(const Char* path, WString& out) {
    WString given;
    if (!given.Assign(path)) return false;
    given.StripQuotes();
    return FillFromSystem(
        out, [&](wchar_t* buffer, DWORD size) { return GetFullPathNameW(Wide(given.Text()), size, buffer, nullptr); });
}

bool Platform::CurrentDirectory(WString& out) {
    return FillFromSystem(out, [](wchar_t* buffer, DWORD size) { return GetCurrentDirectoryW(size, buffer); });
}

bool Platform::SetCurrentDirectory(const Char* path) { return SetCurrentDirectoryW(Wide(path)); }

bool Platform::SearchAlong(const Char* list, const Char* name, WString& out) {
    return FillFromSystem(out, [=](wchar_t* buffer, DWORD size) {
        return SearchPathW(Wide(list), Wide(name), nullptr, size, buffer, nullptr);
    });
}

bool Platform::EnvironmentVariable(const Char* name, WString& out) {
    const auto ask = [=](wchar_t* buffer, DWORD size) { return GetEnvironmentVariableW(Wide(name), buffer, size); };
    if (FillFromSystem(out, ask)) return true;
    // A variable that is empty has the length that also reports a failure.
    wchar_t nothing = 0;
    SetLastError(ERROR_SUCCESS);
    if (GetEnvironmentVariableW(Wide(name), &nothing, 1) != 0 || GetLastError() != ERROR_SUCCESS) return false;
    out.Clear();
    return true;
}

bool Platform::ExpandEnvironment(const Char* text, WString& out) {
    WString expanded;
    // The terminator is counted in every result.
    DWORD size = ExpandEnvironmentStringsW(Wide(text), nullptr, 0);
    for (;;) {
        if (size == 0 || !expanded.Reserve(size)) return false;
        const DWORD needed = ExpandEnvironmentStringsW(Wide(text), Wide(expanded.Data()), size);
        if (needed == 0) return false;
        if (needed <= size) {
            if (!expanded.Assign(expanded.Data(), needed - 1)) return false;
            out = std::move(expanded);
            return true;
        }
        size = needed;
    }
}

Platform::FileTime Platform::Now() {
    FILETIME time{};
    GetSystemTimeAsFileTime(&time);
    return uint64_t{time.dwHighDateTime} << 32 | time.dwLowDateTime;
}

// The system's own tick count goes in steps of 16 ms. Neither call fails on any system this runs on.
uint64_t SystemClock::Ticks() {
    LARGE_INTEGER frequency = {};
    LARGE_INTEGER count = {};
    QueryPerformanceFrequency(&frequency);
    QueryPerformanceCounter(&count);
    const auto perSecond = static_cast<uint64_t>(frequency.QuadPart);
    const auto now = static_cast<uint64_t>(count.QuadPart);
    // Multiplied as a whole it might overflow after some months.
    return now / perSecond * 1000 + now % perSecond * 1000 / perSecond;
}

void SystemClock::Wait(uint32_t milliseconds) { Sleep(milliseconds); }

int Platform::CompareNames(const Char* left, const Char* right) { return lstrcmpiW(Wide(left), Wide(right)); }

bool Platform::ClipboardHasText() { return IsClipboardFormatAvailable(CF_UNICODETEXT); }
