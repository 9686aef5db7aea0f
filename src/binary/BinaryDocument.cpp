#include "binary/BinaryDocument.h"

#include "base/Assert.h"
#include "base/TextFormat.h"

#include <cstring>

// Views.

DocumentView* BinaryDocument::CreateView(NativeWindow parent) {
    if (!services.makeView) return nullptr;
    return AddView([this, parent] { return services.makeView(*this, parent); });
}

// A record remembers its view, which may have been closed since.
HexDocumentView* BinaryDocument::Shown(HexDocumentView* view) const { return HasView(view) ? view : nullptr; }

void BinaryDocument::RepaintAll() {
    for (const ViewNode* node = views.head; node; node = node->next)
        static_cast<HexDocumentView*>(node->view)->ContentChanged();
}

// Opening and saving.

BinaryDocument::~BinaryDocument() {
    DestroyViews();
    Close();
}

uint32_t BinaryDocument::Release() {
    ORVANE_ASSERT(refCount > 0);
    if (--refCount) return refCount;
    delete this;
    return 0;
}

bool BinaryDocument::Open(const Char* fileName) {
    Close();
    if (file.Open(fileName) && SetPath(fileName)) {
        static_cast<void>(file.GetTime(fileTime));    // without it the next save may ask
        static_cast<void>(EnsureWindow(0, PageSize)); // later bytes may be read
        return true;
    }
    Close();
    return false;
}

void BinaryDocument::Close() {
    history.Clear();
    journal.Discard();
    file.Close();
    content.ForgetPages();
}

RecoveryResult BinaryDocument::Recover(JournalReader& changes) {
    // First how many changes are good, and whether a save had begun, which is said at the end.
    bool isSaving = false;
    const uint64_t count = CountChanges(changes, isSaving);
    const bool isThere = changes.Subject().fileSize == FileSize();
    RecoveryResult result = isThere ? RecoveryResult::Failed : RecoveryResult::FileChanged;
    if (isThere && !changes.HasFailed() && changes.ReadHeader() == JournalReader::State::Readable)
        result = TakeChanges(changes, count, isSaving);
    const bool isGood = result == RecoveryResult::Whole || result == RecoveryResult::Cut;
    if (isGood)
        history.MarkPartlySaved();
    else
        Close();
    return result;
}

// Of a page of the file, or the mark of a save.
bool BinaryDocument::IsChange(const JournalChange& change) const {
    if (ByteJournal::IsSaveMark(change)) return true;
    const uint64_t start = ByteJournal::PageStart(change);
    return start % PageSize == 0 && start < FileSize() && change.length == file.PageBytes(start);
}

// The changes up to the last one after which nothing is missing that was written together with it.
uint64_t BinaryDocument::CountChanges(JournalReader& changes, bool& isSaving) const {
    uint64_t complete = 0;
    JournalChange change;
    for (uint64_t count = 1; changes.Next(change) && IsChange(change) && changes.Pass(); ++count) {
        if (ByteJournal::HasMore(change)) continue;
        complete = count;
        isSaving = ByteJournal::IsSaveMark(change);
    }
    return complete;
}

RecoveryResult BinaryDocument::TakeChanges(JournalReader& changes, uint64_t count, bool isSaving) {
    uint8_t page[PageSize];
    uint8_t inFile[PageSize];
    uint32_t valid = 0;
    JournalChange change;
    for (; count; --count) {
        if (!changes.Next(change) || !IsChange(change) || !changes.Read(page)) return RecoveryResult::Failed;
        if (ByteJournal::IsSaveMark(change)) continue;
        const uint64_t start = ByteJournal::PageStart(change);
        Checksum sum;
        if (!content.ReadPage(inFile, start, true, valid)) return RecoveryResult::Failed;
        sum.Add(inFile, valid);
        // A save that was cut short may have written this page already, or a part of it.
        if (!isSaving && sum.Value() != change.detail) return RecoveryResult::FileChanged;
        if (!WriteBytes(start, page, static_cast<size_t>(change.length))) return RecoveryResult::Failed;
    }
    return changes.IsAtEnd() ? RecoveryResult::Whole : RecoveryResult::Cut;
}

bool BinaryDocument::Save(const Char*, Encoding, LineEnding) {
    if (!file.IsOpen()) return false;
    const bool saved = !IsModified() || (file.MayBeWritten(GetName()) && WriteToFile());
    if (saved) {
        content.ForgetPages();
        history.MarkSaved();
        journal.Discard();
    }
    NotifyModified();
    RepaintAll();
    return saved;
}

