#pragma once

#include "resource.h"
#include "settings/IniFile.h"
#include "settings/ToolList.h"
#include "settings/win32/ToolsDialog.h"
#include "support/ScratchFolder.h"
#include "support/TestRecovery.h"
#include "view/DialogDriver.h"

#include <gtest/gtest.h>

// A test of the Tools dialog: no tools, an empty model and a folder for the settings file.
class ToolsTest : public testing::Test {
protected:
    using Texts = std::vector<std::wstring>;

    // What the fields show.
    struct Fields {
        std::wstring title;
        std::wstring command;
        std::wstring directory;
        LRESULT hotKey;
        bool prompt;
        bool redirect;
        bool operator==(const Fields&) const = default;
    };
    static const Fields NoFields;

    ~ToolsTest() override { toolList.Clear(); }

    // Fills the model and the tool list.
    void Load(std::u16string text);
    void LoadThree();
    // Opens the dialog, which `drive` ends, and saves as the frame does. True when it was confirmed.
    bool Open(std::function<void(HWND)> drive, HWND owner = nullptr) {
        dialog::WhenShown(std::move(drive));
        if (!RunToolsDialog(owner, file)) return false;
        static_cast<void>(file.Save(recoveryServices.saver, folder.Path("orvane.ini").c_str()));
        return true;
    }
    std::string Saved() const { return folder.Read("orvane.ini"); }

    static Fields Shown(HWND tools);
    static void SetHotKey(HWND tools, BYTE key, BYTE modifiers);
    static Texts Names(HWND tools) { return dialog::ListItems(tools, IDC_TOOLS_LIST); }
    static int Selected(HWND tools) { return dialog::SelectedItem(tools, IDC_TOOLS_LIST); }
    static void Select(HWND tools, int index) { dialog::ChooseItem(tools, IDC_TOOLS_LIST, index); }

    ScratchFolder folder;
    IniFile file;
};
