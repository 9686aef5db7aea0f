#include "base/SystemFolders.h"

#include "base/win32/Windows.h"

bool SystemFolders::LocalData(WString& out) {
    wchar_t folder[MAX_PATH];
    return SHGetFolderPathW(nullptr, CSIDL_LOCAL_APPDATA, nullptr, SHGFP_TYPE_CURRENT, folder) == S_OK &&
           out.Assign(FromWide(folder));
}
