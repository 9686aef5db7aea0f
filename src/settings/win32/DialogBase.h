#pragma once

#include "base/Heap.h"
#include "base/win32/Windows.h"

// Base of every dialog: ties a dialog resource to an object and routes the dialog's messages to the
// object's operations. The order of the virtual operations is fixed. A dialog overrides Init to fill
// its controls, Command for its own controls (passing IDOK and IDCANCEL on to the base), and Ok to
// read the controls before the base's Ok ends the dialog.
class DialogBase : public HeapObject {
public:
    DialogBase() = default;
    DialogBase(const DialogBase&) = delete;
    DialogBase& operator=(const DialogBase&) = delete;

    // The controls exist; the dialog is not shown yet.
    virtual void Init() {}
    // Every message from WM_INITDIALOG on, for which alone the base answers true (handled). What needs
    // more than a control's identifier, such as its notification code, is taken from here.
    virtual bool Message(UINT message, WPARAM wparam, LPARAM lparam);
    // A control, or a menu item or key with its number, was used.
    virtual void Command(uint32_t identifier);
    // Ends the dialog with 1.
    virtual void Ok();
    // Ends the dialog with 2.
    virtual void Cancel();

    // Shows the dialog of a resource until it ends: 1 from Ok, 2 from Cancel, 0 when it could not be
    // made. `ownerWindow` may be null.
    uint32_t Run(uint16_t resource, HWND ownerWindow);
    // Makes a page: a dialog that lives inside `parent` and goes with it. Null when it cannot be made.
    HWND CreatePage(uint16_t resource, HWND parent);

protected:
    HWND window = nullptr; // from WM_INITDIALOG on
    HWND owner = nullptr;

    ~DialogBase() = default;

    // Puts the dialog into the middle of its parent's client area, by client sizes; one that is larger
    // than the parent begins above or left of it.
    void CentreOverParent();

    // The procedure of every dialog; the object is the creation parameter.
    static INT_PTR CALLBACK Procedure(HWND dialog, UINT message, WPARAM wparam, LPARAM lparam);
};
