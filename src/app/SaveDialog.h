#pragma once

#include "base/WString.h"
#include "document/Document.h"

// Where and how to save a document.
struct SaveChoice {
    WString path;
    Encoding encoding = Encoding::Keep;
    LineEnding lineEnding = LineEnding::Keep;
};

// Asks where and how to save. Messages are handled meanwhile.
class SaveDialog {
public:
    // `choice` comes with the encoding that is to be chosen at first. False when cancelled; `choice` may have changed.
    [[nodiscard]] virtual bool AskSave(const Document& document, SaveChoice& choice) = 0;

protected:
    ~SaveDialog() = default;
};
