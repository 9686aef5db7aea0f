#include "BenchSurface.h"
#include "SampleDocument.h"
#include "settings/IniFile.h"
#include "settings/Settings.h"
#include "syntax/EngineDefinition.h"

#include "../tests/support/FakeView.h"

// Typing with a journal against typing without one: as a user's keys arrive, each with the row that is laid out and
// coloured for it, and as the bare insertion. What a journal costs are the calls of the system that write it, one for
// 200 characters: some 20 ns a character, which only the bare insertion makes visible (1.18 to 1.23).

namespace {

// Nothing is typed into the two documents of a comparison but with their own setting.
class Typist {
public:
    Typist(const std::string& bytes, bool hasJournal) : document(bytes), isKept(hasJournal) {
        view = FakeView::Create(*document);
        view->Activate();
        line = document->GetLineCount() / 2;
    }
    // As many characters as make several entries.
    Bench::Side Typing() {
        return {[this] { Type(2000); },
                [this] {
                    KeepJournals(isKept);
                    static_cast<void>(document->CommitEdit());
                    view->PutCaret(line, 0);
                    Bench::Check(document->LoadEditLine(line), "the line");
                    Type(100);
                    Bench::Check(document->FlushJournal(), "the journal");
                }};
    }

private:
    void Type(int count) {
        const std::u16string words = u"int value = other->field[12] + 7; // and so on ";
        for (int i = 0; i < count; ++i)
            static_cast<void>(document->TypeChar(view, words[static_cast<size_t>(i) % words.size()],
                                                 view->CaretColumn(), true, false));
    }

    Bench::SampleDocument document;
    FakeView* view;
    uint32_t line;
    bool isKept;
};

// The same through a view, with what it works out for the row of each key.
class ViewTypist {
public:
    ViewTypist(const std::string& bytes, bool hasJournal) : document(bytes), shown(*document), isKept(hasJournal) {
        shown.editor.MoveCaret({document->GetLineCount() / 2, 0});
    }
    Bench::Side Typing() {
        return {[this] { Type(2000); },
                [this] {
                    KeepJournals(isKept);
                    shown.input.OnChar(u'\r');
                    const int64_t length = document->Length();
                    Type(100);
                    static_cast<void>(document->CommitEdit());
                    Bench::Check(document->Length() == length + 101 && drawn > 100, "the keys and their rows");
                    Bench::Check(document->FlushJournal(), "the journal");
                }};
    }

private:
    void Type(int count) {
        drawn = 0;
        for (int i = 0; i < count; ++i) {
            shown.input.OnChar(u'x');
            const auto top = static_cast<int32_t>(shown.editor.CaretLine() - shown.editor.TopLine()) * 16;
            drawn += Bench::PaintRows(shown.editor, plan, top, top + 16);
            if (i % 60 == 59) shown.input.OnChar(u'\r');
        }
    }

    Bench::SampleDocument document;
    Bench::ShownDocument shown;
    RowPlan plan;
    uint64_t drawn = 0;
    bool isKept;
};

void CompareKeys(const char* name, const std::string& bytes) {
    ViewTypist with(bytes, true);
    ViewTypist without(bytes, false);
    Bench::Compare(name, with.Typing(), without.Typing(), 1.03, 15);
}

void Compare(const char* name, const std::string& bytes) {
    Typist with(bytes, true);
    Typist without(bytes, false);
    Bench::Compare(name, with.Typing(), without.Typing(), 1.1, 15);
}

} // namespace

int main() {
    Heap::Start();
    const std::u16string recovery = Bench::ScratchPath("bench-journal");
    Platform::SetRecoveryFolder(recovery.c_str());
    LoadSettings(IniFile());
    LoadEngineDefinitions(IniFile());
    CompareKeys("keys and their rows with a journal, against without", Bench::SampleBytes(100'000));
    Compare("bare insertion in 1 kB with a journal, against without", Bench::SampleBytes(1000));
    Compare("the same in 100 MB", Bench::SampleBytes());
    rmdir((Bench::ScratchName("bench-journal") + "/Journals").c_str());
    rmdir(Bench::ScratchName("bench-journal").c_str());
    return Bench::ExitStatus();
}
