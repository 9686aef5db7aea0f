// Every allocation of every operation fails in turn: the operation reports it and the document is as it was.

#include "document/TextBuffer.h"

#include "support/FailureInjection.h"
#include "support/FakeEngine.h"
#include "support/FakeView.h"
#include "support/TextDocument.h"

#include <functional>
#include <gtest/gtest.h>
#include <memory>

namespace {

std::vector<uint32_t> Serials(const UndoRecord* record) {
    std::vector<uint32_t> serials;
    for (; record; record = record->next) serials.push_back(record->serial);
    return serials;
}

// A document with two views, something to undo and something to redo.
struct Scene {
    explicit Scene(const std::u16string& text) : document(text) {
        view = FakeView::Create(*document);
        other = FakeView::Create(*document);
        view->Activate();
        other->SelectRange(2, 4);
        document->ToggleBookmark(1);
        EXPECT_TRUE(document->InsertText(document->Length(), u"  tail", 6));
        EXPECT_TRUE(document->BeginGroup());
        EXPECT_TRUE(document->DeleteText({0, 2}));
        EXPECT_TRUE(document->InsertText(3, u"x\ny\nz", 5));
        EXPECT_TRUE(document->EndGroup());
        EXPECT_TRUE(document->Undo());
        view->PutCaret(0, 1);
        other->SelectRange(2, 4);
    }

    // Everything that an operation without success has to leave.
    struct Snapshot {
        std::u16string text;
        uint32_t lineCount;
        std::vector<uint32_t> undo, redo, marks, places;
        bool modified, readOnly, output;
        const SyntaxEngine* engine;
        std::u16string name, title;
        bool operator==(const Snapshot&) const = default;
    };
    Snapshot Take() const {
        Snapshot now{document.Text(),
                     document->GetLineCount(),
                     Serials(TextBufferProbe::UndoHead(*document)),
                     Serials(TextBufferProbe::RedoHead(*document)),
                     document.MarkedLines(),
                     {},
                     document->IsModified(),
                     document->IsReadOnly(),
                     document->IsOutput(),
                     document->Engine(),
                     document->GetName(),
                     document->GetTitle()};
        ViewNode* cursor = nullptr;
        do {
            const auto* each = static_cast<FakeView*>(document->EnumViews(cursor, cursor));
            for (uint32_t value : {each->CaretLine(), each->CaretColumn(), each->SelectionAnchor(), each->CaretOffset(),
                                   each->TopLine()})
                now.places.push_back(value);
        } while (cursor);
        return now;
    }

    TextDocument document;
    FakeView* view = nullptr;
    FakeView* other = nullptr;
};

using Action = std::function<bool(Scene&)>;

const Action Nothing = [](Scene&) { return true; };

// Runs `operation` on a fresh scene until none of its allocations fails any more. Returns how many did.
uint64_t FailInTurn(const Action& prepare, const Action& operation,
                    const std::u16string& text = u"one two   \n  three\nfour\n") {
    return FailEachAllocation([&] {
        std::unique_ptr<Scene> scene;
        Scene::Snapshot before;
        {
            FailurePause pause;
            scene = std::make_unique<Scene>(text);
            prepare(*scene);
            before = scene->Take();
        }
        const bool done = operation(*scene);
        {
            FailurePause pause;
            if (!done) {
                const Scene::Snapshot after = scene->Take();
                EXPECT_EQ(after.text, before.text);
                EXPECT_EQ(after.undo, before.undo);
                EXPECT_EQ(after.redo, before.redo);
                EXPECT_EQ(after.places, before.places);
                EXPECT_TRUE(after == before);
                EXPECT_EQ(scene->document->Content()[scene->document->Length()], 0);
                // And it works once there is memory again.
                EXPECT_TRUE(operation(*scene));
            }
            scene.reset();
        }
        return done;
    });
}

bool Type(Scene& scene, const std::u16string& text, bool overwrite = false) {
    for (Char ch : text) {
        if (!scene.document->TypeChar(scene.view, ch, scene.view->CaretColumn(), true, overwrite)) return false;
    }
    return true;
}

} // namespace

TEST(TextBufferFailure, TypingTheFirstCharacterOfAStep) {
    EXPECT_GE(FailInTurn(Nothing, [](Scene& scene) { return Type(scene, u"a"); }), 3u)
        << "the record, its text and the second view's state";
}

