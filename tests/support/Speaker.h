#pragma once

#include "support/ScratchFolder.h"

#include <chrono>
#include <string>
#include <thread>

// Commands for tests: scripts of tests/program/Speaker.cpp in a folder of their own. What still waits when
// the folder goes ends by itself.
class SpeakerScripts {
public:
    // The command that carries out the script: instructions, each with its line feed.
    std::u16string Command(const std::string& script) {
        const std::string name = "script" + std::to_string(++scripts);
        folder.Write(name, script);
        return std::u16string(u"\"") + Program() + u"\" " + folder.File(name).u16string();
    }
    // "wait " or "make ", and the file of a signal.
    std::string WaitFor(const std::string& signal) const { return "wait " + File(signal) + "\n"; }
    std::string Tell(const std::string& signal) const { return "make " + File(signal) + "\n"; }
    // The same from the test's side.
    void Give(const std::string& signal) const { folder.Write(signal, ""); }
    bool Got(const std::string& signal) const {
        return Eventually([&] { return std::filesystem::exists(folder.File(signal)); });
    }
    std::string File(const std::string& name) const { return folder.File(name).string(); }
    const ScratchFolder& Folder() const { return folder; }

    // Asks again and again until the condition holds; false when it does not for half a minute.
    template <class Condition> static bool Eventually(Condition condition) {
        const auto deadline = std::chrono::steady_clock::now() + std::chrono::seconds(30);
        while (!condition()) {
            if (std::chrono::steady_clock::now() > deadline) return false;
            std::this_thread::sleep_for(std::chrono::milliseconds(1));
        }
        return true;
    }

    static std::u16string Program();

private:
    ScratchFolder folder;
    int scripts = 0;
};
