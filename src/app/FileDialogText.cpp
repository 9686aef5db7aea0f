#include "app/FileDialogText.h"

#include "app/CommandContext.h"
#include "base/Path.h"
#include "base/Text.h"

#include <utility>

SelectedFiles::SelectedFiles(const Char* result) : directory(u""), position(result) {
    const Char* const second = result + Text::Length(result) + 1;
    if (*result == 0 || *second == 0) return;
    directory = result;
    position = second;
}

bool SelectedFiles::Next(WString& path) {
    if (!position || *position == 0) return false;
    if (!path.Assign(directory) || !Path::Join(path, position)) return false;
    // A single path is the whole result: what follows its NUL may be anything.
    position = *directory ? position + Text::Length(position) + 1 : nullptr;
    return true;
}

void OpenSelectedFiles(CommandContext& frame, const Char* result) {
    SelectedFiles files(result);
    WString path;
    frame.BeginBatch();
    while (files.Next(path)) frame.OpenText(path.Text(), NoLine, false);
    frame.EndBatch();
}

bool MakeDialogFilter(const Char* fileTypes, WString& filter) {
    WString made;
    if (!made.Assign(fileTypes)) return false;
    made.ReplaceAll(u'|', 0);
    if (!made.AppendChar(0) || !made.AppendChar(0)) return false;
    filter = std::move(made);
    return true;
}
