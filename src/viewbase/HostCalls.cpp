#include "viewbase/HostCalls.h"

void HostCalls::ShowStatus(const EditorSurface& surface, const Char* text) {
    if (ViewHost* host = surface.Host()) host->SetStatusText(StatusField::Message, text);
}

void HostCalls::Warn(const EditorSurface& surface, const Char* text) {
    if (ViewHost* host = surface.Host()) host->ShowMessage(nullptr, text, MessageKind::Warning);
}

void HostCalls::DocumentChanged(const EditorSurface& surface, Document* document) {
    if (ViewHost* host = surface.Host()) host->DocumentChanged(document);
}

void HostCalls::SearchFailed(const EditorSurface& surface) {
    ViewHost* host = surface.Host();
    if (host && host->GetMacroState() == MacroState::Playing) host->StopMacroPlayback();
}

void HostCalls::SearchSucceeded(const EditorSurface& surface, bool wrapped) {
    if (wrapped) ShowStatus(surface, u"Passed end of file");
}
