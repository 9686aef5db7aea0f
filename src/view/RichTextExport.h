#pragma once

#include "view/ColouredText.h"

// Appends the characters in `range` as RTF in the colours of the document's engine. The colour table is
// that of the settings; a colour that it lacks is written as its first entry.
ExportResult WriteRichText(TextBuffer& document, TextRange range, WString& out);
