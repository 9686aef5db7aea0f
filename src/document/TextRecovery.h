#pragma once

#include "base/Journal.h"
#include "document/TextDecode.h"

// Makes the text of a journal whose header was read, of a text. With Whole and Cut, `out` (a fresh one) has the text as
// it was after one of its edits, with its encoding and line ends.
[[nodiscard]] RecoveryResult RecoverText(JournalReader& journal, DecodedText& out);
