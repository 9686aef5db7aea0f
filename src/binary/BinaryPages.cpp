// The content of a BinaryDocument: the window, the changed pages and the edits.

#include "binary/BinaryDocument.h"

#include <algorithm>
#include <cstring>
#include <xmmintrin.h>

// How many bytes of the file the page that starts there has.
uint32_t BinaryDocument::PageBytes(uint64_t pageStart) const {
    if (pageStart >= fileSize) return 0;
    return static_cast<uint32_t>(std::min<uint64_t>(PageSize, fileSize - pageStart));
}

// Nothing is ever asked for behind the end: the system would be called once more only to say so.
bool BinaryDocument::ReadAt(uint64_t offset, uint8_t* destination, uint32_t count, uint32_t& read) {
    const uint64_t left = offset < fileSize ? fileSize - offset : 0;
    const auto wanted = static_cast<size_t>(std::min<uint64_t>(count, left));
    size_t got = 0;
    const bool done = file.ReadAt(offset, destination, wanted, got) || ReadSectors(offset, destination, wanted, got);
    read = static_cast<uint32_t>(got);
    return done;
}

// A read that meets bytes which the device does not deliver fails as a whole: sector by sector everything before
// them can be had.
bool BinaryDocument::ReadSectors(uint64_t offset, uint8_t* destination, size_t count, size_t& read) {
    constexpr size_t Sector = 512;
    size_t got = 0;
    for (read = 0; read < count; read += got) {
        const size_t part = std::min(count - read, Sector - static_cast<size_t>((offset + read) % Sector));
        if (!file.ReadAt(offset + read, destination + read, part, got)) return false;
        if (got == 0) break; // the file has become shorter
    }
    return true;
}

bool BinaryDocument::WindowHolds(uint64_t offset, uint32_t count) const {
    return offset >= windowStart && offset - windowStart + count <= windowValid;
}

bool BinaryDocument::FillWindow(uint64_t start) {
    windowStart = start;
    return ReadAt(start, window, WindowSize, windowValid);
}

bool BinaryDocument::EnsureWindow(uint64_t offset, uint32_t count) {
    const uint64_t first = std::min(offset, fileSize);
    count = static_cast<uint32_t>(std::min<uint64_t>(count, fileSize - first));
    if (WindowHolds(first, count)) return true;
    if (!window) return false;
    uint64_t start = offset;
    if (offset >= fileSize) {
        start = fileSize > WindowSize ? fileSize - WindowSize : 0;
    } else if (offset < windowStart) {
        // Keeps the bytes before for a walk backwards, as many as leave room for the range.
        const uint32_t before = std::min(PageSize, WindowSize - count);
        start = offset > before ? offset - before : 0;
    }
    if (FillWindow(start) || WindowHolds(first, count)) return true;
    // What cannot be read may lie before the range.
    return start < first && (FillWindow(first) || WindowHolds(first, count));
}

bool BinaryDocument::ReadPage(uint8_t* destination, uint64_t pageStart, bool fromFile, uint32_t& valid) {
    const ChangedPage* page = fromFile ? nullptr : pages.Find(pageStart / PageSize);
    bool done = true;
    if (page) {
        std::memcpy(destination, page->data, PageSize);
        valid = PageBytes(pageStart);
    } else {
        done = ReadAt(pageStart, destination, PageSize, valid);
    }
    std::memset(destination + valid, 0, PageSize - valid);
    return done;
}

bool BinaryDocument::ReadBytes(uint64_t offset, uint8_t* destination, size_t count) {
    if (offset > fileSize || count > fileSize - offset || !window) return false;
    while (count) {
        const auto inPage = static_cast<uint32_t>(offset % PageSize);
        const size_t part = std::min<size_t>(count, PageSize - inPage);
        const ChangedPage* page = pages.Find(offset / PageSize);
        if (!page) {
            uint32_t valid = 0;
            ReadPage(window, offset - inPage, true, valid);
            if (inPage + part > valid) return false;
        }
        std::memcpy(destination, (page ? page->data : window) + inPage, part);
        offset += part;
        destination += part;
        count -= part;
    }
    return true;
}

