#pragma once

#include "base/ScanBytes.h"
#include "binary/FileWindow.h"
#include "document/SearchProgress.h"

class WString;

// What is searched for, and where.
struct ByteQuery {
    uint64_t from = 0;
    uint64_t end = UINT64_MAX;
    bool matchCase = false;
    bool backward = false;
    bool hexPattern = false;
};

struct ByteHit {
    uint64_t offset = 0;
    uint32_t length = 0;
    bool wrapped = false; // found only after going once around
};

// One search of a file through its window, without what is not saved yet.
class ByteSearch {
public:
    // `progress` may be null. Everything has to outlive the search.
    ByteSearch(FileWindow& searched, const ByteQuery& asked, SearchProgress* observer)
        : file(searched), query(asked), progress(observer) {}
    ByteSearch(const ByteSearch&) = delete;
    ByteSearch& operator=(const ByteSearch&) = delete;

    // See BinaryDocument::FindBytes.
    [[nodiscard]] bool Find(const WString& pattern, ByteHit& hit);
    // Whether bytes were met that cannot be read: that nothing was found then proves nothing.
    bool HasFailed() const { return unreadable; }

private:
    static constexpr uint32_t SystemPage = 4096;

    [[nodiscard]] bool FindAround(ByteHit& hit);
    [[nodiscard]] bool FindForward(uint64_t from, uint64_t end, uint64_t& found);
    [[nodiscard]] bool FindBackward(uint64_t from, uint64_t lowest, uint64_t& found);
    [[nodiscard]] bool PreviousWindow(uint64_t headEnd);
    bool IsAt(uint64_t offset);
    [[nodiscard]] bool MayContinue(uint64_t bytes);
    // One past the last position where the pattern fits into the file.
    uint64_t PositionsEnd() const { return file.Size() < count ? 0 : file.Size() - count + 1; }

    FileWindow& file;
    const ByteQuery& query;
    SearchProgress* progress;
    const uint8_t* bytes = nullptr; // of the pattern
    uint32_t count = 0;
    bool matchCase = false;
    // The windows are searched for no more of a pattern than its head, so that most of their places can be tested
    // before the next one is read, however long the pattern.
    uint32_t headCount = 0;
    const Scan::ByteFinder* head = nullptr;
    uint64_t passed = 0;       // bytes gone through in both passes
    uint64_t reach = PageSize; // bytes asked for at a time backwards
    bool cancelled = false;
    bool unreadable = false; // past such bytes nothing is known
};
