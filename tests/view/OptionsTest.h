#pragma once

#include "resource.h"
#include "settings/IniFile.h"
#include "settings/Settings.h"
#include "settings/win32/OptionsDialog.h"
#include "support/ScratchFolder.h"
#include "support/TestRecovery.h"
#include "view/DialogDriver.h"

#include <gtest/gtest.h>

// A test of the Options dialog: settings with their defaults, an empty model and a folder for the settings file.
class OptionsTest : public testing::Test {
public:
    static inline std::vector<DrawingResource> handled; // by the change handlers that ran

protected:
    // Pages, by their place in the tree.
    static constexpr int General = 0;
    static constexpr int Fonts = 1;
    static constexpr int Colors = 2;

    OptionsTest();
    ~OptionsTest() override;

    // Opens the dialog, which `drive` ends, and saves as the frame does. True when it was confirmed.
    bool Open(std::function<void(HWND)> drive, HWND owner = nullptr) {
        dialog::WhenShown(std::move(drive));
        const OptionsOutcome outcome = RunOptionsDialog(owner, file, changes, pageShown);
        if (outcome == OptionsOutcome::Stored)
            static_cast<void>(file.Save(recoveryServices.saver, folder.Path("orvane.ini").c_str()));
        return outcome != OptionsOutcome::Cancelled;
    }
    uint32_t pageShown = 0; // first, and then last
    std::string Saved() const { return folder.Read("orvane.ini"); }

    // The controls of the pages are not those of the dialog, which has them as grandchildren.
    static HWND PageWith(HWND options, int control);
    static HWND GeneralPage(HWND options) { return PageWith(options, IDC_SHOW_WHITESPACE); }
    static HWND FontsPage(HWND options) { return PageWith(options, IDC_FONT_NAME); }
    static HWND ColorsPage(HWND options) { return PageWith(options, IDC_COLOR_LIST); }

    static HTREEITEM Related(HWND tree, UINT relation, HTREEITEM item);
    static HTREEITEM TreeItem(HWND options, int page);
    static void ShowPage(HWND options, int page);
    // The page that is shown; -1 unless it is exactly one.
    static int ShownPage(HWND options);

    // Chooses a colour in the system's dialog, by its fields for red, green and blue.
    static void Choose(HWND chooser, Colour colour);

    ScratchFolder folder;
    IniFile file;
    SettingsChanges changes; // by the last OK
};
