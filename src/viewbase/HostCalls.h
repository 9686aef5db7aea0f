#pragma once

#include "viewbase/EditorSurface.h"

// What the editor of a view tells its frame. All of it does nothing until the view is placed in one.
namespace HostCalls {

// What the user is told when nothing could be put on the clipboard.
constexpr const Char* CopyFailed = u"Failed copying to clipboard";

// Shows a text in the message field of the status bar; null clears it.
void ShowStatus(const EditorSurface& surface, const Char* text);
// A message box with a warning, in front of what is active.
void Warn(const EditorSurface& surface, const Char* text);
void DocumentChanged(const EditorSurface& surface, Document* document);
// A search found nothing: a macro that is being played stops without its match.
void SearchFailed(const EditorSurface& surface);
// A search has found what is selected now. Call it after selecting it, which clears the message field.
void SearchSucceeded(const EditorSurface& surface, bool wrapped);

} // namespace HostCalls
