#include "viewbase/LongOperation.h"

#include "base/TextFormat.h"
#include "base/WString.h"
#include "viewbase/EditorSurface.h"
#include "viewbase/FindState.h"
#include "viewbase/HostCalls.h"

LongOperation::LongOperation(EditorSurface& window) : surface(window), host(window.Host()), started(window.Ticks()) {
    findState.cancelled = false;
    if (host) host->BeginLongOperation();
}

LongOperation::~LongOperation() {
    if (host) host->EndLongOperation();
    if (!shown) return;
    surface.SetWaitCursor(false);
    HostCalls::ShowStatus(surface, nullptr);
}

bool LongOperation::Continue(uint64_t done, uint64_t total) {
    constexpr uint64_t ShowAfter = 500; // milliseconds
    if (surface.Ticks() - started < ShowAfter) return true;
    if (!shown) surface.SetWaitCursor(true);
    shown = true;
    const auto percent = static_cast<uint32_t>(total ? done * 100 / total : 0);
    WString message;
    if (percent != shownPercent && Text::AppendFormat(message, u"Searching: %u %%", percent))
        HostCalls::ShowStatus(surface, message.Text());
    shownPercent = percent;
    findState.cancelled = surface.TakeEscape();
    return !findState.cancelled;
}
