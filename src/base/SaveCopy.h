#pragma once

#include "base/ByteSource.h"
#include "base/Checksum.h"
#include "base/Heap.h"
#include "base/Platform.h"
#include "base/RecoveryFolder.h"
#include "base/WString.h"

// Where copies are inside the recovery folder, and how their names end.
constexpr const Char* SaveCopyFolder = u"Copies";
constexpr const Char* SaveCopyExtension = u".save";

// The bytes that are about to be written over a file, written and flushed beside it first, in the recovery folder. The
// copy begins with a header that names the file; it is written last, so that a copy with a header is complete. While
// an object of this class holds a copy, no other editor can open it.
class SaveCopy : public HeapObject {
public:
    enum class Outcome {
        Made,
        NoCopy,  // the folder does not take it; nothing of it is left
        NoBytes, // the source could not make the bytes; nothing is left either
    };

    SaveCopy() = default;
    SaveCopy(const SaveCopy&) = delete;
    SaveCopy& operator=(const SaveCopy&) = delete;

    // `target` is the full path of the file that the bytes are for.
    [[nodiscard]] Outcome Make(RecoveryFolder& folder, const Char* target, ByteSource& source);
    const WString& Target() const { return target; }
    // Of the bytes, also when there is no copy.
    uint64_t Length() const { return content.Count(); }
    uint64_t Value() const { return content.Value(); }
    bool IsMade() const { return file.IsOpen(); }
    // Removes the copy: nobody needs it any more.
    void Discard();

    SaveCopy* next = nullptr;
    SaveCopy* previous = nullptr;

private:
    bool WriteHeader();

    WString target;
    WString path;
    Platform::File file;
    Checksum content;
};

// What a copy says about itself.
struct SaveCopyContent {
    WString target;
    uint64_t start = 0;  // of the bytes, in the copy
    uint64_t length = 0; // their number
    uint64_t value = 0;  // their checksum
};

enum class SaveCopyState {
    Complete,
    Damaged, // also one that was not finished: its file was not touched then
    Unknown, // written by a program that is newer, or it cannot be read now
};

// Reads a copy from its beginning; nothing in it is trusted. `content` is filled when it is complete.
[[nodiscard]] SaveCopyState ReadSaveCopy(Platform::File& copy, SaveCopyContent& content);
