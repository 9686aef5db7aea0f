#include "app/win32/Application.h"

#include "app/StartArguments.h"
#include "app/win32/MainFrame.h"
#include "base/Heap.h"
#include "binary/win32/HexView.h"
#include "resource.h"
#include "settings/win32/DrawingObjects.h"
#include "view/win32/TextView.h"
#include "viewbase/FindState.h"
#include "viewbase/win32/ViewFont.h"

Application::Globals Application::globals;

namespace {

void RunMessageLoop(MainFrame& frame) {
    using Application::globals;
    MSG message;
    while (GetMessageW(&message, nullptr, 0, 0) > 0) {
        if (TranslateAcceleratorW(frame.Window(), globals.accelerators, &message)) continue;
        if (globals.toolAccelerators && TranslateAcceleratorW(frame.Window(), globals.toolAccelerators, &message))
            continue;
        TranslateMessage(&message);
        if (!frame.PreDispatchKey(message)) DispatchMessageW(&message);
    }
}

bool StartFrame(MainFrame& frame, HINSTANCE instance) {
    INITCOMMONCONTROLSEX controls = {sizeof(controls),
                                     ICC_BAR_CLASSES | ICC_TREEVIEW_CLASSES | ICC_HOTKEY_CLASS | ICC_STANDARD_CLASSES};
    InitCommonControlsEx(&controls);
    return MainFrame::RegisterClasses(instance) && frame.Create(instance);
}

void RunFrame(HINSTANCE instance) {
    MainFrame* frame = new MainFrame;
    if (!frame) return;
    if (StartFrame(*frame, instance) && ParseCommandLine(*frame, Application::globals.commandLine))
        RunMessageLoop(*frame);
    MainFrame::UnregisterClasses(instance);
    mainFrame = nullptr;
    delete frame;
}

} // namespace

int Application::Run(HINSTANCE instance, const Char* commandLine) {
    globals.instance = instance;
    globals.commandLine = commandLine;
    globals.accelerators = LoadAcceleratorsW(instance, MAKEINTRESOURCEW(IDR_ACCELERATORS));
    Heap::Start();
    DrawingObjects::Start();
    if (LoadSettingsFile() && ViewClass::Register(instance)) {
        SetTextViewFactory(TextView::Create);
        SetHexViewFactory(HexView::Create);
        RunFrame(instance);
        ViewFont::Release();
        DrawingObjects::Release();
        ViewClass::Unregister(instance);
    }
    findState.Release();
    FreeSettings();
    Heap::Stop();
    return 0;
}
