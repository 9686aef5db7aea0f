#pragma once

#include "base/Types.h"
#include "base/WString.h"

class CommandContext;

// Reads what an open dialog with multiple selection returned: one full path, or a directory and the
// names in it, each ended by a NUL, with one more NUL after the last.
class SelectedFiles {
public:
    explicit SelectedFiles(const Char* result);

    // The next full path; false after the last one or without memory.
    [[nodiscard]] bool Next(WString& path);

private:
    const Char* directory; // empty when there is but one file
    const Char* position;
};

// Opens each of them as an existing text file, in their order; one that fails does not stop the rest.
void OpenSelectedFiles(CommandContext& frame, const Char* result);

// The filter list that the file dialogs expect, from a setting that separates its entries by "|".
// NULs separate the entries and two of them end the list. False without memory.
[[nodiscard]] bool MakeDialogFilter(const Char* fileTypes, WString& filter);
