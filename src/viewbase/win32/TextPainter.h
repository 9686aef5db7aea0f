#pragma once

#include "base/win32/Handles.h"
#include "viewbase/RowPicture.h"

#include <optional>

// Whether RenderType (and a remote session) asks for drawing straight onto the window instead of
// through the one-line back buffer.
bool DrawsUnbuffered();

// Draws the rows of one paint. With a back buffer each row is drawn there at y = 0 and copied to the
// window, so that a half-drawn row is never seen.
class TextPainter {
public:
    // `backBuffer` is null for drawing straight onto `target`. The paint of `rows` has begun.
    TextPainter(HDC target, HDC backBuffer, int clientWidth, RowSource& rows);

    void DrawAll();

private:
    RECT RowRect(int left, int right) const { return {left, rowTop, right, rowTop + lineHeight}; }
    void Fill(const RECT& area, Colour colour);
    void Draw(const RowPicture& row);
    void DrawRuns(const RowPicture& row);
    void Draw(const RowPicture& row, const DrawRun& run);
    void DrawDot(const DrawRun& run);
    void DrawArrow(const DrawRun& run);
    void DrawNumber(const RowPicture& row);
    void DrawGuides(const RowPicture& row);
    void DrawMargin(const RowPicture& row);
    void DrawColumnGuide(const RowPicture& row);
    void VerticalLine(int x, int top, int bottom);

    RowSource& source;
    HDC window;
    HDC surface;
    int width;
    int lineHeight;
    int spaceWidth;
    int gutter;
    int marginRight;
    int rowTop = 0; // of the row being drawn, on the surface
    // What is selected comes after what it is selected from, so that it is deselected before that is deleted.
    GdiObject<HPEN> guidePen;
    GdiObject<HPEN> spacePen; // made when the first tab arrow is drawn
    MemoryDc dotDc;           // made when the first dot is drawn
    std::optional<SelectedObject> dot;
    SelectedObject font;
};
