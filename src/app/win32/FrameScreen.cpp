#include "app/win32/FrameScreen.h"

#include "app/CommandContext.h"
#include "app/FrameTitle.h"
#include "app/Macros.h"
#include "app/win32/CommandWindow.h"
#include "app/win32/PaneWindows.h"
#include "base/Text.h"
#include "viewbase/ViewHost.h"

#include <initializer_list>
#include <utility>

bool FrameScreen::Create(HWND frame, HINSTANCE instance) {
    window = frame;
    return statusBar.Create(frame, instance);
}

void FrameScreen::ApplyFonts() {
    statusBar.ApplyFont();
    commandWindow.ApplyFont();
}

SIZE FrameScreen::PaneArea() const {
    RECT client = {};
    GetClientRect(window, &client);
    const LONG below = statusBar.Height() + (commandWindow.IsVisible() ? commandWindow.Height() : 0);
    return {client.right, client.bottom > below ? client.bottom - below : 0};
}

void FrameScreen::LayOutNow() {
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

// Called for every change of a document, so only a title that differs is set.
void FrameScreen::RefreshTitleNow() {
    WString text;
    const Pane* const pane = panes.Active();
    if (!BuildTitle(pane ? panes.DocumentIn(*pane) : nullptr, macros.IsRecording(), text)) return;
    if (!shownTitle.IsEmpty() && Text::Equal(text.Text(), shownTitle.Text())) return;
    SetWindowTextW(window, Wide(text.Text()));
    shownTitle = std::move(text);
}

void FrameScreen::RefreshStatusNow() {
    WString text;
    if (!BuildStatusText(commandWindow.IsVisible(), state.console, text)) return;
    statusBar.SetField(StatusField::Message, text.Text());
    messageShown = false;
}

void FrameScreen::SetStatusText(StatusField field, const Char* text) {
    if (field == StatusField::Message) {
        if (!text && messageShown) RefreshStatusNow();
        if (!text) return;
        messageShown = true;
    }
    statusBar.SetField(field, text);
}

void FrameScreen::ClearStatusFields() {
    for (const StatusField field :
         {StatusField::Line, StatusField::Column, StatusField::Overwrite, StatusField::LineEnding})
        statusBar.SetField(field, nullptr);
    SetStatusText(StatusField::Message, nullptr);
}

void FrameScreen::SetRedraw(bool on) {
    panes.SetRedraw(on);
    SendMessageW(statusBar.Window(), WM_SETREDRAW, on, 0);
    if (on) InvalidateRect(statusBar.Window(), nullptr, TRUE);
}
