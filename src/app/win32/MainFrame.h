#pragma once

#include "app/CommandContext.h"
#include "app/DocumentList.h"
#include "app/DocumentPrompts.h"
#include "app/Macros.h"
#include "app/win32/CommandWindow.h"
#include "app/win32/PaneWindows.h"
#include "app/win32/StatusBar.h"
#include "base/win32/Windows.h"
#include "document/Document.h"
#include "viewbase/ViewCommand.h"
#include "viewbase/ViewHost.h"

class TextBuffer;
class TextEditor;
struct ToolRecord;

// The main window: documents, panes, command window and status bar, and everything that commands do
// with them. One per process.
class MainFrame final : public ViewHost, public CommandContext {
public:
    MainFrame();
    MainFrame(const MainFrame&) = delete;
    MainFrame& operator=(const MainFrame&) = delete;

    static bool RegisterClasses(HINSTANCE instance);
    static void UnregisterClasses(HINSTANCE instance);
    // Creates and shows the window.
    bool Create(HINSTANCE instance);
    HWND Window() const { return window; }

    // The main loop's hook, after the accelerators; true: the message is swallowed.
    bool PreDispatchKey(const MSG& message);

    // ViewHost.
    void ViewActivated(View* view) override;
    void SetStatusText(StatusField field, const Char* text) override;
    bool OpenFileAtLine(const Char* path, uint32_t line) override;
    void DocumentChanged(Document* document) override;
    void CheckChangedOnDisk(Document* document, bool running) override;
    Answer ShowMessage(NativeWindow owner, const Char* text, MessageKind kind) override;
    MacroState GetMacroState() override { return macros.State(); }
    void StopMacroPlayback() override { macros.StopPlayback(); }
    void ApplySettings(uint32_t flag) override;

    // CommandContext.
    const DocumentList& Documents() const override { return documents; }
    bool OpenText(const Char* path, int32_t line, bool isNew) override;
    bool OpenBinary(const Char* path) override;
    void NewDocument() override;
    bool SaveDocument(Document& document) override;
    void BeginBatch() override;
    void EndBatch() override;
    const Char* ActiveDocumentName() const override;
    void SetActiveEngine(const Char* engineName) override;
    void MarkActiveAsOutput() override;
    void GoToLine(uint32_t line) override;
    void ToggleBookmark(uint32_t line) override;
    bool AppendWordAtCaret(WString& out) const override;
    bool AppendSelection(WString& out) const override;
    void ClearOutput() override;
    bool AppendOutput(const Char* text) override;
    bool RunCapturedCommand(const Char* command, const Char* startDirectory) override;
    void SetCommandText(const Char* text) override { commandWindow.SetText(text); }
    void HideCommandWindow() override { ShowCommandWindow(false); }
    void LayOut() override;
    void RefreshTitle() override;
    void ReapplySettings() override;
    void ReloadOptions() override;
    void PostClose() override { PostMessageW(window, WM_CLOSE, 0, 0); }
    void PostQuitNow() override { PostMessageW(window, QuitNowMessage, 0, 0); }
    Answer AskUser(const Char* text, MessageKind kind) override { return ShowMessage(nullptr, text, kind); }

    // The menu's commands (FrameCommands.cpp). False when the number is none of them.
    bool ExecuteMenuCommand(uint32_t number);
    void ShowCommandWindow(bool show);

private:
    static constexpr UINT QuitNowMessage = WM_USER; // 1024
    static constexpr UINT CheckFilesMessage = WM_USER + 1;
    static constexpr uint32_t MostUnopenedNames = 10;

    struct MenuCommand;
    static const MenuCommand MenuCommands[];

    static LRESULT CALLBACK WindowProc(HWND frame, UINT message, WPARAM wparam, LPARAM lparam);
    LRESULT OnMessage(UINT message, WPARAM wparam, LPARAM lparam);
    bool OnMouse(UINT message, LPARAM lparam);
    bool OnCreate();
    void OnActivate(bool active);
    void OnApplicationActivated(bool active);
    void OnEnabled();
    void OnFocus();
    bool OnSetCursor(LPARAM lparam) const;
    void OnDpiChanged(WPARAM wparam, LPARAM lparam);
    void OnDropFiles(HDROP drop);
    void OnMenuOpens(HMENU menu);
    void CheckFiles();
    bool MayLeave();
    void LeaveNow();
    void Leave();

