#include "settings/AdditionalSettings.h"

#include "base/Text.h"
#include "settings/IniSection.h"

#include <iterator>

// Process-wide, like the settings record, with which they are read.
AdditionalSettings additionalSettings;

namespace {

struct Row {
    const Char* key;
    uint32_t AdditionalSettings::*cell;
};

constexpr Row Rows[] = {
    {u"Utf8", &AdditionalSettings::Utf8},
    {u"AltGr", &AdditionalSettings::AltGr},
    {u"WholeCharacters", &AdditionalSettings::WholeCharacters},
    {u"OutputCodePage", &AdditionalSettings::OutputCodePage},
    {u"UnixNewFiles", &AdditionalSettings::UnixNewFiles},
    {u"MarkActivePane", &AdditionalSettings::MarkActivePane},
};

} // namespace

void ApplyAdditionalSettings(const IniSection* general) {
    for (const Row& row : Rows) additionalSettings.*row.cell = general ? general->GetInt(row.key, 0) : 0;
}

bool StoreAdditionalSettings(const IniSection* general, IniSection& stored) {
    for (const Row& row : Rows) {
        const uint32_t value = additionalSettings.*row.cell;
        const bool isWritten = value || (general && general->FindKey(row.key));
        if (isWritten && !stored.SetInt(row.key, value)) return false;
    }
    return true;
}

bool SetAdditionalOption(const Char* key, const Char* value) {
    for (const Row& row : Rows) {
        if (!Text::EqualNoCase(row.key, key)) continue;
        additionalSettings.*row.cell = Text::ParseDecimal(value ? value : u"");
        return true;
    }
    return false;
}

const Char* AdditionalSettingKey(uint32_t place) { return place < std::size(Rows) ? Rows[place].key : nullptr; }
