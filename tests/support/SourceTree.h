#pragma once

#include <algorithm>
#include <filesystem>
#include <string>

// The tests' own source tree, for those that read what ships with the program. Only programs built with
// ORVANE_SOURCE know where it is.
namespace source {

inline std::filesystem::path Folder() { return ORVANE_SOURCE; }

// A path as the program writes it.
inline std::u16string ProgramPath(const std::filesystem::path& path) {
    std::u16string text = path.u16string();
    std::replace(text.begin(), text.end(), u'/', u'\\');
    return text;
}

} // namespace source
