#pragma once

#include "base/Types.h"

// What a change of the settings makes necessary.
enum class SettingsEffect : uint32_t {
    Layout = 1, // views are laid out and painted again
    Engine = 2, // syntax engines are chosen again as well
};
