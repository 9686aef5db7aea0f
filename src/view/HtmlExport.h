#pragma once

#include "view/ColouredText.h"

// Appends the characters in `range` as an HTML fragment in the colours of the document's engine. An
// ampersand is copied as it is: docs/oddities.md.
ExportResult WriteHtml(TextBuffer& document, TextRange range, WString& out);
