#include "app/OpenFiles.h"

#include "app/CommandContext.h"
#include "base/Path.h"
#include "base/Platform.h"
#include "base/Text.h"
#include "base/TextFormat.h"

namespace {

// What is done about a path that nothing matches.
enum class Missing { Ask, TryFolder, TryFile };

struct Opening {
    CommandContext& frame;
    WString directory; // of every match
    uint32_t line;
    bool binary;
};

bool Open(const Opening& opening, const Char* name, bool isNew) {
    WString path;
    if (!path.Assign(opening.directory) || !Path::Join(path, name)) return false;
    return opening.binary ? opening.frame.OpenBinary(path.Text())
                          : opening.frame.OpenText(path.Text(), opening.line, isNew);
}

bool OpenNew(const Opening& opening, const Char* path) {
    WString question;
    if (!Text::AppendFormat(question, u"Create file %s?", path)) return false;
    if (opening.frame.AskUser(question.Text(), MessageKind::YesNo) != Answer::Yes) return false;
    // Another program may have made it while the question was open; it must not be taken for an empty one.
    const bool isNew = Platform::EntryKind(path) == Platform::Entry::Missing;
    return Open(opening, Path::FileName(path), isNew);
}

// Only in a name: the folders before it may begin with "\\?\".
bool HasWildcard(const Char* path) {
    const Char* at = Path::FileName(path);
    while (*at && *at != u'*' && *at != u'?') ++at;
    return *at != 0;
}

// A directory that is named itself fails like any path that cannot be read.
bool OpenMatches(const Opening& opening, Platform::FileSearch& search, bool skipDirectories) {
    bool all = true;
    opening.frame.BeginBatch();
    do {
        if (!skipDirectories || !search.IsDirectory()) all = Open(opening, search.Name(), false) && all;
    } while (search.Next());
    opening.frame.EndBatch();
    return all;
}

bool OpenMissing(const Opening& opening, const WString& path, Missing missing) {
    if (missing == Missing::Ask) return OpenNew(opening, path.Text());
    // Where the name has a directory that one is tried, and fails like any path that cannot be read.
    const bool tryFolder = missing == Missing::TryFolder && !opening.directory.IsEmpty();
    return Open(opening, tryFolder ? u"" : Path::FileName(path.Text()), false);
}

bool OpenArgument(CommandContext& frame, const Char* path, uint32_t line, Missing missing, bool binary) {
    WString plain;
    if (!plain.Assign(path)) return false;
    plain.StripQuotes();
    if (plain.IsEmpty()) return false;
    plain.ReplaceAll(u'/', u'\\');

    Opening opening{frame, {}, line, binary};
    if (!opening.directory.Assign(plain)) return false;
    Path::RemoveLastComponent(opening.directory);
    Platform::FileSearch search;
    if (search.First(plain.Text())) return OpenMatches(opening, search, HasWildcard(plain.Text()));
    return OpenMissing(opening, plain, missing);
}

} // namespace

bool OpenFileArgument(CommandContext& frame, const Char* path, uint32_t line, bool askToCreate, bool binary) {
    return OpenArgument(frame, path, line, askToCreate ? Missing::Ask : Missing::TryFolder, binary);
}

bool OpenBinaryArgument(CommandContext& frame, const Char* path) {
    return OpenArgument(frame, path, NoLine, Missing::TryFile, true);
}
