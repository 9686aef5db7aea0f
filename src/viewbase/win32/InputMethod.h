#pragma once

#include "base/win32/Handles.h"

#include <imm.h>

// A view's side of input-method editors. Their library is loaded when first needed, and released with this; everything
// works without it: an operation does nothing when the library or one of its functions is missing (the next call tries
// to load it again).
class InputMethod : Guard {
public:
    // What a text view posts to itself when an input method has composed a character, which is the wParam.
    static constexpr UINT ComposedCharacter = WM_APP;

    ~InputMethod() { Allow(); }

    // Puts the composition window at a client point of `window`, in a line of `lineHeight` pixels, and has it write in
    // `font`. The window with the candidates leaves that line free from there on.
    void PlaceComposition(HWND window, POINT point, int lineHeight, HFONT font);
    // Keeps input methods away from a window, until Allow: what is typed there are keys, not text.
    void Forbid(HWND window);
    // The window has the context back that it had before. One that is gone needs none.
    void Allow();

private:
    bool Load();

    LoadedLibrary library; // the functions are there with it
    decltype(&ImmGetContext) getContext = nullptr;
    decltype(&ImmReleaseContext) releaseContext = nullptr;
    decltype(&ImmAssociateContext) associateContext = nullptr;
    decltype(&ImmSetCompositionWindow) setCompositionWindow = nullptr;
    decltype(&ImmSetCandidateWindow) setCandidateWindow = nullptr;
    decltype(&ImmSetCompositionFontW) setCompositionFont = nullptr;

    HWND forbidden = nullptr;
    HIMC before = nullptr;
};
