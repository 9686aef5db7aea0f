#include "syntax/PlainEngine.h"

#include "settings/Settings.h"

uint32_t PlainEngine::ColourLine(uint32_t, const Char* text, uint32_t length, uint32_t& state, ColouredLine& line) {
    const ColourClass colours =
        definition ? definition->colours[ColourClassIndex::Text] : ColourClass{settings.TextFg, settings.TextBg};
    const auto coloured = static_cast<uint32_t>(endSearch.Find(text, text + length) - text);
    span = {colours.foreground, colours.background, coloured};
    state = 0;
    line = {&span, 1, NoFill};
    return coloured;
}

uint32_t PlainEngine::ScanState(const Char*, uint32_t length, uint32_t, uint32_t, uint32_t& stopped) {
    stopped = length;
    return 0;
}

uint32_t PlainEngine::ScanLinesToEnd(const Char* text, uint32_t length, uint32_t, uint32_t& stopped) {
    stopped = static_cast<uint32_t>(endSearch.Find(text, text + length) - text);
    return 0;
}
