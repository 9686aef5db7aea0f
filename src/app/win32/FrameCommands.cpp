#include "app/win32/FrameCommands.h"

#include "app/CommandLanguage.h"
#include "app/win32/FrameParts.h"
#include "app/win32/FrameRequests.h"
#include "viewbase/win32/View.h"

const DocumentList& FrameCommands::Documents() const { return parts.documents; }

bool FrameCommands::OpenText(const Char* path, uint32_t line, bool isNew) {
    return parts.opener.OpenText(path, line, isNew);
}

bool FrameCommands::OpenBinary(const Char* path) { return parts.opener.OpenBinary(path); }

void FrameCommands::NewDocument() { parts.opener.OpenNew(); }

bool FrameCommands::SaveDocument(Document& document) { return parts.saver.Save(document); }

SafeSaver& FrameCommands::Saver() { return parts.recovery.saver; }

void FrameCommands::BeginBatch() { parts.batch.Begin(); }

void FrameCommands::EndBatch() {
    if (parts.batch.End()) parts.openFailures.BatchEnded();
}

const Char* FrameCommands::ActiveDocumentName() const {
    const Document* const document = parts.display.Active();
    return document ? document->GetName() : nullptr;
}

void FrameCommands::SetActiveEngine(const Char* engineName) { parts.activeText.SetEngine(engineName); }

void FrameCommands::MarkActiveAsOutput() { parts.activeText.MarkAsOutput(); }

void FrameCommands::GoToLine(uint32_t line) {
    if (View* const view = parts.panes.ActiveView()) view->GoToLine(line, false);
}

void FrameCommands::ToggleBookmark(uint32_t line) {
    if (View* const view = parts.panes.ActiveView()) view->ToggleBookmark(line);
}

bool FrameCommands::AppendWordAtCaret(WString& out) const { return parts.activeText.AppendWordAtCaret(out); }

bool FrameCommands::AppendSelection(WString& out) const { return parts.activeText.AppendSelection(out); }

RepeatResult FrameCommands::RepeatMacro(uint32_t count) {
    const ConsoleFocus focus(parts.commandWindow, commands.console);
    // The keys are a view's, which has the focus when they come from the user.
    if (const Pane* const pane = parts.panes.Active()) parts.panes.Focus(*pane);
    return parts.player.Repeat(count);
}

void FrameCommands::ClearOutput() { parts.outputs.Clear(); }

bool FrameCommands::AppendOutput(const Char* text) {
    const ConsoleFocus focus(parts.commandWindow, commands.console);
    return parts.outputs.Append(text);
}

bool FrameCommands::RunCapturedCommand(const Char* command, const Char* startDirectory) {
    const ConsoleFocus focus(parts.commandWindow, commands.console);
    return parts.tools.RunCaptured(command, startDirectory);
}

void FrameCommands::RunScript(const Char* file) { ::RunScript(*this, file); }

void FrameCommands::SetCommandText(const Char* text) { parts.commandWindow.SetText(text); }

void FrameCommands::HideCommandWindow() { parts.commandWindow.Show(false); }

void FrameCommands::LayOut() { parts.batch.LayOut(); }

void FrameCommands::RefreshTitle() { parts.batch.RefreshTitle(); }

void FrameCommands::RefreshStatus() { parts.batch.RefreshStatus(); }

void FrameCommands::ReapplySettings(const SettingsChanges& changes) { parts.settings.Reapply(changes); }

void FrameCommands::ReloadOptions() { parts.settings.Reload(); }

void FrameCommands::PostClose() { PostMessageW(parts.window, WM_CLOSE, 0, 0); }

void FrameCommands::PostQuitNow() { PostMessageW(parts.window, FrameRequests::QuitNow, 0, 0); }

Answer FrameCommands::AskUser(const Char* text, MessageKind kind) { return parts.messages.AskUser(text, kind); }
