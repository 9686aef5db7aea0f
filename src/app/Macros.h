#pragma once

#include "base/Heap.h"
#include "base/WString.h"
#include "viewbase/ViewHost.h"

// Modifier bits of a recorded event.
namespace MacroModifier {
constexpr uint32_t Shift = 1;
constexpr uint32_t Ctrl = 2;
constexpr uint32_t Alt = 4;
} // namespace MacroModifier

// The system's message numbers that the recorder looks at.
namespace MacroMessage {
constexpr uint32_t KeyDown = 256;
constexpr uint32_t KeyUp = 257;
constexpr uint32_t Character = 258;
constexpr uint32_t Command = 273;
constexpr uint32_t FirstMouse = 512;
constexpr uint32_t LastMouse = 525;
} // namespace MacroMessage

// Whose window a message is addressed to.
enum class MacroTarget : uint32_t { ActiveView = 0, Frame = 1 };

// A message as it is recorded and played.
struct MacroInput {
    MacroTarget target = MacroTarget::ActiveView;
    uint32_t message = 0;
    uint32_t firstParameter = 0;
    uint32_t secondParameter = 0;
    uint32_t modifiers = 0; // MacroModifier bits held down
};

struct MacroEvent : HeapObject, MacroInput {
    explicit MacroEvent(const MacroInput& input) : MacroInput(input) {}
    MacroEvent* next = nullptr;
};

// The ten macro slots and whether one is being recorded or played.
class Macros {
public:
    static constexpr uint32_t SlotCount = 10;

    Macros() = default;
    ~Macros();
    Macros(const Macros&) = delete;
    Macros& operator=(const Macros&) = delete;

    bool IsRecording() const { return recording; }
    bool IsPlaying() const { return playing; }
    MacroState State() const;

    // Selects a slot; slot 0 when there is none of that number.
    void SelectSlot(uint32_t slot);
    // "Macro %u selected" for the current slot. False without memory.
    [[nodiscard]] bool SelectedText(WString& out) const;

    // Starts a recording into the emptied slot, or ends it. False when nothing changed (while playing).
    bool ToggleRecording();
    // Records a message, if it is one to record. True: it is to be swallowed.
    bool RecordMessage(const MacroInput& input);

    // The Play command. While recording it only ends that (docs/oddities.md): false, as while playing. True: the events
    // from FirstEvent on are to be sent, in order, as long as IsPlaying; then StopPlayback.
    [[nodiscard]] bool BeginPlayback();
    const MacroEvent* FirstEvent() const { return slots[current].head; }
    // Ends a playback, whether all of it was sent or not.
    void StopPlayback() { playing = false; }

private:
    struct Slot {
        MacroEvent* head = nullptr;
        MacroEvent* tail = nullptr;
    };

    static void Empty(Slot& slot);

    Slot slots[SlotCount];
    uint32_t current = 0;
    bool recording = false;
    bool playing = false;
};
