#pragma once

#include "app/SaveDialog.h"
#include "base/win32/Windows.h"

class Ole;

// The system's file dialogs with our own additions.
class FileDialogs final : public SaveDialog {
public:
    explicit FileDialogs(Ole& sharedOle) : ole(sharedOle) {}

    void SetFrame(HWND window) { owner = window; }

    // Asks for files to open. `result` gets what the dialog returned: one full path, or a directory and the
    // names in it, each ended by a NUL. False when cancelled, and when more files were chosen than fit into
    // the dialog's buffer: `tooMany` is set then.
    [[nodiscard]] bool AskOpen(WString& result, bool& tooMany) const;

    // SaveDialog.
    bool AskSave(const Document& document, SaveChoice& choice) override;

private:
    // What both dialogs have in common. `filter` and `directory` must outlive the dialog.
    bool Prepare(OPENFILENAMEW& request, WString& filter, WString& directory) const;

    Ole& ole;
    HWND owner = nullptr;
};
