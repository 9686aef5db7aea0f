#include "BinarySearchSupport.h"
#include "base/CodePage.h"
#include "support/FailureInjection.h"

TEST(BinaryFind, ForwardsFromAPositionAndAroundTheEnd) {
    OpenedFile file("one two one two");
    EXPECT_EQ(Find(*file, u"two", {.from = 0}), (Match{4, 3, false}));
    EXPECT_EQ(Find(*file, u"two", {.from = 5}), (Match{12, 3, false}));
    EXPECT_EQ(Find(*file, u"two", {.from = 13}), (Match{4, 3, true}));
    EXPECT_EQ(Find(*file, u"two", {.from = 1000}), (Match{4, 3, true}));
    EXPECT_EQ(Find(*file, u"three", {.from = 0}), std::nullopt);
}

TEST(BinaryFind, ForwardsOnlyPositionsBeforeTheEndCount) {
    OpenedFile file("one two one two");
    EXPECT_EQ(Find(*file, u"two", {.from = 5, .end = 12}), (Match{4, 3, true}));
    EXPECT_EQ(Find(*file, u"two", {.from = 0, .end = 4}), std::nullopt);
    EXPECT_EQ(Find(*file, u"two", {.from = 0, .end = 5}), (Match{4, 3, false}));
    EXPECT_EQ(Find(*file, u"two", {.from = 13, .end = 4}), std::nullopt);
}

TEST(BinaryFind, BackwardsFromAPositionAndAroundTheStart) {
    OpenedFile file("one two one two");
    EXPECT_EQ(Find(*file, u"one", {.from = 15, .backward = true}), (Match{8, 3, false}));
    EXPECT_EQ(Find(*file, u"one", {.from = 8, .backward = true}), (Match{0, 3, false}));
    EXPECT_EQ(Find(*file, u"two", {.from = 3, .backward = true}), (Match{12, 3, true}));
    // A match may begin before the position and reach beyond it.
    EXPECT_EQ(Find(*file, u"two", {.from = 5, .backward = true}), (Match{4, 3, false}));
}

TEST(BinaryFind, BackwardsFromTheStartGoesStraightToTheEnd) {
    OpenedFile file("one two one two");
    EXPECT_EQ(Find(*file, u"one", {.from = 0, .backward = true}), (Match{8, 3, true}));
}

TEST(BinaryFind, TextIsConvertedToTheAnsiPage) {
    const std::u16string text = u"caf\u00E9";
    std::string bytes(10, '\0');
    bytes.resize(FromUtf16(CodePage::Ansi, text.data(), text.size(), reinterpret_cast<uint8_t*>(bytes.data()), 10));
    OpenedFile file("a " + bytes + " b");
    EXPECT_EQ(Find(*file, text, {}), (Match{2, static_cast<uint32_t>(bytes.size()), false}));
}

TEST(BinaryFind, TextThatTheAnsiPageCannotExpressIsNotFound) {
    const std::u16string text = u"\u4E2D\u6587";
    uint8_t bytes[16];
    if (FromUtf16(CodePage::Ansi, text.data(), 2, bytes, 16) != 2 || bytes[0] != '?')
        GTEST_SKIP() << "the system's page can express it";
    OpenedFile file("what?? a?");
    EXPECT_EQ(Find(*file, text, {}), std::nullopt);
    EXPECT_EQ(Find(*file, u"a" + text.substr(1), {}), std::nullopt);
    EXPECT_EQ(Find(*file, u"??", {}), (Match{4, 2, false}));
}

