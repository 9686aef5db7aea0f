#pragma once

#include "base/Checksum.h"
#include "base/Heap.h"
#include "base/Platform.h"
#include "base/RecoveryFolder.h"
#include "base/WString.h"

// Where journals are inside the recovery folder, and how their names end.
constexpr const Char* JournalFolder = u"Journals";
constexpr const Char* JournalExtension = u".journal";

// What a journal says about its document. Both this and JournalChange are written as they are, so that what was read
// may have any value.
struct JournalSubject {
    enum class Kind : uint32_t {
        Text = 1,  // the changes are of characters
        Bytes = 2, // the changes are pages of a file
    };
    // Whether UTF-8 was recognised.
    enum class Reading : uint32_t {
        NotSaid = 0, // in older journals
        WithoutUtf8 = 1,
        WithUtf8 = 2,
    };

    Kind kind = Kind::Text;
    uint32_t hasFile = 0;    // 1: the name is a full path; 0: a title
    uint32_t isOverFile = 0; // 1: the first change is one of what the file holds; 0: of nothing
    uint32_t encoding = 0;   // of a text, as below
    uint32_t lineEnding = 0;
    Reading reading = Reading::NotSaid; // of a text over a file: how that was read
    uint64_t fileSize = 0;              // of the file that the changes are over, as below
    uint64_t fileTime = 0;
    uint64_t value = 0; // of a text over a file: its checksum after the first change
};

// One change; the bytes that are new follow it.
struct JournalChange {
    uint64_t start = 0;
    uint64_t detail = 0; // text: characters removed; bytes: checksum of what the file has there
    uint64_t length = 0; // of the bytes that follow
};

// A file of changes that only grows. It begins with a header, and each change ends with a checksum that covers all
// before it as well: what has reached the disk is either a valid sequence of changes from the first on, or recognisably
// damaged. While an object of this class lives, no other editor can open the file; it stays when the object goes.
class JournalFile : public HeapObject {
public:
    JournalFile() = default;
    JournalFile(const JournalFile&) = delete;
    JournalFile& operator=(const JournalFile&) = delete;

    // Once one of these has failed, the file takes nothing more; what is in it already stays good.
    [[nodiscard]] bool Make(RecoveryFolder& folder, const JournalSubject& subject, const WString& name);
    // A change, its bytes in as many pieces as wanted (`length` of them in all), and its end. Not before that end does
    // it reach the file as a whole.
    void Begin(const JournalChange& change);
    [[nodiscard]] bool Put(const void* bytes, size_t count);
    [[nodiscard]] bool End();
    // Has the system write all of it to the disk.
    [[nodiscard]] bool Flush() { return file.Flush(); }
    uint64_t Size() const { return size; }
    // Closes and removes the file.
    void Discard();

private:
    bool Write(const void* bytes, size_t count);
    void Gather(const void* bytes, size_t count);
    bool WriteGathered();

    Platform::File file;
    WString path;
    uint64_t size = 0;
    uint64_t chain = 0; // the checksum at the end of the last change
    Checksum sum;
    uint32_t gathered = 0;
    uint8_t gather[2048] = {}; // most changes are small, and one call of the system each
};

// The result of recovering a document from its journal.
enum class RecoveryResult {
    Whole,
    Cut,            // as it was before the first change that is damaged
    FileChanged,    // it was over a file that has changed; nothing can be said of it
    FileUnreadable, // it is over a file that cannot be read now: on a drive that is not there, for instance
    Failed,         // the journal cannot be read now, or there is no memory
};

// Reads a journal; nothing in it is trusted.
class JournalReader {
public:
    enum class State {
        Readable,
        Damaged, // or none at all
        Unknown, // written by a program that is newer, or it cannot be read now
    };

    // `journal` is open, and outlives this.
    explicit JournalReader(Platform::File& journal) : file(journal) {}
    JournalReader(const JournalReader&) = delete;
    JournalReader& operator=(const JournalReader&) = delete;

    // Starts at the beginning, also when it was read before.
    [[nodiscard]] State ReadHeader();
    const JournalSubject& Subject() const { return subject; }
    const WString& Name() const { return name; }
    // Of the whole file: no change has more bytes.
    uint64_t Size() const { return size; }

    // Goes on to the next change. False at the end, and when no change follows.
    [[nodiscard]] bool Next(JournalChange& change);
    // Reads the bytes of that change. False when they, or the change, are damaged: this was the end then.
    [[nodiscard]] bool Read(void* out);
    // The same, without keeping them.
    [[nodiscard]] bool Pass();
    // Whether all changes that were written have been read.
    bool IsAtEnd() const { return at == size; }
    // Whether the disk did not deliver something: what was read may not be all.
    bool HasFailed() const { return hasFailed; }

private:
    bool ReadAll(void* out, size_t count);
    bool EndOfChange();

    Platform::File& file;
    JournalSubject subject;
    WString name;
    uint64_t size = 0;
    uint64_t at = 0; // the end of the last change that is good
    uint64_t chain = 0;
    uint64_t left = 0; // bytes of the current change
    Checksum sum;
    bool hasFailed = false;
};
