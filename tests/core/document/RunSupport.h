#pragma once

#include "document/CommandProcess.h"
#include "document/PollTimer.h"
#include "support/FakeView.h"
#include "support/Speaker.h"
#include "support/TestServices.h"
#include "support/TextDocument.h"

#include <gtest/gtest.h>
#include <map>
#include <string>

// Documents that commands run into. The polls are the test's own; what the document wants of the timer
// is recorded.
class RunTest : public testing::Test {
public:
    // The time of each document's poll timer that is set.
    static inline std::map<TextBuffer*, uint32_t> timers;
    static inline bool timerFails = false;

protected:
    RunTest() {
        timers.clear();
        timerFails = false;
        textServices.timer = &recorder;
    }

    bool Run(TextBuffer& document, const std::string& script) {
        return document.RunCommand(speaker.Command(script).c_str(), Directory().c_str());
    }
    // Not the folder of the scripts, which could not be deleted while a command is in it.
    static std::u16string Directory() {
        std::u16string path = std::filesystem::temp_directory_path().u16string();
        if (path.back() == u'/' || path.back() == u'\\') path.pop_back();
        return path;
    }
    // Starts a command that stays and prints nothing, so that what it prints is the test's: see Print.
    bool RunSilently(TextBuffer& document) { return Run(document, speaker.WaitFor("end")); }
    static void Print(TextBuffer& document, const std::string& bytes);
    // What is printed from now on is written from this byte of the file on.
    static void MoveTo(TextBuffer& document, uint64_t position);

    static bool IsRunning(const TextBuffer& document) {
        bool running = false;
        return document.GetOutputState(running) && running;
    }
    template <class Condition> static bool PollUntil(TextBuffer& document, Condition condition) {
        return SpeakerScripts::Eventually([&] { return (document.PollOutput(), condition()); });
    }
    static bool PollToTheEnd(TextBuffer& document) {
        return PollUntil(document, [&] { return !IsRunning(document); });
    }
    static bool ProcessHasEnded(TextBuffer& document) {
        return SpeakerScripts::Eventually([&] { return CommandProcess::HasEnded(TextBufferProbe::Run(document)); });
    }

    SpeakerScripts speaker;

private:
    class Recorder final : public PollTimer {
    public:
        bool Set(TextBuffer& document, uint32_t milliseconds) override {
            if (timerFails) return false;
            timers[&document] = milliseconds;
            return true;
        }
        void Stop(TextBuffer& document) override { timers.erase(&document); }
    };
    static inline Recorder recorder;
};
