#include "view/TextViewport.h"

#include "document/TextBuffer.h"
#include "document/TextChange.h"
#include "settings/Settings.h"
#include "view/CaretStops.h"
#include "view/ShownText.h"
#include "view/TextCaret.h"

#include <algorithm>

namespace {

constexpr uint32_t FixedDigits = 7;
constexpr uint64_t HorizontalRange = 16384; // pixels

} // namespace

void TextViewport::Reset() {
    rows.top = 0;
    horizontalScroll = 0;
    measured.ForgetAfter(0);
    if (!text.Document()) return;
    CountDigits();
    CountColumns();
}

void TextViewport::Measure() {
    measured.Forget(); // the font or the tabs may have changed
    if (!surface.HasWindow()) return;
    CountRows();
    CountDigits();
    CountColumns();
}

bool TextViewport::UpdateGutter() {
    const uint32_t digits = lineNumberDigits;
    CountDigits();
    if (digits == lineNumberDigits) return false;
    CountColumns();
    return true;
}

void TextViewport::Follow(const TextChange& change) {
    if (change.ChangesLines()) rows.top = change.MovedLine(TopLine());
}

// One more than the decimal digits of the line count: the spare column separates the numbers from the
// margin. See docs/oddities.md.
void TextViewport::CountDigits() {
    lineNumberDigits = FixedDigits;
    if (settings.VarWidthLineNumbers == 0) return;
    uint32_t rest = text.Document() ? text.LineCount() : 0;
    lineNumberDigits = 1;
    for (; rest; rest /= 10) ++lineNumberDigits;
}

void TextViewport::CountColumns() {
    const int32_t average = surface.Metrics().averageWidth;
    const int32_t room = surface.Size().width - TextLeft();
    visibleColumns = average > 0 && room > 0 ? room / average : 0;
}

int32_t TextViewport::GutterWidth() const {
    return settings.ShowLineNumbers ? static_cast<int32_t>(lineNumberDigits) * surface.Metrics().averageWidth : 0;
}

// Scrolling.

// The picture is moved when some of it stays in view; only what comes in is painted.
void TextViewport::ScrollTo(uint32_t line) {
    line = std::min(line, text.LineCount() - 1);
    if (line == TopLine()) return;
    const int64_t moved = int64_t(line) - TopLine();
    rows.top = line;
    const int64_t distance = moved < 0 ? -moved : moved;
    if (redraw.IsSuspended() || distance >= rows.count) {
        redraw.InvalidateAll();
    } else {
        textSurface.ScrollPicture(static_cast<int32_t>(-moved) * surface.Metrics().lineHeight);
    }
}

void TextViewport::SetHorizontalScroll(int64_t pixels) {
    const auto scroll = static_cast<int32_t>(std::clamp<int64_t>(pixels, 0, MeasuredLine::FarthestScroll));
    if (scroll == horizontalScroll) return;
    horizontalScroll = scroll;
    redraw.InvalidateAll();
}

// How far right in the text area a character can be seen. A margin wider than the window leaves nothing to show the
// caret in; it must not jump back and forth.
int32_t TextViewport::UsableWidth() const {
    return std::max(surface.Size().width - surface.Metrics().averageWidth - TextLeft(), 0);
}

void TextViewport::ScrollIntoView(const TextCaret& caret, int64_t caretX) {
    const uint64_t top = rows.TopToShow(caret.Line());
    if (top != rows.top) ScrollTo(static_cast<uint32_t>(top));
    const int32_t usable = UsableWidth();
    if (caretX > int64_t(horizontalScroll) + usable) {
        SetHorizontalScroll(caretX - usable);
    } else if (caretX < horizontalScroll) {
        SetHorizontalScroll(0); // all the way: see docs/oddities.md
    }
}

void TextViewport::ShowSideways(TextPosition place) {
    const int64_t x = XOf(place);
    const int32_t usable = UsableWidth();
    if (x >= horizontalScroll && x <= int64_t(horizontalScroll) + usable) return;
    SetHorizontalScroll(x <= usable ? 0 : x);
}

