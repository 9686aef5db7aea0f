#include "base/win32/Ole.h"

#include <ole2.h>

Ole::~Ole() {
    if (isThere) OleUninitialize();
}

bool Ole::Use() {
    if (!isThere) isThere = SUCCEEDED(OleInitialize(nullptr));
    return isThere;
}
