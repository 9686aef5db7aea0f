#pragma once

#include "binary/HexText.h"
#include "viewbase/ViewportBase.h"

// Which rows of its file a hex view shows and where in the window they are: from left to right the offset column, the
// margin, the hex column and the text column. Widths are pixels.
class HexViewport final : public ViewportBase {
public:
    static constexpr uint32_t BytesPerRow = 16;
    // Characters of a full row's hex column, and where its text column begins, counted from the hex column.
    static constexpr uint32_t HexColumns = BytesPerRow * HexText::PerByte - 1;
    static constexpr uint32_t TextColumn = HexColumns + 2;

    HexViewport(EditorSurface& window, Redraw& painted) : ViewportBase(window, painted) {}

    // To the start of another file of that size.
    void Reset(uint64_t size);
    // Measures the window again. Without one nothing happens.
    void Measure();

    uint64_t RowCount() const override { return fileSize / BytesPerRow + (fileSize % BytesPerRow != 0); }
    uint64_t TopRow() const { return rows.top; }
    // Width of the offset column in characters.
    uint32_t OffsetDigits() const { return offsetDigits; }
    int32_t GutterWidth() const override; // the offset column

    // Makes a row the first one shown, the last one at most.
    void ScrollTo(uint64_t row);
    void ScrollIntoView(uint64_t offset);
    void UpdateScrollBar();
    // The view has another window, whose bars were never set.
    void ForgetScrollBars();

    // Shows the window's caret on a nibble of a byte.
    void ShowCaret(uint64_t offset, bool lowNibble);
    // The byte at a client point, at most the file's end; `withoutFont` while there is no font.
    uint64_t OffsetAt(ClientPoint point, uint64_t withoutFont) const;

private:
    uint64_t fileSize = 0;
    uint32_t offsetDigits = 2;
};
