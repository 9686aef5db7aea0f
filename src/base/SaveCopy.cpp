#include "base/SaveCopy.h"

#include "base/FileBytes.h"
#include "base/RecoveryFile.h"

namespace {

constexpr RecoveryStart Start = {{'O', 'r', 'v', 'S', 'a', 'v', 'e', 0x1A}, 1, 0};

// The bytes follow the name, which is the path of their file.
struct Header {
    RecoveryStart start;
    uint64_t length;
    uint64_t value;
    uint64_t check;
};

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
    Header header = {Start, content.Count(), content.Value(), 0};
    header.start.nameLength = target.Length();
    header.check = CheckOfHeader(&header, sizeof(header), target.Text());
    return file.Seek(0) && file.Write(&header, sizeof(header));
}

SaveCopy::Outcome SaveCopy::Make(RecoveryFolder& folder, const Char* targetPath, ByteSource& source) {
    if (!target.Assign(targetPath)) return Outcome::NoBytes; // nothing at all can be done without memory
    // The header is written last: until then nobody takes the file for a copy.
    const Header nothing = {};
    const bool isBegun =
        target.Length() <= Platform::LongestPath && folder.MakeFile(SaveCopyFolder, SaveCopyExtension, file, path) &&
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
    // Another program may keep it from being removed: an empty one tells the next start nothing.
    static_cast<void>(file.Seek(0) && file.CutHere());
    file.Close();
    static_cast<void>(Platform::RemoveFile(path.Text())); // what stays is damaged
}

SaveCopyState ReadSaveCopy(Platform::File& copy, SaveCopyContent& content) {
    Header header = {};
    WString path;
    // What cannot be read now may be good: only what was read and is wrong is Damaged, and is removed.
    const RecoveryHeader read = ReadRecoveryHeader(copy, Start, &header, sizeof(header), path);
    if (read == RecoveryHeader::Unknown) return SaveCopyState::Unknown;
    if (read == RecoveryHeader::Damaged || path.IsEmpty()) return SaveCopyState::Damaged;
    Checksum sum;
    if (!AddUp(copy, sum)) return SaveCopyState::Unknown;
    if (sum.Count() != header.length || sum.Value() != header.value) return SaveCopyState::Damaged;
    if (!content.target.Assign(path)) return SaveCopyState::Unknown;
    content.start = sizeof(header) + header.start.nameLength * sizeof(Char);
    content.length = header.length;
    content.value = header.value;
    return SaveCopyState::Complete;
}
