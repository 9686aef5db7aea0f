#include "base/Path.h"
#include "base/Platform.h"
#include "base/Text.h"
#include "base/posix/NativeText.h"

#include <dirent.h>
#include <sys/stat.h>

namespace {

struct SearchState : HeapObject {
    DIR* directory = nullptr;
    WString pattern; // of the file names

    ~SearchState() {
        if (directory) closedir(directory);
    }
};

// Greedy match that returns to the last star on a mismatch.
bool MatchesPattern(const Char* name, const Char* pattern) {
    const Char* star = nullptr;
    const Char* retry = name;
    while (*name) {
        if (*pattern == u'*') {
            star = pattern++;
            retry = name;
        } else if (*pattern == u'?' || (*pattern && Text::FoldCase(*pattern) == Text::FoldCase(*name))) {
            ++pattern;
            ++name;
        } else if (star) {
            pattern = star + 1;
            name = ++retry;
        } else {
            return false;
        }
    }
    while (*pattern == u'*') ++pattern;
    return *pattern == 0;
}

bool IsDirectoryEntry(DIR* directory, const dirent& entry) {
    struct stat status;
    return fstatat(dirfd(directory), entry.d_name, &status, 0) == 0 && S_ISDIR(status.st_mode);
}

} // namespace

bool Platform::FileSearch::First(const Char* path) {
    Close();
    const Char* const pattern = Path::FileName(path);
    if (*pattern == 0) return false;
    WString folder;
    if (!folder.Assign(path, pattern - path) || (folder.IsEmpty() && !folder.Assign(u"."))) return false;

    auto* search = new SearchState;
    state = search;
    const NativeText native(folder.Text(), NativeText::Kind::Path);
    if (!search || !native.Text() || !search->pattern.Assign(Text::Equal(pattern, u"*.*") ? u"*" : pattern)) {
        Close();
        return false;
    }
    search->directory = opendir(native.Text());
    return Next();
}

bool Platform::FileSearch::Next() {
    auto* const search = static_cast<SearchState*>(state);
    while (search && search->directory) {
        const dirent* const entry = readdir(search->directory);
        if (!entry || !FromNativeText(entry->d_name, NativeText::Kind::Plain, name)) break;
        if (!MatchesPattern(name.Text(), search->pattern.Text())) continue;
        isDirectory = IsDirectoryEntry(search->directory, *entry);
        return true;
    }
    Close();
    return false;
}

void Platform::FileSearch::Close() {
    delete static_cast<SearchState*>(state);
    state = nullptr;
}
