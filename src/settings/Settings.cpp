#include "settings/Settings.h"

#include "base/Assert.h"
#include "base/Text.h"
#include "base/TextFormat.h"
#include "settings/AdditionalSettings.h"
#include "settings/IniFile.h"
#include "settings/ToolList.h"

namespace {

template <class Visitor> void ForEachRow(Visitor visit) {
    for (uint32_t i = 0; i < generalSettings.count; ++i) visit(generalSettings.rows[i], i);
}

uint32_t Digit(Char c) {
    if (Text::IsDigit(c)) return c - u'0';
    const Char folded = Text::FoldCase(c);
    return folded >= u'a' && folded <= u'f' ? folded - u'a' + 10u : 0;
}

void ReadDefaultColours(const IniSection* section) {
    settings.defaults = {};
    if (!section) return;
    ForEachRow([&](const SettingDef& row, uint32_t i) {
        const Char* const given = row.type == SettingType::Colour ? section->GetString(row.key, nullptr) : nullptr;
        settings.defaults.has[i] = given != nullptr;
        if (given) settings.defaults.colours[i] = ParseColour(given);
    });
}

void StoreDefault(const SettingDef& row, uint32_t index) {
    switch (row.type) {
    case SettingType::Int:
        settings.*row.cell.number = row.initial.number;
        break;
    case SettingType::Colour:
        settings.*row.cell.number = DefaultColour(index, settings);
        break;
    case SettingType::String:
        (settings.*row.cell.string).Set(row.initial.string);
        break;
    }
}

void StoreText(const SettingDef& row, const Char* text, SettingsRecord& record) {
    if (row.type == SettingType::String) {
        (record.*row.cell.string).Set(text);
    } else {
        const Char* number = text ? text : u"";
        record.*row.cell.number = row.type == SettingType::Int ? Text::ParseDecimal(number) : ParseColour(number);
    }
}

bool IsSame(const SettingDef& row, const SettingsRecord& left, const SettingsRecord& right) {
    if (row.type != SettingType::String) return left.*row.cell.number == right.*row.cell.number;
    const Char* const a = (left.*row.cell.string).Text();
    const Char* const b = (right.*row.cell.string).Text();
    return a && b ? Text::Equal(a, b) : a == b;
}

bool AppendText(WString& out, const SettingDef& row) {
    switch (row.type) {
    case SettingType::Int:
        return out.AppendNumber(settings.*row.cell.number);
    case SettingType::Colour:
        return AppendColour(out, settings.*row.cell.number);
    case SettingType::String:
        break;
    }
    const Char* const text = (settings.*row.cell.string).Text();
    return !text || out.Append(text);
}

void RunHandler(const SettingDef& row) {
    if (row.onChange) row.onChange();
}

} // namespace

void LoadSettings(const IniFile& file) {
    ApplySettingsFromFile(file);
    static_cast<void>(toolList.Load(file)); // without memory it stays as it was
    // Each handler once, although several rows share the one of the font.
    static constexpr const Char* owners[] = {u"FontName", u"MarginColor", u"BookmarkColor", u"TextBg", u"SelBg"};
    for (const Char* key : owners) RunHandler(*FindSetting(key));
}

void ApplySettingsFromFile(const IniFile& file) {
    ReadDefaultColours(file.FindSection(u"DefaultColours"));
    settings.system = {}; // what is read is the user's
    const IniSection* section = file.FindSection(generalSettings.name);
    ForEachRow([&](const SettingDef& row, uint32_t i) {
        const IniKey* key = section ? section->FindKey(row.key) : nullptr;
        if (key) {
            StoreText(row, key->value.Text(), settings);
        } else {
            StoreDefault(row, i);
        }
    });
    ApplyAdditionalSettings(section);
}

Colour DefaultColour(uint32_t row, const SettingsRecord& record) {
    if (settings.defaults.has[row]) return settings.defaults.colours[row];
    const SettingDef& definition = generalSettings.rows[row];
    return definition.fallback ? record.*definition.fallback : definition.initial.number;
}

