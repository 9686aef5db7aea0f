#include "app/DocumentList.h"
#include "core/app/FakeFrame.h"
#include "support/FailureInjection.h"

#include <algorithm>
#include <gtest/gtest.h>
#include <memory>
#include <random>

namespace {

class DocumentListTest : public ::testing::Test {
protected:
    void SetUp() override { ASSERT_EQ(FakeDocument::alive, 0); }
    void TearDown() override {
        list.reset();
        EXPECT_EQ(FakeDocument::alive, 0);
    }
    FakeDocument* Add(FakeDocument* document) {
        EXPECT_TRUE(list->Add(document));
        return document;
    }
    FakeDocument* AddFile(const Char* path) { return Add(FakeDocument::WithFile(path)); }

    std::unique_ptr<DocumentList> list{new DocumentList};
};

TEST_F(DocumentListTest, KeepsTheOpeningOrder) {
    EXPECT_TRUE(list->IsEmpty());
    FakeDocument* a = AddFile(u"a");
    FakeDocument* b = AddFile(u"b");
    FakeDocument* c = AddFile(u"c");
    list->Touch(b); // use does not change it
    EXPECT_EQ(list->Count(), 3u);
    EXPECT_EQ(list->At(0), a);
    EXPECT_EQ(list->At(1), b);
    EXPECT_EQ(list->At(2), c);
    EXPECT_EQ(list->At(3), nullptr);
    EXPECT_EQ(list->At(UINT32_MAX), nullptr);
}

TEST_F(DocumentListTest, NextAndPreviousWrap) {
    FakeDocument* a = AddFile(u"a");
    FakeDocument* b = AddFile(u"b");
    FakeDocument* c = AddFile(u"c");
    EXPECT_EQ(list->Next(a), b);
    EXPECT_EQ(list->Next(c), a);
    EXPECT_EQ(list->Previous(c), b);
    EXPECT_EQ(list->Previous(a), c);
    list->Remove(b);
    EXPECT_EQ(list->Next(a), c);
    EXPECT_EQ(list->Previous(c), a);
    list->Remove(c);
    EXPECT_EQ(list->Next(a), a);
    EXPECT_EQ(list->Previous(a), a);
}

TEST_F(DocumentListTest, WalksTheOrderOfUse) {
    FakeDocument* a = AddFile(u"a");
    FakeDocument* b = AddFile(u"b");
    FakeDocument* c = AddFile(u"c");
    for (FakeDocument* used : {a, b, c}) list->Touch(used);
    EXPECT_EQ(list->MostRecent(), c);
    EXPECT_EQ(list->NextInMru(c), b);
    EXPECT_EQ(list->NextInMru(b), a);
    EXPECT_EQ(list->NextInMru(a), c); // wraps to the most recently used
    EXPECT_EQ(list->PreviousInMru(a), b);
    EXPECT_EQ(list->PreviousInMru(c), a); // wraps to the least recently used
    list->Touch(a);
    EXPECT_EQ(list->MostRecent(), a);
    EXPECT_EQ(list->NextInMru(a), c);
    EXPECT_EQ(list->NextInMru(b), a);
}

TEST_F(DocumentListTest, ADocumentNeverUsedIsTheLeastRecent) {
    FakeDocument* a = AddFile(u"a");
    list->Touch(a);
    FakeDocument* b = AddFile(u"b");
    EXPECT_EQ(list->MostRecent(), a);
    EXPECT_EQ(list->NextInMru(a), b);
}

TEST_F(DocumentListTest, RemovingReleasesTheDocument) {
    FakeDocument* a = AddFile(u"a");
    FakeDocument* b = AddFile(u"b");
    b->AddRef();
    list->Remove(a);
    EXPECT_EQ(FakeDocument::alive, 1);
    list->Remove(b);
    EXPECT_EQ(FakeDocument::alive, 1);
    EXPECT_TRUE(list->IsEmpty());
    EXPECT_EQ(list->MostRecent(), nullptr);
    list->Remove(b); // not in the list: nothing
    EXPECT_EQ(b->Release(), 0u);
}

TEST_F(DocumentListTest, AnswersNullForStrangers) {
    AddFile(u"a");
    FakeDocument* stranger = FakeDocument::WithFile(u"b");
    EXPECT_EQ(list->Next(stranger), nullptr);
    EXPECT_EQ(list->Previous(nullptr), nullptr);
    EXPECT_EQ(list->NextInMru(stranger), nullptr);
    EXPECT_EQ(list->PreviousInMru(nullptr), nullptr);
    list->Touch(stranger);
    EXPECT_FALSE(list->Contains(stranger));
    EXPECT_EQ(list->Count(), 1u);
    stranger->Release();
}

TEST_F(DocumentListTest, FindsAFileWhateverItsLetterCase) {
    FakeDocument* a = AddFile(u"C:\\Src\\Main.c");
    Add(FakeDocument::WithTitle(u"C:\\src\\tool.exe"));
    EXPECT_EQ(list->FindByName(u"c:\\SRC\\main.C"), a);
    EXPECT_EQ(list->FindByName(u"C:\\Src\\Main.cc"), nullptr);
    EXPECT_EQ(list->FindByName(u"C:\\src\\tool.exe"), nullptr); // a title is no file
}

// Whatever the names have in common from their ends on.
TEST_F(DocumentListTest, FindsTheFileAmongNamesThatAreAlike) {
    FakeDocument* first = AddFile(u"C:\\Straße\\Äpfel 1.txt");
    FakeDocument* second = AddFile(u"C:\\straße\\äpfel 2.txt");
    FakeDocument* short1 = AddFile(u"1.txt");
    FakeDocument* other = AddFile(u"C:\\Straße\\Apfel 1.txt");
    EXPECT_EQ(list->FindByName(u"C:\\straße\\äpfel 1.TXT"), first);
    EXPECT_EQ(list->FindByName(u"C:\\STRAßE\\ÄPFEL 2.txt"), second);
    EXPECT_EQ(list->FindByName(u"1.TXT"), short1);
    EXPECT_EQ(list->FindByName(u"c:\\straße\\apfel 1.txt"), other);
    EXPECT_EQ(list->FindByName(u"C:\\Straße\\Äpfel 3.txt"), nullptr);
    EXPECT_EQ(list->FindByName(u"C:\\Straße\\Äpfel_1.txt"), nullptr);
    EXPECT_EQ(list->FindByName(u"11.txt"), nullptr);
}

TEST_F(DocumentListTest, FindsAnOutputDocumentByItsTitle) {
    FakeDocument* file = AddFile(u"make all");
    file->title = u"stale";
    file->isOutput = true;
    Add(FakeDocument::WithTitle(u"make all")); // the user's
    EXPECT_EQ(list->FindOutput(u"make all"), nullptr);
    FakeDocument* run = Add(FakeDocument::WithTitle(u"make all"));
    run->isOutput = true;
    EXPECT_EQ(list->FindOutput(u"make all"), run);
    run->running = true;
    EXPECT_EQ(list->FindOutput(u"make all"), run);
    EXPECT_EQ(list->FindOutput(u"Make all"), nullptr);
    EXPECT_EQ(list->FindOutput(u"stale"), nullptr);
}

TEST_F(DocumentListTest, KnowsWhichDocumentsHaveAFile) {
    FakeDocument* file = AddFile(u"C:\\a");
    EXPECT_TRUE(HasFile(*file));
    file->title = u"Untitled1"; // saved for the first time
    EXPECT_TRUE(HasFile(*file));
    EXPECT_FALSE(HasFile(*Add(FakeDocument::WithTitle(u"Untitled2"))));
    EXPECT_FALSE(HasFile(*Add(FakeDocument::WithTitle(u""))));
}

TEST_F(DocumentListTest, KnowsFinishedOutput) {
    FakeDocument* document = Add(FakeDocument::WithTitle(u"Output"));
    document->running = true;
    EXPECT_FALSE(IsFinishedOutput(*document));
    document->isOutput = true;
    EXPECT_FALSE(IsFinishedOutput(*document));
    document->running = false;
    EXPECT_TRUE(IsFinishedOutput(*document));
}

TEST_F(DocumentListTest, UntitledNumbersAreNeverReused) {
    WString title;
    EXPECT_TRUE(list->UntitledTitle(title));
    EXPECT_EQ(Str(title), u"Untitled1");
    EXPECT_TRUE(list->UntitledTitle(title)); // not used up yet
    EXPECT_EQ(Str(title), u"Untitled1");
    list->CountUntitled();
    FakeDocument* first = Add(FakeDocument::WithTitle(u"Untitled1"));
    list->Remove(first);
    EXPECT_TRUE(list->UntitledTitle(title));
    EXPECT_EQ(Str(title), u"Untitled2");
}

TEST_F(DocumentListTest, OpenedTextRunsOnAfterABinaryDocument) {
    AddFile(u"C:\\a")->view.caretLine = 9;
    AddFile(u"C:\\b")->binary = true;
    AddFile(u"C:\\c")->hasView = false;
    WString text;
    EXPECT_TRUE(text.Assign(u"> "));
    EXPECT_TRUE(list->AppendOpenedText(text));
    EXPECT_EQ(Str(text), u"> C:\\a(10)\nC:\\bC:\\c(1)\n");
}

TEST_F(DocumentListTest, IsUnchangedWithoutMemory) {
    AddFile(u"a very long name of a file, so that the text has to grow")->view.caretLine = 9;
    AddFile(u"another very long name of a file, so that the text has to grow again");
    const uint64_t failures = FailEachAllocation([&] {
        WString text;
        const bool appended = list->AppendOpenedText(text);
        const FailurePause pause;
        EXPECT_EQ(text.IsEmpty(), !appended);
        return appended;
    });
    EXPECT_GT(failures, 1u);
    FakeDocument* extra = FakeDocument::WithFile(u"x");
    const uint64_t addFailures = FailEachAllocation([&] {
        const bool added = list->Add(extra);
        EXPECT_EQ(list->Count(), added ? 3u : 2u);
        return added;
    });
    EXPECT_EQ(addFailures, 1u);
}

TEST_F(DocumentListTest, RandomUseMatchesAPlainModel) {
    std::minstd_rand random(7);
    std::vector<Document*> opened;
    std::vector<Document*> used; // most recent first
    for (int step = 0; step < 20000; ++step) {
        const auto choice = random() % 10;
        if (opened.empty() || (choice == 0 && opened.size() < 12)) {
            opened.push_back(AddFile(u"x"));
            used.push_back(opened.back());
        } else if (choice == 1) {
            Document* gone = opened[random() % opened.size()];
            std::erase(opened, gone);
            std::erase(used, gone);
            list->Remove(gone);
        } else {
            Document* touched = opened[random() % opened.size()];
            std::erase(used, touched);
            used.insert(used.begin(), touched);
            list->Touch(touched);
        }
        ASSERT_EQ(list->Count(), opened.size());
        ASSERT_EQ(list->MostRecent(), used.empty() ? nullptr : used.front());
        for (size_t i = 0; i < opened.size(); ++i) {
            ASSERT_EQ(list->At(static_cast<uint32_t>(i)), opened[i]);
            ASSERT_EQ(list->Next(opened[i]), opened[(i + 1) % opened.size()]);
            ASSERT_EQ(list->Previous(opened[(i + 1) % opened.size()]), opened[i]);
            ASSERT_EQ(list->NextInMru(used[i]), used[(i + 1) % used.size()]);
            ASSERT_EQ(list->PreviousInMru(used[(i + 1) % used.size()]), used[i]);
        }
    }
}

} // namespace
