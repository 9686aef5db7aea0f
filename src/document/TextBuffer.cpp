#include "document/TextBuffer.h"

#include "base/Text.h"
#include "base/TextFormat.h"
#include "document/LineEdit.h"
#include "document/TextDecode.h"
#include "document/TextSave.h"
#include "settings/AdditionalSettings.h"
#include "syntax/EngineChoice.h"

#include <algorithm>
#include <cstring>

namespace {

constexpr const Char* EncodingNames[EncodingCount] = {u"ANSI", u"Unicode", u"Unicode Big Endian", u"UTF8",
                                                      u"UTF8 without signature"};

// Null instead of a record that could not be made or set up.
template <class Record> UndoRecord* Checked(Record* record, bool isSetUp) {
    if (isSetUp) return record;
    delete record;
    return nullptr;
}

// A change of the store, after a commit. Where nothing was pending the line is open still, and its copy would not be
// the line any more. It is closed only here: where memory runs out before, it stays open.
bool PerformInStore(EditPipeline& pipeline, UndoRecord* record) {
    if (!record) return false;
    pipeline.Target().parts.editLine.Close();
    return pipeline.Perform(record);
}

} // namespace

TextBuffer::~TextBuffer() {
    Clear(true);
    AttachEngine(nullptr);
}

uint32_t TextBuffer::Release() {
    ORVANE_ASSERT(refCount > 0);
    if (--refCount) return refCount;
    delete this;
    return 0;
}

// The content as a whole.

bool TextBuffer::MakeEmpty(bool asNew) {
    isNew = asNew;
    if (asNew && additionalSettings.UnixNewFiles) lineEnding = LineEnding::Unix;
    parts.store.Release();
    parts.editLine.Release();
    pipeline.NotifyReplaced();
    return parts.store.EnsureCapacity(0);
}

bool TextBuffer::MakeNew(const Char* name) {
    Clear(false);
    if (!MakeEmpty(true) || !SetPath(name)) {
        parts.store.Release();
        return false;
    }
    OnSettingsChanged(SettingsEffect::Engine);
    return true;
}

void TextBuffer::Clear(bool destroyViews) {
    if (destroyViews) DestroyViews();
    if (output.IsRunning()) EndRun(); // or it would go on appending, to another text
    parts.marks.Clear();
    pipeline.History().Clear();
    parts.store.Release();
    encoding = Encoding::Ansi;
    losesBytes = false;
    parts.editLine.Release();
    pipeline.NotifyReplaced();
}

void TextBuffer::EmptyAndResetUndo() {
    const EditPipeline::Operation operation(pipeline);
    pipeline.History().Clear();
    parts.marks.Clear();
    parts.editLine.Release();
    parts.store.Empty();
    pipeline.NotifyReplaced();
    pipeline.Notifier().Invalidate();
}

bool TextBuffer::Load(const Char* fileName, bool createNew) {
    if (createNew) return MakeNew(fileName);
    Clear(false);
    DecodedText decoded;
    if (!ReadTextFile(fileName, additionalSettings.Utf8, decoded)) return false;
    // Before the text is taken over, so that a failed load leaves none.
    if (decoded.text && !SetPath(fileName)) return false;
    onDisk.Take(decoded.file);
    encoding = decoded.encoding;
    // Without a text the file was read, but the code page can make nothing of it.
    if (!decoded.text) return true;
    TakeText(decoded);
    pipeline.Journal().IsInFile(TextJournal::Origin::Loaded, decoded.file);
    return true;
}

void TextBuffer::TakeText(DecodedText& decoded) {
    encoding = decoded.encoding;
    lineEnding = decoded.style;
    losesBytes = decoded.losesBytes;
    isNew = false;
    parts.store.Take(decoded.text, decoded.capacity, {decoded.length, decoded.lineCount - 1});
    decoded.text = nullptr;
    pipeline.Notifier().LineCountChanged();
    OnSettingsChanged(SettingsEffect::Engine);
    pipeline.History().MarkSaved();
}

void TextBuffer::TakeRecovered(DecodedText& recovered) {
    Clear(false);
    TakeText(recovered);
    isNew = true;
    pipeline.History().MarkUnsaved();
}

// Read before the old text goes: a file that was deleted or locked meanwhile must not cost it.
bool TextBuffer::Reload() {
    DecodedText decoded;
    if (!ReadTextFile(path.Text(), additionalSettings.Utf8, decoded) || !decoded.text) return false;
    const EditPipeline::Operation operation(pipeline);
    Clear(false);
    onDisk.Take(decoded.file);
    TakeText(decoded);
    pipeline.Journal().IsInFile(TextJournal::Origin::Loaded, decoded.file);
    pipeline.Notifier().Invalidate();
    return true;
}

