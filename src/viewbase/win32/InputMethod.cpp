#include "viewbase/win32/InputMethod.h"

#include "base/win32/SystemLibrary.h"

#include <algorithm>

bool InputMethod::Load() {
    if (library.IsValid()) return true;
    library.Reset(SystemLibrary::Load(L"\\imm32.dll"));
    if (!library.IsValid()) return false;
    const auto find = [this](auto& function, const char* name) {
        return SystemLibrary::Find(library.Get(), function, name);
    };
    if (find(getContext, "ImmGetContext") && find(releaseContext, "ImmReleaseContext") &&
        find(associateContext, "ImmAssociateContext") && find(setCompositionWindow, "ImmSetCompositionWindow") &&
        find(setCandidateWindow, "ImmSetCandidateWindow") && find(setCompositionFont, "ImmSetCompositionFontW"))
        return true;
    library.Reset();
    return false;
}

void InputMethod::PlaceComposition(HWND window, POINT point, int lineHeight, HFONT font) {
    // All windows of the thread may share it.
    const HIMC context = Load() ? getContext(window) : nullptr;
    if (!context) return;
    COMPOSITIONFORM form = {};
    form.dwStyle = CFS_POINT;
    form.ptCurrentPos = point;
    setCompositionWindow(context, &form);
    CANDIDATEFORM candidates = {};
    // The list of candidates must not cover the line that is being typed in; an empty area would exclude nothing.
    candidates.dwStyle = CFS_EXCLUDE;
    candidates.ptCurrentPos = point;
    RECT client = {};
    GetClientRect(window, &client);
    candidates.rcArea = {point.x, point.y, std::max(client.right, point.x + 1), point.y + lineHeight};
    setCandidateWindow(context, &candidates);
    LOGFONTW description = {};
    if (GetObjectW(font, sizeof(description), &description)) setCompositionFont(context, &description);
    releaseContext(window, context);
}

void InputMethod::Forbid(HWND window) {
    Allow();
    if (!Load()) return;
    forbidden = window;
    before = associateContext(window, nullptr);
}

void InputMethod::Allow() {
    // The window may have been destroyed, with its association, before this object.
    if (forbidden && IsWindow(forbidden)) associateContext(forbidden, before);
    forbidden = nullptr;
}
