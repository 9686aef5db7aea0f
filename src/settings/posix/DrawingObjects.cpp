#include "settings/Settings.h"

// There are none: nothing is drawn here.
bool RebuildDrawing(DrawingResource) { return true; }
