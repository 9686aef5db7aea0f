#pragma once

#include "base/win32/Windows.h"
#include "viewbase/CharWidths.h"
#include "viewbase/ViewMetrics.h"

// The editor font as the views measure with it: one font for all of them.
namespace ViewFont {

// Reads the metrics of the current font and forgets all cached widths. Called whenever the font was
// rebuilt, before the views lay themselves out again.
void Refresh();
const ViewMetrics& Metrics();
CharWidths& Widths();
// The device context in which widths are measured goes with the font, at shutdown.
void Release();

} // namespace ViewFont
