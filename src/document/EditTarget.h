#pragma once

#include "document/TextContent.h"
#include "document/TextDocumentView.h"

// What an edit changes: the text of a document, and the views that go along with it.
struct EditTarget {
    TextContent& content;
    TextViews views;
};
