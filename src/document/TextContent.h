#pragma once

#include "base/WString.h"
#include "document/TextParts.h"
#include "document/TextSearch.h"
#include "syntax/SyntaxEngine.h"

// The text of a document as others read it: views, undo records, journal and searches. It is a part of TextBuffer,
// which alone derives from it and fills it. What is changed by edits is in `parts`.
//
// Offsets count the store, which does not have what is pending in the edit line; view/ShownText.h is the text with it.
// To have everything in the store, call TextBuffer::CommitEdit first. Pointers hold until the next edit.
class TextContent {
public:
    // The store. Without one, as before a load and after one that failed, the text is null and has one empty line.
    const Char* Content() const { return parts.store.Text(); }
    uint32_t Length() const { return parts.store.Length(); }
    uint32_t GetLineCount() const { return parts.store.LineCount(); }
    const TextParts& Parts() const { return parts; }

    // Lines in the store.
    //
    // Looking them up fills a cache, so it is not const. A line past the end is the last one, an offset past the end is
    // the end; no column is clamped.
    uint32_t LineToOffset(uint32_t line) { return parts.store.LineToOffset(line); }
    // Without a use on purpose: docs/oddities.md.
    uint32_t LineToOffsetPlus(TextPosition place) { return LineToOffset(place.line) + place.column; }
    uint32_t OffsetToLine(uint32_t offset, uint32_t& lineStart) { return parts.store.OffsetToLine(offset, lineStart); }
    TextPosition OffsetToLineColumn(uint32_t offset);
    // Characters from `start` up to the line feed or the terminator; `isLast` when it was the latter.
    uint32_t LineLength(uint32_t start, bool& isLast) const { return parts.store.LineLength(start, isLast); }

    // The file.
    bool IsReadOnly() const { return readOnly; }
    // Whether decoding has lost something: saving over the file that was loaded would change bytes that nobody has
    // edited, line breaks aside.
    bool LosesBytes() const { return losesBytes; }
    // Whether it was made as a new document, or recovered, and is in no file yet.
    bool IsNew() const { return isNew; }

    // The edit line, see EditLine.h.
    //
    // Text, start and length mean something only while a line is open; there is nothing pending otherwise.
    uint32_t EditLineNumber() const { return parts.editLine.Number(); } // NoLine while none is open
    const WString& EditLineText() const { return parts.editLine.Text(); }
    uint32_t EditLineStart() const { return parts.editLine.Start(); }
    uint32_t EditLineStoreLength() const { return parts.editLine.StoreLength(); }
    bool HasPendingEdit() const { return parts.editLine.IsPending(); }
    uint32_t EditLineGrowth() const { return parts.editLine.Growth(); }
    // Whether the edit line as it is now may change the colouring of the lines below.
    bool EditLineAffectsFollowingLines() const;
    // Passes [from, from + count) of the text as the user sees it to `take(const Char*, size_t)`, in up to three
    // pieces: from the store, from the edit line, and from the store again. False as soon as that says so.
    template <class Take> bool ForEachPiece(uint32_t from, uint32_t count, Take take) const;

    // Marked lines: see LineMarks.
    LineMark* NextMark(uint32_t line, LineMark::Flags mask, bool inclusive) const {
        return parts.marks.Next(line, mask, inclusive);
    }
    LineMark* PrevMark(uint32_t line, LineMark::Flags mask, bool inclusive) const {
        return parts.marks.Previous(line, mask, inclusive);
    }
    // Without a use on purpose: docs/oddities.md.
    LineMark* FindMark(uint32_t line) const { return parts.marks.Find(line); }

    // What colours the text; null for none.
    SyntaxEngine* Engine() const { return engine; }

    // Searches in the store.
    //
    // Whether the characters of a range, which ends with the text at the latest, are whole words.
    bool IsWholeWordAt(TextRange range) const;
    // The first match that starts in `area`; NoOffset without one.
    uint32_t FindFrom(const SearchQuery& query, TextRange area) const;

protected:
    ~TextContent() = default;

    TextParts parts;
    bool readOnly = false;
    bool losesBytes = false;
    bool isNew = false;
    SyntaxEngine* engine = nullptr;
};

template <class Take> bool TextContent::ForEachPiece(uint32_t from, uint32_t count, Take take) const {
    const bool isPending = HasPendingEdit();
    const uint32_t start = isPending ? EditLineStart() : Length();
    const uint32_t lineLength = isPending ? EditLineText().Length() : 0;
    // The terminator of the last line, which nothing follows, is not asked for.
    const struct {
        const Char* text;
        uint64_t start;
        uint64_t end;
    } pieces[] = {
        {Content(), 0, start},
        {EditLineText().Text(), start, uint64_t{start} + lineLength},
        {Content() + start + (isPending ? EditLineStoreLength() : 0), uint64_t{start} + lineLength, UINT64_MAX}};
    const uint64_t end = uint64_t{from} + count;
    for (const auto& piece : pieces) {
        const uint64_t first = piece.start > from ? piece.start : from;
        const uint64_t last = piece.end < end ? piece.end : end;
        if (first < last && !take(piece.text + (first - piece.start), static_cast<size_t>(last - first))) return false;
    }
    return true;
}
