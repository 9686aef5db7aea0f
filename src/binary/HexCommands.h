#pragma once

#include "viewbase/CommandRows.h"

class HexEditor;

// The numbered commands of a hex view that shows a document.
namespace HexCommands {

extern const CommandRows<HexEditor> Rows;

} // namespace HexCommands
