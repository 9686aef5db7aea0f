#pragma once

#include "document/DocumentView.h"
#include "document/TextBuffer.h"
#include "view/LineLayout.h"
#include "view/LineStates.h"
#include "view/MeasuredLine.h"
#include "view/TextSurface.h"
#include "viewbase/DragSelection.h"
#include "viewbase/EditorInput.h"
#include "viewbase/Redraw.h"
#include "viewbase/ViewCommand.h"

// The text view without its window: caret, selection, layout, scrolling and every command. A window
// (EditorSurface) shows it and passes on what the user does. One per view; the document is not owned.
//
// Offsets count the text as the user sees it, with the line that is open for editing in its edited form;
// without a pending edit they are offsets into the document's content.
class TextEditor final : public DocumentView, public EditorInput {
public:
    // Both are the same window.
    TextEditor(EditorSurface& window, TextSurface& textWindow) : surface(window), textSurface(textWindow) {}
    TextEditor(const TextEditor&) = delete;
    TextEditor& operator=(const TextEditor&) = delete;

    // Shows a document from its start; null takes it away.
    void SetDocument(TextBuffer* newDocument);
    TextBuffer* GetTextBuffer() const { return document; }
    EditorSurface& Surface() const { return surface; }
    TextSurface& OwnSurface() const { return textSurface; }

    // DocumentView.
    bool HasWindow() const override { return surface.HasWindow(); }
    bool HasFocus() const override { return surface.HasFocus(); }
    void Invalidate() override { redraw.InvalidateAll(); }
    void InvalidateLines(uint32_t first, uint32_t last) override;
    void LineCountChanged() override;
    void TextChanged(uint32_t offset) override;
    void PlaceCaret(uint32_t line, uint32_t column) override;
    void PlaceSelection(uint32_t anchor, uint32_t caret) override;
    void PlaceTopLine(uint32_t line) override { ScrollTo(line); }
    void FollowChange(const TextChange& change) override;
    void EditFinished() override;
    uint32_t CaretLine() const override { return caretLine; }
    uint32_t CaretColumn() const override { return caretColumn; }
    uint32_t SelectionAnchor() const override { return selectionAnchor; }
    uint32_t CaretOffset() const override { return caretOffset; }
    uint32_t TopLine() const override { return topLine; }
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
    void OnLeftButtonDown(ClientPoint point, bool shift) override;
    void OnMouseMove(ClientPoint point) override;
    void OnDragTimer() override;
    void OnLeftButtonUp() override { drag.End(); }
    void OnCaptureLost() override { drag.OnCaptureLost(); }
    int32_t VisibleLines() const override { return visibleLines; }
    void SuspendRedraw() override { redraw.Suspend(); }
    void ResumeRedraw() override;

    // Opens the file that the line names in output, else selects the word.
    void OnDoubleClick();

    // Commands.
    bool IsCommandEnabled(ViewCommand command) const;
    bool ExecuteCommand(ViewCommand command);
    // The caret goes to the line's start (the last line's when there are fewer); `selectLine` selects it.
    void GoToLine(uint32_t line, bool selectLine);
    void ToggleBookmark(uint32_t line); // None32: the caret line

    // Find and replace; the texts and options are those of `findState`.
    // Takes a selection within one line as the search text. True when there was none such.
    bool TakeSearchTextFromSelection();
    bool FindNext(bool backward);
    bool ReplaceSelection(const Char* text, uint32_t length);
    // Returns false when it changed nothing although something was to be replaced; the user knows why.
    bool ReplaceAll(const Char* replacement, uint32_t length, bool inSelection);

    // Caret and selection.
    bool HasSelection() const { return selectionAnchor != caretOffset; }
    uint32_t SelectionStart() const { return selectionAnchor < caretOffset ? selectionAnchor : caretOffset; }
    uint32_t SelectionEnd() const { return selectionAnchor < caretOffset ? caretOffset : selectionAnchor; }
    uint32_t PreferredColumn() const { return preferredColumn; }
    bool IsOverwriting() const { return overwrite; }
    void ToggleOverwrite();
    // Clamps line and column. Extending leaves the anchor where it is.
    void MoveCaret(uint32_t line, uint32_t column, bool extend = false);
    void MoveCaretToOffset(uint32_t offset, bool extend);
    // Clamps both ends to the text.
    void SelectRange(uint32_t anchor, uint32_t caret);
    void SetTopLine(uint32_t line);
    // Empties the selection at the caret.
    void CollapseSelection();
    bool DeleteSelection();
    // Places the caret, the scroll bars and the status fields anew.
    void UpdateCaret(bool scrollIntoView);

