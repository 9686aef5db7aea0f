#include "app/ActiveText.h"

#include "app/PaneViews.h"
#include "app/QuickOpen.h"
#include "base/Text.h"
#include "document/TextBuffer.h"
#include "syntax/EngineDefinition.h"
#include "view/TextEditor.h"
#include "view/Words.h"

TextBuffer* ActiveText::Document() const {
    const Pane* const pane = panes.Active();
    ::Document* const document = pane ? panes.DocumentIn(*pane) : nullptr;
    return document && !document->IsBinary() ? static_cast<TextBuffer*>(document) : nullptr;
}

TextEditor* ActiveText::Editor() const {
    const TextBuffer* const text = Document();
    if (!text) return nullptr;
    ViewNode* next = nullptr;
    do {
        DocumentView* const view = text->EnumViews(next, next);
        // All views of a text are editors.
        if (view && view->AsView() == panes.Active()->view) return static_cast<TextEditor*>(view);
    } while (next);
    return nullptr;
}

void ActiveText::SetEngine(const Char* name) {
    TextBuffer* const text = Document();
    // A name that no definition has would give a plain engine.
    // Without memory the text keeps the engine it has.
    if (text && FindEngineDefinition(name)) static_cast<void>(text->SetEngineName(name));
}

void ActiveText::MarkAsOutput() {
    // Without memory the document stays one that can be typed into.
    if (TextBuffer* const text = Document()) static_cast<void>(text->MarkAsOutput());
}

// A gap between words is not a word, though a word selection would take it.
bool ActiveText::AppendWordAtCaret(WString& out) const {
    const TextEditor* const editor = Editor();
    if (!editor) return true;
    const TextSpan line = editor->Text().Line(editor->CaretLine());
    const ColumnRange word = Words::WordAt(line, editor->CaretColumn());
    if (word.IsEmpty() || !Text::IsWordChar(line.text[word.start])) return true;
    return out.Append(line.text + word.start, word.Length());
}

bool ActiveText::AppendSelection(WString& out) const {
    const TextEditor* const editor = Editor();
    if (!editor || !editor->HasSelection()) return AppendWordAtCaret(out);
    TextBuffer* const text = Document();
    if (!text->CommitEdit()) return false;
    const uint32_t start = editor->Caret().SelectionStart();
    return out.Append(text->Content() + start, editor->Caret().SelectionEnd() - start);
}

bool ActiveText::GetFileNameAtCaret(WString& name) const {
    TextBuffer* const text = Document();
    const TextEditor* const editor = Editor();
    return editor && text->CommitEdit() &&
           FileNameAtCaret(text->Content(), text->Length(), editor->CaretOffset(), name);
}
