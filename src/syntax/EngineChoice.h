#pragma once

#include "syntax/SyntaxEngine.h"

// Makes the engine of the definition that lists `name`, or a plain one; null when memory runs out.
// `htmlDepth` is how many HTML engines the new one is nested in.
SyntaxEngine* MakeEngine(const Char* name, uint32_t htmlDepth);
