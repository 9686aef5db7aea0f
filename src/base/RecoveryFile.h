#pragma once

#include "base/Heap.h"
#include "base/List.h"
#include "base/Platform.h"
#include "base/WString.h"

// What the files of the recovery folder have in common, the copies of saves and the journals: each is made under a
// name of its own and held open, not shared, by the editor that it belongs to. So no other editor can open it while
// that one runs, and a file that can be opened alone is one that an editor has left.

// Makes a file in a folder inside the recovery folder, open for writing; its name is nobody else's and ends with
// `extension`. False when the folder does not take it.
[[nodiscard]] bool MakeRecoveryFile(const Char* folder, const Char* extension, Platform::File& file, WString& path);

struct RecoveryFileName : HeapObject {
    WString path;
    RecoveryFileName* next = nullptr;
    RecoveryFileName* previous = nullptr;
};

// Appends the paths of all files that end with `extension`: all at once, since a search need not survive that some are
// removed. Without memory the rest is left for the next start. The caller frees them.
void ListRecoveryFiles(const Char* folder, const Char* extension, List<RecoveryFileName>& names);
