// The frame's documents: opening, showing, saving and closing them.
#include "app/OpenFiles.h"
#include "app/win32/FileDialogs.h"
#include "app/win32/MainFrame.h"
#include "base/Platform.h"
#include "base/Text.h"
#include "binary/BinaryDocument.h"
#include "document/TextBuffer.h"
#include "view/win32/TextView.h"

namespace {

bool IsShownIn(const Document& document, const Pane& pane) {
    return pane.view && pane.view->GetDocument() == &document;
}

// In full: a name that was cut off might be that of another file.
bool DroppedName(HDROP drop, UINT index, WString& name) {
    const UINT length = DragQueryFileW(drop, index, nullptr, 0);
    return length != 0 && name.Reserve(length + 1) && DragQueryFileW(drop, index, Wide(name.Data()), length + 1) &&
           name.Assign(name.Data());
}

} // namespace

Document* MainFrame::ActiveDocument() const {
    const Pane* pane = panes.Active();
    return pane && pane->view ? pane->view->GetDocument() : nullptr;
}

TextBuffer* MainFrame::ActiveText() const {
    Document* document = ActiveDocument();
    return document && !document->IsBinary() ? static_cast<TextBuffer*>(document) : nullptr;
}

TextEditor* MainFrame::ActiveEditor() const {
    return ActiveText() ? &static_cast<TextView*>(panes.Active()->view)->Editor() : nullptr;
}

// The pane that a newly opened document goes to, made when there is none at all.
Pane* MainFrame::TargetPane() {
    if (panes.Active()) return panes.Active();
    if (panes.First()) return panes.First();
    Pane* pane = panes.AddFirst();
    panes.SetActive(pane);
    // Not left to the end of a batch: a caret can only be scrolled into view in a window that has a size.
    if (pane) LayOutNow();
    return pane;
}

// Takes over the caller's reference, also on failure.
bool MainFrame::AdoptDocument(Document* document) {
    if (documents.Add(document)) return true;
    document->Release();
    return false;
}

// The document is in the list; without a view or a pane to show it in it is dropped again.
bool MainFrame::ShowNewDocument(Document* document, Pane* pane) {
    ViewNode* next = nullptr;
    DocumentView* view = document->EnumViews(nullptr, next);
    if (!view || !pane) {
        documents.Remove(document);
        return false;
    }
    panes.SetView(pane, view->AsView());
    panes.SetActive(pane);
    activeView = view->AsView();
    SetFocus(window);
    PaneWindows::Focus(*pane);
    // Without the system's focus (the window is hidden or in the background) nothing told the frame.
    ViewActivated(view->AsView());
    return true;
}

void MainFrame::ShowDocument(Document* document, Pane* pane) {
    if (!document || !pane || (pane->view && pane->view->GetDocument() == document)) return;
    ViewNode* next = nullptr;
    DocumentView* view = nullptr;
    do {
        DocumentView* candidate = document->EnumViews(next, next);
        if (candidate && !panes.PaneOf(candidate->AsView())) view = candidate;
    } while (!view && next);
    if (!view) view = document->CreateView(nullptr);
    if (!view) return;
    panes.SetView(pane, view->AsView());
    if (pane == panes.Active()) ViewActivated(view->AsView());
}

void MainFrame::NewDocument() {
    Pane* pane = TargetPane();
    TextBuffer* document = pane ? new TextBuffer : nullptr;
    if (!document) return;
    document->AddRef();
    WString title;
    if (!document->MakeEmpty() || !documents.UntitledTitle(title) || !document->SetTitle(title.Text()) ||
        !document->CreateView(nullptr)) {
        document->Release();
        return;
    }
    document->ResetSyntaxEngine();
    if (!AdoptDocument(document)) return;
    documents.CountUntitled();
    ShowNewDocument(document, pane);
}

// The document of a file that is open already, text or bytes; null without one.
Document* MainFrame::ShowOpenFile(const Char* fullPath) {
    Document* known = documents.FindByName(fullPath);
    if (!known) return nullptr;
    Pane* pane = TargetPane();
    ShowDocument(known, pane);
    if (pane && pane != panes.Active()) PaneWindows::Focus(*pane);
    return known;
}

bool MainFrame::OpenText(const Char* path, int32_t line, bool isNew) {
    WString fullPath;
    if (!Platform::FullPath(path, fullPath)) return false;
    if (Document* known = isNew ? nullptr : ShowOpenFile(fullPath.Text())) return MoveToLine(known, line);
    TextBuffer* document = new TextBuffer;
    if (!document) return false;
    document->AddRef();
    if (!document->CreateView(nullptr) || !document->Load(fullPath.Text(), isNew)) {
        document->Release();
        ReportOpenFailure(fullPath.Text());
        return false;
    }
    if (!AdoptDocument(document)) return false;
    return ShowNewDocument(document, TargetPane()) && MoveToLine(document, line);
}

bool MainFrame::OpenBinary(const Char* path) {
    WString fullPath;
    if (!Platform::FullPath(path, fullPath)) return false;
    if (ShowOpenFile(fullPath.Text())) return true;
    BinaryDocument* document = new BinaryDocument;
    if (!document) return false;
    document->AddRef();
    if (!document->Open(fullPath.Text()) || !document->CreateView(nullptr)) {
        document->Release();
        ReportOpenFailure(fullPath.Text());
        return false;
    }
    return AdoptDocument(document) && ShowNewDocument(document, TargetPane());
}

