#pragma once

#include "app/ToolRunner.h"
#include "base/win32/Windows.h"

// Starts the user's tools as programs of their own.
class SystemToolStarter final : public ToolStarter {
public:
    void SetFrame(HWND window) { frame = window; }

    // ToolStarter.
    bool AskArguments(ToolRecord& tool) override;
    void StartDetached(WString& commandLine, const WString& directory) override;

private:
    HWND frame = nullptr;
};
