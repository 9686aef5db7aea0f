#pragma once

#include "binary/BinaryDocument.h"
#include "binary/HexPage.h"
#include "binary/HexViewport.h"

// What is selected, by offsets: from the anchor to the caret, whichever comes first.
struct HexSelection {
    uint64_t anchor = 0;
    uint64_t caret = 0;
};

// The hex view without its window: a caret on one nibble of one byte, a selection, and its parts (the page that is
// shown, the viewport), which it keeps in step with the document. What the user does comes through a HexInput; what
// keys and commands do is built on the operations here, in HexKeys.h, HexCommands.h and what these include. One per
// view; the document is not owned.
//
// The caret may be after the last byte. A selection covers the bytes from its lower end up to, not including, its
// upper one.
class HexEditor final : public HexDocumentView {
public:
    explicit HexEditor(EditorSurface& window) : surface(window) {}
    HexEditor(const HexEditor&) = delete;
    HexEditor& operator=(const HexEditor&) = delete;

    // Shows a document from its start; null takes it away.
    void SetDocument(BinaryDocument* newDocument);
    BinaryDocument* GetBinaryDocument() const { return document; }
    Document* GetDocument() const { return document; }
    bool HasDocument() const { return document != nullptr; }
    uint64_t FileSize() const { return document ? document->FileSize() : 0; }

    // Its parts.
    EditorSurface& Surface() const { return surface; }
    HexPage& Page() { return page; }
    HexViewport& Viewport() { return viewport; }
    const HexViewport& Viewport() const { return viewport; }

    // DocumentView and HexDocumentView.
    bool HasWindow() const override { return surface.HasWindow(); }
    bool HasFocus() const override { return surface.HasFocus(); }
    void Invalidate() override { redraw.InvalidateAll(); }
    void DocumentChanged(Document* changed) override;
    View* AsView() override { return surface.AsView(); }
    void Destroy() override { surface.DestroyView(); }
    void SetCaret(HexCaret newCaret) override;
    void MakeCaretVisible() override { UpdateCaret(true); }
    void ContentChanged() override;
    void ReportEditFailure() override;

    // The window. What it passes on is in EditorInput.h.
    void WindowAttached();
    void LayOut();
    void FocusGained();
    // Until redraw is resumed nothing is invalidated; calls nest.
    void SuspendRedraw() { redraw.Suspend(); }
    void ResumeRedraw() { static_cast<void>(redraw.Resume()); }

    // Grows whenever the bytes may be others.
    uint32_t ChangeCount() const { return changeCount; }

    // Tells the user that this document is not to be edited.
    void ReportReadOnly();

    // Caret and selection.
    uint64_t Caret() const { return caret; }
    uint64_t Anchor() const { return anchor; }
    bool IsOnLowNibble() const { return lowNibble; }
    bool HasSelection() const { return anchor != caret; }
    uint64_t SelectionStart() const { return anchor < caret ? anchor : caret; }
    uint64_t SelectionEnd() const { return anchor < caret ? caret : anchor; }
    // The byte at a client point, at most the file's end.
    uint64_t OffsetAt(ClientPoint point) const { return viewport.OffsetAt(point, caret); }
    // To the high nibble of a byte, at most to the file's end. Extending leaves the anchor where it is.
    void MoveTo(uint64_t offset, bool extend);
    void GoTo(uint64_t offset) { MoveTo(offset, false); }
    void ToHighNibble();
    void SelectBytes(HexSelection selection);
    void SelectAll() { SelectBytes({0, FileSize()}); }
    // Empties the selection at the caret.
    void CollapseSelection();
    // Places the caret, the scroll bar and the status field again.
    void UpdateCaret(bool scrollIntoView);

private:
    void RefreshStatus();

    EditorSurface& surface;
    BinaryDocument* document = nullptr;
    Redraw redraw{surface};
    HexViewport viewport{surface, redraw};
    HexPage page;
    uint64_t caret = 0;
    uint64_t anchor = 0;
    uint32_t changeCount = 0;
    bool lowNibble = false; // the caret is on the low nibble of its byte
    // What the frame was told last.
    bool statusSent = false;
    uint64_t sentCaret = 0;
};
