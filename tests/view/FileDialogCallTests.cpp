// The current directory after a file dialog. The system's own dialogs are replaced: they change it whatever they are
// told.

#include "CallCounter.h"
#include "app/win32/FileDialogs.h"
#include "base/Platform.h"
#include "support/ScratchFolder.h"
#include "support/TextDocument.h"

#include <gtest/gtest.h>
#include <string>

namespace {

std::wstring elsewhere;
BOOL confirmed;

BOOL WINAPI GoElsewhere(LPOPENFILENAMEW request) {
    EXPECT_TRUE(SetCurrentDirectoryW(elsewhere.c_str()));
    wcscpy(request->lpstrFile, L"C:\\file.txt");
    return confirmed;
}

std::wstring CurrentDirectory() {
    wchar_t path[MAX_PATH] = {};
    EXPECT_NE(GetCurrentDirectoryW(MAX_PATH, path), 0u);
    return path;
}

std::wstring offered;
std::wstring startsIn;
BOOL WINAPI TakeRequest(LPOPENFILENAMEW request) {
    offered = request->lpstrFile;
    startsIn = request->lpstrInitialDir;
    return FALSE;
}

} // namespace

// A path in the name wins over the directory that the dialog is told to start in, so it has to be that one.
TEST(FileDialogs, SaveAsStartsInTheCurrentDirectory) {
    const ReplacedImport save("GetSaveFileNameW", reinterpret_cast<void*>(TakeRequest));
    ASSERT_TRUE(save.IsImported());
    FileDialogs dialogs;
    SaveChoice choice;
    TextDocument document;
    ASSERT_TRUE(document->SetPath(u"C:\\far\\away.txt"));
    EXPECT_FALSE(dialogs.AskSave(*document, choice));
    EXPECT_EQ(startsIn, CurrentDirectory());
    std::wstring expected = CurrentDirectory();
    if (expected.back() != L'\\') expected += L'\\';
    EXPECT_EQ(offered, expected + L"away.txt");
    const TextDocument unnamed;
    EXPECT_FALSE(dialogs.AskSave(*unnamed, choice));
    EXPECT_EQ(offered, L"");
    EXPECT_EQ(startsIn, CurrentDirectory());
}

TEST(FileDialogs, LeaveTheCurrentDirectoryAsItWas) {
    const ReplacedImport open("GetOpenFileNameW", reinterpret_cast<void*>(GoElsewhere));
    const ReplacedImport save("GetSaveFileNameW", reinterpret_cast<void*>(GoElsewhere));
    ASSERT_TRUE(open.IsImported() && save.IsImported());
    const ScratchFolder folder;
    elsewhere = folder.File("x").parent_path().wstring();
    const std::wstring before = CurrentDirectory();
    ASSERT_NE(before, elsewhere);
    const TextDocument document;
    FileDialogs dialogs;
    for (const BOOL answer : {TRUE, FALSE}) {
        confirmed = answer;
        WString names;
        bool tooMany = false;
        SaveChoice choice;
        EXPECT_EQ(dialogs.AskOpen(names, tooMany), answer != FALSE);
        EXPECT_EQ(CurrentDirectory(), before);
        EXPECT_EQ(dialogs.AskSave(*document, choice), answer != FALSE);
        EXPECT_EQ(CurrentDirectory(), before);
    }
    SetCurrentDirectoryW(before.c_str());
}
