#include "support/SparseFile.h"

#ifdef _WIN32
#include "base/win32/Handles.h"

#include <winioctl.h>

// Not with the library, which refuses a size that the disk has no room for.
bool ResizeSparsely(const std::filesystem::path& path, uint64_t size) {
    constexpr DWORD ShareAll = FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE;
    const KernelHandle file(CreateFileW(path.c_str(), GENERIC_WRITE, ShareAll, nullptr, OPEN_EXISTING, 0, nullptr));
    if (!file.IsValid()) return false;
    DWORD ignored = 0;
    DeviceIoControl(file.Get(), FSCTL_SET_SPARSE, nullptr, 0, nullptr, 0, &ignored, nullptr);
    LARGE_INTEGER end = {};
    end.QuadPart = static_cast<LONGLONG>(size);
    return SetFilePointerEx(file.Get(), end, nullptr, FILE_BEGIN) && SetEndOfFile(file.Get());
}
#else
bool ResizeSparsely(const std::filesystem::path& path, uint64_t size) {
    std::error_code error;
    std::filesystem::resize_file(path, size, error);
    return !error;
}
#endif
