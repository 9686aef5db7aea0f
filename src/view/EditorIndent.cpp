#include "view/EditorIndent.h"

#include "base/Array.h"
#include "base/Scan.h"
#include "base/Text.h"
#include "settings/Settings.h"
#include "view/TextEditor.h"
#include "viewbase/SuspendedRedraw.h"

namespace {

uint32_t CountBlanks(TextSpan line) {
    uint32_t count = 0;
    while (count < line.length && Text::IsBlank(line.text[count])) ++count;
    return count;
}

// What unindenting takes from a line that starts with `blanks` blanks: up to and including the first tab,
// but no more than a tab's width.
uint32_t CountRemoved(const Char* line, uint32_t blanks) {
    const uint32_t most = blanks < TabSize() ? blanks : TabSize();
    for (uint32_t i = 0; i < most; ++i) {
        if (line[i] == u'\t') return i + 1;
    }
    return most;
}

// The changes of the lines that start in `lines` of the text. False without memory.
bool GatherLines(const TextBuffer& document, TextRange lines, bool unindent, Array<ReplacedRange>& changes) {
    const Char* text = document.Content();
    for (uint32_t start = lines.start; start < lines.end;) {
        const uint32_t rest = lines.end - start;
        const auto feed = static_cast<uint32_t>(Scan::FindLineFeed(text + start, rest));
        const uint32_t blanks = CountBlanks({text + start, feed});
        const uint32_t removed = unindent ? CountRemoved(text + start, blanks) : 0;
        // Blank lines are not indented.
        const bool changed = unindent ? removed > 0 : blanks < feed;
        if (changed && !changes.Append({start, removed})) return false;
        start += feed + 1;
    }
    return true;
}

bool MakeUnit(WString& unit) {
    if (!settings.ReplaceTabs) return unit.AppendChar(u'\t');
    for (uint32_t i = 0; i < TabSize(); ++i) {
        if (!unit.AppendChar(u' ')) return false;
    }
    return true;
}

} // namespace

void EditorIndent::IndentBlock(TextEditor& editor, bool unindent) {
    TextBuffer& document = *editor.GetTextBuffer();
    if (document.IsReadOnly() || !document.CommitEdit()) return;
    uint32_t start = 0;
    uint32_t lastLine = 0;
    document.OffsetToLine(editor.Caret().SelectionStart(), start);
    const uint32_t end = editor.Caret().SelectionEnd();
    document.OffsetToLine(end, lastLine);

    Array<ReplacedRange> changes;
    WString unit;
    if (!GatherLines(document, {start, lastLine}, unindent, changes) || (!unindent && !MakeUnit(unit))) return;
    if (changes.IsEmpty()) return;
    uint32_t newEnd = end + static_cast<uint32_t>(changes.Count()) * unit.Length();
    for (size_t i = 0; i < changes.Count(); ++i) newEnd -= changes[i].removed;
    const SuspendedRedraw suspended(editor);
    if (document.ReplaceRanges(changes, unit.Text(), unit.Length())) editor.SelectRange({start, newEnd});
}
