#include "view/EditorTyping.h"

#include "base/Surrogates.h"
#include "settings/AdditionalSettings.h"
#include "settings/Settings.h"
#include "view/CaretStops.h"
#include "view/EditorIndent.h"
#include "view/EditorNavigation.h"
#include "view/TextEditor.h"
#include "view/Words.h"

namespace {

// AltGr is Ctrl with Alt, and so are both keys held by hand.
bool IsAltGrDown(const EditorSurface& surface) {
    return additionalSettings.AltGr && surface.IsCtrlDown() && surface.IsAltDown();
}

bool SpansLines(const TextEditor& editor) {
    const TextCaret& caret = editor.Caret();
    return editor.Text().LineOf(caret.SelectionStart()) != editor.Text().LineOf(caret.SelectionEnd());
}

// How many characters a backspace takes at `column`: spaces back to a tab stop, or else a whole character, but of
// combining marks only the last.
uint32_t BackToTabStop(TextSpan line, uint32_t column) {
    const uint32_t single = column - CaretStops::OutsidePair(line, column - 1);
    if (!settings.ReplaceTabs) return single;
    for (uint32_t i = 0; i < column; ++i) {
        if (line.text[i] != u' ') return single;
    }
    const uint32_t beyond = column % TabSize();
    return beyond ? beyond : TabSize();
}

// In one step.
[[nodiscard]] bool TypeOverPair(TextEditor& editor, Char character) {
    TextBuffer& document = *editor.GetTextBuffer();
    const uint32_t column = editor.CaretColumn();
    if (!document.BeginGroup()) return false;
    if (document.DeleteInEditLine(&editor, {column, column + 2}) &&
        document.TypeChar(&editor, character, column, true, false) && document.EndGroup())
        return true;
    document.AbandonGroup();
    return false;
}

// The second half of a pair that is typed overwrites nothing more, and the first half the whole of a pair.
[[nodiscard]] bool TypeAtCaret(TextEditor& editor, Char character) {
    TextBuffer& document = *editor.GetTextBuffer();
    const uint32_t column = editor.CaretColumn();
    const TextSpan line = editor.Text().Line(editor.CaretLine());
    bool overwrites = editor.IsOverwriting();
    if (overwrites && additionalSettings.WholeCharacters) {
        const bool isSecondHalf = column > 0 && Surrogates::IsPair(line.text[column - 1], character);
        if (!isSecondHalf && Surrogates::SplitsPair(line.text, line.length, column + 1))
            return TypeOverPair(editor, character);
        overwrites = !isSecondHalf;
    }
    return document.TypeChar(&editor, character, column, true, overwrites);
}

// Whether it is text, and no key with Ctrl held. With Ctrl held an input method may have been told to commit.
bool IsTyped(const EditorSurface& surface, Char character, TypedBy source) {
    const bool isText = character == u'\r' || character == u'\n' || character == u'\t' || character >= 32;
    if (!isText || source == TypedBy::InputMethod) return isText;
    return !surface.IsCtrlDown() || (character >= 32 && IsAltGrDown(surface));
}

// Whether something can be typed at the caret now.
[[nodiscard]] bool PrepareTyping(TextEditor& editor) {
    if (editor.GetTextBuffer()->IsReadOnly()) return false; // nor scroll to where nothing will be typed
    if (editor.HasSelection() && !editor.DeleteSelection()) return false;
    editor.PrepareEdit();
    return true;
}

// Whether a key that deletes is for the selection, which is deleted then.
bool DeletesSelection(TextEditor& editor, bool word) {
    if (word || !editor.HasSelection()) return false;
    static_cast<void>(editor.DeleteSelection()); // without memory everything stays as it is
    return true;
}

// A tab before the caret counts as a whole tab width, not up to its stop.
// Odd on purpose: docs/oddities.md.
void InsertTabAsSpaces(TextEditor& editor) {
    const uint32_t size = TabSize();
    const TextSpan line = editor.Text().Line(editor.CaretLine());
    uint64_t visual = 0;
    for (uint32_t i = 0; i < editor.CaretColumn() && i < line.length; ++i) visual += line.text[i] == u'\t' ? size : 1;
    for (auto count = static_cast<uint32_t>(size - visual % size); count; --count) {
        // Only the first can fail: it makes room for all of them.
        if (!editor.GetTextBuffer()->TypeChar(&editor, u' ', editor.CaretColumn(), true, false, count)) return;
    }
    editor.GetTextBuffer()->EndTyping();
}

} // namespace

void EditorTyping::Type(TextEditor& editor, Char character, TypedBy source) {
    const EditorSurface& surface = editor.Surface();
    if (!IsTyped(surface, character, source)) return;
    if (character == u'\t' && editor.HasSelection() && SpansLines(editor))
        return EditorIndent::IndentBlock(editor, surface.IsShiftDown());
    if (character == u'\r' && editor.GetTextBuffer()->IsOutput()) return EditorNavigation::OpenNamedFile(editor);
    if (!PrepareTyping(editor)) return;
    if (character == u'\t' && settings.ReplaceTabs) {
        InsertTabAsSpaces(editor);
    } else {
        static_cast<void>(TypeAtCaret(editor, character)); // without memory nothing is typed
    }
}

void EditorTyping::TypePair(TextEditor& editor, Char first, Char second, TypedBy source) {
    if (!IsTyped(editor.Surface(), first, source) || !PrepareTyping(editor)) return;
    TextBuffer& document = *editor.GetTextBuffer();
    if (!document.BeginGroup()) return;
    if (!TypeAtCaret(editor, first) || !TypeAtCaret(editor, second) || !document.EndGroup()) document.AbandonGroup();
}

void EditorTyping::DeleteForward(TextEditor& editor, bool word) {
    if (editor.GetTextBuffer()->IsReadOnly()) return;
    if (DeletesSelection(editor, word)) return;
    const uint32_t column = editor.CaretColumn();
    const TextSpan line = editor.Text().Line(editor.CaretLine());
    const bool atTextEnd = column >= line.length && editor.CaretLine() + 1 >= editor.Text().LineCount();
    if (atTextEnd) return;
    const uint32_t end = word ? Words::EndAfter(line, column) : column + 1;
    const uint32_t count = column < line.length ? CaretStops::AtOrAfter(line, end) - column : 1;
    editor.PrepareEdit();
    // Deleting a word in the edit line leaves a selection where it is; it ends here.
    if (editor.GetTextBuffer()->DeleteInEditLine(&editor, {column, column + count})) editor.PlaceAfterEdit(column);
}

void EditorTyping::DeleteBack(TextEditor& editor, bool word) {
    if (DeletesSelection(editor, word)) return;
    const uint32_t column = editor.CaretColumn();
    const TextSpan line = editor.Text().Line(editor.CaretLine());
    uint32_t count = 1;
    if (column > 0)
        count = word ? column - CaretStops::AtOrBefore(line, Words::StartBefore(line, column))
                     : BackToTabStop(line, column);
    const uint32_t offset = editor.CaretOffset();
    if (offset < count || !editor.GetTextBuffer()->CommitEdit()) return;
    // Without memory everything stays as it is.
    static_cast<void>(editor.GetTextBuffer()->DeleteText({offset - count, offset}));
}
