#pragma once

#include "document/TextBuffer.h"
#include "view/CaretBrackets.h"
#include "view/HeldRanges.h"
#include "view/ShownText.h"
#include "view/StatusFields.h"
#include "view/TextCaret.h"
#include "view/TextViewport.h"
#include "viewbase/EditorBase.h"

// The text view without its window: keeps its parts (the text as it is shown, the caret, the viewport) together, and
// in step with the document. One per view; the document is not owned, and calls what TextDocumentView declares. What
// the user does comes through a TextInput; what keys and commands do is built on the operations here, in the files
// Editor*.h.
//
// Offsets count the text as the user sees it (see ShownText).
class TextEditor final : public EditorBase<TextDocumentView> {
public:
    // Both are the same window.
    TextEditor(EditorSurface& window, TextSurface& textWindow) : EditorBase(window), textSurface(textWindow) {}

    // Shows a document from its start; null takes it away.
    void SetDocument(TextBuffer* newDocument);
    TextBuffer* GetTextBuffer() const { return text.Document(); }
    Document* GetDocument() const { return text.Document(); }
    bool HasDocument() const { return text.Document() != nullptr; }

    // Its parts.
    TextSurface& GetTextSurface() const { return textSurface; }
    const ShownText& Text() const { return text; }
    const TextCaret& Caret() const { return caret; }
    TextViewport& Viewport() { return viewport; }
    const TextViewport& Viewport() const { return viewport; }
    HeldRanges& Held() { return heldRanges; }
    uint32_t StateAt(uint32_t line) { return text.StateAt(line); }
    // Grows with every operation that edits the document, in whichever view.
    uint32_t EditCount() const { return editCount; }

    // TextDocumentView: what the document tells.
    void TextEdited(const TextChange& change) override { heldRanges.Follow(change); }
    void ForgetAfter(uint32_t offset) override;
    void LineCountChanged() override;
    void PlaceCaret(TextPosition place) override;
    void PlaceSelection(TextSelection selection) override;
    void PlaceTopLine(uint32_t line) override { viewport.ScrollTo(line); }
    void FollowChange(const TextChange& change) override;
    void FollowEnd(TextPosition end) override;
    void InvalidateLines(LineRange lines) override;
    // Counts the operation. If the operation placed the caret or called ForgetAfter, matches the brackets at the caret
    // of the focused view, or clears the highlight when no view of the document has the focus.
    void EditFinished() override;
    void RefreshStatus() override;
    void RunStateChanged(Document* changed, bool running) override;
    // And what it asks.
    TextPosition CaretPosition() const override { return caret.Position(); }
    TextSelection Selection() const override { return caret.Selection(); }
    uint32_t TopLine() const override { return viewport.TopLine(); }

    // The window: OnAttached, OnSize and OnFocus of EditorInput.
    void WindowAttached();
    void LayOut(bool coloursChanged);
    void FocusGained();
    int32_t VisibleLines() const { return viewport.VisibleRows(); }

    // Caret and selection. They clamp to the text and to where the caret may stop. Extending leaves the anchor where it
    // is.
    void MoveCaret(TextPosition place, bool extend = false, CaretStop stop = CaretStop::OutsidePairs);
    void MoveCaretToOffset(uint32_t offset, bool extend);
    void SelectRange(TextSelection selection);
    // False without a selection, and without memory; then nothing has changed.
    [[nodiscard]] bool DeleteSelection();
    // The caret goes to the line's start (the last line's when there are fewer); `selectLine` selects it.
    void GoToLine(uint32_t line, bool selectLine);
    void UpdateCaret(bool scrollIntoView) override;
    // Scrolls, for the user: commits a pending edit, which PlaceTopLine must not do.
    void SetTopLine(uint32_t line);
    void ScrollTo(uint64_t row) override { SetTopLine(static_cast<uint32_t>(row)); }
    TextPosition PlaceAt(ClientPoint point) const { return viewport.PositionAt(point); }
    void ToggleBookmark(uint32_t line); // NoLine: the caret line
    bool IsOverwriting() const { return overwrite; }
    void ToggleOverwrite();
    // Makes the caret line the document's edit line.
    void OpenCaretLine();
    // Scrolls the caret line into view. Call it before the line is edited: during a change it is too late.
    void PrepareEdit();
    // Call it after an edit of the caret line that leaves the caret where it is: as MoveCaret, but in the line
    // that is open.
    void PlaceAfterEdit(uint32_t column);

private:
    // EditorBase.
    EditorSelection Selected() const override { return {caret.Anchor(), caret.Offset()}; }
    void MoveAnchorToCaret() override { caret.Collapse(); }
    uint64_t CaretRow() const override { return caret.Line(); }
    uint64_t RowOf(uint64_t offset) const override { return text.LineOf(static_cast<uint32_t>(offset)); }
    const ShownRows& SeenRows() const override { return viewport.Rows(); }

    // Like MoveCaret, but neither opens the line nor matches brackets: for what the document notifies its views of,
    // which may not edit meanwhile.
    void SetCaret(TextPosition place, bool extend, CaretStop stop = CaretStop::OutsidePairs);
    void SetSelection(uint32_t anchor);

    TextSurface& textSurface;
    ShownText text;
    TextCaret caret;
    TextViewport viewport{surface, textSurface, text, redraw};
    uint32_t editCount = 0;
    HeldRanges heldRanges;
    CaretBrackets brackets{surface, text, caret};
    StatusFields status;
    bool overwrite = false;
    bool scrollPending = false; // the caret was moved while there was no window to scroll it into
};