// Reads a page of the file into a new changed page. A page that the file does not deliver as a whole is
// none: saving would write what was never read.
ChangedPage* BinaryDocument::MakePage(uint64_t index) {
    auto* page = new ChangedPage;
    if (!page) return nullptr;
    const uint64_t start = index * PageSize;
    uint32_t read = 0;
    page->index = index;
    if (ReadAt(start, page->data, PageSize, read) && read == PageBytes(start)) return page;
    delete page;
    return nullptr;
}

// Makes every page of the range a changed one, or none.
bool BinaryDocument::MakePages(uint64_t offset, size_t count) {
    const ChangedPage* last = pages.Tail();
    for (uint64_t index = offset / PageSize; index <= (offset + count - 1) / PageSize; ++index) {
        if (pages.Find(index)) continue;
        ChangedPage* page = MakePage(index);
        if (!page) {
            pages.RemoveBehind(last);
            return false;
        }
        pages.Append(page);
    }
    return true;
}

bool BinaryDocument::WriteBytes(uint64_t offset, const uint8_t* source, size_t count) {
    if (offset > fileSize || count > fileSize - offset) return false;
    if (count && !MakePages(offset, count)) return false;
    while (count) {
        const auto inPage = static_cast<uint32_t>(offset % PageSize);
        const size_t part = std::min<size_t>(count, PageSize - inPage);
        std::memcpy(pages.Find(offset / PageSize)->data + inPage, source, part);
        offset += part;
        source += part;
        count -= part;
    }
    return true;
}

// Undo.

// With many changed pages a byte of one is far from the processor. Asked for now, it arrives while the record is
// made; otherwise the edit would stand still for it.
void BinaryDocument::FetchAhead(uint64_t offset) const {
    const ChangedPage* page = pages.Find(offset / PageSize);
    if (page) _mm_prefetch(reinterpret_cast<const char*>(page->data + offset % PageSize), _MM_HINT_T0);
}

bool BinaryDocument::EditBytes(uint64_t offset, const uint8_t* newBytes, size_t count, HexDocumentView* view,
                               const HexViewState& state) {
    FetchAhead(offset);
    auto* edit = new ByteEdit;
    if (!edit) return false;
    edit->offset = offset;
    edit->view = view;
    edit->state = state;
    bool done = count > 0 && offset < fileSize && count <= fileSize - offset && edit->Prepare(count) &&
                ReadBytes(offset, edit->Old(), count);
    if (done) {
        std::memcpy(edit->New(), newBytes, count);
        done = Perform(*edit, false);
    }
    if (!done) {
        delete edit;
        return false;
    }
    FreeRecords(redoHead);
    edit->serial = ++lastSerial;
    edit->next = undoHead;
    undoHead = edit;
    NotifyModified();
    return true;
}

bool BinaryDocument::Perform(ByteEdit& edit, bool undoing) {
    if (!WriteBytes(edit.offset, undoing ? edit.Old() : edit.New(), edit.count)) return false;
    if (HexDocumentView* view = Shown(edit.view)) {
        const HexViewState& state = edit.state;
        view->SetCaret(undoing ? state.caretBefore : state.caretAfter,
                       undoing ? state.subPositionBefore : state.subPositionAfter);
        view->MakeCaretVisible();
    }
    RepaintAll();
    return true;
}

bool BinaryDocument::Undo() {
    ByteEdit* edit = undoHead;
    if (!edit || !Perform(*edit, true)) return false;
    undoHead = edit->next;
    edit->next = redoHead;
    redoHead = edit;
    NotifyModified();
    return true;
}

bool BinaryDocument::Redo() {
    ByteEdit* edit = redoHead;
    if (!edit || !Perform(*edit, false)) return false;
    redoHead = edit->next;
    edit->next = undoHead;
    undoHead = edit;
    NotifyModified();
    return true;
}

void BinaryDocument::FreeRecords(ByteEdit*& head) {
    while (ByteEdit* edit = head) {
        head = edit->next;
        delete edit;
    }
}
