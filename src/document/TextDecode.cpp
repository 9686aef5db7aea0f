#include "document/TextDecode.h"

#include "base/CodePage.h"
#include "base/RoundTrip.h"
#include "base/Scan.h"
#include "document/LineBreaks.h"
#include "document/TextFile.h"

#include <cstring>
#include <initializer_list>

namespace {

// What is converted at a time where the fast loops cannot do it alone: small enough to stay in the
// processor's nearest cache from one step to the next.
constexpr size_t Stretch = 4096;

Encoding DetectEncoding(const Platform::ByteBlock& file) {
    for (const Encoding encoding : {Encoding::Unicode, Encoding::UnicodeBigEndian, Encoding::Utf8}) {
        const Signature& signature = SignatureOf(encoding);
        if (file.size >= signature.count && std::memcmp(file.bytes, signature.bytes, signature.count) == 0)
            return encoding;
    }
    return Encoding::Ansi;
}

// The text may be cut after such a byte: no character of several bytes begins with it, and no CR LF.
bool IsBorder(uint8_t byte) { return byte < 0x80 && byte != '\r'; }

// How many of the bytes to convert at once. Converting piece by piece must give what converting the
// whole gives, so a piece only ends at a border, however far that is.
size_t StretchLength(const uint8_t* bytes, size_t count) {
    if (count <= Stretch) return count;
    for (size_t length = Stretch; length; --length)
        if (IsBorder(bytes[length - 1])) return length;
    size_t length = Stretch;
    while (length < count && !IsBorder(bytes[length - 1])) ++length;
    return length;
}

// Finds out whether saving would give back the bytes that were loaded.
class LossCheck {
public:
    explicit LossCheck(Encoding encoding)
        : page(encoding == Encoding::Utf8 ? CodePage::Utf8 : CodePage::Ansi),
          isNeeded(page == CodePage::Utf8 || !KeepsEveryByte(page)) {}

    void Compare(const Char* text, size_t count, const uint8_t* bytes, size_t byteCount) {
        if (isNeeded && !hasLost) hasLost = !GivesBytes(page, text, count, bytes, byteCount);
    }
    bool HasLost() const { return hasLost; }

private:
    CodePage page;
    bool isNeeded;
    bool hasLost = false;
};

// Converts with the ANSI page in place of whatever the encoding is. Returns the characters written, the
// line breaks normalised; 0 when the page cannot convert. `ended` is set when a NUL came out.
// Odd on purpose: docs/oddities.md.
size_t ConvertStretch(uint8_t* bytes, size_t count, Char* out, Scan::BreakCounts& breaks, bool& ended,
                      LossCheck& loss) {
    for (size_t at = Scan::FindZeroByte(bytes, count); at < count; at += Scan::FindZeroByte(bytes + at, count - at))
        bytes[at] = ' ';
    const size_t converted = ToUtf16(CodePage::Ansi, bytes, count, out, count);
    loss.Compare(out, converted, bytes, count);
    const Scan::Copied copied = Scan::CopyWithLineFeeds(out, converted, out, breaks);
    ended = copied.taken < converted;
    return copied.written;
}

// Files in the ANSI page, and those marked as UTF-8, which are read with the ANSI page all the same.
// False when the page cannot convert them.
bool DecodeBytes(uint8_t* bytes, size_t count, DecodedText& out, size_t& length, Scan::BreakCounts& breaks) {
    bool ended = false;
    const bool hasZeros = Scan::FindZeroByte(bytes, count) < count;
    LossCheck loss(out.encoding);
    for (size_t at = 0; at < count && !ended;) {
        const Scan::Copied plain = Scan::WidenText(bytes + at, count - at, out.text + length, breaks);
        at += plain.taken;
        length += plain.written;
        if (at == count) break;
        const size_t stretch = StretchLength(bytes + at, count - at);
        const size_t written = ConvertStretch(bytes + at, stretch, out.text + length, breaks, ended, loss);
        if (!written && !ended) return false;
        at += stretch;
        length += written;
    }
    out.losesBytes = ended || hasZeros || loss.HasLost();
    return true;
}

// The units are in the storage of the text itself, after a place for the signature.
void DecodeUnits(size_t count, bool bigEndian, DecodedText& out, size_t& length, Scan::BreakCounts& breaks) {
    Char* units = out.text + 1;
    const size_t stretch = bigEndian ? Stretch : count;
    for (size_t at = 0; at < count;) {
        size_t end = at + stretch < count ? at + stretch : count;
        if (bigEndian) Scan::SwapBytes(units + at, end - at, units + at);
        // A CR LF must not be cut. One more unit at a time, which is nearly always the last.
        for (; end < count && units[end - 1] == u'\r'; ++end)
            if (bigEndian) Scan::SwapBytes(units + end, 1, units + end);
        const Scan::Copied copied = Scan::CopyWithLineFeeds(units + at, end - at, out.text + length, breaks);
        length += copied.written;
        if (copied.taken < end - at) {
            out.losesBytes = true;
            return;
        }
        at = end;
    }
}

// Terminates the text and gives back what the line breaks and the code page have saved.
void Finish(DecodedText& out, size_t length, const Scan::BreakCounts& breaks) {
    out.text[length] = 0;
    out.length = static_cast<uint32_t>(length);
    out.lineCount = static_cast<uint32_t>(1 + breaks.lineFeeds + breaks.returns);
    out.style = LineEndingOf(breaks);
    const uint32_t needed = out.length + 1;
    if (needed == out.capacity) return;
    void* shrunk = Heap::Resize(out.text, out.capacity * sizeof(Char), needed * sizeof(Char));
    if (!shrunk) return; // too large is no failure
    out.text = static_cast<Char*>(shrunk);
    out.capacity = needed;
}

} // namespace

bool DecodeText(Platform::ByteBlock& file, DecodedText& out) {
    out.encoding = DetectEncoding(file);
    const size_t skipped = SignatureOf(out.encoding).count;
    const size_t count = file.size - skipped;
    size_t length = 0;
    Scan::BreakCounts breaks;
    if (out.encoding == Encoding::Unicode || out.encoding == Encoding::UnicodeBigEndian) {
        // The place of the signature is what the terminator needs: the block becomes the text.
        out.text = reinterpret_cast<Char*>(file.bytes);
        file.bytes = nullptr;
        out.capacity = static_cast<uint32_t>(file.size / sizeof(Char));
        out.losesBytes = count % sizeof(Char) != 0;
        DecodeUnits(count / sizeof(Char), out.encoding == Encoding::UnicodeBigEndian, out, length, breaks);
    } else {
        out.text = Heap::AllocateArray<Char>(count + 1);
        if (!out.text) return false;
        out.capacity = static_cast<uint32_t>(count + 1);
        if (!DecodeBytes(file.bytes + skipped, count, out, length, breaks)) {
            Heap::Free(out.text);
            out.text = nullptr;
            return true;
        }
    }
    Finish(out, length, breaks);
    return true;
}
