#pragma once

#include "app/Clipboard.h"
#include "app/Editor.h"
#include "app/Files.h"
#include "resource.h"

#include <gtest/gtest.h>

// A test of the program: an editor that is not started yet, a folder of its own and no settings file.
// When the test fails, it says which window has the focus, and the screen is saved as TESTNAME.bmp in the
// folder that the environment variable ORVANE_TEST_PICTURES names.
class AppTest : public testing::Test {
protected:
    void SetUp() override;
    void TearDown() override;

    // The path of a file of this name in the test's folder.
    std::wstring Path(const std::wstring& name) const { return scratch.Path(name); }
    // Starts the editor in the test's folder.
    bool Start(const std::wstring& arguments = L"") { return editor.Start(arguments, scratch.Folder()); }
    // Writes the file, starts the editor on it and waits until it is shown.
    bool OpenFile(const std::wstring& name, const std::string& bytes, const std::wstring& options = L"");
    // Of a file whose change the title shows: presses Ctrl+S, waits until it shows none, and returns the
    // bytes of the file.
    std::string SaveAndRead(const std::wstring& name);
    // The names of the open documents in opening order, up to nine. Each is shown with Ctrl+digit and
    // asked for with a typed character, which is undone again. At least one has to be open, none modified.
    std::vector<std::wstring> OpenDocuments();

    files::Scratch scratch;
    Editor editor;
};
