#pragma once

#include "base/Platform.h"
#include "base/WString.h"

// Where the program keeps what a failure must not cost the user: a folder of the user's own on this machine. It is
// found when something first asks for it, and remembered.
class RecoveryFolder {
public:
    RecoveryFolder() = default;
    RecoveryFolder(const RecoveryFolder&) = delete;
    RecoveryFolder& operator=(const RecoveryFolder&) = delete;

    // Both give the path of a folder inside it, or with an empty `inside` its own; only the second makes that folder
    // when it is missing. False, with `out` as it was, when the system names none, it cannot be made, and without
    // memory.
    [[nodiscard]] bool GetPath(const Char* inside, WString& out);
    [[nodiscard]] bool Make(const Char* inside, WString& out);
    // Makes a file in a folder inside it, open for writing; its name is nobody else's and ends with `extension`. False
    // when the folder does not take it.
    [[nodiscard]] bool MakeFile(const Char* inside, const Char* extension, Platform::File& file, WString& path);

private:
    bool Find(WString& out);

    WString found;
    uint32_t number = 0; // of the next file
};