bool TextBuffer::IsOwnFile(const Char* file) const {
    return Platform::CompareNames(file, path.Text()) == 0 || Platform::IsSameFile(file, path.Text());
}

bool TextBuffer::Save(const Char* file, Encoding newEncoding, LineEnding newLineEnding) {
    const Encoding fileEncoding = static_cast<uint32_t>(newEncoding) < EncodingCount ? newEncoding : encoding;
    const LineEnding wanted = newLineEnding == LineEnding::Keep ? lineEnding : newLineEnding;
    const LineEnding style = wanted == LineEnding::Unix ? LineEnding::Unix : LineEnding::Dos;
    FileStamp stamp;
    SaveResult result = SaveResult::Untouched;
    if (CommitEdit())
        result = WriteTextFile(services.recovery.saver, file, Content(), Length(), {fileEncoding, style}, stamp);
    const bool saved = result == SaveResult::Saved;
    // A copy under another name that was cut leaves the file of this document alone.
    const bool cut = result == SaveResult::Cut && IsOwnFile(file);
    if ((saved || cut) && stamp.time) onDisk.Take(stamp);
    if (cut) {
        pipeline.History().MarkUnsaved(); // no state of the text is in the file now
        NotifyModified();
    }
    if (saved) {
        encoding = fileEncoding; // only now: the next save must not write an encoding that nobody has asked for
        losesBytes = isNew = false;
        pipeline.History().MarkSaved();
        pipeline.Journal().IsInFile(TextJournal::Origin::Saved, stamp);
        NotifyModified();
    }
    if (style != lineEnding) {
        lineEnding = style;
        if (ActiveView() && ActiveView()->HasFocus()) ActiveView()->RefreshStatus();
    }
    return saved;
}

bool TextBuffer::MayCheckDisk() {
    return !IsOutput() && title.IsEmpty() && services.slowDrives.MayAsk(path.Text(), this, Platform::Ticks());
}

bool TextBuffer::IsChangedOnDisk() { return !IsOutput() && title.IsEmpty() && onDisk.IsWrittenLater(path.Text()); }

bool TextBuffer::HasOtherFile() { return !IsOutput() && title.IsEmpty() && onDisk.IsAnother(path.Text()); }

void TextBuffer::MarkFileTimeNow() { onDisk.AcceptUntilNow(path.Text()); }

bool TextBuffer::GetEncoding(Encoding& current, const Char* const*& names) const {
    current = encoding;
    names = EncodingNames;
    return true;
}

bool TextBuffer::CanDo(DocumentCommand kind) const {
    switch (kind) {
    case DocumentCommand::Edit:
        return !readOnly;
    case DocumentCommand::Undo:
        return !readOnly && History().UndoHead();
    case DocumentCommand::Redo:
        return !readOnly && History().RedoHead();
    case DocumentCommand::Paste:
        return !readOnly && Platform::ClipboardHasText();
    default:
        return false;
    }
}

bool TextBuffer::DoCommand(DocumentCommand kind) {
    if (kind != DocumentCommand::Undo && kind != DocumentCommand::Redo) return false;
    // The answer says that the command is understood, not that there was memory for it.
    static_cast<void>(kind == DocumentCommand::Undo ? Undo() : Redo());
    return true;
}

bool TextBuffer::GetSessionText(WString& out) const {
    const uint32_t before = out.Length();
    bool done = Text::AppendFormat(out, u"e %s\r\n", GetName());
    const TextDocumentView* const first = pipeline.Target().views.First();
    if (done && first) done = Text::AppendFormat(out, u"l %u\r\n", first->CaretLine() + 1);
    for (const LineMark* mark = parts.marks.Head(); done && mark; mark = mark->next) {
        if (mark->flags & LineMark::Bookmark) done = Text::AppendFormat(out, u"bm %u\r\n", mark->line + 1);
    }
    if (!done) out.Truncate(before);
    return done;
}

// Editing.

bool TextBuffer::OpenCaretLine(const TextDocumentView* view) {
    if (view && !LoadEditLine(view->CaretLine())) return false;
    return parts.editLine.IsOpen() && !parts.editLine.Text().IsEmpty();
}