    // Text. Open and edited lines are read in their edited form.
    bool IsActive() const { return document && document->ActiveView() == this; }
    // Makes the caret line the document's edit line.
    void OpenCaretLine();
    // To be called before the caret line is edited: scrolls it into view and opens it. Scrolling in the
    // middle of a change would be too late.
    void PrepareEdit();
    TextSpan LineText(uint32_t line) const;
    TextSpan CaretLineText() const { return LineText(caretLine); }
    uint32_t LineStart(uint32_t line) const;
    uint32_t TextLength() const;
    uint32_t LineCount() const { return document ? document->GetLineCount() : 1; }
    void OffsetToLineColumn(uint32_t offset, uint32_t& line, uint32_t& column) const;

    // Layout, in pixels.
    int32_t VisibleColumns() const { return visibleColumns; }
    int32_t HorizontalScroll() const { return horizontalScroll; }
    uint32_t LineNumberDigits() const { return lineNumberDigits; }
    int32_t GutterWidth() const;
    // A place of the line that starts at `lineStart`, at or left of the window's left edge: the farthest known.
    LinePlace PlaceLeftOfWindow(uint32_t lineStart) const;
    int32_t TextLeft() const; // gutter and margin
    // The engine's state at the start of a line, as scanning from the text's start would give it.
    uint32_t StateAt(uint32_t line);
    // The line is not clamped to the document.
    void PositionAt(ClientPoint point, uint32_t& line, uint32_t& column) const;
    void SetHorizontalScroll(int64_t pixels);

    // The highlighted pair; None32 without one.
    uint32_t BracePosition() const { return pair.position; }
    uint32_t BracePartner() const { return pair.partner; }

private:
    // A bracket at the caret and its partner, with their lines; all None32 without one.
    struct BracePair {
        uint32_t position = None32;
        uint32_t partner = None32;
        uint32_t line = None32;
        uint32_t partnerLine = None32;

        bool operator==(const BracePair&) const = default;
    };
    struct Status {
        uint32_t line = None32;
        uint32_t column = None32;
        uint32_t overwrite = None32;
        uint32_t lineEnding = None32;
    };

    LineLayout Layout() const;
    int64_t CaretX();
    void RecomputeDigits();
    void RecomputeColumns();
    void ScrollCaretIntoView(int64_t caretX);
    void ShowCaret(int64_t caretX);
    void UpdateScrollBars();
    ScrollState Scrolled(ScrollAxis axis) const;
    void ScrollTo(uint32_t line);
    // As MoveCaret, but neither opens the line nor matches brackets.
    void SetCaret(uint32_t line, uint32_t column, bool extend);
    void SetSelection(uint32_t anchor, uint32_t caret);
    void UpdateBraceMatch();
    BracePair FindBracePair();
    void DragTo(ClientPoint point);
    void InvalidateSelection(uint32_t anchor, uint32_t lineOfCaret);
    // How much longer (modulo 2^32) the open line is than the line in the store.
    uint32_t PendingGrowth() const;
    bool InsertTabAsSpaces();

    EditorSurface& surface;
    TextSurface& textSurface;
    int32_t visibleLines = 0; // client height / line height
    Redraw redraw{surface};
    TextBuffer* document = nullptr;
    uint32_t caretLine = 0;
    uint32_t caretColumn = 0; // characters; a tab counts as one
    uint32_t selectionAnchor = 0;
    uint32_t caretOffset = 0;
    uint32_t topLine = 0;
    bool owesScroll = false; // the caret was moved while there was no window to scroll it into
    LineStates states;       // of the engine at the top line and elsewhere
    MeasuredLine measured;
    int32_t horizontalScroll = 0;
    int32_t visibleColumns = 0;
    DragSelection drag{surface};
    uint32_t preferredColumn = 0;
    bool overwrite = false;
    BracePair pair;
    bool braceMatchDue = false; // an edit has moved the caret
    uint32_t lineNumberDigits = 7;
    MouseWheel wheel;
    ScrollBars bars{surface};
    Status sentStatus; // what the frame was told last
};
