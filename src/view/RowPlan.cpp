#include "view/RowPlan.h"

#include "settings/Settings.h"
#include "view/TextEditor.h"

namespace {

// A longer line is coloured only as far as it is seen, and some way on: whatever an engine looks at
// ahead of a character in view (a keyword, a marker) has to be there.
constexpr uint32_t LongLine = 1u << 14;
constexpr uint32_t LookAhead = 1u << 10;

} // namespace

bool RowPlan::Begin(TextEditor& textEditor, int32_t updateTop, int32_t updateBottom) {
    editor = &textEditor;
    document = editor->GetTextBuffer();
    style.metrics = editor->Surface().Metrics();
    const int32_t lineHeight = style.metrics.lineHeight;
    if (!document || !document->Content() || lineHeight <= 0) return false;
    const int32_t width = editor->Surface().Size().width;
    gutter = editor->Viewport().GutterWidth();
    style.textLeft = editor->Viewport().TextLeft();
    style.textRight = width > style.textLeft ? width : style.textLeft;
    style.scroll = editor->Viewport().HorizontalScroll();
    style.selection = editor->Caret().Selection().Range();
    style.selectionForeground = settings.SelFg;
    style.selectionBackground = settings.SelBg;
    style.showWhitespace = settings.ShowWhitespace != 0;
    runs.Begin(style, editor->GetTextSurface().Widths());

    topLine = editor->TopLine();
    const RowRange painted = editor->Viewport().Rows().Touched(updateTop, updateBottom, lineHeight);
    nextLine = static_cast<uint32_t>(painted.first);
    lastLine = static_cast<uint32_t>(painted.last);
    // After the open line these differ by what was typed in it. Characters come from the store, but colours and the
    // selection are in offsets of the text as it is seen.
    storeStart = document->LineToOffset(nextLine);
    lineStart = editor->Text().LineStart(nextLine);
    state = nextLine < editor->Text().LineCount() ? editor->StateAt(nextLine) : 0;
    mark = document->NextMark(nextLine, LineMark::Bookmark, true);
    return true;
}

bool RowPlan::Next(RowPicture& row) {
    if (nextLine > lastLine) return false;
    row = RowPicture();
    row.line = nextLine;
    row.top = static_cast<int32_t>(nextLine - topLine) * style.metrics.lineHeight;
    row.fill = settings.TextBg;
    row.pastEnd = nextLine >= editor->Text().LineCount();
    if (!row.pastEnd) {
        const TextSpan line = TakeLine();
        AddText(row, line);
        AddNumber(row);
        AddGuides(row, line);
        lineStart += line.length + 1;
    }
    AddMarks(row);
    ++nextLine;
    return true;
}

// The text of the next line; the walk moves on past it in the store.
TextSpan RowPlan::TakeLine() {
    if (nextLine == document->EditLineNumber()) {
        storeStart += document->EditLineStoreLength();
        return editor->Text().Line(nextLine);
    }
    bool isLast = false;
    // Where it starts is known from the line before, and need not be looked up for each row.
    const TextSpan line = {document->Content() + storeStart, document->LineLength(storeStart, isLast)};
    storeStart += line.length + 1;
    return line;
}

uint32_t RowPlan::SeenLength(TextSpan line, LinePlace from) const {
    if (line.length <= LongLine) return line.length + 1;
    const LineLayout layout(style.metrics, editor->GetTextSurface().Widths());
    const int64_t right = int64_t(style.scroll) + style.textRight - style.textLeft;
    const uint32_t seen = layout.ColumnsWithin(line, right, from);
    return line.length - seen > LookAhead ? seen + LookAhead : line.length + 1;
}

void RowPlan::AddText(RowPicture& row, TextSpan line) {
    const LinePlace from = editor->Viewport().PlaceLeftOfWindow(lineStart);
    const uint32_t seen = SeenLength(line, from);
    const uint32_t entered = state;
    const ColourSpan plain = {settings.TextFg, settings.TextBg, seen};
    ColouredLine coloured = {&plain, 1, NoFill};
    if (SyntaxEngine* engine = document->Engine()) {
        // What the engine carries belongs to this place: the scan below starts here again.
        const uint32_t carried = engine->CarriedState();
        engine->ColourLine(lineStart, line.text, seen, state, coloured);
        // Only a part was coloured: the next line, if one is painted, needs the state at the end of all of it.
        if (seen <= line.length && nextLine < lastLine) {
            engine->SetCarriedState(carried);
            state = engine->ScanLines(line.text, line.length + 1, entered);
        }
    }
    static_cast<void>(runs.Build(line.text, lineStart, coloured.spans, coloured.count, from)); // as far as it came
    row.runs = runs.Runs();
    row.runCount = runs.RunCount();
    row.text = runs.Text();
    row.advances = runs.Advances();
    row.fillLeft = runs.End();
    if (coloured.fill != NoFill) row.fill = coloured.fill;
}

// Right-aligned in the gutter's digits, counted from 1.
void RowPlan::AddNumber(RowPicture& row) {
    if (!settings.ShowLineNumbers) return;
    uint32_t at = NumberCapacity;
    uint64_t rest = uint64_t(nextLine) + 1;
    for (; rest; rest /= 10) number[--at] = static_cast<Char>(u'0' + rest % 10);
    const uint32_t digits = editor->Viewport().LineNumberDigits();
    while (NumberCapacity - at < digits) number[--at] = u' ';
    row.number = number + at;
    row.numberLength = NumberCapacity - at;
}

// A guide at each level of indentation that is followed by further indentation.
void RowPlan::AddGuides(RowPicture& row, TextSpan line) {
    guides.Clear();
    if (!settings.IndentGuide) return;
    const uint32_t size = TabSize();
    const int64_t average = style.metrics.averageWidth;
    int64_t x = -int64_t(style.scroll);
    uint32_t columns = 0;
    for (uint32_t i = 0; i < line.length && x + style.textLeft < style.textRight; ++i) {
        const Char character = line.text[i];
        if (character != u' ' && character != u'\t') break;
        const uint32_t step = character == u'\t' ? size : 1;
        columns += step;
        if (columns >= size + 1) {
            const int64_t at = average / 2 + x + style.textLeft;
            if (at > style.textLeft && !guides.Append(static_cast<int32_t>(at))) break;
            columns -= size;
        }
        x += step * average;
    }
    row.guides = guides.Items();
    row.guideCount = static_cast<uint32_t>(guides.Count());
}

void RowPlan::AddMarks(RowPicture& row) {
    if (mark && mark->line == nextLine) {
        row.bookmark = true;
        mark = document->NextMark(nextLine, LineMark::Bookmark, false);
    }
    if (!settings.ColumnGuide) return;
    const int64_t x = int64_t(settings.ColumnGuide) * style.metrics.averageWidth - style.scroll + style.textLeft;
    row.columnGuide = x >= 0 && x < style.textRight;
    row.columnGuideX = row.columnGuide ? static_cast<int32_t>(x) : 0;
}
