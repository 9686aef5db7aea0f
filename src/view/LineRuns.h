#pragma once

#include "base/Array.h"
#include "document/TextRange.h"
#include "syntax/SyntaxEngine.h"
#include "view/LineLayout.h"
#include "viewbase/RowPicture.h"

// What all rows of a paint have in common.
struct RowStyle {
    ViewMetrics metrics;
    int32_t textLeft = 0;  // left edge of the text area: gutter and margin lie left of it
    int32_t textRight = 0; // right edge of the window
    int32_t scroll = 0;    // how far the text is shifted left of textLeft
    TextRange selection;   // offsets of the text as the user sees it
    Colour selectionForeground = 0;
    Colour selectionBackground = 0;
    bool showWhitespace = false;
};

// Turns the coloured spans of a row into runs to draw. Only characters inside the window get into a
// run, so a row costs the same to draw however long its line is. Once the arrays have grown to a
// window's width nothing is allocated any more.
//
// A letter of a right-to-left script is a run of its own, with its combining marks. The system would reorder and join
// letters drawn in one call, so that no sum of widths gives the caret's place; drawn one by one they stay in text
// order. That costs the joined forms of Arabic, and keeps source from looking like other source.
class LineRuns {
public:
    static constexpr uint32_t MaxRun = 2048;

    LineRuns() = default;
    LineRuns(const LineRuns&) = delete;
    LineRuns& operator=(const LineRuns&) = delete;

    void Begin(const RowStyle& rowStyle, CharWidths& charWidths);
    // Lays out one line that starts at `offset` of the text as the user sees it: `spans` cover its characters, the line
    // feed included. What comes before `from`, a place left of the window, is skipped. False without
    // memory; the runs then end early.
    [[nodiscard]] bool Build(const Char* text, uint32_t offset, const ColourSpan* spans, uint32_t spanCount,
                             LinePlace from = {});

    const DrawRun* Runs() const { return runs.Items(); }
    uint32_t RunCount() const { return static_cast<uint32_t>(runs.Count()); }
    const Char* Text() const { return characters.Items(); }
    const int32_t* Advances() const { return advances.Items(); }
    // Where the rest of the row begins: the end of the text, held within textLeft and textRight.
    int32_t End() const { return end; }

private:
    struct Piece {
        Colour foreground;
        Colour background;
    };

    [[nodiscard]] bool AddSpan(const Char* text, uint32_t offset, const ColourSpan& span);
    [[nodiscard]] bool AddPiece(const Char* text, uint32_t count, const Piece& piece);
    // Adds as many as it can of text[0, count), which is not empty, in one go; returns how many. 0 when the first one
    // needs AddCharacter or AddTab, or without memory.
    uint32_t AddPlain(const Char* text, uint32_t count, const Piece& piece);
    [[nodiscard]] bool AddTab(const Piece& piece);
    // `second` is the other half of a pair of surrogates, else 0.
    [[nodiscard]] bool AddCharacter(Char shown, Char second, const Piece& piece, RunKind kind);
    [[nodiscard]] bool Append(Char shown, int32_t width, const Piece& piece, RunKind kind);
    DrawRun* RunFor(const Piece& piece, RunKind kind);
    // Skips characters to the left of what is seen; returns how many.
    uint32_t SkipHidden(const Char* text, uint32_t count);
    // Whether something that wide is seen when it starts at `position`.
    bool IsVisible(int32_t width) const { return position + (width ? width : 1) > clipLeft && position < clipRight; }
    int32_t ToClient(int64_t pixels) const { return static_cast<int32_t>(pixels - style.scroll) + style.textLeft; }

    RowStyle style;
    CharWidths* widths = nullptr;
    Array<Char> characters;
    Array<int32_t> advances;
    Array<DrawRun> runs;
    int64_t clipLeft = 0; // the window's part of the line, in pixels from the line's start
    int64_t clipRight = 0;
    int64_t position = 0; // likewise, of the next character
    int32_t spaceWidth = 1;
    int32_t end = 0;
    bool hasSecond = false; // the next character is the second half of a pair, which was added with its first
    bool mayMerge = false;  // the last run takes further text of its colours
    bool inLetter = false;  // the last run is a right-to-left letter: only marks that combine with it may join it
};
