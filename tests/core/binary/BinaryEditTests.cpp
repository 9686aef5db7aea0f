#include "BinarySupport.h"
#include "document/StepSerial.h"
#include "support/FailureInjection.h"

TEST(BinaryPages, AreFoundAmongManyAndKeepTheirOrder) {
    ChangedPages pages;
    std::mt19937_64 random(3);
    std::vector<uint64_t> indexes;
    for (uint64_t i = 0; i < 500; ++i) indexes.push_back(i % 2 ? i << 40 : random());
    const auto append = [&](size_t first, size_t end) {
        for (size_t i = first; i < end; ++i) {
            EXPECT_EQ(pages.Find(indexes[i]), nullptr);
            auto* page = new ChangedPage;
            page->index = indexes[i];
            pages.Append(page);
        }
    };
    const auto check = [&](size_t count) {
        ASSERT_EQ(pages.Count(), count);
        const ChangedPage* page = pages.Head();
        for (size_t i = 0; i < indexes.size(); ++i) {
            const ChangedPage* found = pages.Find(indexes[i]);
            ASSERT_EQ(found, i < count ? page : nullptr);
            if (i < count) page = page->next;
        }
    };
    append(0, 300);
    const ChangedPage* last = pages.Tail();
    append(300, 500);
    check(500);
    pages.RemoveAfter(last);
    check(300);
    append(300, 400);
    check(400);
    pages.Clear();
    check(0);
    append(0, 10);
    pages.RemoveAfter(nullptr);
    check(0);
}

TEST(BinaryWrite, ChangesPagesInMemoryOnly) {
    std::string content = Pattern(50000);
    OpenedFile file(content);
    const std::string written = Pattern(20000, 2);
    ASSERT_TRUE(file->WriteBytes(16380, reinterpret_cast<const uint8_t*>(written.data()), written.size()));
    EXPECT_EQ(file.OnDisk(), content);
    content.replace(16380, written.size(), written);
    EXPECT_EQ(file.Content(), content);
}

TEST(BinaryWrite, OutsideTheFileChangesNothing) {
    OpenedFile file("0123456789");
    const uint8_t bytes[20] = {};
    EXPECT_FALSE(file->WriteBytes(5, bytes, 6));
    EXPECT_FALSE(file->WriteBytes(11, bytes, 0));
    EXPECT_FALSE(file->WriteBytes(UINT64_MAX - 1, bytes, 4));
    EXPECT_FALSE(file.Edit(10, "x"));
    EXPECT_FALSE(file.Edit(9, "xy"));
    EXPECT_FALSE(file.Edit(3, ""));
    EXPECT_EQ(file.Content(), "0123456789");
    EXPECT_FALSE(file->IsModified());
}

TEST(BinaryWrite, AllPagesOrNone) {
    const std::string content = Pattern(100000);
    OpenedFile file(content);
    const Bytes zeros(60000);
    {
        const Damage damage(40000, 40001); // in the third of them
        EXPECT_FALSE(file->WriteBytes(10, zeros.data(), zeros.size()));
    }
    EXPECT_EQ(file.Content(), content);
    EXPECT_TRUE(file.Save());
    EXPECT_EQ(file.OnDisk(), content);
}

TEST(BinaryEdit, TheSameByteTwiceIsTwoSteps) {
    const std::string content = Pattern(40000);
    OpenedFile file(content);
    ASSERT_TRUE(file.Edit(20000, "a"));
    ASSERT_TRUE(file.Edit(20000, "b"));
    EXPECT_TRUE(file->IsModified());
    EXPECT_EQ(file.Content()[20000], 'b');
    ASSERT_TRUE(file->Undo());
    EXPECT_EQ(file.Content()[20000], 'a');
    EXPECT_TRUE(file->IsModified());
    ASSERT_TRUE(file->Undo());
    EXPECT_EQ(file.Content(), content);
    EXPECT_FALSE(file->IsModified());
    EXPECT_FALSE(file->Undo());
    ASSERT_TRUE(file->DoCommand(DocumentCommand::Redo));
    ASSERT_TRUE(file->Redo());
    EXPECT_EQ(file.Content()[20000], 'b');
    EXPECT_FALSE(file->Redo());
    EXPECT_TRUE(file->DoCommand(DocumentCommand::Undo));
    EXPECT_EQ(file.Content()[20000], 'a');
    EXPECT_FALSE(file->DoCommand(DocumentCommand::Paste));
}

