#include "view/RichTextExport.h"

#include "base/TextFormat.h"
#include "settings/Settings.h"

namespace {

class RichTextSink final : public ColouredTextSink {
public:
    explicit RichTextSink(WString& target) : out(target), colourCount(ListDistinctColours(colours, MaxColours)) {}

    bool WriteHeader() {
        bool done = out.Append(u"{\\rtf1\\ansi\\ansicpg1252\n{\\colortbl;");
        for (uint32_t i = 0; i < colourCount && done; ++i) {
            const Colour colour = colours[i];
            done = Text::AppendFormat(out, u"\\red%d\\green%d\\blue%d;", colour & 255, colour >> 8 & 255,
                                      colour >> 16 & 255);
        }
        return done && out.AppendChar(u'}');
    }

    bool StartLine(bool first) override { return first || out.Append(u"\\par"); }

    bool AddSpan(const ColourSpan& span, const Char* text, uint32_t length) override {
        static constexpr const Char* Escapes[] = {u"\\\\", u"\\{", u"\\}"};
        const uint32_t foreground = IndexOf(span.foreground) + 1;
        const bool opened =
            span.background == settings.TextBg
                ? Text::AppendFormat(out, u"{\\cf%d ", foreground)
                : Text::AppendFormat(out, u"{\\cf%d\\highlight%d ", foreground, IndexOf(span.background) + 1);
        return opened && AppendEscaped(out, text, length, u"\\{}", Escapes) && out.AppendChar(u'}');
    }

private:
    static constexpr uint32_t MaxColours = 100;

    uint32_t IndexOf(Colour colour) const {
        for (uint32_t i = 0; i < colourCount; ++i) {
            if (colours[i] == colour) return i;
        }
        return 0;
    }

    WString& out;
    Colour colours[MaxColours] = {};
    uint32_t colourCount;
};

} // namespace

ExportResult WriteRichText(TextBuffer& document, TextRange range, WString& out) {
    RichTextSink sink(out);
    if (!sink.WriteHeader()) return ExportResult::NoMemory;
    const ExportResult result = WalkColouredText(document, range, sink);
    if (result != ExportResult::Done) return result;
    return out.AppendChar(u'}') ? ExportResult::Done : ExportResult::NoMemory;
}
