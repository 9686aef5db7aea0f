#pragma once

#include "document/TextBuffer.h"
#include "view/BracketMatch.h"
#include "view/HeldRanges.h"
#include "view/ShownText.h"
#include "view/StatusFields.h"
#include "view/TextCaret.h"
#include "view/TextViewport.h"

// The text view without its window: keeps its parts (the text as it is shown, the caret, the viewport) together, and
// in step with the document. What the user does comes through a TextInput; what keys and commands do is built on the
// operations here, in the files Editor*.h. One per view; the document is not owned.
//
// Offsets count the text as the user sees it (see ShownText).
class TextEditor final : public TextDocumentView {
public:
    // Both are the same window.
    TextEditor(EditorSurface& window, TextSurface& textWindow) : surface(window), textSurface(textWindow) {}
    TextEditor(const TextEditor&) = delete;
    TextEditor& operator=(const TextEditor&) = delete;

    // Shows a document from its start; null takes it away.
    void SetDocument(TextBuffer* newDocument);
    TextBuffer* GetTextBuffer() const { return text.Document(); }
    bool HasDocument() const { return text.Document() != nullptr; }

    // Its parts.
    EditorSurface& Surface() const { return surface; }
    TextSurface& GetTextSurface() const { return textSurface; }
    const ShownText& Text() const { return text; }
    const TextCaret& Caret() const { return caret; }
    TextViewport& Viewport() { return viewport; }
    HeldRanges& Held() { return heldRanges; }
    const TextViewport& Viewport() const { return viewport; }
    // In any view of the document.
    BracketPair MatchedBrackets() const { return BracketMatch::Highlighted(text); }
    uint32_t StateAt(uint32_t line) { return text.StateAt(line); }

    // DocumentView and TextDocumentView.
    bool HasWindow() const override { return surface.HasWindow(); }
    bool HasFocus() const override { return surface.HasFocus(); }
    void Invalidate() override { redraw.InvalidateAll(); }
    void InvalidateLines(LineRange lines) override;
    void LineCountChanged() override;
    void TextEdited(const TextChange& change) override { heldRanges.Follow(change); }
    void ForgetAfter(uint32_t offset) override;
    void PlaceCaret(TextPosition place) override;
    void PlaceSelection(TextSelection selection) override;
    void PlaceTopLine(uint32_t line) override { viewport.ScrollTo(line); }
    void FollowChange(const TextChange& change) override;
    void FollowEnd(TextPosition end) override;
    void EditFinished() override;
    // Grows with every edit of the document, by whichever view.
    uint32_t EditCount() const { return editCount; }
    TextPosition CaretPosition() const override { return caret.Position(); }
    TextSelection Selection() const override { return caret.Selection(); }
    uint32_t TopLine() const override { return viewport.TopLine(); }
    void RefreshStatus() override;
    void DocumentChanged(Document* changed) override;
    void RunStateChanged(Document* changed, bool running) override;
    View* AsView() override { return surface.AsView(); }
    void Destroy() override { surface.DestroyView(); }

    // The window. What it passes on is in EditorInput.h.
    void WindowAttached();
    void LayOut(bool coloursChanged);
    void FocusGained();
    int32_t VisibleLines() const { return viewport.VisibleLines(); }
    // Until redraw is resumed nothing is invalidated; calls nest.
    void SuspendRedraw() { redraw.Suspend(); }
    void ResumeRedraw();

    // Caret and selection. They clamp to the text and to where the caret may stop, which depends on whether it is the
    // user who moves it there. Extending leaves the anchor where it is.
    void MoveCaret(TextPosition place, bool extend = false, bool isUsersMove = false);
    void MoveCaretToOffset(uint32_t offset, bool extend);
    void SelectRange(TextSelection selection);
    // Empties the selection at the caret.
    void CollapseSelection();
    bool DeleteSelection();
    // The caret goes to the line's start (the last line's when there are fewer); `selectLine` selects it.
    void GoToLine(uint32_t line, bool selectLine);
    // Places the caret, the scroll bars and the status fields again.
    void UpdateCaret(bool scrollIntoView);
    void SetTopLine(uint32_t line);
    void ToggleBookmark(uint32_t line); // NoLine: the caret line
    bool IsOverwriting() const { return overwrite; }
    void ToggleOverwrite();
    // Makes the caret line the document's edit line.
    void OpenCaretLine();
    // To be called before the caret line is edited: scrolls it into view and opens it. Scrolling in the
    // middle of a change would be too late.
    void PrepareEdit();

private:
    // As MoveCaret, but neither opens the line nor matches brackets.
    void SetCaret(TextPosition place, bool extend, bool isUsersMove = false);
    void SetSelection(uint32_t anchor);
    void MatchBrackets();
    void RepaintBrackets(const BracketPair& pair);

    EditorSurface& surface;
    TextSurface& textSurface;
    Redraw redraw{surface};
    ShownText text;
    TextCaret caret;
    TextViewport viewport{surface, textSurface, text, redraw};
    uint32_t editCount = 0;
    HeldRanges heldRanges;
    bool matchDue = false; // an edit has moved the caret
    StatusFields status;
    bool overwrite = false;
    bool owesScroll = false; // the caret was moved while there was no window to scroll it into
};
