#include "settings/LineReader.h"

uint32_t NormaliseLineEnds(Char* text) {
    const Char* from = text;
    Char* to = text;
    while (*from != 0) {
        const Char character = *from++;
        if (character == u'\r' && *from == u'\n') continue; // the line feed follows
        *to++ = character == u'\r' ? u'\n' : character;
    }
    *to = 0;
    return static_cast<uint32_t>(to - text);
}

bool NextLine(const Char* text, uint32_t& position, WString& line) {
    const Char* start = text + position;
    if (*start == 0) return false;
    const Char* end = start;
    while (*end != 0 && *end != u'\n') ++end;
    if (!line.Assign(start, end - start)) return false;
    position = static_cast<uint32_t>(end - text) + (*end != 0 ? 1u : 0u);
    return true;
}
