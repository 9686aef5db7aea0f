#include "app/DocumentOpener.h"

#include "app/DocumentDisplay.h"
#include "app/DocumentList.h"
#include "app/NewDocument.h"
#include "app/OpenFailures.h"
#include "base/Platform.h"
#include "binary/BinaryDocument.h"
#include "document/TextBuffer.h"

void DocumentOpener::OpenNew() {
    WString title;
    // Without a pane nothing is made, so that no number is used up.
    if (!display.TargetPane() || !documents.UntitledTitle(title)) return;
    TextBuffer* const document = MakeTitledText(services.text, title.Text(), true);
    if (!document || !AdoptDocument(documents, document)) return;
    documents.CountUntitled();
    if (!display.ShowNew(*document)) documents.Remove(document);
}

bool DocumentOpener::OpenText(const Char* path, uint32_t line, bool isNew) {
    WString fullPath;
    if (!Platform::FullPath(path, fullPath)) return false;
    if (const Document* const known = isNew ? nullptr : ShowOpenFile(fullPath.Text())) {
        MoveToLine(*known, line);
        return true;
    }
    auto* const document = new TextBuffer(services.text);
    if (!document) return false;
    document->AddRef();
    if (!document->CreateView(nullptr) || !document->Load(fullPath.Text(), isNew)) {
        document->Release();
        failures.Report(fullPath.Text());
        return false;
    }
    if (!ShowOpened(document)) return false;
    MoveToLine(*document, line);
    return true;
}

bool DocumentOpener::OpenBinary(const Char* path) {
    WString fullPath;
    if (!Platform::FullPath(path, fullPath)) return false;
    if (ShowOpenFile(fullPath.Text())) return true;
    auto* const document = new BinaryDocument(services.hex);
    if (!document) return false;
    document->AddRef();
    if (!document->Open(fullPath.Text()) || !document->CreateView(nullptr)) {
        document->Release();
        failures.Report(fullPath.Text());
        return false;
    }
    return ShowOpened(document);
}

Document* DocumentOpener::OpenRecovered(DecodedText& text, const Char* title) {
    TextBuffer* const document = MakeTitledText(services.text, title);
    if (!document) return nullptr;
    document->TakeRecovered(text);
    return ShowOpened(document) ? document : nullptr;
}

RecoveryResult DocumentOpener::OpenRecoveredBytes(JournalReader& journal, Document*& opened) {
    const Char* const path = journal.Name().Text();
    auto* const document = documents.FindByName(path) ? nullptr : new BinaryDocument(services.hex);
    if (!document) return RecoveryResult::Failed;
    document->AddRef();
    RecoveryResult result = document->Open(path) ? document->Recover(journal) : RecoveryResult::FileUnreadable;
    const bool isGood = result == RecoveryResult::Whole || result == RecoveryResult::Cut;
    if (!isGood || !document->CreateView(nullptr)) {
        document->Release();
        return isGood ? RecoveryResult::Failed : result;
    }
    if (!ShowOpened(document)) return RecoveryResult::Failed;
    opened = document;
    return result;
}

// The document of a file that is open already, text or bytes; null without one.
Document* DocumentOpener::ShowOpenFile(const Char* fullPath) {
    Document* const known = documents.FindByName(fullPath);
    if (!known) return nullptr;
    Pane* const pane = display.TargetPane();
    display.Show(known, pane);
    // Also when the pane showed it all the time.
    if (pane) display.ViewActivated(pane->view);
    return known;
}

bool DocumentOpener::ShowOpened(Document* document) {
    if (!AdoptDocument(documents, document)) return false;
    if (display.ShowNew(*document)) return true;
    documents.Remove(document);
    return false;
}

// Without memory for one more view the pane may still show another document, whose caret stays.
void DocumentOpener::MoveToLine(const Document& document, uint32_t line) {
    if (line != NoLine && display.Active() == &document) panes.GoToLine(*panes.Active(), line);
}
