// Random editing by several views, compared step by step with the plain model.

#include "document/TextBuffer.h"

#include "core/document/TextModel.h"
#include "support/FakeEngine.h"
#include "support/FakeView.h"
#include "support/Random.h"
#include "support/TextDocument.h"

#include <gtest/gtest.h>

namespace {

class RandomEditing {
public:
    RandomEditing(uint32_t seed, const std::u16string& text)
        : random(seed), document(text), model(text), letters(u"ab_# ;\u00e4  \t") {
        for (int i = 0; i < 2; ++i) AddView();
        Use(views[0]);
    }

    void Step() {
        struct Operation {
            uint32_t weight;
            void (RandomEditing::*run)();
        };
        static constexpr Operation Operations[] = {
            {40, &RandomEditing::TypeRun},      {8, &RandomEditing::Overtype},    {10, &RandomEditing::PressEnter},
            {12, &RandomEditing::DeleteInLine}, {14, &RandomEditing::InsertText}, {14, &RandomEditing::DeleteText},
            {24, &RandomEditing::MoveCaret},    {8, &RandomEditing::Select},      {4, &RandomEditing::Scroll},
            {6, &RandomEditing::UseOther},      {14, &RandomEditing::Undo},       {12, &RandomEditing::Redo},
            {6, &RandomEditing::Group},         {8, &RandomEditing::ToggleMark},  {1, &RandomEditing::ClearMarks},
            {4, &RandomEditing::Search},        {3, &RandomEditing::Commit},      {2, &RandomEditing::Save},
            {2, &RandomEditing::EndTyping},     {2, &RandomEditing::ChangeViews},
        };
        uint32_t total = 0;
        for (const Operation& operation : Operations) total += operation.weight;
        uint32_t at = random.Below(total);
        for (const Operation& operation : Operations) {
            if (at < operation.weight) return (this->*operation.run)();
            at -= operation.weight;
        }
    }

    void Compare() {
        ASSERT_EQ(document.Text(), model.text);
        ASSERT_EQ(document->GetLineCount(), model.LineCount());
        ASSERT_EQ(document->Content()[document->Length()], 0);
        ASSERT_EQ(document.MarkedLines(), std::vector<uint32_t>(model.marks.begin(), model.marks.end()));
        ASSERT_EQ(document->IsModified(), model.IsModified());
        ASSERT_EQ(document->CanDo(DocumentCommand::Undo), !model.undo.empty());
        ASSERT_EQ(document->CanDo(DocumentCommand::Redo), !model.redo.empty());
        ASSERT_EQ(document.UndoStates(NewestRecords), States(model.undo));
        ASSERT_EQ(document.RedoStates(NewestRecords), States(model.redo));
        for (const FakeView* view : views) {
            const TextModel::View place{view->CaretLine(), view->CaretColumn(), view->SelectionAnchor(),
                                        view->CaretOffset(), view->TopLine()};
            ASSERT_EQ(place, model.views.at(view));
        }
        CompareEditLine();
        CompareLookUps();
    }

private:
    static constexpr size_t NewestRecords = 20; // are compared after every step

    static std::vector<uint32_t> States(const std::vector<TextModel::Record>& records) {
        std::vector<uint32_t> states;
        for (auto record = records.rbegin(); record != records.rend() && states.size() < NewestRecords; ++record) {
            const uint32_t edit = record->pending ? 3 : 2;
            states.push_back(record->kind == TextModel::Record::Begin ? 0
                             : record->kind == TextModel::Record::End ? 1
                                                                      : edit);
        }
        return states;
    }

    void CompareEditLine() {
        if (document->EditLineNumber() == NoLine) return;
        std::u16string line = model.Line(document->EditLineNumber());
        line += document->EditLineNumber() + 1 < model.LineCount() ? u'\n' : u'\0';
        ASSERT_EQ(document.EditLineText(), line);
        ASSERT_EQ(document->EditLineStart(), model.LineStart(document->EditLineNumber()));
    }

