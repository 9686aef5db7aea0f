#pragma once

#include "base/Array.h"
#include "base/Platform.h"
#include "base/ScanBytes.h"
#include "binary/ByteEdit.h"
#include "binary/ChangedPages.h"
#include "binary/HexDocumentView.h"
#include "document/Document.h"
#include "document/SearchProgress.h"

// A file of any size as bytes, which are changed in place and never become more or fewer. Nothing but a
// window of the file and the changed pages is held in memory.
class BinaryDocument final : public DocumentBase {
public:
    static constexpr uint32_t WindowSize = 2 * PageSize;

    BinaryDocument() = default;
    BinaryDocument(const BinaryDocument&) = delete;
    BinaryDocument& operator=(const BinaryDocument&) = delete;

    // Document, in table order (the shared ones are DocumentBase's).
    uint32_t Release() override;
    DocumentView* CreateView(NativeWindow parent) override;
    bool IsModified() const override { return HeadSerial() != savedUndoHead; }
    // Writes the changed pages back into the open file, whatever the arguments; nothing when the document is not
    // modified, which succeeds also where the file may only be read. On failure all of them and the undo records
    // stay; once some may have been written the document is modified until it is saved.
    bool Save(const Char* file, uint32_t encoding, uint32_t lineEnding) override;
    bool GetOutputState(bool&) const override { return false; }
    bool IsChangedOnDisk() override { return false; }
    void MarkFileTimeNow() override {}
    bool Reload() override { return false; }
    void StopProcess() override {}
    bool CanDo(uint32_t kind) const override;
    bool DoCommand(uint32_t kind) override;
    void OnSettingsChanged(uint32_t) override {}
    bool GetEncoding(uint32_t& current, const Char* const*& names) const override;
    bool IsBinary() const override { return true; }
    bool GetSessionText(WString& out) const override;
    void ResetSyntaxEngine() override {}
    uint32_t GetLineEnding() const override { return 0; }

    // Opens a file in place of the one before, read-only when it cannot be written. On failure the document
    // is closed. That its first bytes cannot be read is no failure: others may be.
    bool Open(const Char* fileName);
    bool IsReadOnly() const { return readOnly != 0; }
    // As it was when the file was opened.
    uint64_t FileSize() const { return fileSize; }

    // Makes the window hold [offset, offset + count), as far as the file goes; `count` is at most
    // WindowSize. Bytes that it holds already are not read again. A file that has become shorter is a success, with a
    // window that ends earlier. On failure the window ends with the last byte before those that cannot be read.
    bool EnsureWindow(uint64_t offset, uint32_t count);
    const uint8_t* Window() const { return window; }
    uint64_t WindowStart() const { return windowStart; }
    uint32_t WindowValid() const { return windowValid; }

    // Fills PageSize bytes with the page that starts at `pageStart`: its changed content unless `fromFile`
    // is set, else the file's. `valid` is how many of them there are; the rest is zero. On failure there are
    // those before the first one that cannot be read.
    bool ReadPage(uint8_t* destination, uint64_t pageStart, bool fromFile, uint32_t& valid);
    // Reads the current content; false unless all of it is there. The window serves as scratch space for
    // pages of the file, yet WindowStart and WindowValid stay as they are: who needs the window itself
    // reads it anew.
    bool ReadBytes(uint64_t offset, uint8_t* destination, size_t count);
    // Changes bytes without an undo record. False, with nothing changed, when they do not all lie in the
    // file, a page cannot be read or memory runs out.
    bool WriteBytes(uint64_t offset, const uint8_t* source, size_t count);
    // The same as one undo step (`count` is at least 1). The view, which may be null, gets the caret that
    // `state` gives it.
    bool EditBytes(uint64_t offset, const uint8_t* newBytes, size_t count, HexDocumentView* view,
                   const HexViewState& state);
    // One record back or forth; false when there is none, or when its pages cannot be read.
    bool Undo();
    bool Redo();

