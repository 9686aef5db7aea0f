#include "BinarySearchSupport.h"
#include "support/FailureInjection.h"

// Files of which a device does not deliver all bytes: shown is what is there, and what is not is never written.

namespace {

std::string WindowOf(const BinaryDocument& document) {
    return {reinterpret_cast<const char*>(document.Window().Bytes()), document.Window().Valid()};
}

// What a page has of the bytes before `end`: nothing of the sector that holds the first one missing.
void ExpectPage(BinaryDocument& document, const std::string& content, uint64_t start, uint64_t end) {
    Bytes page(PageSize, 0xAA);
    uint32_t valid = 0;
    const bool whole = end >= start + PageSize;
    EXPECT_EQ(document.ReadPage(page.data(), start, true, valid), whole);
    const uint64_t present = whole ? PageSize : end - start;
    EXPECT_LE(valid, present);
    EXPECT_GT(valid + 512u, present);
    const auto count = static_cast<int64_t>(valid);
    EXPECT_EQ(std::string(page.begin(), page.begin() + count), content.substr(start, valid));
    EXPECT_EQ(Bytes(page.begin() + count, page.end()), Bytes(PageSize - valid));
}

} // namespace

TEST(BinaryDamage, AFileOpensWhereverItIsDamaged) {
    const std::string content = Pattern(100000);
    OpenedFile file(content);
    for (const uint64_t from : {0u, 1u, 511u, 512u, 10000u, 16383u, 16384u, 20000u, 40000u}) {
        const Damage damage(from, from + 1);
        ASSERT_TRUE(file->Open(file.path.c_str()));
        EXPECT_EQ(file->FileSize(), 100000u);
        EXPECT_FALSE(file->IsReadOnly());
        for (uint64_t start = 0; start + PageSize <= content.size(); start += PageSize)
            ExpectPage(*file, content, start, from < start ? UINT64_MAX : from);
    }
}

TEST(BinaryDamage, TheWindowHoldsWhatIsBeforeIt) {
    const std::string content = Pattern(100000);
    OpenedFile file(content);
    const Damage damage(51200, 51300);
    EXPECT_TRUE(file->EnsureWindow(40000, 11200));
    EXPECT_EQ(WindowOf(*file), content.substr(40000, 11200));
    EXPECT_FALSE(file->EnsureWindow(40000, 11201));
    EXPECT_FALSE(file->EnsureWindow(51250, 10));
    EXPECT_EQ(file->Window().Valid(), 0u);
}

TEST(BinaryDamage, TheWindowMovesBackwardsToARangeBeforeIt) {
    const std::string content = Pattern(100000);
    OpenedFile file(content);
    ASSERT_TRUE(file->EnsureWindow(99000, 1000));
    const Damage damage(51200, 51300);
    EXPECT_TRUE(file->EnsureWindow(60000, 1000)); // without the page before
    EXPECT_EQ(file->Window().Start(), 60000u);
    EXPECT_EQ(WindowOf(*file), content.substr(60000, 32768));
    EXPECT_FALSE(file->EnsureWindow(51000, 1000));
}

TEST(BinaryDamage, BytesAreReadUpToIt) {
    const std::string content = Pattern(50000);
    OpenedFile file(content);
    const Damage damage(20480, 20481);
    Bytes out(20480);
    EXPECT_TRUE(file->ReadBytes(0, out.data(), 20480));
    EXPECT_EQ(std::string(out.begin(), out.end()), content.substr(0, 20480));
    EXPECT_FALSE(file->ReadBytes(0, out.data(), 20481));
    EXPECT_FALSE(file->ReadBytes(20480, out.data(), 1));
    EXPECT_TRUE(file->ReadBytes(32768, out.data(), 17232));
}

TEST(BinaryDamage, APageThatIsNotWholeIsNeverChangedNorWritten) {
    std::string content = Pattern(50000);
    OpenedFile file(content);
    {
        const Damage damage(20480, 20481);
        EXPECT_FALSE(file.Edit(16384, "x"));
        EXPECT_FALSE(file.Edit(16383, "xy"));
        EXPECT_FALSE(file.Edit(20480, "x"));
        EXPECT_FALSE(file->IsModified());
        EXPECT_FALSE(file->CanDo(DocumentCommand::Undo));
        EXPECT_TRUE(file.Edit(16383, "x"));
        EXPECT_TRUE(file.Edit(32768, "y"));
        EXPECT_TRUE(file.Save());
    }
    content[16383] = 'x';
    content[32768] = 'y';
    EXPECT_EQ(file.OnDisk(), content);
}

