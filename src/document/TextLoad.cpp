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
    if (!decoded.text) return true; // the file was read, but the code page can make nothing of it
    text = decoded.text;
    decoded.text = nullptr;
    capacity = decoded.capacity;
    length = decoded.length;
    lineEnding = decoded.style;
    SetLineCount(decoded.lineCount);
    ChooseOwnEngine();
    savedUndoHead = HeadSerial();
    return true;
}

bool TextBuffer::Reload() {
    const bool loaded = Load(path.Text(), false);
    RepaintAll();
    return loaded;
}

bool TextBuffer::IsChangedOnDisk() {
    if (IsOutput() || !title.IsEmpty()) return false;
    Platform::File file;
    Platform::FileTime written = 0;
    return file.Open(path.Text(), Platform::File::Mode::Read) && file.GetTime(written) && fileTime < written;
}

void TextBuffer::MarkFileTimeNow() { fileTime = Platform::Now(); }

bool TextBuffer::GetEncoding(uint32_t& current, const Char* const*& names) const {
    current = encoding;
    names = EncodingNames;
    return true;
}
