#pragma once

#include "base/WString.h"
#include "document/TextPosition.h"
#include "view/TextSpan.h"

// A file position that a line of text names, such as "1>C:\src\a.cpp(12): error" or "a.cpp:12".
struct FilePosition {
    WString path;
    uint32_t line = NoLine; // 0-based; NoLine when no number followed

    // False when the line names no path, or without memory.
    [[nodiscard]] bool Parse(TextSpan text);
};
