#include "document/TextDecode.h"

#include "base/Assert.h"
#include "base/Scan.h"
#include "document/ByteDecoder.h"
#include "document/LineBreaks.h"
#include "document/TextFile.h"

#include <cstring>

namespace {

// Terminates the text and gives back what the line breaks and the encoding have saved.
void Finish(DecodedText& out, uint32_t length, const Scan::BreakCounts& breaks) {
    out.text[length] = 0;
    out.length = length;
    out.lineCount = static_cast<uint32_t>(1 + breaks.lineFeeds + breaks.returns);
    out.style = LineEndingOf(breaks);
    const uint32_t needed = length + 1;
    if (needed == out.capacity) return;
    void* shrunk = Heap::Resize(out.text, out.capacity * sizeof(Char), needed * sizeof(Char));
    if (!shrunk) return; // too large is no failure
    out.text = static_cast<Char*>(shrunk);
    out.capacity = needed;
}

// Reads the units after those in out.text[0, units), in place.
bool ReadUnits(FilePieces& pieces, Char* to, size_t& units, DecodedText& out) {
    size_t read = 0;
    if (!pieces.ReadInto(to, FilePieces::MaxBytes, read)) return false;
    // A byte too many is the file's last.
    out.losesBytes = read % sizeof(Char) != 0;
    units = read / sizeof(Char);
    return true;
}

// UTF-16 is read where it stays. A CR at the end of what was read waits for what follows.
bool DecodeUnits(FilePieces& pieces, DecodedText& out) {
    const bool swaps = out.encoding == Encoding::UnicodeBigEndian;
    const auto most = static_cast<size_t>(pieces.Remaining() / sizeof(Char));
    out.text = Heap::AllocateArray<Char>(most + 1);
    if (!out.text) return false;
    out.capacity = static_cast<uint32_t>(most + 1);
    size_t length = 0;
    size_t units = pieces.Count() / sizeof(Char);
    std::memcpy(out.text, pieces.Bytes(), pieces.Count());
    out.losesBytes = pieces.Count() % sizeof(Char) != 0;
    Scan::BreakCounts breaks;
    for (size_t waiting = 0;;) {
        Char* const from = out.text + length;
        if (swaps) Scan::SwapBytes(from + waiting, units, from + waiting);
        units += waiting;
        ORVANE_ASSERT(pieces.IsLast() || units); // a piece that is not the last is full
        waiting = !pieces.IsLast() && from[units - 1] == u'\r' ? 1 : 0;
        const Scan::Copied copied = Scan::CopyWithLineFeeds(from, units - waiting, from, breaks);
        length += copied.written;
        if (copied.taken < units - waiting) out.losesBytes = true;
        if (copied.taken < units - waiting || pieces.IsLast()) break;
        if (waiting) out.text[length] = u'\r';
        if (!ReadUnits(pieces, out.text + length + waiting, units, out)) return false;
    }
    Finish(out, static_cast<uint32_t>(length), breaks);
    return true;
}

bool DecodeBytes(FilePieces& pieces, bool recognisesUtf8, DecodedText& out) {
    ByteDecoder decoder(pieces, recognisesUtf8, out);
    if (!decoder.Run()) return false;
    if (out.text) Finish(out, decoder.Length(), decoder.Breaks());
    return true;
}

} // namespace

bool ReadTextFile(const Char* name, bool recognisesUtf8, DecodedText& out) {
    Platform::File file;
    if (!file.Open(name, Platform::File::Mode::ReadShared) || !ReadStamp(file, out.file)) return false;
    if (out.file.size > Platform::LargestWholeFile) return false;
    FilePieces pieces(file, out.file.size);
    if (!pieces.Fill()) return false;
    out.encoding = SignedEncoding(pieces.Bytes(), pieces.Count());
    pieces.Drop(SignatureOf(out.encoding).count);
    const bool isUtf16 = out.encoding == Encoding::Unicode || out.encoding == Encoding::UnicodeBigEndian;
    return isUtf16 ? DecodeUnits(pieces, out) : DecodeBytes(pieces, recognisesUtf8, out);
}
