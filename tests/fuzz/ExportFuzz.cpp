// Any text and range, written as RTF and HTML: both read back to the text of the range.

#include "settings/IniFile.h"
#include "settings/Settings.h"
#include "support/ColouredReaders.h"
#include "support/TextDocument.h"
#include "syntax/EngineChoice.h"
#include "syntax/EngineDefinition.h"
#include "view/HtmlExport.h"
#include "view/RichTextExport.h"

#include <cstdlib>

static uint32_t Pair(const uint8_t* bytes) { return static_cast<uint32_t>(bytes[0] << 8 | bytes[1]); }

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    if (size < 5) return 0;
    static bool started = false;
    if (!started) LoadSettings(IniFile());
    started = true;
    settings.CommentBg = data[0] & 1 ? 0x123456 : settings.TextBg; // a colour the table may lack
    LoadEngineDefinitions(IniFile());
    {
        std::u16string text;
        for (size_t i = 5; i + 1 < size; i += 2) {
            const auto c = static_cast<Char>(data[i] | (data[i + 1] & 3) << 8);
            if (c != 0 && c != u'\r') text += c;
        }
        const auto length = static_cast<uint32_t>(text.size());
        const uint32_t to = length ? Pair(data + 1) % (length + 1) : 0;
        const uint32_t from = to ? Pair(data + 3) % to : 0;
        TextDocument document(text);
        constexpr const Char* Engines[] = {u"cpp", u"html", u"txt"};
        document->AttachEngine(ChooseEngine(Engines[data[0] / 2 % 3], nullptr));
        const std::u16string wanted = text.substr(from, to - from);

        WString rich;
        WString html;
        if (WriteRichText(*document, {from, to}, rich) != ExportResult::Done) std::abort();
        if (WriteHtml(*document, {from, to}, html) != ExportResult::Done) std::abort();
        const auto richRead = coloured::ReadRichText({rich.Text(), rich.Length()});
        const auto htmlRead = coloured::ReadHtml({html.Text(), html.Length()});
        if (!richRead || coloured::TextOf(richRead->spans) != wanted) std::abort();
        // An entity of the text's own is read as what it stands for.
        const bool entities = wanted.find(u'&') != wanted.npos;
        if (!htmlRead || (!entities && coloured::TextOf(*htmlRead) != wanted)) std::abort();
    }
    ReleaseEngineDefinitions();
    return 0;
}
