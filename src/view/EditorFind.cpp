#include "view/EditorFind.h"

#include "base/Scan.h"
#include "base/Text.h"
#include "base/TextFormat.h"
#include "view/MatchList.h"
#include "view/TextEditor.h"
#include "view/Words.h"
#include "viewbase/FindState.h"
#include "viewbase/HostCalls.h"
#include "viewbase/LongOperation.h"

bool EditorFind::TakeTextFromSelection(TextEditor& editor) {
    const TextCaret& caret = editor.Caret();
    TextBuffer* document = editor.GetTextBuffer();
    if (!caret.HasSelection() || !document->CommitEdit()) return false;
    const Char* text = document->Content() + caret.SelectionStart();
    const uint32_t length = caret.SelectionEnd() - caret.SelectionStart();
    return Scan::FindLineFeed(text, length) == length && findState.searchText.Assign(text, length);
}

void EditorFind::ShowFind(TextEditor& editor) {
    TakeTextFromSelection(editor);
    editor.Surface().ShowFindDialog();
}

void EditorFind::ShowReplace(TextEditor& editor) {
    editor.GetTextSurface().ShowReplaceDialog(!TakeTextFromSelection(editor));
}

void EditorFind::QuickSearch(TextEditor& editor, bool backward) {
    if (!TakeTextFromSelection(editor)) {
        const TextSpan line = editor.Text().Line(editor.CaretLine());
        const ColumnRange word = Words::WordAt(line, editor.CaretColumn());
        if (word.IsEmpty() || !findState.searchText.Assign(line.text + word.start, word.Length())) return;
    }
    FindNext(editor, backward);
}

bool EditorFind::FindNext(TextEditor& editor, bool backward) {
    TextBuffer* document = editor.GetTextBuffer();
    if (!document) return false;
    EditorSurface& surface = editor.Surface();
    HostCalls::ShowStatus(surface, nullptr);
    SearchHit hit;
    bool success = false;
    // A NUL ends what is compared, and a text never holds one: so such a pattern never matches.
    const WString& wanted = findState.searchText;
    const bool searchable = !wanted.IsEmpty() && Text::Length(wanted.Text()) == wanted.Length();
    {
        LongOperation progress(surface); // gone before a message is shown: it owns the cursor and the status bar
        const TextCaret& caret = editor.Caret();
        const uint32_t from = backward ? caret.SelectionStart() : caret.SelectionEnd();
        // The length is that of the text as it is shown: the store's, once FindText has committed.
        success = searchable && findState.searchHistory.Add(wanted) &&
                  document->FindText({wanted.Text(), wanted.Length(), findState.matchCase, findState.wholeWord},
                                     {from, editor.Text().Length(), backward}, hit, &progress);
    }
    if (!success) {
        HostCalls::SearchFailed(surface);
        return false;
    }
    editor.SelectRange({hit.offset, hit.offset + findState.searchHistory.Newest().Length()});
    HostCalls::SearchSucceeded(surface, hit.wrapped);
    return true;
}

bool EditorFind::ReplaceSelection(TextEditor& editor, const Char* text, uint32_t length) {
    TextBuffer* document = editor.GetTextBuffer();
    if (!document || document->IsReadOnly() || !editor.HasSelection() || !document->BeginGroup()) return false;
    const uint32_t start = editor.Caret().SelectionStart();
    if (editor.DeleteSelection() && document->InsertText(start, text, length) && document->EndGroup()) return true;
    document->AbandonGroup();
    return false;
}

bool EditorFind::ReplaceAll(TextEditor& editor, const Char* replacement, uint32_t length, bool inSelection) {
    TextBuffer* document = editor.GetTextBuffer();
    if (!document || !document->CommitEdit() || !document->Content()) return false;
    EditorSurface& surface = editor.Surface();
    const uint32_t start = inSelection ? editor.Caret().SelectionStart() : 0;
    const uint32_t end = inSelection ? editor.Caret().SelectionEnd() : document->Length();
    MatchList matches;
    MatchResult result = MatchResult::Done;
    if (findState.searchHistory.Count() && !document->IsReadOnly()) {
        LongOperation progress(surface);
        const WString& pattern = findState.searchHistory.Newest();
        result = matches.Gather(*document, {pattern.Text(), pattern.Length(), findState.matchCase, findState.wholeWord},
                                {start, end}, {replacement, length}, progress);
    }
    const auto count = static_cast<uint32_t>(matches.changes.Count());
    // 64 bits: a replacement may be long, and matches are many.
    const uint64_t newEnd = end - matches.RemovedCount() + uint64_t{length} * count;
    const bool fits = result != MatchResult::Done || document->Length() - end + newEnd < TextStore::LengthLimit;
    const bool done =
        result == MatchResult::Done && fits && document->ReplaceRanges(matches.changes, replacement, length);
    if (!fits) {
        HostCalls::Warn(surface, u"The text would become too long");
    } else if (!done && result != MatchResult::Cancelled) {
        HostCalls::Warn(surface, u"Not enough memory");
    }
    if (done && inSelection) editor.SelectRange({start, static_cast<uint32_t>(newEnd)});
    WString message;
    // Odd on purpose: docs/oddities.md.
    if (Text::AppendFormat(message, u"%u occurences replaced", done ? count : 0))
        HostCalls::ShowStatus(surface, message.Text());
    return done;
}
