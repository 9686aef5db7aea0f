#pragma once

#include "app/SettingsSaving.h"
#include "base/WString.h"
#include "base/win32/Handles.h"

class IniFile;
class SafeSaver;

// The settings file and what is made of it: the process-wide settings, tools and engine definitions, and the
// accelerator table of the tools' hot keys.
class SettingsStore {
public:
    // `ofProgram` outlives this.
    explicit SettingsStore(SafeSaver& ofProgram) : saver(ofProgram) {}
    ~SettingsStore() { Free(); }
    SettingsStore(const SettingsStore&) = delete;
    SettingsStore& operator=(const SettingsStore&) = delete;

    // The start-up half: reads the file (defaults without one) and applies it. What was loaded before is given
    // up first; without memory (false) it stays.
    [[nodiscard]] bool Load();
    // The shutdown half. The file is not written.
    void Free();

    IniFile& Ini() { return *ini; } // after Load
    // After a dialog was confirmed. Asks and tells what SaveSettingsFile does.
    void Save(UserPrompt& user) { SaveSettingsFile(user, saver, *ini, path.Text(), known); }
    // Null when no tool has a hot key.
    HACCEL ToolAccelerators() const { return toolAccelerators.Get(); }

    // After the tool list has changed.
    void RebuildToolAccelerators();
    // After a setting has changed: definitions hold colours of the settings.
    void ReloadEngineDefinitions();

private:
    SafeSaver& saver;
    IniFile* ini = nullptr;
    WString path; // where orvane.ini is, or where it would be
    SettingsKnowledge known;
    AcceleratorTable toolAccelerators;
};
