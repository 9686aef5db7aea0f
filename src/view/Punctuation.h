#pragma once

#include "base/Types.h"

// What separates words in the scripts of the world: what Unicode calls punctuation, the blocks of general punctuation
// and symbols, and the signs among the letters of Latin-1 and of full-width ASCII.
namespace Punctuation {

// `c` is above the signs of Latin-1 (U+00C0 and on). A half of a pair is none.
bool Contains(Char c);

} // namespace Punctuation
