#pragma once

#include "base/Heap.h"
#include "base/List.h"
#include "base/WString.h"

struct IniKey : HeapObject {
    WString name;
    WString value;
    IniKey* next = nullptr;
    IniKey* previous = nullptr;
};

// A section with its keys in file order. Duplicate names are kept; every lookup is exact and returns the first match.
class IniSection : public HeapObject {
public:
    WString name;
    IniSection* next = nullptr;
    IniSection* previous = nullptr;
    List<IniKey> keys;

    IniSection() = default;
    ~IniSection();
    IniSection(const IniSection&) = delete;
    IniSection& operator=(const IniSection&) = delete;

    IniKey* FindKey(const Char* key) const;
    // The first matching key's value, else `fallback` itself. Valid until the section changes.
    const Char* GetString(const Char* key, const Char* fallback) const;
    // Copies the value into `target`; an absent key yields the empty string. False without memory,
    // with `target` as it was.
    [[nodiscard]] bool GetStringInto(WString& target, const Char* key) const;
    // The value's leading decimal digits, modulo 2^32; `fallback` when the key is absent.
    uint32_t GetInt(const Char* key, uint32_t fallback) const;
    // Replaces the value in place or appends a new key at the end. False only without memory; the
    // section is then as it was.
    [[nodiscard]] bool SetString(const Char* key, const Char* value);
    [[nodiscard]] bool SetInt(const Char* key, uint32_t value);
    // Takes ownership of `key` and links it after the last one.
    void AppendKey(IniKey* key) { keys.Append(key); }
    // Does for every key of `from` what SetString does, but cannot fail; `from` is empty afterwards.
    void TakeKeys(IniSection& from);
};
