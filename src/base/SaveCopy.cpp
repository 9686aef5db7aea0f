#include "base/SaveCopy.h"

#include "base/FileBytes.h"
#include "base/RecoveryFile.h"

#include <cstring>

namespace {

constexpr uint8_t Magic[8] = {'O', 'r', 'v', 'S', 'a', 'v', 'e', 0x1A};
constexpr uint32_t Version = 1;

// What a copy begins with. The path follows, in units of UTF-16, then the bytes.
struct Header {
    uint8_t magic[8];
    uint32_t version;
    uint32_t pathLength;
    uint64_t length;
    uint64_t value;
    uint64_t check; // of all before, and of the path
};

uint64_t CheckOf(const Header& header, const Char* path) {
    Checksum sum;
    sum.Add(&header, offsetof(Header, check));
    sum.Add(path, header.pathLength * sizeof(Char));
    return sum.Value();
}

bool ReadAll(Platform::File& file, void* out, size_t count) {
    size_t read = 0;
    return file.Read(out, count, read) && read == count;
}

bool IsSane(const Header& header, uint64_t size) {
    if (header.pathLength == 0 || header.pathLength > Platform::LongestPath) return false;
    const uint64_t start = sizeof(Header) + header.pathLength * sizeof(Char);
    return start <= size && header.length == size - start;
}

// Takes the bytes of a copy and adds them up.
class ContentSink final : public ByteSink {
public:
    ContentSink(Platform::File& copy, Checksum& sum) : writer(copy), content(sum) {}
    bool Take(const void* bytes, size_t count) override {
        content.Add(bytes, count);
        // Without a copy the sum is wanted all the same.
        hasFailed = hasFailed || !writer.Take(bytes, count);
        return true;
    }
    bool HasFailed() const { return hasFailed; }

private:
    FileSink writer;
    Checksum& content;
    bool hasFailed = false;
};

} // namespace

bool SaveCopy::WriteHeader() {
    Header header = {};
    std::memcpy(header.magic, Magic, sizeof(Magic));
    header.version = Version;
    header.pathLength = target.Length();
    header.length = content.Count();
    header.value = content.Value();
    header.check = CheckOf(header, target.Text());
    return file.Seek(0) && file.Write(&header, sizeof(header));
}

SaveCopy::Outcome SaveCopy::Make(const Char* targetPath, ByteSource& source) {
    if (!target.Assign(targetPath)) return Outcome::NoBytes; // nothing at all can be done without memory
    // The header is written last: until then nobody takes the file for a copy.
    const Header nothing = {};
    const bool isBegun =
        target.Length() <= Platform::LongestPath && MakeRecoveryFile(SaveCopyFolder, SaveCopyExtension, file, path) &&
        file.Write(&nothing, sizeof(nothing)) && file.Write(target.Text(), target.Length() * sizeof(Char));
    if (!isBegun) Discard();
    ContentSink sink(file, content);
    const bool isGiven = source.GiveTo(sink);
    if (isGiven && isBegun && !sink.HasFailed() && WriteHeader() && file.Flush()) return Outcome::Made;
    Discard();
    return isGiven ? Outcome::NoCopy : Outcome::NoBytes;
}

void SaveCopy::Discard() {
    if (!file.IsOpen()) return;
    file.Close();
    Platform::RemoveFile(path.Text());
}

SaveCopyState ReadSaveCopy(Platform::File& copy, SaveCopyContent& content) {
    Header header = {};
    uint64_t size = 0;
    // What cannot be read now may be good: only what was read and is wrong is Damaged, and is removed.
    if (!copy.GetSize(size)) return SaveCopyState::Unknown;
    if (size < sizeof(header)) return SaveCopyState::Damaged;
    if (!ReadAll(copy, &header, sizeof(header))) return SaveCopyState::Unknown;
    if (std::memcmp(header.magic, Magic, sizeof(Magic)) != 0) return SaveCopyState::Damaged;
    if (header.version > Version) return SaveCopyState::Unknown;
    if (!IsSane(header, size)) return SaveCopyState::Damaged;
    WString path;
    if (!path.Reserve(header.pathLength) || !ReadAll(copy, path.Data(), header.pathLength * sizeof(Char)))
        return SaveCopyState::Unknown;
    if (CheckOf(header, path.Data()) != header.check) return SaveCopyState::Damaged;
    Checksum sum;
    if (!AddUp(copy, sum)) return SaveCopyState::Unknown;
    if (sum.Count() != header.length || sum.Value() != header.value) return SaveCopyState::Damaged;
    // Up to a terminator, if there should be one.
    if (!content.target.Assign(path.Data())) return SaveCopyState::Unknown;
    content.start = sizeof(header) + header.pathLength * sizeof(Char);
    content.length = header.length;
    content.value = header.value;
    return SaveCopyState::Complete;
}
