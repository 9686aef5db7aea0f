#include "app/Macros.h"

#include "base/Assert.h"
#include "base/TextFormat.h"
#include "viewbase/ViewHost.h"

#include <utility>

namespace {

bool IsRecorded(uint32_t message) {
    return message == MacroMessage::KeyDown || message == MacroMessage::KeyUp || message == MacroMessage::Character ||
           message == MacroMessage::Command;
}

} // namespace

Macros::~Macros() {
    for (Slot& slot : slots) Empty(slot);
}

MacroState Macros::State() const {
    ORVANE_ASSERT(!recording || !playing);
    if (recording) return MacroState::Recording;
    return playing ? MacroState::Playing : MacroState::Idle;
}

void Macros::SelectSlot(uint32_t slot) { current = slot < SlotCount ? slot : 0; }

bool Macros::SelectedText(WString& out) const {
    WString text;
    if (!Text::AppendFormat(text, u"Macro %u selected", current)) return false;
    out = std::move(text);
    return true;
}

bool Macros::ToggleRecording() {
    if (playing) return false;
    recording = !recording;
    if (recording) Empty(slots[current]);
    return true;
}

bool Macros::RecordMessage(const MacroInput& input) {
    if (!recording) return false;
    // The mouse is locked out, so that keys alone replay what was done.
    if (input.message >= MacroMessage::FirstMouse && input.message <= MacroMessage::LastMouse) return true;
    if (!IsRecorded(input.message)) return false;
    auto* const event = new MacroEvent(input);
    if (!event) return false;
    Slot& slot = slots[current];
    (slot.tail ? slot.tail->next : slot.head) = event;
    slot.tail = event;
    return false;
}

bool Macros::BeginPlayback() {
    if (playing) return false;
    playing = !recording;
    recording = false;
    return playing;
}

void Macros::Empty(Slot& slot) {
    while (MacroEvent* const event = slot.head) {
        slot.head = event->next;
        delete event;
    }
    slot.tail = nullptr;
}
