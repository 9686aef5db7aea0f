#pragma once

#include "base/Heap.h"
#include "base/Types.h"

class Document;
class View;

// All that every document knows of a view.
class DocumentView {
public:
    virtual bool HasWindow() const = 0;
    virtual bool HasFocus() const = 0;
    // Repaints everything.
    virtual void Invalidate() = 0;
    // Passed on to the frame that holds the view.
    virtual void DocumentChanged(Document* document) = 0;
    // The window half of this view; the document only hands it through, as a pointer to what it does not know: a frame
    // that walks a document's views needs their windows.
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
