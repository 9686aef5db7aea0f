#pragma once

#include "document/SettingsEffect.h"
#include "document/TextPosition.h"
#include "viewbase/MessageKind.h"

class Document;
class View;

// The fields of the status bar.
enum class StatusField : uint32_t { Message = 0, Line = 1, Column = 2, Overwrite = 3, LineEnding = 4 };

enum class MacroState : uint32_t { Idle = 0, Recording = 1, Playing = 2 };

// How a view talks to the frame that holds it. The order of the operations is fixed.
class ViewHost {
public:
    // The view received the keyboard focus.
    virtual void ViewActivated(View* view) = 0;
    // A null text clears the field.
    virtual void SetStatusText(StatusField field, const Char* text) = 0;
    // `line` is 0-based, NoLine for none.
    virtual bool OpenFileAtLine(const Char* path, uint32_t line) = 0;
    // The document's modified state or name may have changed. Views call this for their documents only, as they do the
    // next one: see docs/oddities.md.
    virtual void DocumentChanged(Document* document) = 0;
    // The document's running state changed; unless `running`, files are checked for changes by others.
    virtual void CheckChangedOnDisk(Document* document, bool running) = 0;
    // A message box in front of `owner`, or of the window that is active when that is null.
    virtual Answer ShowMessage(NativeWindow owner, const Char* text, MessageKind kind) = 0;
    virtual MacroState GetMacroState() = 0;
    virtual void StopMacroPlayback() = 0;
    // Settings changed: every view recomputes its layout and repaints.
    virtual void ApplySettings(SettingsEffect kind) = 0;
    // A search or replacement that may take long begins, and ends: until then nothing that it works with may go away.
    // Several may run, one inside the other.
    virtual void BeginLongOperation() = 0;
    virtual void EndLongOperation() = 0;
    // Has the frame begin OLE, without which no client may get an object of a view. False when it is not to be had.
    virtual bool UseOle() = 0;

protected:
    ~ViewHost() = default;
};