TEST(TextBufferFailure, TypingAnotherLine) {
    FailInTurn(
        [](Scene& scene) {
            Type(scene, u"pending");
            scene.document->SetActiveView(nullptr); // so that moving does not open the line
            scene.view->PutCaret(1, 0);
            return true;
        },
        [](Scene& scene) { return Type(scene, u"a"); });
}

TEST(TextBufferFailure, TypingFurtherCharactersOfAStep) {
    const std::u16string most(40, u'x');
    for (size_t typed = 1; typed < most.size(); ++typed) {
        FailInTurn([&](Scene& scene) { return Type(scene, most.substr(0, typed)); },
                   [](Scene& scene) { return Type(scene, u"x"); });
    }
}

TEST(TextBufferFailure, Overtyping) {
    EXPECT_GE(FailInTurn(Nothing, [](Scene& scene) { return Type(scene, u"a", true); }), 3u);
}

TEST(TextBufferFailure, WritingBack) {
    EXPECT_EQ(FailInTurn([](Scene& scene) { return Type(scene, u"abcdefghijklmnop"); },
                         [](Scene& scene) { return scene.document->CommitEdit(); }),
              1u);
}

TEST(TextBufferFailure, BecomingAnOutputDocument) {
    EXPECT_EQ(
        FailInTurn([](Scene& scene) { return Type(scene, u"abcdefghijklmnop"); },
                   [](Scene& scene) { return scene.document->MarkAsOutput() && !scene.document->HasPendingEdit(); }),
        1u);
}

TEST(TextBufferFailure, OpeningALine) {
    FailInTurn([](Scene& scene) { return Type(scene, u"abcdefghijklmnop"); },
               [](Scene& scene) { return scene.document->LoadEditLine(1); });
}

TEST(TextBufferFailure, Enter) {
    EXPECT_GE(FailInTurn(Nothing, [](Scene& scene) { return scene.document->NewLine(scene.view, 1); }), 4u);
}

TEST(TextBufferFailure, EnterThatRemovesBlanks) {
    const Action enter = [](Scene& scene) { return scene.document->NewLine(scene.view, scene.view->CaretColumn()); };
    const Action before = [](Scene& scene) {
        scene.view->PutCaret(0, 7);
        return true;
    };
    EXPECT_GE(FailInTurn(before, enter), 8u);
    const Action pending = [](Scene& scene) {
        scene.view->PutCaret(0, 7);
        return Type(scene, u"more typed text");
    };
    EXPECT_GE(FailInTurn(pending, enter), 8u);
}

TEST(TextBufferFailure, EnterThatRemovesBlanksOfTheLastLine) {
    const Action last = [](Scene& scene) {
        EXPECT_TRUE(scene.document->InsertText(scene.document->Length(), u"   ", 3));
        scene.view->PutCaret(3, 6);
        return true;
    };
    EXPECT_GE(FailInTurn(last, [](Scene& scene) { return scene.document->NewLine(scene.view, 6); }), 8u);
}

TEST(TextBufferFailure, DeletingInALine) {
    const Action pending = [](Scene& scene) { return Type(scene, u"abcdefghijklmnop"); };
    const Action erase = [](Scene& scene) {
        return scene.document->DeleteInEditLine(scene.view, {scene.view->CaretColumn(), scene.view->CaretColumn() + 1});
    };
    EXPECT_GE(FailInTurn(Nothing, erase), 3u);
    EXPECT_GE(FailInTurn(pending, erase), 3u);
}

TEST(TextBufferFailure, DeletingInTheLastLine) {
    const Action last = [](Scene& scene) {
        scene.view->PutCaret(3, 1);
        return true;
    };
    EXPECT_GE(FailInTurn(last, [](Scene& scene) { return scene.document->DeleteInEditLine(scene.view, {1, 3}); }), 3u);
}

TEST(TextBufferFailure, InsertingAndDeletingText) {
    EXPECT_GE(FailInTurn(Nothing,
                         [](Scene& scene) { return scene.document->InsertText(5, u"a\nb that needs more room", 24); }),
              4u);
    EXPECT_GE(FailInTurn(Nothing, [](Scene& scene) { return scene.document->DeleteText({5, 14}); }), 3u);
}

