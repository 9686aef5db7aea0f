#include "binary/BinaryDocument.h"

#include "base/Text.h"

namespace {

HexViewFactory viewFactory = nullptr;

} // namespace

void SetHexViewFactory(HexViewFactory factory) { viewFactory = factory; }

// Views.

DocumentView* BinaryDocument::CreateView(NativeWindow parent) {
    if (!viewFactory) return nullptr;
    return AddView([this, parent] { return viewFactory(*this, parent); });
}

// A record remembers its view, which may have been closed since.
HexDocumentView* BinaryDocument::Shown(HexDocumentView* view) const { return HasView(view) ? view : nullptr; }

void BinaryDocument::RepaintAll() {
    for (const ViewNode* node = views.head; node; node = node->next)
        static_cast<HexDocumentView*>(node->view)->ContentChanged();
}

// Life.

BinaryDocument::~BinaryDocument() {
    DestroyViews();
    Close();
}

uint32_t BinaryDocument::Release() {
    if (--refCount) return refCount;
    delete this;
    return 0;
}

bool BinaryDocument::Open(const Char* fileName) {
    using Mode = Platform::File::Mode;
    Close();
    bool opened = file.Open(fileName, Mode::ReadWrite);
    if (!opened) {
        opened = file.Open(fileName, Mode::ReadShared);
        readOnly = 1;
    }
    if (opened && file.GetSize(fileSize)) {
        if (AllocateWindow() && SetPath(fileName)) {
            EnsureWindow(0, PageSize);
            return true;
        }
    }
    Close();
    return false;
}

// On a cache line's start: there the system copies what it reads measurably faster.
bool BinaryDocument::AllocateWindow() {
    windowBlock = Heap::AllocateArray<uint8_t>(CacheLine + LongestHead + WindowSize);
    if (!windowBlock) return false;
    window = windowBlock + LongestHead + (CacheLine - reinterpret_cast<uintptr_t>(windowBlock) % CacheLine);
    return true;
}

void BinaryDocument::Close() {
    FreeRecords(undoHead);
    FreeRecords(redoHead);
    savedUndoHead = 0;
    file.Close();
    fileSize = 0;
    readOnly = 0;
    Heap::Free(windowBlock);
    windowBlock = window = nullptr;
    windowStart = 0;
    windowValid = 0;
    pages.Clear();
}

bool BinaryDocument::Save(const Char*, uint32_t, uint32_t) {
    if (!file.IsOpen()) return false;
    const bool saved = !IsModified() || (MayBeWritten() && WritePages() && file.Flush());
    if (saved) {
        pages.Clear();
        savedUndoHead = HeadSerial();
    }
    NotifyModified();
    RepaintAll();
    return saved;
}

// Writing past the end of a file that has become shorter would make it grow, and nobody would find again what is
// written into one that was deleted, or that another one has replaced.
bool BinaryDocument::MayBeWritten() {
    uint64_t sizeNow = 0;
    return !readOnly && file.GetSize(sizeNow) && sizeNow >= fileSize && !file.IsDeleted() && file.IsAt(GetName());
}

bool BinaryDocument::WritePages() {
    for (const ChangedPage* page = pages.Head(); page; page = page->next) {
        const uint64_t start = page->index * PageSize;
        if (!file.Seek(start)) return false;
        // Until all is written the file is what no state of the document is, whatever is undone.
        savedUndoHead = NoSerial;
        if (!file.Write(page->data, PageBytes(start))) return false;
    }
    return true;
}

// The rest of Document.

bool BinaryDocument::CanDo(uint32_t kind) const {
    if (kind == DocumentCommand::Undo) return undoHead != nullptr;
    if (kind == DocumentCommand::Redo) return redoHead != nullptr;
    return kind == DocumentCommand::Edit;
}

bool BinaryDocument::DoCommand(uint32_t kind) {
    if (kind != DocumentCommand::Undo && kind != DocumentCommand::Redo) return false;
    const bool done = kind == DocumentCommand::Undo ? Undo() : Redo();
    // Menu and keys come here; every view has the same frame to tell it to.
    if (!done && CanDo(kind) && views.head) static_cast<HexDocumentView*>(views.head->view)->TellFailedChange();
    return true;
}

bool BinaryDocument::GetEncoding(uint32_t& current, const Char* const*& names) const {
    current = 0;
    names = nullptr;
    return false;
}

bool BinaryDocument::GetSessionText(WString& out) const { return Text::AppendFormat(out, u"eb %s\r\n", GetName()); }
