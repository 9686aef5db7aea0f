#include "base/RecoveryFile.h"

#include "base/Path.h"
#include "base/TextFormat.h"

// The name is made of the time, and tried again with the next one when it is taken.
bool MakeRecoveryFile(const Char* folder, const Char* extension, Platform::File& file, WString& path) {
    WString inside;
    if (!Platform::RecoveryFolder(folder, inside)) return false;
    Platform::FileTime number = Platform::Now();
    for (int tries = 0; tries < 8 && !file.IsOpen(); ++tries, ++number) {
        WString name;
        const bool isNamed = Text::AppendFormat(name, u"%08x%08x%s", static_cast<uint32_t>(number >> 32),
                                                static_cast<uint32_t>(number), extension);
        if (!isNamed || !path.Assign(inside) || !Path::Join(path, name.Text())) return false;
        file.Open(path.Text(), Platform::File::Mode::CreateNew);
    }
    return file.IsOpen();
}

void ListRecoveryFiles(const Char* folder, const Char* pattern, List<RecoveryFileName>& names) {
    WString inside;
    WString wanted;
    if (!Platform::RecoveryPath(folder, inside) || !wanted.Assign(inside) || !Path::Join(wanted, pattern)) return;
    Platform::FileSearch search;
    for (bool more = search.First(wanted.Text()); more; more = search.Next()) {
        auto* const name = new RecoveryFileName;
        if (!name || !name->path.Assign(inside) || !Path::Join(name->path, search.Name())) {
            delete name;
            return;
        }
        names.Append(name);
    }
}
