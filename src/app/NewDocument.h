#pragma once

#include "binary/HexDocumentView.h"
#include "document/TextServices.h"

class Document;
class DocumentList;

// What the documents of both kinds need. Outlives all of them.
struct DocumentServices {
    TextServices text;
    HexServices hex;
};

// An empty text document with a title, a view and one reference, which is the caller's; `isNew` as for MakeEmpty. Null
// on failure.
TextBuffer* MakeTitledText(TextServices& services, const Char* title, bool isNew = false);

// Puts a document into the list, which takes over the caller's reference; on failure it is released.
[[nodiscard]] bool AdoptDocument(DocumentList& documents, Document* document);
