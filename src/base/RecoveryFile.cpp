#include "base/RecoveryFile.h"

#include "base/Checksum.h"
#include "base/Path.h"
#include "base/RecoveryFolder.h"

#include <cstring>

namespace {

constexpr size_t CheckSize = sizeof(uint64_t);

bool ReadAll(Platform::File& file, void* out, size_t count) {
    size_t read = 0;
    return file.Read(out, count, read) && read == count;
}

} // namespace

uint64_t CheckOfHeader(const void* header, size_t size, const Char* name) {
    Checksum sum;
    sum.Add(header, size - CheckSize);
    sum.Add(name, static_cast<const RecoveryStart*>(header)->nameLength * sizeof(Char));
    return sum.Value();
}

RecoveryHeader ReadRecoveryHeader(Platform::File& file, const RecoveryStart& expected, void* header, size_t size,
                                  WString& name) {
    const RecoveryStart& start = *static_cast<const RecoveryStart*>(header);
    uint64_t fileSize = 0;
    // What cannot be read now may be good: only what was read and is wrong is Damaged.
    if (!file.GetSize(fileSize)) return RecoveryHeader::Unknown;
    if (fileSize < size) return RecoveryHeader::Damaged;
    if (!ReadAll(file, header, size)) return RecoveryHeader::Unknown;
    if (std::memcmp(start.magic, expected.magic, sizeof(start.magic)) != 0) return RecoveryHeader::Damaged;
    if (start.version > expected.version) return RecoveryHeader::Unknown; // a newer editor knows what it says
    // No checksum speaks for the length before what it measures was read; the file's size bounds it.
    const uint64_t nameBytes = start.nameLength * sizeof(Char);
    if (start.nameLength > Platform::LongestPath || nameBytes > fileSize - size) return RecoveryHeader::Damaged;
    WString read;
    if (!read.Reserve(start.nameLength) || !ReadAll(file, read.Data(), static_cast<size_t>(nameBytes)))
        return RecoveryHeader::Unknown;
    uint64_t check = 0;
    std::memcpy(&check, static_cast<const uint8_t*>(header) + size - CheckSize, CheckSize);
    if (CheckOfHeader(header, size, read.Data()) != check) return RecoveryHeader::Damaged;
    return name.Assign(read.Data()) ? RecoveryHeader::Good : RecoveryHeader::Unknown;
}

void ListRecoveryFiles(RecoveryFolder& folder, const Char* inside, const Char* extension,
                       List<RecoveryFileName>& names) {
    WString path;
    WString wanted;
    if (!folder.GetPath(inside, path) || !wanted.Assign(path) || !Path::Join(wanted, u"*") || !wanted.Append(extension))
        return;
    Platform::FileSearch search;
    for (bool more = search.First(wanted.Text()); more; more = search.Next()) {
        auto* const name = new RecoveryFileName;
        if (!name || !name->path.Assign(path) || !Path::Join(name->path, search.Name())) {
            delete name;
            return;
        }
        names.Append(name);
    }
}
