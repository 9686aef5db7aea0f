#pragma once

#include "base/Platform.h"
#include "document/BulkEdit.h"
#include "document/Document.h"
#include "document/EditPipeline.h"
#include "document/FileTimeCheck.h"
#include "document/LineBreaks.h"
#include "document/OutputCollector.h"
#include "document/SearchProgress.h"
#include "document/TextContent.h"
#include "document/TextServices.h"

// The text document: TextContent reads, EditPipeline edits, and what commands print comes
// from the OutputCollector. Here is what its views have typed, and what is done to the document as a whole.
//
// Whoever makes one adds a reference and has it make its content (MakeEmpty, MakeNew, Load or TakeRecovered); it lives
// until the last reference is released. Offsets count the store, as in TextContent; columns count the edit line.
class TextBuffer final : public DocumentBase, public TextContent {
public:
    // `around` outlives the document.
    explicit TextBuffer(TextServices& around)
        : services(around), pipeline(*this, *this, parts, TextViews(views), around.recovery), output(parts.store),
          onDisk(around.slowDrives) {}
    TextBuffer(const TextBuffer&) = delete;
    TextBuffer& operator=(const TextBuffer&) = delete;

    // Document; the shared operations are in DocumentBase.
    uint32_t Release() override;
    DocumentView* CreateView(NativeWindow parent) override;
    bool IsModified() const override { return !pipeline.History().IsSaved(); }
    [[nodiscard]] bool Save(const Char* file, Encoding encoding, LineEnding lineEnding) override;
    bool GetOutputState(bool& running) const override;
    bool IsChangedOnDisk() override;
    bool HasOtherFile() override;
    void MarkFileTimeNow() override;
    [[nodiscard]] bool Reload() override;
    void StopProcess() override { output.AskToClose(); }
    bool CanDo(DocumentCommand kind) const override;
    bool DoCommand(DocumentCommand kind) override;
    void OnSettingsChanged(SettingsEffect kind) override;
    bool GetEncoding(Encoding& current, const Char* const*& names) const override;
    bool IsBinary() const override { return false; }
    [[nodiscard]] bool GetSessionText(WString& out) const override;
    void ResetSyntaxEngine() override;
    LineEnding GetLineEnding() const override { return lineEnding; }
    [[nodiscard]] bool FlushJournal() override { return pipeline.Journal().Flush(); }
    // False while the file's remote drive rests after a slow answer, and when there is no file to check.
    bool MayCheckDisk() override;
    void JoinSteps(uint32_t after) override {
        EndTyping();
        pipeline.History().JoinSteps(after);
    }

    // Making and replacing the content. Each leaves the document consistent on failure: empty and without a store.
    //
    // With `asNew` it is a new untitled document, in no file yet, and gets the line ends of new files.
    [[nodiscard]] bool MakeEmpty(bool asNew = false);
    [[nodiscard]] bool MakeNew(const Char* name);
    // With `createNew` a new, empty document of that name, else the file's content.
    [[nodiscard]] bool Load(const Char* fileName, bool createNew);
    // A text that an editor has left in a journal, which is in no file: it is modified, with nothing to undo.
    void TakeRecovered(struct DecodedText& recovered);
    bool IsOutput() const { return isOutput; }
    // Makes this an output document, which nobody can type into. False without memory for what is typed.
    [[nodiscard]] bool MarkAsOutput();
    // Empties the text and forgets undo, redo and marks; the path, the engine and a running command stay.
    void EmptyAndResetUndo();

    // The edit line, see EditPipeline.
    [[nodiscard]] bool LoadEditLine(uint32_t line) { return pipeline.LoadEditLine(line); }
    [[nodiscard]] bool CommitEdit() { return pipeline.CommitEdit(); }

    // Editing. On a read-only document all succeed and do nothing; false leaves everything as it was. When one returns,
    // all views have been told.

    // In the edit line: `column` counts in the caret line of `view`, which is made the edit line first; with null, in
    // the line that is open. Past the end of the line it is the end.
    //
    // Types a character: it changes the edit line, and the store only once that is committed. Where it continues the
    // latest LineEdit, that is extended; else it makes a new one. A line break goes to NewLine. With `overwrite` the
    // character takes the place of the one at `column`, as a step of its own. Without `notifyEngine` a character that
    // extends a record is not repainted, nor are lines below that it may colour differently. Reserves memory for `room`
    // characters, so that the rest of a run inserted here cannot fail.
    [[nodiscard]] bool TypeChar(TextDocumentView* view, Char ch, uint32_t column, bool notifyEngine, bool overwrite,
                                uint32_t room = 1);
    // Breaks the line, which is a change of the store. The new line begins with the blanks that the old one begins with
    // before `column`; blanks from there on are removed when nothing else is there.
    [[nodiscard]] bool NewLine(TextDocumentView* view, uint32_t column);
    // The column at the end of a line is its line feed, which may be removed as well: in every line but the last this
    // is a change of the store, in the last one a LineEdit. False also when there is nothing to remove in the last
    // line.
    [[nodiscard]] bool DeleteInEditLine(TextDocumentView* view, ColumnRange columns);

