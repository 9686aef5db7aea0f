#include "settings/win32/DrawingObjects.h"

#include "base/win32/Handles.h"
#include "settings/Settings.h"

namespace {

constexpr int DotSize = 2;

GdiObject<HFONT> font;
GdiObject<HBITMAP> spaceDot;
TEXTMETRICW metrics = {};
int spaceWidth = 0;
uint32_t fontGeneration = 0;
uint32_t screenDpi = 0; // 0 until first needed
void (*metricsListener)() = nullptr;

struct BrushRole {
    SettingChange change;
    const Colour& colour;
    GdiObject<HBRUSH> brush;
};

BrushRole margin{SettingChange::MarginBrush, settings.MarginColor, {}};
BrushRole bookmark{SettingChange::BookmarkBrush, settings.BookmarkColor, {}};
BrushRole background{SettingChange::BackgroundBrush, settings.TextBg, {}};
BrushRole selection{SettingChange::SelectionBrush, settings.SelBg, {}};
BrushRole* const brushRoles[] = {&margin, &bookmark, &background, &selection};

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
    if (settings.FontName) lstrcpynW(request.lfFaceName, Wide(settings.FontName), LF_FACESIZE);
    return CreateFontIndirectW(&request);
}

void Measure(HDC dc) {
    const SelectedObject selected(dc, font.Get());
    GetTextMetricsW(dc, &metrics);
    RECT space = {};
    DrawTextW(dc, L" ", 1, &space, DT_CALCRECT | DT_SINGLELINE | DT_NOPREFIX);
    spaceWidth = static_cast<int>(space.right);
}

bool RebuildSpaceDot(HDC screen, HDC memory) {
    if (!Replace(spaceDot, CreateCompatibleBitmap(screen, DotSize, DotSize))) return false;
    const SelectedObject selected(memory, spaceDot.Get());
    const GdiObject brush(CreateSolidBrush(settings.SpaceColor));
    const RECT all = {0, 0, DotSize, DotSize};
    return FillRect(memory, &all, brush.Get()) != 0;
}

bool RebuildFont() {
    if (!Replace(font, MakeFont())) return false;
    const WindowDc screen(nullptr);
    const MemoryDc memory(screen.Get());
    Measure(memory.Get());
    const bool dotMade = RebuildSpaceDot(screen.Get(), memory.Get());
    ++fontGeneration;
    if (metricsListener) metricsListener();
    return dotMade;
}

bool Rebuild(SettingChange change) {
    if (change == SettingChange::Font) return RebuildFont();
    for (BrushRole* role : brushRoles) {
        if (role->change == change) return Replace(role->brush, CreateSolidBrush(role->colour));
    }
    return false;
}

} // namespace

void DrawingObjects::Start() { SetDrawingRebuilder(Rebuild); }

void DrawingObjects::Release() {
    font.Reset();
    spaceDot.Reset();
    for (BrushRole* role : brushRoles) role->brush.Reset();
}

bool DrawingObjects::RebuildForDpi(uint32_t dpi) {
    if (dpi == 0 || dpi == Dpi()) return true;
    screenDpi = dpi;
    return RebuildFont();
}

uint32_t DrawingObjects::Dpi() {
    if (screenDpi == 0) screenDpi = static_cast<uint32_t>(GetDeviceCaps(WindowDc(nullptr).Get(), LOGPIXELSY));
    return screenDpi;
}

void DrawingObjects::SetMetricsListener(void (*listener)()) { metricsListener = listener; }
uint32_t DrawingObjects::FontGeneration() { return fontGeneration; }

HFONT DrawingObjects::EditorFont() { return font.Get(); }
const TEXTMETRICW& DrawingObjects::Metrics() { return metrics; }
int DrawingObjects::LineHeight() { return AtLeastOne(metrics.tmHeight); }
int DrawingObjects::AverageWidth() { return AtLeastOne(metrics.tmAveCharWidth); }
int DrawingObjects::SpaceWidth() { return AtLeastOne(spaceWidth); }

HBRUSH DrawingObjects::MarginBrush() { return margin.brush.Get(); }
HBRUSH DrawingObjects::BookmarkBrush() { return bookmark.brush.Get(); }
HBRUSH DrawingObjects::BackgroundBrush() { return background.brush.Get(); }
HBRUSH DrawingObjects::SelectionBrush() { return selection.brush.Get(); }
HBITMAP DrawingObjects::SpaceDot() { return spaceDot.Get(); }
