#include "app/DocumentCloser.h"

#include "app/DocumentDisplay.h"
#include "app/DocumentList.h"
#include "app/OutputDocuments.h"
#include "app/ScreenBatch.h"

bool DocumentCloser::Close(Document& document) {
    if (documents.Count() == 1) {
        panes.CloseAll();
        screen.ClearStatusFields();
        panes.FocusFrame();
    } else if (!ReplaceEverywhere(document)) {
        return false;
    }
    outputs.Forget(document);
    documents.Remove(&document);
    screen.RefreshTitle();
    return true;
}

bool DocumentCloser::ReplaceEverywhere(const Document& document) {
    Document* const successor = documents.Previous(&document);
    for (Pane* pane = panes.First(); pane; pane = pane->next) {
        if (panes.DocumentIn(*pane) != &document) continue;
        display.Show(successor, pane);
        if (panes.DocumentIn(*pane) == &document) return false;
    }
    return true;
}

void DocumentCloser::CloseOutputs() {
    for (uint32_t i = 0; Document* const document = documents.At(i);)
        if (!IsFinishedOutput(*document) || !Close(*document)) ++i;
}

void DocumentCloser::CloseAll() {
    panes.CloseAll();
    while (Document* const document = documents.At(0)) {
        outputs.Forget(*document);
        documents.Remove(document);
    }
}
