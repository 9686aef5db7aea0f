#include "settings/win32/DialogBase.h"

#include "base/win32/ChildWindows.h"

bool DialogBase::Message(UINT message, WPARAM wparam, LPARAM) {
    if (message == WM_INITDIALOG) {
        Init();
        return true;
    }
    if (message == WM_COMMAND) Command(LOWORD(wparam));
    return false;
}

void DialogBase::Command(uint32_t identifier) {
    if (identifier == IDOK) Ok();
    if (identifier == IDCANCEL) Cancel();
}

void DialogBase::Ok() { EndDialog(window, IDOK); }

void DialogBase::Cancel() { EndDialog(window, IDCANCEL); }

uint32_t DialogBase::Run(uint16_t resource, HWND ownerWindow) {
    owner = ownerWindow;
    const INT_PTR result = DialogBoxParamW(GetModuleHandleW(nullptr), MAKEINTRESOURCEW(resource), owner, Procedure,
                                           reinterpret_cast<LPARAM>(this));
    window = nullptr;
    return result > 0 ? static_cast<uint32_t>(result) : 0;
}

HWND DialogBase::CreatePage(uint16_t resource, HWND parent) {
    owner = parent;
    return CreateDialogParamW(GetModuleHandleW(nullptr), MAKEINTRESOURCEW(resource), parent, Procedure,
                              reinterpret_cast<LPARAM>(this));
}

void DialogBase::CentreOverParent() {
    HWND parent = GetParent(window);
    if (!parent) parent = GetDesktopWindow();
    RECT outer = {};
    RECT inner = {};
    GetClientRect(parent, &outer);
    GetClientRect(window, &inner);
    POINT corner = {(outer.right - inner.right) / 2, (outer.bottom - inner.bottom) / 2};
    ClientToScreen(parent, &corner);
    SetWindowPos(window, nullptr, corner.x, corner.y, 0, 0, SWP_NOSIZE | SWP_NOZORDER);
}

INT_PTR CALLBACK DialogBase::Procedure(HWND dialog, UINT message, WPARAM wparam, LPARAM lparam) {
    if (message == WM_INITDIALOG) {
        SetWindowLongPtrW(dialog, DWLP_USER, lparam);
        reinterpret_cast<DialogBase*>(lparam)->window = dialog;
    }
    if (message == WM_SYSCOLORCHANGE) SendToChildren(dialog, message, wparam, lparam);
    // Fonts and sizes are set before the object is known; such messages are the system's.
    auto* object = reinterpret_cast<DialogBase*>(GetWindowLongPtrW(dialog, DWLP_USER));
    return object && object->Message(message, wparam, lparam) ? TRUE : FALSE;
}
