#include "base/Text.h"
#include "settings/IniFile.h"

// Reading of the settings format. A line is not a unit here: a section name runs to its "]" and a key
// name to its "=" wherever those are, so that a line without "=" joins the ones below it.

namespace {

class IniParser {
public:
    IniParser(IniFile& target, const Char* text) : file(target), cursor(text) {}

    bool Run() {
        for (;;) {
            while (Text::IsBlank(*cursor)) ++cursor;
            if (*cursor == 0) return true;
            if (!ParseItem()) return false;
        }
    }

private:
    IniFile& file;
    const Char* cursor;
    bool insideSection = false;

    bool ParseItem() {
        if (*cursor == u';' || *cursor == u'\n') {
            SkipLine();
            return true;
        }
        if (!insideSection) return ParseHeader();
        if (*cursor != u'[') return ParseKey();
        insideSection = false; // the bracket is read by the next round
        return true;
    }

    bool ParseHeader() {
        if (*cursor != u'[') return false;
        const Char* name = ++cursor;
        SkipTo(u']');
        IniSection* section = new IniSection;
        if (!section || !section->name.Assign(name, cursor - name)) {
            delete section;
            return false;
        }
        file.AppendSection(section);
        if (*cursor == 0) return false; // no "]": the section stays all the same
        SkipLine();
        insideSection = true;
        return true;
    }

    // Goes into the last section of the whole file: the one whose header was read last.
    // Odd on purpose: docs/oddities.md.
    bool ParseKey() {
        const Char* name = cursor;
        SkipTo(u'=');
        const Char* nameEnd = cursor;
        const bool closed = *cursor != 0;
        if (closed) ++cursor;
        const Char* value = cursor;
        SkipTo(u'\n');
        IniKey* key = new IniKey;
        if (!key || !key->name.Assign(name, nameEnd - name) || !key->value.Assign(value, cursor - value)) {
            delete key;
            return false;
        }
        file.sections.tail->AppendKey(key);
        if (*cursor != 0) ++cursor;
        return closed; // without "=" the key stays, with an empty value
    }

    // Moves to the next `wanted` or to the terminator.
    void SkipTo(Char wanted) {
        while (*cursor != 0 && *cursor != wanted) ++cursor;
    }

    void SkipLine() {
        SkipTo(u'\n');
        if (*cursor != 0) ++cursor;
    }
};

} // namespace

bool IniFile::Parse(Char* text) {
    NormaliseLineEnds(text);
    return IniParser(*this, text).Run();
}

uint32_t NormaliseLineEnds(Char* text) {
    const Char* from = text;
    Char* to = text;
    while (*from != 0) {
        const Char character = *from++;
        if (character == u'\r' && *from == u'\n') continue; // the line feed follows
        *to++ = character == u'\r' ? u'\n' : character;
    }
    *to = 0;
    return static_cast<uint32_t>(to - text);
}

bool NextLine(const Char* text, uint32_t& position, WString& line) {
    const Char* start = text + position;
    if (*start == 0) return false;
    const Char* end = start;
    while (*end != 0 && *end != u'\n') ++end;
    if (!line.Assign(start, end - start)) return false;
    position = static_cast<uint32_t>(end - text) + (*end != 0 ? 1u : 0u);
    return true;
}
