#include "support/Speaker.h"

std::u16string SpeakerScripts::Program() {
    std::u16string path = std::filesystem::path(ORVANE_SPEAKER).u16string();
    // Built on another system, whose files are all on drive Z where the tests run.
    constexpr bool IsWindows = std::filesystem::path::preferred_separator == '\\';
    if (!IsWindows) return path;
    for (char16_t& c : path)
        if (c == u'/') c = u'\\';
    return path[0] == u'\\' ? u"Z:" + path : path;
}
