#pragma once

#include "document/TextContent.h"
#include "document/TextDocumentView.h"

// What an undo record changes: the text of a document, and the views that go along with it. Others are given
// TextContent and cannot change the text, but for the OutputCollector, which appends to the store.
struct EditTarget {
    TextContent& content;
    TextParts& parts; // of `content`
    TextViews views;
};
