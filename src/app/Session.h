#pragma once

#include "base/WString.h"

class CommandContext;
class DocumentList;

// The session file's text: a script that opens the documents that have files. Appends to `out`; false
// without memory.
[[nodiscard]] bool BuildSessionText(const DocumentList& documents, WString& out);

// Writes the session to `file` (a pair of quotes around it is dropped), asking before any other
// existing file than the current session's is replaced. Reports failure itself.
void SaveSession(CommandContext& frame, const Char* file);
