#include "base/win32/Ole.h"

#include "base/win32/Windows.h"

#include <ole2.h>

namespace {

bool isThere = false; // process-wide: one thread uses OLE

} // namespace

bool Ole::Use() {
    if (!isThere) isThere = SUCCEEDED(OleInitialize(nullptr));
    return isThere;
}

void Ole::Leave() {
    if (isThere) OleUninitialize();
    isThere = false;
}
