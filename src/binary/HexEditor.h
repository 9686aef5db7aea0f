#pragma once

#include "binary/BinaryDocument.h"
#include "binary/HexPage.h"
#include "binary/HexViewport.h"
#include "viewbase/EditorBase.h"

// The hex view without its window: a caret on one nibble of one byte, a selection, and its parts (the page that is
// shown, the viewport), which it keeps in step with the document. What the user does comes through a HexInput; what
// keys and commands do is built on the operations here, in HexKeys.h, HexCommands.h and what these include. One per
// view; the document is not owned.
//
// The caret may be after the last byte. A selection covers the bytes from its lower end up to, not including, its
// upper one.
class HexEditor final : public EditorBase<HexDocumentView> {
public:
    explicit HexEditor(EditorSurface& window) : EditorBase(window) {}

    // Shows a document from its start; null takes it away.
    void SetDocument(BinaryDocument* newDocument);
    BinaryDocument* GetBinaryDocument() const { return document; }
    Document* GetDocument() const { return document; }
    bool HasDocument() const { return document != nullptr; }
    uint64_t FileSize() const { return document ? document->FileSize() : 0; }

    // Its parts.
    HexPage& Page() { return page; }
    HexViewport& Viewport() { return viewport; }
    const HexViewport& Viewport() const { return viewport; }

    // HexDocumentView.
    void SetCaret(HexCaret newCaret) override;
    void MakeCaretVisible() override { UpdateCaret(true); }
    void ContentChanged() override;
    void ReportEditFailure() override;

    // The window. What it passes on is in EditorInput.h.
    void WindowAttached();
    void LayOut();
    void FocusGained();

    // Grows whenever the bytes may be others.
    uint32_t ChangeCount() const { return changeCount; }

    // Tells the user that this document is not to be edited.
    void ReportReadOnly();

    // Caret and selection.
    uint64_t Caret() const { return selection.caret; }
    uint64_t Anchor() const { return selection.anchor; }
    bool IsOnLowNibble() const { return lowNibble; }
    EditorSelection Selected() const override { return selection; }
    // The byte at a client point, at most the file's end.
    uint64_t PlaceAt(ClientPoint point) const { return viewport.OffsetAt(point, selection.caret); }
    // To the high nibble of a byte, at most to the file's end. Extending leaves the anchor where it is.
    void MoveCaret(uint64_t offset, bool extend);
    void GoTo(uint64_t offset) { MoveCaret(offset, false); }
    void ToHighNibble();
    void SelectBytes(EditorSelection selected);
    void SelectAll() { SelectBytes({0, FileSize()}); }
    void UpdateCaret(bool scrollIntoView) override;
    void ScrollTo(uint64_t row) override { viewport.ScrollTo(row); }

private:
    // EditorBase.
    void MoveAnchorToCaret() override { selection.anchor = selection.caret; }
    uint64_t CaretRow() const override { return RowOf(selection.caret); }
    uint64_t RowOf(uint64_t offset) const override { return offset / HexViewport::BytesPerRow; }
    const ShownRows& SeenRows() const override { return viewport.Rows(); }

    void RefreshStatus();

    BinaryDocument* document = nullptr;
    HexViewport viewport{surface, redraw};
    HexPage page;
    EditorSelection selection;
    uint32_t changeCount = 0;
    bool lowNibble = false; // the caret is on the low nibble of its byte
    // What the frame was told last.
    bool statusSent = false;
    uint64_t sentCaret = 0;
};
