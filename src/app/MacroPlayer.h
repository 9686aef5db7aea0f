#pragma once

#include "base/Types.h"

class Macros;
struct MacroEvent;

// What a macro plays on: the windows and the keyboard.
class MacroStage {
public:
    // In every view of every document.
    virtual void SuspendRedraw() = 0;
    virtual void ResumeRedraw() = 0;
    // MacroModifier bits: those of the thread's keyboard state, and those that are physically down.
    virtual uint32_t HeldModifiers() const = 0;
    virtual uint32_t PhysicalModifiers() const = 0;
    virtual void SetModifiers(uint32_t modifiers) = 0;
    // Whether the user has pressed Escape since the last call.
    virtual bool TakeEscape() = 0;
    // Sends the event's message to its window, after the frame has looked at it. An event without a window is
    // skipped.
    virtual void Send(const MacroEvent& event) = 0;
    // In every document; see Document.
    virtual void JoinSteps(uint32_t after) = 0;

protected:
    ~MacroStage() = default;
};

// The result of MacroPlayer::Repeat.
enum class RepeatResult : uint32_t { Played, IsEmpty, IsRecording, IsPlaying };

// Plays the current slot.
class MacroPlayer {
public:
    MacroPlayer(Macros& slots, MacroStage& windows) : macros(slots), stage(windows) {}
    MacroPlayer(const MacroPlayer&) = delete;
    MacroPlayer& operator=(const MacroPlayer&) = delete;

    // While recording it only ends that. False when nothing was played.
    bool Play();
    // Plays it `count` times, or until something ends the playback, as one step of undo in each document. Refused while
    // a macro is recorded, which goes on.
    RepeatResult Repeat(uint32_t count);
    // A dialog was closed, maybe one that the macro has opened.
    void DialogClosed() { dialogClosed = true; }

private:
    void SendTimes(uint32_t count);
    void SendEvents();

    Macros& macros;
    MacroStage& stage;
    bool dialogClosed = false; // since the last playback began
};
