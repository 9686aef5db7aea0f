#pragma once

#include "base/Heap.h"
#include "base/List.h"
#include "base/Platform.h"
#include "base/WString.h"

class RecoveryFolder;

// What the files of the recovery folder have in common, the copies of saves and the journals: each is made under a
// name of its own and held open, not shared, by the editor that it belongs to. While that editor runs, no other can
// open the file; one that can be opened exclusively belongs to no running editor.

// What each of these files begins with. A header of its own follows, the last eight bytes of which are a checksum of
// all before it and of the name; then the name, in units of UTF-16.
struct RecoveryStart {
    uint8_t magic[8];
    uint32_t version;
    uint32_t nameLength;
};

enum class RecoveryHeader {
    Good,
    Damaged,
    Unknown, // written by a program that is newer, or it cannot be read now
};

// The checksum of a header of `size` bytes, which begins with a RecoveryStart, and of the name that it is about.
uint64_t CheckOfHeader(const void* header, size_t size, const Char* name);
// Reads a header of `size` bytes and the name from a file at its beginning, which then goes on with what follows the
// name. `expected` has the magic and the greatest version that is known. Nothing in the file is trusted: unless it is
// Good, what was read means nothing. The name ends at a terminator, if there should be one.
[[nodiscard]] RecoveryHeader ReadRecoveryHeader(Platform::File& file, const RecoveryStart& expected, void* header,
                                                size_t size, WString& name);

struct RecoveryFileName : HeapObject {
    WString path;
    RecoveryFileName* next = nullptr;
    RecoveryFileName* previous = nullptr;
};

// Appends the paths of all files in a folder inside that folder that end with `extension`: all at once, since a search
// need not survive that some are removed. Without memory the rest is left for the next start. The caller frees them.
void ListRecoveryFiles(RecoveryFolder& folder, const Char* inside, const Char* extension,
                       List<RecoveryFileName>& names);
