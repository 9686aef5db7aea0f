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

// A section with its keys in file order. Duplicate names are kept; every look-up is exact and returns
// the first match.
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
    bool GetStringInto(WString& target, const Char* key) const;
    // The value's leading decimal digits, modulo 2^32; `fallback` when the key is absent.
    uint32_t GetInt(const Char* key, uint32_t fallback) const;
    // Replaces the value in place or appends a new key at the end. False only without memory; the
    // section is then as it was.
    bool SetString(const Char* key, const Char* value);
    bool SetInt(const Char* key, uint32_t value);
    // Takes ownership of `key` and links it after the last one.
    void AppendKey(IniKey* key) { keys.Append(key); }
    // Does for every key of `from` what SetString does, but cannot fail; `from` is empty afterwards.
    void TakeKeys(IniSection& from);
};

// The model of a settings file, and its reader and writer. Keeps every section and key in file order,
// duplicates included; comments and blank lines are not kept.
class IniFile : public HeapObject {
public:
    List<IniSection> sections;

    IniFile() = default;
    ~IniFile() { Clear(); }
    IniFile(const IniFile&) = delete;
    IniFile& operator=(const IniFile&) = delete;

    // Appends what the file holds to the model. False when it cannot be read (model unchanged) or at
    // the first malformed line (what came before it stays).
    bool Load(const Char* path);
    // The same for text already decoded, up to its terminator; `text` is changed in place (line ends
    // become line feeds). Memory running out ends it like a malformed line.
    bool Parse(Char* text);
    // Writes the whole model over the file, UTF-8 without a byte-order mark, CR LF. The file is not
    // touched until all its bytes are ready, nor while another program has it open, be it to read.
    bool Save(const Char* path) const;
    // Appends to `out` the text that Save encodes. False without memory, with `out` as it was.
    bool Serialise(WString& out) const;

    IniSection* FindSection(const Char* name) const;
    // Takes ownership. Sections of the same name may already be there.
    void AppendSection(IniSection* section) { sections.Append(section); }
    // Makes and appends an empty section of that name; null without memory.
    IniSection* AddSection(const Char* name);
    // Destroys every section of that name.
    void RemoveSections(const Char* name);
    void Clear();
};

// Turns CR LF and lone CR into LF in place, up to the terminator. Returns the new length.
uint32_t NormaliseLineEnds(Char* text);

// The line reader of scripts, for text whose line ends are normalised: fills `line` with the text from
// `position` up to the next line feed or the terminator and moves `position` past the line feed.
// False at the end of the text, so a line feed at the very end starts no further line; also false
// without memory, with `position` as it was.
bool NextLine(const Char* text, uint32_t& position, WString& line);
