#pragma once

class Document;
class DocumentDisplay;
class DocumentList;
class OutputDocuments;
class PaneViews;
class ScreenBatch;

// Closes documents without a question; MayClose is what asks first.
class DocumentCloser {
public:
    DocumentCloser(DocumentList& allDocuments, DocumentDisplay& shown, PaneViews& allPanes, OutputDocuments& collected,
                   ScreenBatch& batch)
        : documents(allDocuments), display(shown), panes(allPanes), outputs(collected), screen(batch) {}
    DocumentCloser(const DocumentCloser&) = delete;
    DocumentCloser& operator=(const DocumentCloser&) = delete;

    // The panes of the document show the one before it instead; those of the last document are closed with
    // it. False without memory for another view: the document stays open.
    bool Close(Document& document);
    // Every output document into which no command runs any more.
    void CloseOutputs();
    // All panes and all documents, for leaving.
    void CloseAll();

private:
    bool ReplaceEverywhere(const Document& document);

    DocumentList& documents;
    DocumentDisplay& display;
    PaneViews& panes;
    OutputDocuments& outputs;
    ScreenBatch& screen;
};
