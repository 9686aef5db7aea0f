#pragma once

#include "base/RecoveryFolder.h"

// Keeps the bytes of a file in the recovery folder, in the place of those that were kept for it before: these
// or those are there whatever fails. Nothing happens when the file does not exist or holds `length` bytes with the
// checksum `value`: they would push out older ones that are worth more.
void KeepPreviousFile(RecoveryFolder& folder, const Char* target, uint64_t length, uint64_t value);

// Where they are kept; the folder is made when it is missing.
[[nodiscard]] bool PreviousFilePath(RecoveryFolder& folder, const Char* target, WString& out);
