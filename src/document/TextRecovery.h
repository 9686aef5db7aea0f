#pragma once

#include "base/Journal.h"
#include "document/TextDecode.h"

// Rebuilds the text from a text's journal whose header was read. With Whole and Cut, `out` (a fresh one) has the text
// as it was after one of its edits, with its encoding and line ends.
[[nodiscard]] RecoveryResult RecoverText(JournalReader& journal, DecodedText& out);
