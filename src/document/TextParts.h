#pragma once

#include "document/EditLine.h"
#include "document/LineMarks.h"
#include "document/TextStore.h"

// What the undo records of a document change; TextContent has it for reading, EditTarget for changing.
struct TextParts {
    TextStore store;
    EditLine editLine;
    LineMarks marks;
};