TEST(BinaryDamage, AnUndoAndARedoThatFailAreReported) {
    OpenedFile file(Pattern(50000));
    FakeHexView* view = FakeHexView::Create(*file);
    for (const DocumentCommand kind : {DocumentCommand::Undo, DocumentCommand::Redo}) {
        ASSERT_TRUE(kind == DocumentCommand::Redo || file.Edit(20000, "x"));
        ASSERT_TRUE(file.Save()); // the page is no longer in memory
        {
            const Damage damage(20480, 20481);
            EXPECT_TRUE(file->DoCommand(kind));
        }
        EXPECT_EQ(view->failuresReported, 1);
        EXPECT_TRUE(file->DoCommand(kind));
        EXPECT_EQ(view->failuresReported, 1);
        EXPECT_TRUE(file->DoCommand(kind)); // there is no further one
        EXPECT_EQ(view->failuresReported, 1);
        view->ForgetCalls();
    }
}

TEST(BinaryDamage, AReadThatFailsOnceIsRepeated) {
    const std::string content = Pattern(50000);
    OpenedFile file(content);
    Bytes page(PageSize);
    uint32_t valid = 0;
    FileCalls calls({1});
    EXPECT_TRUE(file->ReadPage(page.data(), 16384, true, valid));
    EXPECT_EQ(valid, PageSize);
    EXPECT_EQ(std::string(page.begin(), page.end()), content.substr(16384, PageSize));
}

TEST(BinaryDamage, WhatIsFoundWithoutItIsFound) {
    std::string content(100000, 'x');
    content.replace(20000, 6, "needle").replace(51190, 6, "needle").replace(51400, 6, "needle");
    OpenedFile file(content);
    const Damage damage(51200, 51300);
    EXPECT_EQ(Find(*file, u"needle", {.from = 0}), (Match{20000, 6, false}));
    EXPECT_EQ(Find(*file, u"needle", {.from = 51100}), (Match{51190, 6, false})); // in the same page of the system
    EXPECT_EQ(Find(*file, u"needle", {.from = 51350}), (Match{51400, 6, false}));
    EXPECT_EQ(Find(*file, u"needle", {.from = 99000, .backward = true}), (Match{51400, 6, false}));
    EXPECT_EQ(Find(*file, u"needle", {.from = 51190, .backward = true}), (Match{20000, 6, false}));
    EXPECT_FALSE(file->SearchFailed());
}

TEST(BinaryDamage, ASearchThatMeetsItProvesNothing) {
    std::string content(100000, 'x');
    content.replace(20000, 6, "needle").replace(90000, 6, "needle");
    OpenedFile file(content);
    EXPECT_FALSE(file->SearchFailed());
    {
        const Damage damage(51200, 51300);
        // What lies on the other side might not be the next match, nor one past the end of the file.
        EXPECT_EQ(Find(*file, u"needle", {.from = 30000}), std::nullopt);
        EXPECT_TRUE(file->SearchFailed());
        EXPECT_EQ(Find(*file, u"needle", {.from = 80000, .backward = true}), std::nullopt);
        EXPECT_TRUE(file->SearchFailed());
        EXPECT_EQ(Find(*file, u"absent", {.from = 60000}), std::nullopt); // only once around
        EXPECT_TRUE(file->SearchFailed());
    }
    EXPECT_EQ(Find(*file, u"absent", {}), std::nullopt);
    EXPECT_FALSE(file->SearchFailed());
}

TEST(BinaryDamage, APatternWhoseTailCannotBeReadProvesNothing) {
    std::string content = Pattern(100000);
    content.replace(10000, 8000, content.substr(54000, 8000)); // a match farther away
    OpenedFile file(content);
    const Damage damage(60000, 60001);
    for (const bool backward : {false, true}) {
        const std::u16string hex = HexOf(content.substr(54000, 8000));
        EXPECT_EQ(Find(*file, hex, {.from = backward ? 59000u : 20000u, .backward = backward, .hexPattern = true}),
                  std::nullopt);
        EXPECT_TRUE(file->SearchFailed());
    }
}

TEST(BinaryDamage, RandomSearchesFindWhatANaiveOneDoesOrFail) {
    std::mt19937 random(4);
    int failures = 0;
    int matches = 0;
    for (int round = 0; round < 400; ++round) {
        std::string content(BorderSizes[6 + random() % 7], '\0');
        for (char& c : content) c = "ab"[random() % 2];
        OpenedFile file(content);
        const uint64_t from = random() % content.size();
        const Damage damage(from, from + 1 + random() % 600);
        std::string pattern(1 + random() % 25, 'a');
        for (char& c : pattern) c = "ab"[random() % 2];
        const Search search = {.from = random() % content.size(), .backward = random() % 2 == 0};
        const std::optional<Match> found = Find(*file, Wide(pattern), search);
        const bool failed = file->SearchFailed();
        failures += failed;
        matches += found.has_value();
        ASSERT_FALSE(failed && found);
        if (!failed) {
            ASSERT_EQ(found, NaiveFind(content, pattern, search)) << round;
        }
    }
    EXPECT_GT(failures, 20);
    EXPECT_GT(matches, 20);
}
