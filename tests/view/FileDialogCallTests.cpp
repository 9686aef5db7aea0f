// The current directory after a file dialog. The system's own dialogs are replaced: they change it whatever they are
// told.

#include "CallCounter.h"
#include "app/win32/FileDialogs.h"
#include "base/Platform.h"
#include "base/win32/Ole.h"
#include "support/ScratchFolder.h"
#include "support/TextDocument.h"

#include <dlgs.h>
#include <gtest/gtest.h>
#include <string>
#include <vector>

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

// A dialog that the system has opened in a folder: what it is asked and told.
std::wstring shownFolder;
std::vector<std::wstring> told;
LRESULT CALLBACK FileDialogProc(HWND window, UINT message, WPARAM wparam, LPARAM lparam) {
    if (message == CDM_GETFOLDERPATH) {
        wcscpy(reinterpret_cast<wchar_t*>(lparam), shownFolder.c_str());
        return static_cast<LRESULT>(shownFolder.size() + 1);
    }
    if (message == CDM_SETCONTROLTEXT) {
        EXPECT_EQ(wparam, WPARAM{edt1});
        told.push_back(reinterpret_cast<const wchar_t*>(lparam));
    }
    if (message == WM_COMMAND && wparam == IDOK) told.push_back(L"OK");
    return DefWindowProcW(window, message, wparam, lparam);
}
BOOL WINAPI OpenInFolder(LPOPENFILENAMEW request) {
    const HWND dialog = CreateWindowW(WC_STATICW, L"", WS_POPUP, 0, 0, 9, 9, nullptr, nullptr, nullptr, nullptr);
    SetWindowLongPtrW(dialog, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(FileDialogProc));
    const HWND extras = CreateWindowW(WC_STATICW, L"", WS_CHILD, 0, 0, 9, 9, dialog, nullptr, nullptr, nullptr);
    OFNOTIFYW notice = {};
    notice.hdr.code = static_cast<UINT>(CDN_INITDONE);
    request->lpfnHook(extras, WM_INITDIALOG, 0, reinterpret_cast<LPARAM>(request));
    request->lpfnHook(extras, WM_NOTIFY, 0, reinterpret_cast<LPARAM>(&notice));
    EXPECT_TRUE(told.empty()) << "not before the dialog is ready";
    MSG message;
    while (PeekMessageW(&message, extras, WM_APP, 0xBFFF, PM_REMOVE))
        request->lpfnHook(extras, message.message, message.wParam, message.lParam);
    DestroyWindow(dialog);
    return FALSE;
}

// The system's dialog, told another folder than it was; it is cancelled once it is ready.
LPOFNHOOKPROC hook;
std::wstring finallyShown;
std::wstring finallyOffered;
UINT_PTR CALLBACK WatchHook(HWND extras, UINT message, WPARAM wparam, LPARAM lparam) {
    const UINT_PTR result = hook(extras, message, wparam, lparam);
    if (message != WM_APP) return result;
    wchar_t text[MAX_PATH] = {};
    SendMessageW(GetParent(extras), CDM_GETFOLDERPATH, MAX_PATH, reinterpret_cast<LPARAM>(text));
    finallyShown = text;
    SendMessageW(GetParent(extras), CDM_GETSPEC, MAX_PATH, reinterpret_cast<LPARAM>(text));
    finallyOffered = text;
    PostMessageW(GetParent(extras), WM_COMMAND, IDCANCEL, 0);
    return result;
}
decltype(&GetSaveFileNameW) showSaveAs;
BOOL WINAPI ShowElsewhere(LPOPENFILENAMEW request) {
    request->lpstrInitialDir = elsewhere.c_str();
    hook = request->lpfnHook;
    request->lpfnHook = WatchHook;
    return showSaveAs(request);
}

} // namespace

TEST(FileDialogs, SaveAsOfANewDocumentComesBackFromAnotherFolder) {
    const ReplacedImport save("GetSaveFileNameW", reinterpret_cast<void*>(ShowElsewhere));
    ASSERT_TRUE(save.IsImported());
    showSaveAs = reinterpret_cast<decltype(&GetSaveFileNameW)>(save.Original());
    const ScratchFolder folder;
    elsewhere = folder.File("x").parent_path().wstring();
    ASSERT_NE(CurrentDirectory(), elsewhere);
    Ole ole;
    FileDialogs dialogs(ole);
    SaveChoice choice;
    const TextDocument unnamed;
    EXPECT_FALSE(dialogs.AskSave(*unnamed, choice));
    EXPECT_EQ(finallyShown, CurrentDirectory());
    EXPECT_EQ(finallyOffered, L"");
}

// Windows takes the folder that was used last when it is told the same directory as the first time.
TEST(FileDialogs, SaveAsGoesToTheCurrentDirectoryWhenTheSystemOpensItElsewhere) {
    const ReplacedImport save("GetSaveFileNameW", reinterpret_cast<void*>(OpenInFolder));
    ASSERT_TRUE(save.IsImported());
    Ole ole;
    FileDialogs dialogs(ole);
    SaveChoice choice;
    TextDocument document;
    for (const std::wstring& name : {std::wstring(), std::wstring(L"away.txt")}) {
        if (!name.empty()) {
            ASSERT_TRUE(document->SetPath(u"C:\\far\\away.txt"));
        }
        shownFolder = L"C:\\used\\last";
        told.clear();
        EXPECT_FALSE(dialogs.AskSave(*document, choice));
        EXPECT_EQ(told, (std::vector<std::wstring>{CurrentDirectory(), L"OK", name}));
        shownFolder = CurrentDirectory();
        told.clear();
        EXPECT_FALSE(dialogs.AskSave(*document, choice));
        EXPECT_TRUE(told.empty());
    }
}

// A path in the name wins over the directory that the dialog is told to start in, so it has to be that one.
TEST(FileDialogs, SaveAsStartsInTheCurrentDirectory) {
    const ReplacedImport save("GetSaveFileNameW", reinterpret_cast<void*>(TakeRequest));
    ASSERT_TRUE(save.IsImported());
    Ole ole;
    FileDialogs dialogs(ole);
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
    Ole ole;
    FileDialogs dialogs(ole);
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
