#pragma once

#include "document/Encoding.h"

class Document;

// The encoding that a document is saved in unless the user chooses another one: its own, but UTF-8 for a new text that
// ANSI cannot hold, when the additional setting Utf8 is on. Keep for bytes. Writes back the line that is typed in.
Encoding EncodingToSave(Document& document);
// How many of the names of Document::GetEncoding, from the first on, the user may choose from while `chosen` is chosen:
// UTF-8 without a signature is offered only with the additional setting Utf8, and to those who have it.
uint32_t OfferedEncodings(Encoding chosen);
// Whether a file in that encoding would hold every character of the text.
bool CanHold(Encoding encoding, class TextBuffer& text);
// Whether a file in that encoding would be read as this text again, as far as the additional setting Utf8 has files
// recognised by their bytes: in ANSI the text may be valid UTF-8, and without a signature it may begin like one.
bool IsReadAgain(Encoding encoding, TextBuffer& text);
