#include "app/win32/TitleBar.h"

#include "base/win32/Handles.h"
#include "base/win32/SystemLibrary.h"
#include "settings/win32/HighContrast.h"

namespace {

constexpr DWORD UseDarkMode = 20; // DWMWA_USE_IMMERSIVE_DARK_MODE; a system that does not know it refuses

} // namespace

void TitleBar::Follow(HWND window) {
    const bool wanted = IsDark(settings.TextBg) && !HighContrast::IsOn();
    if (wanted == dark) return;
    dark = wanted;
    const LoadedLibrary library(SystemLibrary::Load(L"\\dwmapi.dll"));
    HRESULT(WINAPI * setAttribute)(HWND, DWORD, const void*, DWORD) = nullptr;
    if (!library.IsValid() || !SystemLibrary::Find(library.Get(), setAttribute, "DwmSetWindowAttribute")) return;
    const BOOL on = dark;
    setAttribute(window, UseDarkMode, &on, sizeof(on));
}
