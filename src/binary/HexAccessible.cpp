#include "binary/HexAccessible.h"

#include "base/WString.h"
#include "binary/HexEditor.h"
#include "binary/HexText.h"

#include <algorithm>

namespace {

constexpr uint32_t PerRow = HexViewport::BytesPerRow;
using HexText::PerByte; // the blank comes first

} // namespace

const Document* HexAccessible::ShownDocument() const { return editor.GetDocument(); }

// What the file does not deliver is left out, as on the screen.
bool HexAccessible::AppendValue(WString& out) {
    BinaryDocument* document = editor.GetBinaryDocument();
    if (!document) return true;
    const uint64_t row = editor.Caret() / PerRow * PerRow;
    uint32_t count = 0;
    const uint8_t* bytes = editor.Page().BytesAt(*document, row, count);
    count = row < editor.FileSize() ? std::min(count, PerRow) : 0;
    Char digits[PerRow * PerByte];
    Char characters[PerRow];
    for (uint32_t i = 0; i < count; ++i) {
        Char* const at = digits + size_t{i} * PerByte;
        at[0] = u' ';
        HexText::PutDigits(at + 1, bytes[i], 2);
        characters[i] = HexText::ShownAs(bytes[i]);
    }
    WString value;
    if (!HexText::AppendOffset(value, row)) return false;
    if (count > 0 && !(value.AppendChar(u' ') && value.Append(digits, int64_t{count} * PerByte) &&
                       value.Append(u"  ") && value.Append(characters, count)))
        return false;
    return out.Append(value);
}

bool HexAccessible::IsReadOnly() const {
    const BinaryDocument* document = editor.GetBinaryDocument();
    return !document || document->IsReadOnly();
}

AccessibleState HexAccessible::State() const {
    // Both nibbles of a byte are places of their own.
    const uint64_t nibble = editor.IsOnLowNibble() ? 1 : 0;
    return {editor.Anchor() * 2, editor.Caret() * 2 + nibble, editor.Caret() / PerRow, editor.ChangeCount(), NameSum()};
}
