#pragma once

#include "base/WString.h"

// What the recovery folder needs of the system; implemented by base/win32 and base/posix.
namespace SystemFolders {

// The user's local data folder, which stays on this machine. False when the system names none.
[[nodiscard]] bool LocalData(WString& out);
// Makes one folder; the one it is in has to be there.
[[nodiscard]] bool Make(const Char* path);

} // namespace SystemFolders
