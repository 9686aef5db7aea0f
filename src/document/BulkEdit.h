#pragma once

#include "base/Array.h"
#include "document/TextEdit.h"
#include "document/TextPosition.h"

// One place of a bulk change: `removed` characters at `offset` of the old text.
struct ReplacedRange {
    uint32_t offset;
    uint32_t removed;
};

// The same text put in many places at once, each time instead of what was there. For the text, the
// bookmarks and the views it is as if each place had been changed by a deletion and an insertion of its
// own, from the first to the last, but it costs one pass over the text and 8 bytes a place. Of the fields of TextEdit,
// `text` is what comes into each place, and `position` is the first of them.
class BulkEdit final : public TextEdit {
public:
    explicit BulkEdit(EditTarget& changed) : TextEdit(changed, State::InStore, false) {}
    // Takes `places` over; they ascend and do not overlap, and either none of them gets shorter or none
    // gets longer. False without memory.
    [[nodiscard]] bool SetUp(Array<ReplacedRange>& places, const Char* inserted, uint32_t length);
    [[nodiscard]] bool Undo() override;
    [[nodiscard]] bool Redo() override;
    void MoveViews(bool undoing) override;

private:
    // A place in the text as it is now, and what comes there instead.
    struct Place {
        uint32_t offset;
        uint32_t oldLength;
        uint32_t newLength;
        const Char* newText;
    };

    void RecordChange(bool undoing);
    // Only for views that the record does not know: it walks the change.
    void CountChangedLines(bool undoing);
    bool Grows() const { return ranges[0].removed <= count; }
    // Of a place in the new text; `removedBefore` characters were removed at earlier places.
    uint32_t NewOffset(size_t index, uint32_t removedBefore) const;
    Place PlaceOf(size_t index, uint32_t removedBefore, bool undoing) const;
    void ChangeText(bool undoing);
    // Move the text in place: from the end when the places grow, from the start when they shrink.
    void SpreadOut(bool undoing, uint32_t newLength);
    void CloseUp(bool undoing);
    void MoveMarks(bool undoing);
    void MoveMarksAt(LinesAfter removed, bool undoing);
    uint32_t LinesIn(TextRange range) const;
    // The line of an offset of the store as it is now.
    uint32_t LineAt(uint32_t offset) const;
    // Before the change: fills topLineAfter, with an offset.
    void MapTopLines();
    void MoveView(ViewState& viewState, uint32_t last);

    Array<ReplacedRange> ranges;
    WString removedText;       // all that was removed, in order
    uint32_t removedLines = 0; // line feeds in it
    bool hasRun = false;       // the views' states after the change are known
};
