#include "viewbase/win32/ViewFont.h"

#include "base/win32/Handles.h"
#include "settings/win32/DrawingObjects.h"

#include <algorithm>
#include <iterator>
#include <numeric>

namespace {

// The font as the views know it.
struct Measured {
    MemoryDc dc;                        // made when first needed
    ViewMetrics metrics = {0, 0, 0, 0}; // until there is a font: all zeros stay out of the program's file
    uint32_t generation = 0;            // of the font that was measured
    CharWidths widths;
};

// Process-wide, like the font of DrawingObjects.
Measured measured;

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

// Each pair of surrogates is one character, of this font or another.
void MeasurePairs(HDC dc, uint32_t first, INT (&fetched)[CharWidths::PageSize]) {
    for (uint32_t i = 0; i < CharWidths::PageSize; ++i) {
        const Char pair[] = {Surrogates::FirstOf(first + i), Surrogates::SecondOf(first + i)};
        SIZE size = {};
        const bool known = GetTextExtentPoint32W(dc, Wide(pair), 2, &size) != 0;
        fetched[i] = known ? size.cx : measured.metrics.averageWidth;
    }
}

bool FetchWidths(void*, uint32_t first, int32_t* out) {
    if (!measured.dc.IsValid()) measured.dc.Reset(CreateCompatibleDC(nullptr));
    const HDC dc = measured.dc.Get();
    const SelectedObject font(dc, DrawingObjects::EditorFont());
    INT fetched[CharWidths::PageSize];
    if (first > 0xFFFF) {
        MeasurePairs(dc, first, fetched);
    } else {
        if (!GetCharWidth32W(dc, first, first + CharWidths::PageSize - 1, fetched)) return false;
        MeasureMissing(dc, static_cast<Char>(first), fetched);
    }
    std::copy(std::begin(fetched), std::end(fetched), out);
    return true;
}

// Several operations on settings rebuild the font; comparing its generation is simpler than having each of them
// notify us.
void FollowFont() {
    if (measured.generation != DrawingObjects::FontGeneration()) ViewFont::Refresh();
}

} // namespace

void ViewFont::Refresh() {
    measured.generation = DrawingObjects::FontGeneration();
    measured.metrics.lineHeight = DrawingObjects::LineHeight();
    measured.metrics.averageWidth = DrawingObjects::AverageWidth();
    measured.metrics.spaceWidth = DrawingObjects::SpaceWidth();
    measured.metrics.dpi = static_cast<int32_t>(DrawingObjects::Dpi());
    measured.widths.SetSource(FetchWidths, nullptr);
}

const ViewMetrics& ViewFont::Metrics() {
    FollowFont();
    return measured.metrics;
}

CharWidths& ViewFont::Widths() {
    FollowFont();
    return measured.widths;
}

void ViewFont::Release() {
    measured.widths.Clear();
    measured.dc.Reset();
    measured.generation = 0;
}
