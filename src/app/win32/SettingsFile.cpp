#include "app/win32/Application.h"

#include "base/Path.h"
#include "base/Platform.h"
#include "settings/IniFile.h"
#include "settings/Settings.h"
#include "settings/ToolList.h"
#include "syntax/EngineDefinition.h"

namespace {

constexpr const wchar_t* SettingsFileName = L"orvane.ini";

} // namespace

bool Application::LocateSettingsFile(WString& path) {
    wchar_t folder[MAX_PATH];
    if (SHGetFolderPathW(nullptr, CSIDL_PERSONAL, nullptr, SHGFP_TYPE_CURRENT, folder) == S_OK &&
        path.Assign(FromWide(folder)) && path.AppendChar(u'\\') && path.Append(FromWide(SettingsFileName)) &&
        Platform::EntryKind(path.Text()) == Platform::Entry::File)
        return true;
    wchar_t found[MAX_PATH];
    const DWORD length = SearchPathW(nullptr, SettingsFileName, nullptr, MAX_PATH, found, nullptr);
    return length > 0 && length < MAX_PATH && path.Assign(FromWide(found));
}

bool Application::LoadSettingsFile() {
    IniFile* const file = new IniFile;
    if (!file) return false;
    FreeSettings();
    globals.iniFile = file;
    // What a malformed file held before its first bad line is used; there is no message.
    if (LocateSettingsFile(globals.settingsPath)) globals.iniFile->Load(globals.settingsPath.Text());
    LoadSettings(*globals.iniFile);
    RebuildToolAccelerators();
    LoadEngineDefinitions(*globals.iniFile);
    return true;
}

void Application::FreeSettings() {
    ReleaseEngineDefinitions();
    if (globals.toolAccelerators) DestroyAcceleratorTable(globals.toolAccelerators);
    globals.toolAccelerators = nullptr;
    ReleaseSettings();
    delete globals.iniFile;
    globals.iniFile = nullptr;
    globals.settingsPath.Release();
}

void Application::RebuildToolAccelerators() {
    if (globals.toolAccelerators) DestroyAcceleratorTable(globals.toolAccelerators);
    globals.toolAccelerators = nullptr;
    Array<ToolAccelerator> list;
    if (!toolList.Accelerators(list) || list.IsEmpty()) return;
    Array<ACCEL> table;
    for (size_t i = 0; i < list.Count(); ++i)
        if (!table.Append({list[i].flags, list[i].key, list[i].command})) return;
    globals.toolAccelerators = CreateAcceleratorTableW(table.Items(), static_cast<int>(table.Count()));
}
