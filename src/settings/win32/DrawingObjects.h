#pragma once

#include "base/win32/Windows.h"

// The drawing objects derived from the settings, one set for the whole process: the editor font with
// what was measured in it, the brushes, and the dot that marks a space. LoadSettings and the change
// handlers build them; handles and measures are valid until the next rebuild.
namespace DrawingObjects {

// Destroys the objects, for a reload too; the next LoadSettings builds them again.
void Release();

// Rebuilds the font for a screen of `dpi` pixels an inch (the system's until this is called); nothing
// happens when it has that already. False when the font could not be made; the next call tries it again.
bool RebuildForDpi(uint32_t dpi);
uint32_t Dpi();

// Fills the dot that marks a space with SpaceColor, for a change of that alone. False when it could not be made; the
// old one stays then.
bool RefreshSpaceDot();

// Called after every rebuild of the font: the views must measure again, lay out and repaint.
void SetMetricsListener(void (*listener)());
// Changes with every rebuild of the font, for caches of character widths.
uint32_t FontGeneration();

HFONT EditorFont();
// In pixels, each at least 1.
int LineHeight();
int AverageWidth(); // unit of horizontal scrolling, of the line numbers and of the guides
int SpaceWidth();   // unit of tab stops

HBRUSH MarginBrush();
HBRUSH BookmarkBrush();
HBRUSH BackgroundBrush();
HBRUSH SelectionBrush();        // without a use on purpose: docs/oddities.md
constexpr int SpaceDotSize = 2; // pixels, in both directions
// Of SpaceColor as it was when the font was last rebuilt or the dot refreshed.
HBITMAP SpaceDot();

} // namespace DrawingObjects
