#include "document/TextSave.h"

#include "base/CodePage.h"
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
    EncodedText(const Char* whole, size_t count, TextFileForm form)
        : text(whole), length(count), encoding(form.encoding), withReturns(form.lineEnding == LineEnding::Dos) {}
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
            const Chunk chunk = ChunkAt(text + at, length - at);
            if (!GiveChunk(chunk.characters, chunk.count, out)) return false;
            at += chunk.taken;
        }
        return true;
    }

private:
    // What the first `taken` characters of the rest of the text are in the file.
    struct Chunk {
        const Char* characters;
        size_t count;
        size_t taken;
    };

    // A pair of surrogates that the chunk's end would cut goes into the next one: each half alone has no bytes of its
    // own in most encodings.
    Chunk ChunkAt(const Char* rest, size_t left) const {
        const size_t most = left < ChunkCharacters ? left : ChunkCharacters;
        Scan::Copied copied = {most, most};
        if (withReturns) copied = Scan::CopyWithReturns(rest, left, characters, ChunkCharacters);
        const size_t cut = Surrogates::SplitsPair(rest, left, copied.taken) ? 1 : 0;
        return {withReturns ? characters : rest, copied.written - cut, copied.taken - cut};
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
        while (count) {
            size_t part = count;
            size_t converted = FromUtf16(page, chunk, part, bytes, ChunkBytes);
            while (!converted) {
                part /= 2;
                if (Surrogates::SplitsPair(chunk, count, part)) --part;
                if (!part) return false;
                converted = FromUtf16(page, chunk, part, bytes, ChunkBytes);
            }
            if (!out.Take(bytes, converted)) return false;
            chunk += part;
            count -= part;
        }
        return true;
    }

    const Char* text;
    size_t length;
    Encoding encoding;
    bool withReturns;
    Char* characters = nullptr;
    uint8_t* bytes = nullptr;
};

} // namespace

SaveResult WriteTextFile(SafeSaver& saver, const Char* name, const Char* text, uint32_t length, TextFileForm form,
                         FileStamp& stamp) {
    EncodedText source(text, length, form);
    if (!source.Prepare()) return SaveResult::Untouched;
    const SaveResult result = saver.Save(name, source);
    // That of a file that was not touched may come from another program's write.
    // Without it the file is taken for another's the next time it is compared.
    if (result != SaveResult::Untouched) static_cast<void>(ReadStamp(name, stamp));
    return result;
}
