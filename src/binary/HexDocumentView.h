#pragma once

#include "document/DocumentView.h"

class BinaryDocument;

// What a binary document knows of a view beyond what every document does.
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

protected:
    ~HexDocumentView() = default;
};

// Makes the views of binary documents; installed once at start-up by the half that has windows. `parent` may be
// null: the view is then made without a window. Returns null on failure.
using HexViewFactory = HexDocumentView* (*)(BinaryDocument& document, NativeWindow parent);
void SetHexViewFactory(HexViewFactory factory);
