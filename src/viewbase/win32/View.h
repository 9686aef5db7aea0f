#pragma once

#include "base/Heap.h"
#include "viewbase/ViewCommand.h"
#include "viewbase/ViewHost.h"
#include "viewbase/ViewMetrics.h"
#include "viewbase/win32/BackBuffer.h"

class Document;

// The window base of every editing view: the text view and the hex view derive from it. A view is made
// detached; Attach takes over a window (a pane's, or one of class OrvaneView) until Detach or the
// window's end. The view does not own its document. The order of the operations is fixed.
class View : public HeapObject {
public:
    View() = default;
    View(const View&) = delete;
    View& operator=(const View&) = delete;

    // Keeps the frame that receives status text and requests; returns 1.
    virtual uint32_t SetHost(ViewHost* newHost);
    // Takes over the window's messages and user data, lays the view out and returns its document.
    virtual Document* Attach(HWND newWindow);
    // Gives the window back to its previous procedure and forgets it.
    virtual void Detach();
    virtual HWND GetWindow() const { return window; }
    // Destroys the window, if any, and forgets it.
    virtual void DestroyWindow();
    virtual Document* GetDocument() const = 0;
    // Moves the caret to the start of a 0-based line (clamped); `selectLine` selects the whole line. Does
    // nothing where there are no lines.
    virtual void GoToLine(uint32_t line, bool selectLine) = 0;
    virtual bool IsCommandEnabled(ViewCommand command) const = 0;
    // False for an unknown command.
    virtual bool ExecuteCommand(ViewCommand command) = 0;
    // Recomputes everything that depends on the window's size and the settings; when the engine may be another
    // one, also the syntax state of the top line.
    virtual void OnSize(SettingsEffect kind) = 0;
    // False suspends redraw, true resumes it; calls nest. Odd on purpose: docs/oddities.md.
    virtual void SuspendRedraw(bool resume) = 0;
    // Repaints everything, now or once redraw is resumed.
    virtual void Invalidate() = 0;
    // NoLine means the caret line. Does nothing where there are no lines.
    virtual void ToggleBookmark(uint32_t line) = 0;
    virtual ~View() = default;
    // Selects the next match of the last search; false when there is none. The second argument is
    // ignored: docs/oddities.md.
    virtual bool FindNext(bool backward, uint32_t ignored) = 0;
    // The messages of the window. Derived classes take theirs and pass on the others; here those of keys become the
    // operations below.
    virtual LRESULT WindowProc(UINT message, WPARAM wparam, LPARAM lparam);
    // A virtual-key code. OnChar gets a unit of UTF-16: a character beyond U+FFFF comes as two.
    virtual void OnKeyDown(uint32_t key, uint32_t repeat, uint32_t flags) = 0;
    // Odd on purpose: docs/oddities.md.
    virtual void OnKeyUp(uint32_t, uint32_t, uint32_t) {}
    virtual void OnChar(Char character, uint32_t repeat, uint32_t flags) = 0;
    // How far from the window's left edge the text begins, in pixels, when it is not scrolled.
    virtual int32_t TextLeft() const = 0;

    ViewHost* Host() const { return host; }
    // Whether the edge of the window is drawn in the system's highlight colour. It may be said without a window.
    void SetMarked(bool mark);

protected:
    HWND window = nullptr;
    WNDPROC previousProcedure = nullptr; // restored on detach
    LONG_PTR previousUserData = 0;       // restored on detach
    ViewHost* host = nullptr;
    bool focused = false;         // between WM_SETFOCUS and WM_KILLFOCUS: asking the system costs more
    HCURSOR beamCursor = nullptr; // loaded on the first resize
    BackBuffer backBuffer;        // one line high, rebuilt on every resize

    void LoadBeamCursor();
    // Puts the system caret at a client point, making it as high as a line of that font when there is none; only
    // ever called with the focus.
    void ShowCaretAt(POINT place, const ViewMetrics& metrics);
    bool IsCaretShown() const { return caret.IsShown(); }
    // Also destroys it.
    void HideCaret() { caret.Destroy(); }
    // Where it was last put, in client pixels.
    POINT CaretPlace() const { return caretPlace; }
    // The system has moved the caret, as it does together with a picture that scrolls.
    void ForgetCaretPlace() { caretPlaced = false; }

private:
    LRESULT OnSetCursor(WPARAM wparam, LPARAM lparam);
    LRESULT OnMouseActivate(WPARAM wparam, LPARAM lparam);
    LRESULT OnFramePaint(WPARAM wparam, LPARAM lparam);

    bool marked = false;
    WindowCaret caret;
    POINT caretPlace = {};
    bool caretPlaced = false; // the caret is at that place
    int caretHeight = 0;
    int caretWidth = 0;
};

// The window class of the views, OrvaneView, for as long as this lives.
class ViewClass {
public:
    // Registers it, and the clipboard format of whole lines. False when the system refuses.
    [[nodiscard]] bool Register(HINSTANCE instance);
    // A window of the class inside `parent`, whose messages go to `view`; null on failure.
    static HWND CreateIn(HWND parent, View* view);

private:
    WindowClass windowClass;
};
