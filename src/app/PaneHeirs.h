#pragma once

#include "app/Pane.h"

// Gives the area of a pane that is about to be closed to its neighbours among those from `head` on: best to ones that
// lie along a whole side of it. A neighbour that grows over other panes cuts them back. Returns the first
// neighbour that has grown; null when none could.
Pane* GiveAreaAway(Pane* head, const Pane& closed);
