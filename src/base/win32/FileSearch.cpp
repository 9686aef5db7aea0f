#include "base/Platform.h"
#include "base/win32/Handles.h"
#include "base/win32/SystemText.h"
#include "base/win32/Windows.h"

namespace {

bool TakeEntry(const WIN32_FIND_DATAW& entry, WString& name, bool& isDirectory) {
    isDirectory = (entry.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY) != 0;
    return name.Assign(FromWide(entry.cFileName));
}

} // namespace

bool Platform::FileSearch::First(const Char* pattern) {
    Close();
    const SystemPath path(pattern);
    WIN32_FIND_DATAW entry;
    if (!path.Text()) return false;
    SearchHandle search(FindFirstFileW(path.Text(), &entry));
    if (!search.IsValid() || !TakeEntry(entry, name, isDirectory)) return false;
    state = search.Detach();
    return true;
}

bool Platform::FileSearch::Next() {
    WIN32_FIND_DATAW entry;
    if (state && FindNextFileW(state, &entry) && TakeEntry(entry, name, isDirectory)) return true;
    Close();
    return false;
}

void Platform::FileSearch::Close() {
    const SearchHandle ended(state);
    state = nullptr;
}
