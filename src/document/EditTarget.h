#pragma once

#include "document/TextContent.h"
#include "document/TextDocumentView.h"

// What an edit changes: the text of a document, and the views that go along with it. Only who has this can change
// the text: what others get is TextContent.
struct EditTarget {
    TextContent& content;
    TextParts& parts; // of `content`
    TextViews views;
};
