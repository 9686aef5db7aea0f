#include "base/SystemCase.h"

#include <cwctype>
#include <locale.h>

bool SystemCase::Fold(Char* text, uint32_t count) {
    // The plain locale knows the letters of ASCII only.
    static const locale_t everyLetter = newlocale(LC_CTYPE_MASK, "C.UTF-8", nullptr);
    for (uint32_t i = 0; i < count; ++i) {
        const wint_t capital = towupper_l(text[i], everyLetter);
        if (capital <= UINT16_MAX) text[i] = static_cast<Char>(capital);
    }
    return true;
}
