// What the frame's window shows around its panes: layout, title, status field 0 and questions. What only
// the screen needs waits for the end of a batch.
#include "app/FrameTitle.h"
#include "app/MessageText.h"
#include "app/win32/Application.h"
#include "app/win32/MainFrame.h"
#include "base/Text.h"
#include "viewbase/win32/View.h"

#include <initializer_list>

SIZE MainFrame::PaneArea() const {
    RECT client = {};
    GetClientRect(window, &client);
    const LONG below = statusBar.Height() + (commandWindow.IsVisible() ? commandWindow.Height() : 0);
    return {client.right, client.bottom > below ? client.bottom - below : 0};
}

void MainFrame::LayOut() {
    if (batchDepth > 0)
        layoutPending = true;
    else
        LayOutNow();
}

void MainFrame::LayOutNow() {
    layoutPending = false;
    // Minimised, the window has no size; what the views show would be lost with theirs.
    if (!statusBar.Window() || IsIconic(window)) return;
    RECT client = {};
    GetClientRect(window, &client);
    statusBar.Layout(client.right);
    if (commandWindow.IsVisible()) {
        const int height = commandWindow.Height();
        MoveWindow(commandWindow.Window(), 0, client.bottom - statusBar.Height() - height, client.right, height, TRUE);
    }
    panes.LayOut(PaneArea());
}

void MainFrame::RefreshTitle() {
    RebuildTitle();
    RefreshStatus();
}

// Asked for with every change of a document, so the system hears of real changes only.
void MainFrame::RebuildTitle() {
    titlePending = batchDepth > 0;
    WString text;
    const Document* active = activeView ? activeView->GetDocument() : nullptr;
    if (titlePending || !BuildTitle(active, macros.IsRecording(), text)) return;
    if (!shownTitle.IsEmpty() && Text::Equal(text.Text(), shownTitle.Text())) return;
    SetWindowTextW(window, Wide(text.Text()));
    shownTitle = static_cast<WString&&>(text);
}

void MainFrame::RefreshStatus() {
    statusPending = batchDepth > 0;
    WString text;
    if (statusPending || !BuildStatusText(commandWindow.IsVisible(), commands.console, text)) return;
    statusBar.SetField(StatusField::Message, text.Text());
    messageShown = false;
}

// A message hides what field 0 shows otherwise, which comes back when the message is cleared.
void MainFrame::SetStatusText(StatusField field, const Char* text) {
    if (field == StatusField::Message && !text) {
        if (messageShown) RefreshStatus();
        return;
    }
    if (field == StatusField::Message) messageShown = true;
    statusBar.SetField(field, text);
}

void MainFrame::ClearStatusFields() {
    for (const StatusField field :
         {StatusField::Line, StatusField::Column, StatusField::Overwrite, StatusField::LineEnding})
        statusBar.SetField(field, nullptr);
    SetStatusText(StatusField::Message, nullptr);
}

// Redrawing the scroll bars for each of many files would take ten times as long as opening them.
void MainFrame::SetRedraw(bool on) {
    if (drawing == on) return;
    drawing = on;
    panes.SetRedraw(on);
    SendMessageW(statusBar.Window(), WM_SETREDRAW, on, 0);
    if (on) InvalidateRect(statusBar.Window(), nullptr, TRUE);
}

void MainFrame::BeginBatch() {
    ++batchDepth;
    SetRedraw(false);
}

// Does what waits for the end of the batch, also in its middle, before a question is shown.
void MainFrame::CatchUp() {
    const uint32_t depth = batchDepth;
    batchDepth = 0;
    if (layoutPending) LayOutNow();
    if (titlePending) RebuildTitle();
    if (statusPending) RefreshStatus();
    SetRedraw(true);
    batchDepth = depth;
}

void MainFrame::EndBatch() {
    if (--batchDepth > 0) return;
    CatchUp();
    if (unopenedCount == 0) return;
    WString failed(static_cast<WString&&>(unopened));
    const uint32_t named = unopenedCount < MostUnopenedNames ? unopenedCount : MostUnopenedNames;
    if (unopenedCount > named) Text::AppendFormat(failed, u"\n(and %u more)", unopenedCount - named);
    unopenedCount = 0;
    ReportOpenFailure(failed.Text());
}

Answer MainFrame::ShowMessage(NativeWindow owner, const Char* text, MessageKind kind) {
    static constexpr UINT Styles[] = {MB_OK | MB_ICONINFORMATION, MB_OK | MB_ICONWARNING, MB_YESNO | MB_ICONQUESTION,
                                      MB_YESNOCANCEL | MB_ICONQUESTION};
    CatchUp();
    WString fitted;
    if (BuildMessageText(text, fitted)) text = fitted.Text();
    // A dialog that is shown has to wait for the answer like the frame beneath it.
    HWND waiting = owner ? static_cast<HWND>(owner) : GetActiveWindow();
    if (!waiting) waiting = window;
    const int answer = MessageBoxW(waiting, Wide(text), L"Orvane", Styles[static_cast<int>(kind)]);
    SetRedraw(batchDepth == 0);
    switch (answer) {
    case IDYES:
        return Answer::Yes;
    case IDNO:
        return Answer::No;
    case IDOK:
        return Answer::Ok;
    default:
        return Answer::Cancel;
    }
}
