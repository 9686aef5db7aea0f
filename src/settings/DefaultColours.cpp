#include "settings/DefaultColours.h"

#include "settings/IniFile.h"

namespace {

IniSection read; // process-wide, like the record that takes its defaults from it

} // namespace

void ReadDefaultColours(const IniFile& file) {
    ReleaseDefaultColours();
    const IniSection* section = file.FindSection(u"DefaultColours");
    if (!section) return;
    for (const IniKey* key = section->keys.head; key; key = key->next)
        if (!read.FindKey(key->name.Text())) static_cast<void>(read.SetString(key->name.Text(), key->value.Text()));
}

const Char* FindDefaultColour(const Char* key) { return read.GetString(key, nullptr); }

void ReleaseDefaultColours() {
    while (IniKey* key = read.keys.TakeHead()) delete key;
}
