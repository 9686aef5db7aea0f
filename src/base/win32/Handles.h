#pragma once

#include "base/win32/Windows.h"

// Guards for what is borrowed from the system: each gives back in its destructor what it holds. None is copied or
// moved. Taking can fail, so a guard may hold nothing: ask before use. scripts/check-guards looks for calls
// that give something back without a guard. Windows have none: they go with their parents, whoever made them.

struct Guard {
    Guard() = default;
    Guard(const Guard&) = delete;
    Guard& operator=(const Guard&) = delete;
};

// The guard of one handle; `GiveBack` is called with it. Null is no handle.
template <class Handle, void (*GiveBack)(Handle)> class Held : Guard {
public:
    Held() = default;
    explicit Held(Handle taken) : handle(taken) {}
    ~Held() { Reset(); }

    bool IsValid() const { return handle != nullptr; }
    Handle Get() const { return handle; }
    // Gives back what is held and holds `taken` instead.
    void Reset(Handle taken = nullptr) {
        Handle const old = handle;
        handle = taken;
        if (old) GiveBack(old);
    }
    // Leaves it to the caller to give the handle back.
    [[nodiscard]] Handle Detach() {
        Handle const kept = handle;
        handle = nullptr;
        return kept;
    }

private:
    Handle handle = nullptr;
};

// Wrappers with the signature that Held needs: the system's functions return values that nobody wants, and an imported
// function cannot be the argument of a template.
namespace GiveBack {
inline void Kernel(HANDLE handle) { CloseHandle(handle); }
inline void Search(HANDLE search) { FindClose(search); }
inline void Library(HMODULE library) { FreeLibrary(library); }
inline void Menu(HMENU menu) { DestroyMenu(menu); }
inline void Accelerators(HACCEL table) { DestroyAcceleratorTable(table); }
inline void Drop(HDROP drop) { DragFinish(drop); }
inline void MemoryDc(HDC dc) { DeleteDC(dc); }
inline void Range(void* range) { VirtualFree(range, 0, MEM_RELEASE); }
template <class Object> void Gdi(Object object) { DeleteObject(object); }
} // namespace GiveBack

// The functions that open files and searches return another value than null on failure.
inline HANDLE NullIfInvalid(HANDLE handle) { return handle == INVALID_HANDLE_VALUE ? nullptr : handle; }

// A kernel object: leaving one open keeps files locked and processes unreaped.
class KernelHandle : public Held<HANDLE, GiveBack::Kernel> {
public:
    KernelHandle() = default;
    explicit KernelHandle(HANDLE taken) : Held(NullIfInvalid(taken)) {}
    void Reset(HANDLE taken = nullptr) { Held::Reset(NullIfInvalid(taken)); }
};

// A search for files: it keeps its directory from being deleted.
class SearchHandle : public Held<HANDLE, GiveBack::Search> {
public:
    SearchHandle() = default;
    explicit SearchHandle(HANDLE taken) : Held(NullIfInvalid(taken)) {}
};

// A pen, brush, font, bitmap or region: the session has only 10,000 of them for one process.
template <class Object> class GdiObject : public Held<Object, GiveBack::Gdi<Object>> {
public:
    GdiObject() = default;
    explicit GdiObject(Object taken) : Held<Object, GiveBack::Gdi<Object>>(taken) {}
};

// A library loaded at run time: functions found in it must not be called any more.
using LoadedLibrary = Held<HMODULE, GiveBack::Library>;

// A menu that belongs to no window: those of a window go with it.
using MenuHandle = Held<HMENU, GiveBack::Menu>;

// An accelerator table made at run time: those loaded from resources go with the program.
using AcceleratorTable = Held<HACCEL, GiveBack::Accelerators>;

// The names of dropped files: memory that the sender allocated for us.
using DroppedFiles = Held<HDROP, GiveBack::Drop>;

// A range of addresses.
using AddressRange = Held<void*, GiveBack::Range>;

// A device context in memory, to draw into a bitmap: deleted, not released.
class MemoryDc : public Held<HDC, GiveBack::MemoryDc> {
public:
    MemoryDc() = default;
    explicit MemoryDc(HDC compatible) : Held(CreateCompatibleDC(compatible)) {}
};

// An object selected into a device context: it cannot be deleted before the old one is back.
class SelectedObject : Guard {
public:
    SelectedObject(HDC target, HGDIOBJ object) : dc(target), previous(SelectObject(target, object)) {}
    ~SelectedObject() { SelectObject(dc, previous); }

private:
    HDC dc;
    HGDIOBJ previous;
};

// The device context of a window outside of painting: it is borrowed from a common store.
class WindowDc : Guard {
public:
    explicit WindowDc(HWND owner) : WindowDc(owner, GetDC(owner)) {}
    // Of all of the window, with its edge and scroll bars.
    static WindowDc WithFrame(HWND owner) { return {owner, GetWindowDC(owner)}; }
    ~WindowDc() {
        if (dc) ReleaseDC(window, dc);
    }
    HDC Get() const { return dc; }

private:
    WindowDc(HWND owner, HDC borrowed) : window(owner), dc(borrowed) {}

    HWND window;
    HDC dc;
};