TEST(BinaryFind, LetterCaseCountsOnlyWhenAskedForAndNeverInHex) {
    OpenedFile file("xxNeedle");
    EXPECT_EQ(Find(*file, u"nEEDLE", {.matchCase = false}), (Match{2, 6, false}));
    EXPECT_EQ(Find(*file, u"nEEDLE", {.matchCase = true}), std::nullopt);
    EXPECT_EQ(Find(*file, HexOf("needle"), {.matchCase = false, .hexPattern = true}), std::nullopt);
    EXPECT_EQ(Find(*file, HexOf("Needle"), {.matchCase = false, .hexPattern = true}), (Match{2, 6, false}));
    // Letters beyond ASCII match only themselves.
    OpenedFile other("\xC4");
    EXPECT_EQ(Find(*other, u"\u00E4", {.matchCase = false}), std::nullopt);
    // So do the neighbours of the letters, which lie as far apart as their two cases.
    OpenedFile neighbours("@[`{");
    EXPECT_EQ(Find(*neighbours, u"`{", {.matchCase = false}), (Match{2, 2, false}));
    EXPECT_EQ(Find(*neighbours, u"@[", {.from = 4, .matchCase = false, .backward = true}), (Match{0, 2, false}));
}

TEST(BinaryFind, HexPatternsTakeBlanksAndBothCases) {
    OpenedFile file(std::string("\0\xAB\xCD\x01", 4));
    EXPECT_EQ(Find(*file, u"ab CD", {.hexPattern = true}), (Match{1, 2, false}));
    EXPECT_EQ(Find(*file, u"00", {.hexPattern = true}), (Match{0, 1, false}));
}

TEST(BinaryFind, EmptyAndInvalidPatternsFindNothing) {
    OpenedFile file("abc");
    EXPECT_EQ(Find(*file, u"", {}), std::nullopt);
    EXPECT_EQ(Find(*file, u"", {.hexPattern = true}), std::nullopt);
    EXPECT_EQ(Find(*file, u"616", {.hexPattern = true}), std::nullopt);
    EXPECT_EQ(Find(*file, u"6g", {.hexPattern = true}), std::nullopt);
    EXPECT_EQ(Find(*file, u"a", {.hexPattern = true}), std::nullopt);
}

TEST(BinaryFind, APatternLongerThanTheFileOrTheWindowIsNotFound) {
    OpenedFile small("abc");
    for (const bool backward : {false, true})
        EXPECT_EQ(Find(*small, u"abcd", {.from = 3, .backward = backward}), std::nullopt);
    OpenedFile file(std::string(100000, 'x'));
    for (const bool backward : {false, true}) {
        EXPECT_EQ(Find(*file, std::u16string(32769, u'x'), {.from = 50000, .backward = backward}), std::nullopt);
        EXPECT_NE(Find(*file, std::u16string(32768, u'x'), {.from = 50000, .backward = backward}), std::nullopt);
    }
}

TEST(BinaryFind, SeesTheFileAndNotWhatIsUnsaved) {
    OpenedFile file(Pattern(60000));
    ASSERT_TRUE(file.Edit(50000, "needle in the haystack"));
    EXPECT_EQ(Find(*file, u"needle in", {}), std::nullopt);
    ASSERT_TRUE(file.Save());
    EXPECT_EQ(Find(*file, u"needle in", {}), (Match{50000, 9, false}));
}

TEST(BinaryFind, ReadsTheWindowAgainAfterItServedAsScratchSpace) {
    std::string content = Pattern(100000);
    content.replace(10, 6, "needle");
    OpenedFile file(content);
    Bytes page(16384);
    ASSERT_TRUE(file->ReadBytes(65536, page.data(), page.size()));
    EXPECT_EQ(Find(*file, u"needle", {}), (Match{10, 6, false}));
}

