#include "document/TextContent.h"

void TextContent::OffsetToLineColumn(uint32_t offset, uint32_t& line, uint32_t& column) {
    uint32_t lineStart = 0;
    line = OffsetToLine(offset, lineStart);
    column = offset - lineStart;
}

bool TextContent::EditLineAffectsFollowingLines() const {
    return engine && engine->MayChangeState(EditLine().Text(), EditLine().Length());
}

bool TextContent::IsWholeWordAt(uint32_t offset, uint32_t count) const {
    return TextSearch::IsWholeWord(Content(), Length(), offset, count);
}

uint32_t TextContent::FindFrom(const SearchQuery& query, uint32_t from, uint32_t end) const {
    return TextSearch(Content(), Length(), query).FindFrom(from, end);
}
