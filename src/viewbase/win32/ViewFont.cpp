#include "viewbase/win32/ViewFont.h"

#include "base/win32/Handles.h"
#include "settings/win32/DrawingObjects.h"

namespace {

MemoryDc measuringDc; // made when first needed
ViewMetrics metrics;
CharWidths widths;
uint32_t generation = 0;

bool FetchWidths(void*, Char first, int32_t* out) {
    if (!measuringDc.IsValid()) measuringDc.Reset(CreateCompatibleDC(nullptr));
    const SelectedObject font(measuringDc.Get(), DrawingObjects::EditorFont());
    INT fetched[CharWidths::PageSize];
    const bool read = GetCharWidth32W(measuringDc.Get(), first, first + CharWidths::PageSize - 1, fetched) != 0;
    for (uint32_t i = 0; read && i < CharWidths::PageSize; ++i) out[i] = fetched[i];
    return read;
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
