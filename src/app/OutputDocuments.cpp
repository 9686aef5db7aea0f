#include "app/OutputDocuments.h"

#include "app/DocumentDisplay.h"
#include "app/DocumentList.h"
#include "app/NewDocument.h"
#include "document/TextBuffer.h"

void OutputDocuments::Clear() {
    if (shared) shared->EmptyAndResetUndo();
}

bool OutputDocuments::Append(const Char* text) {
    WString copy; // appending normalises its line breaks in place
    if (!copy.Assign(text) || !ShowShared()) return false;
    return copy.IsEmpty() || shared->AppendOutputText(copy.Data());
}

TextBuffer* OutputDocuments::ShowShared() {
    Pane* const pane = display.TargetPane();
    if (!pane) return nullptr;
    if (!shared) shared = Make(u"Output");
    display.Show(shared, pane);
    return shared;
}

TextBuffer* OutputDocuments::ShowNamed(const Char* title) {
    Pane* const active = display.TargetPane();
    if (!active) return nullptr;
    // A document that the user types in may be called like the command, and is not to be emptied.
    Document* const known = documents.FindOutput(title);
    TextBuffer* const output = known ? static_cast<TextBuffer*>(known) : Make(title);
    if (!output) return nullptr;
    if (known && IsFinishedOutput(*known)) output->EmptyAndResetUndo();
    display.Show(output, panes.Next(*active));
    return output;
}

void OutputDocuments::Forget(const Document& document) {
    if (shared == &document) shared = nullptr;
}

TextBuffer* OutputDocuments::Make(const Char* title) {
    TextBuffer* const document = MakeTitledText(services, title);
    if (!document) return nullptr;
    if (!document->MarkAsOutput()) {
        document->Release();
        return nullptr;
    }
    return AdoptDocument(documents, document) ? document : nullptr;
}
