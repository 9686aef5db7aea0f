#pragma once

#include "base/win32/Windows.h"

// Owners of drawing handles, for the length of a scope.

// The screen's device context: what fonts and bitmaps are made compatible with.
class ScreenDc {
public:
    ScreenDc() : dc(GetDC(nullptr)) {}
    ~ScreenDc() { ReleaseDC(nullptr, dc); }
    ScreenDc(const ScreenDc&) = delete;
    ScreenDc& operator=(const ScreenDc&) = delete;
    operator HDC() const { return dc; }

private:
    HDC dc;
};

// A memory device context compatible with another one.
class MemoryDc {
public:
    explicit MemoryDc(HDC model) : dc(CreateCompatibleDC(model)) {}
    ~MemoryDc() { DeleteDC(dc); }
    MemoryDc(const MemoryDc&) = delete;
    MemoryDc& operator=(const MemoryDc&) = delete;
    operator HDC() const { return dc; }

private:
    HDC dc;
};

// Selects an object and puts the previous one back: an object that is still selected cannot be deleted.
class SelectedObject {
public:
    SelectedObject(HDC target, HGDIOBJ object) : dc(target), previous(SelectObject(target, object)) {}
    ~SelectedObject() { SelectObject(dc, previous); }
    SelectedObject(const SelectedObject&) = delete;
    SelectedObject& operator=(const SelectedObject&) = delete;

private:
    HDC dc;
    HGDIOBJ previous;
};

// A drawing object deleted with its owner.
template <class Handle> class GdiObject {
public:
    GdiObject() = default;
    explicit GdiObject(Handle made) : handle(made) {}
    ~GdiObject() { Reset(nullptr); }
    GdiObject(const GdiObject&) = delete;
    GdiObject& operator=(const GdiObject&) = delete;
    operator Handle() const { return handle; }

    void Reset(Handle made) {
        if (handle) DeleteObject(handle);
        handle = made;
    }

    // Keeps the object it has when making the new one failed.
    bool Replace(Handle made) {
        if (made) Reset(made);
        return made != nullptr;
    }

private:
    Handle handle = nullptr;
};
