#pragma once

#include "app/AppTest.h"
#include "app/RemoteCall.h"

#include <memory>

// A test of the frame: its panes, menus and questions.
class FrameTest : public AppTest {
protected:
    using Names = std::vector<std::wstring>;

    // A rectangle in the client area of the main window.
    struct Place {
        int x;
        int y;
        int width;
        int height;
        bool operator==(const Place&) const = default;
    };

    struct MenuItem {
        UINT number; // 0 for a separator
        std::wstring text;
        bool enabled;
    };

    enum MenuIndex { FileMenu, EditMenu, ToolsMenu, WindowMenu, HelpMenu };

    // Writes empty-but-for-their-name files, starts the editor on them and waits until the last is shown.
    bool OpenFiles(const Names& names, const std::wstring& options = L"");
    // The title that shows a file of the test's folder.
    std::wstring TitleOf(const std::wstring& name, bool modified = false) const {
        return Path(name) + (modified ? L"* - Orvane" : L" - Orvane");
    }
    bool WaitForFile(const std::wstring& name, bool modified = false) const {
        return editor.WaitForTitle(TitleOf(name, modified));
    }
    // Types one character into the document shown and waits until the title shows the change.
    bool Modify(const std::wstring& name) { return editor.Type(L"x") && WaitForFile(name, true); }

    Place PlaceOf(HWND child) const;
    // The visible panes in order of creation.
    std::vector<HWND> Panes() const;
    std::vector<Place> PanePlaces() const;
    bool WaitForPanes(const std::vector<Place>& places) const;
    bool WaitForPaneCount(size_t count) const;
    // The area that the panes tile, without the status bar and the command window when it is shown.
    SIZE PaneArea() const;
    // Where a pane belongs that lies at these 16.16 fractions of the area.
    Place Expected(unsigned left, unsigned top, unsigned width, unsigned height) const;
    bool WaitForFocus(HWND window) const {
        return window::WaitFor([&] { return editor.Focus() == window; });
    }
    // Strikes keys that lead to a window, again as long as they do not: a key that is struck just after a window came
    // to the front may come without its Alt, and must do no harm then.
    bool ReachWith(const std::wstring& keys, HWND target);
    // Chooses a command that opens a dialog and waits until the focus is in that; null when it does not come.
    HWND OpenDialog(UINT command) const;
    // A dialog writes the settings once it has gone. Until then the file may not be read: it could not be written.
    bool WaitUntilSaved() const { return editor.WaitForNoDialog() && editor.Settle(); }
    // Waits until a dialog is in the middle of the main window's client area, by client sizes. The window manager may
    // still be placing it when it has the focus.
    bool WaitUntilCentred(HWND dialog) const;
    // Gives the main window a client area of this size.
    bool SetClientSize(int width, int height);

    // The items of a popup of the menu bar as they are when it opens.
    std::vector<MenuItem> Menu(MenuIndex popup);
    // The texts of the Window menu's documents.
    Names WindowItems();
    bool IsEnabled(UINT command);

    // Drops files onto the main window.
    void Drop(const Names& paths);
    RemoteProcess& Remote();

    // The answer to a message that is sent.
    LRESULT Send(UINT message, WPARAM wparam = 0, LPARAM lparam = 0) const;
    // Lets the program believe that it comes to the front again, where it looks for changed files.
    void Activate() const { PostMessageW(editor.Main(), WM_ACTIVATEAPP, TRUE, 0); }
    bool WaitForEndWithCodeZero() const;
    void Settle() const { ASSERT_TRUE(editor.Settle()); }
    std::wstring SaveQuestion(const std::wstring& name) const { return L"Save changes to " + name + L"?"; }
    std::wstring ReopenQuestion(const std::wstring& name) const;

private:
    uint64_t User(const char* function, std::initializer_list<uint64_t> arguments);
    // Tells the frame that this popup of its menu bar opens; returns the popup's handle.
    uint64_t OpenPopup(MenuIndex popup);

    std::unique_ptr<RemoteProcess> remote;
};
