#pragma once

#include "app/FrameTest.h"

// A test of the Open and Save As dialogs.
class FileDialogTest : public FrameTest {
protected:
    bool WaitForDialogTitled(const std::wstring& title) const;
    // Presses a button of the dialog that is open, and waits until it has gone.
    bool EndDialog(const std::wstring& button) const;
    // Replaces the name in the file dialog that is open, and waits until its field shows the new one.
    bool FillFileName(const std::wstring& name);
    // The same, then Enter; waits until the dialog has gone.
    bool TypeFileName(const std::wstring& name);
    // A control of the dialog that is open, at whatever depth.
    HWND Control(int id) const;
    // Items of a drop-down list and the number of the selected one.
    Names ListItems(int id) const;
    int Selected(int id) const;
    bool Choose(int id, const std::wstring& item) const;
};
