#include "app/CommandCompletion.h"

#include "app/CommandLanguage.h"
#include "app/CommandTable.h"
#include "base/Path.h"
#include "base/Platform.h"
#include "base/Text.h"
#include "settings/AdditionalSettings.h"
#include "settings/Settings.h"

#include <algorithm>
#include <utility>

namespace {

bool ComesBefore(const Char* left, const Char* right) {
    const int order = Platform::CompareNames(left, right);
    return order != 0 ? order < 0 : Text::Compare(left, right) < 0;
}

bool HasBlank(const Char* name) {
    while (*name && !Text::IsBlank(*name)) ++name;
    return *name != 0;
}

// A program takes a name with blanks in quotes only; the commands take the rest of the line as it is.
bool AppendName(WString& text, const Char* name, bool forProgram) {
    if (!forProgram || !HasBlank(name)) return text.Append(name);
    return text.AppendChar(u'"') && text.Append(name) && text.AppendChar(u'"');
}

bool AppendWithoutQuotes(WString& text, const Char* name) {
    for (; *name; ++name)
        if (*name != u'"' && !text.AppendChar(*name)) return false;
    return true;
}

bool IsSelfOrParent(const Char* name) { return Text::Equal(name, u".") || Text::Equal(name, u".."); }

} // namespace

const Char* CommandCompletion::Step(const Char* text, bool forward) {
    if (running) {
        const size_t count = candidates.Count();
        current = (current + (forward ? 1 : count - 1)) % count;
    } else {
        if (!Collect(text) || candidates.IsEmpty()) {
            EndRun();
            return nullptr;
        }
        std::sort(candidates.Items(), candidates.Items() + candidates.Count(), ComesBefore);
        current = forward ? 0 : candidates.Count() - 1;
        running = true;
    }
    // `shown` may be the text that the window showed until now, so the new text is built apart.
    WString built;
    if (!built.Assign(prefix) || !AppendName(built, candidates[current], forProgram)) return nullptr;
    shown = std::move(built);
    return shown.Text();
}

void CommandCompletion::EndRun() {
    for (size_t i = 0; i < candidates.Count(); ++i) Heap::Free(candidates[i]);
    candidates.Release();
    prefix.Release();
    running = false;
}

bool CommandCompletion::Collect(const Char* text) {
    WString word;
    const Char* argument = nullptr;
    if (!SplitCommand(text, word, argument)) return false;
    const CommandRow* const row = FindCommand(word.Text());
    forProgram = !row;
    if (!row && *argument == 0) return CollectFiles(word.Text(), false);
    if (!prefix.Assign(word) || !prefix.AppendChar(u' ')) return false;
    return CollectKind(row ? row->completion : CompletionKind::Files, argument);
}

bool CommandCompletion::CollectKind(CompletionKind kind, const Char* argument) {
    if (kind == CompletionKind::Nothing) return true;
    if (kind == CompletionKind::SettingKeys) return CollectSettings(argument);
    return CollectFiles(argument, kind == CompletionKind::Directories);
}

bool CommandCompletion::CollectSettings(const Char* argument) {
    for (uint32_t i = 0; i < generalSettings.count; ++i)
        if (!AddSetting(generalSettings.rows[i].key, argument)) return false;
    for (uint32_t i = 0; const Char* const key = AdditionalSettingKey(i); ++i)
        if (!AddSetting(key, argument)) return false;
    return true;
}

bool CommandCompletion::AddSetting(const Char* key, const Char* argument) {
    const uint32_t typed = Text::Length(argument);
    if (Text::Length(key) < typed || !Text::EqualCountNoCase(key, argument, typed)) return true;
    return AddCandidate(u"", key);
}

// Directories are offered among the files too, since they lead to files.
bool CommandCompletion::CollectFiles(const Char* argument, bool directoriesOnly) {
    WString pattern;
    if (!AppendWithoutQuotes(pattern, argument)) return false;
    pattern.ReplaceAll(u'/', u'\\');
    WString directory;
    if (!directory.Assign(pattern.Text(), Path::FileName(pattern.Text()) - pattern.Text())) return false;
    if (!pattern.AppendChar(u'*')) return false;

    Platform::FileSearch search;
    for (bool found = search.First(pattern.Text()); found; found = search.Next()) {
        if (IsSelfOrParent(search.Name()) || (directoriesOnly && !search.IsDirectory())) continue;
        if (!AddCandidate(directory.Text(), search.Name())) return false;
    }
    return true;
}

bool CommandCompletion::AddCandidate(const Char* directory, const Char* name) {
    const uint32_t front = Text::Length(directory);
    const uint32_t count = Text::Length(name);
    auto* const candidate = Heap::AllocateArray<Char>(size_t{front} + count + 1);
    if (!candidate) return false;
    std::copy_n(directory, front, candidate);
    std::copy_n(name, count, candidate + front);
    if (candidates.Append(candidate)) return true;
    Heap::Free(candidate);
    return false;
}
