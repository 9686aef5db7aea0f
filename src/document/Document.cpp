#include "document/Document.h"

#include "base/Platform.h"

#include <utility>

bool DocumentBase::SetPath(const Char* name) {
    WString full;
    if (!Platform::FullPath(name, full)) return false;
    path = std::move(full);
    return true;
}
