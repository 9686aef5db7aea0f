#include "base/SystemCase.h"

#include "base/win32/Windows.h"

#include <algorithm>

bool SystemCase::Fold(Char* text, uint32_t count) {
    constexpr uint32_t Most = 1u << 30; // the system counts with a sign
    for (uint32_t at = 0; at < count;) {
        const auto part = static_cast<int>(std::min(count - at, Most));
        // Capitals: some letters have several small forms.
        wchar_t* const place = Wide(text + at);
        if (LCMapStringEx(LOCALE_NAME_INVARIANT, LCMAP_UPPERCASE, place, part, place, part, nullptr, nullptr, 0) !=
            part)
            return false;
        at += static_cast<uint32_t>(part);
    }
    // One of which the system leaves as it is: the sigma at the end of a word.
    std::replace(text, text + count, u'\u03C2', u'\u03A3');
    return true;
}
