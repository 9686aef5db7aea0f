#pragma once

#include "app/SaveDialog.h"

class DocumentDisplay;
class DocumentList;
class ScreenBatch;
class UserPrompt;

// Saves documents, under a new name on request. A failure is reported.
class DocumentSaver {
public:
    DocumentSaver(DocumentList& allDocuments, DocumentDisplay& shown, SaveDialog& dialog, UserPrompt& user,
                  ScreenBatch& batch)
        : documents(allDocuments), display(shown), saveDialog(dialog), prompt(user), screen(batch) {}
    DocumentSaver(const DocumentSaver&) = delete;
    DocumentSaver& operator=(const DocumentSaver&) = delete;

    // Asks for a name when the document has none. False when it failed or the dialog was cancelled.
    bool Save(Document& document);
    bool SaveAs(Document& document);
    // Every document in list order; one that fails does not stop the rest.
    void SaveAll();

private:
    bool SaveChosen(Document& document, bool askForName);
    bool Choose(Document& document, bool askForName, SaveChoice& choice);
    bool Write(Document& document, const SaveChoice& choice);

    DocumentList& documents;
    DocumentDisplay& display;
    SaveDialog& saveDialog;
    UserPrompt& prompt;
    ScreenBatch& screen;
};
