#pragma once

#include "binary/HexEditor.h"
#include "viewbase/RowPicture.h"

// Walks the rows of one paint of a hex view from top to bottom, without allocating.
class HexRows final : public RowSource {
public:
    HexRows() = default;
    HexRows(const HexRows&) = delete;
    HexRows& operator=(const HexRows&) = delete;

    // Starts a paint of the client rows [updateTop, updateBottom), or of all when that is empty. False
    // when there is nothing to paint (no document, no font).
    [[nodiscard]] bool Begin(HexEditor& hexEditor, int32_t updateTop, int32_t updateBottom);
    bool Next(RowPicture& row) override;
    int32_t GutterWidth() const override { return editor->Viewport().GutterWidth(); }
    int32_t MarginRight() const override { return editor->Viewport().TextLeft(); }

private:
    static constexpr uint32_t RowCharacters = HexViewport::TextColumn + HexViewport::BytesPerRow;
    // Each byte at most one run in either column, and the gap between the columns.
    static constexpr uint32_t MaxRuns = 2 * HexViewport::BytesPerRow + 1;

    struct Colours {
        Colour foreground;
        Colour background;

        bool operator==(const Colours&) const = default;
    };

    Colours ColoursOf(uint64_t offset) const;
    void AddNumber(RowPicture& row);
    void AddBytes(RowPicture& row, uint64_t offset);
    void AddRun(uint32_t start, uint32_t count, const Colours& colours);

    HexEditor* editor = nullptr;
    int32_t charWidth = 0;
    int32_t lineHeight = 0;
    uint64_t nextRow = 0;
    uint64_t lastRow = 0;
    Char number[NumberCapacity] = {};
    Char text[RowCharacters] = {};
    int32_t advances[RowCharacters] = {}; // all alike, so that the columns are aligned in any font
    DrawRun runs[MaxRuns] = {};
    uint32_t runCount = 0;
};
