#include "document/EditPipeline.h"

#include "document/LineEdit.h"

#include <algorithm>
#include <utility>

namespace {

// In the middle of the operation: the frame may not edit either.
void TellModified(DocumentBase& document, ViewNotifier& notifier) {
    const ViewNotifier::Notifying telling(notifier);
    document.NotifyModified();
}

} // namespace

void EditPipeline::SetActiveViewByFocus(TextDocumentView* view) {
    activeView = view;
    for (TextDocumentView* each : target.views) {
        if (each->HasFocus()) activeView = each;
    }
}

bool EditPipeline::LoadEditLine(uint32_t line) {
    // Nothing is typed into a read-only document, whose last line may be long and go on growing.
    if (!target.content.Content() || target.content.IsReadOnly()) return true;
    ORVANE_ASSERT(!notifier.IsNotifying());
    TextParts& parts = target.parts;
    line = std::min(line, parts.store.LineCount() - 1);
    if (line == parts.editLine.Number()) return true;
    return CommitEdit() && parts.editLine.Open(parts.store, line);
}

bool EditPipeline::CommitEdit() {
    TextParts& parts = target.parts;
    if (target.content.IsReadOnly() || !parts.editLine.IsPending()) return true;
    ORVANE_ASSERT(!notifier.IsNotifying());
    if (!parts.editLine.WriteBack(parts.store)) return false;
    // From now on what was typed is undone in the store, and states after the line are to be scanned again.
    history.MarkCommitted();
    // The line is closed, but Start() is kept.
    notifier.ForgetAfter(parts.editLine.Start());
    return true;
}

void EditPipeline::OpenActiveLine() {
    // Without memory the line is opened when it is typed in.
    if (activeView) static_cast<void>(LoadEditLine(activeView->CaretLine()));
}

bool EditPipeline::Perform(UndoRecord* record) {
    if (!record) return false;
    const Operation operation(*this);
    if (!record->Redo()) {
        delete record;
        return false;
    }
    history.Push(record);
    Notify(*record, false);
    TellModified(document, notifier);
    return true;
}

bool EditPipeline::ExtendTyping(LineEdit& typed, TextDocumentView* view, Char character, uint32_t column,
                                bool notifyEngine) {
    const Operation operation(*this);
    EditLine& line = target.parts.editLine;
    bool affects = notifyEngine && target.content.EditLineAffectsFollowingLines();
    if (!line.Insert(column, &character, 1)) return false;
    typed.Extend(character);
    // Only a step undone while memory was short can be left here; it does not fit the line any more.
    history.ForgetRedo();
    affects = affects || (notifyEngine && target.content.EditLineAffectsFollowingLines());

    const TextChange change = {line.Start() + column, line.Number(), {}, {1, 0}, true, affects};
    const ViewNotifier::Notifying telling(notifier);
    NotifyChange(change);
    notifier.Follow(change, view);
    if (view) view->PlaceCaret({view->CaretLine(), column + 1});
    if (notifyEngine) notifier.InvalidateChange(change);
    return true;
}

bool EditPipeline::Step(bool undoing) {
    const Operation operation(*this);
    const UndoRecord* head = undoing ? history.UndoHead() : history.RedoHead();
    // Without memory to write the edit line back, what was typed in it last can still be undone there.
    const bool committed = CommitEdit();
    if (!committed && !(head && head->state == UndoRecord::State::InEditLine)) return false;
    // The room for all of a step is made before its first change, so that no later one can fail.
    TextParts& parts = target.parts;
    if (committed && !parts.store.EnsureCapacity(history.PeakOfStep(parts.store.Length(), undoing))) return false;

    // Undoing meets the end of a group first.
    const UndoRecord::State opens = undoing ? UndoRecord::State::GroupEnd : UndoRecord::State::GroupBegin;
    const UndoRecord::State closes = undoing ? UndoRecord::State::GroupBegin : UndoRecord::State::GroupEnd;
    int64_t depth = 0;
    while (UndoRecord* record = undoing ? history.UndoHead() : history.RedoHead()) {
        // The store is about to change under the open line.
        if (record->state != UndoRecord::State::InEditLine) parts.editLine.Close();
        if (record->state == opens) ++depth;
        if (record->state == closes) --depth;
        // In the edit line there is room as well: its copy never gives room back while it is open.
        const bool isDone = undoing ? record->Undo() : record->Redo();
        ORVANE_ASSERT(isDone);
        history.MoveHead(undoing);
        Notify(*record, undoing);
        if (depth == 0) break; // at once after a record outside of groups
    }
    TellModified(document, notifier);
    return true;
}

void EditPipeline::AbandonGroup() {
    const Operation operation(*this);
    for (uint32_t depth = 1; depth;) {
        UndoRecord* record = history.TakeLatest();
        if (!record) break;
        if (record->state == UndoRecord::State::GroupBegin) --depth;
        if (record->state == UndoRecord::State::GroupEnd) ++depth;
        if (record->state == UndoRecord::State::InStore) {
            // Whatever was typed after this record is undone by now, so that neither this nor the change below
            // asks for more room than the text has had.
            const bool isCommitted = CommitEdit();
            ORVANE_ASSERT(isCommitted);
            target.parts.editLine.Close();
        }
        const bool isDone = record->Undo();
        ORVANE_ASSERT(isDone);
        Notify(*record, true);
        delete record;
    }
    history.GroupAbandoned();
    TellModified(document, notifier);
}

void EditPipeline::Notify(UndoRecord& record, bool undone) {
    if (record.IsMarker()) return;
    auto& edit = static_cast<TextEdit&>(record);
    const ViewNotifier::Notifying telling(notifier);
    NotifyChange(edit.Change());
    edit.MoveViews(undone);
    notifier.InvalidateChange(edit.Change());
}

// The journal has to hear of every change, once and in order: it counts offsets from one to the next.
void EditPipeline::NotifyChange(const TextChange& change) {
    edited = true;
    journal.Changed(change);
    notifier.TextEdited(change);
    if (!change.inEditLine) {
        notifier.ForgetAfter(change.start);
        notifier.LineCountChanged();
    } else if (change.affectsFollowingLines) {
        notifier.ForgetAfter(target.content.EditLineStart());
    }
}

void EditPipeline::NotifyReplaced() {
    ORVANE_ASSERT(!notifier.IsNotifying());
    const ViewNotifier::Notifying telling(notifier);
    edited = operations != 0; // outside of one, as in a load, nothing would take the flag back
    journal.Replaced();
    notifier.ForgetAfter(0);
    notifier.LineCountChanged();
    notifier.MoveToStart();
}

void EditPipeline::NotifyAppended(uint32_t from, TextPosition oldEnd) {
    const Operation operation(*this);
    const ViewNotifier::Notifying telling(notifier);
    edited = true;
    TextStore& store = target.parts.store;
    TextChange change;
    change.start = from;
    change.inserted.characters = store.Length() - from;
    journal.Changed(change);
    notifier.TextEdited(change);
    notifier.ForgetAfter(from);
    const TextPosition end = store.End();
    for (TextDocumentView* view : target.views) {
        if (view->CaretPosition() == oldEnd) view->FollowEnd(end);
    }
    // The views are told the count only now: a scroll bar, which is slow to set, is then set once.
    notifier.LineCountChanged();
    notifier.Invalidate();
}

// The one place where the edit line comes back after an edit. A line that is being typed in stays open.
void EditPipeline::Finish() {
    if (!std::exchange(edited, false)) return;
    if (!target.parts.editLine.IsOpen()) OpenActiveLine();
    notifier.EditFinished();
}