TEST(BinaryFind, AtEveryPageAndWindowBorder) {
    // In a file without it otherwise, the pattern is put around each border, wherever the window starts.
    for (const size_t n : {1u, 2u, 7u, 300u, 4096u, 4097u, 16384u, 20000u, 32768u}) {
        std::string pattern = Pattern(n, 5);
        pattern[0] = 'N';
        for (const size_t border : {0u, 16384u, 32768u, 49152u, 65536u, 98304u, 100000u}) {
            for (int delta = -2; delta <= 2; ++delta) {
                for (const size_t back : {size_t{0}, n / 2, n}) {
                    const auto place = static_cast<int64_t>(border) + delta - static_cast<int64_t>(back);
                    if (place < 0 || static_cast<size_t>(place) + n > 100000) continue;
                    std::string content(100000, 'x');
                    content.replace(static_cast<size_t>(place), n, pattern);
                    OpenedFile file(content);
                    const auto offset = static_cast<uint64_t>(place);
                    const auto length = static_cast<uint32_t>(n);
                    const std::u16string hex = HexOf(pattern);
                    const Match expected = {offset, length, false};
                    ASSERT_EQ(Find(*file, hex, {.from = 0, .hexPattern = true}), expected);
                    ASSERT_EQ(Find(*file, hex, {.from = 100000, .backward = true, .hexPattern = true}), expected);
                    const Match wrapped = {offset, length, true};
                    ASSERT_EQ(Find(*file, hex, {.from = offset + 1, .hexPattern = true}), wrapped);
                    ASSERT_EQ(Find(*file, hex, {.from = offset, .backward = true, .hexPattern = true}), wrapped);
                }
            }
        }
    }
}

TEST(BinaryFind, RandomSearchesMatchANaiveOne) {
    std::mt19937 random(12);
    for (int round = 0; round < 60; ++round) {
        // Few different bytes, so that much of a pattern is found in many places.
        const std::string alphabet = round % 2 ? "ab" : "abAB";
        std::string content(BorderSizes[random() % std::size(BorderSizes)], '\0');
        for (char& c : content) c = alphabet[random() % alphabet.size()];
        OpenedFile file(content);
        for (int i = 0; i < 40; ++i) {
            std::string pattern(1 + random() % 60, '\0');
            for (char& c : pattern) c = alphabet[random() % alphabet.size()];
            if (random() % 2 && pattern.size() < content.size())
                pattern = content.substr(random() % (content.size() - pattern.size()), pattern.size());
            Search search;
            search.from = random() % (content.size() + 2);
            search.end = random() % 4 ? content.size() : random() % (content.size() + 2);
            search.matchCase = random() % 2 == 0;
            search.backward = random() % 2 == 0;
            ASSERT_EQ(Find(*file, Wide(pattern), search), NaiveFind(content, pattern, search))
                << round << ' ' << pattern << ' ' << search.from << ' ' << search.end << ' ' << search.backward;
        }
    }
}

TEST(BinaryFind, LongPatternsThatAlmostOccurInManyPlaces) {
    std::mt19937 random(3);
    for (const size_t n : {4000u, 4096u, 4097u, 9000u}) {
        std::string content(90000, 'a');
        for (size_t at = 0; at < content.size(); at += n - 1 + random() % 300) content[at] = 'b';
        std::string pattern(n, 'a');
        pattern.push_back('b');
        OpenedFile file(content);
        for (int i = 0; i < 20; ++i) {
            Search search;
            search.from = random() % content.size();
            search.end = content.size();
            search.matchCase = true;
            search.backward = i % 4 == 0;
            ASSERT_EQ(Find(*file, Wide(pattern), search), NaiveFind(content, pattern, search))
                << n << ' ' << search.from;
        }
    }
}

TEST(BinaryFind, AHeadWithAnotherTailIsPassedOver) {
    std::mt19937 random(6);
    for (const size_t n : {4097u, 5000u, 16384u, 20000u, 32768u}) {
        std::string pattern(n, '\0');
        for (char& c : pattern) c = static_cast<char>('a' + random() % 26);
        std::string decoy = pattern;
        decoy.back() = '!';
        std::string upper = pattern;
        for (char& c : upper) c = static_cast<char>(c - 'a' + 'A');
        std::string content(150000, '.');
        content.replace(1000, n, decoy).replace(50000, n, upper).replace(100000, n, decoy);
        OpenedFile file(content);
        const Match match = {50000, static_cast<uint32_t>(n), false};
        const std::u16string text = Wide(pattern);
        EXPECT_EQ(Find(*file, text, {.from = 0, .matchCase = false}), match);
        EXPECT_EQ(Find(*file, text, {.from = 150000, .matchCase = false, .backward = true}), match);
        EXPECT_EQ(Find(*file, text, {.from = 0}), std::nullopt);
        EXPECT_EQ(Find(*file, Wide(upper), {.from = 0}), match);
        EXPECT_EQ(Find(*file, Wide(upper), {.from = 150000, .backward = true}), match);
        OpenedFile other(content.replace(50000, n, pattern));
        EXPECT_EQ(Find(*other, text, {.from = 0}), match);
        EXPECT_EQ(Find(*other, text, {.from = 150000, .backward = true}), match);
    }
}

