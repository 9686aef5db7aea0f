#include "viewbase/win32/ViewFont.h"

#include "base/win32/Handles.h"
#include "settings/win32/DrawingObjects.h"

#include <algorithm>
#include <iterator>
#include <numeric>

namespace {

MemoryDc measuringDc; // made when first needed
ViewMetrics metrics;
CharWidths widths;
uint32_t generation = 0;

// A character that the font lacks is drawn in another one, with the width that it has there. The others are not
// measured one by one, which takes the system far longer than a whole page does.
void MeasureMissing(HDC dc, Char first, INT (&fetched)[CharWidths::PageSize]) {
    constexpr WORD Missing = 0xFFFF;
    wchar_t page[CharWidths::PageSize];
    WORD glyphs[CharWidths::PageSize];
    std::iota(std::begin(page), std::end(page), static_cast<wchar_t>(first));
    if (GetGlyphIndicesW(dc, page, CharWidths::PageSize, glyphs, GGI_MARK_NONEXISTING_GLYPHS) == GDI_ERROR) return;
    for (uint32_t i = 0; i < CharWidths::PageSize; ++i) {
        SIZE size = {};
        if (glyphs[i] == Missing && GetTextExtentPoint32W(dc, page + i, 1, &size)) fetched[i] = size.cx;
    }
}

bool FetchWidths(void*, Char first, int32_t* out) {
    if (!measuringDc.IsValid()) measuringDc.Reset(CreateCompatibleDC(nullptr));
    const SelectedObject font(measuringDc.Get(), DrawingObjects::EditorFont());
    INT fetched[CharWidths::PageSize];
    if (!GetCharWidth32W(measuringDc.Get(), first, first + CharWidths::PageSize - 1, fetched)) return false;
    MeasureMissing(measuringDc.Get(), first, fetched);
    std::copy(std::begin(fetched), std::end(fetched), out);
    return true;
}

// Several operations on settings rebuild the font; comparing its generation is simpler than having each of them
// notify us.
void FollowFont() {
    if (generation != DrawingObjects::FontGeneration()) ViewFont::Refresh();
}

} // namespace

void ViewFont::Refresh() {
    generation = DrawingObjects::FontGeneration();
    metrics.lineHeight = DrawingObjects::LineHeight();
    metrics.averageWidth = DrawingObjects::AverageWidth();
    metrics.spaceWidth = DrawingObjects::SpaceWidth();
    metrics.dpi = static_cast<int32_t>(DrawingObjects::Dpi());
    widths.SetSource(FetchWidths, nullptr);
}

const ViewMetrics& ViewFont::Metrics() {
    FollowFont();
    return metrics;
}

CharWidths& ViewFont::Widths() {
    FollowFont();
    return widths;
}

void ViewFont::Release() {
    widths.Clear();
    measuringDc.Reset();
    generation = 0;
}
