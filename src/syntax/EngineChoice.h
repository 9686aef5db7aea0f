#pragma once

#include "syntax/SyntaxEngine.h"

// Chooses an engine by `name` or, when that is null or empty, by the file name of `path`. Returns a new
// engine with one reference, which the caller takes over; null when memory runs out.
SyntaxEngine* ChooseEngine(const Char* name, const Char* path);

// Chooses the engine of a document: by its engine name, else by the whole names that definitions list, else by
// the extension of its path, else by the file name. Either may be null or empty; the result is that of ChooseEngine.
SyntaxEngine* ChooseEngineForFile(const Char* engineName, const Char* path);
