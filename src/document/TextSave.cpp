#include "document/TextSave.h"

#include "base/CodePage.h"
#include "base/Scan.h"
#include "base/ScanBreaks.h"
#include "document/TextFile.h"

namespace {

constexpr size_t ChunkCharacters = 32768;
constexpr size_t ChunkBytes = 65536;

bool IsHighSurrogate(Char c) { return (c & 0xFC00) == 0xD800; }
bool IsLowSurrogate(Char c) { return (c & 0xFC00) == 0xDC00; }

// Writes a text to an open file, chunk by chunk.
class ChunkWriter {
public:
    ChunkWriter(Platform::File& target, uint32_t fileEncoding) : file(target), encoding(fileEncoding) {}
    ~ChunkWriter() {
        Heap::Free(characters);
        Heap::Free(bytes);
    }
    ChunkWriter(const ChunkWriter&) = delete;
    ChunkWriter& operator=(const ChunkWriter&) = delete;

    bool Prepare() {
        characters = Heap::AllocateArray<Char>(ChunkCharacters);
        bytes = Heap::AllocateArray<uint8_t>(ChunkBytes);
        return characters && bytes;
    }

    bool WriteAll(const Char* text, size_t length, bool withReturns) {
        const Signature& signature = Signatures[encoding];
        if (signature.count && !file.Write(signature.bytes, signature.count)) return false;
        for (size_t at = 0; at < length;) {
            const size_t taken =
                withReturns ? WriteExpanded(text + at, length - at) : WriteAsIs(text + at, length - at);
            if (!taken) return false;
            at += taken;
        }
        return true;
    }

private:
    // Both write the beginning of the text and return how many of its characters that took; 0 on failure.
    size_t WriteAsIs(const Char* text, size_t length) {
        const size_t taken = length < ChunkCharacters ? length : ChunkCharacters;
        return WriteWhole(text, taken, text, taken, length);
    }
    size_t WriteExpanded(const Char* text, size_t length) {
        const Scan::Copied copied = Scan::CopyWithReturns(text, length, characters, ChunkCharacters);
        return WriteWhole(characters, copied.written, text, copied.taken, length);
    }

    // Writes the chunk made of text[0, taken). A pair of surrogates that the chunk's end would cut
    // goes into the next one: each half alone has no bytes of its own in most encodings.
    size_t WriteWhole(const Char* chunk, size_t count, const Char* text, size_t taken, size_t length) {
        const bool cutsPair = taken < length && IsHighSurrogate(text[taken - 1]) && IsLowSurrogate(text[taken]);
        const size_t cut = cutsPair ? 1 : 0;
        return WriteChunk(chunk, count - cut) ? taken - cut : 0;
    }

    bool WriteChunk(const Char* chunk, size_t count) {
        if (encoding == Encoding::Unicode) return file.Write(chunk, count * sizeof(Char));
        if (encoding == Encoding::UnicodeBigEndian) {
            Scan::SwapBytes(chunk, count, characters);
            return file.Write(characters, count * sizeof(Char));
        }
        const CodePage page = encoding == Encoding::Utf8 ? CodePage::Utf8 : CodePage::Ansi;
        const size_t converted = FromUtf16(page, chunk, count, bytes, ChunkBytes);
        return converted && file.Write(bytes, converted);
    }

    Platform::File& file;
    uint32_t encoding;
    Char* characters = nullptr;
    uint8_t* bytes = nullptr;
};

} // namespace

bool WriteTextFile(const Char* name, const Char* text, uint32_t length, uint32_t encoding, uint32_t style,
                   Platform::FileTime& time) {
    Platform::File file;
    ChunkWriter writer(file, encoding);
    // Memory first: the file is emptied by being opened.
    if (!writer.Prepare() || !file.Open(name, Platform::File::Mode::Create)) return false;
    const bool written = writer.WriteAll(text, length, style == LineEnding::Dos);
    const bool flushed = file.Flush();
    file.Close();
    Platform::ReadTime(name, time);
    return written && flushed;
}
