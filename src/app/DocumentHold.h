#pragma once

#include "document/Document.h"

// Keeps a document alive while a question is open: messages are handled meanwhile, and one of them may close it.
class DocumentHold {
public:
    explicit DocumentHold(Document& document) : held(document) { held.AddRef(); }
    ~DocumentHold() { held.Release(); }
    DocumentHold(const DocumentHold&) = delete;
    DocumentHold& operator=(const DocumentHold&) = delete;

private:
    Document& held;
};
