#pragma once

#include "base/win32/Windows.h"

// Guards for what the system lends: each gives back in its destructor what its constructor took. None
// is copied or moved. Taking can fail, so what is null or not open has to be asked for before use.

struct Guard {
    Guard() = default;
    Guard(const Guard&) = delete;
    Guard& operator=(const Guard&) = delete;
};

// A kernel object: leaving one open keeps files locked and processes unreaped.
class KernelHandle : Guard {
public:
    explicit KernelHandle(HANDLE handle) : handle(handle) {}
    ~KernelHandle() {
        if (IsValid()) CloseHandle(handle);
    }
    bool IsValid() const { return handle && handle != INVALID_HANDLE_VALUE; }
    HANDLE Get() const { return handle; }

private:
    HANDLE handle;
};

// A pen, brush, font, bitmap or region: the session has only 10,000 of them for one process.
class GdiObject : Guard {
public:
    explicit GdiObject(HGDIOBJ object) : object(object) {}
    ~GdiObject() {
        if (object) DeleteObject(object);
    }
    HGDIOBJ Get() const { return object; }

private:
    HGDIOBJ object;
};

// An object selected into a device context: it cannot be deleted before the old one is back.
class Selection : Guard {
public:
    Selection(HDC dc, HGDIOBJ object) : dc(dc), previous(SelectObject(dc, object)) {}
    ~Selection() { SelectObject(dc, previous); }

private:
    HDC dc;
    HGDIOBJ previous;
};

// The device context of a window outside of painting: it is borrowed from a common store.
class WindowDc : Guard {
public:
    explicit WindowDc(HWND window) : window(window), dc(GetDC(window)) {}
    ~WindowDc() {
        if (dc) ReleaseDC(window, dc);
    }
    HDC Get() const { return dc; }

private:
    HWND window;
    HDC dc;
};

// The device context of a paint message: without its end the message comes again for ever.
class PaintDc : Guard {
public:
    explicit PaintDc(HWND window) : window(window), dc(BeginPaint(window, &paint)) {}
    ~PaintDc() { EndPaint(window, &paint); }
    HDC Get() const { return dc; }
    const RECT& Area() const { return paint.rcPaint; }

private:
    HWND window;
    PAINTSTRUCT paint{};
    HDC dc;
};

// A device context in memory, to draw into a bitmap: deleted, not released.
class MemoryDc : Guard {
public:
    explicit MemoryDc(HDC compatible) : dc(CreateCompatibleDC(compatible)) {}
    ~MemoryDc() {
        if (dc) DeleteDC(dc);
    }
    HDC Get() const { return dc; }

private:
    HDC dc;
};

// A block for the clipboard: ours to free until the clipboard has taken it.
class GlobalBlock : Guard {
public:
    explicit GlobalBlock(size_t bytes) : block(GlobalAlloc(GMEM_MOVEABLE | GMEM_ZEROINIT, bytes)) {}
    ~GlobalBlock() {
        if (block) GlobalFree(block);
    }
    HGLOBAL Get() const { return block; }
    // To be called when the clipboard has accepted it.
    void GiveAway() { block = nullptr; }

private:
    HGLOBAL block;
};

// The address of a movable block: it counts its locks.
class GlobalAddress : Guard {
public:
    explicit GlobalAddress(HGLOBAL block) : block(block), address(block ? GlobalLock(block) : nullptr) {}
    ~GlobalAddress() {
        if (address) GlobalUnlock(block);
    }
    void* Get() const { return address; }

private:
    HGLOBAL block;
    void* address;
};

// The opened clipboard: while it is open no other program can use it.
class OpenedClipboard : Guard {
public:
    explicit OpenedClipboard(HWND owner) : isOpen(OpenClipboard(owner)) {}
    ~OpenedClipboard() {
        if (isOpen) CloseClipboard();
    }
    bool IsOpen() const { return isOpen; }

private:
    bool isOpen;
};
