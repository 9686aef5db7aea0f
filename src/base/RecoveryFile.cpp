#include "base/RecoveryFile.h"

#include "base/Path.h"
#include "base/TextFormat.h"

// The name is made of the time, so that names are in the order of their making, and of a number for each try: the clock
// may stand still for some milliseconds, and other editors use it as well.
bool MakeRecoveryFile(const Char* folder, const Char* extension, Platform::File& file, WString& path) {
    WString inside;
    if (!Platform::RecoveryFolder(folder, inside)) return false;
    static uint32_t number = 0;
    const Platform::FileTime now = Platform::Now();
    for (int tries = 0; tries < 8 && !file.IsOpen(); ++tries, ++number) {
        WString name;
        const bool isNamed = Text::AppendFormat(name, u"%08x%08x%08x%s", static_cast<uint32_t>(now >> 32),
                                                static_cast<uint32_t>(now), number, extension);
        if (!isNamed || !path.Assign(inside) || !Path::Join(path, name.Text())) return false;
        file.Open(path.Text(), Platform::File::Mode::CreateNew);
    }
    return file.IsOpen();
}

void ListRecoveryFiles(const Char* folder, const Char* extension, List<RecoveryFileName>& names) {
    WString inside;
    WString wanted;
    if (!Platform::RecoveryPath(folder, inside) || !wanted.Assign(inside) || !Path::Join(wanted, u"*") ||
        !wanted.Append(extension))
        return;
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
