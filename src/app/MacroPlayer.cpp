#include "app/MacroPlayer.h"

#include "app/Macros.h"
#include "document/StepSerial.h"
#include "viewbase/SuspendedRedraw.h"

bool MacroPlayer::Play() {
    if (!macros.BeginPlayback()) return false;
    SendTimes(1);
    return true;
}

RepeatResult MacroPlayer::Repeat(uint32_t count) {
    if (macros.IsRecording()) return RepeatResult::IsRecording;
    if (!macros.FirstEvent()) return RepeatResult::IsEmpty;
    if (!macros.BeginPlayback()) return RepeatResult::IsPlaying;
    // Before the macro as well: what it types first must not extend what the user has typed.
    const uint32_t start = StepSerial::Latest();
    stage.JoinSteps(start);
    SendTimes(count);
    stage.JoinSteps(start);
    return RepeatResult::Played;
}

void MacroPlayer::SendTimes(uint32_t count) {
    {
        const SuspendedRedraw suspended(stage);
        const uint32_t saved = stage.HeldModifiers();
        dialogClosed = false;
        for (; count && macros.IsPlaying(); --count) SendEvents();
        // The release of keys that were held waits in the queue, unless a dialog of the macro has taken it out or it
        // went with the Escape that ended the macro.
        stage.SetModifiers(dialogClosed || !macros.IsPlaying() ? stage.PhysicalModifiers() : saved);
    }
    macros.StopPlayback();
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
