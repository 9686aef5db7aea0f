#pragma once

#include "base/Types.h"
#include "base/WString.h"
#include "document/TextRange.h"
#include "syntax/SyntaxEngine.h"

class TextBuffer;

enum class ExportResult : uint32_t {
    Done,
    NoColours, // the engine gave no spans for a line: what is written so far stays
    NoMemory,
};

// Receives the spans of a range of text in order. False means that memory ran out.
class ColouredTextSink {
public:
    [[nodiscard]] virtual bool StartLine(bool first) = 0;
    // `text` is empty for a span that lies outside the range on one of its lines.
    [[nodiscard]] virtual bool AddSpan(const ColourSpan& span, const Char* text, uint32_t length) = 0;

protected:
    ~ColouredTextSink() = default;
};

// Hands the characters in `range` to `sink`, coloured line by line from the start of the first line. The
// engine starts in the state that holds at its start. No edit may be pending.
ExportResult WalkColouredText(TextBuffer& document, TextRange range, ColouredTextSink& sink);

// Appends text, each character of `special` through `replacement` of the same index.
[[nodiscard]] bool AppendEscaped(WString& out, const Char* text, uint32_t length, const Char* special,
                                 const Char* const* replacements);
