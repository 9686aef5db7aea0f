#include "SampleDocument.h"

#include "../tests/support/FakeView.h"

// Typing with a journal against typing without one. What a journal costs are the calls of the system that write it, one
// for 200 characters: some 20 ns a character. That can be measured only because this is the bare insertion; a key in
// the program also lays out, colours and paints its line, which takes a thousand times as long. The bound is what would
// be lost in the noise; 1.18 to 1.23 is what it takes.

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
                    document->CommitEdit();
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
            document->TypeChar(view, words[static_cast<size_t>(i) % words.size()], view->CaretColumn(), true, false);
    }

    Bench::SampleDocument document;
    FakeView* view;
    uint32_t line;
    bool isKept;
};

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
    Compare("typing in 1 kB with a journal, against without", Bench::SampleBytes(1000));
    Compare("the same in 100 MB", Bench::SampleBytes());
    rmdir((Bench::ScratchName("bench-journal") + "/Journals").c_str());
    rmdir(Bench::ScratchName("bench-journal").c_str());
    return Bench::ExitStatus();
}
