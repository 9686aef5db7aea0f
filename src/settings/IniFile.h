#pragma once

#include "settings/IniSection.h"

class SafeSaver;

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
    // the first malformed line or terminator inside (what came before it stays).
    [[nodiscard]] bool Load(const Char* path);
    // The same for text already decoded, up to its terminator; `text` is changed in place (line ends
    // become line feeds). Memory running out ends it like a malformed line.
    [[nodiscard]] bool Parse(Char* text);
    // The line, counted from 1, of what has ended the last Load or Parse early; 0 when it came to the end.
    uint32_t StoppedLine() const { return stoppedLine; }
    // Writes the whole model over the file, UTF-8 without a byte-order mark, CR LF, as SafeSaver does; what it
    // replaces is kept. The file is not touched while another program has it open, even for reading.
    [[nodiscard]] bool Save(SafeSaver& saver, const Char* path) const;
    // Appends to `out` the text that Save encodes. False without memory, with `out` as it was.
    [[nodiscard]] bool Serialise(WString& out) const;

    IniSection* FindSection(const Char* name) const;
    // Takes ownership. Sections of the same name may already be there.
    void AppendSection(IniSection* section) { sections.Append(section); }
    // Makes and appends an empty section of that name; null without memory.
    IniSection* AddSection(const Char* name);
    // Destroys every section of that name.
    void RemoveSections(const Char* name);
    void Clear();

private:
    uint32_t stoppedLine = 0;
};
