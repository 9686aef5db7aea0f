#include "base/Heap.h"
#include "settings/IniFile.h"
#include "settings/Settings.h"
#include "syntax/EngineChoice.h"
#include "syntax/EngineDefinition.h"

#include <algorithm>
#include <cstdlib>
#include <string>
#include <vector>

// Every engine over any text, with any definitions. The input is the text of a settings file up to the
// first byte 1, then the end marker and the highlights up to the next one, then the text to colour.
namespace {

constexpr uint32_t LastState = 17;

void Require(bool holds) {
    if (!holds) std::abort();
}

std::u16string Widen(const uint8_t* bytes, size_t count) {
    // High bytes spread over the whole range, lone surrogates included.
    std::u16string text(count, u'\0');
    std::transform(bytes, bytes + count, text.begin(),
                   [](uint8_t byte) { return static_cast<Char>(byte < 0x80 ? byte : byte * 0x101 - 0x80); });
    return text;
}

// Takes what comes before the next byte 1.
std::u16string TakeField(const uint8_t*& at, const uint8_t* end) {
    const uint8_t* stop = std::find(at, end, 1);
    std::u16string field = Widen(at, static_cast<size_t>(stop - at));
    at = stop == end ? end : stop + 1;
    return field;
}

void CheckLine(const ColouredLine& line, uint32_t coloured, uint32_t length) {
    uint64_t sum = 0;
    for (uint32_t i = 0; i < line.count; ++i) sum += line.spans[i].length;
    Require(sum == coloured && coloured <= length);
}

// Colours line by line, every line in a block of its own size. Returns the state after the last one.
uint32_t ColourLines(SyntaxEngine& engine, const std::u16string& text, bool hasMarker) {
    uint32_t state = 0;
    for (size_t start = 0; start < text.size();) {
        const size_t end = std::min(text.find(u'\n', start), text.size() - 1) + 1;
        const std::vector<Char> exact(text.begin() + static_cast<ptrdiff_t>(start),
                                      text.begin() + static_cast<ptrdiff_t>(end));
        const auto length = static_cast<uint32_t>(exact.size());
        ColouredLine line;
        const uint32_t coloured = engine.ColourLine(static_cast<uint32_t>(start), exact.data(), length, state, line);
        CheckLine(line, coloured, length);
        Require(hasMarker || coloured == length);
        Require(state <= LastState);
        start = end;
    }
    return state;
}

void ScanAll(SyntaxEngine& engine, const std::u16string& text) {
    const std::vector<Char> exact(text.begin(), text.end());
    const auto length = static_cast<uint32_t>(exact.size());
    for (uint32_t state = 0; state <= LastState + 1; ++state) {
        uint32_t stopped = 0;
        const uint32_t after = engine.ScanState(exact.data(), length, state % (length + 2), state, stopped);
        Require(stopped <= length && after <= LastState);
        ColouredLine line;
        uint32_t lineState = state;
        const uint32_t coloured = engine.ColourLine(state, exact.data(), length, lineState, line);
        CheckLine(line, coloured, length);
    }
    engine.MayChangeState(exact.data(), length);
}

void TryEngine(const Char* name, const std::u16string& marker, const std::u16string& text) {
    SyntaxEngine* engine = ChooseEngine(name, u"C:\\a.q");
    Require(engine);
    const uint32_t state = ColourLines(*engine, text, false);
    Require(engine->ScanLines(text.data(), static_cast<uint32_t>(text.size()), 0) == state);
    Require(engine->SetEndMarker(marker.c_str()));
    for (uint32_t i = 0; i + 1 < marker.size() && i < 2; ++i) {
        const HighlightRange range = {marker[i], marker[i + 1], 1, 2, NoFill};
        engine->SetHighlight(i, &range);
    }
    ColourLines(*engine, text, true);
    ScanAll(*engine, text);
    Require(engine->Release() == 0);
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    const uint8_t* at = data;
    std::u16string ini = TakeField(at, data + size);
    const std::u16string marker = TakeField(at, data + size);
    const std::u16string text = Widen(at, static_cast<size_t>(data + size - at));
    IniFile file;
    static_cast<void>(file.Parse(ini.data()));
    LoadEngineDefinitions(file);
    for (const Char* name : {u"q", u"cpp", u"html", u"js", u"txt", u""}) TryEngine(name, marker, text);
    ReleaseEngineDefinitions();
    return 0;
}
