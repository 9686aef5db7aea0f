#include "view/ColouredText.h"

#include "document/TextBuffer.h"

namespace {

uint32_t IndexIn(const Char* set, Char character) {
    uint32_t index = 0;
    while (set[index] != 0 && set[index] != character) ++index;
    return index;
}

// The part of a line's span at `start` that lies in `range`.
bool AddClipped(ColouredTextSink& sink, const Char* text, const ColourSpan& span, uint32_t start, TextRange range) {
    const uint32_t end = start + span.length;
    const uint32_t first = start < range.start ? range.start : start;
    const uint32_t last = end < range.end ? end : range.end;
    return sink.AddSpan(span, text + first, first < last ? last - first : 0);
}

} // namespace

ExportResult WalkColouredText(TextBuffer& document, TextRange range, ColouredTextSink& sink) {
    SyntaxEngine* engine = document.Engine();
    const Char* text = document.Content();
    if (!engine || !text) return ExportResult::NoColours;
    uint32_t state = engine->ScanLines(text, range.start, 0);
    uint32_t lineStart = 0;
    document.OffsetToLine(range.start, lineStart);
    for (bool first = true; lineStart < range.end; first = false) {
        bool isLast = false;
        const uint32_t length = document.LineLength(lineStart, isLast) + 1;
        ColouredLine line;
        engine->ColourLine(lineStart, text + lineStart, length, state, line);
        // Every line has a character, be it the terminator: no span means that the engine had no memory for it.
        if (line.count == 0) return ExportResult::NoColours;
        if (!sink.StartLine(first)) return ExportResult::NoMemory;
        uint32_t at = lineStart;
        for (uint32_t i = 0; i < line.count; ++i) {
            if (!AddClipped(sink, text, line.spans[i], at, range)) return ExportResult::NoMemory;
            at += line.spans[i].length;
        }
        lineStart += length;
    }
    return ExportResult::Done;
}

bool AppendEscaped(WString& out, const Char* text, uint32_t length, const Char* special,
                   const Char* const* replacements) {
    uint32_t plain = 0; // start of the stretch not yet written
    for (uint32_t i = 0; i < length; ++i) {
        const uint32_t index = IndexIn(special, text[i]);
        if (special[index] == 0) continue;
        if (!out.Append(text + plain, i - plain) || !out.Append(replacements[index])) return false;
        plain = i + 1;
    }
    return out.Append(text + plain, length - plain);
}
