#include "base/Journal.h"

#include "base/Assert.h"
#include "base/RecoveryFile.h"

#include <cstring>

namespace {

constexpr RecoveryStart Start = {{'O', 'r', 'v', 'J', 'o', 'u', 'r', 0x1A}, 1, 0};

struct Header {
    RecoveryStart start;
    JournalSubject subject;
    uint64_t check;
};

} // namespace

bool JournalFile::Make(RecoveryFolder& folder, const JournalSubject& subject, const WString& name) {
    if (name.Length() > Platform::LongestPath) return false;
    Header header = {Start, subject, 0};
    header.start.nameLength = name.Length();
    chain = header.check = CheckOfHeader(&header, sizeof(header), name.Text());
    if (!folder.MakeFile(JournalFolder, JournalExtension, file, path)) return false;
    Gather(&header, sizeof(header));
    return Write(name.Text(), name.Length() * sizeof(Char)) && WriteGathered();
}

// The sum goes on from the change before. A change that is missing, or the rest of an older file that had the same
// place on the disk, would otherwise be good by itself.
void JournalFile::Begin(const JournalChange& change) {
    ORVANE_ASSERT(gathered == 0); // the change before has ended
    sum = Checksum();
    sum.Add(&chain, sizeof(chain));
    sum.Add(&change, sizeof(change));
    Gather(&change, sizeof(change));
}

bool JournalFile::Put(const void* bytes, size_t count) {
    sum.Add(bytes, count);
    return Write(bytes, count);
}

bool JournalFile::End() {
    chain = sum.Value();
    return Write(&chain, sizeof(chain)) && WriteGathered();
}

bool JournalFile::Write(const void* bytes, size_t count) {
    // What was gathered first: the file only grows, in the order of the calls.
    if (count > sizeof(gather) - gathered && !WriteGathered()) return false;
    if (count <= sizeof(gather)) {
        Gather(bytes, count);
        return true;
    }
    size += count;
    return file.Write(bytes, count);
}

void JournalFile::Gather(const void* bytes, size_t count) {
    ORVANE_ASSERT(count <= sizeof(gather) - gathered);
    size += count;
    if (count) std::memcpy(gather + gathered, bytes, count);
    gathered += static_cast<uint32_t>(count);
}

bool JournalFile::WriteGathered() {
    const uint32_t count = gathered;
    gathered = 0;
    return count == 0 || file.Write(gather, count);
}

void JournalFile::Discard() {
    if (!file.IsOpen()) return;
    // Another program may keep it from being removed: an empty one tells the next start nothing.
    static_cast<void>(file.Seek(0) && file.CutHere());
    file.Close();
    static_cast<void>(Platform::RemoveFile(path.Text())); // what stays is damaged
}

JournalReader::State JournalReader::ReadHeader() {
    Header header = {};
    hasFailed = true;
    if (!file.GetSize(size) || !file.Seek(0)) return State::Unknown;
    const RecoveryHeader read = ReadRecoveryHeader(file, Start, &header, sizeof(header), name);
    hasFailed = read == RecoveryHeader::Unknown;
    if (hasFailed) return State::Unknown;
    if (read == RecoveryHeader::Damaged) return State::Damaged;
    subject = header.subject;
    chain = header.check;
    at = sizeof(header) + header.start.nameLength * sizeof(Char);
    return State::Readable;
}

bool JournalReader::Next(JournalChange& change) {
    const uint64_t rest = size - at;
    constexpr uint64_t Least = sizeof(change) + sizeof(chain);
    if (rest < Least || !ReadAll(&change, sizeof(change)) || change.length > rest - Least) return false;
    sum = Checksum();
    sum.Add(&chain, sizeof(chain));
    sum.Add(&change, sizeof(change));
    left = change.length;
    return true;
}

bool JournalReader::Read(void* out) {
    if (!ReadAll(out, static_cast<size_t>(left))) return false;
    sum.Add(out, static_cast<size_t>(left));
    return EndOfChange();
}

bool JournalReader::Pass() {
    uint8_t piece[4096];
    for (uint64_t rest = left; rest;) {
        const size_t count = rest < sizeof(piece) ? static_cast<size_t>(rest) : sizeof(piece);
        if (!ReadAll(piece, count)) return false;
        sum.Add(piece, count);
        rest -= count;
    }
    return EndOfChange();
}

bool JournalReader::EndOfChange() {
    uint64_t check = 0;
    if (!ReadAll(&check, sizeof(check)) || check != sum.Value()) return false;
    chain = check;
    at += sizeof(JournalChange) + left + sizeof(check);
    return true;
}

bool JournalReader::ReadAll(void* out, size_t count) {
    size_t read = 0;
    hasFailed = !file.Read(out, count, read) || read != count;
    return !hasFailed;
}
