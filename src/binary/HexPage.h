#pragma once

#include "binary/ChangedPages.h"

class BinaryDocument;

// One page of a binary document, as it is now and as it is in the file: what a view shows, and how it
// finds the changed bytes. Loading a page that is held already costs nothing, even when it could not be
// read: a broken device is asked once, not for every row.
class HexPage {
public:
    // Holds the page of a byte from now on. Returns that byte and, in `count`, how many bytes there are from it
    // to the page's end: 0 when the file does not deliver it.
    const uint8_t* BytesAt(BinaryDocument& document, uint64_t offset, uint32_t& count);
    // Whether the byte, which the last BytesAt has returned, is another one than in the file.
    bool IsChanged(uint64_t offset) const;
    // The next BytesAt reads again.
    void Forget() { pageIndex = NoPage; }

private:
    static constexpr uint64_t NoPage = UINT64_MAX;

    uint64_t pageIndex = NoPage;
    uint32_t valid = 0; // bytes that there are
    uint32_t fileValid = 0;
    uint8_t pageBuffer[PageSize] = {};
    uint8_t filePageBuffer[PageSize] = {};
};
