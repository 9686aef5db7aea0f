#pragma once

#include "viewbase/CommandRows.h"

class TextEditor;

// The numbered commands of a text view that shows a document.
namespace EditorCommands {

extern const CommandRows<TextEditor> Rows;

} // namespace EditorCommands
