#pragma once

#include "base/List.h"
#include "document/DocumentView.h"
#include "document/TextPosition.h"
#include "document/TextRange.h"

class TextBuffer;
struct TextChange;

// What a text document knows of a view beyond what every document does. Lines and columns are 0-based; offsets
// are absolute.
//
// An edit is told once it is made and recorded: TextEdited, ForgetAfter, LineCountChanged, where the view goes, and
// what to repaint. Until EditFinished a view only looks at the document; it opens no line, writes nothing back and
// edits nothing.
class TextDocumentView : public DocumentView {
public:
    // Repaints these lines.
    virtual void InvalidateLines(LineRange lines) = 0;
    virtual void LineCountChanged() = 0;
    // An edit was made, in this view or another one. Sent first; what else it means for the view is told by the
    // operations below.
    virtual void TextEdited(const TextChange& change) = 0;
    // The store from `offset` on holds other text than before, or the edit line that starts there may
    // change how later lines colour, or (offset 0) the engine is another one. Sent before any of the
    // operations below, so that a view never uses a syntax state it remembers from after `offset`.
    virtual void ForgetAfter(uint32_t offset) = 0;
    // Puts the caret there, clamped to the text, and collapses the selection to it.
    virtual void PlaceCaret(TextPosition place) = 0;
    virtual void PlaceSelection(TextSelection selection) = 0;
    virtual void PlaceTopLine(uint32_t line) = 0;
    // An edit that moves no caret of this view was made: caret, anchor and top line stay at their places in
    // the text.
    virtual void FollowChange(const TextChange& change) = 0;
    // Output has been appended, and the caret, which was at the end of the text, goes to the new one. As nobody has
    // moved it there, a message in the status bar stays.
    virtual void FollowEnd(TextPosition end) = 0;
    // The operation is over, with the active view's caret line open again. The view may use the document.
    virtual void EditFinished() = 0;
    virtual TextPosition CaretPosition() const = 0;
    virtual TextSelection Selection() const = 0;
    virtual uint32_t TopLine() const = 0;
    virtual void RefreshStatus() = 0;
    // Passed on to the frame that holds the view.
    virtual void RunStateChanged(Document* document, bool running) = 0;

    uint32_t CaretLine() const { return CaretPosition().line; }
    uint32_t CaretColumn() const { return CaretPosition().column; }
    uint32_t SelectionAnchor() const { return Selection().anchor; }
    uint32_t CaretOffset() const { return Selection().caret; }

protected:
    ~TextDocumentView() = default;
};

// The views of a text document, from the first to the last. Its factory makes no others.
class TextViews {
public:
    class Iterator {
    public:
        explicit Iterator(const ViewNode* start) : node(start) {}
        TextDocumentView* operator*() const { return static_cast<TextDocumentView*>(node->view); }
        Iterator& operator++() {
            node = node->next;
            return *this;
        }
        bool operator!=(const Iterator& other) const { return node != other.node; }

    private:
        const ViewNode* node;
    };

    // The list stays the document's.
    explicit TextViews(const List<ViewNode>& list) : nodes(list) {}

    Iterator begin() const { return Iterator(nodes.head); }
    Iterator end() const { return Iterator(nullptr); }
    // Null when there is none.
    TextDocumentView* First() const { return nodes.head ? *begin() : nullptr; }
    bool Holds(const DocumentView* view) const;

private:
    const List<ViewNode>& nodes;
};

inline bool TextViews::Holds(const DocumentView* view) const {
    for (const TextDocumentView* each : *this) {
        if (each == view) return true;
    }
    return false;
}

// Makes the views of text documents. `parent` may be null: the view is then made without a window. Returns null on
// failure.
using TextViewFactory = TextDocumentView* (*)(TextBuffer& document, NativeWindow parent);
