#pragma once

#include "base/Platform.h"
#include "support/ScratchFolder.h"

#include <string>

// While one of these lives there is no place for copies of what is saved.
class NoRecoveryFolder {
public:
    NoRecoveryFolder()
        : path(folder.Write("file", "") + u"\\Recovery"), before(Platform::SetRecoveryFolder(path.c_str())) {}
    ~NoRecoveryFolder() { Platform::SetRecoveryFolder(before); }
    NoRecoveryFolder(const NoRecoveryFolder&) = delete;
    NoRecoveryFolder& operator=(const NoRecoveryFolder&) = delete;

private:
    ScratchFolder folder;
    std::u16string path;
    const Char* before;
};