// Only -1 is none: a line number beyond 2^31 has become another negative one, and leads to the last line.
// Without memory for one more view the pane may show another document still, whose caret stays.
bool MainFrame::MoveToLine(const Document* document, int32_t line) {
    if (line != -1 && ActiveDocument() == document) panes.Active()->view->GoToLine(static_cast<uint32_t>(line), false);
    return true;
}

// While many files are opened their failures are gathered, so that there is one message for all.
void MainFrame::ReportOpenFailure(const Char* path) {
    if (batchDepth > 0) {
        if (++unopenedCount > MostUnopenedNames) return;
        if (!unopened.IsEmpty()) unopened.AppendChar(u'\n');
        unopened.Append(path);
        return;
    }
    WString text;
    if (Text::AppendFormat(text, u"Failed opening file: %s", path)) AskUser(text.Text(), MessageKind::Warning);
}

bool MainFrame::OpenFileAtLine(const Char* path, uint32_t line) {
    return OpenText(path, static_cast<int32_t>(line), false);
}

bool MainFrame::SaveDocument(Document& document) { return SaveDocumentAs(document, false); }

bool MainFrame::SaveDocumentAs(Document& document, bool askForName) {
    FileDialogs::SaveChoice choice;
    const Char* const* names = nullptr;
    choice.lineEnding = LineEnding::Keep;
    if (!document.GetEncoding(choice.encoding, names)) choice.encoding = Encoding::Keep;
    const bool asks = askForName || !HasFile(document);
    if (!asks && !choice.path.Assign(document.GetName())) return false;
    if (asks && !FileDialogs::AskSave(window, document, choice)) return false;
    if (!document.Save(choice.path.Text(), choice.encoding, choice.lineEnding)) {
        WString text;
        if (Text::AppendFormat(text, u"Failed saving file: %s", choice.path.Text()))
            AskUser(text.Text(), MessageKind::Warning);
        return false;
    }
    // Bytes are always written back into their own file, whatever name was chosen.
    if (asks && !document.IsBinary() && document.SetPath(choice.path.Text())) {
        document.SetTitle(u"");
        static_cast<TextBuffer&>(document).SetEngineName(u"");
    }
    DocumentChanged(&document);
    return true;
}

void MainFrame::CloseActiveDocument() {
    Document* document = activeView ? activeView->GetDocument() : nullptr;
    if (document && MayClose(*this, *document)) CloseDocument(document);
}

void MainFrame::CloseDocument(Document* document) {
    if (documents.Count() == 1) {
        activeView = nullptr;
        panes.CloseAll();
        ClearStatusFields();
        SetFocus(window);
    } else {
        Document* successor = documents.Previous(document);
        for (Pane* pane = panes.First(); pane; pane = pane->next) {
            if (!IsShownIn(*document, *pane)) continue;
            ShowDocument(successor, pane);
            // Without memory for another view the document stays where it is shown, and so open.
            if (IsShownIn(*document, *pane)) return;
        }
    }
    if (document == sharedOutput) sharedOutput = nullptr;
    documents.Remove(document);
    RebuildTitle();
}

void MainFrame::CloseOutputWindows() {
    for (uint32_t i = 0; Document* document = documents.At(i);) {
        if (IsFinishedOutput(*document)) CloseDocument(document);
        // Without memory to show another one in its place it is open still.
        if (documents.At(i) == document) ++i;
    }
}

Document* MainFrame::SharedOutput() {
    if (!sharedOutput) sharedOutput = NewOutput(u"Output");
    return sharedOutput;
}

// An output document with a view that is not shown yet.
TextBuffer* MainFrame::NewOutput(const Char* title) {
    TextBuffer* document = new TextBuffer;
    if (!document) return nullptr;
    document->AddRef();
    if (!document->MakeEmpty() || !document->SetTitle(title) || !document->CreateView(nullptr) ||
        !document->MarkAsOutput()) {
        document->Release();
        return nullptr;
    }
    document->ResetSyntaxEngine();
    return AdoptDocument(document) ? document : nullptr;
}

void MainFrame::ClearOutput() {
    if (sharedOutput) static_cast<TextBuffer*>(sharedOutput)->EmptyAndResetUndo();
}

bool MainFrame::AppendOutput(const Char* text) {
    WString copy; // appending normalises its line breaks in place
    Document* output = SharedOutput();
    if (!output || !copy.Assign(text)) return false;
    ShowDocument(output, TargetPane());
    return copy.IsEmpty() || static_cast<TextBuffer*>(output)->AppendOutputText(copy.Data());
}

void MainFrame::OnDropFiles(HDROP drop) {
    // Beneath an open dialog the frame takes nothing.
    const UINT count = IsWindowEnabled(window) ? DragQueryFileW(drop, 0xFFFFFFFF, nullptr, 0) : 0;
    BeginBatch();
    WString path;
    for (UINT i = 0; i < count; ++i)
        if (DroppedName(drop, i, path)) OpenText(path.Text(), -1, false);
    DragFinish(drop);
    EndBatch();
}
