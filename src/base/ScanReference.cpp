#include "base/Scan.h"

#include "base/Text.h"

namespace {

bool MatchesAt(const Char* text, const Scan::Pattern& pattern) {
    return pattern.matchCase ? Text::EqualCount(text, pattern.text, pattern.length)
                             : Text::EqualCountNoCase(text, pattern.text, pattern.length);
}

} // namespace

size_t Scan::Reference::CountLineFeeds(const Char* text, size_t count) {
    size_t lineFeeds = 0;
    for (size_t i = 0; i < count; ++i) lineFeeds += text[i] == u'\n';
    return lineFeeds;
}

size_t Scan::Reference::FindLineFeed(const Char* text, size_t count) {
    size_t at = 0;
    while (at < count && text[at] != u'\n') ++at;
    return at;
}

size_t Scan::Reference::FindUnprintable(const Char* text, size_t count) {
    size_t at = 0;
    while (at < count && text[at] >= u' ' && text[at] <= u'~') ++at;
    return at;
}

size_t Scan::Reference::FindLineStart(const Char* text, size_t count) {
    while (count && text[count - 1] != u'\n') --count;
    return count;
}

size_t Scan::Reference::SkipLines(const Char* text, size_t count, size_t lines, size_t& passed) {
    size_t lineStart = 0;
    passed = 0;
    for (size_t i = 0; i < count && passed < lines; ++i) {
        if (text[i] != u'\n') continue;
        lineStart = i + 1;
        ++passed;
    }
    return lineStart;
}

size_t Scan::Reference::SkipLinesBack(const Char* text, size_t count, size_t lines, size_t& passed) {
    size_t start = count;
    passed = 0;
    while (passed < lines && start > 0) {
        --start; // over the line feed that ends the line before
        while (start > 0 && text[start - 1] != u'\n') --start;
        ++passed;
    }
    return start;
}

size_t Scan::Reference::FindZeroByte(const uint8_t* bytes, size_t count) {
    size_t at = 0;
    while (at < count && bytes[at] != 0) ++at;
    return at;
}

size_t Scan::Reference::FindForward(const Char* text, size_t count, Positions at, const Pattern& pattern) {
    for (size_t i = at.start; i < at.end && i <= count && count - i >= pattern.length; ++i)
        if (MatchesAt(text + i, pattern)) return i;
    return NotFound;
}

size_t Scan::Reference::FindBackward(const Char* text, size_t count, Positions at, const Pattern& pattern) {
    if (count < pattern.length) return NotFound;
    size_t i = at.end;
    if (i > count - pattern.length + 1) i = count - pattern.length + 1;
    while (i > at.start)
        if (MatchesAt(text + --i, pattern)) return i;
    return NotFound;
}

size_t Scan::Reference::FindBalanceForward(const Char* text, size_t count, size_t from, Char self, Char partner) {
    size_t depth = 0;
    for (size_t at = from; at < count && text[at] != 0; ++at) {
        if (text[at] == self) ++depth;
        if (text[at] == partner && --depth == 0) return at;
    }
    return NotFound;
}

size_t Scan::Reference::FindBalanceBackward(const Char* text, size_t from, Char self, Char partner) {
    size_t depth = 0;
    for (size_t end = from + 1; end > 0 && text[end - 1] != 0; --end) {
        if (text[end - 1] == self) ++depth;
        if (text[end - 1] == partner && --depth == 0) return end - 1;
    }
    return NotFound;
}

size_t Scan::Reference::WidenAscii(const uint8_t* bytes, size_t count, Char* out) {
    size_t taken = 0;
    for (; taken < count && bytes[taken] < 0x80; ++taken) out[taken] = bytes[taken];
    return taken;
}

size_t Scan::Reference::NarrowAscii(const Char* text, size_t count, uint8_t* out) {
    size_t taken = 0;
    for (; taken < count && text[taken] < 0x80; ++taken) out[taken] = static_cast<uint8_t>(text[taken]);
    return taken;
}

void Scan::Reference::SwapBytes(const Char* in, size_t count, Char* out) {
    for (size_t i = 0; i < count; ++i) out[i] = static_cast<Char>(in[i] << 8 | in[i] >> 8);
}
