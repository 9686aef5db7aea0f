#include "settings/IniParser.h"

#include "base/Text.h"

namespace {

class IniParser {
public:
    IniParser(const Char* text, List<IniSection>& target) : cursor(text), sections(target) {}

    const Char* Run() {
        for (;;) {
            while (Text::IsBlank(*cursor)) ++cursor;
            const Char* const item = cursor;
            if (*cursor == 0) return nullptr;
            if (!ParseItem()) return item;
        }
    }

private:
    const Char* cursor;
    List<IniSection>& sections;
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
        sections.Append(section);
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
        sections.tail->AppendKey(key);
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

const Char* ParseSections(const Char* text, List<IniSection>& sections) { return IniParser(text, sections).Run(); }
