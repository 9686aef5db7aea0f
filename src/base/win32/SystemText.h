#pragma once

#include "base/WString.h"
#include "base/win32/Windows.h"

// Fills `out` from a call of the system that takes a buffer and its size in characters and returns the
// length written, or the size needed when the buffer is too small, or 0 on failure. `out` is as it was
// on failure, also without memory.
template <class Call> [[nodiscard]] bool FillFromSystem(WString& out, Call call) {
    WString text;
    for (DWORD size = MAX_PATH;;) {
        if (!text.Reserve(size)) return false;
        const DWORD length = call(Wide(text.Data()), size);
        if (length == 0) return false;
        if (length < size) {
            if (!text.Assign(text.Data(), length)) return false;
            out = static_cast<WString&&>(text);
            return true;
        }
        // What is asked for (a variable, a directory) may have grown since the size was told.
        size = length > size ? length : size * 2;
    }
}

// A path as the file calls want it: longer ones than they take by themselves are made absolute and
// marked with "\\?\".
class SystemPath {
public:
    explicit SystemPath(const Char* path);
    // Null when memory ran out.
    const wchar_t* Text() const { return text; }

private:
    WString extended;
    const wchar_t* text = nullptr;
};
