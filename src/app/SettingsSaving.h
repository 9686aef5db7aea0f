#pragma once

#include "document/FileStamp.h"

class IniFile;
class SafeSaver;
class UserPrompt;

// What is known of the settings file. A save loses what was not read.
struct SettingsKnowledge {
    bool isUnreadable = false; // there is a file, but it could not be read
    uint32_t stoppedLine = 0;  // where the reading has stopped; 0 when it came to the end
    FileStamp file;            // as it was read or written last; empty when there was none
};

// Writes the settings file after the user has confirmed a dialog. Asks first when the file holds what would be lost:
// what was not read of it, or what another program has written since. Tells when it cannot be written. Once it was
// written all of it is known.
void SaveSettingsFile(UserPrompt& user, SafeSaver& saver, const IniFile& settings, const Char* path,
                      SettingsKnowledge& known);
