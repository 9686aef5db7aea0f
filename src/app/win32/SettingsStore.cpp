#include "app/win32/SettingsStore.h"

#include "base/Path.h"
#include "base/Platform.h"
#include "settings/IniFile.h"
#include "settings/Settings.h"
#include "settings/ToolList.h"
#include "settings/win32/HighContrast.h"
#include "syntax/EngineDefinition.h"

namespace {

constexpr const wchar_t* SettingsFileName = L"orvane.ini";

// The settings file's path: the documents folder first, then the system's search path. Missing when it is in neither;
// the path of the documents folder is filled in all the same. Unknown without memory.
Platform::Entry LocateSettingsFile(WString& path) {
    wchar_t folder[MAX_PATH];
    if (SHGetFolderPathW(nullptr, CSIDL_PERSONAL, nullptr, SHGFP_TYPE_CURRENT, folder) == S_OK) {
        if (!path.Assign(FromWide(folder)) || !path.AppendChar(u'\\') || !path.Append(FromWide(SettingsFileName)))
            return Platform::Entry::Unknown;
        const Platform::Entry kind = Platform::EntryKind(path.Text());
        if (kind == Platform::Entry::File || kind == Platform::Entry::Unknown) return kind;
    }
    wchar_t found[MAX_PATH];
    const DWORD length = SearchPathW(nullptr, SettingsFileName, nullptr, MAX_PATH, found, nullptr);
    if (length == 0 || length >= MAX_PATH) return Platform::Entry::Missing;
    return path.Assign(FromWide(found)) ? Platform::Entry::File : Platform::Entry::Unknown;
}

} // namespace

bool SettingsStore::Load() {
    WString located;
    const Platform::Entry kind = LocateSettingsFile(located);
    auto* const file = kind == Platform::Entry::Unknown ? nullptr : new IniFile;
    if (!file) return false;
    Free();
    ini = file;
    path = static_cast<WString&&>(located);
    FileStamp stamp;
    // Before the bytes: a later one would hide a change. Without it the next save asks.
    if (kind == Platform::Entry::File) static_cast<void>(ReadStamp(path.Text(), stamp));
    // What a malformed file held before its first bad line is used; there is no message until it is to be saved.
    const bool isRead = kind == Platform::Entry::Missing || ini->Load(path.Text());
    known = {!isRead && !ini->StoppedLine(), ini->StoppedLine(), stamp};
    LoadSettings(*ini);
    HighContrast::Follow();
    RebuildToolAccelerators();
    LoadEngineDefinitions(*ini);
    return true;
}

void SettingsStore::Free() {
    if (!ini) return;
    ReleaseEngineDefinitions();
    toolAccelerators.Reset();
    ReleaseSettings();
    delete ini;
    ini = nullptr;
    path.Release();
}

void SettingsStore::RebuildToolAccelerators() {
    toolAccelerators.Reset();
    Array<ToolAccelerator> list;
    if (!toolList.Accelerators(list) || list.IsEmpty()) return;
    Array<ACCEL> table;
    for (size_t i = 0; i < list.Count(); ++i)
        if (!table.Append({list[i].flags, list[i].key, list[i].command})) return;
    toolAccelerators.Reset(CreateAcceleratorTableW(table.Items(), static_cast<int>(table.Count())));
}

void SettingsStore::ReloadEngineDefinitions() {
    ReleaseEngineDefinitions();
    LoadEngineDefinitions(*ini);
}
