#include "document/TextBuffer.h"

#include "base/Text.h"

TextBuffer::~TextBuffer() {
    Clear(true);
    AttachEngine(nullptr);
}

uint32_t TextBuffer::Release() {
    if (--refCount) return refCount;
    delete this;
    return 0;
}

bool TextBuffer::MakeEmpty() {
    FreeStore();
    lineCache.Clear();
    CloseEditLine();
    MoveViewsToStart();
    return EnsureCapacity(0);
}

bool TextBuffer::MakeNew(const Char* name) {
    Clear(false);
    if (!MakeEmpty() || !SetPath(name)) {
        FreeStore();
        return false;
    }
    ChooseOwnEngine();
    return true;
}

void TextBuffer::Clear(bool destroyViews) {
    if (destroyViews) DestroyViews();
    if (run.process) EndRun();
    lineCache.Clear();
    marks.Clear();
    ForgetUndo();
    FreeStore();
    CloseEditLine();
    MoveViewsToStart();
}

void TextBuffer::FreeStore() {
    Heap::Free(text);
    text = nullptr;
    length = capacity = encoding = 0;
    lineCount = 1;
    lastLineStart = None32;
}

void TextBuffer::CloseEditLine() {
    editLine.Release();
    editDirty = 0;
    DropEditLine();
}

void TextBuffer::AttachEngine(SyntaxEngine* newEngine) {
    if (engine) engine->Release();
    engine = newEngine;
    TellTextChanged(0);
}

void TextBuffer::ChooseOwnEngine() { AttachEngine(ChooseEngineForFile(engineName.Text(), path.Text())); }

bool TextBuffer::SetEngineName(const Char* name) {
    if (!engineName.Assign(name)) return false;
    ResetSyntaxEngine();
    return true;
}

void TextBuffer::OnSettingsChanged(uint32_t flags) {
    if (flags & SettingsChanged::Engine) ChooseOwnEngine();
}

void TextBuffer::ResetSyntaxEngine() {
    ChooseOwnEngine();
    RepaintAll();
}

bool TextBuffer::CanDo(uint32_t kind) const {
    switch (kind) {
    case DocumentCommand::Edit:
        return !readOnly;
    case DocumentCommand::Undo:
        return undoHead != nullptr;
    case DocumentCommand::Redo:
        return redoHead != nullptr;
    case DocumentCommand::Paste:
        return !readOnly && Platform::ClipboardHasText();
    default:
        return false;
    }
}

bool TextBuffer::DoCommand(uint32_t kind) {
    if (kind != DocumentCommand::Undo && kind != DocumentCommand::Redo) return false;
    kind == DocumentCommand::Undo ? Undo() : Redo();
    return true;
}

bool TextBuffer::GetSessionText(WString& out) const {
    const uint32_t before = out.Length();
    bool done = Text::AppendFormat(out, u"e %s\r\n", GetName());
    if (done && views.head) done = Text::AppendFormat(out, u"l %u\r\n", views.head->view->CaretLine() + 1);
    for (const LineMark* mark = marks.Head(); done && mark; mark = mark->next) {
        if (mark->flags & LineMark::Bookmark) done = Text::AppendFormat(out, u"bm %u\r\n", mark->line + 1);
    }
    if (!done) out.Truncate(before);
    return done;
}