    // What the window shows around the panes (FrameScreen.cpp).
    SIZE PaneArea() const;
    void LayOutNow();
    void RebuildTitle();
    void RefreshStatus();
    void ClearStatusFields();
    void CatchUp();
    void SetRedraw(bool on);
    static void OnMetricsChanged();

    // Documents (FrameDocuments.cpp).
    bool AdoptDocument(Document* document);
    bool ShowNewDocument(Document* document, Pane* pane);
    void ShowDocument(Document* document, Pane* pane);
    Pane* TargetPane();
    Document* ShowOpenFile(const Char* fullPath);
    bool MoveToLine(const Document* document, int32_t line);
    bool SaveDocumentAs(Document& document, bool askForName);
    void CloseActiveDocument();
    void CloseDocument(Document* document);
    void CloseOutputWindows();
    Document* SharedOutput();
    TextBuffer* NewOutput(const Char* title);
    void ReportOpenFailure(const Char* path);
    Document* ActiveDocument() const;
    TextBuffer* ActiveText() const;
    TextEditor* ActiveEditor() const;
    void DropEngines();
    template <class Action> void ForEachView(Action action) const;

    // Menu commands.
    void New() { NewDocument(); }
    void Open();
    void Save();
    void SaveAs();
    void SaveAll();
    void StopTool();
    void ToggleCommandWindow() { ShowCommandWindow(!commandWindow.IsVisible()); }
    void QuickOpen();
    void RecordMacro();
    void PlayMacro();
    void SplitVertically() { Split(true); }
    void SplitHorizontally() { Split(false); }
    void Split(bool vertical);
    void ClosePane();
    void NextPane() { panes.FocusNext(true); }
    void PreviousPane() { panes.FocusNext(false); }
    void NextFile();
    void PreviousFile();
    void UndoEdit();
    void RedoEdit();
    void OpenHelp();
    void ShowAbout();
    void ShowTools();
    void ShowOptions();
    void SendToView(ViewCommand command);
    bool IsMenuCommandEnabled(uint32_t number) const;

    // Tools (FrameTools.cpp).
    void RebuildToolMenu();
    void RunTool(ToolRecord& tool);
    bool CollectOutput(const Char* command, const Char* startDirectory);
    TextBuffer* ConsoleOutput();
    TextBuffer* OutputNamed(const Char* title);

    // Keys and macros (FrameKeys.cpp).
    bool CarryOut(const struct KeyDecision& decision);
    bool LeaveOutputDocument();
    void ShowByUse(bool nextInMru);
    void FinishSwitching();
    void PlayEvents();

    HWND window = nullptr;
    CommandWindow commandWindow;
    StatusBar statusBar;
    PaneWindows panes;
    DocumentList documents;
    Document* sharedOutput = nullptr; // one of `documents`, or null
    View* activeView = nullptr;
    ExternalChangePrompt externalChanges;
    Macros macros;
    bool switching = false; // Ctrl+Tab: the order of use is frozen while Ctrl is held
    uint32_t batchDepth = 0;
    bool layoutPending = false; // these three wait for the end of the batch
    bool titlePending = false;
    bool statusPending = false;
    bool drawing = true; // not during a batch
    WString shownTitle;
    bool messageShown = false;         // status field 0 shows a view's message
    bool commandWindowFocused = false; // when the window was last deactivated
    bool dialogClosed = false;         // since the last playback began
    bool asksToLeave = false;
    bool leavePending = false; // these two wait until no dialog is open
    bool checkPending = false;
    WString unopened; // names of what could not be opened during a batch, the first few
    uint32_t unopenedCount = 0;
};

template <class Action> void MainFrame::ForEachView(Action action) const {
    for (const DocumentList::Node* node = documents.Head(); node; node = node->next) {
        ViewNode* next = nullptr;
        do {
            DocumentView* view = node->document->EnumViews(next, next);
            if (view) action(*view->AsView());
        } while (next);
    }
}

// The process-wide frame; null before and after its life.
extern MainFrame* mainFrame;
