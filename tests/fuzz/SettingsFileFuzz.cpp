// Reads the bytes as a settings file, applies it, stores the settings and the tools into it, and reads
// back what would be saved: the model must come back exactly, and a second store must change nothing.

#include "base/CodePage.h"
#include "base/Text.h"
#include "settings/IniFile.h"
#include "settings/LineReader.h"
#include "settings/SetOptionCommand.h"
#include "settings/ToolList.h"

#include <cstdlib>

namespace {

void Require(bool condition) {
    if (!condition) std::abort();
}

bool SameText(const WString& left, const WString& right) {
    return left.Length() == right.Length() && Text::Equal(left.Text(), right.Text());
}

void RequireSameModel(const IniFile& left, const IniFile& right) {
    const IniSection* other = right.sections.head;
    for (const IniSection* section = left.sections.head; section; section = section->next, other = other->next) {
        Require(other && SameText(section->name, other->name));
        const IniKey* otherKey = other->keys.head;
        for (const IniKey* key = section->keys.head; key; key = key->next, otherKey = otherKey->next) {
            Require(otherKey && SameText(key->name, otherKey->name) && SameText(key->value, otherKey->value));
        }
        Require(!otherKey);
    }
    Require(!other);
}

void RequireSavedIsReadBack(const IniFile& file) {
    WString text;
    Require(file.Serialise(text));
    IniFile again;
    if (text.Data()) Require(again.Parse(text.Data()));
    RequireSameModel(file, again);
}

void RunLinesAsOptions(const Char* text) {
    WString line;
    uint32_t position = 0;
    while (NextLine(text, position, line)) {
        SettingsChanges changes;
        ExecuteSetOption(line.Text(), changes);
    }
    Require(FontHeight(settings.FontSize, 96) <= 0 && FontHeight(settings.FontSize, 96) >= -MaxFontPixels);
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    WString text;
    Require(text.Reserve(static_cast<uint32_t>(MaxCharacters(CodePage::Utf8, size)) + 1));
    ToUtf16(CodePage::Utf8, data, size, text.Data(), text.Capacity() - 1);

    IniFile file;
    static_cast<void>(file.Parse(text.Data())); // what came before a bad line stays
    RequireSavedIsReadBack(file);

    LoadSettings(file);
    Require(StoreSettingsToFile(file) && toolList.Store(file));
    RequireSavedIsReadBack(file);
    WString stored;
    Require(file.Serialise(stored));

    LoadSettings(file);
    Require(StoreSettingsToFile(file) && toolList.Store(file));
    WString again;
    Require(file.Serialise(again));
    Require(SameText(stored, again));

    Array<ToolAccelerator> accelerators;
    Require(toolList.Accelerators(accelerators) && accelerators.Count() <= toolList.Count());
    RunLinesAsOptions(text.Data());
    ReleaseSettings();
    return 0;
}
