#pragma once

#include <cstddef>
#include <malloc.h>

namespace Bench {

// All that the program holds, in blocks of its heap and in those that the system maps for it.
inline size_t BytesInUse() {
    const struct mallinfo2 info = mallinfo2();
    return info.uordblks + info.hblkhd;
}

} // namespace Bench
