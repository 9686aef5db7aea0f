#pragma once

#include "app/RecoveryOffer.h"
#include "app/win32/FrameCommands.h"
#include "app/win32/FrameLeaving.h"
#include "app/win32/FrameParts.h"
#include "app/win32/MenuCommands.h"
#include "base/Heap.h"
#include "viewbase/ViewHost.h"

// The main window, one per process. It routes: messages and what views report go to its parts.
class MainFrame final : public HeapObject, public ViewHost {
public:
    // Both outlive the frame.
    MainFrame(SettingsStore& store, RecoveryServices& recovery);
    ~MainFrame();
    MainFrame(const MainFrame&) = delete;
    MainFrame& operator=(const MainFrame&) = delete;

    // Registers the window classes of the frame and its panes, for as long as the frame lives; then creates and shows
    // the window.
    [[nodiscard]] bool Create(HINSTANCE instance);
    HWND Window() const { return parts.window; }
    // For the command line, and whoever else gives commands.
    CommandContext& Commands() { return commands; }
    // Offers what a crashed editor has left. Starts the journal timer, so that a journal that a recovered document
    // could not get is retried without an edit.
    void OfferRecovery() {
        ::OfferRecovery(parts.recovery.folder, parts.messages, parts.opener);
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
    void BeginLongOperation() override { ++parts.longOperations; }
    void EndLongOperation() override { --parts.longOperations; }
    bool UseOle() override { return parts.ole.Use(); }

private:
    static constexpr UINT_PTR JournalTimer = 1; // the poll timers are known by addresses
    static constexpr UINT JournalPeriod = 1000; // milliseconds

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
    void OnTimer(WPARAM number);

    bool RegisterClasses(HINSTANCE instance);

    WindowClass windowClass; // before the parts, which take the panes' windows along
    FrameCommands commands{parts};
    FrameLeaving leaving{parts};
    FrameParts parts;
    MenuCommands menu{parts};
    WindowTimer journalTimer;
};

// The process-wide frame; null before and after its life.
extern MainFrame* mainFrame;
