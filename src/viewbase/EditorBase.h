#pragma once

#include "viewbase/EditorSelection.h"
#include "viewbase/HostCalls.h"
#include "viewbase/Redraw.h"

// The part of an editor that is the same for every kind of document: what it only passes on to its window, and what
// is painted again when the caret or the selection changes. `KindOfView` is what its documents know of their views.
// Offsets are characters or bytes.
template <class KindOfView> class EditorBase : public KindOfView {
public:
    EditorBase(const EditorBase&) = delete;
    EditorBase& operator=(const EditorBase&) = delete;

    EditorSurface& Surface() const { return surface; }

    // DocumentView.
    bool HasWindow() const override { return surface.HasWindow(); }
    bool HasFocus() const override { return surface.HasFocus(); }
    void Invalidate() override { redraw.InvalidateAll(); }
    void DocumentChanged(Document* changed) override { HostCalls::DocumentChanged(surface, changed); }
    View* AsView() override { return surface.AsView(); }
    void Destroy() override { surface.DestroyView(); }

    // Until redraw is resumed nothing is invalidated; calls nest.
    void SuspendRedraw() { redraw.Suspend(); }
    void ResumeRedraw() {
        if (redraw.Resume()) UpdateCaret(true);
    }

    virtual EditorSelection Selected() const = 0;
    bool HasSelection() const { return !Selected().IsEmpty(); }
    // Empties the selection at the caret.
    void CollapseSelection() {
        const EditorSelection old = Selected();
        if (old.IsEmpty()) return;
        InvalidateRows(RowOf(old.anchor), CaretRow());
        MoveAnchorToCaret();
    }
    // Places the caret, the scroll bars and the status fields again.
    virtual void UpdateCaret(bool scrollIntoView) = 0;
    // Makes a row the first one shown, as the user wants it; clamped.
    virtual void ScrollTo(uint64_t row) = 0;

protected:
    explicit EditorBase(EditorSurface& window) : surface(window) {}
    ~EditorBase() = default;

    virtual void MoveAnchorToCaret() = 0;
    virtual uint64_t CaretRow() const = 0;
    virtual uint64_t RowOf(uint64_t offset) const = 0;
    virtual const ShownRows& SeenRows() const = 0;

    // The rows from one to the other, both included, in either order.
    void InvalidateRows(uint64_t first, uint64_t second) { redraw.InvalidateRows(first, second, SeenRows()); }
    // The caret was moved, away from `oldRow`; `old` is what was selected. `extend`: the anchor stayed where it is.
    void CaretMoved(EditorSelection old, uint64_t oldRow, bool extend) {
        if (extend) {
            // Only what lies between the old and the new caret becomes selected or ceases to be.
            if (Selected().caret != old.caret) InvalidateRows(oldRow, CaretRow());
        } else if (!old.IsEmpty()) {
            InvalidateRows(RowOf(old.anchor), oldRow);
        }
        if (surface.HasFocus()) HostCalls::ShowStatus(surface, nullptr);
        UpdateCaret(true);
    }

    EditorSurface& surface;
    Redraw redraw{surface};
};
