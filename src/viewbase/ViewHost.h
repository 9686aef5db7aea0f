#pragma once

#include "base/Types.h"

class Document;
class View;

// How a view talks to the frame that holds it. The order of the operations is fixed.
class ViewHost {
public:
    // The view received the keyboard focus.
    virtual void ViewActivated(View* view) = 0;
    // Status field 0 (messages) to 4; a null text clears the field.
    virtual void SetStatusText(uint32_t field, const Char* text) = 0;
    // `line` is 0-based, None32 for none.
    virtual bool OpenFileAtLine(const Char* path, uint32_t line) = 0;
    // The document's modified state or name may have changed.
    virtual void DocumentChanged(Document* document) = 0;
    // The document's running state changed; unless `running`, files are checked for changes by others.
    virtual void CheckChangedOnDisk(Document* document, bool running) = 0;
    // A message box with the caption "Orvane"; `style` and the answer are the system's MB_ and ID values.
    virtual int ShowMessage(NativeWindow owner, const Char* text, uint32_t style) = 0;
    virtual uint32_t GetMacroState() = 0; // MacroState
    virtual void StopMacroPlayback() = 0;
    // Settings changed: every view recomputes its layout and repaints.
    virtual void ApplySettings(uint32_t flag) = 0;

protected:
    ~ViewHost() = default;
};

namespace MacroState {
constexpr uint32_t Idle = 0;
constexpr uint32_t Recording = 1;
constexpr uint32_t Playing = 2;
} // namespace MacroState

// Status fields of SetStatusText.
namespace StatusField {
constexpr uint32_t Message = 0;
constexpr uint32_t Line = 1;
constexpr uint32_t Column = 2;
constexpr uint32_t Overwrite = 3;
constexpr uint32_t LineEnding = 4;
} // namespace StatusField
