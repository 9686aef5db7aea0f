#pragma once

#include "base/Array.h"
#include "view/LineRuns.h"
#include "viewbase/RowPicture.h"

class TextBuffer;
class TextEditor;
struct LineMark;

// Walks the rows of one paint from top to bottom: TextPainter draws what Next returns. A plan is kept by its view and
// used again, so that a warm paint allocates nothing.
class RowPlan final : public RowSource {
public:
    RowPlan() = default;
    RowPlan(const RowPlan&) = delete;
    RowPlan& operator=(const RowPlan&) = delete;

    // Starts a paint of the client rows [updateTop, updateBottom), or of all when that is empty. False
    // when there is nothing to paint (no document, no text, no line height).
    [[nodiscard]] bool Begin(TextEditor& textEditor, int32_t updateTop, int32_t updateBottom);
    bool Next(RowPicture& row) override;
    int32_t GutterWidth() const override { return gutter; }
    int32_t MarginRight() const override { return style.textLeft; }

private:
    TextSpan TakeLine();
    // How many characters of the line, its line feed included, have to be coloured.
    uint32_t SeenLength(TextSpan line, LinePlace from) const;
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
    const LineMark* mark = nullptr; // the first one at or after nextLine
};
