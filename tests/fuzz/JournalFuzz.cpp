// Reads the bytes as a journal, as they are and as changes in one with checksums that fit: a text comes out of it that
// a plain model gives as well, or none; and pages of a file, which stays as it is.

#include "base/RecoveryFile.h"
#include "binary/BinaryDocument.h"
#include "binary/HexDocumentView.h"
#include "document/TextRecovery.h"
#include "support/ScratchFolder.h"
#include "support/TestRecovery.h"

#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <string>

namespace {

void Require(bool condition) {
    if (!condition) std::abort();
}

// What a journal gives; `isText` says whether anything.
std::u16string TextOf(const std::u16string& path, bool& isText) {
    Platform::File file;
    Require(file.Open(path.c_str(), Platform::File::Mode::Alone));
    JournalReader journal(file);
    DecodedText text;
    isText = false;
    if (journal.ReadHeader() != JournalReader::State::Readable) return {};
    const RecoveryResult result = RecoverText(journal, text);
    isText = result == RecoveryResult::Whole || result == RecoveryResult::Cut;
    if (!isText) return {};
    Require(text.text[text.length] == 0);
    return {text.text, text.length};
}

struct Piece {
    uint16_t start;
    uint16_t removed;
    uint8_t count;
    uint8_t flags;
};

bool Put(JournalFile& journal, const Piece& piece, const uint8_t* text) {
    const uint64_t length = piece.flags & 1 ? piece.count : piece.count * sizeof(Char); // odd ones are damage
    journal.Begin({piece.start, piece.removed, length});
    return journal.Put(text, length) && journal.End();
}

bool Apply(std::u16string& text, const Piece& piece, const uint8_t* bytes) {
    if (piece.flags & 1 && piece.count % 2) return false;
    if (piece.start > text.size() || piece.removed > text.size() - piece.start) return false;
    std::u16string added(piece.flags & 1 ? piece.count / 2 : piece.count, u'\0');
    if (!added.empty()) std::memcpy(added.data(), bytes, added.size() * sizeof(Char));
    text.replace(piece.start, piece.removed, added);
    return true;
}

// The only journal beside the first one.
std::u16string MadeJournal(const ScratchFolder& scratch) {
    for (const auto& entry : std::filesystem::directory_iterator(scratch.File("Recovery/Journals")))
        if (entry.path().filename() != "1.journal")
            return scratch.Path("Recovery/Journals/" + entry.path().filename().string());
    return {};
}

void TryChanges(const ScratchFolder& scratch, const uint8_t* data, size_t size) {
    auto* const journal = new JournalFile;
    WString name;
    JournalSubject subject;
    if (size >= 4) subject.encoding = data[0] % 5;
    if (size >= 4) subject.lineEnding = data[1] % 5;
    const bool isKnown = subject.encoding < EncodingCount && subject.lineEnding <= 3;
    Require(name.Assign(u"C:\\file.txt") && journal->Make(recoveryServices.folder, subject, name));
    std::u16string expected;
    bool isGood = isKnown;
    bool hasText = false;
    for (size_t at = 2; at + sizeof(Piece) <= size;) {
        Piece piece;
        std::memcpy(&piece, data + at, sizeof(piece));
        at += sizeof(piece);
        uint8_t text[512] = {};
        const size_t taken = std::min<size_t>(size - at, piece.count * sizeof(Char));
        if (taken) std::memcpy(text, data + at, taken);
        at += taken;
        Require(Put(*journal, piece, text));
        isGood = isGood && Apply(expected, piece, text);
        hasText = hasText || isGood;
    }
    delete journal;
    bool isText = false;
    const std::u16string text = TextOf(MadeJournal(scratch), isText);
    Require(isText == hasText && text == (hasText ? expected : u""));
}

// Each piece of the data is a change: where it starts, and pages that begin with what follows.
void TryPages(const ScratchFolder& scratch, const uint8_t* data, size_t size) {
    constexpr size_t FileBytes = 2 * PageSize + 100;
    const std::string bytes(FileBytes, 'f');
    const std::u16string target = scratch.Write("file.bin", bytes);
    auto* const journal = new JournalFile;
    WString name;
    JournalSubject subject;
    subject.kind = JournalSubject::Kind::Bytes;
    subject.fileSize = size && data[0] == 255 ? FileBytes + 1 : FileBytes;
    Require(name.Assign(target.c_str()) && journal->Make(recoveryServices.folder, subject, name));
    for (size_t at = 0; at + 2 <= size; at += 2) {
        const uint64_t start = data[at] % 4 * uint64_t{PageSize} + data[at] / 64;
        const uint64_t last = FileBytes - 2 * PageSize;
        const uint64_t length = (data[at] % 4 == 2 ? last : PageSize) + data[at + 1] / 128;
        Checksum sum;
        const std::string old(data[at] % 4 == 2 ? last : PageSize, 'f');
        sum.Add(old.data(), old.size());
        const std::string page(static_cast<size_t>(length), static_cast<char>(data[at + 1]));
        const bool isMark = data[at] == 9;
        const JournalChange change =
            isMark ? ByteJournal::SaveMark : JournalChange{start, sum.Value() + (data[at + 1] == 7), length};
        journal->Begin(change);
        Require((isMark || journal->Put(page.data(), page.size())) && journal->End());
    }
    delete journal;
    Platform::File file;
    Require(file.Open(MadeJournal(scratch).c_str(), Platform::File::Mode::Alone));
    JournalReader reader(file);
    Require(reader.ReadHeader() == JournalReader::State::Readable);
    HexServices services{recoveryServices};
    auto* const document = new BinaryDocument(services);
    document->AddRef();
    Require(document->Open(target.c_str()));
    const RecoveryResult result = document->Recover(reader);
    const bool isGood = result == RecoveryResult::Whole || result == RecoveryResult::Cut;
    Require(document->IsModified() == isGood && document->FileSize() == (isGood ? FileBytes : 0));
    std::string content(FileBytes, 0);
    Require(document->ReadBytes(0, reinterpret_cast<uint8_t*>(content.data()), content.size()) == isGood);
    document->Release();
    Require(scratch.Read("file.bin") == bytes);
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    static const ScratchFolder scratch;
    static const std::u16string folder = scratch.Path("Recovery");
    Platform::SetRecoveryFolder(folder.c_str());
    std::filesystem::remove_all(scratch.File("Recovery"));
    std::filesystem::create_directories(scratch.File("Recovery/Journals"));

    bool isText = false;
    TextOf(scratch.Write("Recovery/Journals/1.journal", std::string(data, data + size)), isText);
    TryChanges(scratch, data, size);
    Require(Platform::RemoveFile(MadeJournal(scratch).c_str()));
    TryPages(scratch, data, size);
    return 0;
}
