#pragma once

#include "base/Journal.h"

class Document;
class DocumentDisplay;
class DocumentList;
struct DocumentServices;
class OpenFailures;
class PaneViews;

// Makes new documents and opens files, each of them once, and shows them in the target pane.
class DocumentOpener {
public:
    DocumentOpener(DocumentServices& around, DocumentList& allDocuments, DocumentDisplay& shown, PaneViews& allPanes,
                   OpenFailures& told)
        : services(around), documents(allDocuments), display(shown), panes(allPanes), failures(told) {}
    DocumentOpener(const DocumentOpener&) = delete;
    DocumentOpener& operator=(const DocumentOpener&) = delete;

    // An untitled document; nothing happens without memory.
    void OpenNew();
    // Opens a file, or shows it when it is open, and moves the caret to `line` (0-based, NoLine for none).
    // With `isNew` the file need not exist. A failure is reported to OpenFailures.
    [[nodiscard]] bool OpenText(const Char* path, uint32_t line, bool isNew);
    [[nodiscard]] bool OpenBinary(const Char* path);
    // Opens a text that is in no file, modified, under a title. Null when that is not possible.
    Document* OpenRecovered(struct DecodedText& text, const Char* title);
    // Opens the bytes of a file with the changes of a journal, whose header was read, unless the file is open already.
    // `opened` becomes the document when there is one.
    RecoveryResult OpenRecoveredBytes(JournalReader& journal, Document*& opened);

private:
    Document* ShowOpenFile(const Char* fullPath);
    bool ShowOpened(Document* document);
    void MoveToLine(const Document& document, uint32_t line);

    DocumentServices& services;
    DocumentList& documents;
    DocumentDisplay& display;
    PaneViews& panes;
    OpenFailures& failures;
};
