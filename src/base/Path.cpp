#include "base/Path.h"

#include "base/Text.h"
#include "base/WString.h"

const Char* Path::FileName(const Char* path) {
    const Char* name = path;
    if (Text::IsAsciiLetter(path[0]) && path[1] == u':') name = path + 2;
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
    if (Text::IsAsciiLetter(text[0]) && text[1] == u':') root = 2;
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
