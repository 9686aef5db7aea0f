#include "base/Platform.h"
#include "base/win32/FileInUse.h"
#include "base/win32/Handles.h"
#include "base/win32/SystemText.h"
#include "base/win32/Windows.h"

#include <algorithm>

namespace {

struct OpenRule {
    DWORD access;
    DWORD sharing;
    DWORD creation;
    DWORD attributes;
};

constexpr DWORD ShareAll = FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE;

// In the order of File::Mode.
constexpr OpenRule OpenRules[] = {
    {FILE_READ_ATTRIBUTES, ShareAll, OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL},
    {GENERIC_READ, ShareAll, OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL},
    {GENERIC_READ | GENERIC_WRITE, ShareAll, OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL},
    // Not CREATE_ALWAYS: that is denied for a hidden or system file, and takes its alternate streams.
    {GENERIC_WRITE, 0, OPEN_ALWAYS, FILE_ATTRIBUTE_ARCHIVE},
    {GENERIC_WRITE, 0, OPEN_ALWAYS, FILE_ATTRIBUTE_ARCHIVE},
    {GENERIC_WRITE, 0, CREATE_NEW, FILE_ATTRIBUTE_ARCHIVE},
    {GENERIC_READ, 0, OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL},
};

// One call counts its bytes in 32 bits.
constexpr size_t LargestTransfer = size_t{1} << 30;

bool IsNoRoom(DWORD error) {
    constexpr DWORD DiskQuotaExceeded = 1295; // not every compiler's headers name it
    return error == ERROR_DISK_FULL || error == ERROR_HANDLE_DISK_FULL || error == ERROR_FILE_TOO_LARGE ||
           error == DiskQuotaExceeded || error == ERROR_NOT_ENOUGH_QUOTA;
}

HANDLE Native(intptr_t handle) { return reinterpret_cast<HANDLE>(handle); }

DWORD TransferSize(size_t count) { return static_cast<DWORD>(std::min(count, LargestTransfer)); }

// A file that is mapped into memory cannot be made shorter, and scanners may map it still when they have closed it.
bool CutAtPlace(HANDLE file) {
    return CallWhileInUse([file] { return SetEndOfFile(file) != 0; });
}

// What a path leads to. False when there is nothing, or it cannot be asked.
bool Identify(const Char* name, BY_HANDLE_FILE_INFORMATION& found) {
    const SystemPath path(name);
    if (!path.Text()) return false;
    const KernelHandle file(
        CreateFileW(path.Text(), FILE_READ_ATTRIBUTES, ShareAll, nullptr, OPEN_EXISTING, 0, nullptr));
    return file.IsValid() && GetFileInformationByHandle(file.Get(), &found);
}

bool AreSame(const BY_HANDLE_FILE_INFORMATION& left, const BY_HANDLE_FILE_INFORMATION& right) {
    return left.dwVolumeSerialNumber == right.dwVolumeSerialNumber && left.nFileIndexHigh == right.nFileIndexHigh &&
           left.nFileIndexLow == right.nFileIndexLow;
}

} // namespace

bool Platform::IsSameFile(const Char* left, const Char* right) {
    BY_HANDLE_FILE_INFORMATION first{};
    BY_HANDLE_FILE_INFORMATION second{};
    if (!Identify(left, first) || !Identify(right, second)) return false;
    // A file system that does not number its files has 0 for all of them.
    return (first.nFileIndexHigh || first.nFileIndexLow) && AreSame(first, second);
}

bool Platform::File::Open(const Char* name, Mode mode) {
    Close();
    const SystemPath path(name);
    if (!path.Text() || FileCallShouldFail()) return false;
    const OpenRule& rule = OpenRules[static_cast<size_t>(mode)];
    const auto open = [&] {
        handle = reinterpret_cast<intptr_t>(
            CreateFileW(path.Text(), rule.access, rule.sharing, nullptr, rule.creation, rule.attributes, nullptr));
        return IsOpen();
    };
    const bool isWorthWaiting = mode == Mode::Create || mode == Mode::Overwrite;
    if (!(isWorthWaiting ? CallWhileInUse(open) : open())) return false;
    // Directories fail by themselves; the console and other devices do not.
    const bool isFile = GetFileType(Native(handle)) == FILE_TYPE_DISK;
    if (!isFile || (mode == Mode::Create && !CutAtPlace(Native(handle)))) Close();
    return IsOpen();
}

void Platform::File::Close() {
    if (IsOpen()) CloseHandle(Native(handle));
    handle = -1;
}

