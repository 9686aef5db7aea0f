#pragma once

#include "document/ChangedSpan.h"
#include "document/DocumentJournal.h"
#include "document/FileStamp.h"
#include "document/TextContent.h"

// The journal of a text document. It begins with the whole text, or for a large text with how it differs from its file,
// and goes on with what has changed since its last entry. An edit only widens a span; the characters are read when the
// span is written. So typing costs the same with a journal as without.
//
// A journal with the whole text depends on nothing else, but writing a large text would be noticed. One over a file is
// verified as a whole when it is read: it gives the right text or none. Once the file has changed, the next Flush makes
// a journal with the whole text.
class TextJournal final : public DocumentJournal {
public:
    // A text of more characters is written as a change of its file where that can be.
    static constexpr uint32_t LargeText = 0x400000;

    // `text` is that of `document`.
    TextJournal(const Document& document, RecoveryServices& around, const TextContent& text)
        : DocumentJournal(document, around), content(text) {}

    // An edit was made. One that is far from those before it is an entry of its own.
    void Changed(const TextChange& change);
    // The text was replaced, by one of no known file.
    void Replaced();
    // The text is that of the document's file, as it was read, or as it was saved.
    enum class Origin { Loaded, Saved };
    void IsInFile(Origin how, const FileStamp& stamp);

private:
    [[nodiscard]] bool WriteAll(JournalFile& made) override;
    [[nodiscard]] bool WriteRest(JournalFile& journal) override;
    bool IsStillGood() const override;
    uint64_t WholeSize() const override { return uint64_t{TextLength()} * sizeof(Char); }

    uint32_t TextLength() const { return content.Length() + content.EditLineGrowth(); }
    bool IsOverFile(JournalSubject& subject) const;
    bool WouldRoundTrip() const;
    [[nodiscard]] bool Append(JournalFile& journal, uint32_t at);
    [[nodiscard]] bool PutText(JournalFile& journal, const JournalChange& change, uint32_t from) const;

    const TextContent& content;
    ChangedSpan unwritten; // since the last entry
    ChangedSpan sinceFile; // while the text was that of its file
    bool hasOrigin = false;
    Origin origin = Origin::Loaded;
    FileStamp fileStamp;
    bool recognisesUtf8 = false; // when the file was read
    bool isOverFile = false;     // what is written
};
