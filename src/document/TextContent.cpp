#include "document/TextContent.h"

TextPosition TextContent::OffsetToLineColumn(uint32_t offset) {
    uint32_t lineStart = 0;
    const uint32_t line = OffsetToLine(offset, lineStart);
    return {line, offset - lineStart};
}

bool TextContent::EditLineAffectsFollowingLines() const {
    return engine && engine->MayChangeState(EditLineText().Text(), EditLineText().Length());
}

bool TextContent::IsWholeWordAt(TextRange range) const { return TextSearch::IsWholeWord(Content(), Length(), range); }

uint32_t TextContent::FindFrom(const SearchQuery& query, TextRange area) const {
    return TextSearch(Content(), Length(), query).FindFrom(area);
}
