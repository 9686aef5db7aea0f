#pragma once

#include "base/Array.h"
#include "view/LineRuns.h"

class TextBuffer;
class TextEditor;
struct LineMark;

// Everything that one row of the window shows, in the order in which it is drawn: text, fill, number,
// guides, margin with bookmark, column guide. Pointers are valid until the next row.
struct RowPicture {
    uint32_t line = 0;
    int32_t top = 0;      // client y
    bool pastEnd = false; // below the last line: no text, no number; fill covers gutter and text area
    const DrawRun* runs = nullptr;
    uint32_t runCount = 0;
    const Char* text = nullptr;
    const int32_t* advances = nullptr;
    int32_t fillLeft = 0;         // from here to the right edge
    Colour fill = 0;              // the engine's colour of the line's end, else TextBg
    const Char* number = nullptr; // null when no line number is shown
    uint32_t numberLength = 0;
    const int32_t* guides = nullptr; // x of each indentation guide
    uint32_t guideCount = 0;
    bool bookmark = false;
    bool columnGuide = false;
    int32_t columnGuideX = 0;
};

// Walks the rows of one paint from top to bottom. A plan is kept by its view and used again, so that
// a warm paint allocates nothing.
class RowPlan {
public:
    RowPlan() = default;
    RowPlan(const RowPlan&) = delete;
    RowPlan& operator=(const RowPlan&) = delete;

    // Starts a paint of the client rows [updateTop, updateBottom), or of all when that is empty. False
    // when there is nothing to paint (no document, no text, no line height).
    bool Begin(TextEditor& textEditor, int32_t updateTop, int32_t updateBottom);
    // False behind the last row.
    bool Next(RowPicture& row);

    int32_t GutterWidth() const { return gutter; }
    int32_t MarginRight() const { return style.textLeft; }

private:
    static constexpr uint32_t NumberCapacity = 32;

    TextSpan TakeLine();
    // How many characters of the line, its line feed included, have to be coloured.
    uint32_t SeenLength(TextSpan line) const;
    void AddText(RowPicture& row, TextSpan line);
    void AddNumber(RowPicture& row);
    void AddGuides(RowPicture& row, TextSpan line);
    void AddMarks(RowPicture& row);

    TextEditor* editor = nullptr;
    TextBuffer* document = nullptr;
    RowStyle style;
    LineRuns runs;
    Array<int32_t> guides;
    Char number[NumberCapacity] = {};
    uint32_t topLine = 0;
    uint32_t nextLine = 0;
    uint32_t lastLine = 0;
    uint32_t storeStart = 0; // of nextLine in the store
    uint32_t lineStart = 0;  // of nextLine as the user sees the text
    uint32_t state = 0;      // of the engine, at the start of nextLine
    int32_t gutter = 0;
    const LineMark* mark = nullptr; // the first one at or behind nextLine
};
