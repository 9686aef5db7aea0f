#include "binary/HexKeys.h"

#include "binary/HexClipboard.h"
#include "binary/HexEditor.h"
#include "binary/HexFind.h"
#include "viewbase/KeyBindings.h"
#include "viewbase/ViewKey.h"

#include <algorithm>

namespace {

constexpr uint32_t RowBytes = HexViewport::BytesPerRow;

// What a key press is about to work on.
struct KeyPress {
    HexEditor& editor;
    bool shift;
    uint64_t caret;
    uint64_t fileSize;

    void Move(uint64_t offset) const { editor.MoveCaret(offset, shift); }
    // The first byte of the caret's row.
    uint64_t RowStart() const { return caret - caret % RowBytes; }
    uint64_t LastByte() const { return fileSize ? fileSize - 1 : 0; }
    uint32_t PageRows() const { return editor.Viewport().Rows().CountOrOne(); }
};

// Up and down by rows, but not beyond the first and the last one; the column is kept where it can be.
void MoveUp(const KeyPress& press, uint64_t rows) {
    press.Move(press.caret - std::min(press.caret / RowBytes, rows) * RowBytes);
}

void MoveDown(const KeyPress& press, uint64_t rows) {
    const uint64_t row = press.caret / RowBytes;
    const uint64_t lastRow = press.LastByte() / RowBytes;
    // After the file's end there may be no row at all.
    if (row >= lastRow) return press.Move(press.caret);
    press.Move(std::min(press.caret + std::min(rows, lastRow - row) * RowBytes, press.LastByte()));
}

void RowEnd(const KeyPress& press) {
    // A caret after a full last row is on a row without bytes.
    if (press.RowStart() >= press.fileSize) return press.Move(press.caret);
    press.Move(std::min(press.RowStart() + RowBytes - 1, press.LastByte()));
}

constexpr KeyBinding<KeyPress> Bindings[] = {
    {ViewKey::PageUp, CtrlKey::Either, [](const KeyPress& press) { MoveUp(press, press.PageRows()); }},
    {ViewKey::PageDown, CtrlKey::Either, [](const KeyPress& press) { MoveDown(press, press.PageRows()); }},
    {ViewKey::End, CtrlKey::Either, RowEnd},
    {ViewKey::Home, CtrlKey::Either, [](const KeyPress& press) { press.Move(press.RowStart()); }},
    {ViewKey::Left, CtrlKey::Either, [](const KeyPress& press) { press.Move(press.caret ? press.caret - 1 : 0); }},
    {ViewKey::Up, CtrlKey::Either, [](const KeyPress& press) { MoveUp(press, 1); }},
    {ViewKey::Right, CtrlKey::Either, [](const KeyPress& press) { press.Move(press.caret + 1); }},
    {ViewKey::Down, CtrlKey::Either, [](const KeyPress& press) { MoveDown(press, 1); }},
    {ViewKey::F3, CtrlKey::Either, [](const KeyPress& press) { HexFind::FindNext(press.editor, press.shift); }},
    {u'A', CtrlKey::Down, [](const KeyPress& press) { press.editor.SelectAll(); }},
    {u'C', CtrlKey::Down, [](const KeyPress& press) { HexClipboard::Copy(press.editor); }},
    {u'F', CtrlKey::Down, [](const KeyPress& press) { press.editor.Surface().ShowFindDialog(); }},
    {u'G', CtrlKey::Down,
     [](const KeyPress& press) {
         if (!press.shift) press.editor.Surface().ShowGoToDialog();
     }},
    {u'V', CtrlKey::Down, [](const KeyPress& press) { HexClipboard::Paste(press.editor); }},
    {u'Y', CtrlKey::Down, DoInDocument<DocumentCommand::Redo>},
    {u'Z', CtrlKey::Down, DoInDocument<DocumentCommand::Undo>},
};

// 1 to 6 on the keypad have the codes of the letters a to f, and count as digits, the keypad's other digits do
// not: docs/oddities.md.
bool IsDigitKey(uint32_t key) {
    return (key >= u'0' && key <= u'9') || (key >= u'A' && key <= u'F') || (key >= u'a' && key <= u'f');
}

} // namespace

void HexKeys::Press(HexEditor& editor, uint32_t key) {
    const EditorSurface& surface = editor.Surface();
    const bool shift = surface.IsShiftDown();
    if (!IsDigitKey(key) || surface.IsCtrlDown() || shift) editor.ToHighNibble();
    if (const auto handle = HandlerOf(Bindings, surface, key))
        handle({editor, shift, editor.Caret(), editor.FileSize()});
}