TEST(BinaryEdit, ANewEditForgetsWhatCouldBeRedone) {
    OpenedFile file("abc");
    ASSERT_TRUE(file.Edit(0, "x"));
    ASSERT_TRUE(file->Undo());
    EXPECT_TRUE(file->CanDo(DocumentCommand::Redo));
    ASSERT_TRUE(file.Edit(1, "y"));
    EXPECT_FALSE(file->CanDo(DocumentCommand::Redo));
    EXPECT_EQ(file.Content(), "ayc");
}

TEST(BinaryEdit, MovesTheCaretOfItsViewAndTellsAllViews) {
    OpenedFile file("abcdef");
    FakeHexView* first = FakeHexView::Create(*file);
    FakeHexView* second = FakeHexView::Create(*file);
    const HexViewState state = {{2, false}, {3, true}};
    ASSERT_TRUE(file.Edit(2, "xy", second, state));
    EXPECT_EQ(second->caret, (HexCaret{3, true}));
    EXPECT_EQ(second->madeVisible, 1);
    EXPECT_EQ(first->madeVisible, 0);
    EXPECT_EQ(first->contentChanges, 1);
    EXPECT_EQ(second->contentChanges, 1);
    EXPECT_EQ(first->documentChanges, 1); // the frame is notified through the first view

    first->ForgetCalls();
    ASSERT_TRUE(file->Undo());
    EXPECT_EQ(second->caret, (HexCaret{2, false}));
    EXPECT_EQ(first->documentChanges, 1);
    EXPECT_EQ(first->contentChanges, 1);
    ASSERT_TRUE(file->Redo());
    EXPECT_EQ(second->caret, (HexCaret{3, true}));
}

TEST(BinaryEdit, AViewThatIsGoneIsLeftAlone) {
    OpenedFile file("abc");
    FakeHexView* view = FakeHexView::Create(*file);
    ASSERT_TRUE(file.Edit(0, "x", view));
    view->Destroy();
    EXPECT_TRUE(file->Undo());
    EXPECT_EQ(file.Content(), "abc");
}

TEST(BinaryEdit, EveryAllocationFailsInTurn) {
    for (const size_t size : {1u, 40000u}) {
        const std::string content = Pattern(100000);
        const std::string written(size, 'x');
        const uint64_t failures = FailEachAllocation([&] {
            auto pause = std::make_unique<FailurePause>();
            OpenedFile file(content);
            EXPECT_TRUE(file.Edit(0, "y"));
            EXPECT_TRUE(file->Undo());
            pause.reset();
            const bool done = file.Edit(30000, written);
            FailurePause checking;
            EXPECT_EQ(file->IsModified(), done);
            EXPECT_EQ(file->CanDo(DocumentCommand::Redo), !done); // as it was before
            std::string expected = content;
            if (done) expected.replace(30000, size, written);
            EXPECT_EQ(file.Content(), expected);
            return done;
        });
        EXPECT_GE(failures, 2u);
    }
}

TEST(BinaryEdit, AReadThatFailsOnceIsRepeated) {
    std::string changed = Pattern(100000);
    changed.replace(30000, 20000, std::string(20000, 'x'));
    const uint64_t failures = FailEachFileCall([&] {
        auto pause = std::make_unique<FailurePause>();
        OpenedFile file(Pattern(100000));
        pause.reset();
        EXPECT_TRUE(file.Edit(30000, std::string(20000, 'x'))); // reads again what failed once
        const FailurePause checking;
        EXPECT_EQ(file.Content(), changed);
        return true;
    });
    EXPECT_EQ(failures, 6u); // three pages read twice: the old bytes, then the pages
}

TEST(BinaryUndo, WhosePageCannotBeReadStaysAStep) {
    const std::string content = Pattern(50000);
    OpenedFile file(content);
    ASSERT_TRUE(file.Edit(20000, "x"));
    ASSERT_TRUE(file.Save()); // the page is no longer in memory
    {
        const Damage damage(16384, 16385);
        EXPECT_FALSE(file->Undo());
    }
    EXPECT_FALSE(file->IsModified());
    EXPECT_TRUE(file->CanDo(DocumentCommand::Undo));
    EXPECT_TRUE(file->Undo());
    EXPECT_EQ(file.Content(), content);
    EXPECT_TRUE(file->IsModified());
}

