#include "settings/ToolList.h"

#include "base/Text.h"
#include "settings/IniFile.h"

// Process-wide, like the settings, with which it is loaded and released.
ToolList toolList;

namespace {

constexpr Char ToolSection[] = u"Tool";

bool ReadTool(const IniSection& section, ToolRecord& tool) {
    if (!section.GetStringInto(tool.displayName, u"DisplayName")) return false;
    if (!section.GetStringInto(tool.command, u"Command")) return false;
    if (!section.GetStringInto(tool.startDir, u"StartDir")) return false;
    tool.promptArgs = section.GetInt(u"PromptArgs", 0);
    if (!section.GetStringInto(tool.lastArgs, u"LastArgs")) return false;
    tool.redirectOutput = section.GetInt(u"RedirectOutput", 0);
    tool.hotKey = section.GetInt(u"HotKey", 0);
    tool.hotKeyFlags = section.GetInt(u"HotKeyFlags", 0);
    return true;
}

bool WriteText(IniSection& section, const Char* key, const WString& value) {
    return value.IsEmpty() || section.SetString(key, value.Text());
}

bool WriteNumber(IniSection& section, const Char* key, uint32_t value) {
    return value == 0 || section.SetInt(key, value);
}

bool WriteTool(IniSection& section, const ToolRecord& tool) {
    return section.SetString(u"DisplayName", tool.displayName.Text()) &&
           section.SetString(u"Command", tool.command.Text()) && WriteText(section, u"StartDir", tool.startDir) &&
           WriteText(section, u"LastArgs", tool.lastArgs) && WriteNumber(section, u"PromptArgs", tool.promptArgs) &&
           WriteNumber(section, u"RedirectOutput", tool.redirectOutput) &&
           WriteNumber(section, u"HotKey", tool.hotKey) && WriteNumber(section, u"HotKeyFlags", tool.hotKeyFlags);
}

} // namespace

bool ToolList::Load(const IniFile& file) {
    ToolList read;
    for (const IniSection* section = file.sections.head; section; section = section->next) {
        if (!Text::Equal(section->name.Text(), ToolSection)) continue;
        ToolRecord* tool = new ToolRecord;
        if (!tool) return false;
        const bool complete = ReadTool(*section, *tool);
        if (complete && !tool->command.IsEmpty()) {
            read.tools.Append(tool);
            continue;
        }
        delete tool;
        if (!complete) return false;
    }
    Clear();
    while (ToolRecord* tool = read.tools.TakeHead()) tools.Append(tool);
    return true;
}

bool ToolList::Store(IniFile& file) const {
    IniFile written; // complete before the file is touched
    for (const ToolRecord* tool = tools.head; tool; tool = tool->next) {
        IniSection* section = written.AddSection(ToolSection);
        if (!section || !WriteTool(*section, *tool)) return false;
    }
    file.RemoveSections(ToolSection);
    while (IniSection* section = written.sections.TakeHead()) file.AppendSection(section);
    return true;
}

ToolRecord* ToolList::At(uint32_t index) const {
    ToolRecord* tool = tools.head;
    while (tool && index-- > 0) tool = tool->next;
    return tool;
}

uint32_t ToolList::Count() const {
    uint32_t count = 0;
    for (const ToolRecord* tool = tools.head; tool; tool = tool->next) ++count;
    return count;
}

bool ToolList::Accelerators(Array<ToolAccelerator>& out) const {
    if (!out.Reserve(Count())) return false;
    out.Clear();
    uint32_t command = ToolCommandBase;
    for (const ToolRecord* tool = tools.head; tool && command < SystemCommandBase; tool = tool->next, ++command) {
        if (tool->hotKey == 0) continue;
        out.AppendReserved({static_cast<uint8_t>(HotKeyFlag::Virtual | (tool->hotKeyFlags & 0xFF)),
                            static_cast<uint16_t>(tool->hotKey), static_cast<uint16_t>(command)});
    }
    return true;
}

void ToolList::Clear() {
    while (ToolRecord* tool = tools.TakeHead()) delete tool;
}

ToolRecord* CopyTool(const ToolRecord& tool) {
    ToolRecord* copy = new ToolRecord;
    if (!copy) return nullptr;
    copy->promptArgs = tool.promptArgs;
    copy->redirectOutput = tool.redirectOutput;
    copy->hotKey = tool.hotKey;
    copy->hotKeyFlags = tool.hotKeyFlags;
    if (copy->displayName.Assign(tool.displayName) && copy->command.Assign(tool.command) &&
        copy->startDir.Assign(tool.startDir) && copy->lastArgs.Assign(tool.lastArgs)) {
        return copy;
    }
    delete copy;
    return nullptr;
}