    // In the store. What is pending is committed first: offsets are those of the text as it is shown. Offsets past the
    // end are the end.
    [[nodiscard]] bool InsertText(uint32_t offset, const Char* inserted, uint32_t count);
    [[nodiscard]] bool DeleteText(TextRange range);
    // Replaces each of `ranges`, which it takes over, by `inserted`, as one step in one pass over
    // the text. See BulkEdit for what the places have to be like.
    [[nodiscard]] bool ReplaceRanges(Array<ReplacedRange>& ranges, const Char* inserted, uint32_t count);

    // Undo.
    //
    // What is recorded between the first two is one step. A group that could not be begun must not be ended. On a
    // read-only document both succeed and record nothing.
    [[nodiscard]] bool BeginGroup() { return readOnly || pipeline.History().BeginGroup(); }
    [[nodiscard]] bool EndGroup() { return readOnly || pipeline.History().EndGroup(); }
    // Instead of EndGroup, when a part of the step has failed: takes back and forgets what was done since
    // the innermost open BeginGroup. Needs no memory. With no group left open, what could be redone before
    // the first change can be redone again.
    void AbandonGroup() { pipeline.AbandonGroup(); }
    // One step back or forth; with nothing to undo (redo) a success. False without memory: the document
    // is then as it was. A document that was made read-only keeps its records, but they change nothing then.
    [[nodiscard]] bool Undo() { return readOnly || pipeline.Step(true); }
    [[nodiscard]] bool Redo() { return readOnly || pipeline.Step(false); }
    // The next typed character starts a step of its own.
    void EndTyping();

    // Commits first: offsets are those of the text as it is shown. False without a match, when `progress` stops the
    // search, and without memory.
    [[nodiscard]] bool FindText(const SearchQuery& query, SearchWay way, SearchHit& hit,
                                SearchProgress* progress = nullptr);

    void ToggleBookmark(uint32_t line);
    void ClearBookmarks();

    // Views.
    TextDocumentView* ActiveView() const { return pipeline.ActiveView(); }
    void SetActiveView(TextDocumentView* view) { pipeline.SetActiveView(view); }
    // A view was put into a window. It becomes the active one unless another has the focus: that is where
    // the user goes on typing.
    void ViewAttached(TextDocumentView* view) { pipeline.SetActiveViewByFocus(view); }
    void ForgetView(DocumentView* view) override;
    // Both open the caret line of the active view when it is among the lines: docs/oddities.md.
    void RepaintAll();
    void RepaintLines(LineRange lines);

    // Colouring.
    //
    // The document takes over one reference and releases the engine it had; what that highlights, the new one
    // highlights, too.
    void AttachEngine(SyntaxEngine* newEngine);
    // From now on the engine of that name, whatever the path (empty: by the path again), and repaints. False
    // without memory.
    [[nodiscard]] bool SetEngineName(const Char* name);

    // Output of commands.
    //
    // Appends text as it is (line breaks normalised in place in `added`).
    [[nodiscard]] bool AppendOutputText(Char* added);
    // Starts a command (null for none) under the command interpreter and collects what it prints; makes
    // this an output document. False when a run is already under way or anything failed.
    [[nodiscard]] bool RunCommand(const Char* command, const Char* startDirectory);
    // The timer's work: appends what the output has grown by, and ends the run once the process has.
    void PollOutput();
    // Releases everything of a run; its process goes on without it.
    void EndRun();

    const UndoHistory& History() const { return pipeline.History(); }
    const OutputCollector& Output() const { return output; }

private:
    ~TextBuffer();

    // Makes the caret line of `view` the edit line. False when there is no such line or no memory.
    [[nodiscard]] bool OpenCaretLine(const TextDocumentView* view);
    [[nodiscard]] bool BreakBeforeBlanks(ColumnRange blanks, const WString& inserted);
    // Makes the text absent and forgets all that belongs to it. With `destroyViews` the views go, else they
    // move to the start.
    void Clear(bool destroyViews);
    // Tells the frame, through the first view.
    void NotifyRunState(bool running);
    bool IsOwnFile(const Char* file) const;
    // Takes over the text of a file after Clear.
    void TakeText(struct DecodedText& decoded);

    TextServices& services;
    EditPipeline pipeline;
    OutputCollector output;
    bool isOutput = false;
    FileTimeCheck onDisk;
    Encoding encoding = Encoding::Ansi;
    LineEnding lineEnding = LineEnding::Dos;
    HighlightRange highlights[SyntaxEngine::HighlightCount]; // those of the engine that was attached last
};