bool BinaryDocument::HasOtherFile() {
    Platform::FileTime now = 0;
    return IsModified() && file.IsOpen() && file.GetTime(now) && now != fileTime;
}

bool BinaryDocument::WriteToFile() {
    // Before the first byte: from then on the file may be none of the states that the journal knows.
    journal.SaveBegins();
    const PagedContent::WriteResult result = content.WritePages();
    if (result != PagedContent::WriteResult::NothingWritten) history.MarkPartlySaved();
    const bool isWritten = result == PagedContent::WriteResult::Done && file.Flush();
    // Without it the next save asks.
    if (result != PagedContent::WriteResult::NothingWritten) static_cast<void>(file.GetTime(fileTime));
    if (!isWritten) journal.SaveFailed();
    return isWritten;
}

// Edits.

bool BinaryDocument::EditBytes(uint64_t offset, const uint8_t* newBytes, size_t count, HexDocumentView* view,
                               const HexViewState& state) {
    // It arrives while the record is made; otherwise the edit would wait for it.
    content.Prefetch(offset);
    auto* edit = new ByteEdit;
    if (!edit) return false;
    edit->offset = offset;
    edit->view = view;
    edit->state = state;
    bool done = count > 0 && offset < FileSize() && count <= FileSize() - offset && edit->Prepare(count) &&
                ReadBytes(offset, edit->Old(), count);
    if (done) {
        std::memcpy(edit->New(), newBytes, count);
        done = Perform(*edit, false);
    }
    if (!done) {
        delete edit;
        return false;
    }
    history.Add(edit);
    ShowChange(view);
    return true;
}

bool BinaryDocument::Perform(ByteEdit& edit, bool undoing) {
    if (!WriteBytes(edit.offset, undoing ? edit.Old() : edit.New(), edit.count)) return false;
    if (HexDocumentView* view = Shown(edit.view)) view->SetCaret(undoing ? edit.state.before : edit.state.after);
    return true;
}

void BinaryDocument::ShowChange(HexDocumentView* view) {
    if (Shown(view)) view->MakeCaretVisible();
    journal.Changed();
    RepaintAll();
    NotifyModified();
}

bool BinaryDocument::Step(bool undoing) {
    HexDocumentView* view = nullptr; // of the last edit
    size_t count = 0;
    do {
        ByteEdit* edit = undoing ? history.Undoable() : history.Redoable();
        if (!edit || !StepEdit(undoing)) {
            // The pages of these are in memory, so that this cannot fail.
            for (; count; --count) static_cast<void>(StepEdit(!undoing));
            return false;
        }
        view = edit->view;
        ++count;
    } while (history.IsInsideStep());
    ShowChange(view);
    return true;
}

// One edit back or forth, of a step that may have more.
bool BinaryDocument::StepEdit(bool undoing) {
    if (!Perform(undoing ? *history.Undoable() : *history.Redoable(), undoing)) return false;
    undoing ? history.MoveToRedo() : history.MoveToUndo();
    return true;
}

bool BinaryDocument::FindBytes(const WString& pattern, const ByteQuery& query, ByteHit& hit, SearchProgress* progress) {
    ByteSearch search(file, query, progress);
    const bool found = search.Find(pattern, hit);
    searchFailed = search.HasFailed();
    return found;
}

// The rest of Document.

bool BinaryDocument::CanDo(DocumentCommand kind) const {
    if (kind == DocumentCommand::Undo) return history.Undoable() != nullptr;
    if (kind == DocumentCommand::Redo) return history.Redoable() != nullptr;
    return kind == DocumentCommand::Edit;
}

bool BinaryDocument::DoCommand(DocumentCommand kind) {
    if (kind != DocumentCommand::Undo && kind != DocumentCommand::Redo) return false;
    const bool done = kind == DocumentCommand::Undo ? Undo() : Redo();
    // Menu and keys come here; every view reports to the same frame.
    if (!done && CanDo(kind) && views.head) static_cast<HexDocumentView*>(views.head->view)->ReportEditFailure();
    return true;
}

bool BinaryDocument::GetEncoding(Encoding& current, const Char* const*& names) const {
    current = Encoding::Ansi;
    names = nullptr;
    return false;
}

bool BinaryDocument::GetSessionText(WString& out) const { return Text::AppendFormat(out, u"eb %s\r\n", GetName()); }
