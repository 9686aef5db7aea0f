#include "app/MessageText.h"

#include "base/Surrogates.h"

#include <utility>

namespace {

bool IsBreak(Char c) { return c == u' ' || c == u'\t' || c == u'\n'; }

bool BreakLongWords(const Char* message, WString& out) {
    uint32_t length = 0; // of the word up to here
    for (; *message; ++message) {
        length = IsBreak(*message) ? 0 : length + 1;
        if (length > MaxMessageWord && !Surrogates::IsSecond(*message)) {
            if (!out.AppendChar(u'\n')) return false;
            length = 1;
        }
        if (!out.AppendChar(*message)) return false;
    }
    return true;
}

uint32_t CountLines(const WString& text) {
    uint32_t lines = 1;
    for (uint32_t i = 0; i < text.Length(); ++i) lines += text[i] == u'\n';
    return lines;
}

// Where a line begins, counted from 0; there are more lines than that.
uint32_t StartOfLine(const WString& text, uint32_t line) {
    uint32_t at = 0;
    while (line > 0) line -= text[at++] == u'\n';
    return at;
}

bool OmitMiddle(const WString& text, uint32_t lines, WString& out) {
    const uint32_t kept = (MaxMessageLines - 1) / 2;
    return out.Append(text.Text(), StartOfLine(text, kept)) && out.Append(u"\u2026\n") &&
           out.Append(text.Text() + StartOfLine(text, lines - kept));
}

} // namespace

bool BuildMessageText(const Char* message, WString& out) {
    WString broken;
    if (!BreakLongWords(message, broken)) return false;
    const uint32_t lines = CountLines(broken);
    WString made;
    if (lines > MaxMessageLines && !OmitMiddle(broken, lines, made)) return false;
    out = std::move(lines > MaxMessageLines ? made : broken);
    return true;
}
