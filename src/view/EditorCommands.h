#pragma once

#include "viewbase/ViewCommand.h"

class TextEditor;

// The numbered commands of a text view that shows a document.
namespace EditorCommands {

// What is not known is not enabled, and does nothing.
bool IsEnabled(const TextEditor& editor, ViewCommand command);
void Execute(TextEditor& editor, ViewCommand command);

} // namespace EditorCommands
