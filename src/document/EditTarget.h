#pragma once

#include "document/TextContent.h"
#include "document/TextDocumentView.h"

// What an undo record changes: the text of a document, and the views that go along with it. Others get TextContent and
// cannot change the text, except TextBuffer itself, which loads and empties it, and the OutputCollector, which appends
// to it.
struct EditTarget {
    TextContent& content;
    TextParts& parts; // of `content`
    TextViews views;
};
