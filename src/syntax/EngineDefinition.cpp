#include "syntax/EngineDefinition.h"

#include "base/List.h"
#include "base/Text.h"
#include "base/TextFormat.h"
#include "settings/IniFile.h"
#include "settings/Settings.h"

#include <iterator>

namespace {

// Process-wide, like the settings that give their colours. Oldest first.
List<EngineDefinition> definitions;

struct ColourRow {
    const Char* foregroundKey;
    Colour SettingsRecord::*foreground;
    const Char* backgroundKey;
    Colour SettingsRecord::*background;
};

// In the order of ColourClassIndex.
constexpr ColourRow ColourRows[ColourClassCount] = {
    {u"TextFg", &SettingsRecord::TextFg, u"TextBg", &SettingsRecord::TextBg},
    {u"CommentFg", &SettingsRecord::CommentFg, u"CommentBg", &SettingsRecord::CommentBg},
    {u"LongCommentFg", &SettingsRecord::LongCommentFg, u"LongCommentBg", &SettingsRecord::LongCommentBg},
    {u"StringFg", &SettingsRecord::StringFg, u"StringBg", &SettingsRecord::StringBg},
    {u"KeywordFg", &SettingsRecord::KeywordFg, u"KeywordBg", &SettingsRecord::KeywordBg},
    {u"NumberFg", &SettingsRecord::NumberFg, u"NumberBg", &SettingsRecord::NumberBg},
    {u"HtmlTagFg", &SettingsRecord::HtmlTagFg, u"HtmlTagBg", &SettingsRecord::HtmlTagBg},
    {u"HtmlAttrFg", &SettingsRecord::HtmlAttrFg, u"HtmlAttrBg", &SettingsRecord::HtmlAttrBg},
    {u"HtmlAttrValueFg", &SettingsRecord::HtmlAttrValueFg, u"HtmlAttrValueBg", &SettingsRecord::HtmlAttrValueBg},
    {u"HtmlAttrQuotedValueFg", &SettingsRecord::HtmlAttrQuotedValueFg, u"HtmlAttrQuotedValueBg",
     &SettingsRecord::HtmlAttrQuotedValueBg},
    {u"HtmlCommentFg", &SettingsRecord::HtmlCommentFg, u"HtmlCommentBg", &SettingsRecord::HtmlCommentBg},
    {u"HtmlPunctFg", &SettingsRecord::HtmlPunctFg, u"HtmlPunctBg", &SettingsRecord::HtmlPunctBg},
};

constexpr Char SectionPrefix[] = u"Engine_";
constexpr uint32_t SectionPrefixLength = std::size(SectionPrefix) - 1; // without the terminator

constexpr Char CppKeywords[] =
    u"#define #else #endif #elif #ifdef #include #undef #error #import #line #ifndef #pragma #if asm auto bad_cast "
    u"bad_typeid bool break case catch char class const const_cast continue default delete double do dynamic_cast "
    u"else enum except explicit extern false finally float for friend goto if inline int interface long mutable "
    u"namespace new operator private protected public register reinterpret_cast return short signed sizeof static "
    u"static_cast struct switch template this throw true try type_info typedef typeid typename union unsigned using "
    u"virtual void volatile while xalloc";

// A colour the section does not give is the setting's.
Colour ReadColour(const IniSection* section, const Char* key, Colour fromSettings) {
    const Char* value = section ? section->GetString(key, nullptr) : nullptr;
    return value ? ParseColour(value) : fromSettings;
}

void ReadColours(EngineDefinition& definition, const IniSection* section) {
    for (uint32_t i = 0; i < ColourClassCount; ++i) {
        const ColourRow& row = ColourRows[i];
        ColourClass& colours = definition.colours[static_cast<ColourClassIndex>(i)];
        colours.foreground = ReadColour(section, row.foregroundKey, settings.*row.foreground);
        colours.background = ReadColour(section, row.backgroundKey, settings.*row.background);
    }
}

bool BuildCpp(EngineDefinition& definition) {
    return definition.keywordsText.Assign(CppKeywords) &&
           definition.extensions.Assign(u"cpp h c cxx hxx inl hpp rc idl") &&
           definition.longCommentStart.Assign(u"/*") && definition.longCommentEnd.Assign(u"*/") &&
           definition.SetLineComment(0, u"//");
}

bool BuildHtml(EngineDefinition& definition) {
    definition.html = true;
    return definition.extensions.Assign(u"htm html xml xsl xui");
}

void AddBuiltIn(bool (*build)(EngineDefinition&)) {
    auto* definition = new EngineDefinition;
    if (!definition) return;
    ReadColours(*definition, nullptr);
    if (build(*definition))
        definitions.Append(definition);
    else
        delete definition;
}

bool ReadLineComments(EngineDefinition& definition, const IniSection& section) {
    if (const Char* first = section.GetString(u"CommentStart", nullptr)) {
        if (!definition.SetLineComment(0, first)) return false;
    }
    for (uint32_t i = 1; i < EngineDefinition::MaxLineComments; ++i) {
        WString key;
        if (!Text::AppendFormat(key, u"CommentStart_%u", i)) return false;
        // The numbers have no gaps: the first one that is missing ends the list.
        const Char* marker = section.GetString(key.Text(), nullptr);
        if (!marker) break;
        if (!definition.SetLineComment(i, marker)) return false;
    }
    return true;
}

bool ReadLongComment(EngineDefinition& definition, const IniSection& section) {
    const Char* start = section.GetString(u"LongCommentStart", nullptr);
    const Char* end = section.GetString(u"LongCommentEnd", nullptr);
    if (!start || !end) return true;
    return definition.longCommentStart.Assign(start) && definition.longCommentEnd.Assign(end);
}

// Reads a section into a definition that is already linked in, so that it can name itself.
bool ReadSection(EngineDefinition& definition, const IniSection& section) {
    ReadColours(definition, &section);
    definition.caseSensitive = section.GetInt(u"CaseSensitive", 1) != 0;
    if (!section.GetStringInto(definition.extensions, u"Extensions")) return false;
    if (!section.GetStringInto(definition.fileNames, u"FileNames")) return false;
    if (const Char* target = section.GetString(u"TreatAs", nullptr)) {
        definition.treatAs = FindEngineDefinition(target);
        if (definition.treatAs) return true;
    }
    definition.html = section.GetInt(u"HTML", 0) != 0;
    if (!section.GetStringInto(definition.keywordsText, u"Keywords")) return false;
    return ReadLineComments(definition, section) && ReadLongComment(definition, section);
}

void AddUserDefined(const IniSection& section) {
    auto* definition = new EngineDefinition;
    if (!definition) return;
    definitions.Append(definition);
    if (ReadSection(*definition, section)) return;
    definitions.Remove(definition);
    delete definition;
}

// Whether a list of names separated by spaces holds `name`.
bool ListHolds(const Char* list, const Char* name, uint32_t nameLength) {
    while (*list) {
        uint32_t length = 0;
        while (list[length] && list[length] != u' ') ++length;
        if (length == nameLength && Text::EqualCountNoCase(list, name, length)) return true;
        list += length;
        if (*list) ++list;
    }
    return false;
}

// The newest definition that has `name` in one of its lists.
const EngineDefinition* FindInList(WString EngineDefinition::*list, const Char* name) {
    const uint32_t length = Text::Length(name);
    if (length == 0) return nullptr;
    const EngineDefinition* definition = NewestEngineDefinition();
    while (definition && !ListHolds((definition->*list).Text(), name, length)) definition = definition->previous;
    return definition;
}

} // namespace

