#pragma once

#include "base/win32/Handles.h"

#include <optional>

// A bitmap in memory in which something is drawn before it is copied to the window.
class BackBuffer {
public:
    // Replaces the bitmap by one of this size in pixels; without memory or size there is none.
    void Rebuild(int width, int height) {
        selected.reset(); // first: what is selected cannot be deleted
        if (width <= 0 || height <= 0) return;
        const WindowDc screen(nullptr);
        dc.Reset(CreateCompatibleDC(screen.Get()));
        bitmap.Reset(CreateCompatibleBitmap(screen.Get(), width, height));
        if (dc.IsValid() && bitmap.IsValid()) selected.emplace(dc.Get(), bitmap.Get());
    }
    // Null without a bitmap.
    HDC Dc() const { return selected ? dc.Get() : nullptr; }

private:
    GdiObject<HBITMAP> bitmap;
    MemoryDc dc;
    std::optional<SelectedObject> selected;
};
