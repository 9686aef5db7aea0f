#include "base/SystemFolders.h"

#include "base/win32/Windows.h"

bool SystemFolders::LocalData(WString& out) {
    // Cached: a start asks for it several times, and the shell reads the registry each time.
    static wchar_t folder[MAX_PATH];
    if (!folder[0] && SHGetFolderPathW(nullptr, CSIDL_LOCAL_APPDATA, nullptr, SHGFP_TYPE_CURRENT, folder) != S_OK) {
        folder[0] = 0;
        return false;
    }
    return out.Assign(FromWide(folder));
}
