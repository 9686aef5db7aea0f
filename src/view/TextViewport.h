#pragma once

#include "document/TextPosition.h"
#include "view/LineLayout.h"
#include "view/MeasuredLine.h"
#include "view/TextSurface.h"
#include "viewbase/ViewportBase.h"

class ShownText;
class TextCaret;
struct TextChange;

// Which part of its text a view shows and where in the window it is: from left to right the gutter with the line
// numbers, the margin, and the text, shifted by the horizontal scroll. Widths and heights are pixels.
class TextViewport final : public ViewportBase {
public:
    TextViewport(EditorSurface& window, TextSurface& textWindow, const ShownText& shown, Redraw& painted)
        : ViewportBase(window, painted), textSurface(textWindow), text(shown) {}

    // Scrolls to the start, after the text was replaced.
    void Reset();
    // Measures the window again. Without one nothing but the widths that are remembered is forgotten.
    void Measure();
    // The number of lines changed. True when the gutter has another width now.
    [[nodiscard]] bool UpdateGutter();
    // The text has changed from `offset` on.
    void ForgetAfter(uint32_t offset) { measured.ForgetAfter(offset); }
    // The top line stays the same line after an edit that does not say where this view goes.
    void Follow(const TextChange& change);

    uint32_t TopLine() const { return static_cast<uint32_t>(rows.top); }
    int32_t VisibleColumns() const { return visibleColumns; }
    int32_t HorizontalScroll() const { return horizontalScroll; }
    uint32_t LineNumberDigits() const { return lineNumberDigits; }
    uint64_t RowCount() const override;
    int32_t GutterWidth() const override;

    // Clamp, and move the picture or have it painted again.
    void ScrollTo(uint32_t line);
    void SetHorizontalScroll(int64_t pixels);
    // `caretX` is CaretX of the caret, as below.
    void ScrollIntoView(const TextCaret& caret, int64_t caretX);
    // Scrolls sideways until the place is in the text area, if it is not: all the way to the left, or else so that the
    // area begins with it. The line is one of the document's.
    void ShowSideways(TextPosition place);
    ScrollState ScrolledSideways() const; // in pixels
    void UpdateScrollBars();
    // The view has another window, whose bars were never set.
    void ForgetScrollBars() { bars.Forget(); }

    // Where the caret is, from the start of its line.
    int64_t CaretX(const TextCaret& caret);
    // Shows the window's caret there, or hides it when it is to the left of the text area.
    void ShowCaret(const TextCaret& caret, int64_t caretX);
    // Where a click there puts the caret: at the nearer end of a character. The line is not clamped to the document.
    TextPosition PositionAt(ClientPoint point) const;
    // Where columns of a line are in the window, cut off at the edges of the text area; the line feed is as wide as an
    // average character, what comes after it has no place. False when nothing of them is seen.
    [[nodiscard]] bool ColumnsSeen(uint32_t line, ColumnRange columns, int32_t& left, int32_t& right) const;
    // A place of the line that starts at `lineStart`, at or left of the window's left edge: the farthest known.
    LinePlace PlaceLeftOfWindow(uint32_t lineStart) const;

private:
    LineLayout Layout() const { return {surface.Metrics(), textSurface.Widths()}; }
    bool HasPendingEdit() const;
    int64_t XOf(TextPosition place);
    int32_t UsableWidth() const;
    void CountDigits();
    void CountColumns();

    TextSurface& textSurface;
    const ShownText& text;
    MeasuredLine measured;
    int32_t visibleColumns = 0;
    int32_t horizontalScroll = 0;
    uint32_t lineNumberDigits = 7;
};
