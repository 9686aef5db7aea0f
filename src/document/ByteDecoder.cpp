#include "document/ByteDecoder.h"

#include "base/Assert.h"
#include "base/CodePage.h"
#include "base/RoundTrip.h"
#include "base/Scan.h"
#include "base/ScanUtf8.h"
#include "document/TextFile.h"

#include <algorithm>
#include <cstring>

namespace {

// What is converted at a time where the fast loops cannot do it alone: small enough to stay in the
// processor's nearest cache from one step to the next.
constexpr size_t Stretch = 4096;
// How far from the end of a piece a border is looked for.
constexpr size_t NearEnd = 64;
// Spare characters beyond the estimate so far.
constexpr size_t SpareCharacters = size_t{1} << 19;

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

} // namespace

ByteDecoder::ByteDecoder(FilePieces& source, bool recognisesUtf8, DecodedText& target)
    : pieces(source), out(target), form(Form::Ansi), savePage(PageOf(target.encoding)), firstByte(source.Offset()) {
    if (recognisesUtf8) form = savePage == CodePage::Utf8 ? Form::Utf8 : Form::GuessedUtf8;
    mayLose = savePage == CodePage::Utf8 || !KeepsEveryByte(savePage);
}

bool ByteDecoder::Run() {
    for (;;) {
        const size_t usable = UsableBytes();
        if (!MakeRoom(usable)) return false;
        const Outcome outcome = Decode(usable);
        if (outcome == Outcome::Ended) break;
        if (outcome == Outcome::Refused) {
            Heap::Free(out.text);
            out.text = nullptr;
            return true;
        }
        if (outcome == Outcome::NotUtf8) {
            if (!ReadAsAnsi()) return false;
            continue;
        }
        pieces.Drop(usable);
        if (pieces.IsLast()) break;
        if (!pieces.Fill()) return false;
    }
    if (form == Form::GuessedUtf8 && beforeGuess.isSet) out.encoding = Encoding::PlainUtf8;
    return true;
}

// A character and a CR LF that the piece's end cuts off are left for the next one.
size_t ByteDecoder::UsableBytes() {
    const uint8_t* const bytes = pieces.Bytes();
    const size_t count = pieces.Count();
    if (pieces.IsLast()) return count;
    ORVANE_ASSERT(count > NearEnd); // the piece is full but for a signature
    // Nearly always there is a border near the end. To find out where characters end is slow in some pages.
    for (size_t end = count; count - end < NearEnd; --end)
        if (IsBorder(bytes[end - 1])) return end;
    const size_t whole = WholeCharacters(form == Form::Ansi ? CodePage::Ansi : CodePage::Utf8, bytes, count);
    ORVANE_ASSERT(whole); // or nothing would ever be decoded
    return bytes[whole - 1] == '\r' ? whole - 1 : whole;
}

// Room for so many more characters and the terminator. The first piece says how many characters the file will give, so
// that there is memory for the text, but hardly for more; a byte never gives more than one.
bool ByteDecoder::MakeRoom(size_t characters) {
    const size_t needed = length + characters + 1;
    if (out.text && needed <= out.capacity) return true;
    const uint64_t done = pieces.Offset() - firstByte;
    uint64_t wanted = needed;
    if (done) {
        const uint64_t expected = pieces.Remaining() * length / done + 1;
        wanted = length + std::min(expected + SpareCharacters, pieces.Remaining()) + 1;
    }
    const auto capacity = static_cast<size_t>(std::max<uint64_t>(wanted, needed));
    // A resized block is filled with zeros where it has grown; a fresh one of this size is not, it has never been used.
    // As long as no more than a piece was decoded, copying that costs less.
    const bool isFresh = length <= FilePieces::MaxBytes;
    void* const room = isFresh ? Heap::Allocate(capacity * sizeof(Char))
                               : Heap::Resize(out.text, out.capacity * sizeof(Char), capacity * sizeof(Char));
    if (!room) return false;
    if (isFresh) {
        if (length) std::memcpy(room, out.text, length * sizeof(Char));
        Heap::Free(out.text);
    }
    out.text = static_cast<Char*>(room);
    out.capacity = static_cast<uint32_t>(capacity);
    return true;
}

ByteDecoder::Outcome ByteDecoder::Decode(size_t count) {
    out.losesBytes = out.losesBytes || Scan::FindZeroByte(pieces.Bytes(), count) < count;
    return form == Form::Ansi ? DecodePage(pieces.Bytes(), count, CodePage::Ansi) : DecodeUtf8(count);
}

ByteDecoder::Outcome ByteDecoder::DecodeUtf8(size_t count) {
    uint8_t* const bytes = pieces.Bytes();
    const Scan::BreakCounts breaksBefore = breaks;
    const Scan::Copied plain = Scan::WidenText(bytes, count, out.text + length, breaks);
    if (plain.taken < count && form == Form::GuessedUtf8 && !beforeGuess.isSet)
        beforeGuess = {pieces.Offset(), length, breaksBefore, true};
    length += plain.written;
    const size_t rest = count - plain.taken;
    const size_t valid = Scan::ValidUtf8(bytes + plain.taken, rest);
    if (valid == rest) {
        length += Scan::WidenUtf8(bytes + plain.taken, valid, out.text + length, breaks).written;
        return Outcome::Done;
    }
    return form == Form::GuessedUtf8 ? Outcome::NotUtf8 : DecodePage(bytes + plain.taken, rest, CodePage::Utf8);
}

// By the page's own conversion, but for what is ASCII. Refused when the page cannot convert the bytes.
ByteDecoder::Outcome ByteDecoder::DecodePage(uint8_t* bytes, size_t count, CodePage page) {
    for (size_t at = 0; at < count;) {
        const Scan::Copied plain = Scan::WidenText(bytes + at, count - at, out.text + length, breaks);
        at += plain.taken;
        length += plain.written;
        if (at == count) break;
        const size_t stretch = StretchLength(bytes + at, count - at);
        const Outcome outcome = ConvertStretch(bytes + at, stretch, page);
        if (outcome != Outcome::Done) return outcome;
        at += stretch;
    }
    return Outcome::Done;
}

// Ended when a NUL came out. By default files marked as UTF-8 are converted with the ANSI page, too. Odd on purpose:
// docs/oddities.md.
ByteDecoder::Outcome ByteDecoder::ConvertStretch(uint8_t* bytes, size_t count, CodePage page) {
    for (size_t at = Scan::FindZeroByte(bytes, count); at < count; at += Scan::FindZeroByte(bytes + at, count - at))
        bytes[at] = ' ';
    Char* const text = out.text + length;
    const size_t converted = ToUtf16(page, bytes, count, text, count);
    if (mayLose && !out.losesBytes) out.losesBytes = !GivesBytes(savePage, text, converted, bytes, count);
    const Scan::Copied copied = Scan::CopyWithLineFeeds(text, converted, text, breaks);
    length += copied.written;
    if (copied.taken == converted) return copied.written ? Outcome::Done : Outcome::Refused;
    out.losesBytes = true;
    return Outcome::Ended;
}

// The guess was wrong: goes back to where it was made. Zero bytes were seen for good.
bool ByteDecoder::ReadAsAnsi() {
    form = Form::Ansi;
    length = beforeGuess.length;
    breaks = beforeGuess.breaks;
    return pieces.GoBack(beforeGuess.offset);
}
