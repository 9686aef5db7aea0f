#pragma once

#include "binary/ChangedPages.h"
#include "binary/FileWindow.h"

// The bytes of a file as they are now: those of its changed pages, else what is in the file.
class PagedContent {
public:
    // `openedFile` has to outlive this.
    explicit PagedContent(FileWindow& openedFile) : file(openedFile) {}
    PagedContent(const PagedContent&) = delete;
    PagedContent& operator=(const PagedContent&) = delete;

    // Fills PageSize bytes with the page that starts at `pageStart`: its changed content unless `fromFile`
    // is set, else the file's. `valid` is how many of them there are; the rest is zero. On failure there are
    // those before the first one that cannot be read.
    [[nodiscard]] bool ReadPage(uint8_t* destination, uint64_t pageStart, bool fromFile, uint32_t& valid);
    // Reads the current content; false unless all of it is there. The file's window serves as scratch space for
    // pages of the file, yet what it says of itself stays as it is: who needs the window itself reads it again
    // (docs/oddities.md).
    [[nodiscard]] bool ReadBytes(uint64_t offset, uint8_t* destination, size_t count);
    // False, with nothing changed, when the bytes do not all lie in the file, a page cannot be read or memory
    // runs out.
    [[nodiscard]] bool WriteBytes(uint64_t offset, const uint8_t* source, size_t count);
    // Says that a byte is about to be read or written: with many changed pages it is far from the processor.
    void Prefetch(uint64_t offset) const;

    enum class WriteResult { Done, NothingWritten, PartlyWritten };
    // Writes all changed pages into the file. They stay changed pages until they are forgotten.
    [[nodiscard]] WriteResult WritePages();
    void ForgetPages() { pages.Clear(); }
    size_t PageCount() const { return pages.Count(); }
    // The changed pages, in the order they were first changed.
    ChangedPage* FirstPage() { return pages.Head(); }
    // See FileWindow.
    uint64_t FileSize() const { return file.Size(); }
    uint32_t PageBytes(uint64_t pageStart) const { return file.PageBytes(pageStart); }

private:
    ChangedPage* MakePage(uint64_t index);
    [[nodiscard]] bool MakePages(uint64_t offset, size_t count);

    FileWindow& file;
    ChangedPages pages;
};
