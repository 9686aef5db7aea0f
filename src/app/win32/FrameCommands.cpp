// The commands of the frame's menu, and those that the command language asks of it.
#include "app/OpenFiles.h"
#include "app/QuickOpen.h"
#include "app/win32/Application.h"
#include "app/win32/FileDialogs.h"
#include "app/win32/MainFrame.h"
#include "base/Text.h"
#include "document/TextBuffer.h"
#include "resource.h"
#include "settings/Settings.h"
#include "settings/ToolList.h"
#include "syntax/EngineDefinition.h"
#include "syntax/SyntaxEngine.h"
#include "view/Words.h"
#include "view/win32/TextView.h"
#include "viewbase/ViewCommand.h"

struct MainFrame::MenuCommand {
    uint32_t number;
    void (MainFrame::*handler)();
};

const MainFrame::MenuCommand MainFrame::MenuCommands[] = {
    {IDM_NEW, &MainFrame::New},
    {IDM_OPEN, &MainFrame::Open},
    {IDM_CLOSE, &MainFrame::CloseActiveDocument},
    {IDM_SAVE, &MainFrame::Save},
    {IDM_SAVE_AS, &MainFrame::SaveAs},
    {IDM_SAVE_ALL, &MainFrame::SaveAll},
    {IDM_EXIT, &MainFrame::PostClose},
    {IDM_UNDO, &MainFrame::UndoEdit},
    {IDM_REDO, &MainFrame::RedoEdit},
    {IDM_QUICK_OPEN, &MainFrame::QuickOpen},
    {IDM_STOP_TOOL, &MainFrame::StopTool},
    {IDM_COMMAND_WINDOW, &MainFrame::ToggleCommandWindow},
    {IDM_RECORD_MACRO, &MainFrame::RecordMacro},
    {IDM_PLAY_MACRO, &MainFrame::PlayMacro},
    {IDM_CUSTOMIZE, &MainFrame::ShowTools},
    {IDM_OPTIONS, &MainFrame::ShowOptions},
    {IDM_SPLIT_VERTICALLY, &MainFrame::SplitVertically},
    {IDM_SPLIT_HORIZONTALLY, &MainFrame::SplitHorizontally},
    {IDM_CLOSE_PANE, &MainFrame::ClosePane},
    {IDM_CLOSE_OUTPUT_WINDOWS, &MainFrame::CloseOutputWindows},
    {IDM_NEXT_PANE, &MainFrame::NextPane},
    {IDM_PREVIOUS_PANE, &MainFrame::PreviousPane},
    {IDM_NEXT_FILE, &MainFrame::NextFile},
    {IDM_PREVIOUS_FILE, &MainFrame::PreviousFile},
    {IDM_ONLINE_HELP, &MainFrame::OpenHelp},
    {IDM_ABOUT, &MainFrame::ShowAbout},
};

