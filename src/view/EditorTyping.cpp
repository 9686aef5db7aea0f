// Characters typed into a TextEditor, and single deletions.

#include "base/Text.h"
#include "settings/Settings.h"
#include "view/EditorActions.h"
#include "view/FilePosition.h"
#include "view/TextEditor.h"
#include "view/Words.h"

namespace {

bool SpansLines(const TextEditor& editor) {
    uint32_t first = 0;
    uint32_t last = 0;
    uint32_t column = 0;
    editor.OffsetToLineColumn(editor.SelectionStart(), first, column);
    editor.OffsetToLineColumn(editor.SelectionEnd(), last, column);
    return first != last;
}

// How many spaces a backspace takes at `column`.
uint32_t BackToTabStop(TextSpan line, uint32_t column) {
    if (!settings.ReplaceTabs) return 1;
    for (uint32_t i = 0; i < column; ++i) {
        if (line.text[i] != u' ') return 1;
    }
    const uint32_t beyond = column % TabSize();
    return beyond ? beyond : TabSize();
}

} // namespace

void TextEditor::OnChar(Char character) {
    const bool accepted = character == u'\r' || character == u'\n' || character == u'\t' || character >= 32;
    if (!document || !accepted || surface.IsCtrlDown()) return;
    if (character == u'\t' && HasSelection() && SpansLines(*this))
        return EditorActions::IndentBlock(*this, surface.IsShiftDown());
    if (character == u'\r' && document->IsOutput()) return EditorActions::OpenNamedFile(*this);
    if (HasSelection() && !DeleteSelection()) return;
    PrepareEdit();
    if (character == u'\t' && settings.ReplaceTabs) {
        InsertTabAsSpaces();
    } else {
        document->TypeChar(this, character, caretColumn, true, overwrite);
    }
}

void TextEditor::PrepareEdit() {
    const auto rows = static_cast<uint32_t>(visibleLines > 0 ? visibleLines : 1);
    if (caretLine < topLine || caretLine - topLine >= rows) UpdateCaret(true);
    OpenCaretLine();
}

// A tab before the caret counts as a whole tab width, not up to its stop.
// Odd on purpose: docs/oddities.md.
bool TextEditor::InsertTabAsSpaces() {
    const uint32_t size = TabSize();
    const TextSpan line = CaretLineText();
    uint64_t visual = 0;
    for (uint32_t i = 0; i < caretColumn && i < line.length; ++i) visual += line.text[i] == u'\t' ? size : 1;
    for (uint64_t count = size - visual % size; count; --count) {
        if (!document->TypeChar(this, u' ', caretColumn, true, false)) return false;
    }
    document->EndTyping();
    return true;
}

void EditorActions::DeleteForward(TextEditor& editor, bool word) {
    if (!word && editor.HasSelection()) {
        editor.DeleteSelection();
        return;
    }
    const uint32_t column = editor.CaretColumn();
    const TextSpan line = editor.CaretLineText();
    const uint32_t count = word && column < line.length ? Words::EndAfter(line, column) - column : 1;
    editor.PrepareEdit();
    editor.GetTextBuffer()->DeleteInEditLine(&editor, column, count);
    editor.MoveCaret(editor.CaretLine(), column, false);
}

void EditorActions::DeleteBack(TextEditor& editor, bool word) {
    if (!word && editor.HasSelection()) {
        editor.DeleteSelection();
        return;
    }
    const uint32_t column = editor.CaretColumn();
    const TextSpan line = editor.CaretLineText();
    uint32_t count = 1;
    if (column > 0) count = word ? column - Words::StartBefore(line, column) : BackToTabStop(line, column);
    const uint32_t offset = editor.CaretOffset();
    if (offset < count || !editor.GetTextBuffer()->CommitEdit()) return;
    editor.GetTextBuffer()->DeleteText(offset - count, count);
}

void EditorActions::OpenNamedFile(TextEditor& editor) {
    ViewHost* host = editor.Surface().Host();
    FilePosition position;
    if (host && position.Parse(editor.CaretLineText())) host->OpenFileAtLine(position.path.Text(), position.line);
}
