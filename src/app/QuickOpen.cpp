#include "app/QuickOpen.h"

#include "base/Platform.h"
#include "settings/Settings.h"

namespace {

bool IsOpening(Char c) { return c == u'"' || c == u'<'; }

bool IsClosing(Char c) { return c == u'"' || c == u'>' || c == u'\n'; }

} // namespace

bool FileNameAtCaret(const Char* text, uint32_t length, uint32_t caret, WString& name) {
    uint32_t start = caret < length ? caret : length;
    // At the closing quote at the end of a line, the name before it is meant.
    if (start > 0 && start + 1 < length && text[start] == u'"' && text[start + 1] == u'\n') --start;
    // The character under the caret counts, so the search begins after it.
    if (start < length) ++start;
    while (start > 0 && !IsOpening(text[start - 1])) --start;
    uint32_t end = start;
    while (end < length && !IsClosing(text[end])) ++end;
    return name.Assign(text + start, end - start);
}

bool FindAlongQuickOpenPath(const Char* name, WString& found) {
    if (*name == 0) return false;
    WString path;
    if (!Platform::ExpandEnvironment(settings.QuickOpenPath.OrEmpty(), path)) return false;
    return Platform::SearchAlong(path.Text(), name, found);
}
