#pragma once

#include "app/ScreenBatch.h"
#include "app/win32/StatusBar.h"
#include "base/WString.h"

class CommandWindow;
class Macros;
class PaneWindows;
struct CommandState;

// What the frame's window shows: its title, the status bar, and where everything is.
class FrameScreen final : public FrameDisplay {
public:
    FrameScreen(PaneWindows& allPanes, CommandWindow& commands, const Macros& slots, const CommandState& command)
        : panes(allPanes), commandWindow(commands), macros(slots), state(command) {}
    FrameScreen(const FrameScreen&) = delete;
    FrameScreen& operator=(const FrameScreen&) = delete;

    bool Create(HWND frame, HINSTANCE instance);
    // Makes the fonts of the status bar and the command window what the system has now; laying out has to follow.
    void ApplyFonts();
    // What remains for the panes, from the client area's origin.
    SIZE PaneArea() const;
    // A message hides what its field shows otherwise, which comes back when null clears it.
    void SetStatusText(StatusField field, const Char* text);

    // FrameDisplay.
    void LayOutNow() override;
    void RefreshTitleNow() override;
    void RefreshStatusNow() override;
    void ClearStatusFields() override;
    void SetRedraw(bool on) override;

private:
    HWND window = nullptr;
    StatusBar statusBar;
    PaneWindows& panes;
    CommandWindow& commandWindow;
    const Macros& macros;
    const CommandState& state;
    WString shownTitle;
    bool messageShown = false; // field 0 shows a view's message
};
