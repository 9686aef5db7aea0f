#include "view/Words.h"

#include "base/Text.h"

uint32_t Words::StartBefore(TextSpan line, uint32_t column) {
    const bool inWord = Text::IsWordChar(line.text[column - 1]);
    while (column > 0 && Text::IsWordChar(line.text[column - 1]) == inWord) --column;
    return column;
}

uint32_t Words::EndAfter(TextSpan line, uint32_t column) {
    if (column >= line.length) return line.length;
    const bool inWord = Text::IsWordChar(line.text[column]);
    while (column < line.length && Text::IsWordChar(line.text[column]) == inWord) ++column;
    return column;
}

ColumnRange Words::WordAt(TextSpan line, uint32_t column) {
    const bool afterWord = column > 0 && Text::IsWordChar(line.text[column - 1]);
    const uint32_t start = afterWord ? StartBefore(line, column) : column;
    return {start, EndAfter(line, start)};
}

uint32_t Words::FirstNonBlank(TextSpan line) {
    uint32_t column = 0;
    while (column < line.length && Text::IsBlank(line.text[column])) ++column;
    return column;
}
