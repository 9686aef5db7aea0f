#pragma once

#include "base/WString.h"
#include "base/win32/Windows.h"

class Document;

// The system's file dialogs with our own additions.
namespace FileDialogs {

// Asks for files to open. `result` gets what the dialog returned: one full path, or a directory and the
// names in it, each ended by a NUL. False when cancelled, and when more files were chosen than fit into
// the dialog's buffer, which `tooMany` tells.
bool AskOpen(HWND owner, WString& result, bool& tooMany);

// What the user chose in the Save As dialog.
struct SaveChoice {
    WString path;
    uint32_t encoding;
    uint32_t lineEnding;
};

// Asks where and how to save a document. False when cancelled.
bool AskSave(HWND owner, const Document& document, SaveChoice& choice);

} // namespace FileDialogs
