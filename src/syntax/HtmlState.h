#pragma once

#include "base/Types.h"

// The values of a line's state; below ScriptContent they are also the kinds of runs. They are numbers, as
// the states of inner engines are added to them.
namespace HtmlState {
constexpr uint32_t Between = 0; // text between tags
constexpr uint32_t Tag = 6;
constexpr uint32_t Attribute = 7;
constexpr uint32_t Value = 8;
constexpr uint32_t SingleQuoted = 9;
constexpr uint32_t DoubleQuoted = 10;
constexpr uint32_t Comment = 11;
constexpr uint32_t Punctuation = 12; // only the kind of a run
constexpr uint32_t ScriptTag = 13;
constexpr uint32_t ScriptContent = 14; // plus the script engine's own state
constexpr uint32_t PhpContent = 16;    // plus the php engine's own state
constexpr uint32_t Count = 18;
} // namespace HtmlState
