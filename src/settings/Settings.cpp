#include "settings/Settings.h"

#include "base/Heap.h"
#include "base/Text.h"
#include "settings/IniFile.h"
#include "settings/ToolList.h"

namespace {

// The table's rows refer to cells of the live record; the same cell of another one lies at the same
// distance from its start.
Char*& StringCell(const SettingDef& row, SettingsRecord& record) {
    const ptrdiff_t offset = static_cast<char*>(row.cell) - reinterpret_cast<char*>(&settings);
    return *reinterpret_cast<Char**>(reinterpret_cast<char*>(&record) + offset);
}

uint32_t& NumberCell(const SettingDef& row) { return *static_cast<uint32_t*>(row.cell); }
Char*& LiveString(const SettingDef& row) { return *static_cast<Char**>(row.cell); }

template <class Visitor> void ForEachRow(Visitor visit) {
    for (uint32_t i = 0; i < generalSettings.count; ++i) visit(generalSettings.rows[i]);
}

template <class Visitor> void ForEachString(Visitor visit) {
    ForEachRow([&](const SettingDef& row) {
        if (row.type == SettingType::String) visit(row);
    });
}

Char* CopyText(const Char* text) {
    const size_t length = Text::Length(text);
    Char* copy = Heap::AllocateArray<Char>(length + 1);
    for (size_t i = 0; copy && i < length; ++i) copy[i] = text[i];
    return copy;
}

// Whether a cell of the live record other than `cell` holds `string`.
bool IsLiveElsewhere(const Char* string, const Char* const* cell) {
    bool found = false;
    ForEachString([&](const SettingDef& row) { found |= &LiveString(row) != cell && LiveString(row) == string; });
    return found;
}

uint32_t Digit(Char c) {
    if (Text::IsDigit(c)) return c - u'0';
    const Char folded = Text::FoldCase(c);
    return folded >= u'a' && folded <= u'f' ? folded - u'a' + 10u : 0;
}

void StoreDefault(const SettingDef& row) {
    if (row.type == SettingType::String) {
        ReplaceString(LiveString(row), row.defaultString);
    } else {
        NumberCell(row) = row.fallback ? *row.fallback : row.defaultNumber;
    }
}

void StoreText(const SettingDef& row, const Char* text) {
    if (row.type == SettingType::String) {
        ReplaceString(LiveString(row), text);
    } else {
        const Char* number = text ? text : u"";
        NumberCell(row) = row.type == SettingType::Int ? Text::ParseDecimal(number) : ParseColour(number);
    }
}

bool AppendText(WString& out, const SettingDef& row) {
    switch (row.type) {
    case SettingType::Int:
        return out.AppendNumber(NumberCell(row));
    case SettingType::Colour:
        return AppendColour(out, NumberCell(row));
    default:
        return !LiveString(row) || out.Append(LiveString(row));
    }
}

void RunHandler(const SettingDef& row) {
    if (row.onChange) row.onChange();
}

} // namespace

void LoadSettings(const IniFile& file) {
    ApplySettingsFromFile(file);
    toolList.Load(file);
    // Each handler once, although several rows share the one of the font.
    static constexpr const Char* owners[] = {u"FontName", u"MarginColor", u"BookmarkColor", u"TextBg", u"SelBg"};
    for (const Char* key : owners) RunHandler(*FindSetting(key));
}

void ApplySettingsFromFile(const IniFile& file) {
    const IniSection* section = file.FindSection(generalSettings.name);
    ForEachRow([&](const SettingDef& row) {
        const IniKey* key = section ? section->FindKey(row.key) : nullptr;
        if (key) {
            StoreText(row, key->value.Text());
        } else {
            StoreDefault(row);
        }
    });
}

bool StoreSettingsToFile(IniFile& file) {
    IniSection stored; // complete before the file is touched
    bool complete = true;
    WString text;
    ForEachRow([&](const SettingDef& row) {
        text.Clear();
        complete = complete && AppendText(text, row) && stored.SetString(row.key, text.Text());
    });
    if (!complete) return false;
    IniSection* section = file.FindSection(generalSettings.name);
    if (!section) section = file.AddSection(generalSettings.name);
    if (!section) return false;
    section->TakeKeys(stored);
    return true;
}

const SettingDef* FindSetting(const Char* key) {
    const SettingDef* found = nullptr;
    ForEachRow([&](const SettingDef& row) {
        if (Text::EqualNoCase(row.key, key)) found = &row;
    });
    return found;
}

void SetOption(const Char* section, const Char* key, const Char* value) {
    if (section && !Text::EqualNoCase(section, generalSettings.name)) return;
    const SettingDef* row = FindSetting(key);
    if (!row) return;
    StoreText(*row, value);
    RunHandler(*row);
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
    ForEachRow([&](const SettingDef& row) {
        if (row.type != SettingType::Colour || count == capacity) return;
        for (uint32_t i = 0; i < count; ++i) {
            if (out[i] == NumberCell(row)) return;
        }
        out[count++] = NumberCell(row);
    });
    return count;
}

void SetFontSize(uint32_t size) {
    settings.FontSize = size;
    RunHandler(*FindSetting(u"FontSize"));
}

void CopySettings(SettingsRecord& copy) { copy = settings; }

bool ReplaceString(Char*& cell, const Char* text) {
    Char* old = cell;
    cell = text ? CopyText(text) : nullptr; // before the old one is freed: `text` may lie in it
    if (old && !IsLiveElsewhere(old, &cell)) Heap::Free(old);
    return cell || !text;
}

void AdoptSettings(const SettingsRecord& copy) {
    SettingsRecord adopted = copy;
    ForEachString([&](const SettingDef& row) {
        if (LiveString(row) != StringCell(row, adopted)) Heap::Free(LiveString(row));
    });
    settings = adopted;
    ForEachRow(RunHandler);
}

void DropSettings(SettingsRecord& copy) {
    ForEachString([&](const SettingDef& row) {
        Char*& cell = StringCell(row, copy);
        if (cell != LiveString(row)) Heap::Free(cell);
        cell = nullptr;
    });
}

void ReleaseSettings() {
    ForEachString([](const SettingDef& row) {
        Heap::Free(LiveString(row));
        LiveString(row) = nullptr;
    });
    toolList.Clear();
}

uint32_t TabWidth() {
    if (settings.SpacesPerTab == 0) return 1;
    return settings.SpacesPerTab < MaxTabWidth ? settings.SpacesPerTab : MaxTabWidth;
}

int32_t FontHeight(uint32_t size, uint32_t dpi) {
    const uint64_t pixels = (uint64_t{size} * dpi + 36) / 72;
    return -static_cast<int32_t>(pixels < MaxFontPixels ? pixels : uint64_t{MaxFontPixels});
}
