#pragma once

#include "base/Types.h"

class Document;
class DocumentDisplay;
class DocumentList;
class PaneViews;
class TextBuffer;
struct TextServices;

// The documents that collect output: the shared one, which the console mode and some commands write to,
// and one for each command.
class OutputDocuments {
public:
    OutputDocuments(TextServices& around, DocumentList& allDocuments, DocumentDisplay& shown, PaneViews& allPanes)
        : services(around), documents(allDocuments), display(shown), panes(allPanes) {}
    OutputDocuments(const OutputDocuments&) = delete;
    OutputDocuments& operator=(const OutputDocuments&) = delete;

    // Empties the shared document, if there is one.
    void Clear();
    // Shows the shared document and appends to it. False without memory.
    bool Append(const Char* text);
    // The shared document, made if needed, shown in the active pane; null on failure.
    TextBuffer* ShowShared();
    // The document of that title, made if needed, shown in the pane after the active one; null on failure.
    // Emptied, unless a command still runs into it.
    TextBuffer* ShowNamed(const Char* title);
    // The document is about to be closed.
    void Forget(const Document& document);

private:
    TextBuffer* Make(const Char* title);

    TextServices& services;
    DocumentList& documents;
    DocumentDisplay& display;
    PaneViews& panes;
    TextBuffer* shared = nullptr; // one of `documents`, or null
};