bool TextBuffer::TypeChar(TextDocumentView* view, Char ch, uint32_t column, bool notifyEngine, bool overwrite,
                          uint32_t room) {
    if (readOnly) return true;
    // A line feed typed as such breaks the line as well: the edit line never holds one inside.
    if (ch == u'\r' || ch == u'\n') return NewLine(view, column);
    if (uint64_t{Length() + EditLineGrowth()} + room >= TextStore::LengthLimit) return false;
    if (!OpenCaretLine(view) || !parts.editLine.MakeRoom(room)) return false;
    column = std::min(column, parts.editLine.Length());
    UndoRecord* latest = History().UndoHead();
    if (!overwrite && latest && latest->state == UndoRecord::State::InEditLine) {
        auto& typed = static_cast<LineEdit&>(*latest);
        if (typed.Continues(ch, column))
            return typed.MakeRoom(room) && pipeline.ExtendTyping(typed, view, ch, column, notifyEngine);
    }
    const Char replaced = overwrite && column < parts.editLine.Length() ? EditLineText()[column] : u'\0';
    auto* record = new LineEdit(pipeline.Target(), false);
    return pipeline.Perform(
        Checked(record, record && record->SetUp(column, &ch, 1, replaced) && record->MakeRoom(room)));
}

bool TextBuffer::NewLine(TextDocumentView* view, uint32_t column) {
    if (readOnly) return true;
    if (!OpenCaretLine(view)) return false;
    const uint32_t end = parts.editLine.Length();
    column = std::min(column, end);
    const Char* line = EditLineText().Text();
    const ColumnRange rest = {column, end};
    uint32_t indent = 0;
    while (indent < column && Text::IsBlank(line[indent])) ++indent;

    WString inserted;
    if (!inserted.Assign(u"\n") || !inserted.Append(line, indent)) return false;
    if (rest.IsEmpty() || !std::all_of(line + column, line + end, Text::IsBlank))
        return InsertText(EditLineStart() + column, inserted.Text(), inserted.Length());
    return BreakBeforeBlanks(rest, inserted);
}

// An Enter that also removes the blanks after the caret.
bool TextBuffer::BreakBeforeBlanks(ColumnRange blanks, const WString& inserted) {
    const EditPipeline::Operation operation(pipeline);
    // Both in the store: DeleteInEditLine would open the line again, which the commit closes, for the insertion to
    // close it at once. What is before `removed` the commit does not change.
    const TextRange removed = parts.editLine.RangeOf(blanks);
    if (!CommitEdit() || !BeginGroup()) return false;
    if (DeleteText(removed) && InsertText(removed.start, inserted.Text(), inserted.Length()) && EndGroup()) return true;
    AbandonGroup();
    return false;
}

bool TextBuffer::DeleteInEditLine(TextDocumentView* view, ColumnRange columns) {
    if (readOnly) return true;
    if (!OpenCaretLine(view)) return false;
    const uint32_t end = parts.editLine.Length(); // of its line feed, or of the terminator on the last line
    const Char* line = EditLineText().Text();
    // May take the line feed along, which the edit line cannot lose. The commit closes the line, but keeps its start:
    // RangeOf still holds.
    if (columns.start <= end && line[end] == u'\n') return CommitEdit() && DeleteText(parts.editLine.RangeOf(columns));
    const uint32_t removedEnd = std::min(columns.end, end);
    if (columns.start >= removedEnd) return false;
    auto* record = new LineEdit(pipeline.Target(), true);
    const uint32_t count = removedEnd - columns.start;
    return pipeline.Perform(
        Checked(record, record && record->SetUp(columns.start, line + columns.start, count, u'\0')));
}

bool TextBuffer::InsertText(uint32_t offset, const Char* inserted, uint32_t count) {
    if (readOnly || count == 0) return true;
    if (!CommitEdit() || uint64_t{Length()} + count >= TextStore::LengthLimit) return false;
    auto* record = new InsertEdit(pipeline.Target());
    return PerformInStore(pipeline,
                          Checked(record, record && record->SetUp(std::min(offset, Length()), inserted, count)));
}

bool TextBuffer::DeleteText(TextRange range) {
    if (readOnly) return true;
    if (!CommitEdit()) return false;
    range.end = std::min(range.end, Length());
    if (range.start >= range.end) return true;
    auto* record = new DeleteEdit(pipeline.Target());
    return PerformInStore(pipeline, Checked(record, record && record->SetUp(range)));
}

bool TextBuffer::ReplaceRanges(Array<ReplacedRange>& ranges, const Char* inserted, uint32_t count) {
    if (readOnly || ranges.IsEmpty()) return true;
    if (!CommitEdit()) return false;
    auto* record = new BulkEdit(pipeline.Target());
    return PerformInStore(pipeline, Checked(record, record && record->SetUp(ranges, inserted, count)));
}

void TextBuffer::EndTyping() {
    UndoRecord* latest = History().UndoHead();
    if (latest && latest->state == UndoRecord::State::InEditLine) static_cast<LineEdit*>(latest)->EndTyping();
}

