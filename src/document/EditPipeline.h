#pragma once

#include "base/Assert.h"
#include "document/Document.h"
#include "document/EditTarget.h"
#include "document/TextJournal.h"
#include "document/UndoHistory.h"
#include "document/ViewNotifier.h"

class LineEdit;

// The way of every edit of a text document: a record changes the text, is recorded, and only then the views are told,
// in the order that TextDocumentView gives. When the outermost operation is over and something was edited, the caret
// line of the active view is opened, if no line is open, and the views are told EditFinished. While the views are told
// of a change none of them may edit; in EditFinished they may.
//
// Owned by the TextBuffer, which makes the records; what is typed and done comes through that.
class EditPipeline {
public:
    // `parts` are those of `text`.
    EditPipeline(DocumentBase& owner, TextContent& text, TextParts& parts, TextViews views, RecoveryServices& recovery)
        : document(owner), target{text, parts, views}, notifier(views), journal(owner, recovery, text) {}
    EditPipeline(const EditPipeline&) = delete;
    EditPipeline& operator=(const EditPipeline&) = delete;

    // While one lives, everything that is called is part of one operation; they nest.
    class Operation {
    public:
        explicit Operation(EditPipeline& owner) : pipeline(owner) {
            ORVANE_ASSERT(!pipeline.notifier.IsNotifying());
            ++pipeline.operations;
        }
        ~Operation() {
            if (--pipeline.operations == 0) pipeline.Finish();
        }
        Operation(const Operation&) = delete;
        Operation& operator=(const Operation&) = delete;

    private:
        EditPipeline& pipeline;
    };

    // Its parts. The target is what records are made for.
    EditTarget& Target() { return target; }
    const EditTarget& Target() const { return target; }
    UndoHistory& History() { return history; }
    const UndoHistory& History() const { return history; }
    ViewNotifier& Notifier() { return notifier; }
    TextJournal& Journal() { return journal; }

    // The view whose caret line is open for editing: the one that got the focus last, or was put into a window while no
    // view had it. Null for none.
    TextDocumentView* ActiveView() const { return activeView; }
    void SetActiveView(TextDocumentView* view) { activeView = view; }
    // The view with the focus; `view` when none of the document has it.
    void SetActiveViewByFocus(TextDocumentView* view);

    // The edit line. It goes back into the store (is committed) when another line is opened, and for whatever needs the
    // whole text in the store: a change of the store, undo, a search, saving, looking for the partner of a bracket.
    // Typing in the line leaves it open.
    //
    // Opens the edit line. A line past the end is the last one. False without memory: the line that was open then still
    // is, with what is pending. A document without a store, or a read-only one, has no edit line: that is a success.
    [[nodiscard]] bool LoadEditLine(uint32_t line);
    // If something was pending no line is open after this; otherwise the line stays open.
    [[nodiscard]] bool CommitEdit();
    void OpenActiveLine();

    // Edits.
    //
    // Takes the record over, also on failure, performs and records it, and tells the views. False without memory, also
    // for the record, which is null then; nothing has changed.
    [[nodiscard]] bool Perform(UndoRecord* record);
    // For a character of which the pending record `typed` says that it Continues, and for which it has room: types it
    // at `column` of the edit line and into the record. The views are told as by Perform, but only the caret of `view`
    // (null for none) moves. There is no new record: the serial stays, and whether the document is modified. For
    // `notifyEngine` see TextBuffer::TypeChar. False without memory; nothing has changed then.
    [[nodiscard]] bool ExtendTyping(LineEdit& typed, TextDocumentView* view, Char character, uint32_t column,
                                    bool notifyEngine);
    // One step back or forth, a record or a group. Commits first. False without memory; no step is made then.
    [[nodiscard]] bool Step(bool undoing);
    // Takes back and forgets what was done since the innermost open BeginGroup. Needs no memory.
    void AbandonGroup();

    // For changes that are not recorded, after they were made.
    //
    // The text was replaced: every view goes to its start.
    void NotifyReplaced();
    // Text was appended at `oldEnd`, the offset `from`: carets that were there follow to the new end.
    void NotifyAppended(uint32_t from, TextPosition oldEnd);

private:
    // Tells the change of a record; nothing for a marker.
    void Notify(UndoRecord& record, bool undone);
    // What is told before the views are moved.
    void NotifyChange(const TextChange& change);
    // The end of the outermost operation.
    void Finish();

    DocumentBase& document;
    EditTarget target;
    ViewNotifier notifier;
    UndoHistory history;
    TextJournal journal;
    TextDocumentView* activeView = nullptr;
    uint32_t operations = 0; // that are under way, each inside the one before it
    bool edited = false;     // by the outermost of them
};
