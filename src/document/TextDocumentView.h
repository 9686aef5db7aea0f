#pragma once

#include "base/List.h"
#include "document/DocumentView.h"
#include "document/TextPosition.h"
#include "document/TextRange.h"

class TextBuffer;
struct TextChange;

// What a text document knows of a view beyond what every document does. Lines and columns are 0-based; offsets count
// the text as the user sees it, with the edit line in its edited form.
//
// Once an edit is made and recorded, the views are told of it in the order of the declarations below; EditFinished
// follows when the whole operation is over. Until then a view only looks at the document: it opens no line, writes
// nothing back and edits nothing.
class TextDocumentView : public DocumentView {
public:
    // Every edit, made in this view or in another one. What it means for the view is told by what follows. Not sent
    // when the whole text is replaced, by loading.
    virtual void TextEdited(const TextChange& change) = 0;
    // What is remembered of the text after `offset`, above all syntax states, does not hold any more: the store was
    // changed there, the edit line that starts there may colour later lines differently now or has been written back,
    // or (offset 0) the engine was replaced. Not sent for an edit of the edit line that leaves later lines alone.
    virtual void ForgetAfter(uint32_t offset) = 0;
    // The store was changed: the number of its lines may have changed, too. For appended output it comes after
    // FollowEnd.
    virtual void LineCountChanged() = 0;

    // Where the view goes after the edit; places are clamped to the text.
    // - A change of the store: PlaceTopLine and then PlaceSelection for the views that its record knows, FollowChange
    //   for the others.
    // - The first character of a run of typing: PlaceCaret for all views, each in its own line.
    // - A further character of the run: PlaceCaret for the view typed in, FollowChange for the others.
    // - A deletion in the edit line: FollowChange for all.
    //
    // First, as placing the selection scrolls from there; only the way to the start of a text that was replaced ends
    // with it.
    virtual void PlaceTopLine(uint32_t line) = 0;
    // The caret goes there, and the selection collapses to it.
    virtual void PlaceCaret(TextPosition place) = 0;
    virtual void PlaceSelection(TextSelection selection) = 0;
    // Caret, anchor and top line stay at their places in the text.
    virtual void FollowChange(const TextChange& change) = 0;
    // Output was appended, and the caret, which was at the end of the text, goes to the new one. As nobody has moved it
    // there, a message in the status bar stays.
    virtual void FollowEnd(TextPosition end) = 0;

    // Repaints these lines; Invalidate repaints all of them.
    virtual void InvalidateLines(LineRange lines) = 0;
    // Once for an operation, however many edits it was made of. The caret line of the active view is open again, and
    // the view may do anything with the document.
    virtual void EditFinished() = 0;

    // Where the view is now.
    virtual TextPosition CaretPosition() const = 0;
    virtual TextSelection Selection() const = 0;
    virtual uint32_t TopLine() const = 0;
    uint32_t CaretLine() const { return CaretPosition().line; }
    uint32_t CaretColumn() const { return CaretPosition().column; }
    uint32_t SelectionAnchor() const { return Selection().anchor; }
    uint32_t CaretOffset() const { return Selection().caret; }

    // The status bar shows something else about the document now.
    virtual void RefreshStatus() = 0;
    // Passed on to the frame that holds the view.
    virtual void RunStateChanged(Document* document, bool running) = 0;

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
