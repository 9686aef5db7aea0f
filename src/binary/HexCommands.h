#pragma once

#include "viewbase/ViewCommand.h"

class HexEditor;

// The numbered commands of a hex view that shows a document.
namespace HexCommands {

// What is not known is not enabled, and does nothing.
bool IsEnabled(const HexEditor& editor, ViewCommand command);
void Execute(HexEditor& editor, ViewCommand command);

} // namespace HexCommands
