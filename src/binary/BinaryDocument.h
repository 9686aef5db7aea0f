#pragma once

#include "binary/ByteJournal.h"
#include "binary/ByteSearch.h"
#include "binary/EditHistory.h"
#include "binary/FileWindow.h"
#include "binary/HexDocumentView.h"
#include "binary/PagedContent.h"
#include "document/Document.h"

// A file of any size as bytes, which are changed in place and never become more or fewer. Nothing but a
// window of the file and the changed pages is held in memory.
class BinaryDocument final : public DocumentBase {
public:
    explicit BinaryDocument(const HexServices& around) : services(around) {}
    BinaryDocument(const BinaryDocument&) = delete;
    BinaryDocument& operator=(const BinaryDocument&) = delete;

    // Document, in table order (the shared ones are DocumentBase's).
    uint32_t Release() override;
    DocumentView* CreateView(NativeWindow parent) override;
    bool IsModified() const override { return history.IsModified(); }
    // Writes the changed pages back into the open file, whatever the arguments; nothing when the document is not
    // modified, which succeeds also where the file may only be read. On failure all of them and the undo records
    // stay; once some may have been written the document is modified until it is saved.
    [[nodiscard]] bool Save(const Char* file, Encoding encoding, LineEnding lineEnding) override;
    bool GetOutputState(bool&) const override { return false; }
    bool IsChangedOnDisk() override { return false; }
    bool MayCheckDisk() override { return false; }
    void JoinSteps(uint32_t after) override { history.JoinSteps(after); }
    // A changed page is written whole, which would revert what others have changed in the rest of it. False when
    // nothing is to be saved.
    bool HasOtherFile() override;
    void MarkFileTimeNow() override {}
    bool Reload() override { return false; }
    void StopProcess() override {}
    bool CanDo(DocumentCommand kind) const override;
    bool DoCommand(DocumentCommand kind) override;
    void OnSettingsChanged(SettingsEffect) override {}
    bool GetEncoding(Encoding& current, const Char* const*& names) const override;
    bool IsBinary() const override { return true; }
    bool GetSessionText(WString& out) const override;
    void ResetSyntaxEngine() override {}
    LineEnding GetLineEnding() const override { return LineEnding::None; }
    [[nodiscard]] bool FlushJournal() override { return journal.Flush(); }

    // Opens a file in place of the one before, read-only when it cannot be written. On failure the document
    // is closed. That its first bytes cannot be read is no failure: others may be.
    [[nodiscard]] bool Open(const Char* fileName);
    // Applies the changes of a journal, whose header was read, to its file, which was opened. They cannot be undone.
    // Unless they are Whole or Cut, the document is closed.
    [[nodiscard]] RecoveryResult Recover(JournalReader& changes);
    bool IsReadOnly() const { return file.IsReadOnly(); }
    // As it was when the file was opened.
    uint64_t FileSize() const { return file.Size(); }

    // The window of the file; see FileWindow.
    [[nodiscard]] bool EnsureWindow(uint64_t offset, uint32_t count) { return file.Ensure(offset, count); }
    const FileWindow& Window() const { return file; }

    // The current content; see PagedContent. WriteBytes makes no undo record.
    [[nodiscard]] bool ReadPage(uint8_t* destination, uint64_t pageStart, bool fromFile, uint32_t& valid) {
        return content.ReadPage(destination, pageStart, fromFile, valid);
    }
    [[nodiscard]] bool ReadBytes(uint64_t offset, uint8_t* destination, size_t count) {
        return content.ReadBytes(offset, destination, count);
    }
    [[nodiscard]] bool WriteBytes(uint64_t offset, const uint8_t* source, size_t count) {
        return content.WriteBytes(offset, source, count);
    }

    // Changes bytes as one undo step (`count` is at least 1). False, with nothing changed, as WriteBytes. The view,
    // which may be null, gets the caret that `state` gives it.
    [[nodiscard]] bool EditBytes(uint64_t offset, const uint8_t* newBytes, size_t count, HexDocumentView* view,
                                 const HexViewState& state);
    // One step back or forth; false, with nothing changed, when there is none, or when its pages cannot be read.
    [[nodiscard]] bool Undo() { return Step(true); }
    [[nodiscard]] bool Redo() { return Step(false); }

    // Searches the file, without what is not saved yet, from `query.from` up to `query.end` (backwards: below
    // `query.from`) and then once around. The pattern is hex digits (see HexPattern.h) or text in the ANSI page (what
    // that cannot express is not found); only text without `matchCase` has its ASCII letters folded. Matches longer
    // than the window are not found, nor is anything once `progress` has cancelled the search, or it has met bytes
    // that cannot be read.
    [[nodiscard]] bool FindBytes(const WString& pattern, const ByteQuery& query, ByteHit& hit,
                                 SearchProgress* progress = nullptr);
    // Whether the last search met bytes that cannot be read: that it found nothing then proves nothing.
    bool SearchFailed() const { return searchFailed; }

private:
    ~BinaryDocument();

    void Close();
    [[nodiscard]] bool WriteToFile();
    bool IsChange(const JournalChange& change) const;
    uint64_t CountChanges(JournalReader& changes, bool& isSaving) const;
    RecoveryResult TakeChanges(JournalReader& changes, uint64_t count, bool isSaving);
    [[nodiscard]] bool Perform(ByteEdit& edit, bool undoing);
    [[nodiscard]] bool Step(bool undoing);
    [[nodiscard]] bool StepEdit(bool undoing);
    void ShowChange(HexDocumentView* view);
    HexDocumentView* Shown(HexDocumentView* view) const;
    void RepaintAll();

    const HexServices& services;
    FileWindow file;
    Platform::FileTime fileTime = 0; // when it was opened or saved last
    PagedContent content{file};
    EditHistory history;
    ByteJournal journal{*this, services.recovery, content};
    bool searchFailed = false;
};