TEST(TextBufferFailure, UndoingAndRedoing) {
    // Typed text that was deleted again before it was written back never had room in the store.
    const Action tight = [](Scene& scene) {
        scene.view->PutCaret(3, 0);
        Type(scene, u"abcdefghijklmnopqrstuvwxyz");
        scene.view->PutCaret(3, 0);
        return scene.document->DeleteInEditLine(scene.view, {0, 100}) && scene.document->CommitEdit();
    };
    EXPECT_GE(FailInTurn(tight, [](Scene& scene) { return scene.document->Undo(); }), 1u);
    // In a group the second record to be undone needs the room.
    const Action tightGroup = [](Scene& scene) {
        scene.view->PutCaret(3, 0);
        return scene.document->BeginGroup() && Type(scene, u"abcdefghijklmnopqrstuvwxyz") &&
               scene.document->DeleteInEditLine(scene.view, {0, 100}) && scene.document->InsertText(0, u"x", 1) &&
               scene.document->EndGroup();
    };
    EXPECT_GE(FailInTurn(tightGroup, [](Scene& scene) { return scene.document->Undo(); }), 1u);
    FailInTurn(Nothing, [](Scene& scene) { return scene.document->Undo(); });
    FailInTurn(Nothing, [](Scene& scene) { return scene.document->Redo(); });
}

TEST(TextBufferFailure, WithAnUnwrittenLineOnlyWhatIsInItIsUndone) {
    const Action overSelection = [](Scene& scene) {
        scene.view->PutCaret(3, 0);
        return scene.document->BeginGroup() && scene.document->DeleteText({0, 1}) &&
               Type(scene, u"abcdefghijklmnopqrstuvwxyz") && scene.document->EndGroup();
    };
    EXPECT_GE(FailInTurn(overSelection, [](Scene& scene) { return scene.document->Undo(); }), 1u);
    const Action typed = [](Scene& scene) { return Type(scene, u"abcdefghijklmnopqrstuvwxyz"); };
    EXPECT_GE(FailInTurn(typed, [](Scene& scene) { return scene.document->Redo(); }), 1u);
}

TEST(TextBufferFailure, GroupMarkers) {
    EXPECT_EQ(FailInTurn(Nothing, [](Scene& scene) { return scene.document->BeginGroup(); }), 1u);
    EXPECT_EQ(FailInTurn(Nothing, [](Scene& scene) { return scene.document->EndGroup(); }), 1u);
}

TEST(TextBufferFailure, NamesAndSessionText) {
    EXPECT_GE(FailInTurn(Nothing, [](Scene& scene) { return scene.document->SetTitle(u"title"); }), 1u);
    EXPECT_GE(FailInTurn(Nothing, [](Scene& scene) { return scene.document->SetPath(u"file.txt"); }), 1u);
    EXPECT_GE(FailInTurn(Nothing,
                         [](Scene& scene) {
                             WString text;
                             const bool done = scene.document->GetSessionText(text);
                             EXPECT_EQ(text.IsEmpty(), !done);
                             return done;
                         }),
              1u);
}

TEST(TextBufferFailure, Bookmarks) {
    EXPECT_EQ(FailInTurn(Nothing,
                         [](Scene& scene) {
                             scene.document->ToggleBookmark(3);
                             return scene.document->FindMark(3) != nullptr;
                         }),
              1u);
}

TEST(TextBufferFailure, MakingAView) {
    EXPECT_EQ(FailInTurn(Nothing, [](Scene& scene) { return FakeView::Create(*scene.document) != nullptr; }), 1u);
}

TEST(TextBufferFailure, ANewDocumentIsEmptyWithoutAStoreWhenItCannotBeMade) {
    FailEachAllocation([] {
        std::unique_ptr<Scene> scene;
        {
            FailurePause pause;
            scene = std::make_unique<Scene>(u"one\ntwo");
        }
        const bool done = scene->document->MakeNew(u"name.txt");
        FailurePause pause;
        EXPECT_EQ(scene->document->Content() != nullptr, done);
        EXPECT_EQ(scene->document->Length(), 0u);
        EXPECT_EQ(scene->document->GetLineCount(), 1u);
        scene.reset();
        return done;
    });
}

TEST(TextBufferFailure, SearchingWhileTheLineCannotBeWrittenBackFindsNothing) {
    FailInTurn([](Scene& scene) { return Type(scene, u"abcdefghijklmnop"); },
               [](Scene& scene) {
                   SearchHit hit;
                   return scene.document->FindText(Query(u"three"), {}, hit);
               });
}
