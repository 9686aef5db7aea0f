#pragma once

#include "base/win32/Windows.h"
#include "document/OutputRun.h"
#include "support/FakeView.h"
#include "support/PolledWindow.h"
#include "support/Speaker.h"
#include "support/TestServices.h"
#include "support/TextDocument.h"

#include <gtest/gtest.h>
#include <optional>
#include <vector>

// An environment variable with another value, or none, while it lives.
class Environment {
public:
    Environment(const wchar_t* variable, const wchar_t* value) : name(variable) {
        wchar_t buffer[4096];
        if (GetEnvironmentVariableW(name, buffer, 4096)) before = buffer;
        SetEnvironmentVariableW(name, value);
    }
    ~Environment() { SetEnvironmentVariableW(name, before ? before->c_str() : nullptr); }
    Environment(const Environment&) = delete;
    Environment& operator=(const Environment&) = delete;

private:
    const wchar_t* name;
    std::optional<std::wstring> before;
};

// A document whose runs are polled by a window of this thread.
class CommandProcessTest : public testing::Test {
protected:
    CommandProcessTest()
        : window(CreateWindowExW(0, L"STATIC", L"", WS_POPUP, 0, 0, 10, 10, nullptr, nullptr, nullptr, nullptr)) {
        textServices.timer = &polled.timer;
    }
    ~CommandProcessTest() override {
        EndRun();
        textServices.timer = nullptr;
        DestroyWindow(window);
    }

    void EndRun() {
        if (IsRunning()) document->EndRun();
    }
    bool IsRunning() const {
        bool running = false;
        return document->GetOutputState(running) && running;
    }
    bool Run(const std::string& script) { return document->RunCommand(scripts.Command(script).c_str(), nullptr); }
    const OutputRun& State() const { return TextBufferProbe::Run(*document); }

    // Dispatches messages until the condition holds.
    template <class Condition> static bool DispatchUntil(Condition condition) {
        return SpeakerScripts::Eventually([&] {
            MSG message;
            while (PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE)) DispatchMessageW(&message);
            return condition();
        });
    }
    bool DispatchToTheEnd() {
        return DispatchUntil([this] { return !IsRunning(); });
    }

    HWND window;
    PolledWindow polled{window};
    SpeakerScripts scripts;
    TextDocument document;
};

// An empty folder that is this process's temporary one while it lives.
class TemporaryFolder {
public:
    TemporaryFolder() : tmp(L"TMP", Path().c_str()), temp(L"TEMP", Path().c_str()) {}
    std::wstring Path() const { return folder.File("x").parent_path().wstring(); }
    const ScratchFolder& Folder() const { return folder; }
    std::vector<std::wstring> Names() const {
        std::vector<std::wstring> names;
        for (const auto& entry : std::filesystem::directory_iterator(Path()))
            names.push_back(entry.path().filename().wstring());
        return names;
    }

private:
    ScratchFolder folder;
    Environment tmp;
    Environment temp;
};
