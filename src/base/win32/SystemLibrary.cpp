#include "base/win32/SystemLibrary.h"

#include <algorithm>

namespace {

// Calls `use` with the full name. What that returns, or null when the name does not fit.
template <class Use> HMODULE WithFullName(const wchar_t* name, Use use) {
    wchar_t path[MAX_PATH];
    const UINT length = GetSystemDirectoryW(path, MAX_PATH);
    const int room = MAX_PATH - static_cast<int>(length);
    const int needed = lstrlenW(name) + 1;
    if (length == 0 || needed > room) return nullptr;
    std::copy_n(name, needed, path + length);
    return use(path);
}

} // namespace

HMODULE SystemLibrary::Load(const wchar_t* name) {
    return WithFullName(name, [](const wchar_t* path) { return LoadLibraryW(path); });
}

bool SystemLibrary::IsLoaded(const wchar_t* name) {
    return WithFullName(name, [](const wchar_t* path) { return GetModuleHandleW(path); }) != nullptr;
}
