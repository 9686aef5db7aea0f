#pragma once

#include "base/Types.h"
#include "base/WString.h"

// The file name at the caret: what is between the nearest quote or "<" at or before `caret` (else
// the start of the text) and the next quote, ">", line feed or the end. Replaces `name`; false without
// memory.
[[nodiscard]] bool FileNameAtCaret(const Char* text, uint32_t length, uint32_t caret, WString& name);

// Looks for a file along the quick-open path of the settings, whose environment variables are
// expanded. False when it is not found.
[[nodiscard]] bool FindAlongQuickOpenPath(const Char* name, WString& found);
