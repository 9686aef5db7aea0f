// Find and replace in a TextEditor.

#include "base/Scan.h"
#include "base/Text.h"
#include "view/EditorActions.h"
#include "view/MatchList.h"
#include "view/TextEditor.h"
#include "view/Words.h"
#include "viewbase/FindState.h"
#include "viewbase/HostCalls.h"
#include "viewbase/LongOperation.h"

bool TextEditor::TakeSearchTextFromSelection() {
    if (!HasSelection() || !document->CommitEdit()) return true;
    const Char* text = document->Content() + SelectionStart();
    const uint32_t length = SelectionEnd() - SelectionStart();
    if (Scan::FindLineFeed(text, length) < length) return true;
    return !findState.searchText.Assign(text, length);
}

void EditorActions::ShowFind(TextEditor& editor) {
    editor.TakeSearchTextFromSelection();
    editor.Surface().ShowFindDialog();
}

void EditorActions::ShowReplace(TextEditor& editor) {
    editor.OwnSurface().ShowReplaceDialog(editor.TakeSearchTextFromSelection());
}

void EditorActions::QuickSearch(TextEditor& editor, bool backward) {
    if (editor.TakeSearchTextFromSelection()) {
        uint32_t start = 0;
        uint32_t end = 0;
        const TextSpan line = editor.CaretLineText();
        Words::WordAt(line, editor.CaretColumn(), start, end);
        if (start == end || !findState.searchText.Assign(line.text + start, end - start)) return;
    }
    editor.FindNext(backward);
}

bool TextEditor::FindNext(bool backward) {
    if (!document) return false;
    HostCalls::ShowStatus(surface, nullptr);
    SearchHit hit;
    bool success = false;
    // A NUL ends what is compared, and a text never holds one: such a pattern stands nowhere.
    const WString& wanted = findState.searchText;
    const bool searchable = !wanted.IsEmpty() && Text::Length(wanted.Text()) == wanted.Length();
    {
        LongOperation progress(surface);
        const uint32_t from = backward ? SelectionStart() : SelectionEnd();
        success = searchable && findState.searchHistory.Add(wanted) &&
                  document->FindText({wanted.Text(), wanted.Length(), findState.matchCase, findState.wholeWord}, from,
                                     TextLength(), backward, hit, &progress);
    }
    if (!success) {
        HostCalls::SearchFailed(surface);
        return false;
    }
    SelectRange(hit.offset, hit.offset + findState.searchHistory.Newest().Length());
    if (hit.wrapped) HostCalls::ShowStatus(surface, u"Passed end of file");
    return true;
}

bool TextEditor::ReplaceSelection(const Char* text, uint32_t length) {
    if (!document || document->IsReadOnly() || !HasSelection() || !document->BeginGroup()) return false;
    const uint32_t start = SelectionStart();
    if (DeleteSelection() && document->InsertText(start, text, length) && document->EndGroup()) return true;
    document->AbandonGroup();
    return false;
}

bool TextEditor::ReplaceAll(const Char* replacement, uint32_t length, bool inSelection) {
    if (!document || !document->CommitEdit() || !document->Content()) return false;
    const uint32_t start = inSelection ? SelectionStart() : 0;
    const uint32_t end = inSelection ? SelectionEnd() : document->Length();
    MatchList matches;
    MatchResult result = MatchResult::Done;
    if (findState.searchHistory.Count() && !document->IsReadOnly()) {
        LongOperation progress(surface);
        const WString& pattern = findState.searchHistory.Newest();
        result = matches.Gather(*document, {pattern.Text(), pattern.Length(), findState.matchCase, findState.wholeWord},
                                start, end, replacement, length, progress);
    }
    const auto count = static_cast<uint32_t>(matches.changes.Count());
    const uint64_t newEnd = end - matches.Removed() + uint64_t{length} * count;
    const bool fits = result != MatchResult::Done || document->Length() - end + newEnd < None32;
    const bool done =
        result == MatchResult::Done && fits && document->ReplaceRanges(matches.changes, replacement, length);
    if (!fits) {
        HostCalls::Warn(surface, u"The text would become too long");
    } else if (!done && result != MatchResult::Cancelled) {
        HostCalls::Warn(surface, u"Not enough memory");
    }
    if (done && inSelection) SelectRange(start, static_cast<uint32_t>(newEnd));
    WString message;
    // Odd on purpose: docs/oddities.md.
    if (Text::AppendFormat(message, u"%u occurences replaced", done ? count : 0))
        HostCalls::ShowStatus(surface, message.Text());
    return done;
}
