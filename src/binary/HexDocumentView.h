#pragma once

#include "document/DocumentView.h"

class BinaryDocument;
struct RecoveryServices;

// Where the caret of a hex view is.
struct HexCaret {
    uint64_t offset = 0;
    bool lowNibble = false; // of the byte there

    bool operator==(const HexCaret&) const = default;
};

// What a binary document knows of a view beyond what every document does.
class HexDocumentView : public DocumentView {
public:
    // Puts the caret there, at most after the last byte, and empties the selection.
    virtual void SetCaret(HexCaret newCaret) = 0;
    virtual void MakeCaretVisible() = 0;
    // Bytes of the document or of its file are others than before: repaints everything.
    virtual void ContentChanged() = 0;
    // Shows the user that bytes could not be changed.
    virtual void ReportEditFailure() = 0;

protected:
    ~HexDocumentView() = default;
};

// Makes the views of binary documents. `parent` may be null: the view is then made without a window. Returns null on
// failure.
using HexViewFactory = HexDocumentView* (*)(BinaryDocument& document, NativeWindow parent);

// What binary documents need of the program around them. Owned by the maker of the documents; outlives them.
struct HexServices {
    RecoveryServices& recovery;
    HexViewFactory makeView = nullptr; // null: no view can be made
};
