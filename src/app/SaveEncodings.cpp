#include "app/SaveEncodings.h"

#include "base/RoundTrip.h"
#include "document/TextBuffer.h"
#include "document/TextFile.h"
#include "settings/AdditionalSettings.h"

#include <algorithm>

namespace {

constexpr size_t SignatureBytes = sizeof(Signature::bytes);

} // namespace

Encoding EncodingToSave(Document& document) {
    auto encoding = Encoding::Keep;
    const Char* const* names = nullptr;
    if (!document.GetEncoding(encoding, names)) return Encoding::Keep;
    auto& text = static_cast<TextBuffer&>(document); // only texts have encodings
    if (!additionalSettings.Utf8 || !text.IsNew() || encoding != Encoding::Ansi) return encoding;
    return CanHold(encoding, text) ? encoding : Encoding::PlainUtf8;
}

uint32_t OfferedEncodings(Encoding chosen) {
    return additionalSettings.Utf8 || chosen == Encoding::PlainUtf8 ? EncodingCount : EncodingCount - 1;
}

bool CanHold(Encoding encoding, TextBuffer& text) {
    if (encoding == Encoding::Unicode || encoding == Encoding::UnicodeBigEndian) return true;
    // Without memory for the line that is being typed the save fails as well, and says so.
    if (!text.CommitEdit()) return true;
    return KeepsText(PageOf(encoding), text.Content(), text.Length());
}

bool IsReadAgain(Encoding encoding, TextBuffer& text) {
    if (!additionalSettings.Utf8 || SignatureOf(encoding).count) return true;
    if (!text.CommitEdit()) return true; // as above
    const CodePage page = PageOf(encoding);
    uint8_t bytes[SignatureBytes * MaxCharacterBytes];
    const size_t count = std::min<size_t>(text.Length(), SignatureBytes);
    const size_t made = count ? FromUtf16(page, text.Content(), count, bytes, sizeof(bytes)) : 0;
    if (SignedEncoding(bytes, made) != Encoding::Ansi) return false;
    return encoding == Encoding::PlainUtf8 || !LooksLikeUtf8(page, text.Content(), text.Length());
}
