#include "document/TextJournal.h"

#include "document/Document.h"
#include "settings/AdditionalSettings.h"

namespace {

// Characters between two changes that are still one entry.
constexpr uint32_t Gap = 0x4000;

JournalChange ChangeOf(const ChangedSpan& span) {
    return {span.Start(), span.Removed(), uint64_t{span.Inserted()} * sizeof(Char)};
}

} // namespace

void TextJournal::Changed(const TextChange& change) {
    if (!IsKept()) {
        // How the text differs from its file and its journal is not known any more.
        hasOrigin = false;
        return MakeAgainNext();
    }
    // The unwritten span moves by the growth of a change before it.
    if (Writable() && !unwritten.IsEmpty() && !unwritten.IsNear(change, Gap)) {
        const bool isBefore = change.start < unwritten.Start();
        const uint32_t shift = change.inserted.characters - change.removed.characters; // modulo 2^32
        // A failure makes the journal incomplete, and the next Flush begins another.
        static_cast<void>(Append(*Writable(), unwritten.Start() + (isBefore ? shift : 0)));
    }
    const uint32_t length = TextLength();
    unwritten.Add(change, length);
    sinceFile.Add(change, length);
    CountEdit();
}

void TextJournal::Replaced() {
    Discard();
    unwritten.Clear();
    sinceFile.Clear();
    hasOrigin = false;
}

void TextJournal::IsInFile(Origin how, const FileStamp& stamp) {
    Replaced();
    hasOrigin = true;
    origin = how;
    fileStamp = stamp;
    recognisesUtf8 = additionalSettings.Utf8;
}

bool TextJournal::WriteAll(JournalFile& made) {
    WString name;
    JournalSubject subject;
    const Char* const* names = nullptr;
    Encoding encoding = Encoding::Ansi;
    Owner().GetEncoding(encoding, names);
    subject.hasFile = *Owner().GetTitle() == 0;
    subject.encoding = static_cast<uint32_t>(encoding);
    subject.lineEnding = static_cast<uint32_t>(Owner().GetLineEnding());
    subject.isOverFile = IsOverFile(subject);
    isOverFile = subject.isOverFile;
    const JournalChange first = subject.isOverFile ? ChangeOf(sinceFile) : JournalChange{0, 0, WholeSize()};
    unwritten.Clear();
    return name.Assign(Owner().GetName()) && made.Make(Folder(), subject, name) &&
           PutText(made, first, static_cast<uint32_t>(first.start));
}

bool TextJournal::IsStillGood() const {
    FileStamp onDisk;
    return !isOverFile || (ReadStamp(Owner().GetName(), onDisk) && onDisk == fileStamp);
}

bool TextJournal::WriteRest(JournalFile& journal) { return unwritten.IsEmpty() || Append(journal, unwritten.Start()); }

// Only of a large text, whose file has not changed since and is not far away.
bool TextJournal::IsOverFile(JournalSubject& subject) const {
    FileStamp onDisk;
    if (!hasOrigin || !subject.hasFile || sinceFile.IsEmpty() || TextLength() <= LargeText ||
        Platform::IsRemote(Owner().GetName()) || !ReadStamp(Owner().GetName(), onDisk) || onDisk != fileStamp ||
        !WouldRoundTrip())
        return false;
    subject.fileTime = fileStamp.time;
    subject.fileSize = fileStamp.size;
    subject.reading = recognisesUtf8 ? JournalSubject::Reading::WithUtf8 : JournalSubject::Reading::WithoutUtf8;
    Checksum sum;
    content.ForEachPiece(0, TextLength(), [&](const Char* piece, size_t count) {
        sum.Add(piece, count * sizeof(Char));
        return true;
    });
    subject.value = sum.Value();
    return true;
}

// Whether reading the file would yield the characters that the text still shares with it. A loaded file reads the same
// again; a saved one surely does only if it is plain ASCII.
bool TextJournal::WouldRoundTrip() const {
    if (origin == Origin::Loaded) return true;
    return content.ForEachPiece(0, TextLength(), [](const Char* piece, size_t count) {
        bool isPlain = true;
        for (size_t i = 0; i < count; ++i) isPlain &= static_cast<Char>(piece[i] - 1) < 0x7F && piece[i] != u'\r';
        return isPlain;
    });
}

// What is not written yet, whose characters are at `at` now.
bool TextJournal::Append(JournalFile& journal, uint32_t at) {
    const bool isWritten = PutText(journal, ChangeOf(unwritten), at);
    unwritten.Clear();
    Written(isWritten);
    return isWritten;
}

bool TextJournal::PutText(JournalFile& journal, const JournalChange& change, uint32_t from) const {
    const auto count = static_cast<uint32_t>(change.length / sizeof(Char));
    const auto put = [&](const Char* piece, size_t part) { return journal.Put(piece, part * sizeof(Char)); };
    journal.Begin(change);
    return content.ForEachPiece(from, count, put) && journal.End();
}