bool Platform::File::GetSize(uint64_t& size) {
    LARGE_INTEGER value{};
    if (FileCallShouldFail() || !GetFileSizeEx(Native(handle), &value)) return false;
    size = static_cast<uint64_t>(value.QuadPart);
    return true;
}

bool Platform::File::GetTime(FileTime& time) {
    FILETIME written{};
    if (FileCallShouldFail() || !GetFileTime(Native(handle), nullptr, nullptr, &written)) return false;
    time = uint64_t{written.dwHighDateTime} << 32 | written.dwLowDateTime;
    return true;
}

bool Platform::File::IsDeleted() const {
    FILE_STANDARD_INFO info{};
    return GetFileInformationByHandleEx(Native(handle), FileStandardInfo, &info, sizeof(info)) &&
           (info.DeletePending || info.NumberOfLinks == 0);
}

bool Platform::File::IsAt(const Char* name) const {
    const SystemPath path(name);
    BY_HANDLE_FILE_INFORMATION mine{};
    BY_HANDLE_FILE_INFORMATION there{};
    if (!path.Text() || !GetFileInformationByHandle(Native(handle), &mine)) return true;
    const KernelHandle found(
        CreateFileW(path.Text(), FILE_READ_ATTRIBUTES, ShareAll, nullptr, OPEN_EXISTING, 0, nullptr));
    if (!found.IsValid()) {
        const DWORD error = GetLastError();
        return error != ERROR_FILE_NOT_FOUND && error != ERROR_PATH_NOT_FOUND;
    }
    if (!GetFileInformationByHandle(found.Get(), &there)) return true;
    return AreSame(mine, there);
}

bool Platform::File::Seek(uint64_t offset) {
    LARGE_INTEGER target{};
    target.QuadPart = static_cast<LONGLONG>(offset);
    return !FileCallShouldFail() && SetFilePointerEx(Native(handle), target, nullptr, FILE_BEGIN);
}

bool Platform::File::Read(void* out, size_t count, size_t& read) {
    read = 0;
    if (FileCallShouldFail()) return false;
    while (read < count) {
        DWORD got = 0;
        if (!ReadFile(Native(handle), static_cast<char*>(out) + read, TransferSize(count - read), &got, nullptr))
            return false;
        if (got == 0) break;
        read += got;
    }
    return true;
}

bool Platform::File::ReadAt(uint64_t offset, void* out, size_t count, size_t& read) {
    read = 0;
    if (ReadShouldFail(offset, count)) return false;
    while (read < count) {
        OVERLAPPED place{};
        place.Offset = static_cast<DWORD>(offset + read);
        place.OffsetHigh = static_cast<DWORD>((offset + read) >> 32);
        DWORD got = 0;
        // With a place given, the end of the file is told as an error.
        if (!ReadFile(Native(handle), static_cast<char*>(out) + read, TransferSize(count - read), &got, &place))
            return GetLastError() == ERROR_HANDLE_EOF;
        if (got == 0) break;
        read += got;
    }
    return true;
}

bool Platform::File::Write(const void* bytes, size_t count) {
    if (FileCallShouldFail()) return false;
    const char* at = static_cast<const char*>(bytes);
    while (count) {
        DWORD put = 0;
        const auto write = [&] { return WriteFile(Native(handle), at, TransferSize(count), &put, nullptr) != 0; };
        if (!CallWhileInUse(write) || put == 0) return false;
        at += put;
        count -= put;
    }
    return true;
}

bool Platform::File::Flush() {
    if (FileCallShouldFail()) return false;
    if (FlushFileBuffers(Native(handle))) return true;
    // Some network, virtual and external volumes cannot do this; the bytes are written all the same.
    const DWORD error = GetLastError();
    return error == ERROR_INVALID_FUNCTION || error == ERROR_NOT_SUPPORTED;
}

bool Platform::File::Reserve(uint64_t length) {
    LARGE_INTEGER size{};
    if (FileCallShouldFail()) return false;
    // Less than it has would cut the file.
    if (!GetFileSizeEx(Native(handle), &size) || static_cast<uint64_t>(size.QuadPart) >= length) return true;
    FILE_ALLOCATION_INFO room{};
    room.AllocationSize.QuadPart = static_cast<LONGLONG>(length);
    if (SetFileInformationByHandle(Native(handle), FileAllocationInfo, &room, sizeof(room))) return true;
    return !IsNoRoom(GetLastError());
}

bool Platform::File::CutHere() { return !FileCallShouldFail() && CutAtPlace(Native(handle)); }
