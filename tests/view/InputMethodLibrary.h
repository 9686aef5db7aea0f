#pragma once

#include "base/win32/Windows.h"

#include <imm.h>

// What the system's input-method library says of windows.
class InputMethodLibrary {
public:
    InputMethodLibrary() = default;
    ~InputMethodLibrary() { FreeLibrary(library); }
    InputMethodLibrary(const InputMethodLibrary&) = delete;
    InputMethodLibrary& operator=(const InputMethodLibrary&) = delete;

private:
    template <class Function> Function* Find(const char* name) const {
        return reinterpret_cast<Function*>(reinterpret_cast<void*>(GetProcAddress(library, name)));
    }

    HMODULE library = LoadLibraryW(L"imm32.dll");

public:
    decltype(&ImmGetContext) getContext = Find<decltype(ImmGetContext)>("ImmGetContext");
    decltype(&ImmReleaseContext) releaseContext = Find<decltype(ImmReleaseContext)>("ImmReleaseContext");
    decltype(&ImmGetCompositionWindow) getWindow = Find<decltype(ImmGetCompositionWindow)>("ImmGetCompositionWindow");
    decltype(&ImmGetCandidateWindow) getCandidates = Find<decltype(ImmGetCandidateWindow)>("ImmGetCandidateWindow");
    decltype(&ImmGetCompositionFontW) getFont = Find<decltype(ImmGetCompositionFontW)>("ImmGetCompositionFontW");

    bool TakesText(HWND window) const {
        const HIMC context = getContext(window);
        if (context) releaseContext(window, context);
        return context != nullptr;
    }
};
