#include "binary/HexTyping.h"

#include "binary/HexEditor.h"
#include "binary/HexPattern.h"

void HexTyping::Type(HexEditor& editor, Char character) {
    BinaryDocument& document = *editor.GetBinaryDocument();
    const uint32_t value = HexPattern::DigitValue(character);
    if (value > 15) return;
    if (document.IsReadOnly()) return editor.ReportReadOnly();
    const uint64_t caret = editor.Caret();
    if (caret >= editor.FileSize()) return;
    const bool lowNibble = editor.IsOnLowNibble();
    uint32_t count = 0;
    const uint8_t* old = editor.Page().BytesAt(document, caret, count);
    if (count == 0) return editor.ReportEditFailure();
    const auto byte = static_cast<uint8_t>(lowNibble ? (*old & 0xF0) | value : (*old & 0x0F) | value << 4);
    const HexViewState state = {{caret, lowNibble}, {lowNibble ? caret + 1 : caret, !lowNibble}};
    if (!document.EditBytes(caret, &byte, 1, &editor, state)) editor.ReportEditFailure();
}
