#pragma once

#include "base/Assert.h"
#include "base/Platform.h"
#include "document/BulkEdit.h"
#include "document/Document.h"
#include "document/LineCache.h"
#include "document/LineMarks.h"
#include "document/OutputRun.h"
#include "document/SearchProgress.h"
#include "document/UndoRecord.h"
#include "syntax/SyntaxEngine.h"

// Turns CR LF and lone CR of `text` into LF in place, up to the first NUL, and terminates it. Returns
// the new length; `lineCount` is 1 plus the line breaks, `style` the LineEnding found (Dos when none).
uint32_t NormaliseLineBreaks(Char* text, uint32_t& lineCount, uint32_t& style);

// The text document: one flat UTF-16 array in which LF is the only line break, followed by a NUL that
// is not counted, and a private copy of the one line that is being typed in.
class TextBuffer final : public DocumentBase {
public:
    TextBuffer() = default;
    TextBuffer(const TextBuffer&) = delete;
    TextBuffer& operator=(const TextBuffer&) = delete;

    // Document, in table order (the shared ones are DocumentBase's).
    uint32_t Release() override;
    DocumentView* CreateView(NativeWindow parent) override;
    bool IsModified() const override { return HeadSerial() != savedUndoHead; }
    bool Save(const Char* file, uint32_t encoding, uint32_t lineEnding) override;
    bool GetOutputState(bool& running) const override;
    // False also when the file is on a remote drive that answered slowly within the last minute.
    bool IsChangedOnDisk() override;
    void MarkFileTimeNow() override;
    bool Reload() override;
    void StopProcess() override;
    bool CanDo(uint32_t kind) const override;
    bool DoCommand(uint32_t kind) override;
    void OnSettingsChanged(uint32_t flags) override;
    bool GetEncoding(uint32_t& current, const Char* const*& names) const override;
    bool IsBinary() const override { return false; }
    bool GetSessionText(WString& out) const override;
    void ResetSyntaxEngine() override;
    uint32_t GetLineEnding() const override { return lineEnding; }

    // Life of the content. Each leaves the document consistent on failure: empty and without a store.
    bool MakeEmpty();
    bool MakeNew(const Char* name);
    // With `createNew` an empty document of that name, else the file's content.
    bool Load(const Char* fileName, bool createNew);

    // Content.
    const Char* Content() const { return text; } // null when there is no store
    uint32_t Length() const { return length; }
    uint32_t GetLineCount() const { return lineCount; }
    bool IsReadOnly() const { return readOnly != 0; }
    bool IsOutput() const { return isOutput != 0; }
    // Makes this an output document, which nobody can type into. False without memory for what is typed.
    bool MarkAsOutput();
    // Empties the text and forgets undo, redo and marks; the path, the engine and a running command stay.
    // True always.
    bool EmptyAndResetUndo();

    // Offsets and lines. A line past the end yields the start of the last one; no column is clamped.
    uint32_t LineToOffset(uint32_t line);
    uint32_t LineToOffsetPlus(uint32_t line, uint32_t column) { return LineToOffset(line) + column; }
    uint32_t OffsetToLine(uint32_t offset, uint32_t& lineStart);
    void OffsetToLineColumn(uint32_t offset, uint32_t& line, uint32_t& column);
    // Characters from `start` up to the line feed or the terminator; `isLast` when it was the latter.
    uint32_t LineLength(uint32_t start, bool& isLast) const;

    // The edit line: a copy of one line with its line feed (or terminator), None32 when there is none.
    uint32_t EditLineNumber() const { return editLineNo; }
    const WString& EditLine() const { return editLine; }
    uint32_t EditLineStart() const { return editLineStart; }
    // How many store characters the edit line stands for.
    uint32_t EditLineStoreLength() const { return editLineStoreLen; }
    bool HasPendingEdit() const { return editDirty != 0; }
    // A read-only document never has one: loading is then a success without effect.
    bool LoadEditLine(uint32_t line);
    // Writes the edit line back. False when memory runs out; everything then stays pending.
    bool CommitEdit();

    // Editing. On a read-only document all succeed and do nothing; false leaves everything as it was.
    // `column` counts in the caret line of `view`, which is made the edit line first.
    bool TypeChar(DocumentView* view, Char ch, uint32_t column, bool notifyEngine, bool overwrite);
    bool NewLine(DocumentView* view, uint32_t column);
    bool DeleteInEditLine(DocumentView* view, uint32_t column, uint32_t count);
    bool InsertText(uint32_t offset, const Char* inserted, uint32_t count);
    bool DeleteText(uint32_t offset, uint32_t count);
    // Puts `inserted` in the place of each of `changes`, which it takes over, as one step in one pass over
    // the text. See BulkEdit for what the places have to be like.
    bool ReplaceRanges(Array<ReplacedRange>& changes, const Char* inserted, uint32_t count);

