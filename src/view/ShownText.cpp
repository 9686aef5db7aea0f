#include "view/ShownText.h"

#include "document/TextBuffer.h"

#include <algorithm>

void ShownText::Show(TextBuffer* shown) {
    document = shown;
    states.ForgetAfter(0);
}

uint32_t ShownText::Length() const { return document ? document->Length() + document->EditLineGrowth() : 0; }

uint32_t ShownText::LineCount() const { return document ? document->GetLineCount() : 1; }

TextSpan ShownText::Line(uint32_t line) const {
    if (!document || !document->Content()) return {u"", 0};
    if (line >= document->GetLineCount()) line = document->GetLineCount() - 1;
    if (line == document->EditLineNumber()) {
        const WString& open = document->EditLineText();
        return {open.Text(), open.IsEmpty() ? 0 : open.Length() - 1};
    }
    const uint32_t start = document->LineToOffset(line);
    bool isLast = false;
    return {document->Content() + start, document->LineLength(start, isLast)};
}

uint32_t ShownText::LineStart(uint32_t line) const {
    if (!document) return 0;
    const uint32_t start = document->LineToOffset(line);
    // A line past the end yields the last one, which may be the open one itself.
    return start > document->EditLineStart() && line > document->EditLineNumber() ? start + document->EditLineGrowth()
                                                                                  : start;
}

TextPosition ShownText::PositionOf(uint32_t offset) const {
    if (!document) return {};
    if (document->HasPendingEdit()) {
        const uint32_t start = document->EditLineStart();
        // A place in the open line, up to its line feed, is counted in the copy; one after it is looked up in the
        // store, at another offset.
        if (offset >= start && offset - start < document->EditLineText().Length())
            return {document->EditLineNumber(), offset - start};
        if (offset > start) offset -= document->EditLineGrowth(); // the store does not know of the edit
    }
    return document->OffsetToLineColumn(offset);
}

Char ShownText::CharacterAt(uint32_t offset) const {
    if (!document || !document->Content()) return 0;
    if (document->HasPendingEdit() && offset >= document->EditLineStart()) {
        const uint32_t column = offset - document->EditLineStart();
        if (column < document->EditLineText().Length()) return document->EditLineText()[column];
        offset -= document->EditLineGrowth(); // the store does not know of the edit
    }
    return document->Content()[offset];
}

void ShownText::Copy(TextRange range, Char* out) const {
    if (!document || !document->Content() || range.IsEmpty()) return;
    document->ForEachPiece(range.start, range.Length(), [&out](const Char* piece, size_t count) {
        out = std::copy(piece, piece + count, out);
        return true;
    });
}

// The states that are remembered are those of the store; the open line is scanned in between.
uint32_t ShownText::StateAt(uint32_t line) {
    if (!document || !document->Engine() || !document->Content()) return 0;
    SyntaxEngine& engine = *document->Engine();
    const Char* text = document->Content();
    const uint32_t start = document->LineToOffset(line);
    if (!document->HasPendingEdit() || start <= document->EditLineStart()) return states.At(engine, text, start);

    const WString& open = document->EditLineText();
    const uint32_t after = document->EditLineStart() + document->EditLineStoreLength();
    uint32_t state = states.At(engine, text, document->EditLineStart());
    state = engine.ScanLines(open.Text(), open.Length(), state);
    return engine.ScanLines(text + after, start - after, state);
}
