#include "app/win32/FileDialogs.h"

#include "app/DocumentList.h"
#include "app/FileDialogText.h"
#include "app/SaveEncodings.h"
#include "base/Path.h"
#include "base/Platform.h"
#include "base/win32/Ole.h"
#include "document/Document.h"
#include "resource.h"
#include "settings/Settings.h"

#include <cderr.h>
#include <cstring>
#include <dlgs.h>

namespace {

constexpr uint32_t OpenBufferSize = 1040;
constexpr uint32_t SaveBufferSize = 260;

// Posted by the Save As dialog's hook to itself: the dialog may open its first folder after it has said that it is
// done.
constexpr UINT IsReady = WM_APP;

// What the Save As dialog's hook works with: what its two lists show and give back, and where it is to start.
struct SaveLists {
    const Document* document;
    SaveChoice* choice;
    const WString* directory;
    const Char* name; // offered
};

void AddItem(HWND combo, const Char* text) { SendMessageW(combo, CB_ADDSTRING, 0, reinterpret_cast<LPARAM>(text)); }

void FillLists(HWND dialog, const Document& document, Encoding chosen) {
    const HWND encodings = GetDlgItem(dialog, IDC_ENCODING);
    auto current = Encoding::Ansi;
    const Char* const* names = nullptr;
    if (document.GetEncoding(current, names)) {
        for (uint32_t i = 0; i < OfferedEncodings(chosen); ++i) AddItem(encodings, names[i]);
        SendMessageW(encodings, CB_SETCURSEL, static_cast<WPARAM>(chosen), 0);
    } else {
        AddItem(encodings, u"None");
        SendMessageW(encodings, CB_SETCURSEL, 0, 0);
    }
    const HWND endings = GetDlgItem(dialog, IDC_LINE_ENDING);
    AddItem(endings, u"Unix");
    AddItem(endings, u"Dos");
    SendMessageW(endings, CB_SETCURSEL, document.GetLineEnding() == LineEnding::Unix ? 0 : 1, 0);
}

void ReadLists(HWND dialog, SaveChoice& choice) {
    const LRESULT encoding = SendDlgItemMessageW(dialog, IDC_ENCODING, CB_GETCURSEL, 0, 0);
    const LRESULT ending = SendDlgItemMessageW(dialog, IDC_LINE_ENDING, CB_GETCURSEL, 0, 0);
    choice.encoding = encoding < 0 ? Encoding::Keep : static_cast<Encoding>(encoding);
    choice.lineEnding = ending == 0 ? LineEnding::Unix : LineEnding::Dos;
}

bool ShowsFolder(HWND fileDialog, const Char* directory) {
    wchar_t shown[MAX_PATH] = {};
    // Negative for a place that is no folder of a disk.
    const LRESULT size = SendMessageW(fileDialog, CDM_GETFOLDERPATH, MAX_PATH, reinterpret_cast<LPARAM>(shown));
    return size > 0 && size <= MAX_PATH && Platform::CompareNames(FromWide(shown), directory) == 0;
}

// Told the same directory as the first time, the system takes the last one that the user has chosen from instead. The
// name of a folder that is confirmed in the dialog makes it go there, and it stays open.
void GoToFolder(HWND fileDialog, const SaveLists& lists) {
    if (ShowsFolder(fileDialog, lists.directory->Text())) return;
    const WPARAM field = GetDlgItem(fileDialog, cmb13) ? cmb13 : edt1; // by the look of the dialog
    SendMessageW(fileDialog, CDM_SETCONTROLTEXT, field, reinterpret_cast<LPARAM>(lists.directory->Text()));
    SendMessageW(fileDialog, WM_COMMAND, IDOK, 0);
    SendMessageW(fileDialog, CDM_SETCONTROLTEXT, field, reinterpret_cast<LPARAM>(lists.name));
}

UINT_PTR CALLBACK SaveHook(HWND dialog, UINT message, WPARAM, LPARAM lparam) {
    if (message == WM_INITDIALOG) {
        const auto* request = reinterpret_cast<const OPENFILENAMEW*>(lparam);
        SetWindowLongPtrW(dialog, GWLP_USERDATA, static_cast<LONG_PTR>(request->lCustData));
        const auto* lists = reinterpret_cast<SaveLists*>(request->lCustData);
        FillLists(dialog, *lists->document, lists->choice->encoding);
        return 0;
    }
    const auto* lists = reinterpret_cast<SaveLists*>(GetWindowLongPtrW(dialog, GWLP_USERDATA));
    if (message == IsReady) GoToFolder(GetParent(dialog), *lists);
    if (message != WM_NOTIFY) return 0;
    const UINT code = reinterpret_cast<const NMHDR*>(lparam)->code;
    if (code == CDN_INITDONE) PostMessageW(dialog, IsReady, 0, 0);
    if (code == CDN_FILEOK) ReadLists(dialog, *lists->choice);
    return 0;
}

// The document's name in the current directory, which is where the dialog starts then, wherever it was used last.
bool OfferedName(const Document& document, const WString& directory, WString& name) {
    return !HasFile(document) || (name.Assign(directory) && Path::Join(name, Path::FileName(document.GetName())));
}

// The dialogs change the current directory, whatever OFN_NOCHANGEDIR says.
class DirectoryKeeper {
public:
    explicit DirectoryKeeper(const WString& current) : directory(current) {}
    // One that was removed meanwhile cannot be returned to.
    ~DirectoryKeeper() { static_cast<void>(Platform::SetCurrentDirectory(directory.Text())); }
    DirectoryKeeper(const DirectoryKeeper&) = delete;
    DirectoryKeeper& operator=(const DirectoryKeeper&) = delete;

private:
    const WString& directory;
};

} // namespace

