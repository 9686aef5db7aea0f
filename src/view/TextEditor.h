#pragma once

#include "document/DocumentView.h"
#include "document/TextBuffer.h"
#include "view/BracketMatch.h"
#include "view/ShownText.h"
#include "view/StatusFields.h"
#include "view/TextCaret.h"
#include "view/TextViewport.h"
#include "viewbase/EditorInput.h"
#include "viewbase/ViewCommand.h"

// The text view without its window: routes what the user and the document do to its parts (the text as it is
// shown, the caret, the viewport) and keeps them together. What keys and commands do is built on its operations,
// in EditorKeys.h, EditorCommands.h and what these include. One per view; the document is not owned.
//
// Offsets count the text as the user sees it (see ShownText).
class TextEditor final : public DocumentView, public EditorInput, public DragTarget {
public:
    // Both are the same window.
    TextEditor(EditorSurface& window, TextSurface& textWindow) : surface(window), textSurface(textWindow) {}
    TextEditor(const TextEditor&) = delete;
    TextEditor& operator=(const TextEditor&) = delete;

    // Shows a document from its start; null takes it away.
    void SetDocument(TextBuffer* newDocument);
    TextBuffer* GetTextBuffer() const { return text.Document(); }

    // Its parts.
    EditorSurface& Surface() const { return surface; }
    TextSurface& OwnSurface() const { return textSurface; }
    const ShownText& Text() const { return text; }
    const TextCaret& Caret() const { return caret; }
    TextViewport& Viewport() { return viewport; }
    const TextViewport& Viewport() const { return viewport; }
    const BracketPair& MatchedBrackets() const { return match.Pair(); }
    uint32_t StateAt(uint32_t line) { return text.StateAt(line); }

    // DocumentView.
    bool HasWindow() const override { return surface.HasWindow(); }
    bool HasFocus() const override { return surface.HasFocus(); }
    void Invalidate() override { redraw.InvalidateAll(); }
    void InvalidateLines(uint32_t first, uint32_t last) override;
    void LineCountChanged() override;
    void TextChanged(uint32_t offset) override;
    void PlaceCaret(uint32_t line, uint32_t column) override;
    void PlaceSelection(uint32_t anchor, uint32_t end) override;
    void PlaceTopLine(uint32_t line) override { viewport.ScrollTo(line); }
    void FollowChange(const TextChange& change) override;
    void EditFinished() override;
    uint32_t CaretLine() const override { return caret.Line(); }
    uint32_t CaretColumn() const override { return caret.Column(); }
    uint32_t SelectionAnchor() const override { return caret.Anchor(); }
    uint32_t CaretOffset() const override { return caret.Offset(); }
    uint32_t TopLine() const override { return viewport.TopLine(); }
    void RefreshStatus() override;
    void DocumentChanged(Document* changed) override;
    void RunStateChanged(Document* changed, bool running) override;
    View* AsView() override { return surface.AsView(); }
    void Destroy() override { surface.DestroyView(); }

    // EditorInput.
    void OnAttached() override;
    void OnSize(bool coloursChanged) override;
    void OnFocus() override;
    void OnKeyDown(uint32_t key) override;
    void OnChar(Char character) override;
    void OnScroll(ScrollAxis axis, ScrollRequest request, int32_t trackPosition) override;
    void OnWheel(const WheelTurn& turn) override;
    DragSelection& Drag() override { return drag; }
    int32_t VisibleLines() const override { return viewport.VisibleLines(); }
    void SuspendRedraw() override { redraw.Suspend(); }
    void ResumeRedraw() override;

    // DragTarget.
    bool BeginSelection(ClientPoint point, bool extend) override;
    void ExtendSelection(ClientPoint point) override;

    // Opens the file that the line names in output, else selects the word.
    void OnDoubleClick();
    bool IsCommandEnabled(ViewCommand command) const;
    // False for an unknown command.
    bool ExecuteCommand(ViewCommand command);

    // Caret and selection. They clamp to the text. Extending leaves the anchor where it is.
    void MoveCaret(uint32_t line, uint32_t column, bool extend = false);
    void MoveCaretToOffset(uint32_t offset, bool extend);
    void SelectRange(uint32_t anchor, uint32_t end);
    // Empties the selection at the caret.
    void CollapseSelection();
    bool DeleteSelection();
    // The caret goes to the line's start (the last line's when there are fewer); `selectLine` selects it.
    void GoToLine(uint32_t line, bool selectLine);
    // Places the caret, the scroll bars and the status fields again.
    void UpdateCaret(bool scrollIntoView);
    void SetTopLine(uint32_t line);
    void ToggleBookmark(uint32_t line); // None32: the caret line
    bool IsOverwriting() const { return overwrite; }
    void ToggleOverwrite();
    // To be called before the caret line is edited: scrolls it into view and opens it. Scrolling in the
    // middle of a change would be too late.
    void PrepareEdit();

private:
    // Makes the caret line the document's edit line.
    void OpenCaretLine();
    // As MoveCaret, but neither opens the line nor matches brackets.
    void SetCaret(TextPosition place, bool extend);
    void SetSelection(uint32_t anchor);
    void MatchBrackets();

    EditorSurface& surface;
    TextSurface& textSurface;
    Redraw redraw{surface};
    ShownText text;
    TextCaret caret;
    TextViewport viewport{surface, textSurface, text, redraw};
    BracketMatch match;
    bool matchDue = false; // an edit has moved the caret
    StatusFields status;
    DragSelection drag{surface, *this};
    MouseWheel wheel;
    bool overwrite = false;
    bool owesScroll = false; // the caret was moved while there was no window to scroll it into
};
