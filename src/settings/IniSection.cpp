#include "settings/IniSection.h"

#include "base/Text.h"

#include <utility>

namespace {

IniKey* MakeKey(const Char* name, const Char* value) {
    IniKey* key = new IniKey;
    if (key && key->name.Assign(name) && key->value.Assign(value)) return key;
    delete key;
    return nullptr;
}

} // namespace

IniSection::~IniSection() {
    while (IniKey* key = keys.TakeHead()) delete key;
}

IniKey* IniSection::FindKey(const Char* key) const {
    IniKey* found = keys.head;
    while (found && !Text::Equal(found->name.Text(), key)) found = found->next;
    return found;
}

const Char* IniSection::GetString(const Char* key, const Char* fallback) const {
    const IniKey* found = FindKey(key);
    return found ? found->value.Text() : fallback;
}

bool IniSection::GetStringInto(WString& target, const Char* key) const { return target.Assign(GetString(key, u"")); }

uint32_t IniSection::GetInt(const Char* key, uint32_t fallback) const {
    const IniKey* found = FindKey(key);
    return found ? Text::ParseDecimal(found->value.Text()) : fallback;
}

bool IniSection::SetString(const Char* key, const Char* value) {
    if (IniKey* found = FindKey(key)) return found->value.Assign(value);
    IniKey* made = MakeKey(key, value);
    if (!made) return false;
    AppendKey(made);
    return true;
}

bool IniSection::SetInt(const Char* key, uint32_t value) {
    WString digits;
    return digits.AppendNumber(value) && SetString(key, digits.Text());
}

void IniSection::TakeKeys(IniSection& from) {
    while (IniKey* key = from.keys.TakeHead()) {
        IniKey* found = FindKey(key->name.Text());
        if (found) {
            found->value = std::move(key->value);
            delete key;
        } else {
            AppendKey(key);
        }
    }
}
