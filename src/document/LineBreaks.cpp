#include "document/LineBreaks.h"

#include "base/Text.h"

LineEnding LineEndingOf(const Scan::BreakCounts& breaks) {
    if (breaks.lineFeeds && breaks.returns) return LineEnding::Mixed;
    return breaks.lineFeeds ? LineEnding::Unix : LineEnding::Dos;
}

uint32_t NormaliseLineBreaks(Char* text, uint32_t& lineCount, LineEnding& style) {
    Scan::BreakCounts breaks;
    const size_t length = Scan::CopyWithLineFeeds(text, Text::Length(text), text, breaks).written;
    text[length] = 0;
    lineCount = static_cast<uint32_t>(1 + breaks.lineFeeds + breaks.returns);
    style = LineEndingOf(breaks);
    return static_cast<uint32_t>(length);
}
