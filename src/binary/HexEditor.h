#pragma once

#include "binary/BinaryDocument.h"
#include "binary/HexPage.h"
#include "binary/HexPattern.h"
#include "viewbase/EditorInput.h"
#include "viewbase/Redraw.h"
#include "viewbase/ViewCommand.h"

// The hex view without its window: rows of an offset column, a hex column and a text column, a caret on
// one nibble of one byte, selection, scrolling and every command. One per view; the document is not owned.
//
// The caret may stand behind the last byte. A selection covers the bytes from its lower end up to, not
// including, its upper one.
class HexEditor final : public HexDocumentView, public EditorInput, public DragTarget {
public:
    static constexpr uint32_t BytesPerRow = 16;
    // Characters of a full row's hex column, and where its text column begins, counted from the hex column.
    static constexpr uint32_t HexColumns = BytesPerRow * 3 - 1;
    static constexpr uint32_t TextColumn = HexColumns + 2;

    explicit HexEditor(EditorSurface& window) : surface(window) {}
    HexEditor(const HexEditor&) = delete;
    HexEditor& operator=(const HexEditor&) = delete;

    // Shows a document from its start; null takes it away.
    void SetDocument(BinaryDocument* newDocument);
    BinaryDocument* GetBinaryDocument() const { return document; }
    EditorSurface& Surface() const { return surface; }

    // DocumentView and HexDocumentView.
    bool HasWindow() const override { return surface.HasWindow(); }
    bool HasFocus() const override { return surface.HasFocus(); }
    void Invalidate() override { redraw.InvalidateAll(); }
    void RefreshStatus() override;
    void DocumentChanged(Document* changed) override;
    View* AsView() override { return surface.AsView(); }
    void Destroy() override { surface.DestroyView(); }
    void SetCaret(uint64_t offset, uint32_t subPosition) override;
    void MakeCaretVisible() override { UpdateCaret(true); }
    void ContentChanged() override;
    void TellFailedChange() override;

    // EditorInput.
    void OnAttached() override;
    void OnSize(bool coloursChanged) override;
    void OnFocus() override;
    void OnKeyDown(uint32_t key) override;
    void OnChar(Char character) override { TypeHexDigit(character); }
    void OnScroll(ScrollAxis axis, ScrollRequest request, int32_t trackPosition) override;
    void OnWheel(const WheelTurn& turn) override;
    DragSelection& Drag() override { return drag; }
    int32_t VisibleLines() const override { return visibleRows; }
    void SuspendRedraw() override { redraw.Suspend(); }
    void ResumeRedraw() override { static_cast<void>(redraw.Resume()); }

    // DragTarget.
    bool BeginSelection(ClientPoint point, bool extend) override;
    void ExtendSelection(ClientPoint point) override;

    // Commands.
    bool CanDo(ViewCommand command) const;
    // False for an unknown command.
    bool ExecuteCommand(ViewCommand command);
    // Overwrites the caret's nibble and moves on to the next one. Anything but a hex digit is ignored.
    void TypeHexDigit(Char digit);
    void SelectAll();
    // The selection as hex digits.
    void Copy();
    // Overwrites bytes at the caret by the hex digits on the clipboard, as many as fit.
    void Paste();
    bool CanPaste() const; // looks at all of the clipboard
    void Undo();
    void Redo();
    // Selects the next match of the newest entry of the search history, with the caret at its start.
    bool FindNext(bool backward);
    // An offset behind the file's end leads there.
    void GoTo(uint64_t offset);

    // Caret and selection.
    uint64_t Caret() const { return caret; }
    uint64_t Anchor() const { return anchor; }
    uint32_t LowNibble() const { return lowNibble; }
    bool HasSelection() const { return anchor != caret; }
    uint64_t SelectionStart() const { return anchor < caret ? anchor : caret; }
    uint64_t SelectionEnd() const { return anchor < caret ? caret : anchor; }
    // To the high nibble of a byte. Extending leaves the anchor where it is.
    void MoveTo(uint64_t offset, bool extend);
    void SelectBytes(uint64_t newAnchor, uint64_t newCaret);

    // Rows.
    uint64_t RowCount() const { return FileSize() / BytesPerRow + (FileSize() % BytesPerRow != 0); }
    uint64_t TopRow() const { return topRow; }
    // Makes a row the first one shown, the last one at most.
    void ScrollToRow(uint64_t row);
    // Width of the offset column in characters.
    uint32_t OffsetDigits() const { return offsetDigits; }
    // In pixels: the offset column, and it with the margin beside it.
    int32_t GutterWidth() const;
    int32_t TextLeft() const;
    // The byte at a client point, at most the file's end.
    uint64_t OffsetAt(ClientPoint point) const;
    HexPage& Page() { return page; }

private:
    uint64_t FileSize() const { return document ? document->FileSize() : 0; }
    ScrollState Scrolled() const { return {RowCount(), visibleRows, topRow}; }
    void ToHighNibble();
    void UpdateCaret(bool scrollIntoView);
    void ShowCaret();
    void UpdateScrollBar();
    void InvalidateBytes(uint64_t first, uint64_t second);
    HexPattern::Result ReadPasted(Array<uint8_t>& bytes) const;
    void TellReadOnly();
    bool Search(bool backward, ByteHit& hit);
    bool AppendSelection(WString& out);

    EditorSurface& surface;
    BinaryDocument* document = nullptr;
    uint64_t topRow = 0;
    uint32_t offsetDigits = 2;
    uint64_t caret = 0;
    uint64_t anchor = 0;
    HexPage page;
    uint32_t lowNibble = 0;  // 1 when the caret stands on the low nibble of its byte
    int32_t visibleRows = 0; // client height / line height
    Redraw redraw{surface};
    DragSelection drag{surface, *this};
    MouseWheel wheel;
    ScrollBars bars{surface};
    // What the frame was told last.
    bool statusSent = false;
    uint64_t sentCaret = 0;
};
