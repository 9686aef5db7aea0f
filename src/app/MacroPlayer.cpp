#include "app/MacroPlayer.h"

#include "app/Macros.h"

bool MacroPlayer::Play() {
    if (!macros.BeginPlayback()) return false;
    stage.SuspendRedraw();
    const uint32_t saved = stage.HeldModifiers();
    dialogClosed = false;
    SendEvents();
    // The release of keys that were held waits in the queue, unless a dialog of the macro has taken it out or it
    // went with the Escape that ended the macro.
    stage.SetModifiers(dialogClosed || !macros.IsPlaying() ? stage.PhysicalModifiers() : saved);
    stage.ResumeRedraw();
    macros.StopPlayback();
    return true;
}

void MacroPlayer::SendEvents() {
    for (const MacroEvent* event = macros.FirstEvent(); event && macros.IsPlaying(); event = event->next) {
        // The way out of a macro that does not end soon enough.
        if (stage.TakeEscape())
            macros.StopPlayback();
        else
            stage.Send(*event);
    }
}
