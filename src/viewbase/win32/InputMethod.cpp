#include "viewbase/win32/InputMethod.h"

#include "base/win32/Handles.h"
#include "base/win32/SystemLibrary.h"

#include <algorithm>
#include <imm.h>

namespace {

// The library and its functions, once it is loaded. Process-wide: any view may be the first to need it.
struct Library {
    LoadedLibrary module;
    decltype(&ImmGetContext) getContext = nullptr;
    decltype(&ImmReleaseContext) releaseContext = nullptr;
    decltype(&ImmAssociateContext) associateContext = nullptr;
    decltype(&ImmSetCompositionWindow) setCompositionWindow = nullptr;
    decltype(&ImmSetCandidateWindow) setCandidateWindow = nullptr;
    decltype(&ImmSetCompositionFontW) setCompositionFont = nullptr;

    bool Load();
    template <class Function> bool Find(Function& function, const char* name) const {
        return SystemLibrary::Find(module.Get(), function, name);
    }
};

Library library;

bool Library::Load() {
    if (module.IsValid()) return true;
    module.Reset(SystemLibrary::Load(L"\\imm32.dll"));
    if (!module.IsValid()) return false;
    if (Find(getContext, "ImmGetContext") && Find(releaseContext, "ImmReleaseContext") &&
        Find(associateContext, "ImmAssociateContext") && Find(setCompositionWindow, "ImmSetCompositionWindow") &&
        Find(setCandidateWindow, "ImmSetCandidateWindow") && Find(setCompositionFont, "ImmSetCompositionFontW"))
        return true;
    module.Reset();
    return false;
}

// The input context of a window, which all of its thread's windows may share. For a loaded library only.
class InputContext : Guard {
public:
    explicit InputContext(HWND owner) : window(owner), context(library.getContext(owner)) {}
    ~InputContext() {
        if (context) library.releaseContext(window, context);
    }
    HIMC Get() const { return context; }

private:
    HWND window;
    HIMC context;
};

} // namespace

void InputMethod::PlaceComposition(HWND window, POINT point, int lineHeight, HFONT font) {
    if (!library.Load()) return;
    const InputContext context(window);
    if (!context.Get()) return;
    COMPOSITIONFORM form = {};
    form.dwStyle = CFS_POINT;
    form.ptCurrentPos = point;
    library.setCompositionWindow(context.Get(), &form);
    CANDIDATEFORM candidates = {};
    // The list of candidates must not cover the line that is being typed in; an empty area would exclude nothing.
    candidates.dwStyle = CFS_EXCLUDE;
    candidates.ptCurrentPos = point;
    RECT client = {};
    GetClientRect(window, &client);
    candidates.rcArea = {point.x, point.y, std::max(client.right, point.x + 1), point.y + lineHeight};
    library.setCandidateWindow(context.Get(), &candidates);
    LOGFONTW description = {};
    if (GetObjectW(font, sizeof(description), &description)) library.setCompositionFont(context.Get(), &description);
}

void InputMethod::Disabled::Take(HWND newWindow) {
    GiveBack();
    if (!library.Load()) return;
    window = newWindow;
    before = library.associateContext(window, nullptr);
}

void InputMethod::Disabled::GiveBack() {
    // The window may have been destroyed, with its association, before this object.
    if (window && IsWindow(window) && library.Load()) library.associateContext(window, before);
    window = nullptr;
}

void InputMethod::Unload() { library.module.Reset(); }
