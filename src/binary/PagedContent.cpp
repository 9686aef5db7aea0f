#include "binary/PagedContent.h"

#include "base/Assert.h"

#include <algorithm>
#include <cstring>
#include <xmmintrin.h>

bool PagedContent::ReadPage(uint8_t* destination, uint64_t pageStart, bool fromFile, uint32_t& valid) {
    const ChangedPage* page = fromFile ? nullptr : pages.Find(pageStart / PageSize);
    bool done = true;
    if (page) {
        std::memcpy(destination, page->data, PageSize);
        valid = file.PageBytes(pageStart);
    } else {
        done = file.ReadAt(pageStart, destination, PageSize, valid);
    }
    std::memset(destination + valid, 0, PageSize - valid);
    return done;
}

bool PagedContent::ReadBytes(uint64_t offset, uint8_t* destination, size_t count) {
    uint8_t* const scratch = file.Bytes();
    // Not offset + count, which may wrap around.
    if (offset > file.Size() || count > file.Size() - offset || !scratch) return false;
    while (count) {
        const auto inPage = static_cast<uint32_t>(offset % PageSize);
        const size_t part = std::min<size_t>(count, PageSize - inPage);
        const ChangedPage* page = pages.Find(offset / PageSize);
        if (!page) {
            uint32_t valid = 0;
            // Through the memory of the window, whose bookkeeping stays: docs/oddities.md.
            static_cast<void>(ReadPage(scratch, offset - inPage, true, valid)); // what there is may do
            if (inPage + part > valid) return false;
        }
        std::memcpy(destination, (page ? page->data : scratch) + inPage, part);
        offset += part;
        destination += part;
        count -= part;
    }
    return true;
}

// Reads a page of the file into a new changed page. A page that the file does not deliver as a whole is
// none: saving would write what was never read.
ChangedPage* PagedContent::MakePage(uint64_t index) {
    auto* page = new ChangedPage;
    if (!page) return nullptr;
    const uint64_t start = index * PageSize;
    uint32_t read = 0;
    page->index = index;
    if (file.ReadAt(start, page->data, PageSize, read) && read == file.PageBytes(start)) return page;
    delete page;
    return nullptr;
}

// Makes every page of the range a changed one, or none.
bool PagedContent::MakePages(uint64_t offset, size_t count) {
    const ChangedPage* last = pages.Tail();
    for (uint64_t index = offset / PageSize; index <= (offset + count - 1) / PageSize; ++index) {
        if (pages.Find(index)) continue;
        ChangedPage* page = MakePage(index);
        if (!page) {
            pages.RemoveAfter(last);
            return false;
        }
        pages.Append(page);
    }
    return true;
}

bool PagedContent::WriteBytes(uint64_t offset, const uint8_t* source, size_t count) {
    if (offset > file.Size() || count > file.Size() - offset) return false;
    // All pages first: nothing may fail once a byte has changed.
    if (count && !MakePages(offset, count)) return false;
    while (count) {
        const auto inPage = static_cast<uint32_t>(offset % PageSize);
        const size_t part = std::min<size_t>(count, PageSize - inPage);
        ChangedPage* const page = pages.Find(offset / PageSize);
        ORVANE_ASSERT(page);
        std::memcpy(page->data + inPage, source, part);
        page->isInJournal = false;
        offset += part;
        source += part;
        count -= part;
    }
    return true;
}

void PagedContent::Prefetch(uint64_t offset) const {
    const ChangedPage* page = pages.Find(offset / PageSize);
    if (page) _mm_prefetch(reinterpret_cast<const char*>(page->data + offset % PageSize), _MM_HINT_T0);
}

PagedContent::WriteResult PagedContent::WritePages() {
    WriteResult failure = WriteResult::NothingWritten;
    for (const ChangedPage* page = pages.Head(); page; page = page->next) {
        const uint64_t start = page->index * PageSize;
        if (!file.SeekTo(start)) return failure;
        // From here on the file may be what no state of the document is.
        failure = WriteResult::PartlyWritten;
        if (!file.Write(page->data, file.PageBytes(start))) return failure;
    }
    return WriteResult::Done;
}