bool StoreSettingsToFile(IniFile& file) {
    IniSection stored; // complete before the file is touched
    bool complete = true;
    WString text;
    ForEachRow([&](const SettingDef& row, uint32_t) {
        text.Clear();
        complete = complete && AppendText(text, row) && stored.SetString(row.key, text.Text());
    });
    IniSection* section = file.FindSection(generalSettings.name);
    if (!complete || !StoreAdditionalSettings(section, stored)) return false;
    if (!section) section = file.AddSection(generalSettings.name);
    if (!section) return false;
    section->TakeKeys(stored);
    return true;
}

const SettingDef* FindSetting(const Char* key) {
    for (uint32_t i = 0; i < generalSettings.count; ++i)
        if (Text::EqualNoCase(generalSettings.rows[i].key, key)) return &generalSettings.rows[i];
    return nullptr;
}

bool SettingsChanges::HoldsColour() const {
    bool found = false;
    ForEachRow([&](const SettingDef& row, uint32_t i) { found |= row.type == SettingType::Colour && Holds(i); });
    return found;
}

void SettingsChanges::Add(uint32_t row) {
    ORVANE_ASSERT(row < SettingCount);
    rows |= uint64_t{1} << row;
}

bool SettingsChanges::Holds(uint32_t row) const {
    ORVANE_ASSERT(row < SettingCount);
    return rows >> row & 1;
}

SettingsChanges CompareSettings(const SettingsRecord& before, const SettingsRecord& after) {
    SettingsChanges changes;
    ForEachRow([&](const SettingDef& row, uint32_t i) {
        if (!IsSame(row, before, after)) changes.Add(i);
    });
    return changes;
}

SettingsChanges SetOption(const Char* section, const Char* key, const Char* value) {
    if (section && !Text::EqualNoCase(section, generalSettings.name)) return {};
    const SettingDef* row = FindSetting(key);
    if (!row) {
        SetAdditionalOption(key, value);
        return {};
    }
    SettingsRecord edited = settings;
    StoreText(*row, value, edited);
    const SettingsChanges changes = CompareSettings(settings, edited);
    settings = edited;
    RunHandler(*row);
    return changes;
}

Colour ParseColour(const Char* text) {
    if (text[0] != u'#') return 0;
    uint32_t digits[6];
    for (uint32_t i = 0; i < 6; ++i) {
        if (text[i + 1] == 0) return 0;
        digits[i] = Digit(text[i + 1]);
    }
    return Rgb(digits[0] << 4 | digits[1], digits[2] << 4 | digits[3], digits[4] << 4 | digits[5]);
}

bool AppendColour(WString& out, Colour colour) {
    return Text::AppendFormat(out, u"#%02x%02x%02x", colour & 0xFF, colour >> 8 & 0xFF, colour >> 16 & 0xFF);
}

uint32_t ListDistinctColours(Colour* out, uint32_t capacity) {
    uint32_t count = 0;
    ForEachRow([&](const SettingDef& row, uint32_t) {
        if (row.type != SettingType::Colour || count == capacity) return;
        const Colour colour = settings.*row.cell.number;
        for (uint32_t i = 0; i < count; ++i)
            if (out[i] == colour) return;
        out[count++] = colour;
    });
    return count;
}

void SetFontSize(uint32_t size) {
    settings.FontSize = size;
    RunHandler(*FindSetting(u"FontSize"));
}

SettingsChanges AdoptSettings(const SettingsRecord& edited) {
    const SettingsChanges changes = CompareSettings(settings, edited);
    settings = edited;
    ForEachRow([](const SettingDef& row, uint32_t) { RunHandler(row); });
    return changes;
}

void ReleaseSettings() {
    ForEachRow([](const SettingDef& row, uint32_t) {
        if (row.type == SettingType::String) (settings.*row.cell.string).Set(nullptr);
    });
    settings.defaults = {};
    toolList.Clear();
}

int32_t FontHeight(uint32_t size, uint32_t dpi) {
    const uint64_t pixels = (uint64_t{size} * dpi + 36) / 72;
    return -static_cast<int32_t>(pixels < MaxFontPixels ? pixels : uint64_t{MaxFontPixels});
}