bool FileDialogs::Prepare(OPENFILENAMEW& request, WString& filter, WString& directory) const {
    if (!MakeDialogFilter(settings.TextFileTypes.OrEmpty(), filter)) return false;
    if (!Platform::CurrentDirectory(directory)) return false;
    ole.Use(); // for the shell, which shows a dialog without it as well
    request.lStructSize = sizeof(request);
    request.hwndOwner = owner;
    request.lpstrFilter = Wide(filter.Text());
    request.lpstrInitialDir = Wide(directory.Text());
    return true;
}

bool FileDialogs::AskOpen(WString& result, bool& tooMany) const {
    tooMany = false;
    OPENFILENAMEW request = {};
    WString filter;
    WString directory;
    Char buffer[OpenBufferSize] = {};
    if (!Prepare(request, filter, directory)) return false;
    const DirectoryKeeper keeper(directory);
    request.lpstrFile = Wide(buffer);
    request.nMaxFile = OpenBufferSize;
    request.Flags = OFN_EXPLORER | OFN_ENABLESIZING | OFN_ALLOWMULTISELECT | OFN_PATHMUSTEXIST | OFN_FILEMUSTEXIST |
                    OFN_NOCHANGEDIR;
    // Copied whole: the names after the first are separated by NULs.
    if (GetOpenFileNameW(&request)) return result.Assign(buffer, OpenBufferSize);
    tooMany = CommDlgExtendedError() == FNERR_BUFFERTOOSMALL;
    return false;
}

bool FileDialogs::AskSave(const Document& document, SaveChoice& choice) {
    OPENFILENAMEW request = {};
    WString filter;
    WString directory;
    Char buffer[SaveBufferSize] = {};
    SaveLists lists = {&document, &choice, &directory, u""};
    if (!Prepare(request, filter, directory)) return false;
    const DirectoryKeeper keeper(directory);
    WString offered;
    if (!OfferedName(document, directory, offered)) return false;
    if (offered.Length() < SaveBufferSize) memcpy(buffer, offered.Text(), offered.Length() * sizeof(Char));
    lists.name = Path::FileName(buffer);
    request.lpstrFile = Wide(buffer);
    request.nMaxFile = SaveBufferSize;
    request.lCustData = reinterpret_cast<LPARAM>(&lists);
    request.lpfnHook = SaveHook;
    request.hInstance = GetModuleHandleW(nullptr);
    request.lpTemplateName = MAKEINTRESOURCEW(IDD_SAVE_EXTRAS);
    request.Flags = OFN_EXPLORER | OFN_ENABLESIZING | OFN_ENABLEHOOK | OFN_ENABLETEMPLATE | OFN_PATHMUSTEXIST |
                    OFN_HIDEREADONLY | OFN_OVERWRITEPROMPT | OFN_NOCHANGEDIR;
    if (GetSaveFileNameW(&request)) return choice.path.Assign(buffer);
    if (CommDlgExtendedError() != FNERR_INVALIDFILENAME) return false;
    // The dialog does not come up with a name that no file can have, and the document could not be saved.
    buffer[0] = 0;
    lists.name = buffer;
    return GetSaveFileNameW(&request) && choice.path.Assign(buffer);
}
