#pragma once

#include "view/ColouredText.h"

// Appends the characters [from, to) as an HTML fragment in the colours of the document's engine. An
// ampersand is copied as it is.
ExportResult WriteHtml(TextBuffer& document, uint32_t from, uint32_t to, WString& out);
