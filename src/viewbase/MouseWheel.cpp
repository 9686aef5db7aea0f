#include "viewbase/MouseWheel.h"

#include "base/Text.h"
#include "base/WString.h"
#include "settings/Settings.h"
#include "viewbase/ViewHost.h"

void ChangeFontSize(ViewHost* host, bool larger) {
    uint32_t size = settings.FontSize;
    if (larger && size < None32) {
        ++size;
    } else if (!larger && size > 1) {
        --size;
    }
    SetFontSize(size);
    if (!host) return;
    WString message;
    if (Text::AppendFormat(message, u"Font Size: %u", size)) host->SetStatusText(StatusField::Message, message.Text());
    host->ApplySettings(1);
}
