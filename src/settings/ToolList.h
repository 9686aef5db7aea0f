#pragma once

#include "base/Array.h"
#include "base/Heap.h"
#include "base/List.h"
#include "base/WString.h"

class IniFile;

// Accelerator modifier bits, the system's own values.
namespace HotKeyFlag {
constexpr uint32_t Virtual = 1;
constexpr uint32_t Shift = 4;
constexpr uint32_t Ctrl = 8;
constexpr uint32_t Alt = 16;
} // namespace HotKeyFlag

// Command number of the first tool; tool i is ToolCommandBase + i.
constexpr uint32_t ToolCommandBase = 46000;

// From here on command numbers are those of the system, in its own menu of each window. It takes an
// accelerator with the number of such an item for that item, and so would close the window.
constexpr uint32_t SystemCommandBase = 0xF000;

// One external tool.
struct ToolRecord : HeapObject {
    WString displayName;
    WString command;
    WString startDir;
    WString lastArgs;
    uint32_t promptArgs = 0;
    uint32_t redirectOutput = 0;
    uint32_t hotKey = 0;      // virtual-key code, 0 for none
    uint32_t hotKeyFlags = 0; // HotKeyFlag bits
    ToolRecord* next = nullptr;
    ToolRecord* previous = nullptr;
};

// One entry of the tools' accelerator table.
struct ToolAccelerator {
    uint8_t flags; // HotKeyFlag::Virtual plus the low byte of hotKeyFlags
    uint16_t key;
    uint16_t command;
};

// The external tools, in file order.
class ToolList {
public:
    List<ToolRecord> tools;

    ToolList() = default;
    ~ToolList() { Clear(); }
    ToolList(const ToolList&) = delete;
    ToolList& operator=(const ToolList&) = delete;

    // Replaces the list by the Tool sections of `file` whose command is not empty. False without
    // memory, with the list as it was.
    [[nodiscard]] bool Load(const IniFile& file);
    // Removes every Tool section of `file` and appends one for each tool. False without memory, with
    // the file as it was.
    [[nodiscard]] bool Store(IniFile& file) const;
    // The tool at a 0-based position; null beyond the end.
    ToolRecord* At(uint32_t index) const;
    uint32_t Count() const;
    // Replaces `out` by one entry for each tool that has a hot key and a command number below
    // SystemCommandBase. False without memory, with `out` as it was.
    [[nodiscard]] bool Accelerators(Array<ToolAccelerator>& out) const;
    void Clear();
};

// The process-wide list, loaded by LoadSettings.
extern ToolList toolList;

// Makes an unlinked copy of `tool`; null without memory.
ToolRecord* CopyTool(const ToolRecord& tool);
