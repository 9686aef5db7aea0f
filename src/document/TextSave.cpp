#include "document/TextSave.h"

#include "base/CodePage.h"
#include "base/SafeSave.h"
#include "base/Scan.h"
#include "base/ScanBreaks.h"
#include "base/Surrogates.h"
#include "document/TextFile.h"

namespace {

constexpr size_t ChunkCharacters = 32768;
constexpr size_t ChunkBytes = 65536;

// The bytes of a text in an encoding, made chunk by chunk.
class EncodedText final : public ByteSource {
public:
    EncodedText(const Char* whole, size_t count, Encoding fileEncoding, bool expandsLineFeeds)
        : text(whole), length(count), encoding(fileEncoding), withReturns(expandsLineFeeds) {}
    ~EncodedText() {
        Heap::Free(characters);
        Heap::Free(bytes);
    }
    EncodedText(const EncodedText&) = delete;
    EncodedText& operator=(const EncodedText&) = delete;

    // Takes the memory that it needs.
    bool Prepare() {
        characters = Heap::AllocateArray<Char>(ChunkCharacters);
        bytes = Heap::AllocateArray<uint8_t>(ChunkBytes);
        return characters && bytes;
    }

    bool GiveTo(ByteSink& out) override {
        const Signature& signature = SignatureOf(encoding);
        if (signature.count && !out.Take(signature.bytes, signature.count)) return false;
        for (size_t at = 0; at < length;) {
            const size_t taken =
                withReturns ? GiveExpanded(text + at, length - at, out) : GiveAsIs(text + at, length - at, out);
            if (!taken) return false;
            at += taken;
        }
        return true;
    }

private:
    // Both give the beginning of the rest and return how many of its characters that took; 0 on failure.
    size_t GiveAsIs(const Char* rest, size_t left, ByteSink& out) {
        const size_t taken = left < ChunkCharacters ? left : ChunkCharacters;
        return GiveWhole(rest, taken, rest, taken, left, out);
    }
    size_t GiveExpanded(const Char* rest, size_t left, ByteSink& out) {
        const Scan::Copied copied = Scan::CopyWithReturns(rest, left, characters, ChunkCharacters);
        return GiveWhole(characters, copied.written, rest, copied.taken, left, out);
    }

    // Gives the chunk made of rest[0, taken). A pair of surrogates that the chunk's end would cut
    // goes into the next one: each half alone has no bytes of its own in most encodings.
    size_t GiveWhole(const Char* chunk, size_t count, const Char* rest, size_t taken, size_t left, ByteSink& out) {
        const size_t cut = Surrogates::SplitsPair(rest, left, taken) ? 1 : 0;
        return GiveChunk(chunk, count - cut, out) ? taken - cut : 0;
    }

    bool GiveChunk(const Char* chunk, size_t count, ByteSink& out) {
        if (encoding == Encoding::Unicode) return out.Take(chunk, count * sizeof(Char));
        if (encoding == Encoding::UnicodeBigEndian) {
            Scan::SwapBytes(chunk, count, characters);
            return out.Take(characters, count * sizeof(Char));
        }
        return GiveConverted(PageOf(encoding), chunk, count, out);
    }

    // In halves when the bytes of the whole have no room.
    bool GiveConverted(CodePage page, const Char* chunk, size_t count, ByteSink& out) {
        const size_t converted = FromUtf16(page, chunk, count, bytes, ChunkBytes);
        if (converted) return out.Take(bytes, converted);
        size_t half = count / 2;
        if (Surrogates::SplitsPair(chunk, count, half)) --half;
        return half && GiveConverted(page, chunk, half, out) && GiveConverted(page, chunk + half, count - half, out);
    }

    const Char* text;
    size_t length;
    Encoding encoding;
    bool withReturns;
    Char* characters = nullptr;
    uint8_t* bytes = nullptr;
};

} // namespace

bool WriteTextFile(const Char* name, const Char* text, uint32_t length, Encoding encoding, LineEnding style,
                   Platform::FileTime& time) {
    EncodedText source(text, length, encoding, style == LineEnding::Dos);
    if (!source.Prepare()) return false;
    const SaveResult result = SaveSafely(name, source);
    // Of a file that was not touched it may be the time of another program's write.
    if (result != SaveResult::Untouched) Platform::ReadTime(name, time);
    return result == SaveResult::Saved;
}
