#include "binary/HexPage.h"

#include "binary/BinaryDocument.h"

const uint8_t* HexPage::BytesAt(BinaryDocument& document, uint64_t offset, uint32_t& count) {
    const uint64_t index = offset / PageSize;
    const auto inPage = static_cast<uint32_t>(offset % PageSize);
    if (index != pageIndex) {
        pageIndex = index;
        // A call that fails still says how many bytes there are.
        static_cast<void>(document.ReadPage(pageBuffer, index * PageSize, false, valid));
        static_cast<void>(document.ReadPage(filePageBuffer, index * PageSize, true, fileValid));
    }
    count = inPage < valid ? valid - inPage : 0;
    return pageBuffer + inPage;
}

bool HexPage::IsChanged(uint64_t offset) const {
    const auto inPage = static_cast<uint32_t>(offset % PageSize);
    return inPage >= fileValid || pageBuffer[inPage] != filePageBuffer[inPage];
}
