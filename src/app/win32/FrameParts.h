#pragma once

#include "app/ActiveText.h"
#include "app/CommandContext.h"
#include "app/DocumentCloser.h"
#include "app/DocumentDisplay.h"
#include "app/DocumentList.h"
#include "app/DocumentOpener.h"
#include "app/DocumentSaver.h"
#include "app/LeaveRequests.h"
#include "app/Macros.h"
#include "app/NewDocument.h"
#include "app/OpenFailures.h"
#include "app/OutputDocuments.h"
#include "app/win32/CommandWindow.h"
#include "app/win32/FileDialogs.h"
#include "app/win32/FrameKeys.h"
#include "app/win32/FrameMessages.h"
#include "app/win32/FrameScreen.h"
#include "app/win32/FrameSettings.h"
#include "app/win32/MacroWindows.h"
#include "app/win32/PaneWindows.h"
#include "app/win32/SettingsStore.h"
#include "app/win32/SystemToolStarter.h"
#include "base/win32/Ole.h"
#include "binary/win32/HexView.h"
#include "document/win32/WindowPollTimer.h"
#include "view/win32/TextView.h"

// What the frame consists of, and who knows whom. Each part refers only to those before it and to the
// interfaces of the frame that are passed in.
struct FrameParts {
    FrameParts(CommandContext& commands, ViewHost& host, LeavingFrame& leavingFrame, SettingsStore& loaded,
               RecoveryServices& ofProgram)
        : context(commands), store(loaded), recovery(ofProgram), panes(host), commandWindow(commands, panes),
          leaving(commands, leavingFrame) {}

    // The window was made: makes the others inside it. False when the system refuses.
    bool Create(HWND frame, HINSTANCE instance);

    Ole ole; // before what it outlives, which is all that is of COM
    HWND window = nullptr;
    CommandContext& context;
    SettingsStore& store;
    RecoveryServices& recovery;
    WindowPollTimer pollTimer;
    DocumentServices services{{recovery, TextView::Create, &pollTimer, {}},
                              {recovery, HexView::Create}}; // before what it outlives
    DocumentList documents;
    Macros macros;

    PaneWindows panes;
    CommandWindow commandWindow;
    FrameScreen screen{panes, commandWindow, macros, context.commands};
    ScreenBatch batch{screen};
    FrameMessages messages{batch};
    FileDialogs fileDialogs{ole};

    DocumentDisplay display{documents, panes, batch};
    ActiveText activeText{panes};
    OutputDocuments outputs{services.text, documents, display, panes};
    OpenFailures openFailures{batch, messages};
    DocumentOpener opener{services, documents, display, panes, openFailures};
    DocumentSaver saver{documents, display, fileDialogs, messages, batch};
    DocumentCloser closer{documents, display, panes, outputs, batch};

    SystemToolStarter toolStarter;
    ToolRunner tools{context, outputs, toolStarter};
    FrameKeys keys{macros, documents, display, panes, screen};
    MacroWindows macroWindows{documents, panes, keys};
    MacroPlayer player{macros, macroWindows};
    FrameSettings settings{store, documents, commandWindow, batch};
    uint32_t longOperations = 0; // that run
    uint32_t optionsPage = 0;    // of the Options dialog, shown again the next time
    LeaveRequests leaving;
};