    // Searches the file, without what is not saved yet, from `from` up to `end` (backwards: below `from`)
    // and then once around. The pattern is hex digits (see HexPattern.h) or text in the ANSI page (what that cannot
    // express is not found); only text without `matchCase` has its ASCII letters folded. Matches longer than the window
    // are not found, nor is anything once `progress` has broken the search off, or it has met bytes that cannot be
    // read.
    bool FindBytes(const WString& pattern, uint64_t from, uint64_t end, bool matchCase, bool backward, bool hexPattern,
                   uint64_t& found, bool& wrapped, uint32_t& matchLength, SearchProgress* progress = nullptr);
    // Whether the last search met bytes that cannot be read: that it found nothing then proves nothing.
    bool SearchFailed() const { return searchFailed; }

private:
    static constexpr uint32_t NoSerial = None32; // of no record, nor of an empty list
    static constexpr uint32_t CacheLine = 64;
    static constexpr uint32_t SystemPage = 4096;
    // A window is searched for no more of a pattern than its head, so that most of its places can be tested
    // before the next one is read, however long the pattern.
    static constexpr uint32_t LongestHead = 4096;

    ~BinaryDocument();

    struct Sought {
        const uint8_t* bytes;
        uint32_t count;
        bool matchCase;
        uint32_t headCount; // of its first bytes, which the windows are searched for
        const Scan::ByteFinder& head;
        SearchProgress* progress;  // may be null
        uint64_t gone = 0;         // bytes gone through in both passes
        uint64_t reach = PageSize; // bytes asked for at a time backwards
        bool brokenOff = false;
        bool unreadable = false; // met bytes that cannot be read, behind which nothing is known
    };

    uint32_t HeadSerial() const { return undoHead ? undoHead->serial : 0; }
    uint32_t PageBytes(uint64_t pageStart) const;
    bool AllocateWindow();
    void Close();
    bool MayBeWritten();
    bool WritePages();
    ChangedPage* MakePage(uint64_t index);
    bool MakePages(uint64_t offset, size_t count);
    bool ReadAt(uint64_t offset, uint8_t* destination, uint32_t count, uint32_t& read);
    bool ReadSectors(uint64_t offset, uint8_t* destination, size_t count, size_t& read);
    bool WindowHolds(uint64_t offset, uint32_t count) const;
    bool FillWindow(uint64_t start);
    bool NextWindow(Sought& sought, uint32_t kept);
    bool PreviousWindow(Sought& sought, uint64_t headEnd);
    bool StandsAt(Sought& sought, uint64_t offset);
    bool MayGoOn(Sought& sought, uint64_t bytes) const;
    bool FindForward(Sought& sought, uint64_t from, uint64_t end, uint64_t& found);
    bool FindBackward(Sought& sought, uint64_t from, uint64_t lowest, uint64_t& found);
    void FetchAhead(uint64_t offset) const;
    bool Perform(ByteEdit& edit, bool undoing);
    void FreeRecords(ByteEdit*& head);
    HexDocumentView* Shown(HexDocumentView* view) const;
    void RepaintAll();

    // What all documents have comes first, in DocumentBase.
    Platform::File file;
    uint64_t fileSize = 0;
    uint8_t* windowBlock = nullptr;
    uint8_t* window = nullptr; // WindowSize bytes of the block while a file is open, behind LongestHead others
    uint64_t windowStart = 0;
    uint32_t windowValid = 0;
    ChangedPages pages;
    ByteEdit* undoHead = nullptr;
    ByteEdit* redoHead = nullptr;
    // Serial of the undo head at the last save, 0 for an empty list, NoSerial when the file is half-written. A
    // serial is never reused, unlike the address of a freed record.
    uint32_t savedUndoHead = 0;
    uint32_t readOnly = 0;
    uint32_t lastSerial = 0;
    bool searchFailed = false;
};
