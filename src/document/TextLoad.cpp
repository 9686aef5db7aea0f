#include "base/Platform.h"
#include "document/TextBuffer.h"
#include "document/TextFile.h"

namespace {

constexpr const Char* EncodingNames[Encoding::Count] = {u"ANSI", u"Unicode", u"Unicode Big Endian", u"UTF8"};

} // namespace

bool TextBuffer::Load(const Char* fileName, bool createNew) {
    if (createNew) return MakeNew(fileName);
    Clear(false);
    SetLineCount(1); // what an empty document has, also one that stays without a store
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
    Clear(false);
    fileTime = time;
    TakeText(decoded);
    RepaintAll();
    return true;
}

bool TextBuffer::IsChangedOnDisk() {
    if (IsOutput() || !title.IsEmpty()) return false;
    Platform::FileTime written = 0;
    return Platform::ReadTime(path.Text(), written) && fileTime < written;
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
