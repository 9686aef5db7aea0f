#pragma once

#include "base/Platform.h"

class SlowDrives;

// The time of a file's last write, for the check of a document for changes by others. False when it cannot be read.
// The drive is asked also while it rests; `drives` learns how it answers.
bool ReadTimeToCheck(SlowDrives& drives, const Char* path, Platform::FileTime& time);

// The same shortly after. Not from a drive that rests: `time` is then what it has just answered.
void ReadTimeAgain(SlowDrives& drives, const Char* path, Platform::FileTime& time);
