#pragma once

#include "base/Assert.h"
#include "document/Document.h"
#include "document/EditTarget.h"
#include "document/TextJournal.h"
#include "document/UndoHistory.h"
#include "document/ViewNotifier.h"

class LineEdit;

// The way of every edit of a text document: a record changes the text, is recorded, and only then the views are
// told. When the whole operation is over, the caret line of the active view is opened again and the views hear
// of that. Nothing that is told edits.
class EditPipeline {
public:
    // `parts` are those of `text`.
    EditPipeline(DocumentBase& owner, TextContent& text, TextParts& parts, TextViews views)
        : document(owner), target{text, parts, views}, notifier(views), journal(owner, text) {}
    EditPipeline(const EditPipeline&) = delete;
    EditPipeline& operator=(const EditPipeline&) = delete;

    // Everything that an operation calls while one lives is part of it.
    class Operation {
    public:
        explicit Operation(EditPipeline& owner) : pipeline(owner) {
            ORVANE_ASSERT(!pipeline.notifier.IsTelling());
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

    // What records are made for.
    EditTarget& Target() { return target; }
    const EditTarget& Target() const { return target; }
    UndoHistory& History() { return history; }
    const UndoHistory& History() const { return history; }
    const ViewNotifier& Notifier() const { return notifier; }
    TextJournal& Journal() { return journal; }
    // The view whose caret line is open for editing.
    TextDocumentView* ActiveView() const { return activeView; }
    void SetActiveView(TextDocumentView* view) { activeView = view; }
    // The view with the focus; `view` when none of the document has it.
    void SetActiveViewByFocus(TextDocumentView* view);

    // The edit line goes back into the store when another line is opened, and for whatever needs the whole text in the
    // store: an edit beyond the line, a search, saving. Typing in the line leaves it open. False without memory: the
    // line that was open then still is, with what is pending.
    [[nodiscard]] bool LoadEditLine(uint32_t line);
    // After this no line is open if something was pending.
    [[nodiscard]] bool CommitEdit();
    void OpenActiveLine();

    // Takes the record over, performs and records it, and tells the views. False without memory; nothing has
    // changed then.
    [[nodiscard]] bool Perform(UndoRecord* record);
    // Types a character into the edit line that belongs to the pending record `typed`.
    [[nodiscard]] bool ExtendTyping(LineEdit& typed, TextDocumentView* view, Char character, uint32_t column,
                                    bool notifyEngine);
    // One step back or forth. False without memory.
    [[nodiscard]] bool Step(bool undoing);
    // Takes back and forgets what was done since the innermost open BeginGroup. Needs no memory.
    void AbandonGroup();

    // The text is another one: tells so, and puts every view at its start.
    void TellReplaced();
    // Text was appended at `oldEnd`, the offset `from`: carets that were there follow to the new end.
    void TellAppended(uint32_t from, TextPosition oldEnd);

private:
    void Tell(UndoRecord& record, bool undone);
    void TellChange(const TextChange& change);
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