    // Undo.
    bool PerformAndPush(UndoRecord* record); // takes ownership, also on failure
    // What is pushed between the two is one step. A group that could not be begun must not be ended. On a
    // read-only document both succeed and push nothing.
    bool BeginGroup();
    bool EndGroup();
    // Instead of EndGroup, when a part of the step has failed: takes back and forgets what was done since
    // the innermost open BeginGroup. Needs no memory. With no group left open, what could be redone before
    // the first change can be redone again.
    void AbandonGroup();
    // One step back or forth; with nothing to undo (redo) a success. False without memory: the document
    // is then as it was.
    bool Undo();
    bool Redo();
    // The next typed character starts a step of its own.
    void EndTyping();

    // Searching. `wrapped` is set when the match lies on the far side of the end (or start). Nothing is
    // found when `progress` breaks the search off.
    bool FindText(const Char* pattern, uint32_t from, uint32_t end, bool matchCase, bool wholeWord, bool backward,
                  uint32_t& found, bool& wrapped, SearchProgress* progress = nullptr);
    struct Search {
        const Char* pattern;
        uint32_t count;
        bool matchCase;
        bool wholeWord;

        // Positions to search between two reports of progress: a long pattern may have to be compared
        // almost whole at every one of them.
        uint32_t Slice() const;
    };
    // The first match that starts in [from, end) of the store; None32 without one. Commits nothing.
    uint32_t FindFrom(const Search& search, uint32_t from, uint32_t end) const;
    bool IsWholeWordAt(uint32_t offset, uint32_t count) const;

    // Line marks.
    void ToggleBookmark(uint32_t line);
    void ClearBookmarks();
    LineMark* NextMark(uint32_t line, uint32_t mask, bool inclusive) const { return marks.Next(line, mask, inclusive); }
    LineMark* PrevMark(uint32_t line, uint32_t mask, bool inclusive) const {
        return marks.Previous(line, mask, inclusive);
    }
    LineMark* FindMark(uint32_t line) const { return marks.Find(line); }

    // Views.
    DocumentView* ActiveView() const { return activeView; }
    void SetActiveView(DocumentView* view) { activeView = view; }
    // A view was put into a window. It becomes the active one unless another has the focus: that is where
    // the user goes on typing.
    void ViewAttached(DocumentView* view);
    void ForgetView(DocumentView* view) override;
    void RepaintAll();
    void RepaintLines(uint32_t first, uint32_t last);
    void SetLineCount(uint32_t count);

    // Colouring. The document takes over one reference and releases the engine it had.
    SyntaxEngine* Engine() const { return engine; }
    void AttachEngine(SyntaxEngine* newEngine);
    // From now on the engine of that name, whatever the path (empty: by the path again), and repaints. False
    // without memory.
    bool SetEngineName(const Char* name);

    // Output of commands. Appends text as it is (line breaks normalised in place in `added`).
    bool AppendOutputText(Char* added);
    // Starts a command (null for none) under the command interpreter and collects what it prints; makes
    // this an output document. False when a run is already under way or anything failed.
    bool RunCommand(const Char* command, const Char* startDirectory);
    // The timer's work: appends what the output has grown by, and ends the run once the process has.
    void PollOutput();
    // Releases everything of a run; its process goes on without it.
    void EndRun();

private:
    friend class TextEdit;
    friend class LineEdit;
    friend class InsertEdit;
    friend class DeleteEdit;
    friend class BulkEdit;
    friend struct TextBufferProbe; // of the tests

    ~TextBuffer();

    uint32_t HeadSerial() const { return undoHead ? undoHead->serial : 0; }

    // Room for `characters` and their terminator.
    bool EnsureCapacity(uint64_t characters);
    // Change the store, the line cache and the line count; marks, views and undo are the caller's.
    bool InsertIntoStore(uint32_t offset, const Char* inserted, uint32_t count, uint32_t newLines);
    void DeleteFromStore(uint32_t offset, uint32_t count, uint32_t newLines);
    // Makes the caret line of `view` the edit line. False when there is no such line or no memory.
    bool OpenCaretLine(const DocumentView* view);
    // Takes the record over (null: no memory for it), sets it up and performs it.
    bool PushLineEdit(LineEdit* record, uint32_t column, const Char* changed, uint32_t count, Char replaced);
    bool ExtendTyping(LineEdit& typed, DocumentView* view, Char ch, uint32_t column, bool notifyEngine);
    bool BreakBeforeBlanks(DocumentView* view, uint32_t column, uint32_t blanks, uint32_t offset,
                           const WString& inserted);
    // Whether the edit line as it is now may change the colouring of the lines below.
    bool EditLineAffectsFollowingLines() const {
        return engine && engine->MayChangeState(editLine.Text(), editLine.Length());
    }
    void DropEditLine() { editLineNo = None32; }
    void CloseEditLine();

