#include "base/Path.h"

#include "base/Text.h"
#include "base/WString.h"

namespace {

bool IsDrive(const Char* path) { return Text::IsAsciiLetter(path[0]) && path[1] == u':'; }

bool StartsShare(const Char* path) { return path[0] == u'\\' && path[1] == u'\\'; }

// "\\?\" or "\\.\".
bool StartsDevice(const Char* path) {
    return StartsShare(path) && (path[2] == u'?' || path[2] == u'.') && path[3] == u'\\';
}

// In letters of either case.
bool StartsWith(const Char* path, const Char* expected) {
    for (; *expected; ++expected, ++path)
        if (Text::FoldCase(*path) != Text::FoldCase(*expected)) return false;
    return true;
}

bool StartsUnc(const Char* path) { return StartsWith(path, u"UNC\\"); }

// Up to the backslash of that number, or the end.
uint32_t LengthOfParts(const Char* path, uint32_t parts) {
    uint32_t length = 0;
    for (; path[length]; ++length)
        if (path[length] == u'\\' && --parts == 0) break;
    return length;
}

} // namespace

Path::Volume Path::VolumeOf(const Char* path) {
    const bool isDevice = StartsDevice(path);
    if (isDevice) path += 4;
    if (IsDrive(path)) return {path, 2, false};
    const bool isShare = isDevice ? StartsUnc(path) : StartsShare(path);
    if (isShare) path += isDevice ? 4 : 2;
    const uint32_t parts = isShare ? 2 : 1;
    return {path, isShare || isDevice ? LengthOfParts(path, parts) : 0, isShare};
}

bool Path::IsDevice(const Char* path) {
    if (!StartsDevice(path)) return false;
    path += 4;
    if (StartsUnc(path)) return false;
    const bool isVolume = IsDrive(path) || StartsWith(path, u"Volume{");
    return !isVolume || path[LengthOfParts(path, 1)] == 0;
}

const Char* Path::FileName(const Char* path) {
    const Char* name = path;
    if (IsDrive(path)) name = path + 2;
    for (const Char* at = name; *at; ++at)
        if (*at == u'\\' || *at == u'/') name = at + 1;
    return name;
}

const Char* Path::Extension(const Char* path) {
    const Char* extension = nullptr;
    const Char* at = FileName(path);
    for (; *at; ++at)
        if (*at == u'.') extension = at;
    return extension ? extension : at;
}

void Path::RemoveLastComponent(WString& path) {
    const Char* const text = path.Text();
    // Nothing of a root is ever cut: "C:\", "C:", "\" or the "\\" of a share.
    uint32_t root = 0;
    if (IsDrive(text)) root = 2;
    if (text[root] == u'\\') ++root;
    if (root == 1 && text[1] == u'\\') root = 2;

    uint32_t end = root;
    for (uint32_t i = root; i < path.Length(); ++i)
        if (text[i] == u'\\') end = i;
    path.Truncate(end);
}

bool Path::Join(WString& path, const Char* name) {
    const uint32_t before = path.Length();
    const bool needsSeparator = before != 0 && path[before - 1] != u'\\';
    if ((!needsSeparator || path.AppendChar(u'\\')) && path.Append(name)) return true;
    path.Truncate(before);
    return false;
}
