#include "app/win32/Application.h"

#include "app/StartArguments.h"
#include "app/win32/CrashReport.h"
#include "app/win32/MainFrame.h"
#include "app/win32/ProcessSetup.h"
#include "app/win32/SettingsStore.h"
#include "base/Heap.h"
#include "base/RecoveryServices.h"
#include "resource.h"
#include "settings/win32/DrawingObjects.h"
#include "viewbase/FindState.h"
#include "viewbase/win32/ViewFont.h"

namespace {

void RunMessageLoop(MainFrame& frame, const SettingsStore& store, HACCEL accelerators) {
    MSG message;
    while (GetMessageW(&message, nullptr, 0, 0) > 0) {
        if (TranslateAcceleratorW(frame.Window(), accelerators, &message)) continue;
        // The table may be another one after each message.
        const HACCEL tools = store.ToolAccelerators();
        if (tools && TranslateAcceleratorW(frame.Window(), tools, &message)) continue;
        TranslateMessage(&message);
        if (!frame.PreDispatchKey(message)) DispatchMessageW(&message);
    }
}

bool StartFrame(MainFrame& frame, HINSTANCE instance) {
    INITCOMMONCONTROLSEX controls = {sizeof(controls),
                                     ICC_BAR_CLASSES | ICC_TREEVIEW_CLASSES | ICC_HOTKEY_CLASS | ICC_STANDARD_CLASSES};
    InitCommonControlsEx(&controls);
    return frame.Create(instance);
}

void RunFrame(HINSTANCE instance, const Char* commandLine, SettingsStore& store, RecoveryServices& recovery,
              HACCEL accelerators) {
    MainFrame* const frame = new MainFrame(store, recovery);
    if (!frame) return;
    if (StartFrame(*frame, instance) && ParseCommandLine(frame->Commands(), commandLine)) {
        frame->OfferRecovery();
        RunMessageLoop(*frame, store, accelerators);
    }
    delete frame;
}

// Everything that needs the heap.
void RunEditor(HINSTANCE instance, const Char* commandLine, HACCEL accelerators) {
    RecoveryServices recovery; // goes last: what is left then is for the next start
    CrashReport crashes(recovery.folder);
    ViewClass views;
    SettingsStore store(recovery.saver);
    recovery.journals.Keep();
    if (store.Load() && views.Register(instance)) {
        RunFrame(instance, commandLine, store, recovery, accelerators);
        ViewFont::Release();
        DrawingObjects::Release();
    }
    findState.Release();
    store.Free();
}

} // namespace

int Application::Run(HINSTANCE instance, const Char* commandLine) {
    SetUpProcess();
    const HACCEL accelerators = LoadAcceleratorsW(instance, MAKEINTRESOURCEW(IDR_ACCELERATORS));
    Heap::Start();
    RunEditor(instance, commandLine, accelerators);
    Heap::Stop();
    return 0;
}
