#pragma once

#include "base/WString.h"
#include "base/win32/Windows.h"
#include "viewbase/FindState.h"

class View;
class ViewHost;

// The Find dialog of every kind of view, and what other dialogs of searching have in common with it. They work
// on `findState`.
namespace FindDialog {

// Searches through View::FindNext until something is found or the user gives up. `hexPattern` offers
// "Match Hex Pattern".
void Show(HWND owner, View& view, bool hexPattern);

// Offers the texts of a history in a combo box, the newest first, with `text` in its field.
void FillHistory(HWND combo, const History& history, const WString& text);
// Says so unless the search was cancelled: who has cancelled it knows. `host` may be null.
void ReportNotFound(ViewHost* host, HWND dialog);

} // namespace FindDialog
