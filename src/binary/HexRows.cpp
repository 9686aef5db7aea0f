#include "binary/HexRows.h"

#include "binary/HexText.h"
#include "settings/Settings.h"

#include <algorithm>

bool HexRows::Begin(HexEditor& hexEditor, int32_t updateTop, int32_t updateBottom) {
    editor = &hexEditor;
    charWidth = editor->Surface().Metrics().averageWidth;
    lineHeight = editor->Surface().Metrics().lineHeight;
    if (!editor->GetBinaryDocument() || lineHeight <= 0) return false;
    std::fill_n(advances, RowCharacters, charWidth);
    const RowRange painted = editor->Viewport().Rows().Touched(updateTop, updateBottom, lineHeight);
    nextRow = painted.first;
    lastRow = painted.last;
    return true;
}

bool HexRows::Next(RowPicture& row) {
    if (nextRow > lastRow) return false;
    row = RowPicture();
    row.top = static_cast<int32_t>(nextRow - editor->Viewport().TopRow()) * lineHeight;
    row.fill = settings.TextBg;
    row.pastEnd = nextRow >= editor->Viewport().RowCount();
    if (!row.pastEnd) {
        AddNumber(row);
        AddBytes(row, nextRow * HexViewport::BytesPerRow);
    }
    ++nextRow;
    return true;
}

// Right-aligned in the offset column: a narrow one shows the last digits only, a wide one has blanks
// before them.
void HexRows::AddNumber(RowPicture& row) {
    constexpr uint32_t Digits = HexText::MinOffsetDigits;
    const uint32_t width = editor->Viewport().OffsetDigits();
    const auto low = static_cast<uint32_t>(nextRow * HexViewport::BytesPerRow);
    const uint32_t blanks = width > Digits ? width - Digits : 0;
    std::fill_n(number, blanks, u' ');
    Char digits[Digits];
    HexText::PutDigits(digits, low, Digits);
    std::copy_n(digits + (Digits - (width - blanks)), width - blanks, number + blanks);
    row.number = number;
    row.numberLength = width;
    row.numberAdvances = advances;
}

// BinFg and BinBg are the colours of changed bytes, as the settings dialog calls them; other bytes look
// like text.
HexRows::Colours HexRows::ColoursOf(uint64_t offset) const {
    if (offset >= editor->Selected().Start() && offset < editor->Selected().End())
        return {settings.SelFg, settings.SelBg};
    if (editor->Page().IsChanged(offset)) return {settings.BinFg, settings.BinBg};
    return {settings.TextFg, settings.TextBg};
}

// Such as "41 42 0A" and, from TextColumn on, "AB.": a byte has two digits and a blank, which the last one of a row
// does not take along into its colours.
// A row lies within one page. What the file does not deliver is left out.
void HexRows::AddBytes(RowPicture& row, uint64_t offset) {
    using HexText::PerByte;
    uint32_t count = 0;
    const uint8_t* bytes = editor->Page().BytesAt(*editor->GetBinaryDocument(), offset, count);
    count = std::min(count, HexViewport::BytesPerRow);
    runCount = 0;
    std::fill_n(text, HexViewport::TextColumn, u' ');
    for (uint32_t i = 0; i < count; ++i) {
        HexText::PutDigits(text + size_t{i} * PerByte, bytes[i], 2);
        text[HexViewport::TextColumn + i] = HexText::ShownAs(bytes[i]);
        AddRun(i * PerByte, i + 1 < count ? PerByte : PerByte - 1, ColoursOf(offset + i));
    }
    const uint32_t hexEnd = count ? count * PerByte - 1 : 0;
    AddRun(hexEnd, HexViewport::TextColumn - hexEnd, {settings.TextFg, settings.TextBg});
    for (uint32_t i = 0; i < count; ++i) AddRun(HexViewport::TextColumn + i, 1, ColoursOf(offset + i));
    row.runs = runs;
    row.runCount = runCount;
    row.text = text;
    row.advances = advances;
    row.fillLeft = runs[runCount - 1].x + runs[runCount - 1].width;
}

// Continues the last run when the colours are the same.
void HexRows::AddRun(uint32_t start, uint32_t count, const Colours& colours) {
    const auto width = static_cast<int32_t>(count) * charWidth;
    DrawRun* last = runCount ? &runs[runCount - 1] : nullptr;
    if (last && Colours{last->foreground, last->background} == colours) {
        last->count += count;
        last->width += width;
        return;
    }
    const int32_t x = editor->Viewport().TextLeft() + static_cast<int32_t>(start) * charWidth;
    runs[runCount++] = {start, count, x, width, colours.foreground, colours.background, RunKind::Text};
}
