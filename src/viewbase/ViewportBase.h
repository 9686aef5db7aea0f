#pragma once

#include "viewbase/Redraw.h"
#include "viewbase/Scrolling.h"

// What the viewports of both kinds of views hold alike: which rows are seen, below each other from the window's top,
// and where in the window the text begins, to the right of gutter and margin. Widths and heights are pixels.
class ViewportBase {
public:
    ViewportBase(const ViewportBase&) = delete;
    ViewportBase& operator=(const ViewportBase&) = delete;

    const ShownRows& Rows() const { return rows; }
    int32_t VisibleRows() const { return rows.count; } // that fit in whole
    virtual uint64_t RowCount() const = 0;             // that there are
    ScrollState ScrolledRows() const { return {RowCount(), rows.count, rows.top}; }
    virtual int32_t GutterWidth() const = 0;
    int32_t TextLeft() const { return GutterWidth() + MarginPixels(surface.Metrics()); }

protected:
    ViewportBase(EditorSurface& window, Redraw& painted) : surface(window), redraw(painted), bars(window) {}
    ~ViewportBase() = default;

    // Counts again how many rows fit into the window, which there is.
    void CountRows() {
        const int32_t lineHeight = surface.Metrics().lineHeight;
        rows.count = lineHeight > 0 ? surface.Size().height / lineHeight : 0;
    }

    EditorSurface& surface;
    Redraw& redraw;
    ScrollBars bars;
    ShownRows rows;
};
