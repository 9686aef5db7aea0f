#pragma once

#include "base/Types.h"

// Some characters of a document: a line, without its line feed. Valid until the document changes.
struct TextSpan {
    const Char* text = nullptr;
    uint32_t length = 0;
};
