#include "view/LongOperation.h"

#include "base/Text.h"
#include "view/TextEditor.h"

LongOperation::LongOperation(TextEditor& textEditor) : editor(textEditor), started(editor.Surface().Ticks()) {}

LongOperation::~LongOperation() {
    if (!shown) return;
    editor.Surface().SetWaitCursor(false);
    editor.ShowStatusMessage(nullptr);
}

bool LongOperation::Continue(uint64_t done, uint64_t total) {
    constexpr uint64_t Patience = 500; // milliseconds
    EditorSurface& surface = editor.Surface();
    if (surface.Ticks() - started < Patience) return true;
    if (!shown) surface.SetWaitCursor(true);
    shown = true;
    WString message;
    const auto percent = static_cast<uint32_t>(total ? done * 100 / total : 0);
    if (Text::AppendFormat(message, u"Searching: %u %%", percent)) editor.ShowStatusMessage(message.Text());
    brokenOff = surface.TakeEscape();
    return !brokenOff;
}
