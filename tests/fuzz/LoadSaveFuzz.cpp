#include "document/TextBuffer.h"
#include "settings/AdditionalSettings.h"
#include "support/TestServices.h"

#include <cstdio>
#include <cstdlib>
#include <string>
#include <unistd.h>

// The first byte chooses encoding and style, and its top bit turns UTF-8 on; the rest is the content of a file. It is
// loaded, saved and loaded again; what comes back must be the text that was there, as far as the encoding can hold it.

namespace {

void Require(bool holds) {
    if (!holds) std::abort();
}

// Two files of this process, in memory where the system offers that.
std::string FileName(const char* name) {
    const bool inMemory = access("/dev/shm", W_OK) == 0;
    return std::string(inMemory ? "/dev/shm" : "/tmp") + "/orvane-fuzz-" + std::to_string(getpid()) + name;
}

std::u16string PathOf(const std::string& name) {
    std::u16string path(name.begin(), name.end());
    for (char16_t& c : path)
        if (c == u'/') c = u'\\';
    return path;
}

class Held {
public:
    Held() { document->AddRef(); }
    ~Held() { document->Release(); }
    TextBuffer* operator->() const { return document; }
    std::u16string Text() const { return {document->Content(), document->Length()}; }

private:
    TextBuffer* document = new TextBuffer(textServices);
};

Encoding EncodingOf(const Held& document) {
    auto current = Encoding::Keep;
    const Char* const* names = nullptr;
    document->GetEncoding(current, names);
    return current;
}

// Whether a text is one that saving in UTF-8 and loading keeps. Without a signature its first bytes may be one.
bool SurvivesUtf8(const std::u16string& text, Encoding encoding) {
    if (encoding != Encoding::Utf8 && encoding != Encoding::PlainUtf8) return false;
    if (encoding == Encoding::PlainUtf8 && !text.empty() && text[0] == u'\uFEFF') return false;
    for (size_t i = 0; i < text.size(); ++i) {
        if ((text[i] & 0xF800) != 0xD800) continue;
        if (text[i] >= 0xDC00 || i + 1 == text.size() || (text[i + 1] & 0xFC00) != 0xDC00) return false;
        ++i;
    }
    return true;
}

// What must hold of every loaded text.
void CheckLoaded(const Held& document) {
    const std::u16string text = document.Text();
    Require(text.find(u'\r') == std::u16string::npos && text.find(u'\0') == std::u16string::npos);
    Require(document->Content()[text.size()] == 0);
    uint32_t lines = 1;
    for (const char16_t c : text) lines += c == u'\n';
    Require(document->GetLineCount() == lines);
    Require(lines > 1 || document->GetLineEnding() == LineEnding::Dos);
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    Platform::SetRecoveryFolder(u""); // the copies have tests of their own, and take time
    static const std::string inName = FileName("-in");
    static const std::string outName = FileName("-out");
    static const std::u16string in = PathOf(inName);
    static const std::u16string out = PathOf(outName);
    if (size == 0) return 0;
    const uint8_t choice = data[0] & 0x7F;
    additionalSettings.Utf8 = data[0] >> 7;
    const auto encoding = static_cast<Encoding>(choice % EncodingCount);
    const LineEnding style = choice / EncodingCount % 2 ? LineEnding::Dos : LineEnding::Unix;
    std::FILE* file = std::fopen(inName.c_str(), "wb");
    Require(file && std::fwrite(data + 1, 1, size - 1, file) == size - 1 && std::fclose(file) == 0);

    Held loaded;
    Require(loaded->Load(in.c_str(), false));
    CheckLoaded(loaded);
    const Encoding oldEncoding = EncodingOf(loaded);
    const bool saved = loaded->Save(out.c_str(), encoding, style);
    // The ones that can need more bytes than a chunk has.
    Require(saved || encoding == Encoding::Utf8 || encoding == Encoding::PlainUtf8);
    if (!saved) return 0;

    Held again;
    Require(again->Load(out.c_str(), false));
    CheckLoaded(again);
    if (additionalSettings.Utf8 && SurvivesUtf8(loaded.Text(), encoding)) Require(again.Text() == loaded.Text());
    // A file without a signature may be taken for another one, by the bytes that it begins with or as a whole.
    const bool hasSignature = encoding != Encoding::Ansi && encoding != Encoding::PlainUtf8;
    if (!hasSignature && EncodingOf(again) != encoding) return 0;
    Require(EncodingOf(again) == encoding);
    Require(again->GetLineEnding() == (again->GetLineCount() > 1 ? style : LineEnding::Dos));
    const bool isUtf16 = encoding == Encoding::Unicode || encoding == Encoding::UnicodeBigEndian;
    // All characters of a text are of the ANSI page when it was read with that.
    const bool isOfAnsi = oldEncoding == Encoding::Ansi || (oldEncoding == Encoding::Utf8 && !additionalSettings.Utf8);
    const bool holdsAll = isUtf16 || (encoding == Encoding::Ansi && isOfAnsi);
    if (holdsAll) Require(again.Text() == loaded.Text());
    Require(again->GetLineCount() == loaded->GetLineCount());
    return 0;
}
