#include "base/win32/SystemLibrary.h"

#include <algorithm>

HMODULE SystemLibrary::Load(const wchar_t* name) {
    wchar_t path[MAX_PATH];
    const UINT length = GetSystemDirectoryW(path, MAX_PATH);
    const int room = MAX_PATH - static_cast<int>(length);
    const int needed = lstrlenW(name) + 1;
    if (length == 0 || needed > room) return nullptr;
    std::copy_n(name, needed, path + length);
    return LoadLibraryW(path);
}
