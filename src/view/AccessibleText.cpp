#include "view/AccessibleText.h"

#include "base/WString.h"
#include "view/TextEditor.h"

#include <algorithm>

const Document* AccessibleText::ShownDocument() const { return editor.GetDocument(); }

bool AccessibleText::AppendValue(WString& out) {
    const TextSpan line = Text().Line(editor.CaretLine());
    return out.Append(line.text, std::min(line.length, LongestValue));
}

bool AccessibleText::IsReadOnly() const {
    const TextBuffer* document = editor.GetTextBuffer();
    return !document || document->IsReadOnly();
}

AccessibleState AccessibleText::State() const {
    return {editor.SelectionAnchor(), editor.CaretOffset(), editor.CaretLine(), editor.EditCount(), NameSum()};
}

const ShownText& AccessibleText::Text() const { return editor.Text(); }

HeldRanges& AccessibleText::Held() const { return editor.Held(); }

TextRange AccessibleText::All() const { return {0, Text().Length()}; }

TextRange AccessibleText::Selection() const { return editor.Selection().Range(); }

TextRange AccessibleText::Caret() const { return {editor.CaretOffset(), editor.CaretOffset()}; }

// The last line may be cut off by the window's edge.
uint32_t AccessibleText::LastSeenLine() const {
    const TextViewport& viewport = editor.Viewport();
    const int32_t lineHeight = editor.Surface().Metrics().lineHeight;
    const int32_t height = editor.Surface().Size().height;
    const int64_t rows = lineHeight > 0 && height > 0 ? (int64_t{height} + lineHeight - 1) / lineHeight : 1;
    return static_cast<uint32_t>(std::min<int64_t>(viewport.TopLine() + rows, Text().LineCount()) - 1);
}

TextRange AccessibleText::Seen() const {
    const uint32_t last = LastSeenLine();
    return {Text().LineStart(editor.Viewport().TopLine()), Text().LineStart(last) + Text().Line(last).length};
}

TextRange AccessibleText::At(ClientPoint point) const {
    const ClientSize size = editor.Surface().Size();
    point.x = std::clamp(point.x, 0, std::max(size.width, 1) - 1);
    point.y = std::clamp(point.y, 0, std::max(size.height, 1) - 1);
    TextPosition place = editor.Viewport().PositionAt(point);
    place.line = std::min(place.line, Text().LineCount() - 1);
    const uint32_t offset = Text().LineStart(place.line) + std::min(place.column, Text().Line(place.line).length);
    return {offset, offset};
}

void AccessibleText::Select(const AccessibleRange& range) {
    const TextRange chosen = range.Within(Text());
    editor.SelectRange({chosen.start, chosen.end});
}

void AccessibleText::ScrollTo(const AccessibleRange& range, bool toTop) {
    const TextRange shown = range.Within(Text());
    uint32_t line = Text().LineOf(toTop ? shown.start : shown.end);
    const uint32_t above = editor.Viewport().Rows().CountOrOne() - 1;
    // The last of the lines that fit in whole, and not the one that is cut off.
    if (!toTop) line -= std::min(line, above);
    editor.SetTopLine(line);
    editor.Viewport().ShowSideways(Text().PositionOf(shown.start));
    editor.UpdateCaret(false);
}

bool AccessibleText::AppendRectangles(const AccessibleRange& range, Array<ClientRectangle>& out) const {
    const TextViewport& viewport = editor.Viewport();
    const ClientSize size = editor.Surface().Size();
    const int32_t lineHeight = editor.Surface().Metrics().lineHeight;
    const TextRange part = range.Within(Text());
    if (part.IsEmpty() || lineHeight <= 0 || size.height <= 0) return true;
    const uint32_t top = viewport.TopLine();
    // A range that ends with a line feed has nothing of the line after it.
    const uint32_t last = std::min(LastSeenLine(), Text().LineOf(part.end - 1));
    for (uint32_t line = std::max(top, Text().LineOf(part.start)); line <= last; ++line) {
        const uint32_t start = Text().LineStart(line);
        const ColumnRange columns = {std::max(part.start, start) - start, part.end - start};
        ClientRectangle seen;
        seen.top = static_cast<int32_t>(line - top) * lineHeight;
        seen.bottom = std::min(seen.top + lineHeight, size.height);
        if (viewport.ColumnsSeen(line, columns, seen.left, seen.right) && !out.Append(seen)) return false;
    }
    return true;
}
