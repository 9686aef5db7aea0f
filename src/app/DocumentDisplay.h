#pragma once

#include "app/PaneViews.h"

class DocumentList;
class ScreenBatch;

// Which document is shown in which pane, and the keys that switch between them. The title follows.
class DocumentDisplay {
public:
    DocumentDisplay(DocumentList& allDocuments, PaneViews& allPanes, ScreenBatch& batch)
        : documents(allDocuments), panes(allPanes), screen(batch) {}
    DocumentDisplay(const DocumentDisplay&) = delete;
    DocumentDisplay& operator=(const DocumentDisplay&) = delete;

    // The document of the active view; null without one.
    Document* Active() const;
    // The pane that a newly opened document goes to, made when there is none at all. Null on failure.
    Pane* TargetPane();

    // Shows a document that was just opened in the target pane and gives it the focus. False without a
    // view or a pane to show it in; nothing has changed then.
    [[nodiscard]] bool ShowNew(const Document& document);
    // Shows a document in a pane, in a new view when each other one has its pane. Does nothing when the
    // pane shows it already, and without a document, a pane or memory.
    void Show(Document* document, Pane* pane);
    void ShowInActive(Document* document) { Show(document, panes.Active()); }
    void ShowNextFile();
    void ShowPreviousFile();

    // A second view of the active document in the new half of the active pane, which stays active.
    void SplitActive(bool vertical);
    // Not the only pane.
    void CloseActivePane();
    void FocusNextPane();
    void FocusPreviousPane();

    // A view received the focus, or is to have it: its pane becomes the active one and its document the
    // most recently used, except while Ctrl+Tab walks through the documents in that order.
    void ViewActivated(const View* view);

    // Ctrl+Tab: the next or previous document in order of use; the order is frozen until the end.
    void SwitchInMru(bool next);
    bool IsSwitching() const { return switching; }
    void FinishSwitching();
    // The release of Ctrl goes to another program.
    void AbandonSwitching();

    // Escape in an output document: back to the document used before it. False when there is none.
    bool LeaveOutput();

private:
    void ActivateAgain();

    DocumentList& documents;
    PaneViews& panes;
    ScreenBatch& screen;
    bool switching = false;
};
