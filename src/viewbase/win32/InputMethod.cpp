#include "viewbase/win32/InputMethod.h"

#include <algorithm>
#include <imm.h>
#include <iterator>

namespace {

HMODULE library = nullptr;
decltype(&ImmGetContext) getContext = nullptr;
decltype(&ImmReleaseContext) releaseContext = nullptr;
decltype(&ImmSetCompositionWindow) setCompositionWindow = nullptr;

template <class Function> bool Find(Function& function, const char* name) {
    // Through void*: the system hands every function out under one type.
    function = reinterpret_cast<Function>(reinterpret_cast<void*>(GetProcAddress(library, name)));
    return function != nullptr;
}

// By its full name, so that no other library of that name is ever loaded.
HMODULE LoadFromSystem() {
    constexpr wchar_t Name[] = L"\\imm32.dll";
    wchar_t path[MAX_PATH];
    const UINT length = GetSystemDirectoryW(path, MAX_PATH);
    if (length == 0 || length + std::size(Name) > MAX_PATH) return nullptr;
    std::copy(std::begin(Name), std::end(Name), path + length);
    return LoadLibraryW(path);
}

bool Load() {
    if (library) return true;
    library = LoadFromSystem();
    if (!library) return false;
    if (Find(getContext, "ImmGetContext") && Find(releaseContext, "ImmReleaseContext") &&
        Find(setCompositionWindow, "ImmSetCompositionWindow"))
        return true;
    InputMethod::Unload();
    return false;
}

} // namespace

void InputMethod::PlaceComposition(HWND window, POINT point) {
    if (!Load()) return;
    const HIMC context = getContext(window);
    if (!context) return;
    COMPOSITIONFORM form = {};
    form.dwStyle = CFS_POINT;
    form.ptCurrentPos = point;
    setCompositionWindow(context, &form);
    releaseContext(window, context);
}

void InputMethod::Unload() {
    if (library) FreeLibrary(library);
    library = nullptr;
}
