#include "app/Files.h"

#include "base/win32/Windows.h"

namespace files {

namespace {

std::wstring TemporaryFolder() {
    wchar_t buffer[MAX_PATH + 1] = {};
    GetTempPathW(MAX_PATH, buffer);
    // The short form of a long user name would differ from the path that the editor shows.
    wchar_t full[MAX_PATH + 1] = {};
    return GetLongPathNameW(buffer, full, MAX_PATH) ? full : buffer;
}

void RemoveFolder(const std::wstring& folder) {
    WIN32_FIND_DATAW entry;
    const HANDLE search = FindFirstFileW((folder + L"\\*").c_str(), &entry);
    if (search != INVALID_HANDLE_VALUE) {
        do {
            const std::wstring name = entry.cFileName;
            if (name == L"." || name == L"..") continue;
            const std::wstring path = folder + L"\\" + name;
            SetFileAttributesW(path.c_str(), FILE_ATTRIBUTE_NORMAL);
            if (entry.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY)
                RemoveFolder(path);
            else
                DeleteFileW(path.c_str());
        } while (FindNextFileW(search, &entry));
        FindClose(search);
    }
    RemoveDirectoryW(folder.c_str());
}

std::wstring BackupPath(const std::wstring& path) { return path + L".before-tests"; }

} // namespace

Scratch::Scratch() {
    static unsigned counter = 0;
    const std::wstring start = TemporaryFolder() + L"orvane-test-" + std::to_wstring(GetCurrentProcessId()) + L"-";
    // A run that was cancelled may have left folders, and its number may come again.
    do {
        folder = start + std::to_wstring(++counter);
    } while (!CreateDirectoryW(folder.c_str(), nullptr) && GetLastError() == ERROR_ALREADY_EXISTS);
}

Scratch::~Scratch() { RemoveFolder(folder); }

bool Exists(const std::wstring& path) { return GetFileAttributesW(path.c_str()) != INVALID_FILE_ATTRIBUTES; }

bool MakeFolder(const std::wstring& path) { return CreateDirectoryW(path.c_str(), nullptr) != 0; }

bool Write(const std::wstring& path, const std::string& bytes) {
    const HANDLE file = CreateFileW(path.c_str(), GENERIC_WRITE, 0, nullptr, CREATE_ALWAYS, 0, nullptr);
    if (file == INVALID_HANDLE_VALUE) return false;
    DWORD written = 0;
    const BOOL done = WriteFile(file, bytes.data(), static_cast<DWORD>(bytes.size()), &written, nullptr);
    CloseHandle(file);
    return done && written == bytes.size();
}

std::string Read(const std::wstring& path) {
    const HANDLE file = CreateFileW(path.c_str(), GENERIC_READ, FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE,
                                    nullptr, OPEN_EXISTING, 0, nullptr);
    if (file == INVALID_HANDLE_VALUE) return {};
    std::string bytes(GetFileSize(file, nullptr), '\0');
    DWORD read = 0;
    ReadFile(file, bytes.data(), static_cast<DWORD>(bytes.size()), &read, nullptr);
    CloseHandle(file);
    bytes.resize(read);
    return bytes;
}

bool MoveTime(const std::wstring& path, int seconds) {
    const HANDLE file = CreateFileW(path.c_str(), FILE_WRITE_ATTRIBUTES | FILE_READ_ATTRIBUTES,
                                    FILE_SHARE_READ | FILE_SHARE_WRITE, nullptr, OPEN_EXISTING, 0, nullptr);
    if (file == INVALID_HANDLE_VALUE) return false;
    FILETIME time = {};
    bool done = GetFileTime(file, nullptr, nullptr, &time) != 0;
    ULARGE_INTEGER ticks = {};
    ticks.LowPart = time.dwLowDateTime;
    ticks.HighPart = time.dwHighDateTime;
    ticks.QuadPart += static_cast<ULONGLONG>(static_cast<LONGLONG>(seconds) * 10000000);
    time.dwLowDateTime = ticks.LowPart;
    time.dwHighDateTime = ticks.HighPart;
    done = done && SetFileTime(file, nullptr, nullptr, &time);
    CloseHandle(file);
    return done;
}

std::string Utf16(const std::wstring& text, bool bigEndian) {
    std::string bytes;
    for (const wchar_t unit : text) {
        const char low = static_cast<char>(unit & 0xFF);
        const char high = static_cast<char>(unit >> 8);
        bytes += bigEndian ? high : low;
        bytes += bigEndian ? low : high;
    }
    return bytes;
}

std::string Utf8(const std::wstring& text) {
    const int count = static_cast<int>(text.size());
    const int size = WideCharToMultiByte(CP_UTF8, 0, text.data(), count, nullptr, 0, nullptr, nullptr);
    std::string bytes(static_cast<size_t>(size), '\0');
    WideCharToMultiByte(CP_UTF8, 0, text.data(), count, bytes.data(), size, nullptr, nullptr);
    return bytes;
}

std::wstring SettingsPath() {
    wchar_t folder[MAX_PATH] = {};
    SHGetFolderPathW(nullptr, CSIDL_PERSONAL, nullptr, SHGFP_TYPE_CURRENT, folder);
    return std::wstring(folder) + L"\\orvane.ini";
}

std::wstring ProgramPath() {
    wchar_t buffer[1024] = {};
    if (GetEnvironmentVariableW(L"ORVANE_EXE", buffer, 1024)) return buffer;
    GetModuleFileNameW(nullptr, buffer, 1024);
    const std::wstring path = buffer;
    return path.substr(0, path.rfind(L'\\') + 1) + L"orvane.exe";
}

std::wstring ShippedSettingsPath() {
    const std::wstring path = ProgramPath();
    return path.substr(0, path.rfind(L'\\') + 1) + L"orvane.ini";
}

std::string ShippedSettings() { return Read(BackupPath(ShippedSettingsPath())); }

SavedSettings::SavedSettings() {
    for (const std::wstring& path : {SettingsPath(), ShippedSettingsPath()}) {
        // A file that an interrupted run moved away is the user's; the present one is then the tests'.
        if (Exists(BackupPath(path)))
            DeleteFileW(path.c_str());
        else
            MoveFileW(path.c_str(), BackupPath(path).c_str());
    }
}

SavedSettings::~SavedSettings() {
    for (const std::wstring& path : {SettingsPath(), ShippedSettingsPath()}) {
        DeleteFileW(path.c_str());
        MoveFileW(BackupPath(path).c_str(), path.c_str());
    }
}

std::wstring RecoveryPath() {
    wchar_t folder[MAX_PATH] = {};
    SHGetFolderPathW(nullptr, CSIDL_LOCAL_APPDATA, nullptr, SHGFP_TYPE_CURRENT, folder);
    return std::wstring(folder) + L"\\Orvane\\Recovery";
}

std::vector<std::wstring> RecoveryFiles(const std::wstring& inside) {
    std::vector<std::wstring> names;
    WIN32_FIND_DATAW entry;
    const HANDLE search = FindFirstFileW((RecoveryPath() + L"\\" + inside + L"\\*").c_str(), &entry);
    if (search == INVALID_HANDLE_VALUE) return names;
    do {
        if (!(entry.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY)) names.emplace_back(entry.cFileName);
    } while (FindNextFileW(search, &entry));
    FindClose(search);
    return names;
}

void EmptyRecovery() { RemoveFolder(RecoveryPath()); }

SavedRecovery::SavedRecovery() { MoveFileW(RecoveryPath().c_str(), BackupPath(RecoveryPath()).c_str()); }

SavedRecovery::~SavedRecovery() {
    EmptyRecovery();
    MoveFileW(BackupPath(RecoveryPath()).c_str(), RecoveryPath().c_str());
}

} // namespace files
