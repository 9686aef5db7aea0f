#include "binary/HexInput.h"

#include "binary/HexKeys.h"
#include "binary/HexTyping.h"

void HexInput::OnKeyDown(uint32_t key) {
    if (editor.GetBinaryDocument()) HexKeys::Press(editor, key);
}

void HexInput::OnChar(Char character) {
    if (editor.GetBinaryDocument()) HexTyping::Type(editor, character);
}

void HexInput::ExtendSelection(ClientPoint point) {
    const uint64_t offset = editor.PlaceAt(point);
    if (offset != editor.Caret()) editor.MoveCaret(offset, true);
}
