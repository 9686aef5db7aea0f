#pragma once

#include "base/Heap.h"
#include "base/Types.h"

// One run of a coloured line.
struct ColourSpan {
    Colour foreground;
    Colour background;
    uint32_t length; // characters
};

// The end of a line is painted with this colour from the text to the right edge; NoFill leaves it to
// the view's own background.
constexpr Colour NoFill = 0xFFFFFFFFu;

// What colouring a line hands out. The spans belong to the engine and are valid until its next call.
struct ColouredLine {
    const ColourSpan* spans = nullptr;
    uint32_t count = 0;
    Colour fill = NoFill;
};

// Characters [start, end) of the document, in document offsets, painted in colours of their own. Both
// ends are NoOffset when cleared.
struct HighlightRange {
    uint32_t start = NoOffset;
    uint32_t end = NoOffset;
    Colour foreground = 0;
    Colour background = 0;
    // Kept for the view; engines do not read them.
    Colour fill = NoFill;
    uint32_t line = NoLine; // of the document
};

// Colours the lines of one document and carries a state from line to line. State 0 is the normal one
// and the state of the first line; the other values are the engine's own. Shared by reference.
class SyntaxEngine : public HeapObject {
public:
    static constexpr uint32_t HighlightCount = 2; // a bracket and its partner

    virtual uint32_t AddRef() = 0;
    virtual uint32_t Release() = 0; // at zero the engine destroys itself
    // Colours the `length` characters at document offset `offset`, and moves `state` on to the
    // next line. Returns the number of characters coloured: all, unless an end marker stopped the
    // engine; 0 when memory ran out.
    virtual uint32_t ColourLine(uint32_t offset, const Char* text, uint32_t length, uint32_t& state,
                                ColouredLine& line) = 0;
    // The state after text[start, length) (any number of lines) entered in `state`; `stopped` is where
    // the scan ended.
    virtual uint32_t ScanState(const Char* text, uint32_t length, uint32_t start, uint32_t state,
                               uint32_t& stopped) = 0;
    // Whether a line with this text may change the states of the lines after it.
    virtual bool MayChangeState(const Char* text, uint32_t length) = 0;
    // Sets a highlight, by its index below HighlightCount, or clears it when `range` is null; other indices are
    // ignored.
    virtual void SetHighlight(uint32_t index, const HighlightRange* range) = 0;
    // As it was set; a cleared one where there is none.
    virtual HighlightRange Highlight(uint32_t) const { return {}; }
    // The engine's text ends at this marker, letter case ignored. False without memory.
    virtual bool SetEndMarker(const Char* marker) = 0;
    // Each opening bracket followed by its closing one.
    virtual const Char* BraceCharacters() const = 0;
    // The state after `length` characters of whole lines, as colouring them in turn gives it. ScanState
    // is not that exact: it lets a string continue over a line end, or tries comment starts in another
    // order. `stopped` is the offset of the end marker, or `length`.
    virtual uint32_t ScanLinesToEnd(const Char* text, uint32_t length, uint32_t state, uint32_t& stopped) {
        return ScanState(text, length, 0, state, stopped);
    }
    uint32_t ScanLines(const Char* text, uint32_t length, uint32_t state) {
        uint32_t stopped = 0;
        return ScanLinesToEnd(text, length, state, stopped);
    }

    // What the last coloured or scanned line carries over to the next one in addition to the state: 0, or in markup the
    // state after an attribute value. ColourLine and ScanLines continue from it, so a caller that jumps to another line
    // sets it first.
    virtual uint32_t CarriedState() const { return 0; }
    virtual void SetCarriedState(uint32_t) {}

protected:
    ~SyntaxEngine() = default;
};
