#include "app/win32/MenuCommands.h"

#include "app/DocumentPrompts.h"
#include "app/FileDialogText.h"
#include "app/QuickOpen.h"
#include "app/win32/AboutDialog.h"
#include "app/win32/FrameParts.h"
#include "app/win32/HelpPage.h"
#include "app/win32/ToolMenu.h"
#include "document/TextBuffer.h"
#include "resource.h"
#include "settings/Settings.h"
#include "settings/ToolList.h"
#include "settings/win32/OptionsDialog.h"
#include "settings/win32/ToolsDialog.h"
#include "viewbase/ViewCommand.h"
#include "viewbase/win32/View.h"

namespace {

void Open(FrameParts& frame) {
    WString result;
    bool tooMany = false;
    if (frame.fileDialogs.AskOpen(result, tooMany))
        OpenSelectedFiles(frame.context, result.Text());
    else if (tooMany)
        frame.messages.AskUser(u"These are too many files to open at once.", MessageKind::Warning);
}

void CloseDocument(FrameParts& frame) {
    Document* const document = frame.display.Active();
    if (document && MayClose(frame.context, *document)) frame.closer.Close(*document);
}

void Save(FrameParts& frame) {
    if (Document* const document = frame.display.Active()) frame.saver.Save(*document);
}

void SaveAs(FrameParts& frame) {
    if (Document* const document = frame.display.Active()) frame.saver.SaveAs(*document);
}

void UndoEdit(FrameParts& frame) {
    if (Document* const document = frame.display.Active()) document->DoCommand(DocumentCommand::Undo);
}

void RedoEdit(FrameParts& frame) {
    if (Document* const document = frame.display.Active()) document->DoCommand(DocumentCommand::Redo);
}

void QuickOpen(FrameParts& frame) {
    WString name;
    const bool fromWindow = frame.commandWindow.IsVisible();
    if (fromWindow ? !frame.commandWindow.GetText(name) : !frame.activeText.GetFileNameAtCaret(name)) return;
    WString found;
    if (name.IsEmpty() || !FindAlongQuickOpenPath(name.Text(), found)) return;
    if (frame.opener.OpenText(found.Text(), NoLine, false) && fromWindow) frame.commandWindow.Show(false);
}

void StopTool(FrameParts& frame) {
    Document* const document = frame.display.Active();
    bool running = false;
    if (document && document->GetOutputState(running) && running) frame.tools.Stop(static_cast<TextBuffer&>(*document));
}

void RecordMacro(FrameParts& frame) {
    if (!frame.macros.ToggleRecording()) return;
    // The end of a drag would be locked out with the rest of the mouse.
    if (frame.macros.IsRecording()) ReleaseCapture();
    frame.batch.RefreshTitle();
}

void PlayMacro(FrameParts& frame) {
    if (!frame.player.Play()) frame.batch.RefreshTitle();
}

void ShowTools(FrameParts& frame) {
    if (!RunToolsDialog(frame.window, frame.store.Ini())) return;
    frame.store.RebuildToolAccelerators();
    RebuildToolMenu(GetMenu(frame.window));
    frame.store.Save(frame.messages);
}

void ShowOptions(FrameParts& frame) {
    SettingsChanges changes;
    const OptionsOutcome outcome = RunOptionsDialog(frame.window, frame.store.Ini(), changes, frame.optionsPage);
    if (outcome == OptionsOutcome::Cancelled) return;
    frame.settings.Reapply(changes);
    if (outcome == OptionsOutcome::Stored) frame.store.Save(frame.messages);
}

// When an item of the menu can be chosen.
enum class Enabled {
    Always,
    WithView,
    Undo,
    Redo,
    WithSecondPane,
    WithFinishedOutput,
    QuickOpen,
    WithRunningTool,
    UnlessPlaying,
    SaveAs,
};

struct Command {
    uint32_t number;
    void (*run)(FrameParts& frame);
    Enabled enabled;
};

constexpr Command Commands[] = {
    {IDM_NEW, [](FrameParts& frame) { frame.opener.OpenNew(); }, Enabled::Always},
    {IDM_OPEN, Open, Enabled::Always},
    {IDM_CLOSE, CloseDocument, Enabled::WithView},
    {IDM_SAVE, Save, Enabled::WithView},
    {IDM_SAVE_AS, SaveAs, Enabled::SaveAs},
    {IDM_SAVE_ALL, [](FrameParts& frame) { frame.saver.SaveAll(); }, Enabled::WithView},
    {IDM_EXIT, [](FrameParts& frame) { frame.context.PostClose(); }, Enabled::Always},
    {IDM_UNDO, UndoEdit, Enabled::Undo},
    {IDM_REDO, RedoEdit, Enabled::Redo},
    {IDM_QUICK_OPEN, QuickOpen, Enabled::QuickOpen},
    {IDM_STOP_TOOL, StopTool, Enabled::WithRunningTool},
    {IDM_COMMAND_WINDOW, [](FrameParts& frame) { frame.commandWindow.Show(!frame.commandWindow.IsVisible()); },
     Enabled::Always},
    {IDM_RECORD_MACRO, RecordMacro, Enabled::UnlessPlaying},
    {IDM_PLAY_MACRO, PlayMacro, Enabled::UnlessPlaying},
    {IDM_CUSTOMIZE, ShowTools, Enabled::Always},
    {IDM_OPTIONS, ShowOptions, Enabled::Always},
    {IDM_SPLIT_VERTICALLY, [](FrameParts& frame) { frame.display.SplitActive(true); }, Enabled::WithView},
    {IDM_SPLIT_HORIZONTALLY, [](FrameParts& frame) { frame.display.SplitActive(false); }, Enabled::WithView},
    {IDM_CLOSE_PANE, [](FrameParts& frame) { frame.display.CloseActivePane(); }, Enabled::WithSecondPane},
    {IDM_CLOSE_OUTPUT_WINDOWS, [](FrameParts& frame) { frame.closer.CloseOutputs(); }, Enabled::WithFinishedOutput},
    {IDM_NEXT_PANE, [](FrameParts& frame) { frame.display.FocusNextPane(); }, Enabled::WithView},
    {IDM_PREVIOUS_PANE, [](FrameParts& frame) { frame.display.FocusPreviousPane(); }, Enabled::WithView},
    {IDM_NEXT_FILE, [](FrameParts& frame) { frame.display.ShowNextFile(); }, Enabled::WithView},
    {IDM_PREVIOUS_FILE, [](FrameParts& frame) { frame.display.ShowPreviousFile(); }, Enabled::WithView},
    {IDM_ONLINE_HELP, [](FrameParts& frame) { OpenHelpPage(frame.window, frame.messages, frame.ole); },
     Enabled::Always},
    {IDM_ABOUT, [](FrameParts& frame) { AboutDialog(frame.messages, frame.ole).Run(IDD_ABOUT, frame.window); },
     Enabled::Always},
};

// The menu's edit commands go to the active view, under the view's own numbers. A text says whether it can be changed
// or pasted into; everything else the view knows.
struct ViewItem {
    uint32_t number;
    ViewCommand viewCommand;
};

constexpr ViewItem ViewItems[] = {
    {IDM_CUT, ViewCommand::Cut},
    {IDM_COPY, ViewCommand::Copy},
    {IDM_PASTE, ViewCommand::Paste},
    {IDM_DELETE, ViewCommand::Delete},
    {IDM_SELECT_ALL, ViewCommand::SelectAll},
    {IDM_FIND, ViewCommand::Find},
    {IDM_REPLACE, ViewCommand::Replace},
    {IDM_GOTO, ViewCommand::GoToLine},
    {IDM_BOOKMARK, ViewCommand::ToggleBookmark},
    {IDM_COPY_HTML, ViewCommand::CopyColoured},
};

template <class Row, size_t Count> const Row* FindRow(const Row (&rows)[Count], uint32_t number) {
    for (const Row& row : rows)
        if (row.number == number) return &row;
    return nullptr;
}

bool HasFinishedOutput(const DocumentList& documents) {
    for (const DocumentList::Node* node = documents.Head(); node; node = node->next)
        if (IsFinishedOutput(*node->document)) return true;
    return false;
}

bool IsMet(Enabled condition, const FrameParts& frame) {
    const Document* const document = frame.display.Active();
    bool running = false;
    switch (condition) {
    case Enabled::Always:
        return true;
    case Enabled::WithView:
        return document != nullptr;
    case Enabled::Undo:
        return document && document->CanDo(DocumentCommand::Undo);
    case Enabled::Redo:
        return document && document->CanDo(DocumentCommand::Redo);
    case Enabled::WithSecondPane:
        return frame.panes.Active() && frame.panes.Next(*frame.panes.Active()) != frame.panes.Active();
    case Enabled::WithFinishedOutput:
        return HasFinishedOutput(frame.documents);
    case Enabled::QuickOpen:
        return frame.commandWindow.IsVisible() || frame.activeText.Document();
    case Enabled::WithRunningTool:
        return document && document->GetOutputState(running) && running;
    case Enabled::UnlessPlaying:
        return !frame.macros.IsPlaying();
    case Enabled::SaveAs:
        return document && !document->IsBinary(); // bytes are saved in place only
    }
    return false;
}

bool IsViewItemEnabled(const ViewItem& item, const FrameParts& frame) {
    const Document* const document = frame.display.Active();
    if (!document) return false;
    const bool enabled = frame.panes.ActiveView()->IsCommandEnabled(item.viewCommand);
    if (item.number == IDM_GOTO) return true;
    if (document->IsBinary()) return enabled;
    if (item.number == IDM_PASTE) return document->CanDo(DocumentCommand::Paste);
    if (item.number == IDM_CUT) return document->CanDo(DocumentCommand::Edit);
    if (item.number == IDM_DELETE) return enabled && document->CanDo(DocumentCommand::Edit);
    return enabled;
}

} // namespace

bool MenuCommands::Execute(uint32_t number) {
    if (const Command* const command = FindRow(Commands, number)) {
        command->run(parts);
        return true;
    }
    if (const ViewItem* const item = FindRow(ViewItems, number)) {
        if (View* const view = parts.panes.AttachedView()) view->ExecuteCommand(item->viewCommand);
        return true;
    }
    if (number >= IDM_FIRST_DOCUMENT && number < IDM_FIRST_TOOL) {
        parts.display.ShowInActive(parts.documents.At(number - IDM_FIRST_DOCUMENT));
        return true;
    }
    ToolRecord* const tool = number >= IDM_FIRST_TOOL ? toolList.At(number - IDM_FIRST_TOOL) : nullptr;
    if (!tool) return false;
    const ConsoleFocus focus(parts.commandWindow, parts.context.commands.console);
    parts.tools.Run(*tool);
    return true;
}

bool MenuCommands::IsEnabled(uint32_t number) const {
    if (const Command* const command = FindRow(Commands, number)) return IsMet(command->enabled, parts);
    if (const ViewItem* const item = FindRow(ViewItems, number)) return IsViewItemEnabled(*item, parts);
    return true;
}
