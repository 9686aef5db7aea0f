#include "BenchSurface.h"
#include "SampleDocument.h"
#include "settings/IniFile.h"
#include "settings/Settings.h"
#include "syntax/EngineDefinition.h"
#include "view/BracketMatch.h"
#include "view/LineLayout.h"
#include "viewbase/ViewKey.h"

#include <cstring>
#include <string>
#include <vector>

// What a view works out for a paint, a key and a scroll, compared with colouring the same lines, with painting
// everything, with one scan of the text, or with a copy of it (memcpy); each name says with which.

namespace {

constexpr int Paints = 200; // one is too short to be timed

void MeasuringAWidth(const TextBuffer& document, Bench::Surface& surface) {
    const TextSpan text = {document.Content(), document.Length()};
    const LineLayout layout(surface.Metrics(), surface.Widths());
    std::vector<uint8_t> table(65536, 8);
    const auto plain = [&] {
        int64_t sum = 0;
        for (uint32_t i = 0; i < text.length; ++i) sum += table[text.text[i]];
        Bench::Keep(sum);
    };
    Bench::Check(layout.PositionOf(text, 1000) >= 8000, "a width");
    Bench::Compare(
        "widths of 100 M characters against a table of bytes",
        [&] { Bench::Keep(layout.PositionOf(text, text.length)); }, plain, 4.0);
}

void Painting(Bench::ShownDocument& shown, TextBuffer& document) {
    RowPlan plan;
    shown.editor.SetTopLine(1000);
    const uint64_t drawn = Bench::PaintRows(shown.editor, plan);
    Bench::Check(drawn > 500 && drawn < 61 * 121, "the characters of a window");
    const auto colour = [&] {
        for (int paint = 0; paint < Paints; ++paint) {
            uint32_t state = shown.editor.StateAt(1000);
            for (uint32_t line = 1000; line <= 1000 + Bench::Surface::Rows; ++line) {
                const TextSpan text = shown.editor.Text().Line(line);
                ColouredLine coloured;
                document.Engine()->ColourLine(0, text.text, text.length + 1, state, coloured);
                Bench::Keep(coloured);
            }
        }
    };
    const auto paintAll = [&] {
        for (int paint = 0; paint < Paints; ++paint) Bench::Keep(Bench::PaintRows(shown.editor, plan));
    };
    const auto paintOne = [&] {
        for (int paint = 0; paint < Paints; ++paint) Bench::Keep(Bench::PaintRows(shown.editor, plan, 480, 496));
    };
    Bench::Compare("planning a full paint against colouring its lines", paintAll, colour, 6.0);
    Bench::Compare("planning one row against planning 61", paintOne, paintAll, 1.0 / 20);
}

void TypingAndScrolling(Bench::ShownDocument& shown, TextBuffer& document) {
    RowPlan plan;
    const auto paintAll = [&] {
        for (int paint = 0; paint < Paints; ++paint) Bench::Keep(Bench::PaintRows(shown.editor, plan));
    };
    const auto type = [&] {
        for (int key = 0; key < Paints; ++key) {
            shown.input.OnChar(u'x');
            const auto top = static_cast<int32_t>(shown.editor.CaretLine() - shown.editor.TopLine()) * 16;
            Bench::Keep(Bench::PaintRows(shown.editor, plan, top, top + 16));
        }
    };
    // Far down: what is above must not be walked.
    shown.editor.MoveCaret({document.GetLineCount() / 2, 0});
    shown.surface.invalidations = shown.surface.strips = 0;
    shown.input.OnChar(u'x');
    Bench::Check(shown.surface.invalidations == 0 && shown.surface.strips == 1, "one strip a key");
    Bench::Compare("a key and its row against a full paint, in the middle of 100 MB", type, paintAll, 0.3);
    const auto undoTyping = [&] {
        while (document.CanDo(DocumentCommand::Undo)) static_cast<void>(document.Undo());
    };
    undoTyping();

    shown.editor.SetTopLine(document.GetLineCount() - 100);
    Bench::PaintRows(shown.editor, plan);
    const auto scrollUp = [&] {
        for (int step = 0; step < Paints; ++step) {
            shown.editor.SetTopLine(shown.editor.TopLine() - 1);
            Bench::Keep(Bench::PaintRows(shown.editor, plan, 0, 16));
        }
    };
    Bench::Compare("scrolling up by a line near the end against a full paint", scrollUp, paintAll, 3.0);
}

void GoingToTheEnd(Bench::ShownDocument& shown, TextBuffer& document) {
    RowPlan plan;
    const auto goToEnd = [&] {
        shown.Press(ViewKey::End, true);
        Bench::Keep(Bench::PaintRows(shown.editor, plan));
    };
    const auto goHome = [&] {
        shown.Press(ViewKey::Home, true);
        shown.editor.ForgetAfter(0); // nothing is known any more
    };
    uint32_t stopped = 0;
    const auto scan = [&] {
        Bench::Keep(document.Engine()->ScanState(document.Content(), document.Length(), 0, 0, stopped));
    };
    Bench::Compare("Ctrl+End and its paint against one state scan", {goToEnd, goHome}, {scan, {}}, 1.5);
}

// A bracket at the caret is matched on every move, here over the whole text.
void MatchingABracket(std::string sample) {
    for (char& c : sample) c = c == '(' ? ' ' : c;
    sample.back() = ')';
    Bench::SampleDocument loaded(sample);
    TextBuffer& document = *loaded;
    Bench::ShownDocument shown(document);
    const auto move = [&] { shown.editor.MoveCaretToOffset(document.Length(), false); };
    const auto scan = [&] {
        uint32_t stopped = 0;
        Bench::Keep(document.Engine()->ScanState(document.Content(), document.Length(), 0, 0, stopped));
    };
    move();
    Bench::Check(BracketMatch::Highlighted(shown.editor.Text()).partner.offset == NoOffset,
                 "the bracket has no partner");
    Bench::Compare("a bracket without a partner against one state scan", move, scan, 1.5);
}

void LongLine(const std::string& sample) {
    std::string line = sample;
    for (char& c : line) c = c == '\n' ? ' ' : c;
    Bench::SampleDocument document(line);
    Bench::ShownDocument shown(*document);
    RowPlan plan;
    const uint64_t drawn = Bench::PaintRows(shown.editor, plan);
    Bench::Check(drawn > 80 && drawn <= 121, "the characters of one row");
    std::vector<Char> copy(document->Length());
    const auto memcpyText = [&] {
        std::memcpy(copy.data(), document->Content(), copy.size() * sizeof(Char));
        Bench::Keep(copy);
    };
    Bench::Compare(
        "painting the start of a line of 100 M characters against memcpy",
        [&] { Bench::Keep(Bench::PaintRows(shown.editor, plan)); }, memcpyText, 1.0);
    shown.Press(ViewKey::End);
    Bench::Check(Bench::PaintRows(shown.editor, plan) > 50, "the characters of its end");
    Bench::Compare(
        "painting its end against memcpy", [&] { Bench::Keep(Bench::PaintRows(shown.editor, plan)); }, memcpyText, 40.0,
        3);
}

} // namespace

int main() {
    LoadSettings(IniFile());
    LoadEngineDefinitions(IniFile());
    const std::string sample = Bench::SampleBytes();
    {
        Bench::SampleDocument document(sample);
        Bench::ShownDocument shown(*document);
        MeasuringAWidth(*document, shown.surface);
        Painting(shown, *document);
        TypingAndScrolling(shown, *document);
        GoingToTheEnd(shown, *document);
    }
    MatchingABracket(sample);
    LongLine(sample);
    return Bench::ExitStatus();
}
