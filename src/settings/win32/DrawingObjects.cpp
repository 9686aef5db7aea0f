#include "settings/win32/DrawingObjects.h"

#include "base/win32/Handles.h"
#include "settings/Settings.h"

#include <iterator>

namespace {

using DrawingObjects::SpaceDotSize;

// One role of a brush: the setting that it shows.
struct BrushRole {
    DrawingResource resource;
    Colour SettingsRecord::*colour;
};

// In the order of Drawing::brushes.
constexpr BrushRole BrushRoles[] = {
    {DrawingResource::MarginBrush, &SettingsRecord::MarginColor},
    {DrawingResource::BookmarkBrush, &SettingsRecord::BookmarkColor},
    {DrawingResource::BackgroundBrush, &SettingsRecord::TextBg},
    {DrawingResource::SelectionBrush, &SettingsRecord::SelBg},
};
enum class Brush { Margin, Bookmark, Background, Selection };

struct Drawing {
    GdiObject<HFONT> font;
    GdiObject<HBITMAP> spaceDot;
    GdiObject<HBRUSH> brushes[std::size(BrushRoles)];
    TEXTMETRICW metrics = {};
    int spaceWidth = 0;
    uint32_t fontGeneration = 0;
    uint32_t dpi = 0;       // 0 until first needed
    bool isFontDue = false; // it is not what was asked for last
    void (*metricsListener)() = nullptr;
};

// Process-wide, like the settings that it is made of: all views paint with it.
Drawing drawing;

HBRUSH BrushOf(Brush brush) { return drawing.brushes[static_cast<size_t>(brush)].Get(); }

// The old object stays when the new one could not be made.
template <class Handle> bool Replace(GdiObject<Handle>& object, Handle made) {
    if (made) object.Reset(made);
    return made != nullptr;
}

int AtLeastOne(LONG measure) { return measure > 0 ? static_cast<int>(measure) : 1; }

HFONT MakeFont() {
    LOGFONTW request = {};
    request.lfHeight = FontHeight(settings.FontSize, DrawingObjects::Dpi());
    request.lfWeight = settings.FontBold ? FW_BOLD : FW_NORMAL;
    request.lfCharSet = ANSI_CHARSET;
    request.lfOutPrecision = OUT_CHARACTER_PRECIS;
    request.lfClipPrecision = CLIP_CHARACTER_PRECIS;
    request.lfQuality = PROOF_QUALITY;
    request.lfPitchAndFamily = DEFAULT_PITCH | FF_DONTCARE;
    // The system has room for 31 characters of a name; an absent name leaves the choice to it.
    if (const Char* const name = settings.FontName.Text()) lstrcpynW(request.lfFaceName, Wide(name), LF_FACESIZE);
    return CreateFontIndirectW(&request);
}

void Measure(HDC dc) {
    const SelectedObject selected(dc, drawing.font.Get());
    GetTextMetricsW(dc, &drawing.metrics);
    RECT space = {};
    DrawTextW(dc, L" ", 1, &space, DT_CALCRECT | DT_SINGLELINE | DT_NOPREFIX);
    drawing.spaceWidth = static_cast<int>(space.right);
}

bool RebuildSpaceDot(HDC screen, HDC memory) {
    if (!Replace(drawing.spaceDot, CreateCompatibleBitmap(screen, SpaceDotSize, SpaceDotSize))) return false;
    const SelectedObject selected(memory, drawing.spaceDot.Get());
    const GdiObject brush(CreateSolidBrush(settings.SpaceColor));
    const RECT all = {0, 0, SpaceDotSize, SpaceDotSize};
    return FillRect(memory, &all, brush.Get()) != 0;
}

bool RebuildFont() {
    drawing.isFontDue = !Replace(drawing.font, MakeFont());
    if (drawing.isFontDue) return false;
    const WindowDc screen(nullptr);
    const MemoryDc memory(screen.Get());
    Measure(memory.Get());
    const bool dotMade = RebuildSpaceDot(screen.Get(), memory.Get());
    ++drawing.fontGeneration;
    if (drawing.metricsListener) drawing.metricsListener();
    return dotMade;
}

} // namespace

bool RebuildDrawing(DrawingResource changed) {
    if (changed == DrawingResource::Font) return RebuildFont();
    for (size_t i = 0; i < std::size(BrushRoles); ++i) {
        const BrushRole& role = BrushRoles[i];
        if (role.resource == changed) return Replace(drawing.brushes[i], CreateSolidBrush(settings.*role.colour));
    }
    return false;
}

void DrawingObjects::Release() {
    drawing.font.Reset();
    drawing.spaceDot.Reset();
    for (auto& brush : drawing.brushes) brush.Reset();
}

bool DrawingObjects::RebuildForDpi(uint32_t dpi) {
    if (dpi == 0 || (dpi == Dpi() && !drawing.isFontDue)) return true;
    drawing.dpi = dpi;
    return RebuildFont();
}

bool DrawingObjects::RefreshSpaceDot() {
    const WindowDc screen(nullptr);
    const MemoryDc memory(screen.Get());
    return RebuildSpaceDot(screen.Get(), memory.Get());
}

uint32_t DrawingObjects::Dpi() {
    if (drawing.dpi == 0) drawing.dpi = static_cast<uint32_t>(GetDeviceCaps(WindowDc(nullptr).Get(), LOGPIXELSY));
    return drawing.dpi;
}

void DrawingObjects::SetMetricsListener(void (*listener)()) { drawing.metricsListener = listener; }
uint32_t DrawingObjects::FontGeneration() { return drawing.fontGeneration; }

HFONT DrawingObjects::EditorFont() { return drawing.font.Get(); }
int DrawingObjects::LineHeight() { return AtLeastOne(drawing.metrics.tmHeight); }
int DrawingObjects::AverageWidth() { return AtLeastOne(drawing.metrics.tmAveCharWidth); }
int DrawingObjects::SpaceWidth() { return AtLeastOne(drawing.spaceWidth); }

HBRUSH DrawingObjects::MarginBrush() { return BrushOf(Brush::Margin); }
HBRUSH DrawingObjects::BookmarkBrush() { return BrushOf(Brush::Bookmark); }
HBRUSH DrawingObjects::BackgroundBrush() { return BrushOf(Brush::Background); }
HBRUSH DrawingObjects::SelectionBrush() { return BrushOf(Brush::Selection); }
HBITMAP DrawingObjects::SpaceDot() { return drawing.spaceDot.Get(); }
