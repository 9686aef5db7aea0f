#pragma once

#include "app/CommandPrompt.h"
#include "base/win32/Windows.h"

class MainFrame;

// The single-line edit control at the bottom of the frame into which commands are typed. Hidden at start.
class CommandWindow {
public:
    bool Create(MainFrame& owner, HINSTANCE instance);
    HWND Window() const { return window; }
    bool IsVisible() const { return visible; }
    // Shows or hides the window only; layout and focus are the frame's.
    void SetVisible(bool show);
    void SetText(const Char* text);
    // For the control's EN_CHANGE.
    void OnTextChanged();
    bool GetText(WString& out) const;
    // Makes the font follow the system's interface font for the frame's DPI.
    void ApplyFont();
    // The height of the font plus twice the system's border width.
    int Height() const;
    // Gives up the font; for shutdown.
    void Release();

private:
    static LRESULT CALLBACK EditProc(HWND edit, UINT message, WPARAM wparam, LPARAM lparam, UINT_PTR, DWORD_PTR data);
    // True when the key was the command window's own.
    bool OnKeyDown(WPARAM key);
    void Enter();
    void Complete(bool forward);
    void FindPrefix();
    // Replaces the text and puts the caret at `caret` (at the end for None32); null changes nothing.
    void Replace(const Char* text, uint32_t caret);

    MainFrame* frame = nullptr;
    HWND window = nullptr;
    HFONT font = nullptr;
    bool visible = false;
    bool replacing = false; // the text changes because the prompt says so
    CommandPrompt prompt;
};