    uint64_t PeakOfStep(const UndoRecord* head, bool undoing) const;
    bool Step(UndoRecord*& from, UndoRecord*& to, bool undoing);
    bool PushMarker(uint32_t state);
    // The pending edits at the head of the list now live in the store.
    static void MarkCommitted(UndoRecord* head);
    static void FreeRecords(UndoRecord*& head);
    void ForgetUndo();

    // The last match that starts in [lowest, from).
    uint32_t FindBelow(const Search& search, uint32_t from, uint32_t lowest) const;
    // The same in slices; `broken` is set when `progress` wants no more.
    uint32_t FindSliced(const Search& search, uint32_t from, uint32_t end, SearchProgress* progress,
                        bool& broken) const;
    uint32_t FindSlicedBelow(const Search& search, uint32_t from, uint32_t lowest, SearchProgress* progress,
                             bool& broken) const;

    // Everything that an operation calls is part of it. At the end of the outermost one the edit line is
    // opened again and the views hear that it is over.
    class Operation {
    public:
        explicit Operation(TextBuffer& owner) : document(owner) { ++document.operations; }
        ~Operation() {
            if (--document.operations == 0) document.FinishOperation();
        }
        Operation(const Operation&) = delete;
        Operation& operator=(const Operation&) = delete;

    private:
        TextBuffer& document;
    };
    // While one lives, the views hear of an edit, and nothing may edit.
    class Telling {
    public:
        explicit Telling(TextBuffer& owner) : document(owner) {
            ORVANE_ASSERT(!document.telling);
            document.telling = true;
        }
        ~Telling() { document.telling = false; }
        Telling(const Telling&) = delete;
        Telling& operator=(const Telling&) = delete;

    private:
        TextBuffer& document;
    };
    void FinishOperation();
    // Tells what the record did last.
    void TellViews(UndoRecord& record, bool undone);
    void TellChange(const TextChange& change);
    void TellTyped(const TextChange& change, DocumentView* view, uint32_t caretColumn, bool repaint);
    void TellTextChanged(uint32_t offset);
    void RepaintChange(const TextChange& change);
    void InvalidateViews();
    void InvalidateLines(uint32_t first, uint32_t last);
    // All of the text is another one: tells so, and puts every view at its start.
    void MoveViewsToStart();
    // With `destroyViews` the views go, else they move to the start.
    void Clear(bool destroyViews);
    void FreeStore();
    void ChooseOwnEngine();
    // Takes over the store of a cleared document.
    void TakeText(struct DecodedText& decoded);
    // Characters were appended at `from`: tells the views, and takes along the carets that were at the old
    // end.
    void NotifyAppended(uint32_t from, uint32_t newLines);

    bool StartRun(const Char* command, const Char* startDirectory);
    bool SetPollPeriod(uint32_t milliseconds);
    enum class Appending { Done, OutOfTime, Failed };
    // Appends what the run's output has grown by, as far as AppendFromFile gets.
    Appending AppendNew();
    // Appends up to `count` bytes of the run's output, as many as one slice of time is enough for. An
    // unfinished character at their end is left alone unless this `isRest`, behind which nothing comes.
    Appending AppendFromFile(uint64_t count, bool isRest);
    bool AppendChunk(uint32_t count, bool isRest, uint32_t& newLines);

    // What all documents have comes first, in DocumentBase.
    Char* text = nullptr;
    uint32_t capacity = 0; // characters, terminator included; exactly what was needed last
    uint32_t length = 0;
    uint32_t lineCount = 0;
    uint32_t readOnly = 0;
    uint32_t isOutput = 0;
    SyntaxEngine* engine = nullptr;
    WString editLine;
    uint32_t editLineNo = None32;
    uint32_t editLineStart = 0;
    uint32_t editDirty = 0;
    uint32_t editLineStoreLen = 0;
    UndoRecord* undoHead = nullptr;
    UndoRecord* redoHead = nullptr;
    UndoRecord* stashedRedo = nullptr; // the redo list while a group that has changed something is open
    uint32_t openGroups = 0;
    // Serial of the undo head at the last load or save, 0 for an empty list. A serial is never reused,
    // unlike the address of a freed record.
    uint32_t savedUndoHead = 0;
    LineMarks marks;
    Platform::FileTime fileTime = 0;
    uint32_t encoding = 0;
    OutputRun run;
    // Kept while the text is only appended to, so that its end need not be looked for; else None32.
    uint32_t lastLineStart = None32;
    LineCache lineCache;
    DocumentView* activeView = nullptr;
    uint32_t operations = 0; // that are under way, each inside the one before it
    bool edited = false;     // by the outermost of them
    bool telling = false;
    uint32_t lineEnding = LineEnding::Dos;
};