    // Against the store, which lags behind the text while something is pending.
    void CompareLookUps() {
        const TextModel store(document.Store());
        const LineCache& cache = TextBufferProbe::Cache(*document);
        for (int round = 0; round < 2; ++round) {
            ASSERT_LE(cache.Count(), LineCache::Limit);
            for (auto* entry = cache.Head(); entry; entry = entry->next) {
                ASSERT_EQ(entry->offset, store.LineStart(entry->line));
                ASSERT_LT(entry->line, store.LineCount());
            }
            const uint32_t line = random.Below(store.LineCount() + 2);
            ASSERT_EQ(document->LineToOffset(line), store.LineStart(line));
            const auto offset = random.Below(store.text.size() + 1);
            uint32_t start = 0;
            ASSERT_EQ(document->OffsetToLine(offset, start), store.LineOf(offset));
            ASSERT_EQ(start, store.LineStart(store.LineOf(offset)));
            bool isLast = false;
            ASSERT_EQ(document->LineLength(start, isLast), store.Line(store.LineOf(offset)).size());
            ASSERT_EQ(isLast, store.LineOf(offset) + 1 == store.LineCount());
        }
    }

    FakeView* Active() { return active; }
    void Use(FakeView* view) {
        active = view;
        view->Activate();
        model.Activate(view);
    }
    void AddView() {
        views.push_back(FakeView::Create(*document, !random.OneIn(3)));
        model.views[views.back()] = {};
    }

    std::u16string RandomText(size_t most, bool withLines) {
        std::u16string text(1 + random.Below(most), u' ');
        for (char16_t& c : text) c = withLines && random.OneIn(5) ? u'\n' : random.Pick(letters);
        return text;
    }
    void Type(Char ch, bool overwrite) {
        ASSERT_TRUE(document->TypeChar(active, ch, active->CaretColumn(), true, overwrite));
        model.Type(active, ch, overwrite);
    }

