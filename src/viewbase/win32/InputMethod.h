#pragma once

#include "base/win32/Windows.h"

// The input-method editor's library, loaded when first needed; everything works without it.
namespace InputMethod {

// Puts the composition window at a client point of `window`; does nothing when the library or one of
// its functions is missing (loading is tried again next time).
void PlaceComposition(HWND window, POINT point);
void Unload();

} // namespace InputMethod
