#include "SampleDocument.h"

#include "../tests/support/FakeView.h"
#include "settings/IniFile.h"
#include "syntax/EngineDefinition.h"

#include <cstring>
#include <vector>

// A typed character costs the same in a document of any size: typing in 100 MB against typing in 1 kB. An Enter costs
// moving what follows, so it is compared with a bare move of those bytes.

namespace {

const std::u16string Typed = u"int value = other->field[12] + 7; // and so on ";

// A document in which somebody types in the middle.
struct Typist {
    explicit Typist(const std::string& bytes) : document(bytes) {
        view = FakeView::Create(*document);
        view->Activate();
        middle = document->GetLineCount() / 2;
        view->SetTopLine(middle - std::min(middle, 20u));
    }
    void StartLine() {
        static_cast<void>(document->CommitEdit());
        Paint();
        view->PutCaret(middle, 0);
        static_cast<void>(document->LoadEditLine(middle));
    }
    // What painting looks up.
    void Paint() { document->LineToOffset(view->TopLine()); }
    void Type() {
        for (const Char ch : Typed) static_cast<void>(document->TypeChar(view, ch, view->CaretColumn(), true, false));
    }
    void Check() {
        StartLine();
        const uint32_t start = document->LineToOffset(middle);
        const uint32_t length = document->Length();
        Type();
        static_cast<void>(document->CommitEdit());
        Bench::Check(document->Length() == length + Typed.size(), "length after typing");
        Bench::Check(std::u16string(document->Content() + start, Typed.size()) == Typed, "typed text");
    }
    Bench::Side Typing() {
        // Writing back 100 MB empties the caches of the processor: the first word brings back what every
        // keystroke needs.
        return {[this] { Type(); },
                [this] {
                    StartLine();
                    Type();
                }};
    }

    Bench::SampleDocument document;
    FakeView* view;
    uint32_t middle;
};

void CompareTyping(Typist& large, Typist& small) {
    large.Check();
    small.Check();
    Bench::Compare("typing in 100 MB, against typing in 1 kB", large.Typing(), small.Typing(), 1.5, 101);
}

void CompareEnter(Typist& typist) {
    TextBuffer& document = *typist.document;
    const auto place = [&] { typist.StartLine(); };
    const auto enter = [&] { static_cast<void>(document.NewLine(typist.view, 0)); };

    place();
    const uint32_t start = document.LineToOffset(typist.middle);
    const uint32_t lines = document.GetLineCount();
    enter();
    Bench::Check(document.GetLineCount() == lines + 1 && document.Content()[start] == u'\n', "text after Enter");

    const size_t after = document.Length() - start;
    std::vector<Char> other(after + 2);
    std::memcpy(other.data(), document.Content() + start, after * sizeof(Char));
    const auto move = [&] {
        std::memmove(other.data() + 1, other.data(), after * sizeof(Char));
        Bench::Keep(other);
    };
    Bench::Compare("Enter in the middle of 100 MB, against moving what follows", {enter, place}, {move}, 1.5, 31);
    const auto undo = [&] { static_cast<void>(document.Undo()); };
    Bench::Compare("its undo, against the same", {undo, [&] { typist.Paint(); }}, {move}, 1.5, 31);
}

} // namespace

int main() {
    Heap::Start();
    LoadEngineDefinitions(IniFile());
    {
        Typist large(Bench::SampleBytes());
        Typist small(Bench::SampleBytes(1000));
        CompareTyping(large, small);
        CompareEnter(large);
    }
    ReleaseEngineDefinitions();
    return Bench::ExitStatus();
}
