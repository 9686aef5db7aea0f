#pragma once

#include "app/CommandLanguage.h"
#include "app/RecoveryOffer.h"
#include "app/win32/FrameParts.h"
#include "app/win32/MenuCommands.h"
#include "base/Heap.h"
#include "viewbase/ViewHost.h"

// The main window, one per process. It routes: messages, what views report and what commands ask for go to
// its parts.
class MainFrame final : public HeapObject, public ViewHost, public CommandContext, private LeavingFrame {
public:
    explicit MainFrame(SettingsStore& store);
    ~MainFrame();
    MainFrame(const MainFrame&) = delete;
    MainFrame& operator=(const MainFrame&) = delete;

    // Registers the window classes of the frame and its panes, for as long as the frame lives; then creates and shows
    // the window.
    [[nodiscard]] bool Create(HINSTANCE instance);
    HWND Window() const { return parts.window; }
    // Offers what a crashed editor has left. Starts the journal timer, so that a journal that a recovered document
    // could not get is retried without an edit.
    void OfferRecovery() {
        ::OfferRecovery(parts.messages, parts.opener);
        StartJournalTimer();
    }

    // The main loop's hook, after the accelerators; true: the message is swallowed.
    bool PreDispatchKey(const MSG& message) { return parts.keys.PreDispatch(message); }

    // ViewHost.
    void ViewActivated(View* view) override { parts.display.ViewActivated(view); }
    void SetStatusText(StatusField field, const Char* text) override { parts.screen.SetStatusText(field, text); }
    bool OpenFileAtLine(const Char* path, uint32_t line) override;
    void DocumentChanged(Document* document) override;
    void CheckChangedOnDisk(Document* document, bool running) override;
    Answer ShowMessage(NativeWindow owner, const Char* text, MessageKind kind) override;
    MacroState GetMacroState() override { return parts.macros.State(); }
    void StopMacroPlayback() override { parts.macros.StopPlayback(); }
    void ApplySettings(SettingsEffect kind) override { parts.settings.Apply(kind); }

    // CommandContext.
    const DocumentList& Documents() const override { return parts.documents; }
    bool OpenText(const Char* path, uint32_t line, bool isNew) override;
    bool OpenBinary(const Char* path) override { return parts.opener.OpenBinary(path); }
    void NewDocument() override { parts.opener.OpenNew(); }
    bool SaveDocument(Document& document) override { return parts.saver.Save(document); }
    void BeginBatch() override { parts.batch.Begin(); }
    void EndBatch() override;
    const Char* ActiveDocumentName() const override;
    void SetActiveEngine(const Char* engineName) override { parts.activeText.SetEngine(engineName); }
    void MarkActiveAsOutput() override { parts.activeText.MarkAsOutput(); }
    void GoToLine(uint32_t line) override;
    void ToggleBookmark(uint32_t line) override;
    bool AppendWordAtCaret(WString& out) const override { return parts.activeText.AppendWordAtCaret(out); }
    bool AppendSelection(WString& out) const override { return parts.activeText.AppendSelection(out); }
    RepeatResult RepeatMacro(uint32_t count) override;
    void ClearOutput() override { parts.outputs.Clear(); }
    bool AppendOutput(const Char* text) override;
    bool RunCapturedCommand(const Char* command, const Char* startDirectory) override;
    void RunScript(const Char* file) override { ::RunScript(*this, file); }
    void SetCommandText(const Char* text) override { parts.commandWindow.SetText(text); }
    void HideCommandWindow() override { parts.commandWindow.Show(false); }
    void LayOut() override { parts.batch.LayOut(); }
    void RefreshTitle() override;
    void RefreshStatus() override;
    void ReapplySettings(const SettingsChanges& changes) override { parts.settings.Reapply(changes); }
    void ReloadOptions() override { parts.settings.Reload(); }
    void PostClose() override { PostMessageW(parts.window, WM_CLOSE, 0, 0); }
    void PostQuitNow() override { PostMessageW(parts.window, QuitNowMessage, 0, 0); }
    Answer AskUser(const Char* text, MessageKind kind) override { return parts.messages.AskUser(text, kind); }

private:
    static constexpr UINT_PTR JournalTimer = 1; // the other timers of the window are known by addresses
    static constexpr UINT JournalPeriod = 1000; // milliseconds
    static constexpr UINT QuitNowMessage = WM_USER;
    static constexpr UINT CheckFilesMessage = WM_USER + 1;
    static constexpr UINT AskUnsavedMessage = WM_USER + 2;

    static LRESULT CALLBACK WindowProc(HWND frame, UINT message, WPARAM wparam, LPARAM lparam);
    LRESULT OnMessage(UINT message, WPARAM wparam, LPARAM lparam);
    bool OnMouse(UINT message, LPARAM lparam);
    bool OnRequest(UINT message, WPARAM wparam);
    bool OnCreate();
    bool OnCommand(WPARAM wparam, LPARAM lparam);
    void OnApplicationActivated(bool active);
    void OnEnabled();
    void OnFocus();
    bool OnSetCursor(LPARAM lparam) const;
    void OnSystemChanged(UINT message, WPARAM wparam, LPARAM lparam);
    void OnDpiChanged(WPARAM wparam, LPARAM lparam);
    void FollowSystemFonts();
    void OnDropFiles(HDROP drop);
    static void OnMetricsChanged();
    void StartJournalTimer();
    void OnJournalTimer();

    // LeavingFrame.
    bool HasOpenDialog() const override { return !IsWindowEnabled(parts.window); }
    void Leave() override;
    void KeepUnsaved() override;
    void PostLeaveNow() override { PostQuitNow(); }
    void PostCheckFiles() override { PostMessageW(parts.window, CheckFilesMessage, 0, 0); }
    void PostAskUnsaved() override { PostMessageW(parts.window, AskUnsavedMessage, 0, 0); }
    bool IsInLongOperation() const override;
    void SetShutdownReason(const Char* reason) override { shutdownReason.Set(parts.window, reason); }

    bool RegisterClasses(HINSTANCE instance);

    WindowClass windowClass; // before the parts, which take the panes' windows along
    FrameParts parts;
    MenuCommands menu{parts};
    ShutdownReason shutdownReason;
    WindowTimer journalTimer;
};

// The process-wide frame; null before and after its life.
extern MainFrame* mainFrame;
