#pragma once

#include "base/Platform.h"

class SlowDrives;

// The time of a file's last write, for the check of a document for changes by others. `document` is any address
// that stays the document's own. False when it cannot be read, and while the file's drive rests because it
// answered slowly; `drives` learns how it answers.
bool ReadTimeToCheck(SlowDrives& drives, const Char* path, const void* document, Platform::FileTime& time);
