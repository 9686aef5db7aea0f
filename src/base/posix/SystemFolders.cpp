#include "base/SystemFolders.h"

#include "base/Path.h"
#include "base/Platform.h"

bool SystemFolders::LocalData(WString& out) {
    if (Platform::EnvironmentVariable(u"XDG_DATA_HOME", out) && !out.IsEmpty()) return true;
    return Platform::EnvironmentVariable(u"HOME", out) && !out.IsEmpty() && Path::Join(out, u".local\\share");
}
