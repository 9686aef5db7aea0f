#include "app/DocumentDisplay.h"

#include "app/DocumentList.h"
#include "app/ScreenBatch.h"
#include "document/Document.h"

namespace {

// The first view of `document` that no pane shows; null when there is none.
DocumentView* FindHiddenView(const Document& document, const PaneViews& panes) {
    ViewNode* next = nullptr;
    do {
        DocumentView* const view = document.EnumViews(next, next);
        if (view && !panes.PaneOf(view->AsView())) return view;
    } while (next);
    return nullptr;
}

} // namespace

Document* DocumentDisplay::Active() const {
    const Pane* const pane = panes.Active();
    return pane ? panes.DocumentIn(*pane) : nullptr;
}

Pane* DocumentDisplay::TargetPane() {
    if (panes.Active()) return panes.Active();
    if (panes.First()) return panes.First();
    Pane* const pane = panes.AddFirst();
    panes.SetActive(pane);
    // Not left to the end of a batch: a caret can only be scrolled into view in a window that has a size.
    if (pane) screen.LayOutNow();
    return pane;
}

bool DocumentDisplay::ShowNew(const Document& document) {
    Pane* const pane = TargetPane();
    DocumentView* const view = FindHiddenView(document, panes);
    if (!view || !pane) return false;
    panes.SetView(*pane, *view->AsView());
    panes.SetActive(pane);
    // In a batch a pane that has the focus keeps it: to lose it and get it back for each file takes the system longer
    // than the file.
    if (!screen.IsOpen()) panes.FocusFrame();
    panes.Focus(*pane);
    // Without the system's focus (the window is hidden or in the background) no message says so.
    ViewActivated(view->AsView());
    return true;
}

void DocumentDisplay::Show(Document* document, Pane* pane) {
    if (!document || !pane || panes.DocumentIn(*pane) == document) return;
    DocumentView* view = FindHiddenView(*document, panes);
    if (!view) view = document->CreateView(nullptr);
    if (!view) return;
    panes.SetView(*pane, *view->AsView());
    if (pane == panes.Active()) ViewActivated(view->AsView());
}

void DocumentDisplay::ShowNextFile() { ShowInActive(documents.Next(Active())); }

void DocumentDisplay::ShowPreviousFile() { ShowInActive(documents.Previous(Active())); }

void DocumentDisplay::SplitActive(bool vertical) {
    Document* const document = Active();
    DocumentView* const view = document ? document->CreateView(nullptr) : nullptr;
    if (!view) return;
    if (panes.Split(*panes.Active(), vertical, *view->AsView()))
        screen.LayOut();
    else
        view->Destroy(); // it would follow every edit unseen
}

void DocumentDisplay::CloseActivePane() {
    Pane* const pane = panes.Active();
    if (!pane || panes.Next(*pane) == pane) return;
    panes.Close(*pane);
    screen.LayOut();
    // A minimised window gives the focus to none of its panes, and so none says that it is active.
    ActivateAgain();
}

void DocumentDisplay::FocusNextPane() {
    if (panes.Active()) panes.Focus(*panes.Next(*panes.Active()));
}

void DocumentDisplay::FocusPreviousPane() {
    Pane* const active = panes.Active();
    if (!active) return;
    Pane* pane = active;
    while (panes.Next(*pane) != active) pane = panes.Next(*pane);
    panes.Focus(*pane);
}

void DocumentDisplay::ViewActivated(const View* view) {
    Pane* const pane = panes.PaneOf(view);
    if (!pane) return;
    panes.SetActive(pane);
    panes.Focus(*pane);
    if (!switching) documents.Touch(panes.DocumentIn(*pane));
    screen.RefreshTitle();
}

void DocumentDisplay::SwitchInMru(bool next) {
    const Document* const document = Active();
    switching = true; // first: what is shown now must not come to the front of the order it is walked in
    ShowInActive(next ? documents.NextInMru(document) : documents.PreviousInMru(document));
}

void DocumentDisplay::FinishSwitching() {
    switching = false;
    ActivateAgain();
}

void DocumentDisplay::AbandonSwitching() {
    if (!switching) return;
    switching = false;
    documents.Touch(Active());
}

bool DocumentDisplay::LeaveOutput() {
    Document* const document = Active();
    bool running = false;
    if (!document || !document->GetOutputState(running)) return false;
    for (Document* earlier = documents.NextInMru(document); earlier && earlier != document;
         earlier = documents.NextInMru(earlier)) {
        if (earlier->GetOutputState(running)) continue;
        ShowInActive(earlier);
        return true;
    }
    return false;
}

void DocumentDisplay::ActivateAgain() {
    const Pane* const pane = panes.Active();
    if (pane && pane->view) ViewActivated(pane->view);
}
