#pragma once

#include <string>
#include <vector>

// Files of a test: a folder of its own, bytes in and out, and the settings file of the user.
namespace files {

// A fresh folder below the user's temporary folder; deleted with everything in it by the destructor.
class Scratch {
public:
    Scratch();
    ~Scratch();
    Scratch(const Scratch&) = delete;
    Scratch& operator=(const Scratch&) = delete;

    const std::wstring& Folder() const { return folder; }
    std::wstring Path(const std::wstring& name) const { return folder + L"\\" + name; }

private:
    std::wstring folder;
};

bool Exists(const std::wstring& path);
bool MakeFolder(const std::wstring& path);
bool Write(const std::wstring& path, const std::string& bytes);
// Empty when the file cannot be read.
std::string Read(const std::wstring& path);
// Sets the time of the last write to `seconds` after the present one.
bool MoveTime(const std::wstring& path, int seconds);

// The bytes of a text in UTF-16, little or big endian, without a byte-order mark.
std::string Utf16(const std::wstring& text, bool bigEndian = false);
std::string Utf8(const std::wstring& text);

// The documents folder's orvane.ini, where the editor looks first.
std::wstring SettingsPath();

// The program under test: environment variable ORVANE_EXE, else orvane.exe beside the tests.
std::wstring ProgramPath();
// The orvane.ini beside the program, which serves when the documents folder has none.
std::wstring ShippedSettingsPath();
// What that file held before SavedSettings moved it away. Empty when there was none.
std::string ShippedSettings();

// Moves the settings files of both places away while it lives, and removes those that the tests left.
class SavedSettings {
public:
    SavedSettings();
    ~SavedSettings();
    SavedSettings(const SavedSettings&) = delete;
    SavedSettings& operator=(const SavedSettings&) = delete;
};

// Where the editor keeps what a failure must not cost the user.
std::wstring RecoveryPath();
// The names of the files in a folder inside it, in no order.
std::vector<std::wstring> RecoveryFiles(const std::wstring& inside);
void EmptyRecovery();

// Moves that folder away while it lives, and removes what the tests left.
class SavedRecovery {
public:
    SavedRecovery();
    ~SavedRecovery();
    SavedRecovery(const SavedRecovery&) = delete;
    SavedRecovery& operator=(const SavedRecovery&) = delete;
};

} // namespace files
