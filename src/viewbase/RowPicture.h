#pragma once

#include "base/Types.h"

enum class RunKind : uint32_t {
    Text = 0,
    VisibleSpace = 1, // one space, with a dot
    VisibleTab = 2,   // only its background and an arrow
};

// Characters of one row that are drawn alike, opaque and clipped to [x, x + width).
struct DrawRun {
    uint32_t start; // into the row's text and advances
    uint32_t count; // 0 for a visible tab
    int32_t x;      // client pixels; may lie left of the visible text
    int32_t width;
    Colour foreground;
    Colour background;
    RunKind kind;
};

// Everything that one row of the window shows, in the order in which it is drawn: text, fill, number,
// guides, margin with bookmark, column guide. Pointers are valid until the next row.
struct RowPicture {
    uint32_t line = 0;
    int32_t top = 0;      // client y
    bool pastEnd = false; // below the last line: no text, no number; fill covers gutter and text area
    const DrawRun* runs = nullptr;
    uint32_t runCount = 0;
    const Char* text = nullptr;
    const int32_t* advances = nullptr;
    int32_t fillLeft = 0;         // from here to the right edge
    Colour fill = 0;              // the engine's colour of the line's end, else TextBg
    const Char* number = nullptr; // in the gutter; null when none is shown
    uint32_t numberLength = 0;
    const int32_t* numberAdvances = nullptr; // null: as the font has them
    const int32_t* guides = nullptr;         // x of each indentation guide
    uint32_t guideCount = 0;
    bool bookmark = false;
    bool columnGuide = false;
    int32_t columnGuideX = 0;
};

// The rows of one paint, from top to bottom.
class RowSource {
public:
    // More characters than any row's number has.
    static constexpr uint32_t NumberCapacity = 32;

    // False after the last row.
    [[nodiscard]] virtual bool Next(RowPicture& row) = 0;
    virtual int32_t GutterWidth() const = 0;
    // Right edge of the margin, which is beside the gutter.
    virtual int32_t MarginRight() const = 0;

protected:
    ~RowSource() = default;
};