bool TextBuffer::FindText(const SearchQuery& query, SearchWay way, SearchHit& hit, SearchProgress* progress) {
    hit.wrapped = false;
    if (!CommitEdit() || !Content()) return false;
    return TextSearch(Content(), Length(), query).Find(way, hit, progress);
}

void TextBuffer::ToggleBookmark(uint32_t line) {
    if (line < GetLineCount() && parts.marks.ToggleBookmark(line)) RepaintLines({line, line});
}

void TextBuffer::ClearBookmarks() {
    parts.marks.ClearBookmarks();
    RepaintAll();
}

// Views and colouring.

DocumentView* TextBuffer::CreateView(NativeWindow parent) {
    if (!services.makeView) return nullptr;
    return AddView([this, parent] { return services.makeView(*this, parent); });
}

void TextBuffer::ForgetView(DocumentView* view) {
    if (ActiveView() == view) SetActiveView(nullptr);
    DocumentBase::ForgetView(view);
}

void TextBuffer::RepaintAll() {
    pipeline.Notifier().Invalidate();
    pipeline.OpenActiveLine();
}

void TextBuffer::RepaintLines(LineRange lines) {
    pipeline.Notifier().InvalidateLines(lines);
    if (ActiveView() && lines.Holds(ActiveView()->CaretLine())) pipeline.OpenActiveLine();
}

void TextBuffer::AttachEngine(SyntaxEngine* newEngine) {
    // Highlighted brackets stay highlighted, also across a time without an engine.
    for (uint32_t i = 0; engine && i < SyntaxEngine::HighlightCount; ++i) highlights[i] = engine->Highlight(i);
    if (engine) engine->Release();
    engine = newEngine;
    for (uint32_t i = 0; engine && i < SyntaxEngine::HighlightCount; ++i)
        engine->SetHighlight(i, highlights[i].start == NoOffset ? nullptr : &highlights[i]);
    pipeline.Notifier().ForgetAfter(0);
}

bool TextBuffer::SetEngineName(const Char* name) {
    if (!engineName.Assign(name)) return false;
    ResetSyntaxEngine();
    return true;
}

void TextBuffer::OnSettingsChanged(SettingsEffect kind) {
    if (kind == SettingsEffect::Engine) AttachEngine(ChooseEngineForFile(engineName.Text(), path.Text()));
}

void TextBuffer::ResetSyntaxEngine() {
    OnSettingsChanged(SettingsEffect::Engine);
    RepaintAll();
}

// Output of commands.

bool TextBuffer::GetOutputState(bool& running) const {
    if (!isOutput) return false;
    running = output.IsRunning();
    return true;
}

bool TextBuffer::MarkAsOutput() {
    // What is typed cannot be written back once the document is read-only.
    if (!CommitEdit()) return false;
    parts.editLine.Release();
    readOnly = isOutput = true;
    return true;
}

bool TextBuffer::AppendOutputText(Char* added) {
    if (!isOutput) return false;
    uint32_t addedLines = 0;
    LineEnding style = LineEnding::None;
    TextStore& store = parts.store;
    const uint32_t count = NormaliseLineBreaks(added, addedLines, style);
    if (!store.EnsureCapacity(uint64_t{Length()} + count)) return false;
    const uint32_t from = Length();
    const TextPosition oldEnd = store.End();
    std::memcpy(store.Data() + from, added, count * sizeof(Char));
    store.Appended({count, addedLines - 1});
    pipeline.NotifyAppended(from, oldEnd);
    return true;
}

bool TextBuffer::RunCommand(const Char* command, const Char* startDirectory) {
    if (output.IsRunning()) return false;
    const bool started = output.Open() && parts.store.EnsureCapacity(Length()) && MarkAsOutput() &&
                         output.Start(command, startDirectory) && output.SetTimer(services.timer, *this);
    if (started) {
        NotifyRunState(true);
    } else {
        EndRun();
    }
    return started;
}

void TextBuffer::PollOutput() {
    if (!output.IsRunning()) return;
    const uint32_t from = Length();
    const TextPosition oldEnd = parts.store.End();
    const bool isOver = output.Poll();
    if (Length() > from) pipeline.NotifyAppended(from, oldEnd);
    // Without the timer that the output wants it is polled as often as before, and asked for again each time.
    static_cast<void>(output.SetTimer(services.timer, *this));
    if (isOver) EndRun();
}

void TextBuffer::NotifyRunState(bool running) {
    if (TextDocumentView* const first = pipeline.Target().views.First()) first->RunStateChanged(this, running);
}

void TextBuffer::EndRun() {
    if (output.Period()) services.timer->Stop(*this);
    output.Close();
    NotifyRunState(false);
}