uint64_t TextViewport::RowCount() const { return text.LineCount(); }

ScrollState TextViewport::ScrolledSideways() const {
    return {HorizontalRange, Saturate(int64_t(visibleColumns) * surface.Metrics().averageWidth),
            static_cast<uint32_t>(horizontalScroll)};
}

void TextViewport::UpdateScrollBars() {
    bars.Show(ScrollAxis::Vertical, ScrolledRows().Bar());
    bars.Show(ScrollAxis::Horizontal, ScrolledSideways().Bar());
}

// Places.

// Typing changes the open line without notice, so that what was measured of it does not hold.
bool TextViewport::HasPendingEdit() const { return text.Document() && text.Document()->HasPendingEdit(); }

int64_t TextViewport::XOf(TextPosition place) {
    const TextSpan line = text.Line(place.line);
    if (HasPendingEdit()) return Layout().PositionOf(line, place.column);
    return measured.PositionOf(Layout(), line, {text.LineStart(place.line), place.column});
}

int64_t TextViewport::CaretX(const TextCaret& caret) { return XOf(caret.Position()); }

LinePlace TextViewport::PlaceLeftOfWindow(uint32_t lineStart) const {
    return HasPendingEdit() ? LinePlace() : measured.PlaceIn({lineStart, horizontalScroll});
}

void TextViewport::ShowCaret(const TextCaret& caret, int64_t caretX) {
    const int64_t left = TextLeft();
    const int64_t x = caretX + left - horizontalScroll;
    const int64_t y = (int64_t(caret.Line()) - TopLine()) * surface.Metrics().lineHeight;
    if (x >= left) {
        surface.ShowCaretAt({Saturate(x), Saturate(y)});
    } else {
        textSurface.HideCaret();
    }
}

TextPosition TextViewport::PositionAt(ClientPoint point) const {
    const int32_t lineHeight = surface.Metrics().lineHeight;
    const int64_t at = int64_t(TopLine()) + (lineHeight > 0 ? point.y / lineHeight : 0);
    const auto line = static_cast<uint32_t>(std::clamp<int64_t>(at, 0, UINT32_MAX));
    const TextSpan span = text.Line(line);
    const int64_t target = int64_t(horizontalScroll) + point.x - TextLeft();
    const uint32_t column = Layout().ColumnAt(span, target);
    const uint32_t start = CaretStops::AtOrBefore(span, column);
    if (start == column) return {line, column};
    const uint32_t end = CaretStops::AtOrAfter(span, column);
    const int64_t toStart = target - Layout().PositionOf(span, start);
    return {line, toStart <= Layout().PositionOf(span, end) - target ? start : end};
}

// Reads no further than the window's right edge: the line may be 100 million characters long.
bool TextViewport::ColumnsSeen(uint32_t line, ColumnRange columns, int32_t& left, int32_t& right) const {
    const TextSpan shown = text.Line(line);
    const LinePlace known = PlaceLeftOfWindow(text.LineStart(line));
    const int64_t rightEdge = int64_t(horizontalScroll) + surface.Size().width - TextLeft();
    const uint32_t lastSeen = Layout().ColumnsWithin(shown, rightEdge, known);
    const auto inWindow = [&](uint32_t column) {
        // Beside the window any place will do, since it is clamped; the way there may be long.
        const uint32_t placed = std::clamp(column, known.column, std::max(lastSeen, known.column));
        const int64_t feed = column > shown.length && lastSeen == shown.length ? surface.Metrics().averageWidth : 0;
        const int64_t x = Layout().PositionOf(shown, placed, known) + feed;
        return Saturate(TextLeft() + std::clamp<int64_t>(x, horizontalScroll, rightEdge) - horizontalScroll);
    };
    if (rightEdge <= horizontalScroll) return false;
    left = inWindow(columns.start);
    right = inWindow(columns.end);
    return left < right;
}