namespace {

// The menu's edit commands go to the active view, under the view's own numbers.
struct ForwardedCommand {
    uint32_t number;
    ViewCommand viewCommand;
};

constexpr ForwardedCommand ForwardedCommands[] = {
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

const ForwardedCommand* FindForwarded(uint32_t number) {
    for (const ForwardedCommand& command : ForwardedCommands)
        if (command.number == number) return &command;
    return nullptr;
}

bool HasFinishedOutput(const DocumentList& documents) {
    for (const DocumentList::Node* node = documents.Head(); node; node = node->next)
        if (IsFinishedOutput(*node->document)) return true;
    return false;
}

// Menu items that need something to work on.
bool NeedsView(uint32_t number) {
    static constexpr uint32_t Numbers[] = {
        IDM_CLOSE,     IDM_SAVE,          IDM_SAVE_AS,   IDM_SAVE_ALL,      IDM_SPLIT_VERTICALLY,
        IDM_NEXT_FILE, IDM_PREVIOUS_FILE, IDM_NEXT_PANE, IDM_PREVIOUS_PANE, IDM_SPLIT_HORIZONTALLY};
    for (const uint32_t needing : Numbers)
        if (needing == number) return true;
    return false;
}

} // namespace

bool MainFrame::ExecuteMenuCommand(uint32_t number) {
    for (const MenuCommand& command : MenuCommands)
        if (command.number == number) {
            (this->*command.handler)();
            return true;
        }
    if (const ForwardedCommand* forwarded = FindForwarded(number)) {
        SendToView(forwarded->viewCommand);
        return true;
    }
    if (number >= IDM_FIRST_DOCUMENT && number < IDM_FIRST_TOOL) {
        ShowDocument(documents.At(number - IDM_FIRST_DOCUMENT), panes.Active());
        return true;
    }
    ToolRecord* tool = number >= IDM_FIRST_TOOL ? toolList.At(number - IDM_FIRST_TOOL) : nullptr;
    if (tool) RunTool(*tool);
    return tool != nullptr;
}

bool MainFrame::IsMenuCommandEnabled(uint32_t number) const {
    const Document* document = ActiveDocument();
    switch (number) {
    case IDM_UNDO:
        return document && document->CanDo(DocumentCommand::Undo);
    case IDM_REDO:
        return document && document->CanDo(DocumentCommand::Redo);
    case IDM_PASTE:
        return document && document->CanDo(DocumentCommand::Paste);
    case IDM_CUT:
        return activeView && document && document->CanDo(DocumentCommand::Edit);
    case IDM_GOTO:
        return activeView != nullptr;
    case IDM_SAVE_AS:
        return activeView && document && !document->IsBinary(); // bytes are saved in place only
    case IDM_CLOSE_PANE:
        return panes.Active() && !panes.IsOnly(*panes.Active());
    case IDM_CLOSE_OUTPUT_WINDOWS:
        return HasFinishedOutput(documents);
    case IDM_QUICK_OPEN:
        return commandWindow.IsVisible() || ActiveText();
    case IDM_STOP_TOOL: {
        bool running = false;
        return document && document->GetOutputState(running) && running;
    }
    case IDM_RECORD_MACRO:
    case IDM_PLAY_MACRO:
        return !macros.IsPlaying();
    default:
        break;
    }
    if (const ForwardedCommand* forwarded = FindForwarded(number))
        return activeView && activeView->IsCommandEnabled(forwarded->viewCommand);
    return !NeedsView(number) || activeView;
}

void MainFrame::SendToView(ViewCommand command) {
    if (activeView) activeView->ExecuteCommand(command);
}

void MainFrame::UndoEdit() {
    if (Document* document = ActiveDocument()) document->DoCommand(DocumentCommand::Undo);
}

void MainFrame::RedoEdit() {
    if (Document* document = ActiveDocument()) document->DoCommand(DocumentCommand::Redo);
}

void MainFrame::Open() {
    WString result;
    bool tooMany = false;
    if (!FileDialogs::AskOpen(window, result, tooMany)) {
        if (tooMany) AskUser(u"These are too many files to open at once.", MessageKind::Warning);
        return;
    }
    BeginBatch();
    OpenSelectedFiles(*this, result.Text());
    EndBatch();
}

void MainFrame::Save() {
    if (activeView) SaveDocumentAs(*activeView->GetDocument(), false);
}

void MainFrame::SaveAs() {
    if (activeView) SaveDocumentAs(*activeView->GetDocument(), true);
}

void MainFrame::SaveAll() {
    // By index, not along the nodes: while a dialog is open the list may change.
    for (uint32_t i = 0; Document* const document = documents.At(i); ++i) SaveDocument(*document);
}

void MainFrame::QuickOpen() {
    WString name;
    const bool fromWindow = commandWindow.IsVisible();
    if (fromWindow) {
        if (!commandWindow.GetText(name)) return;
    } else {
        const TextEditor* editor = ActiveEditor();
        TextBuffer* text = ActiveText();
        if (!editor || !text || !text->CommitEdit()) return;
        if (!FileNameAtCaret(text->Content(), text->Length(), editor->CaretOffset(), name)) return;
    }
    WString found;
    if (name.IsEmpty() || !FindAlongQuickOpenPath(name.Text(), found)) return;
    if (OpenText(found.Text(), -1, false) && fromWindow) ShowCommandWindow(false);
}

void MainFrame::StopTool() {
    Document* document = ActiveDocument();
    bool running = false;
    if (document && document->GetOutputState(running) && running) document->StopProcess();
}

void MainFrame::Split(bool vertical) {
    Pane* pane = panes.Active();
    if (!pane || !activeView) return;
    DocumentView* view = activeView->GetDocument()->CreateView(nullptr);
    if (!view) return;
    if (panes.Split(pane, vertical, view->AsView()))
        LayOut();
    else
        view->Destroy();
}

void MainFrame::ClosePane() {
    Pane* pane = panes.Active();
    if (!pane || panes.IsOnly(*pane)) return;
    activeView = nullptr; // it goes with its pane
    panes.Close(pane);
    LayOut();
    // A minimised window gives the focus to none of its panes, and so none tells the frame.
    if (panes.Active()->view) ViewActivated(panes.Active()->view);
}

void MainFrame::NextFile() { ShowDocument(documents.Next(ActiveDocument()), panes.Active()); }

void MainFrame::PreviousFile() { ShowDocument(documents.Previous(ActiveDocument()), panes.Active()); }

const Char* MainFrame::ActiveDocumentName() const {
    const Document* document = ActiveDocument();
    return document ? document->GetName() : nullptr;
}

void MainFrame::SetActiveEngine(const Char* engineName) {
    TextBuffer* text = ActiveText();
    // A name that no definition lists would give a plain engine.
    if (text && FindEngineDefinition(engineName)) text->SetEngineName(engineName);
}

void MainFrame::MarkActiveAsOutput() {
    if (TextBuffer* text = ActiveText()) text->MarkAsOutput();
}

// A gap between words is none, though a word selection would take it.
bool MainFrame::AppendWordAtCaret(WString& out) const {
    const TextEditor* editor = ActiveEditor();
    if (!editor) return true;
    const TextSpan line = editor->CaretLineText();
    uint32_t start = 0;
    uint32_t end = 0;
    Words::WordAt(line, editor->CaretColumn(), start, end);
    if (start == end || !Text::IsWordChar(line.text[start])) return true;
    return out.Append(line.text + start, end - start);
}

bool MainFrame::AppendSelection(WString& out) const {
    const TextEditor* editor = ActiveEditor();
    if (!editor || !editor->HasSelection()) return AppendWordAtCaret(out);
    TextBuffer* text = ActiveText();
    if (!text->CommitEdit()) return false;
    const uint32_t start = editor->SelectionStart();
    return out.Append(text->Content() + start, editor->SelectionEnd() - start);
}

void MainFrame::GoToLine(uint32_t line) {
    if (activeView) activeView->GoToLine(line, false);
}

void MainFrame::ToggleBookmark(uint32_t line) {
    if (activeView) activeView->ToggleBookmark(line);
}

// Engine definitions hold colours of the settings, and engines refer to definitions: no document keeps
// one while the definitions change.
void MainFrame::DropEngines() {
    for (const DocumentList::Node* node = documents.Head(); node; node = node->next)
        if (!node->document->IsBinary()) static_cast<TextBuffer*>(node->document)->AttachEngine(nullptr);
}

void MainFrame::ReapplySettings() {
    DropEngines();
    ReleaseEngineDefinitions();
    LoadEngineDefinitions(*Application::globals.iniFile);
    ApplySettings(SettingsChanged::Engine);
}

void MainFrame::ReloadOptions() {
    DropEngines();
    Application::LoadSettingsFile();
    RebuildToolMenu();
    ApplySettings(SettingsChanged::Engine);
}

void MainFrame::ApplySettings(uint32_t flag) {
    commandWindow.ApplyFont();
    for (const DocumentList::Node* node = documents.Head(); node; node = node->next)
        node->document->OnSettingsChanged(flag);
    LayOut();
    ForEachView([flag](View& view) {
        view.OnSize(flag);
        view.Invalidate();
    });
}

void MainFrame::OnMetricsChanged() {
    if (!mainFrame) return;
    mainFrame->ForEachView([](View& view) {
        view.OnSize(1);
        view.Invalidate();
    });
}
