#include "view/EditorClipboard.h"

#include "base/Scan.h"
#include "settings/Settings.h"
#include "view/ColouredCopy.h"
#include "view/TextEditor.h"
#include "viewbase/SuspendedRedraw.h"

namespace {

// Appends the characters in `range` of a text with each line feed as CR LF.
bool AppendWithLineBreaks(WString& out, const Char* text, TextRange range) {
    const uint64_t count = uint64_t{range.Length()} + Scan::CountLineFeeds(text + range.start, range.Length());
    if (count > WString::MaxCharacters || !out.Reserve(static_cast<uint32_t>(count))) return false;
    uint32_t from = range.start;
    while (from < range.end) {
        const auto feed = from + static_cast<uint32_t>(Scan::FindLineFeed(text + from, range.end - from));
        if (!out.Append(text + from, feed - from)) return false;
        if (feed < range.end && !out.Append(u"\r\n", 2)) return false;
        from = feed + 1;
    }
    return true;
}

void CopyRange(TextEditor& editor, TextRange range, bool wholeLine) {
    WString text;
    if (!AppendWithLineBreaks(text, editor.GetTextBuffer()->Content(), range)) return;
    const size_t bytes = (size_t(text.Length()) + 1) * sizeof(Char);
    const ClipboardItem items[] = {{ClipboardFormat::UnicodeText, text.Text(), bytes},
                                   {ClipboardFormat::WholeLine, text.Text(), bytes}};
    editor.Surface().WriteClipboard(items, wholeLine ? 2 : 1);
}

// The caret line with its line feed.
TextRange CaretLineRange(const TextEditor& editor) {
    const uint32_t start = editor.Text().LineStart(editor.CaretLine());
    const uint32_t end = start + editor.Text().Line(editor.CaretLine()).length;
    return {start, end < editor.Text().Length() ? end + 1 : end};
}

// All of a paste but its undo group. `text` has line feeds only.
[[nodiscard]] bool InsertPasted(TextEditor& editor, const WString& text, uint32_t lines, bool wholeLine) {
    TextBuffer& document = *editor.GetTextBuffer();
    const uint32_t offset = editor.CaretOffset();
    const uint32_t length = text.Length();
    if (wholeLine) {
        if (!document.InsertText(editor.Text().LineStart(editor.CaretLine()), text.Text(), length)) return false;
        // An insertion takes the caret along to its end; here it stays at its character.
        editor.MoveCaretToOffset(offset + length, false);
        return true;
    }
    if (!document.InsertText(offset, text.Text(), length)) return false;
    const bool keep = (settings.PasteKeepSelection != 0) != editor.Surface().IsShiftDown();
    if (lines >= 2 && keep) editor.SelectRange({offset, offset + length});
    return true;
}

} // namespace

void EditorClipboard::Copy(TextEditor& editor) {
    TextBuffer& document = *editor.GetTextBuffer();
    if (!document.CommitEdit() || !document.Content()) return;
    const bool wholeLine = !editor.HasSelection();
    CopyRange(editor, wholeLine ? CaretLineRange(editor) : editor.Caret().Selection().Range(), wholeLine);
}

void EditorClipboard::Cut(TextEditor& editor) {
    if (editor.GetTextBuffer()->IsReadOnly()) return Copy(editor);
    if (editor.HasSelection()) {
        Copy(editor);
        static_cast<void>(editor.DeleteSelection()); // without memory it was copied only, here and below
        return;
    }
    TextBuffer& document = *editor.GetTextBuffer();
    if (!document.CommitEdit() || !document.Content()) return;
    const TextRange line = CaretLineRange(editor);
    if (line.Length() == 0) return CopyRange(editor, line, true); // nothing to move, select or repaint for
    const SuspendedRedraw suspended(editor);
    editor.SelectRange({line.start, line.end});
    CopyRange(editor, line, true);
    static_cast<void>(editor.DeleteSelection());
}

void EditorClipboard::Paste(TextEditor& editor) {
    TextBuffer& document = *editor.GetTextBuffer();
    WString text;
    bool wholeLine = false;
    if (document.IsReadOnly() || !editor.Surface().ReadClipboard(text, wholeLine)) return;
    uint32_t lines = 1;
    LineEnding style = LineEnding::None;
    if (!text.IsEmpty()) text.Truncate(NormaliseLineBreaks(text.Data(), lines, style));

    const bool replaces = editor.HasSelection();
    if (!replaces) {
        static_cast<void>(InsertPasted(editor, text, lines, wholeLine)); // without memory nothing is pasted
        return;
    }
    if (!document.BeginGroup()) return;
    // Without memory for the new text the old one comes back.
    if (!editor.DeleteSelection() || !InsertPasted(editor, text, lines, wholeLine) || !document.EndGroup())
        document.AbandonGroup();
}

void EditorClipboard::CopyColoured(TextEditor& editor) {
    TextBuffer& document = *editor.GetTextBuffer();
    if (!editor.HasSelection() || !document.CommitEdit()) return;
    ColouredCopy copy;
    if (!copy.Make(document, editor.Caret().Selection().Range())) return;
    editor.Surface().WriteClipboard(copy.Items(), ColouredCopy::ItemCount);
}
