#include "view/HtmlExport.h"

#include "base/TextFormat.h"
#include "settings/Settings.h"

namespace {

// Red in the high byte, as HTML writes it.
constexpr uint32_t HtmlColour(Colour colour) {
    return (colour & 0xFF) << 16 | (colour & 0xFF00) | (colour >> 16 & 0xFF);
}

class HtmlSink final : public ColouredTextSink {
public:
    explicit HtmlSink(WString& target) : out(target) {}

    bool StartLine(bool) override { return true; }

    bool AddSpan(const ColourSpan& span, const Char* text, uint32_t length) override {
        static constexpr const Char* Escapes[] = {u"&lt;", u"&gt;", u"&quot;"};
        const uint32_t foreground = HtmlColour(span.foreground);
        const bool opened = span.background == settings.TextBg
                                ? Text::AppendFormat(out, u"<font color=\"#%06x\">", foreground)
                                : Text::AppendFormat(out, u"<font color=\"#%06x\" style=\"background-color:#%06x\">",
                                                     foreground, HtmlColour(span.background));
        return opened && AppendEscaped(out, text, length, u"<>\"", Escapes) && out.Append(u"</font>");
    }

private:
    WString& out;
};

} // namespace

ExportResult WriteHtml(TextBuffer& document, TextRange range, WString& out) {
    HtmlSink sink(out);
    if (!out.Append(u"<pre>\n")) return ExportResult::NoMemory;
    const ExportResult result = WalkColouredText(document, range, sink);
    if (result != ExportResult::Done) return result;
    return out.Append(u"</pre>") ? ExportResult::Done : ExportResult::NoMemory;
}
