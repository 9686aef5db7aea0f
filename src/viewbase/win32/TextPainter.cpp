#include "viewbase/win32/TextPainter.h"

#include "settings/Settings.h"
#include "settings/win32/DrawingObjects.h"

namespace {

using DrawingObjects::SpaceDotSize;

constexpr uint32_t UnbufferedWhenRemote = 1;
constexpr uint32_t AlwaysUnbuffered = 2;
constexpr int ArrowLength = 12;
constexpr int ArrowHead = 4;
constexpr int BookmarkCorner = 5;
// Digits are shown as they are, not as those of the user's language: they were measured so, and text is what it is.
constexpr UINT TextFlags = ETO_OPAQUE | ETO_CLIPPED | ETO_NUMERICSLATIN;

HPEN MakeGuidePen() {
    const LOGBRUSH brush = {BS_SOLID, settings.GuideColor, 0};
    // Every second pixel, which only a cosmetic pen made this way can be.
    return ExtCreatePen(PS_COSMETIC | PS_ALTERNATE, 1, &brush, 0, nullptr);
}

} // namespace

bool DrawsUnbuffered() {
    if (settings.RenderType == AlwaysUnbuffered) return true;
    return settings.RenderType == UnbufferedWhenRemote && GetSystemMetrics(SM_REMOTESESSION) != 0;
}

TextPainter::TextPainter(HDC target, HDC backBuffer, int clientWidth, RowSource& rows)
    : source(rows), window(target), surface(backBuffer ? backBuffer : target), width(clientWidth),
      lineHeight(DrawingObjects::LineHeight()), spaceWidth(DrawingObjects::SpaceWidth()), gutter(rows.GutterWidth()),
      marginRight(rows.MarginRight()), guidePen(MakeGuidePen()), font(surface, DrawingObjects::EditorFont()) {}

void TextPainter::DrawAll() {
    RowPicture row;
    while (source.Next(row)) Draw(row);
}

void TextPainter::Draw(const RowPicture& row) {
    const bool buffered = surface != window;
    rowTop = buffered ? 0 : row.top;
    // In this order: the runs of a row that is scrolled begin left of the text, and the number and the margin go over
    // them.
    DrawRuns(row);
    Fill(RowRect(row.fillLeft, width), row.fill);
    DrawNumber(row);
    DrawGuides(row);
    DrawMargin(row);
    DrawColumnGuide(row);
    if (buffered) BitBlt(window, 0, row.top, width, lineHeight, surface, 0, 0, SRCCOPY);
}

// An opaque text-out without characters is the fastest way to fill in any colour.
void TextPainter::Fill(const RECT& area, Colour colour) {
    if (area.left >= area.right) return;
    SetBkColor(surface, colour);
    ExtTextOutW(surface, 0, 0, ETO_OPAQUE, &area, nullptr, 0, nullptr);
}

void TextPainter::DrawRuns(const RowPicture& row) {
    SetBkMode(surface, TRANSPARENT);
    for (uint32_t i = 0; i < row.runCount; ++i) Draw(row, row.runs[i]);
}

void TextPainter::Draw(const RowPicture& row, const DrawRun& run) {
    const RECT area = RowRect(run.x, run.x + run.width);
    if (run.kind == RunKind::VisibleTab) {
        Fill(area, run.background);
        return DrawArrow(run);
    }
    SetTextColor(surface, run.foreground);
    SetBkColor(surface, run.background);
    ExtTextOutW(surface, run.x, rowTop, TextFlags, &area, Wide(row.text + run.start), run.count,
                row.advances + run.start);
    if (run.kind == RunKind::VisibleSpace) DrawDot(run);
}

void TextPainter::DrawDot(const DrawRun& run) {
    if (!dot) {
        dotDc.Reset(CreateCompatibleDC(window));
        dot.emplace(dotDc.Get(), DrawingObjects::SpaceDot());
    }
    BitBlt(surface, run.x + (spaceWidth - SpaceDotSize) / 2, rowTop + (lineHeight - SpaceDotSize) / 2, SpaceDotSize,
           SpaceDotSize, dotDc.Get(), 0, 0, SRCCOPY);
}

void TextPainter::DrawArrow(const DrawRun& run) {
    if (!spacePen.IsValid()) spacePen.Reset(CreatePen(PS_SOLID, 1, settings.SpaceColor));
    const int middle = rowTop + lineHeight / 2;
    const int tip = run.width > ArrowLength ? run.x + ArrowLength : run.x + run.width;
    const SelectedObject pen(surface, spacePen.Get());
    MoveToEx(surface, run.x, middle, nullptr);
    LineTo(surface, tip, middle);
    LineTo(surface, tip - ArrowHead, middle - ArrowHead);
    MoveToEx(surface, tip, middle, nullptr);
    LineTo(surface, tip - ArrowHead, middle + ArrowHead);
}

void TextPainter::DrawNumber(const RowPicture& row) {
    if (!row.number) return;
    const RECT area = RowRect(0, gutter);
    SetBkMode(surface, TRANSPARENT);
    SetTextColor(surface, settings.LineNumFg);
    SetBkColor(surface, settings.LineNumBg);
    ExtTextOutW(surface, 0, rowTop, TextFlags, &area, Wide(row.number), row.numberLength, row.numberAdvances);
}

// Unshifted even when drawing straight: the guides then all fall on the first row
// (docs/oddities.md).
void TextPainter::DrawGuides(const RowPicture& row) {
    for (uint32_t i = 0; i < row.guideCount; ++i) VerticalLine(row.guides[i], 0, lineHeight);
}

void TextPainter::DrawMargin(const RowPicture& row) {
    const RECT area = RowRect(gutter, marginRight);
    FillRect(surface, &area, DrawingObjects::MarginBrush());
    if (!row.bookmark) return;
    const SelectedObject brush(surface, DrawingObjects::BookmarkBrush());
    RoundRect(surface, area.left, area.top, area.right, area.bottom, BookmarkCorner, BookmarkCorner);
}

void TextPainter::DrawColumnGuide(const RowPicture& row) {
    if (!row.columnGuide) return;
    SetBkMode(surface, TRANSPARENT);
    VerticalLine(row.columnGuideX, rowTop, rowTop + lineHeight);
}

void TextPainter::VerticalLine(int x, int top, int bottom) {
    const SelectedObject pen(surface, guidePen.Get());
    MoveToEx(surface, x, top, nullptr);
    LineTo(surface, x, bottom);
}
