#include "settings/SystemColours.h"

#include "base/Text.h"

namespace {

using Cell = uint32_t SettingsRecord::*;

// The settings that are neither text nor background.
struct Role {
    Cell cell;
    Colour SystemColours::*colour;
};

constexpr Role Roles[] = {
    {&SettingsRecord::SelFg, &SystemColours::selectionText},
    {&SettingsRecord::SelBg, &SystemColours::selectionBackground},
    {&SettingsRecord::BraceMatchFg, &SystemColours::selectionText},
    {&SettingsRecord::BraceMatchBg, &SystemColours::selectionBackground},
    {&SettingsRecord::MarginColor, &SystemColours::background},
    {&SettingsRecord::BookmarkColor, &SystemColours::link},
    {&SettingsRecord::SpaceColor, &SystemColours::faint},
    {&SettingsRecord::GuideColor, &SystemColours::faint},
};

template <class Visitor> void ForEachColour(Visitor visit) {
    for (uint32_t i = 0; i < generalSettings.count; ++i)
        if (generalSettings.rows[i].type == SettingType::Colour) visit(generalSettings.rows[i], i);
}

bool IsBackground(const SettingDef& row) {
    const uint32_t length = Text::Length(row.key);
    return length > 2 && Text::Equal(row.key + length - 2, u"Bg");
}

Colour ColourOf(const SettingDef& row, const SystemColours& colours) {
    for (const Role& role : Roles)
        if (role.cell == row.cell.number) return colours.*role.colour;
    return IsBackground(row) ? colours.background : colours.text;
}

// A colour that was set meanwhile differs from the one put there, and is kept. Fallbacks come first in the table.
void TakeBack() {
    ForEachColour([](const SettingDef& row, uint32_t i) {
        Colour& cell = settings.*row.cell.number;
        if (settings.system.has[i] && cell == settings.system.colours[i]) cell = DefaultColour(i, settings);
    });
}

bool AreDefaults() {
    bool defaults = true;
    ForEachColour([&](const SettingDef& row, uint32_t i) {
        defaults = defaults && settings.*row.cell.number == DefaultColour(i, settings);
    });
    return defaults;
}

void Put(const SystemColours& colours) {
    ForEachColour([&](const SettingDef& row, uint32_t i) {
        settings.system.has[i] = true;
        settings.*row.cell.number = settings.system.colours[i] = ColourOf(row, colours);
    });
}

} // namespace

SettingsChanges ShowSystemColours(const SystemColours* colours) {
    const SettingsRecord before = settings;
    TakeBack();
    settings.system = {};
    if (colours && AreDefaults()) Put(*colours);
    const SettingsChanges changes = CompareSettings(before, settings);
    ForEachColour([&](const SettingDef& row, uint32_t i) {
        if (changes.Holds(i) && row.onChange) row.onChange();
    });
    return changes;
}

OwnColours::OwnColours() : shown(settings) { TakeBack(); }

OwnColours::~OwnColours() {
    ForEachColour([&](const SettingDef& row, uint32_t) { settings.*row.cell.number = shown.*row.cell.number; });
}

// The weights of the eye for red, green and blue.
bool IsDark(Colour background) {
    const uint32_t red = background & 0xFF;
    const uint32_t green = background >> 8 & 0xFF;
    const uint32_t blue = background >> 16 & 0xFF;
    return 299 * red + 587 * green + 114 * blue < 1000 * 128;
}