    void TypeRun() {
        for (Char ch : RandomText(4, false)) Type(ch, false);
    }
    void Overtype() { Type(random.Pick(letters), true); }
    void PressEnter() {
        ASSERT_TRUE(document->TypeChar(active, u'\r', active->CaretColumn(), true, random.OneIn(2)));
        model.NewLine(active);
    }
    void DeleteInLine() {
        const uint32_t column = random.OneIn(4) ? random.Below(30) : active->CaretColumn();
        const uint32_t count = random.Below(6);
        ASSERT_EQ(document->DeleteInEditLine(active, {column, column + count}),
                  model.DeleteInLine(active, column, count));
    }
    void InsertText() {
        const auto offset = random.Below(model.text.size() + 1);
        const std::u16string text = RandomText(20, true);
        ASSERT_TRUE(document->InsertText(offset, text.data(), static_cast<uint32_t>(text.size())));
        model.Insert(offset, text);
    }
    void DeleteText() {
        const auto offset = random.Below(model.text.size() + 1);
        const uint32_t count = random.Below(random.OneIn(20) ? model.text.size() : 20);
        ASSERT_TRUE(document->DeleteText({offset, offset + count}));
        model.Delete(offset, count);
    }
    void MoveCaret() {
        const uint32_t line = random.OneIn(3) ? random.Below(model.LineCount() + 1) : active->CaretLine();
        const uint32_t column = random.Below(30);
        active->PutCaret(line, column);
        model.MoveCaret(active, line, column);
    }
    void Select() {
        EXPECT_TRUE(document->CommitEdit()); // as every selecting command of a view does
        model.Commit();
        const auto anchor = random.Below(model.text.size() + 1);
        const auto caret = random.Below(model.text.size() + 1);
        active->SelectRange(anchor, caret);
        model.SelectRange(active, anchor, caret);
    }
    void Scroll() {
        FakeView* view = random.Pick(views);
        const uint32_t line = random.Below(model.LineCount());
        view->SetTopLine(line);
        model.views[view].top = line;
    }
    void UseOther() { Use(random.Pick(views)); }
    void Undo() {
        for (uint32_t times = 1 + random.Below(3); times; --times) {
            ASSERT_TRUE(document->Undo());
            model.Undo();
        }
    }
    void Redo() {
        ASSERT_TRUE(document->Redo());
        model.Redo();
    }
    void Group() {
        ASSERT_TRUE(document->BeginGroup());
        model.PushMarker(TextModel::Record::Begin);
        for (uint32_t edits = random.Below(4); edits; --edits) {
            static constexpr void (RandomEditing::*Edits[])() = {
                &RandomEditing::TypeRun,    &RandomEditing::PressEnter, &RandomEditing::DeleteInLine,
                &RandomEditing::InsertText, &RandomEditing::DeleteText, &RandomEditing::MoveCaret,
                &RandomEditing::Group,
            };
            (this->*random.Pick(Edits))();
        }
        if (random.OneIn(4)) {
            document->AbandonGroup();
            model.AbandonGroup();
            // What is restored in the edit line stays pending there; the model knows only whole steps.
            ASSERT_TRUE(document->CommitEdit());
            return;
        }
        ASSERT_TRUE(document->EndGroup());
        model.PushMarker(TextModel::Record::End);
    }
    void ToggleMark() {
        const uint32_t line = random.Below(model.LineCount());
        document->ToggleBookmark(line);
        if (!model.marks.erase(line)) model.marks.insert(line);
    }
    void ClearMarks() {
        document->ClearBookmarks();
        model.marks.clear();
    }
    void Search() {
        SearchHit hit;
        const std::u16string pattern = RandomText(2, true);
        const bool there = document->FindText(Query(pattern), {}, hit);
        const size_t at = model.text.find(pattern);
        ASSERT_EQ(there ? hit.offset : NoOffset, at == std::u16string::npos ? NoOffset : at);
        model.Commit();
    }
    void Commit() {
        ASSERT_TRUE(document->CommitEdit());
        model.Commit();
        ASSERT_EQ(document.Store(), model.text);
    }
    void Save() {
        Commit();
        TextBufferProbe::MarkSaved(*document);
        model.Save();
    }
    void EndTyping() {
        document->EndTyping();
        model.EndTyping();
    }
    void ChangeViews() {
        if (views.size() < 4 && random.OneIn(2)) return AddView();
        if (views.size() < 2) return;
        FakeView* going = random.Pick(views);
        std::erase(views, going);
        const bool wasActive = going == active;
        model.Forget(going);
        going->Destroy();
        if (wasActive) Use(views[0]);
    }

    Random random;
    TextDocument document;
    TextModel model;
    std::u16string letters;
    std::vector<FakeView*> views;
    FakeView* active = nullptr;
};

void EditAtRandom(uint32_t seed, int steps, const std::u16string& text) {
    RandomEditing editing(seed, text);
    for (int step = 0; step < steps; ++step) {
        editing.Step();
        if (!::testing::Test::HasFatalFailure()) editing.Compare();
        ASSERT_FALSE(::testing::Test::HasFatalFailure()) << "seed " << seed << ", step " << step;
    }
}

} // namespace

TEST(TextBufferModel, AgreesOnTwentyThousandStepsFromAnEmptyText) { EditAtRandom(1, 20000, u""); }

TEST(TextBufferModel, AgreesOnTwentyThousandStepsFromAText) {
    std::u16string text;
    for (int line = 0; line < 40; ++line) text += u"\tint value;  \n    return value; // #one\n\n";
    EditAtRandom(2, 20000, text);
}

TEST(TextBufferModel, AgreesOnManyShortSessions) {
    for (uint32_t seed = 100; seed < 200 && !HasFatalFailure(); ++seed) EditAtRandom(seed, 300, u"one\ntwo\nthree\n");
}
