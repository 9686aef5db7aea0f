// Reads the bytes as a journal, as they are and as changes in one with checksums that fit: a text comes out of it that
// a plain model gives as well, or none.

#include "base/RecoveryFile.h"
#include "document/TextRecovery.h"
#include "support/ScratchFolder.h"

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
    return journal.Begin({piece.start, piece.removed, length}) && journal.Put(text, length) && journal.End();
}

bool Apply(std::u16string& text, const Piece& piece, const uint8_t* bytes) {
    if (piece.flags & 1 && piece.count % 2) return false;
    if (piece.start > text.size() || piece.removed > text.size() - piece.start) return false;
    std::u16string added(piece.flags & 1 ? piece.count / 2 : piece.count, u'\0');
    if (!added.empty()) std::memcpy(added.data(), bytes, added.size() * sizeof(Char));
    text.replace(piece.start, piece.removed, added);
    return true;
}

void TryChanges(const ScratchFolder& scratch, const uint8_t* data, size_t size) {
    auto* const journal = new JournalFile;
    WString name;
    JournalSubject subject;
    if (size >= 4) subject.encoding = data[0] % 5;
    if (size >= 4) subject.lineEnding = data[1] % 5;
    const bool isKnown = subject.encoding < EncodingCount && subject.lineEnding <= 3;
    Require(name.Assign(u"C:\\file.txt") && journal->Make(subject, name));
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
    for (const auto& entry : std::filesystem::directory_iterator(scratch.File("Recovery/Journals")))
        if (entry.path().filename() != "1.journal") {
            const std::u16string text =
                TextOf(scratch.Path("Recovery/Journals/" + entry.path().filename().string()), isText);
            Require(isText == hasText && text == (hasText ? expected : u""));
        }
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
    return 0;
}
