#pragma once

#include <cstdlib>
#include <optional>
#include <string>
#include <vector>

// Readers of the program's own RTF and HTML, as strict as their grammar: anything else gives nothing.
namespace coloured {

struct Span {
    uint32_t foreground = 0; // 0xRRGGBB
    std::optional<uint32_t> background;
    std::u16string text;
    bool operator==(const Span&) const = default;
};

class Cursor {
public:
    explicit Cursor(const std::u16string& source) : text(source) {}
    bool Take(const std::u16string& wanted) {
        if (text.compare(at, wanted.size(), wanted) != 0) return false;
        at += wanted.size();
        return true;
    }
    std::optional<uint32_t> Number(int base, size_t digits = 0) {
        std::string read;
        while (at < text.size() && text[at] < 128 && std::isxdigit(text[at]) && (digits == 0 || read.size() < digits) &&
               (base == 16 || (text[at] >= u'0' && text[at] <= u'9')))
            read += static_cast<char>(text[at++]);
        if (read.empty() || (digits && read.size() != digits)) return std::nullopt;
        return static_cast<uint32_t>(std::strtoul(read.c_str(), nullptr, base));
    }
    bool AtEnd() const { return at == text.size(); }
    char16_t Peek() const { return at < text.size() ? text[at] : char16_t(0xFFFF); }
    char16_t Next() { return text[at++]; }

private:
    const std::u16string& text;
    size_t at = 0;
};

struct RichText {
    std::vector<uint32_t> table; // 0xRRGGBB
    std::vector<Span> spans;
    size_t paragraphs = 0;
};

inline bool ReadRichSpan(Cursor& in, RichText& out) {
    Span span;
    const auto colour = [&](uint32_t& value) {
        const auto index = in.Number(10);
        if (!index || *index == 0 || *index > out.table.size()) return false;
        value = out.table[*index - 1];
        return true;
    };
    if (!in.Take(u"{\\cf") || !colour(span.foreground)) return false;
    if (in.Take(u"\\highlight")) {
        uint32_t background = 0;
        if (!colour(background)) return false;
        span.background = background;
    }
    if (!in.Take(u" ")) return false;
    while (!in.Take(u"}")) {
        if (in.AtEnd() || in.Peek() == u'{') return false;
        if (in.Peek() == u'\\') {
            in.Next();
            if (in.Peek() != u'\\' && in.Peek() != u'{' && in.Peek() != u'}') return false;
        }
        span.text += in.Next();
    }
    out.spans.push_back(span);
    return true;
}

inline std::optional<RichText> ReadRichText(const std::u16string& source) {
    Cursor in(source);
    RichText out;
    if (!in.Take(u"{\\rtf1\\ansi\\ansicpg1252\n{\\colortbl;")) return std::nullopt;
    while (in.Take(u"\\red")) {
        const auto red = in.Number(10);
        const auto green = in.Take(u"\\green") ? in.Number(10) : std::nullopt;
        const auto blue = in.Take(u"\\blue") ? in.Number(10) : std::nullopt;
        if (!red || !green || !blue || !in.Take(u";")) return std::nullopt;
        out.table.push_back(*red << 16 | *green << 8 | *blue);
    }
    if (!in.Take(u"}")) return std::nullopt;
    while (!in.Take(u"}")) {
        if (in.Take(u"\\par")) {
            ++out.paragraphs;
        } else if (!ReadRichSpan(in, out)) {
            return std::nullopt;
        }
    }
    return in.AtEnd() ? std::optional(out) : std::nullopt;
}

inline bool ReadHtmlSpan(Cursor& in, std::vector<Span>& out) {
    Span span;
    if (!in.Take(u"<font color=\"#")) return false;
    const auto foreground = in.Number(16, 6);
    if (!foreground || !in.Take(u"\"")) return false;
    span.foreground = *foreground;
    if (in.Take(u" style=\"background-color:#")) {
        span.background = in.Number(16, 6);
        if (!span.background || !in.Take(u"\"")) return false;
    }
    if (!in.Take(u">")) return false;
    while (!in.Take(u"</font>")) {
        if (in.Take(u"&lt;"))
            span.text += u'<';
        else if (in.Take(u"&gt;"))
            span.text += u'>';
        else if (in.Take(u"&quot;"))
            span.text += u'"';
        else if (in.AtEnd() || in.Peek() == u'<' || in.Peek() == u'>' || in.Peek() == u'"')
            return false;
        else
            span.text += in.Next();
    }
    out.push_back(span);
    return true;
}

// An ampersand of the text that happens to spell an entity is read as that entity.
inline std::optional<std::vector<Span>> ReadHtml(const std::u16string& source) {
    Cursor in(source);
    std::vector<Span> out;
    if (!in.Take(u"<pre>\n")) return std::nullopt;
    while (!in.Take(u"</pre>")) {
        if (!ReadHtmlSpan(in, out)) return std::nullopt;
    }
    return in.AtEnd() ? std::optional(out) : std::nullopt;
}

inline std::u16string TextOf(const std::vector<Span>& spans) {
    std::u16string text;
    for (const Span& span : spans) text += span.text;
    return text;
}

} // namespace coloured
