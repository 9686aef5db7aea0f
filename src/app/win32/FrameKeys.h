#pragma once

#include "base/win32/Windows.h"

class DocumentDisplay;
class DocumentList;
class FrameScreen;
class Macros;
class PaneWindows;
struct KeyDecision;
struct MacroInput;

// The keys that the frame takes before their windows, and the recording of macros.
class FrameKeys {
public:
    FrameKeys(Macros& slots, DocumentList& allDocuments, DocumentDisplay& shown, PaneWindows& allPanes,
              FrameScreen& frameScreen)
        : macros(slots), documents(allDocuments), display(shown), panes(allPanes), screen(frameScreen) {}
    FrameKeys(const FrameKeys&) = delete;
    FrameKeys& operator=(const FrameKeys&) = delete;

    void SetFrame(HWND window) { frame = window; }
    // Looks at a message before its window; true: it goes no further.
    bool PreDispatch(const MSG& message);

private:
    MacroInput InputOf(const MSG& message) const;
    bool CarryOut(const KeyDecision& decision);
    bool LeaveOutput();

    Macros& macros;
    DocumentList& documents;
    DocumentDisplay& display;
    PaneWindows& panes;
    FrameScreen& screen;
    HWND frame = nullptr;
};

// MacroModifier bits of the thread's keyboard state.
uint32_t HeldModifiers();
