#include "base/Scan.h"
#include "document/TextBuffer.h"

#include "support/FakeView.h"
#include "support/TestServices.h"
#include "support/TextDocument.h"

#include <cstdlib>
#include <string>
#include <vector>

// The input is a list of editing operations on a document with two views. Whatever it is: the text ends with
// a NUL, its lines are counted, look-ups agree with walking it, every caret lies in it, and undoing
// everything brings back the empty text, redoing it the last one.

namespace {

void Require(bool holds) {
    if (!holds) std::abort();
}

class Input {
public:
    Input(const uint8_t* bytes, size_t count) : at(bytes), end(bytes + count) {}
    bool IsEmpty() const { return at == end; }
    uint32_t Byte() { return at == end ? 0 : *at++; }
    // Mostly small, now and then a number of 32 bits.
    uint32_t Number() {
        const uint32_t first = Byte();
        return first < 0xF0 ? first : first << 28 | Byte() << 16 | Byte() << 8 | Byte();
    }
    Char Character() {
        static constexpr Char Characters[] = {u'a', u'b', u'_', u'#',  u'0',  u' ',      u'\t',
                                              u'+', u'{', u'*', u'\r', u'\n', u'\u00e4', 0xD83D};
        return Characters[Byte() % std::size(Characters)];
    }

private:
    const uint8_t* at;
    const uint8_t* end;
};

class Session {
public:
    Session() {
        document->AddRef();
        Require(document->MakeEmpty());
        for (FakeView*& view : views) view = FakeView::Create(*document);
        views[0]->Activate();
    }
    ~Session() { document->Release(); }

    void Operate(Input& input) {
        static constexpr void (Session::*Operations[])(Input&) = {
            &Session::Type,   &Session::Type,   &Session::Type,   &Session::Overtype, &Session::Erase,
            &Session::Insert, &Session::Delete, &Session::Move,   &Session::Select,   &Session::Undo,
            &Session::Redo,   &Session::Mark,   &Session::Search, &Session::Commit,   &Session::Group,
        };
        (this->*Operations[input.Byte() % std::size(Operations)])(input);
    }

    void Check() {
        Require(document->Content()[document->Length()] == 0);
        Require(document->GetLineCount() ==
                1 + Scan::Reference::CountLineFeeds(document->Content(), document->Length()));
        for (const FakeView* view : views) Require(view->CaretLine() < document->GetLineCount());
        const LineMark* previous = nullptr;
        for (uint32_t line = 0; LineMark* mark = document->NextMark(line, LineMark::Bookmark, !previous);) {
            Require(!previous || mark->line > previous->line);
            previous = mark;
            line = mark->line;
        }
    }

    // Line by line, and the line of each of its ends.
    void CheckLines() {
        static_cast<void>(document->CommitEdit());
        uint32_t start = 0;
        for (uint32_t line = 0; line < document->GetLineCount(); ++line) {
            Require(document->LineToOffset(line) == start);
            bool isLast = false;
            const uint32_t length = document->LineLength(start, isLast);
            uint32_t lineStart = 0;
            Require(document->OffsetToLine(start + length, lineStart) == line && lineStart == start);
            Require(isLast == (line + 1 == document->GetLineCount()));
            start += length + 1;
        }
    }

    void CheckSteps() {
        CloseGroups();
        static_cast<void>(document->CommitEdit());
        const std::u16string last = Text();
        while (document->CanDo(DocumentCommand::Undo)) static_cast<void>(document->Undo());
        Require(Text().empty());
        Require(document->GetLineCount() == 1);
        Require(!document->IsModified());
        // The last steps may come after what was undone already: redoing all of them passes by it.
        bool passed = last.empty();
        while (document->CanDo(DocumentCommand::Redo)) {
            static_cast<void>(document->Redo());
            passed = passed || Text() == last;
        }
        Require(passed);
    }

private:
    std::u16string Text() const { return {document->Content(), document->Length()}; }
    FakeView* Active() { return views[active]; }

    void Type(Input& input) {
        Require(document->TypeChar(Active(), input.Character(), Active()->CaretColumn(), true, false));
    }
    void Overtype(Input& input) {
        Require(document->TypeChar(Active(), input.Character(), input.Number(), true, true));
    }
    void Erase(Input& input) {
        const uint32_t column = input.Number();
        static_cast<void>(document->DeleteInEditLine(Active(), {column, column + input.Number()}));
    }
    void Insert(Input& input) {
        std::u16string text(input.Byte() % 9, u' ');
        for (Char& c : text) {
            c = input.Character();
            if (c == u'\r') c = u'\n';
        }
        const uint32_t offset = input.Number();
        Require(document->InsertText(offset, text.data(), static_cast<uint32_t>(text.size())));
    }
    void Delete(Input& input) {
        const uint32_t offset = input.Number();
        Require(document->DeleteText({offset, offset + input.Number()}));
    }
    void Move(Input& input) {
        if (input.Byte() % 4 == 0) active = 1 - active;
        Active()->Activate();
        const uint32_t line = input.Number();
        Active()->PutCaret(line, input.Number());
    }
    void Select(Input& input) {
        static_cast<void>(document->CommitEdit());
        const uint32_t anchor = input.Number();
        Active()->SelectRange(anchor, input.Number());
    }
    void CloseGroups() {
        for (; groups > 0; --groups) Require(document->EndGroup());
    }
    void Undo(Input&) {
        CloseGroups(); // as every command does before it ends
        Require(document->Undo());
    }
    void Redo(Input&) {
        CloseGroups();
        Require(document->Redo());
    }
    void Mark(Input& input) { document->ToggleBookmark(input.Number() % document->GetLineCount()); }
    void Search(Input& input) {
        std::u16string pattern(input.Byte() % 4, u' ');
        for (Char& c : pattern) c = input.Character();
        const uint32_t rules = input.Byte();
        SearchHit hit;
        const uint32_t from = input.Number();
        if (document->FindText(Query(pattern, rules & 1, rules & 2), {from, input.Number(), (rules & 4) != 0}, hit))
            Require(hit.offset + pattern.size() <= document->Length());
    }
    void Commit(Input&) { Require(document->CommitEdit()); }
    void Group(Input& input) {
        switch (input.Byte() % 3) {
        case 0:
            Require(document->BeginGroup());
            ++groups;
            break;
        case 1:
            if (groups > 0) --groups, static_cast<void>(document->EndGroup());
            break;
        default:
            if (groups > 0) --groups, document->AbandonGroup();
            break;
        }
    }

    TextBuffer* document = new TextBuffer(textServices);
    FakeView* views[2] = {};
    size_t active = 0;
    int groups = 0;
};

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* bytes, size_t count) {
    Input input(bytes, count < 4096 ? count : 4096);
    Session session;
    while (!input.IsEmpty()) {
        session.Operate(input);
        session.Check();
    }
    session.CheckLines();
    session.CheckSteps();
    return 0;
}
