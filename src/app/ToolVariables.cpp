#include "app/ToolVariables.h"

#include "app/CommandContext.h"
#include "base/Path.h"
#include "base/Platform.h"
#include "base/Text.h"
#include "settings/ToolList.h"

#include <utility>

namespace {

// The path variables look at no more of a name than this, its terminator included.
constexpr uint32_t WorkBufferSize = 1050;

bool AssignWorkName(const CommandContext& frame, WString& name) {
    const Char* const full = frame.ActiveDocumentName();
    const uint32_t length = Text::Length(full);
    return name.Assign(full, length < WorkBufferSize ? length : WorkBufferSize - 1);
}

bool AppendPath(const CommandContext& frame, WString& out) { return out.Append(frame.ActiveDocumentName()); }

// Only a backslash ends a folder here: the name of an output document is a command, whose options may
// begin with slashes.
bool AppendFile(const CommandContext& frame, WString& out) {
    WString name;
    if (!AssignWorkName(frame, name)) return false;
    uint32_t start = name.Length();
    while (start > 0 && name[start - 1] != u'\\') --start;
    return out.Append(name.Text() + start);
}

bool AppendDirectory(const CommandContext& frame, WString& out) {
    WString name;
    if (!AssignWorkName(frame, name)) return false;
    Path::RemoveLastComponent(name);
    return out.Append(name);
}

bool AppendExtension(const CommandContext& frame, WString& out) {
    WString name;
    return AssignWorkName(frame, name) && out.Append(Path::Extension(name.Text()));
}

bool AppendWord(const CommandContext& frame, WString& out) { return frame.AppendWordAtCaret(out); }

// Odd on purpose: docs/oddities.md.
bool AppendSelection(const CommandContext& frame, WString& out) { return frame.AppendSelection(out); }

struct Variable {
    const Char* name;
    bool (*append)(const CommandContext& frame, WString& out);
};

constexpr Variable variables[] = {
    {u"%PATH%", AppendPath},     {u"%FILE%", AppendFile}, {u"%DIR%", AppendDirectory},
    {u"%EXT%", AppendExtension}, {u"%WORD%", AppendWord}, {u"%SEL%", AppendSelection},
};

bool BeginsWith(const Char* text, const Char* start) {
    while (*start && *text == *start) ++text, ++start;
    return *start == 0;
}

const Variable* VariableAt(const Char* text) {
    for (const Variable& variable : variables)
        if (BeginsWith(text, variable.name)) return &variable;
    return nullptr;
}

bool Expand(const CommandContext& frame, const Char* text, WString& out) {
    while (*text) {
        const Variable* const variable = *text == u'%' ? VariableAt(text) : nullptr;
        if (!variable) {
            if (!out.AppendChar(*text++)) return false;
            continue;
        }
        if (frame.ActiveDocumentName() && !variable->append(frame, out)) return false;
        text += Text::Length(variable->name);
    }
    return true;
}

} // namespace

bool ExpandToolVariables(const CommandContext& frame, const Char* text, WString& out) {
    const uint32_t before = out.Length();
    if (Expand(frame, text, out)) return true;
    out.Truncate(before);
    return false;
}

bool ExpandStartDirectory(const CommandContext& frame, const Char* text, WString& out) {
    WString directory;
    if (!ExpandToolVariables(frame, text, directory)) return false;
    if (directory.IsEmpty() && !Platform::CurrentDirectory(directory)) return false;
    out = std::move(directory);
    return true;
}

bool InterpreterRunsIn(const Char* directory) {
    WString full;
    return !Platform::FullPath(directory, full) || full[0] != u'\\' || full[1] != u'\\';
}

bool ToolCommandLine(const ToolRecord& tool, WString& out) {
    WString line;
    // The space is there even when the arguments are empty.
    if (!line.Assign(tool.command) || !line.AppendChar(u' ') || !line.Append(tool.lastArgs)) return false;
    out = std::move(line);
    return true;
}
