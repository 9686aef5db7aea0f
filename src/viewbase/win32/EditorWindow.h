#pragma once

#include "viewbase/EditorInput.h"
#include "viewbase/RowPicture.h"
#include "viewbase/win32/ScreenReader.h"
#include "viewbase/win32/View.h"

// The window half that the text view and the hex view have in common: routes messages to an editor,
// which decides everything, and shows what it answers. DestroyView destroys it and takes it out of its document.
class EditorWindow : public View, public EditorSurface, public AccessibleWindow {
public:
    // Draws the rows that the client pixels [top, bottom) touch, all rows when that is empty.
    virtual void PaintRows(HDC target, int top, int bottom) = 0;

    // View.
    Document* Attach(HWND newWindow) override;
    void Detach() override;
    void OnSize(SettingsEffect kind) override;
    void SuspendRedraw(bool resume) override { resume ? Input().ResumeRedraw() : Input().SuspendRedraw(); }
    void Invalidate() override { Input().Invalidate(); }
    LRESULT WindowProc(UINT message, WPARAM wparam, LPARAM lparam) override;
    void OnKeyDown(uint32_t key, uint32_t repeat, uint32_t flags) override;
    void OnChar(Char character, uint32_t repeat, uint32_t flags) override;

    // EditorSurface, but for the dialogs.
    bool HasWindow() const override { return window != nullptr; }
    bool HasFocus() const override { return focused; }
    void TakeFocus() override;
    ClientSize Size() const override;
    const ViewMetrics& Metrics() const override;
    void InvalidateAll() override;
    void InvalidateStrip(int32_t top, int32_t bottom) override;
    void ShowCaretAt(ClientPoint point) override;
    void RenewCaret() override;
    void SetScrollBar(ScrollAxis axis, const ScrollBar& bar) override;
    bool IsCtrlDown() const override { return GetKeyState(VK_CONTROL) < 0; }
    bool IsShiftDown() const override { return GetKeyState(VK_SHIFT) < 0; }
    bool IsAltDown() const override { return GetKeyState(VK_MENU) < 0; }
    void BeginDrag() override;
    void EndDrag() override;
    bool ReadClipboard(WString& text, bool& wholeLine) override;
    void WriteClipboard(const ClipboardItem* items, uint32_t count) override;
    uint64_t Ticks() const override;
    void SetWaitCursor(bool wait) override;
    bool TakeEscape() override;
    ViewHost* Host() const override { return host; }
    View* AsView() override { return this; }
    void DestroyView() override;

    // AccessibleWindow.
    bool UseOle() override { return host && host->UseOle(); }

protected:
    virtual EditorInput& Input() = 0;
    // What the factory of a kind of views does: makes a `Window` that shows `document` inside `parent`, or has no
    // window when that is null. Its editor, or null on failure.
    template <class Window, class Shown> static auto MakeView(Shown& document, NativeWindow parent) {
        Window* const view = new Window;
        auto* editor = view ? &view->Editor() : nullptr;
        if (!view) return editor;
        editor->SetDocument(&document);
        if (view->CreateIn(parent)) return editor;
        delete view;
        return editor = nullptr;
    }
    // Makes a window inside `parent` and attaches it; none when that is null. False on failure.
    [[nodiscard]] bool CreateIn(NativeWindow parent);
    // Draws all of `rows`, whose paint has begun.
    void Draw(HDC target, RowSource& rows);

private:
    bool HandleMouse(UINT message, WPARAM wparam, LPARAM lparam);
    // Has PaintRows draw what is invalid.
    void OnPaint();
    // False where a menu is not the view's to show.
    bool OnContextMenu(LPARAM place);
    void OnWheel(WPARAM wparam);
    void OnScrollMessage(ScrollAxis axis, WORD code);

    ScreenReader reader{*this};
    MouseCapture capture;               // while dragging
    WindowTimer dragTimer;              // while dragging
    HCURSOR cursorBeforeWait = nullptr; // the pointer may be over a dialog
};
