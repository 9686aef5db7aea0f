#include "binary/HexInput.h"

#include "binary/HexKeys.h"
#include "binary/HexTyping.h"

void HexInput::OnKeyDown(uint32_t key) {
    if (editor.GetBinaryDocument()) HexKeys::Press(editor, key);
}

void HexInput::OnChar(Char character) {
    if (editor.GetBinaryDocument()) HexTyping::Type(editor, character);
}

void HexInput::OnScroll(ScrollAxis axis, ScrollRequest request, int32_t trackPosition) {
    if (!editor.GetBinaryDocument() || axis != ScrollAxis::Vertical) return;
    HexViewport& viewport = editor.Viewport();
    viewport.ScrollTo(viewport.Scrolled().After(request, 1, trackPosition));
    editor.UpdateCaret(false);
}

void HexInput::OnWheel(const WheelTurn& turn) {
    const int64_t rows = wheel.Turn(turn, editor.Surface().Host());
    if (rows == 0 || !editor.GetBinaryDocument()) return;
    editor.Viewport().ScrollTo(editor.Viewport().Scrolled().Moved(rows));
    editor.UpdateCaret(false);
}

bool HexInput::BeginSelection(ClientPoint point, bool extend) {
    if (!editor.GetBinaryDocument()) return false;
    editor.Surface().TakeFocus();
    editor.CollapseSelection();
    editor.MoveTo(editor.OffsetAt(point), extend);
    return true;
}

void HexInput::ExtendSelection(ClientPoint point) {
    const uint64_t offset = editor.OffsetAt(point);
    if (offset != editor.Caret()) editor.MoveTo(offset, true);
}
