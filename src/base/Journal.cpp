#include "base/Journal.h"

#include "base/Assert.h"
#include "base/RecoveryFile.h"

#include <cstring>

namespace {

constexpr uint8_t Magic[8] = {'O', 'r', 'v', 'J', 'o', 'u', 'r', 0x1A};
constexpr uint32_t Version = 1;

// What a journal begins with. The name follows, in units of UTF-16.
struct Header {
    uint8_t magic[8];
    uint32_t version;
    uint32_t nameLength;
    JournalSubject subject;
    uint64_t check; // of all before, and of the name
};

uint64_t CheckOf(const Header& header, const Char* name) {
    Checksum sum;
    sum.Add(&header, offsetof(Header, check));
    sum.Add(name, header.nameLength * sizeof(Char));
    return sum.Value();
}

} // namespace

bool JournalFile::Make(const JournalSubject& subject, const WString& name) {
    Header header = {};
    std::memcpy(header.magic, Magic, sizeof(Magic));
    header.version = Version;
    header.nameLength = name.Length();
    header.subject = subject;
    if (name.Length() > Platform::LongestPath) return false;
    chain = header.check = CheckOf(header, name.Text());
    if (!MakeRecoveryFile(JournalFolder, JournalExtension, file, path)) return false;
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
    file.Close();
    Platform::RemoveFile(path.Text());
}

JournalReader::State JournalReader::ReadHeader() {
    Header header = {};
    // What cannot be read now may be good: only what was read and is wrong is Damaged.
    if (!file.GetSize(size) || !file.Seek(0)) return State::Unknown;
    if (size < sizeof(header)) return State::Damaged;
    if (!ReadAll(&header, sizeof(header))) return State::Unknown;
    if (std::memcmp(header.magic, Magic, sizeof(Magic)) != 0) return State::Damaged;
    if (header.version > Version) return State::Unknown; // a newer editor knows what it says
    // No checksum speaks for the lengths before what they measure was read; the file's size bounds them.
    const uint64_t nameBytes = header.nameLength * sizeof(Char);
    if (header.nameLength > Platform::LongestPath || nameBytes > size - sizeof(header)) return State::Damaged;
    WString read;
    if (!read.Reserve(header.nameLength) || !ReadAll(read.Data(), static_cast<size_t>(nameBytes)))
        return State::Unknown;
    if (CheckOf(header, read.Data()) != header.check) return State::Damaged;
    if (!name.Assign(read.Data())) return State::Unknown; // up to a terminator, if there should be one
    subject = header.subject;
    chain = header.check;
    at = sizeof(header) + nameBytes;
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
