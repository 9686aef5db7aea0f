#include "base/Platform.h"

#include "base/Path.h"
#include "base/SystemClock.h"
#include "base/Text.h"
#include "base/posix/FileTimes.h"
#include "base/posix/NativeText.h"

#include <cerrno>
#include <climits>
#include <cstdlib>
#include <locale.h>
#include <time.h>
#include <unistd.h>
#include <utility>
#include <wctype.h>

namespace {

bool IsSeparator(Char c) { return c == u'\\' || c == u'/'; }

// "\", "\\" of a share, or "C:\". Nothing is under a drive here, but its paths are absolute all the same.
uint32_t RootLength(const Char* path) {
    if (IsSeparator(path[0])) return IsSeparator(path[1]) ? 2 : 1;
    return Text::IsAsciiLetter(path[0]) && path[1] == u':' && IsSeparator(path[2]) ? 3 : 0;
}

// Appends the components of `path` to `out`, which ends with its root or a component.
bool AppendComponents(WString& out, const Char* path) {
    while (*path) {
        const Char* end = path;
        while (*end && !IsSeparator(*end)) ++end;
        const uint32_t length = static_cast<uint32_t>(end - path);
        const bool isParent = length == 2 && path[0] == u'.' && path[1] == u'.';
        const bool isHere = length == 1 && path[0] == u'.';
        if (isParent)
            Path::RemoveLastComponent(out);
        else if (length && !isHere && !(Path::Join(out, u"") && out.Append(path, length)))
            return false;
        path = *end ? end + 1 : end;
    }
    return true;
}

// Looks for `name` in the directory list[0, length).
bool FindIn(const Char* list, uint32_t length, const Char* name, WString& out) {
    WString candidate;
    if (!candidate.Assign(list, length) || !Path::Join(candidate, name)) return false;
    const Platform::Entry kind = Platform::EntryKind(candidate.Text());
    const bool isThere = kind == Platform::Entry::File || kind == Platform::Entry::Directory;
    return isThere && Platform::FullPath(candidate.Text(), out);
}

// False only when memory runs out; `out` is then, and without such a variable, as it was.
bool ReadVariable(const Char* name, bool& isKnown, WString& out) {
    const NativeText native(name, NativeText::Kind::Plain);
    if (!native.Text()) return false;
    const char* const value = std::getenv(native.Text());
    isKnown = value != nullptr;
    return !isKnown || FromNativeText(value, NativeText::Kind::Plain, out);
}

} // namespace

bool Platform::FullPath(const Char* path, WString& out) {
    WString given;
    WString full;
    if (!given.Assign(path)) return false;
    given.StripQuotes();
    if (given.IsEmpty()) return false;
    const uint32_t root = RootLength(given.Text());
    const bool hasBase = root ? full.Assign(given.Text(), root) : CurrentDirectory(full);
    if (!hasBase) return false;
    full.ReplaceAll(u'/', u'\\');
    if (!AppendComponents(full, given.Text() + root)) return false;
    if (IsSeparator(given[given.Length() - 1]) && !Path::Join(full, u"")) return false;
    out = std::move(full);
    return true;
}

bool Platform::CurrentDirectory(WString& out) {
    char path[PATH_MAX];
    return getcwd(path, sizeof path) && FromNativeText(path, NativeText::Kind::Path, out);
}

bool Platform::SetCurrentDirectory(const Char* path) {
    const NativeText native(path, NativeText::Kind::Path);
    return native.Text() && chdir(native.Text()) == 0;
}

bool Platform::SearchAlong(const Char* list, const Char* name, WString& out) {
    if (!list) list = u".";
    if (RootLength(name)) list = u"";
    for (;;) {
        uint32_t length = 0;
        while (list[length] && list[length] != u';') ++length;
        if (FindIn(list, length, name, out)) return true;
        if (list[length] == 0) return false;
        list += length + 1;
    }
}

bool Platform::EnvironmentVariable(const Char* name, WString& out) {
    bool isKnown = false;
    return ReadVariable(name, isKnown, out) && isKnown;
}

bool Platform::ExpandEnvironment(const Char* text, WString& out) {
    WString expanded;
    WString name;
    WString value;
    while (*text) {
        const Char* end = text + 1;
        while (*end && *end != u'%') ++end;
        bool isKnown = false;
        if (*text == u'%' && *end == u'%') {
            if (!name.Assign(text + 1, end - text - 1) || !ReadVariable(name.Text(), isKnown, value)) return false;
            ++end; // after the closing sign, also of a name that nobody knows
        }
        if (!(isKnown ? expanded.Append(value) : expanded.Append(text, end - text))) return false;
        text = end;
    }
    out = std::move(expanded);
    return true;
}

Platform::FileTime Platform::Now() {
    timespec moment{};
    clock_gettime(CLOCK_REALTIME, &moment);
    return ToFileTime(moment);
}

uint64_t SystemClock::Ticks() {
    timespec moment{};
    clock_gettime(CLOCK_MONOTONIC, &moment);
    return static_cast<uint64_t>(moment.tv_sec) * 1000 + static_cast<uint64_t>(moment.tv_nsec) / 1'000'000;
}

void SystemClock::Wait(uint32_t milliseconds) {
    timespec left{};
    left.tv_sec = milliseconds / 1000;
    left.tv_nsec = static_cast<long>(milliseconds % 1000) * 1'000'000;
    while (nanosleep(&left, &left) != 0 && errno == EINTR) {
    }
}

int Platform::CompareNames(const Char* left, const Char* right) {
    // The plain locale knows the letters of ASCII only.
    static const locale_t everyLetter = newlocale(LC_CTYPE_MASK, "C.UTF-8", nullptr);
    for (;; ++left, ++right) {
        const wint_t a = towlower_l(*left, everyLetter);
        const wint_t b = towlower_l(*right, everyLetter);
        if (a != b) return a < b ? -1 : 1;
        if (*left == 0) return 0;
    }
}

bool Platform::ClipboardHasText() { return false; }
