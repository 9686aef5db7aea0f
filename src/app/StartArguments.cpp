#include "app/StartArguments.h"

#include "app/CommandContext.h"
#include "app/DocumentList.h"
#include "app/OpenFiles.h"
#include "base/Path.h"
#include "base/Platform.h"
#include "base/Text.h"

namespace {

struct Parser {
    CommandContext& frame;
    const Char* position;
    uint32_t pendingLine = NoLine;
    bool inSubdirectories = false;
    bool binary = false;
};

void TakeLine(Parser& parser) {
    // An empty token is used up as well and reads as 0, and 0 - 1 is NoLine.
    WString number;
    NextArgument(parser.position, number);
    parser.pendingLine = Text::ParseDecimal(number.Text()) - 1;
}

void TakeScript(Parser& parser) {
    WString file;
    if (NextArgument(parser.position, file)) parser.frame.RunScript(file.Text());
}

struct Option {
    Char letter;
    void (*take)(Parser& parser);
};

constexpr Option options[] = {
    {u'l', TakeLine},
    {u's', [](Parser& parser) { parser.inSubdirectories = true; }},
    {u'b', [](Parser& parser) { parser.binary = true; }},
    {u'r', TakeScript},
};

void TakeOption(Parser& parser, Char letter) {
    for (const Option& option : options)
        if (option.letter == Text::FoldCase(letter)) option.take(parser);
}

// Only the directories directly below the current one are searched, not that one itself.
// Odd on purpose: docs/oddities.md.
void OpenInSubdirectories(const Parser& parser, const Char* pattern) {
    Platform::FileSearch search;
    for (bool found = search.First(u"*.*"); found; found = search.Next()) {
        if (!search.IsDirectory() || search.Name()[0] == u'.') continue;
        WString path;
        if (path.Assign(search.Name()) && Path::Join(path, pattern))
            OpenFileArgument(parser.frame, path.Text(), NoLine, false, parser.binary);
    }
}

void TakeFile(Parser& parser, const Char* file) {
    if (parser.inSubdirectories)
        OpenInSubdirectories(parser, file);
    else
        OpenFileArgument(parser.frame, file, parser.pendingLine, true, parser.binary);
    parser.pendingLine = NoLine;
}

} // namespace

// Odd on purpose: docs/oddities.md.
bool NextArgument(const Char*& position, WString& token) {
    token.Clear();
    while (Text::IsBlank(*position)) ++position;
    if (*position == u'"') {
        const Char* const start = ++position;
        while (*position && *position != u'"') ++position;
        if (!token.Append(start, position - start)) return false;
        if (*position == 0) return !token.IsEmpty();
        ++position;
    }
    const Char* const start = position;
    while (*position && !Text::IsBlank(*position)) ++position;
    return token.Append(start, position - start) && !token.IsEmpty();
}

bool ParseCommandLine(CommandContext& frame, const Char* commandLine) {
    Parser parser{frame, commandLine};
    WString token;
    NextArgument(parser.position, token); // the program's own name
    frame.BeginBatch();
    while (NextArgument(parser.position, token)) {
        if (token[0] == u'-' || token[0] == u'/')
            TakeOption(parser, token[1]);
        else
            TakeFile(parser, token.Text());
    }
    frame.EndBatch();
    if (frame.Documents().IsEmpty()) frame.NewDocument();
    frame.LayOut();
    return true;
}