// The device context of a paint message: without its end the message comes again and again.
class PaintDc : Guard {
public:
    explicit PaintDc(HWND owner) : window(owner), dc(BeginPaint(owner, &paint)) {}
    ~PaintDc() { EndPaint(window, &paint); }
    HDC Get() const { return dc; }
    const RECT& Area() const { return paint.rcPaint; }

private:
    HWND window;
    PAINTSTRUCT paint{};
    HDC dc;
};

// A block for the clipboard: ours to free until the clipboard has taken it.
class GlobalBlock : Guard {
public:
    explicit GlobalBlock(size_t bytes) : block(GlobalAlloc(GMEM_MOVEABLE, bytes)) {}
    ~GlobalBlock() {
        if (block) GlobalFree(block);
    }
    HGLOBAL Get() const { return block; }
    // Call it when the clipboard has accepted it.
    void GiveAway() { block = nullptr; }

private:
    HGLOBAL block;
};

// The address of a movable block: it counts its locks.
class GlobalAddress : Guard {
public:
    explicit GlobalAddress(HGLOBAL locked) : block(locked), address(locked ? GlobalLock(locked) : nullptr) {}
    ~GlobalAddress() {
        if (address) GlobalUnlock(block);
    }
    void* Get() const { return address; }

private:
    HGLOBAL block;
    void* address;
};

// The opened clipboard: while it is open no other program can use it. Another program may hold it for a
// moment, so that opening it is tried `attempts` times with pauses in between.
class OpenedClipboard : Guard {
public:
    static constexpr DWORD Pause = 20; // milliseconds

    explicit OpenedClipboard(HWND owner, int attempts = 1) {
        for (isOpen = OpenClipboard(owner); !isOpen && attempts > 1; --attempts) {
            Sleep(Pause);
            isOpen = OpenClipboard(owner);
        }
    }
    ~OpenedClipboard() {
        if (isOpen) CloseClipboard();
    }
    bool IsOpen() const { return isOpen; }
    // Leaves it open.
    void Detach() { isOpen = false; }

private:
    bool isOpen = false;
};

// The mouse, captured by a window: no other window gets its messages. The system may take it away at any
// time, and whoever captures it next must not lose it to us.
class MouseCapture : Guard {
public:
    ~MouseCapture() { Release(); }
    void Take(HWND window) {
        owner = window;
        SetCapture(window);
    }
    bool IsHeld() const { return owner && GetCapture() == owner; }
    // Forgets the window first: the release sends it a message.
    void Release() {
        const bool held = IsHeld();
        owner = nullptr;
        if (held) ReleaseCapture();
    }

private:
    HWND owner = nullptr;
};

// A timer of a window: it goes on until it is stopped or the window is destroyed.
class WindowTimer : Guard {
public:
    ~WindowTimer() { Stop(); }
    // Setting it again replaces the period. False when the system refuses; one that was set then goes on.
    bool Set(HWND window, UINT_PTR number, UINT milliseconds, TIMERPROC procedure = nullptr) {
        if (!SetTimer(window, number, milliseconds, procedure)) return false;
        owner = window;
        identifier = number;
        return true;
    }
    bool IsSet() const { return owner != nullptr; }
    void Stop() {
        if (owner) KillTimer(owner, identifier);
        owner = nullptr;
    }

private:
    HWND owner = nullptr;
    UINT_PTR identifier = 0;
};

// Why the session should not end now: the system tells whoever signs out, while it exists.
class ShutdownReason : Guard {
public:
    ~ShutdownReason() { Set(nullptr, nullptr); }
    // Replaces the reason before; null takes it away.
    void Set(HWND window, const Char* reason) {
        if (owner) ShutdownBlockReasonDestroy(owner);
        owner = reason && ShutdownBlockReasonCreate(window, Wide(reason)) ? window : nullptr;
    }

private:
    HWND owner = nullptr;
};

// A window class: its name can be registered once only. Its windows have to be gone before it.
class WindowClass : Guard {
public:
    ~WindowClass() { Unregister(); }
    // The name must outlive the guard. False when the system refuses.
    bool Register(const WNDCLASSEXW& definition) {
        if (!RegisterClassExW(&definition)) return false;
        name = definition.lpszClassName;
        instance = definition.hInstance;
        return true;
    }
    void Unregister() {
        if (name) UnregisterClassW(name, instance);
        name = nullptr;
    }

private:
    const wchar_t* name = nullptr;
    HINSTANCE instance = nullptr;
};

// The thread's one caret: a window has it from getting the focus to losing it.
class WindowCaret : Guard {
public:
    ~WindowCaret() { Destroy(); }
    // Replaces the thread's caret, whoever made it. Hidden at first. False when the system refuses.
    bool Create(HWND window, int width, int height) {
        Destroy();
        if (CreateCaret(window, nullptr, width, height)) owner = window;
        return owner != nullptr;
    }
    bool IsCreated() const { return owner != nullptr; }
    bool IsShown() const { return shown; }
    // Hiding counts in the system, so that each state is asked for once only.
    void Show() {
        if (owner && !shown) shown = ShowCaret(owner) != 0;
    }
    void Destroy() {
        if (owner) DestroyCaret();
        owner = nullptr;
        shown = false;
    }

private:
    HWND owner = nullptr;
    bool shown = false;
};
