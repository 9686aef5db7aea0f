#pragma once

#include "base/Types.h"
#include "viewbase/ViewKey.h"

// Virtual-key codes that only the frame looks at, the system's own; see ViewKey.h for others.
namespace FrameKey {
constexpr uint32_t Tab = 0x09;
constexpr uint32_t Ctrl = 0x11;
constexpr uint32_t Digit0 = 0x30;
constexpr uint32_t Digit9 = 0x39;
} // namespace FrameKey

// A key message and the state that it arrives in.
struct KeyPress {
    bool isDown = false; // neither: not a key message
    bool isUp = false;
    uint32_t key = 0;
    bool shift = false;
    bool ctrl = false;
    bool alt = false;
    bool recording = false; // a macro
    bool playing = false;
    bool switching = false; // the Ctrl+Tab flag
    bool hasActivePane = false;
};

enum class KeyAction {
    None,
    SelectMacroSlot,   // slot `index`
    ShowDocument,      // document `index` of the opening order, if there is one
    LeaveOutput,       // leave an output document
    ShowNextInMru,     // next document in order of use; set the switching flag
    ShowPreviousInMru, // the same the other way
};

enum class Swallow { No, Yes, IfActed };

struct KeyDecision {
    KeyAction action = KeyAction::None;
    uint32_t index = 0;
    // What is not swallowed goes on to the macro recorder, while recording, and to its window.
    Swallow swallow = Swallow::No;
};

// Whether a message of any kind, while Ctrl+Tab walks through the documents, ends that: Ctrl is up. Its release
// itself may have gone to a dialog or a menu.
bool EndsSwitching(const KeyPress& press);

// What the frame does with a key before its window gets it.
KeyDecision DecideKey(const KeyPress& press);