TEST(BinaryUndo, JoinedEditsAreOneStep) {
    OpenedFile file("abcdef");
    FakeHexView* view = FakeHexView::Create(*file);
    ASSERT_TRUE(file.Edit(0, "A", view, {{0, false}, {1, false}}));
    const uint32_t moment = StepSerial::Latest();
    ASSERT_TRUE(file.Edit(1, "BC", view, {{1, false}, {3, false}}));
    ASSERT_TRUE(file.Edit(3, "D", view, {{3, false}, {4, false}}));
    file->JoinSteps(moment);
    ASSERT_TRUE(file.Edit(4, "E", view, {{4, false}, {5, false}}));
    ASSERT_TRUE(file->Undo());
    EXPECT_EQ(file.Content(), "ABCDef");
    view->ForgetCalls();
    ASSERT_TRUE(file->Undo());
    EXPECT_EQ(file.Content(), "Abcdef");
    EXPECT_EQ(view->caret, (HexCaret{1, false}));
    EXPECT_EQ(view->documentChanges, 1) << "told once for the step";
    EXPECT_EQ(view->contentChanges, 1);
    EXPECT_EQ(view->madeVisible, 1);
    ASSERT_TRUE(file->Redo());
    EXPECT_EQ(file.Content(), "ABCDef");
    EXPECT_EQ(view->caret, (HexCaret{4, false}));
    ASSERT_TRUE(file->Undo());
    ASSERT_TRUE(file->Undo());
    EXPECT_EQ(file.Content(), "abcdef");
    EXPECT_FALSE(file->IsModified());
}

// The last edit is the first to be undone, and is made again.
TEST(BinaryUndo, AStepOfWhichOnePageCannotBeReadIsNotUndoneAtAll) {
    const std::string content = Pattern(100000);
    OpenedFile file(content);
    const uint32_t moment = StepSerial::Latest();
    ASSERT_TRUE(file.Edit(20000, "x"));
    ASSERT_TRUE(file.Edit(80000, "y"));
    file->JoinSteps(moment);
    const std::string changed = file.Content();
    ASSERT_TRUE(file.Save());
    {
        const Damage damage(16384, 16385);
        EXPECT_FALSE(file->Undo());
    }
    EXPECT_EQ(file.Content(), changed);
    EXPECT_FALSE(file->IsModified());
    EXPECT_FALSE(file->CanDo(DocumentCommand::Redo));
    EXPECT_TRUE(file->Undo());
    EXPECT_EQ(file.Content(), content);
    EXPECT_FALSE(file->CanDo(DocumentCommand::Undo));
}

TEST(BinaryRandom, OperationsMatchAVectorOfBytes) {
    struct Step {
        size_t offset;
        std::string before;
        std::string after;
    };
    std::mt19937 random(11);
    for (int round = 0; round < 20; ++round) {
        std::string model = Pattern(BorderSizes[3 + random() % 10], static_cast<unsigned>(random()));
        std::string saved = model;
        OpenedFile file(model);
        std::vector<Step> done;
        std::vector<Step> undone;
        for (int step = 0; step < 1000; ++step) {
            const auto choice = random() % 20;
            if (choice < 12) {
                const size_t offset = random() % model.size();
                const size_t most = std::min<size_t>(model.size() - offset, random() % 8 ? 1 : 20000);
                const std::string bytes = Pattern(1 + random() % most, static_cast<unsigned>(random()));
                ASSERT_TRUE(file.Edit(offset, bytes));
                done.push_back({offset, model.substr(offset, bytes.size()), bytes});
                undone.clear();
                model.replace(offset, bytes.size(), bytes);
            } else if (choice < 15) {
                ASSERT_EQ(file->Undo(), !done.empty());
                if (done.empty()) continue;
                model.replace(done.back().offset, done.back().before.size(), done.back().before);
                undone.push_back(done.back());
                done.pop_back();
            } else if (choice < 17) {
                ASSERT_EQ(file->Redo(), !undone.empty());
                if (undone.empty()) continue;
                model.replace(undone.back().offset, undone.back().after.size(), undone.back().after);
                done.push_back(undone.back());
                undone.pop_back();
            } else if (choice < 18) {
                ASSERT_TRUE(file.Save());
                saved = model;
                ASSERT_EQ(file.OnDisk(), model);
                ASSERT_FALSE(file->IsModified());
            } else if (choice < 19) {
                ASSERT_TRUE(file->Open(file.path.c_str()));
                model = saved;
                done.clear();
                undone.clear();
            } else {
                ASSERT_TRUE(file->EnsureWindow(random() % (model.size() + 10), 16384));
            }
            if (model != saved) {
                ASSERT_TRUE(file->IsModified());
            }
            if (step % 10 == 0) {
                ASSERT_EQ(file.Content(), model);
            }
        }
        ASSERT_EQ(file.Content(), model);
        ASSERT_EQ(file.OnDisk(), saved);
    }
}
