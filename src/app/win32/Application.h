#pragma once

#include "base/WString.h"
#include "base/win32/Windows.h"

class IniFile;

// What lives as long as the process, and the order in which it comes and goes.
namespace Application {

struct Globals {
    HINSTANCE instance = nullptr;
    const Char* commandLine = nullptr;
    HACCEL accelerators = nullptr;     // resource 103
    HACCEL toolAccelerators = nullptr; // from the tools' hot keys; null when no tool has one
    IniFile* iniFile = nullptr;
    WString settingsPath; // where orvane.ini is, or where it would be
};

extern Globals globals;

// Runs the editor from start-up to shutdown and returns the exit code.
int Run(HINSTANCE instance, const Char* commandLine);

// The start-up half of the settings: the file (defaults without one), the tools and the engine
// definitions; and the half that gives all of it up again.
// What was loaded before is given up first; without memory (false) it stays.
bool LoadSettingsFile();
void FreeSettings();

// The settings file's path: the documents folder first, then the system's search path. True when a
// file is there; the path of the documents folder is filled in all the same.
bool LocateSettingsFile(WString& path);

// Rebuilds the tools' accelerator table from the tool list.
void RebuildToolAccelerators();

} // namespace Application