TEST(BinaryFind, SeesWhatAnotherProgramHasWritten) {
    OpenedFile file("a needle, in a window");
    EXPECT_EQ(Find(*file, u"needle", {}), (Match{2, 6, false}));
    file.folder.Write("file.bin", "a thread and a needle");
    for (const bool backward : {false, true})
        EXPECT_EQ(Find(*file, u"needle", {.from = backward ? 21u : 0u, .backward = backward}), (Match{15, 6, false}));
}

TEST(BinaryFind, SeesWhatASaveHasWrittenToAFileThatTheWindowHolds) {
    OpenedFile file(std::string(1000, '.'));
    EXPECT_EQ(Find(*file, u"needle", {}), std::nullopt);
    ASSERT_TRUE(file.Edit(500, "needle"));
    EXPECT_EQ(Find(*file, u"needle", {}), std::nullopt);
    ASSERT_TRUE(file.Save());
    EXPECT_EQ(Find(*file, u"needle", {}), (Match{500, 6, false}));
}

TEST(BinaryFind, SeesWhatAFailedSaveHasWritten) {
    OpenedFile file(std::string(60000, '.'));
    ASSERT_TRUE(file.Edit(100, "first"));
    ASSERT_TRUE(file.Edit(20000, "second"));
    ASSERT_TRUE(file.Edit(40000, "third"));
    EXPECT_EQ(Find(*file, u"first", {}), std::nullopt);
    {
        FileCalls calls({7}); // sized, then sought and written twice, sought and now written
        EXPECT_FALSE(file.Save());
    }
    EXPECT_EQ(Find(*file, u"first", {}), (Match{100, 5, false}));
    EXPECT_EQ(Find(*file, u"second", {}), (Match{20000, 6, false}));
    EXPECT_EQ(Find(*file, u"third", {}), std::nullopt);
}

TEST(BinaryFind, ForwardsReadsEveryByteOnce) {
    OpenedFile file(std::string(5 * 32768 + 1, 'x'));
    FileCalls calls;
    EXPECT_EQ(Find(*file, u"absent, and long enough to reach over a border", {}), std::nullopt);
    EXPECT_EQ(calls.Count(), 6u);
}

TEST(BinaryFind, AReadThatFailsOnceIsRepeated) {
    std::string content(100000, 'x');
    content.replace(90000, 6, "needle");
    OpenedFile file(content);
    for (const bool backward : {false, true}) {
        FailEachFileCall([&] {
            EXPECT_EQ(Find(*file, u"needle", {.from = backward ? 100000u : 0u, .backward = backward}),
                      (Match{90000, 6, false}));
            return true;
        });
    }
}

TEST(BinaryFind, WithoutMemoryFindsNothing) {
    OpenedFile file("a needle");
    WString text;
    ASSERT_TRUE(text.Assign(u"needle"));
    const uint64_t failures = FailEachAllocation([&] {
        ByteHit hit;
        return file->FindBytes(text, {.end = 8, .matchCase = true}, hit);
    });
    EXPECT_EQ(failures, 1u);
}

TEST(BinaryFind, AShortenedFileEndsTheSearchWhereItEnds) {
    std::string content(100000, 'x');
    content.replace(10, 6, "needle").replace(90000, 6, "needle");
    OpenedFile file(content);
    std::filesystem::resize_file(file.folder.File("file.bin"), 50000);
    EXPECT_EQ(Find(*file, u"needle", {.from = 100, .end = 100000}), (Match{10, 6, true}));
    EXPECT_EQ(Find(*file, u"needle", {.from = 100000, .backward = true}), (Match{10, 6, false}));
    EXPECT_EQ(Find(*file, u"absent", {.from = 100000, .backward = true}), std::nullopt);
}
