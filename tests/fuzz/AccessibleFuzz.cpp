// Ranges of a text that is edited meanwhile and that follow it, with offsets and counts far outside, as a screen reader
// may hold and move them. What is checked: nothing reads or writes where it must not, every range is inside the text
// and not upside down, and moving says how far it went.

#include "base/WString.h"
#include "settings/IniFile.h"
#include "settings/Settings.h"
#include "support/TestView.h"
#include "support/TextDocument.h"
#include "view/AccessibleText.h"
#include "view/HeldRanges.h"
#include "viewbase/ViewKey.h"

#include <climits>
#include <cstdlib>
#include <string>

namespace {

class Input {
public:
    Input(const uint8_t* first, size_t size) : at(first), end(first + size) {}
    bool Left() const { return at < end; }
    uint32_t Byte() { return at < end ? *at++ : 0; }
    // Mostly near the text, else anywhere.
    uint32_t Offset() {
        const uint32_t byte = Byte();
        return byte < 250 ? byte : byte == 250 ? Byte() << 24 | Byte() : UINT32_MAX - (byte - 251);
    }
    int32_t Count() {
        const uint32_t byte = Byte();
        return byte == 255 ? INT_MAX : byte == 254 ? INT_MIN : static_cast<int32_t>(byte) - 127;
    }

private:
    const uint8_t* at;
    const uint8_t* end;
};

void Require(bool holds) {
    if (!holds) std::abort();
}

constexpr Char Characters[] = {u'a',  u'Z', u'_',   u'.',  u'(',   u' ',   u'\t',
                               u'\r', 0xE4, 0x3000, 0x301, 0xD83D, 0xDE00, 0xFFFF};

void Edit(TestView& view, Input& in) {
    const uint32_t what = in.Byte();
    if (what % 8 == 0) view.editor.MoveCaretToOffset(in.Offset() % (view.editor.Text().Length() + 1), what & 8);
    if (what % 8 == 1) return view.input.OnKeyDown(ViewKey::Delete);
    if (what % 8 == 2) return static_cast<void>(view.editor.GetTextBuffer()->Undo());
    view.input.OnChar(Characters[in.Byte() % std::size(Characters)]);
}

void Read(const ShownText& text, const AccessibleRange& range, Input& in) {
    const int32_t limit = in.Count();
    const TextRange part = range.Readable(text, limit);
    Require(part.start <= part.end && part.end <= text.Length());
    Require(limit < 0 || part.Length() <= static_cast<uint32_t>(limit));
    Require(limit == 0 || part.IsEmpty() == range.Within(text).IsEmpty());
    std::u16string copy(part.Length(), u'?');
    text.Copy(part, copy.data());
    for (uint32_t i = 0; i < part.Length(); ++i) Require(text.CharacterAt(part.start + i) == copy[i]);
}

void Find(const ShownText& text, const AccessibleRange& range, Input& in) {
    const Char wanted[] = {Characters[in.Byte() % std::size(Characters)],
                           Characters[in.Byte() % std::size(Characters)]};
    const uint32_t count = in.Byte() % 3;
    uint32_t found = 0;
    Require(range.Find(text, {wanted, count, (in.Byte() & 1) != 0, (in.Byte() & 1) != 0}, found));
    const TextRange within = range.Within(text);
    Require(found == NoOffset || (found >= within.start && found + count <= within.end));
}

void MoveIt(const ShownText& text, AccessibleRange& range, Input& in) {
    const auto unit = static_cast<AccessibleUnit>(in.Byte() % 7);
    const auto end = static_cast<RangeEnd>(in.Byte() % 2);
    const int32_t count = in.Count();
    const bool ends = (in.Byte() & 1) != 0;
    const int32_t moved = ends ? range.MoveEnd(text, end, unit, count) : range.Move(text, unit, count);
    Require(count < 0 ? moved <= 0 && moved >= count : moved >= 0 && moved <= count);
}

void Show(AccessibleText& accessible, const AccessibleRange& range, Input& in) {
    Array<ClientRectangle> rectangles;
    const auto x = static_cast<int32_t>(in.Offset());
    switch (in.Byte() % 4) {
    case 0:
        accessible.Select(range);
        Require(accessible.Selection() == range.Within(accessible.Text()));
        break;
    case 1:
        accessible.ScrollTo(range, (in.Byte() & 1) != 0);
        break;
    case 2:
        Require(accessible.At({x, static_cast<int32_t>(in.Offset())}).end <= accessible.Text().Length());
        break;
    default:
        Require(accessible.AppendRectangles(range, rectangles));
        for (size_t i = 0; i < rectangles.Count(); ++i) Require(rectangles[i].left < rectangles[i].right);
        break;
    }
}

void Step(TestView& view, AccessibleText& accessible, HeldRange (&ranges)[2], Input& in) {
    const ShownText& text = accessible.Text();
    const uint32_t what = in.Byte();
    AccessibleRange& range = ranges[what & 1].range;
    switch (what / 2 % 8) {
    case 0: {
        const uint32_t start = in.Offset();
        range = AccessibleRange({start, in.Offset()});
        break;
    }
    case 1:
        range.Expand(text, static_cast<AccessibleUnit>(in.Byte() % 9));
        break;
    case 2:
        MoveIt(text, range, in);
        break;
    case 3:
        range.MoveEndTo(text, static_cast<RangeEnd>(in.Byte() % 2), ranges[in.Byte() & 1].range, RangeEnd::End);
        break;
    case 4:
        Read(text, range, in);
        break;
    case 5:
        Find(text, range, in);
        break;
    case 6:
        Show(accessible, range, in);
        break;
    default:
        Edit(view, in);
        break;
    }
    const TextRange within = range.Within(text);
    Require(within.start <= within.end && within.end <= text.Length());
    Require(accessible.Seen().end <= text.Length());
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    Input in(data, size);
    LoadSettings(IniFile());
    {
        std::u16string initial;
        for (uint32_t i = in.Byte() % 64; i && in.Left(); --i) {
            const Char c = Characters[in.Byte() % std::size(Characters)];
            initial += c == u'\r' ? u'\n' : c;
        }
        const TextDocument document(initial);
        TestView* view = TestView::Create(*document);
        view->surface.SetSize(200, 70);
        view->input.OnSize(false);
        view->input.OnAttached();
        view->surface.TakeFocus();
        AccessibleText accessible(view->editor);
        HeldRange ranges[] = {{accessible.Held(), {}}, {accessible.Held(), {}}};
        for (uint32_t steps = 0; in.Left() && steps < 300; ++steps) Step(*view, accessible, ranges, in);
        WString value;
        Require(accessible.AppendValue(value) && value.Length() <= AccessibleElement::LongestValue);
    }
    ReleaseSettings();
    return 0;
}
