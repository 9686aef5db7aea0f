#pragma once

#include "base/Types.h"

struct FrameParts;

// The commands of the frame's menu, by number.
class MenuCommands {
public:
    explicit MenuCommands(FrameParts& allParts) : parts(allParts) {}
    MenuCommands(const MenuCommands&) = delete;
    MenuCommands& operator=(const MenuCommands&) = delete;

    // False when no command has the number.
    bool Execute(uint32_t number);
    bool IsEnabled(uint32_t number) const;

private:
    FrameParts& parts;
};
