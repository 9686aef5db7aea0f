// The document of a TextEditor, and its text with the open line in its edited form.

#include "view/TextEditor.h"

#include "viewbase/HostCalls.h"

void TextEditor::SetDocument(TextBuffer* newDocument) {
    if (document && document != newDocument) document->ForgetView(this);
    document = newDocument;
    caretLine = caretColumn = preferredColumn = 0;
    selectionAnchor = caretOffset = 0;
    topLine = 0;
    owesScroll = false;
    horizontalScroll = 0;
    pair = BracePair();
    TextChanged(0);
    if (!document) return;
    RecomputeDigits();
    RecomputeColumns();
    UpdateScrollBars();
}

void TextEditor::TextChanged(uint32_t offset) {
    states.TextChanged(offset);
    measured.TextChanged(offset);
}

void TextEditor::OnAttached() {
    if (document) document->ViewAttached(this);
    bars.Forget();
    UpdateScrollBars();
}

void TextEditor::OnFocus() {
    if (!document) return;
    document->SetActiveView(this);
    sentStatus = Status(); // another view has written into the fields meanwhile
    OpenCaretLine();
    UpdateCaret(false);
}

void TextEditor::DocumentChanged(Document* changed) { HostCalls::DocumentChanged(surface, changed); }

void TextEditor::RunStateChanged(Document* changed, bool running) {
    if (ViewHost* host = surface.Host()) host->CheckChangedOnDisk(changed, running);
}

void TextEditor::OpenCaretLine() {
    if (document) document->LoadEditLine(caretLine);
}

uint32_t TextEditor::PendingGrowth() const {
    return document->HasPendingEdit() ? document->EditLine().Length() - document->EditLineStoreLength() : 0;
}

TextSpan TextEditor::LineText(uint32_t line) const {
    if (!document || !document->Content()) return {u"", 0};
    if (line >= document->GetLineCount()) line = document->GetLineCount() - 1;
    if (line == document->EditLineNumber()) {
        const WString& open = document->EditLine();
        return {open.Text(), open.IsEmpty() ? 0 : open.Length() - 1};
    }
    const uint32_t start = document->LineToOffset(line);
    bool isLast = false;
    return {document->Content() + start, document->LineLength(start, isLast)};
}

uint32_t TextEditor::LineStart(uint32_t line) const {
    if (!document) return 0;
    const uint32_t start = document->LineToOffset(line);
    // A line past the end yields the last one, which may be the open one itself.
    return start > document->EditLineStart() && line > document->EditLineNumber() ? start + PendingGrowth() : start;
}

uint32_t TextEditor::TextLength() const { return document ? document->Length() + PendingGrowth() : 0; }

void TextEditor::OffsetToLineColumn(uint32_t offset, uint32_t& line, uint32_t& column) const {
    line = column = 0;
    if (!document) return;
    if (document->HasPendingEdit()) {
        const uint32_t start = document->EditLineStart();
        if (offset >= start && offset - start < document->EditLine().Length()) {
            line = document->EditLineNumber();
            column = offset - start;
            return;
        }
        if (offset > start) offset -= PendingGrowth();
    }
    document->OffsetToLineColumn(offset, line, column);
}

uint32_t TextEditor::StateAt(uint32_t line) {
    if (!document || !document->Engine() || !document->Content()) return 0;
    SyntaxEngine& engine = *document->Engine();
    const Char* text = document->Content();
    const uint32_t start = document->LineToOffset(line);
    if (!document->HasPendingEdit() || start <= document->EditLineStart()) return states.At(engine, text, start);

    const WString& open = document->EditLine();
    const uint32_t behind = document->EditLineStart() + document->EditLineStoreLength();
    uint32_t state = states.At(engine, text, document->EditLineStart());
    state = engine.ScanLines(open.Text(), open.Length(), state);
    return engine.ScanLines(text + behind, start - behind, state);
}
