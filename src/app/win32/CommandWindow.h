#pragma once

#include "app/CommandPrompt.h"
#include "app/win32/SystemFont.h"
#include "base/win32/WindowSubclass.h"

class PaneViews;

// The single-line edit control at the bottom of the frame into which commands are typed. Hidden at start.
class CommandWindow {
public:
    CommandWindow(CommandContext& commands, PaneViews& allPanes) : context(commands), panes(allPanes) {}
    CommandWindow(const CommandWindow&) = delete;
    CommandWindow& operator=(const CommandWindow&) = delete;

    bool Create(HWND frame, HINSTANCE instance);
    HWND Window() const { return window; }
    bool IsVisible() const { return visible; }
    // Shown, the window gets the focus; hidden, it gives it to the active pane, or to the frame without one.
    void Show(bool show);
    void SetText(const Char* text);
    // For the control's EN_CHANGE.
    void OnTextChanged();
    bool GetText(WString& out) const;
    // In the colours of the text, which the frame is asked for (WM_CTLCOLOREDIT): sets those of `target` and returns
    // the background's brush.
    HBRUSH ApplyColours(HDC target) const;
    void Invalidate() { InvalidateRect(window, nullptr, TRUE); }
    // Makes the font follow the system's interface font for the frame's DPI.
    void ApplyFont();
    // The height of the font plus twice the system's border width.
    int Height() const;
    // Remembers whether the focus is here.
    void OnFrameDeactivated() { wasFocused = GetFocus() == window; }
    // Whether the focus was here when the frame was last deactivated; answers true once.
    bool TakesFocusBack();

private:
    static LRESULT CALLBACK EditProc(HWND edit, UINT message, WPARAM wparam, LPARAM lparam, UINT_PTR, DWORD_PTR data);
    // True when the key was the command window's own.
    bool OnKeyDown(WPARAM key);
    void Enter();
    void Complete(bool forward);
    void FindPrefix();
    static constexpr uint32_t AtEnd = UINT32_MAX;
    // Replaces the text and puts the caret at `caret` (or AtEnd); null changes nothing.
    void Replace(const Char* text, uint32_t caret);

    CommandContext& context;
    PaneViews& panes;
    HWND window = nullptr;
    WindowSubclass keys; // EditProc
    SystemFont font;
    bool visible = false;
    bool wasFocused = false;
    bool replacing = false; // the text changes because the prompt says so
    CommandPrompt prompt;
};

// While one lives in console mode, the focus comes back to the command window if it was there: commands are typed
// one after the other, whatever pane shows what they print.
class ConsoleFocus {
public:
    ConsoleFocus(const CommandWindow& commands, bool isConsole)
        : window(isConsole && GetFocus() == commands.Window() ? commands.Window() : nullptr) {}
    ~ConsoleFocus() {
        if (window) SetFocus(window);
    }
    ConsoleFocus(const ConsoleFocus&) = delete;
    ConsoleFocus& operator=(const ConsoleFocus&) = delete;

private:
    HWND window;
};
