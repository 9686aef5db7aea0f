#include "viewbase/MouseWheel.h"

#include "base/TextFormat.h"
#include "base/WString.h"
#include "settings/Settings.h"
#include "viewbase/ViewHost.h"

namespace {

// Makes the font of all views one point larger or smaller (at least 1) and shows the size.
void ChangeFontSize(ViewHost* host, bool larger) {
    uint32_t size = settings.FontSize;
    if (larger && size < UINT32_MAX) {
        ++size;
    } else if (!larger && size > 1) {
        --size;
    }
    SetFontSize(size);
    if (!host) return;
    WString message;
    if (Text::AppendFormat(message, u"Font Size: %u", size)) host->SetStatusText(StatusField::Message, message.Text());
    host->ApplySettings(SettingsEffect::Layout);
}

} // namespace

int64_t MouseWheel::Turn(const WheelTurn& turn, ViewHost* host) {
    const int64_t notches = -TakeNotches(turn.delta);
    if (notches == 0) return 0;
    // Larger when it is turned towards the user: docs/oddities.md.
    if (turn.ctrl) {
        ChangeFontSize(host, notches > 0);
        return 0;
    }
    return turn.linesPerNotch > 0 ? notches * turn.linesPerNotch : 0;
}

int64_t MouseWheel::TakeNotches(int32_t delta) {
    constexpr int64_t Notch = 120;
    const int64_t turned = int64_t{remainder} + delta;
    remainder = static_cast<int32_t>(turned % Notch);
    return turned / Notch;
}