bool EngineDefinition::SetLineComment(uint32_t index, const Char* marker) {
    LineCommentStart& start = lineComments[index];
    if (!start.marker.Assign(marker)) return false;
    const uint32_t length = start.marker.Length();
    start.wordBoundary = length != 0 && Text::IsAsciiLetter(marker[length - 1]);
    lineCommentCount = index + 1;
    return true;
}

const KeywordSet* EngineDefinition::Keywords() const {
    if (!keywords) keywords = KeywordSet::Make(keywordsText.Text(), caseSensitive);
    return keywords;
}

void LoadEngineDefinitions(const IniFile& file) {
    ReleaseEngineDefinitions();
    AddBuiltIn(BuildCpp);
    AddBuiltIn(BuildHtml);
    for (const IniSection* section = file.sections.head; section; section = section->next) {
        const bool isEngine = section->name.Length() >= SectionPrefixLength &&
                              Text::EqualCountNoCase(section->name.Text(), SectionPrefix, SectionPrefixLength);
        if (isEngine) AddUserDefined(*section);
    }
}

void ReleaseEngineDefinitions() {
    while (EngineDefinition* definition = definitions.TakeHead()) delete definition;
}

const EngineDefinition* FindEngineDefinition(const Char* name) {
    return FindInList(&EngineDefinition::extensions, name);
}

const EngineDefinition* FindEngineDefinitionOfFile(const Char* fileName) {
    return FindInList(&EngineDefinition::fileNames, fileName);
}

const EngineDefinition* NewestEngineDefinition() { return definitions.tail; }
