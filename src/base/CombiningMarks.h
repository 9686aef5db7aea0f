#pragma once

#include "base/Types.h"

// The characters that Unicode calls marks: accents, vowel signs and the like, which belong to the character before
// them. The joiners and modifiers of emoji are none.
namespace CombiningMarks {

bool Find(uint32_t codePoint);
inline bool IsMark(uint32_t codePoint) { return codePoint >= 0x300 && Find(codePoint); }

} // namespace CombiningMarks
