#include "base/RecoveryFolder.h"

#include "base/Path.h"
#include "base/SystemFolders.h"
#include "base/TextFormat.h"

#include <utility>

// A start asks several times, and the system would look it up each time.
bool RecoveryFolder::Find(WString& out) {
    if (const Char* const ofTest = Platform::TestRecoveryFolder()) return out.Assign(ofTest);
    if (found.IsEmpty()) {
        WString folder;
        if (!SystemFolders::LocalData(folder) || !Path::Join(folder, u"Orvane\\Recovery")) return false;
        found = std::move(folder);
    }
    return out.Assign(found);
}

bool RecoveryFolder::GetPath(const Char* inside, WString& out) {
    WString folder;
    if (!Find(folder) || folder.IsEmpty() || (*inside && !Path::Join(folder, inside))) return false;
    out = std::move(folder);
    return true;
}

bool RecoveryFolder::Make(const Char* inside, WString& out) {
    WString folder;
    if (!GetPath(inside, folder) || !Platform::MakeFolder(folder.Text())) return false;
    out = std::move(folder);
    return true;
}

// The name is made of the time, so that names are in the order of their making, and of a number for each try: the clock
// may stand still for some milliseconds, and other editors use it as well.
bool RecoveryFolder::MakeFile(const Char* inside, const Char* extension, Platform::File& file, WString& path) {
    WString folder;
    if (!Make(inside, folder)) return false;
    const Platform::FileTime now = Platform::Now();
    for (int tries = 0; tries < 8 && !file.IsOpen(); ++tries, ++number) {
        WString name;
        const bool isNamed = Text::AppendFormat(name, u"%08x%08x%08x%s", static_cast<uint32_t>(now >> 32),
                                                static_cast<uint32_t>(now), number, extension);
        if (!isNamed || !path.Assign(folder) || !Path::Join(path, name.Text())) return false;
        static_cast<void>(file.Open(path.Text(), Platform::File::Mode::CreateNew)); // the loop asks IsOpen
    }
    return file.IsOpen();
}
