#pragma once

#include "document/TextPosition.h"
#include "view/TextSpan.h"

// Word boundaries of caret moves within one line. Word characters are ASCII letters and digits, "_" and
// "#".
namespace Words {

// Where the word or the gap before `column` (> 0) starts: back over word characters when the one before
// the column is one, otherwise back to just after the last word character.
uint32_t StartBefore(TextSpan line, uint32_t column);
// Where the word or the gap at `column` ends; at most the line's length.
uint32_t EndAfter(TextSpan line, uint32_t column);
// What a word selection takes: from the start of the word that ends at or continues after `column` (from
// `column` itself when none does) to the end of the word or gap there. Empty only at the line's end.
ColumnRange WordAt(TextSpan line, uint32_t column);
// The first column that is neither space nor tab; the length of a blank line.
uint32_t FirstNonBlank(TextSpan line);

} // namespace Words
