#pragma once

#include "base/RecoveryServices.h"
#include "document/PollTimer.h"
#include "document/SlowDrives.h"
#include "document/TextDocumentView.h"

// What text documents need of the program around them. Owned by the maker of the documents; outlives them.
struct TextServices {
    RecoveryServices& recovery;
    TextViewFactory makeView = nullptr; // null: no view can be made
    PollTimer* timer = nullptr;         // null: no command can be run
    SlowDrives slowDrives;
};
