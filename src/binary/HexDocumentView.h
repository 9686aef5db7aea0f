#pragma once

#include "document/DocumentView.h"

class BinaryDocument;

// All that a binary document knows of a view. What only text has is answered here for all of them.
class HexDocumentView : public DocumentView {
public:
    // Puts the caret on a byte and empties the selection. The sub-position is the view's own (0 for the high
    // nibble, else the low one); the document only keeps it.
    virtual void SetCaret(uint64_t offset, uint32_t subPosition) = 0;
    virtual void MakeCaretVisible() = 0;
    // Bytes of the document or of its file are others than before: repaints everything.
    virtual void ContentChanged() = 0;
    // Shows the user that bytes could not be changed.
    virtual void ReportEditFailure() = 0;

    void InvalidateLines(uint32_t, uint32_t) override { Invalidate(); }
    void LineCountChanged() override {}
    void PlaceCaret(uint32_t, uint32_t) override {}
    void PlaceSelection(uint32_t, uint32_t) override {}
    void PlaceTopLine(uint32_t) override {}
    uint32_t CaretLine() const override { return 0; }
    uint32_t CaretColumn() const override { return 0; }
    uint32_t SelectionAnchor() const override { return 0; }
    uint32_t CaretOffset() const override { return 0; }
    uint32_t TopLine() const override { return 0; }
    void RunStateChanged(Document*, bool) override {}

protected:
    ~HexDocumentView() = default;
};

// Makes the views of binary documents; installed once at start-up by the half that has windows. `parent` may be
// null: the view is then made without a window. Returns null on failure.
using HexViewFactory = HexDocumentView* (*)(BinaryDocument& document, NativeWindow parent);
void SetHexViewFactory(HexViewFactory factory);
