#include "base/Platform.h"
#include "document/SlowDrives.h"
#include "document/TextBuffer.h"
#include "document/TextFile.h"

namespace {

constexpr const Char* EncodingNames[Encoding::Count] = {u"ANSI", u"Unicode", u"Unicode Big Endian", u"UTF8"};

constexpr uint64_t SlowAnswer = 250; // milliseconds

SlowDrives slowDrives;

// The time of a file for the check of `document`; false also while the file's drive rests.
bool ReadTimeToCheck(const Char* path, const TextBuffer* document, Platform::FileTime& time) {
    const uint64_t asked = Platform::Ticks();
    if (!slowDrives.MayAsk(path, document, asked)) return false;
    const bool isRead = Platform::ReadTime(path, time);
    const uint64_t answered = Platform::Ticks();
    slowDrives.Answered(path, answered - asked >= SlowAnswer && Platform::IsRemote(path), answered);
    return isRead;
}

} // namespace

bool TextBuffer::Load(const Char* fileName, bool createNew) {
    if (createNew) return MakeNew(fileName);
    Clear(false);
    Platform::ByteBlock file;
    DecodedText decoded;
    if (!Platform::ReadWholeFile(fileName, file, &fileTime) || !DecodeText(file, decoded)) return false;
    // Before the text is taken over, so that a failed load leaves none.
    if (decoded.text && !SetPath(fileName)) return false;
    encoding = decoded.encoding;
    // Without a text the file was read, but the code page can make nothing of it.
    if (decoded.text) TakeText(decoded);
    return true;
}

void TextBuffer::TakeText(DecodedText& decoded) {
    encoding = decoded.encoding;
    text = decoded.text;
    decoded.text = nullptr;
    capacity = decoded.capacity;
    length = decoded.length;
    lineEnding = decoded.style;
    SetLineCount(decoded.lineCount);
    ChooseOwnEngine();
    savedUndoHead = HeadSerial();
}

// Read before the old text goes: a file that was deleted or locked meanwhile must not cost it.
bool TextBuffer::Reload() {
    Platform::ByteBlock file;
    DecodedText decoded;
    Platform::FileTime time = 0;
    if (!Platform::ReadWholeFile(path.Text(), file, &time) || !DecodeText(file, decoded) || !decoded.text) return false;
    const Operation operation(*this);
    Clear(false);
    fileTime = time;
    TakeText(decoded);
    InvalidateViews();
    return true;
}

bool TextBuffer::IsChangedOnDisk() {
    if (IsOutput() || !title.IsEmpty()) return false;
    Platform::FileTime written = 0;
    return ReadTimeToCheck(path.Text(), this, written) && fileTime < written;
}

void TextBuffer::MarkFileTimeNow() {
    fileTime = Platform::Now();
    // The clock of who wrote the file may be ahead of ours.
    Platform::FileTime written = 0;
    if (Platform::ReadTime(path.Text(), written) && written > fileTime) fileTime = written;
}

bool TextBuffer::GetEncoding(uint32_t& current, const Char* const*& names) const {
    current = encoding;
    names = EncodingNames;
    return true;
}
