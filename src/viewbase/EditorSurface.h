#pragma once

#include "base/Types.h"
#include "viewbase/ViewHost.h"
#include "viewbase/ViewMetrics.h"

class WString;

// A point of the client area, in pixels.
struct ClientPoint {
    int32_t x = 0;
    int32_t y = 0;
};

// 0 x 0 without a window.
struct ClientSize {
    int32_t width = 0;
    int32_t height = 0;
};

enum class ScrollAxis : uint32_t { Vertical = 0, Horizontal = 1 };

// A bar from 0 to `maximum`, of which `page` is seen at a time. A bar that cannot scroll is shown
// disabled.
struct ScrollBar {
    int32_t maximum = 0;
    int32_t page = 0;
    int32_t position = 0;

    bool operator==(const ScrollBar&) const = default;
};

enum class ClipboardFormat : uint32_t { UnicodeText, WholeLine, RichText, Html };

// One format offered to the clipboard; `bytes` is all that is copied, a terminator included if wanted.
struct ClipboardItem {
    ClipboardFormat format;
    const void* data;
    size_t bytes;
};

// What the editor of a view asks of its window. Everything may be called without a window and does nothing then.
// Coordinates are client pixels.
class EditorSurface {
public:
    virtual bool HasWindow() const = 0;
    virtual bool HasFocus() const = 0;
    virtual void TakeFocus() = 0;
    virtual ClientSize Size() const = 0;
    // Of the font the window shows now; all 0 while there is none.
    virtual const ViewMetrics& Metrics() const = 0;

    virtual void InvalidateAll() = 0;
    // The full width from `top` up to, not including, `bottom`.
    virtual void InvalidateStrip(int32_t top, int32_t bottom) = 0;
    // The caret is as high as a line. ShowCaretAt makes it when there is none; RenewCaret makes a shown
    // caret again in the size that holds now.
    virtual void ShowCaretAt(ClientPoint point) = 0;
    virtual void RenewCaret() = 0;
    // Called only with values that differ from the last ones.
    virtual void SetScrollBar(ScrollAxis axis, const ScrollBar& bar) = 0;

    virtual bool IsCtrlDown() const = 0;
    virtual bool IsShiftDown() const = 0;
    // With Ctrl down as well it is AltGr, which types characters.
    virtual bool IsAltDown() const = 0;
    // Captures the mouse and starts a timer of 100 ms, until EndDrag. However the capture ends, DragSelection is
    // notified (OnCaptureLost).
    virtual void BeginDrag() = 0;
    virtual void EndDrag() = 0;

    // False without Unicode text (or memory). `text` ends at its first NUL, `wholeLine` tells whether
    // it was copied as a whole line.
    [[nodiscard]] virtual bool ReadClipboard(WString& text, bool& wholeLine) = 0;
    // Puts the formats on the clipboard in one opening, and reports failures to the user itself.
    virtual void WriteClipboard(const ClipboardItem* items, uint32_t count) = 0;

    // Modal dialogs; they work on the editor and on `findState`.
    virtual void ShowFindDialog() = 0;
    virtual void ShowGoToDialog() = 0;

    // For operations that may take long: milliseconds, the wait cursor, and whether the user has pressed
    // Escape since the last call (other input stays queued).
    virtual uint64_t Ticks() const = 0;
    virtual void SetWaitCursor(bool wait) = 0;
    [[nodiscard]] virtual bool TakeEscape() = 0;

    virtual ViewHost* Host() const = 0; // null until the view is placed in a frame
    virtual View* AsView() = 0;
    // Destroys the view, its window and with it the editor that is calling.
    virtual void DestroyView() = 0;

protected:
    ~EditorSurface() = default;
};
