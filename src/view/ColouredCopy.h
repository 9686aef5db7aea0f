#pragma once

#include "base/WString.h"
#include "document/TextRange.h"
#include "viewbase/EditorSurface.h"

class TextBuffer;

// A stretch of text in the three formats of a coloured copy, for one opening of the clipboard.
class ColouredCopy {
public:
    static constexpr uint32_t ItemCount = 3;

    ColouredCopy() = default;
    ~ColouredCopy();
    ColouredCopy(const ColouredCopy&) = delete;
    ColouredCopy& operator=(const ColouredCopy&) = delete;

    // False without memory. A line that the engine cannot colour cuts the texts short.
    [[nodiscard]] bool Make(TextBuffer& document, TextRange range);
    // In clipboard order: the markup as plain text, RTF, HTML. Bytes include a terminator.
    const ClipboardItem* Items() const { return items; }

private:
    WString html;
    uint8_t* richBytes = nullptr;
    uint8_t* htmlBytes = nullptr;
    ClipboardItem items[ItemCount] = {};
};
