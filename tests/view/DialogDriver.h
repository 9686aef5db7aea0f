#pragma once

#include "base/win32/Windows.h"

#include <functional>
#include <string>
#include <vector>

// Modal dialogs of the test's own thread, driven through their controls while they are shown.
namespace dialog {

// Calls `drive` with the next dialog that this thread shows, once it is there; it has to end the dialog.
// To be called before the dialog is opened; for one that a driven dialog opens, by its `drive`.
void WhenShown(std::function<void(HWND)> drive);

std::wstring TextOf(HWND window, int control);
void SetText(HWND window, int control, const std::wstring& text);
// As the mouse would.
void Click(HWND window, int control);
bool IsChecked(HWND window, int control);
bool IsEnabled(HWND window, int control);

// The texts of a list box or of the list of a combo box.
std::vector<std::wstring> ListItems(HWND window, int control);
// Selects an item of a list box as a user does, so that the dialog is notified.
void ChooseItem(HWND window, int control, int index);
int SelectedItem(HWND window, int control);

// A popup window with a client area of the given size; nothing outside it depends on the screen.
class Parent {
public:
    Parent(int width, int height)
        : window(CreateWindowExW(0, L"STATIC", L"", WS_POPUP, 300, 200, width, height, nullptr, nullptr,
                                 GetModuleHandleW(nullptr), nullptr)) {}
    ~Parent() { DestroyWindow(window); }
    Parent(const Parent&) = delete;
    Parent& operator=(const Parent&) = delete;
    HWND Get() const { return window; }

private:
    HWND window;
};

inline void Ok(HWND window) { Click(window, IDOK); }
inline void Cancel(HWND window) { Click(window, IDCANCEL); }

} // namespace dialog
