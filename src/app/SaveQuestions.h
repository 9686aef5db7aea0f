#pragma once

#include "viewbase/MessageKind.h"

class Document;
class UserPrompt;
struct SaveChoice;

// Asks what has to be asked before a document is saved where `choice` says: about each way in which the file would not
// be what the user expects. Yes: save it, also when there was nothing to ask; No: choose another place or encoding
// first; Cancel: do not save it. The document may be closed while a question is open.
[[nodiscard]] Answer AskBeforeSave(UserPrompt& user, Document& document, const SaveChoice& choice);
