#pragma once

#include "base/win32/Handles.h"

// The input-method editor's library, loaded when first needed; everything works without it. Operations on a window do
// nothing when the library or one of its functions is missing (the next call tries to load it again).
namespace InputMethod {

// What a text view posts to itself when an input method has composed a character, which is the wParam.
constexpr UINT ComposedCharacter = WM_APP;

// Puts the composition window at a client point of `window`, in a line of `lineHeight` pixels, and has it write in
// `font`. The window with the candidates leaves that line free from there on.
void PlaceComposition(HWND window, POINT point, int lineHeight, HFONT font);
void Unload();

// Keeps input methods away from a window: what is typed there are keys, not text.
class Disabled : Guard {
public:
    ~Disabled() { GiveBack(); }
    void Take(HWND newWindow);
    // The window has the context back that it had before. One that is gone needs none.
    void GiveBack();

private:
    HWND window = nullptr;
    HIMC before = nullptr;
};

} // namespace InputMethod
