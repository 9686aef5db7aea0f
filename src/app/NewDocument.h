#pragma once

#include "base/Types.h"

class Document;
class DocumentList;
class TextBuffer;

// An empty text document with a title, a view and one reference, which is the caller's; `isNew` as for MakeEmpty. Null
// on failure.
TextBuffer* MakeTitledText(const Char* title, bool isNew = false);

// Puts a document into the list, which takes over the caller's reference; on failure it is released.
[[nodiscard]] bool AdoptDocument(DocumentList& documents, Document* document);
