#include "view/ColouredCopy.h"

#include "base/CodePage.h"
#include "base/Heap.h"
#include "view/HtmlExport.h"
#include "view/RichTextExport.h"

namespace {

// The text in a code page, with a terminator; null without memory. `bytes` counts the terminator too.
uint8_t* Convert(CodePage page, const WString& text, size_t& bytes) {
    const size_t needed = FromUtf16(page, text.Text(), text.Length(), nullptr, 0);
    auto* converted = Heap::AllocateArray<uint8_t>(needed + 1);
    if (converted) FromUtf16(page, text.Text(), text.Length(), converted, needed);
    bytes = needed + 1;
    return converted;
}

} // namespace

ColouredCopy::~ColouredCopy() {
    Heap::Free(richBytes);
    Heap::Free(htmlBytes);
}

bool ColouredCopy::Make(TextBuffer& document, TextRange range) {
    WString rich;
    if (WriteRichText(document, range, rich) == ExportResult::NoMemory) return false;
    if (WriteHtml(document, range, html) == ExportResult::NoMemory) return false;
    size_t richCount = 0;
    size_t htmlCount = 0;
    richBytes = Convert(CodePage::Windows1252, rich, richCount);
    htmlBytes = Convert(CodePage::Utf8, html, htmlCount);
    if (!richBytes || !htmlBytes) return false;
    items[0] = {ClipboardFormat::UnicodeText, html.Text(), (size_t(html.Length()) + 1) * sizeof(Char)};
    items[1] = {ClipboardFormat::RichText, richBytes, richCount};
    items[2] = {ClipboardFormat::Html, htmlBytes, htmlCount};
    return true;
}
