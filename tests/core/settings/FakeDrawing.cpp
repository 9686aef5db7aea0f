// The drawing half, as far as the change handlers call it. In this program it takes the place of the real ones.
#include "SettingsTestSupport.h"

bool RebuildDrawing(DrawingResource changed) { return !SettingsTest::rebuild || SettingsTest::rebuild(changed); }
