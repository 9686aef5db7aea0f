// Random keys, characters, clicks and commands in a text view with an engine, painting in between. What
// is checked: nothing reads or writes where it must not, the caret stays inside the text and, with WholeCharacters,
// outside of pairs, and undoing everything gives the text back.

#include "base/Surrogates.h"
#include "settings/AdditionalSettings.h"
#include "settings/IniFile.h"
#include "settings/Settings.h"
#include "support/TestView.h"
#include "support/TextDocument.h"
#include "syntax/EngineChoice.h"
#include "syntax/EngineDefinition.h"
#include "view/EditorFind.h"
#include "view/RowPlan.h"
#include "viewbase/FindState.h"
#include "viewbase/ViewKey.h"

#include <cstdlib>
#include <string>

namespace {

class Input {
public:
    Input(const uint8_t* first, size_t size) : at(first), end(first + size) {}
    bool Left() const { return at < end; }
    uint32_t Byte() { return at < end ? *at++ : 0; }
    uint32_t Word() { return Byte() << 8 | Byte(); }

private:
    const uint8_t* at;
    const uint8_t* end;
};

void Require(bool holds) {
    if (!holds) std::abort();
}

constexpr uint32_t Keys[] = {ViewKey::Left,
                             ViewKey::Right,
                             ViewKey::Up,
                             ViewKey::Down,
                             ViewKey::PageUp,
                             ViewKey::PageDown,
                             ViewKey::Home,
                             ViewKey::End,
                             ViewKey::Escape,
                             ViewKey::Insert,
                             ViewKey::Delete,
                             ViewKey::Backspace,
                             ViewKey::F2,
                             ViewKey::F3,
                             ViewKey::CloseBracket,
                             u'A',
                             u'C',
                             u'T',
                             u'V',
                             u'W',
                             u'X',
                             u'Y',
                             u'Z',
                             u'G'};

constexpr Char Characters[] = {u'a',  u'B', u'0', u'_', u'#',  u' ',   u'\t',  u'\r',  u'(',
                               u')',  u'{', u'}', u'"', u'\'', u'/',   u'*',   u'<',   u'>',
                               u'\\', u'-', 0x7F, 0xE4, 0x301, 0xD800, 0xDC00, 0xFFFF, u'\n'};

void ChangeSetting(Input& in) {
    uint32_t* const numbers[] = {&settings.SpacesPerTab, &settings.ReplaceTabs,     &settings.ShowWhitespace,
                                 &settings.MarginWidth,  &settings.ShowLineNumbers, &settings.VarWidthLineNumbers,
                                 &settings.ColumnGuide,  &settings.IndentGuide,     &settings.PasteKeepSelection};
    constexpr uint32_t Values[] = {0, 1, 2, 3, 4, 8, 20, 4294967295u};
    *numbers[in.Byte() % std::size(numbers)] = Values[in.Byte() % std::size(Values)];
}

void Replace(TextEditor& view, Input& in) {
    const Char pattern[] = {Characters[in.Byte() % 6], Characters[in.Byte() % 6], 0};
    const Char replacement[] = {Characters[in.Byte() % 8], Characters[in.Byte() % 8], u'x', 0};
    findState.wholeWord = in.Byte() & 1;
    findState.matchCase = in.Byte() & 1;
    static_cast<void>(findState.searchHistory.Add(pattern, 1 + in.Byte() % 2));
    EditorFind::ReplaceAll(view, replacement, in.Byte() % 4, in.Byte() & 1);
}

void Mouse(TextInput& view, Input& in) {
    const auto x = static_cast<int32_t>(in.Word()) - 20000;
    const auto y = static_cast<int32_t>(in.Byte()) - 100;
    switch (in.Byte() % 6) {
    case 0:
        view.Drag().OnLeftButtonDown({x, y}, (in.Byte() & 1) != 0);
        break;
    case 1:
        view.Drag().OnMouseMove({x, y});
        break;
    case 2:
        view.Drag().OnTimer();
        break;
    case 3:
        view.Drag().OnLeftButtonUp();
        break;
    case 4:
        view.OnDoubleClick();
        break;
    default:
        view.OnWheel({x, y, false});
        break;
    }
}

void Paint(TextEditor& view, RowPlan& plan, Input& in) {
    const auto top = static_cast<int32_t>(in.Byte() % 64);
    if (!plan.Begin(view, top, top + static_cast<int32_t>(in.Byte() % 64))) return;
    RowPicture row;
    uint32_t checksum = 0;
    while (plan.Next(row)) {
        for (uint32_t i = 0; i < row.runCount; ++i) {
            const DrawRun& run = row.runs[i];
            for (uint32_t k = 0; k < run.count; ++k)
                checksum += row.text[run.start + k] + static_cast<uint32_t>(row.advances[run.start + k]);
        }
    }
    volatile uint32_t sink = checksum;
    static_cast<void>(sink);
}

void Step(TestView& view, RowPlan& plan, Input& in) {
    FakeTextSurface& surface = view.surface;
    surface.ctrl = surface.shift = false;
    switch (in.Byte() % 10) {
    case 0:
    case 1:
        surface.ctrl = in.Byte() & 1;
        surface.shift = in.Byte() & 1;
        view.input.OnKeyDown(Keys[in.Byte() % std::size(Keys)]);
        break;
    case 2:
    case 3:
        surface.shift = in.Byte() % 4 == 0;
        view.input.OnChar(Characters[in.Byte() % std::size(Characters)]);
        break;
    case 4:
        Paint(view.editor, plan, in);
        break;
    case 5:
        Mouse(view.input, in);
        break;
    case 6:
        Replace(view.editor, in);
        break;
    case 7:
        ChangeSetting(in);
        break;
    case 8:
        surface.SetSize(static_cast<int32_t>(in.Word() % 2000), static_cast<int32_t>(in.Byte()));
        view.input.OnSize((in.Byte() & 2) != 0);
        break;
    default:
        view.input.OnScroll(in.Byte() & 1 ? ScrollAxis::Vertical : ScrollAxis::Horizontal,
                            static_cast<ScrollRequest>(in.Byte() % 7), static_cast<int32_t>(in.Word()));
        break;
    }
}

void Check(const TextDocument& document, const TextEditor& view) {
    const uint32_t length = view.Text().Length();
    Require(document.Text().size() == length);
    Require(view.CaretOffset() <= length && view.SelectionAnchor() <= length);
    Require(view.CaretLine() < view.Text().LineCount());
    Require(view.Text().LineStart(view.CaretLine()) + view.CaretColumn() == view.CaretOffset());
    if (!additionalSettings.WholeCharacters) return;
    const std::u16string text = document.Text();
    for (const uint32_t offset : {view.CaretOffset(), view.SelectionAnchor()})
        Require(!Surrogates::SplitsPair(text.data(), text.size(), offset));
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    Input in(data, size);
    LoadSettings(IniFile());
    LoadEngineDefinitions(IniFile());
    std::u16string initial;
    for (uint32_t i = in.Byte(); i && in.Left(); --i) {
        const Char c = Characters[in.Byte() % std::size(Characters)];
        initial += c == u'\r' ? u'\n' : c;
    }
    {
        TextDocument document(initial);
        constexpr const Char* Engines[] = {u"cpp", u"html", u"txt"};
        const uint32_t kind = in.Byte();
        additionalSettings.WholeCharacters = kind >> 7;
        document->AttachEngine(ChooseEngine(Engines[kind % 3], nullptr));
        TestView* shown = TestView::Create(*document);
        shown->surface.SetSize(400, 80);
        shown->input.OnSize(false);
        shown->input.OnAttached();
        shown->surface.TakeFocus();
        RowPlan plan;
        for (uint32_t steps = 0; in.Left() && steps < 300 && document->Length() < 20000; ++steps) {
            Step(*shown, plan, in);
            Check(document, shown->editor);
        }
        while (document->CanDo(DocumentCommand::Undo)) Require(document->Undo());
        Require(document.Text() == initial);
    }
    findState.Release();
    ReleaseEngineDefinitions();
    ReleaseSettings();
    return 0;
}
