#include "base/win32/SystemText.h"

#include "base/Platform.h"
#include "base/Text.h"

namespace {

// A directory has to leave room for a file name of 8.3 characters.
constexpr uint32_t LongestPlainPath = MAX_PATH - 12;

bool Extend(const Char* path, WString& out) {
    WString full;
    if (!Platform::FullPath(path, full)) return false;
    const bool isShare = full[0] == u'\\' && full[1] == u'\\';
    const bool isExtended = isShare && (full[2] == u'?' || full[2] == u'.');
    if (isExtended) return out.Assign(full);
    return out.Assign(isShare ? u"\\\\?\\UNC" : u"\\\\?\\") && out.Append(full.Text() + (isShare ? 1 : 0));
}

} // namespace

SystemPath::SystemPath(const Char* path) {
    if (Text::Length(path) <= LongestPlainPath)
        text = Wide(path);
    else if (Extend(path, extended))
        text = Wide(extended.Text());
}
