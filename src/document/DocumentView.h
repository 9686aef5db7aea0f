#pragma once

#include "base/Heap.h"
#include "base/Types.h"

class Document;
class TextBuffer;
struct TextChange;
class View;

// All that a document knows of a view. Lines and columns are 0-based; offsets are absolute.
//
// An edit is told once it is made and recorded: TextChanged, LineCountChanged, where the view goes, and what
// to repaint. Until EditFinished a view only looks at the document; it opens no line, writes nothing back and
// edits nothing.
class DocumentView {
public:
    virtual bool HasWindow() const = 0;
    virtual bool HasFocus() const = 0;
    // Repaints everything.
    virtual void Invalidate() = 0;
    // Repaints the lines first..last (either order).
    virtual void InvalidateLines(uint32_t first, uint32_t last) = 0;
    virtual void LineCountChanged() = 0;
    // The store from `offset` on holds other text than before, or the edit line that starts there may
    // change how later lines colour, or (offset 0) the engine is another one. Sent before any of the
    // operations below, so that a view never uses a syntax state it remembers from after `offset`.
    virtual void TextChanged(uint32_t offset) { static_cast<void>(offset); }
    // Puts the caret there, clamped to the text, and collapses the selection to it.
    virtual void PlaceCaret(uint32_t line, uint32_t column) = 0;
    virtual void PlaceSelection(uint32_t anchor, uint32_t caret) = 0;
    virtual void PlaceTopLine(uint32_t line) = 0;
    // An edit that moves no caret of this view was made: caret, anchor and top line stay at their places in
    // the text.
    virtual void FollowChange(const TextChange& change) { static_cast<void>(change); }
    // The operation is over, with the active view's caret line open again. The view may use the document.
    virtual void EditFinished() {}
    virtual uint32_t CaretLine() const = 0;
    virtual uint32_t CaretColumn() const = 0;
    virtual uint32_t SelectionAnchor() const = 0;
    virtual uint32_t CaretOffset() const = 0;
    virtual uint32_t TopLine() const = 0;
    virtual void RefreshStatus() = 0;
    // Passed on to the frame that holds the view.
    virtual void DocumentChanged(Document* document) = 0;
    virtual void RunStateChanged(Document* document, bool running) = 0;
    // The window half of this view; the document only hands it through.
    virtual View* AsView() = 0;
    // Destroys the view with its window.
    virtual void Destroy() = 0;

protected:
    ~DocumentView() = default;
};

// One entry of a document's list of views, in the order they were created.
struct ViewNode : HeapObject {
    DocumentView* view = nullptr;
    ViewNode* next = nullptr;
    ViewNode* previous = nullptr;
};

// Makes the views of documents; installed once at start-up by whoever has windows. `parent` may be
// null: the view is then made without a window. Returns null on failure.
using TextViewFactory = DocumentView* (*)(TextBuffer& document, NativeWindow parent);
void SetTextViewFactory(TextViewFactory factory);
