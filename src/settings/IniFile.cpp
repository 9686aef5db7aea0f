#include "settings/IniFile.h"

#include "base/CodePage.h"
#include "base/Platform.h"
#include "base/SafeSaver.h"
#include "base/Text.h"
#include "settings/IniParser.h"
#include "settings/LineReader.h"

#include <algorithm>

namespace {

// `length` is that of all the file, which may have terminators inside.
bool ReadText(const Char* path, WString& text, size_t& length) {
    Platform::ByteBlock block;
    if (!Platform::ReadWholeFile(path, block)) return false;
    const size_t most = MaxCharacters(CodePage::Utf8, block.size);
    if (most > WString::MaxCharacters || !text.Reserve(static_cast<uint32_t>(most))) return false;
    // The terminator is there already: the buffer is zero-filled and has room for one.
    length = block.size ? ToUtf16(CodePage::Utf8, block.bytes, block.size, text.Data(), most) : 0;
    return block.size == 0 || length != 0;
}

uint32_t LineAt(const Char* text, const Char* place) {
    return 1 + static_cast<uint32_t>(std::count<const Char*>(text, place, u'\n'));
}

bool AppendSectionText(WString& out, const IniSection& section) {
    if (section.previous && !out.Append(u"\r\n")) return false;
    if (!out.AppendChar(u'[') || !out.Append(section.name) || !out.Append(u"]\r\n")) return false;
    for (const IniKey* key = section.keys.head; key; key = key->next) {
        if (!out.Append(key->name) || !out.AppendChar(u'=')) return false;
        if (!out.Append(key->value) || !out.Append(u"\r\n")) return false;
    }
    return true;
}

} // namespace

bool IniFile::Load(const Char* path) {
    WString text;
    size_t length = 0;
    if (!ReadText(path, text, length)) return false;
    if (!text.Data()) return true;
    const bool isWhole = Text::Length(text.Data()) == length;
    // Other programs put a byte-order mark before UTF-8. It is not written back.
    constexpr Char ByteOrderMark = 0xFEFF;
    Char* const start = text.Data() + (text[0] == ByteOrderMark ? 1 : 0);
    if (!Parse(start)) return false;
    if (!isWhole) stoppedLine = LineAt(start, start + Text::Length(start));
    return isWhole;
}

bool IniFile::Parse(Char* text) {
    NormaliseLineEnds(text);
    const Char* const stopped = ParseSections(text, sections);
    stoppedLine = stopped ? LineAt(text, stopped) : 0;
    return !stopped;
}

bool IniFile::Serialise(WString& out) const {
    const uint32_t before = out.Length();
    for (const IniSection* section = sections.head; section; section = section->next) {
        if (!AppendSectionText(out, *section)) {
            out.Truncate(before);
            return false;
        }
    }
    return true;
}

bool IniFile::Save(SafeSaver& saver, const Char* path) const {
    WString text;
    if (!Serialise(text)) return false;
    Platform::ByteBlock block;
    block.size = FromUtf16(CodePage::Utf8, text.Text(), text.Length(), nullptr, 0);
    block.bytes = static_cast<uint8_t*>(Heap::Allocate(block.size));
    if (!block.bytes) return false;
    FromUtf16(CodePage::Utf8, text.Text(), text.Length(), block.bytes, block.size);
    BlockSource source(block.bytes, block.size);
    return saver.Save(path, source, Replaced::Kept) == SaveResult::Saved;
}

IniSection* IniFile::FindSection(const Char* name) const {
    IniSection* found = sections.head;
    while (found && !Text::Equal(found->name.Text(), name)) found = found->next;
    return found;
}

IniSection* IniFile::AddSection(const Char* name) {
    IniSection* section = new IniSection;
    if (!section || !section->name.Assign(name)) {
        delete section;
        return nullptr;
    }
    AppendSection(section);
    return section;
}

void IniFile::RemoveSections(const Char* name) {
    IniSection* section = sections.head;
    while (section) {
        IniSection* following = section->next;
        if (Text::Equal(section->name.Text(), name)) {
            sections.Remove(section);
            delete section;
        }
        section = following;
    }
}

void IniFile::Clear() {
    while (IniSection* section = sections.TakeHead()) delete section;
}
