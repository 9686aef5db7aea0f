#include "app/win32/FrameParts.h"

bool FrameParts::Create(HWND frame, HINSTANCE instance) {
    window = frame;
    pollTimer.SetWindow(frame);
    panes.SetFrame(frame);
    messages.SetFrame(frame);
    fileDialogs.SetFrame(frame);
    toolStarter.SetFrame(frame);
    keys.SetFrame(frame);
    macroWindows.SetFrame(frame);
    settings.SetFrame(frame);
    return screen.Create(frame, instance) && commandWindow.Create(frame, instance);
}
