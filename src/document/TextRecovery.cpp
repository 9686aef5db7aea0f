#include "document/TextRecovery.h"

#include "base/Assert.h"
#include "base/Scan.h"
#include "settings/AdditionalSettings.h"

#include <algorithm>
#include <cstring>

namespace {

// A gap buffer: the next change is usually near the last one, so little has to be moved.
class GapText {
public:
    GapText() = default;
    ~GapText() { Heap::Free(items); }
    GapText(const GapText&) = delete;
    GapText& operator=(const GapText&) = delete;

    // Takes the text over, with room for `more` characters. False without memory.
    bool Take(DecodedText& text, uint64_t room) {
        const uint64_t wanted = uint64_t{text.length} + room + 1;
        void* const grown = Heap::Resize(text.text, text.capacity * sizeof(Char), wanted * sizeof(Char));
        if (!grown) return false;
        items = static_cast<Char*>(grown);
        text.text = nullptr;
        capacity = static_cast<size_t>(wanted);
        gap = text.length;
        gapEnd = capacity - 1;
        return true;
    }
    size_t Length() const { return capacity - 1 - (gapEnd - gap); }

    // Room of `count` characters before `at`: to be filled, and nothing has changed before Replace.
    Char* RoomAt(size_t at, size_t count) {
        ORVANE_ASSERT(at <= Length() && count <= gapEnd - gap);
        if (at < gap) std::memmove(items + gapEnd - (gap - at), items + at, (gap - at) * sizeof(Char));
        if (at > gap) std::memmove(items + gap, items + gapEnd, (at - gap) * sizeof(Char));
        gapEnd = gapEnd - gap + at;
        gap = at;
        return items + gap;
    }
    // What was put there takes the place of the `removed` characters after it.
    void Replace(size_t removed, size_t count) {
        ORVANE_ASSERT(removed <= Length() - gap);
        gap += count;
        gapEnd += removed;
    }

    uint64_t Value() const {
        Checksum sum;
        sum.Add(items, gap * sizeof(Char));
        sum.Add(items + gapEnd, (capacity - 1 - gapEnd) * sizeof(Char));
        return sum.Value();
    }

    // False when it is longer than a document can be.
    bool Give(DecodedText& out) {
        const size_t length = Length();
        if (length >= UINT32_MAX) return false;
        RoomAt(length, 0);
        void* const exact = Heap::Resize(items, capacity * sizeof(Char), (length + 1) * sizeof(Char));
        out.text = exact ? static_cast<Char*>(exact) : items;
        out.capacity = static_cast<uint32_t>(exact ? length + 1 : std::min<size_t>(capacity, UINT32_MAX));
        items = nullptr;
        out.text[length] = 0;
        out.length = static_cast<uint32_t>(length);
        out.lineCount = static_cast<uint32_t>(1 + Scan::CountLineFeeds(out.text, length));
        return true;
    }

private:
    Char* items = nullptr;
    size_t capacity = 0; // one more than there is room for, for the terminator
    size_t gap = 0;
    size_t gapEnd = 0;
};

bool ReadFile(const JournalReader& journal, DecodedText& out) {
    const JournalSubject& subject = journal.Subject();
    using Reading = JournalSubject::Reading;
    const bool recognisesUtf8 =
        subject.reading == Reading::NotSaid ? additionalSettings.Utf8 != 0 : subject.reading == Reading::WithUtf8;
    return ReadTextFile(journal.Name().Text(), recognisesUtf8, out);
}

// False when there is no further change that is good.
bool Apply(JournalReader& journal, GapText& text) {
    JournalChange change;
    if (!journal.Next(change) || change.length % sizeof(Char) != 0) return false;
    const auto count = static_cast<size_t>(change.length / sizeof(Char));
    if (change.start > text.Length() || change.detail > text.Length() - change.start) return false;
    // All changes together have fewer bytes than the journal, for which there is room.
    if (!journal.Read(text.RoomAt(static_cast<size_t>(change.start), count))) return false;
    text.Replace(static_cast<size_t>(change.detail), count);
    return true;
}

bool IsKnown(const JournalSubject& subject) {
    return subject.reading <= JournalSubject::Reading::WithUtf8 && subject.encoding < EncodingCount &&
           subject.lineEnding <= static_cast<uint32_t>(LineEnding::Mixed);
}

} // namespace

RecoveryResult RecoverText(JournalReader& journal, DecodedText& out) {
    const JournalSubject& subject = journal.Subject();
    GapText text;
    if (!IsKnown(subject)) return RecoveryResult::Failed;
    if (subject.isOverFile && !ReadFile(journal, out)) return RecoveryResult::FileUnreadable;
    if (subject.isOverFile && (out.file.size != subject.fileSize || !out.text)) return RecoveryResult::FileChanged;
    // Whatever the changes add is in the journal, so that its size is room enough for all of them.
    if (!text.Take(out, journal.Size() / sizeof(Char)) || !Apply(journal, text)) return RecoveryResult::Failed;
    // The size may be the same by chance, and the time says nothing: only this shows that the file is the one that was
    // edited.
    if (subject.isOverFile && text.Value() != subject.value) return RecoveryResult::FileChanged;
    while (Apply(journal, text)) {
    }
    if (journal.HasFailed() || !text.Give(out)) return RecoveryResult::Failed;
    out.encoding = static_cast<Encoding>(subject.encoding);
    out.style = static_cast<LineEnding>(subject.lineEnding);
    out.losesBytes = false;
    return journal.IsAtEnd() ? RecoveryResult::Whole : RecoveryResult::Cut;
}
