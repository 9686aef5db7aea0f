#include "document/TextBuffer.h"

#include "support/Random.h"
#include "support/TestServices.h"
#include "support/TextDocument.h"

#include <gtest/gtest.h>

namespace {

uint32_t LineAt(TextBuffer& document, uint32_t offset) {
    uint32_t start = 0;
    return document.OffsetToLine(offset, start);
}

uint32_t StartAt(TextBuffer& document, uint32_t offset) {
    uint32_t start = 0;
    document.OffsetToLine(offset, start);
    return start;
}

std::vector<uint32_t> CachedLines(const TextBuffer& document) {
    std::vector<uint32_t> lines;
    for (auto* entry = TextBufferProbe::Cache(document).Head(); entry; entry = entry->next)
        lines.push_back(entry->line);
    return lines;
}

using Lines = std::vector<uint32_t>;

} // namespace

TEST(TextStore, AnEmptyDocumentHasLengthZeroAndOneLine) {
    TextDocument document;
    EXPECT_EQ(document->Length(), 0u);
    EXPECT_EQ(document->GetLineCount(), 1u);
    EXPECT_EQ(document->Content()[0], 0);
    EXPECT_EQ(TextBufferProbe::Capacity(*document), 1u);
    EXPECT_EQ(document->LineToOffset(5), 0u);
    EXPECT_EQ(LineAt(*document, 0), 0u);
    EXPECT_TRUE(document->EditLineText().IsEmpty());
    EXPECT_EQ(document->EditLineNumber(), NoLine);
}

TEST(TextStore, ADocumentWithoutAStoreAnswersForTheStart) {
    auto* document = new TextBuffer(textServices);
    document->AddRef();
    bool isLast = false;
    EXPECT_EQ(document->Content(), nullptr);
    EXPECT_EQ(document->LineToOffset(3), 0u);
    EXPECT_EQ(LineAt(*document, 3), 0u);
    EXPECT_EQ(document->LineLength(0, isLast), 0u);
    EXPECT_TRUE(isLast);
    EXPECT_TRUE(document->LoadEditLine(0));
    EXPECT_EQ(document->EditLineNumber(), NoLine);
    EXPECT_EQ(document->Release(), 0u);
}

TEST(TextStore, TheLineCountIsOneMoreThanTheLineFeeds) {
    EXPECT_EQ(TextDocument(u"a")->GetLineCount(), 1u);
    EXPECT_EQ(TextDocument(u"a\n")->GetLineCount(), 2u);
    EXPECT_EQ(TextDocument(u"\n\n\n")->GetLineCount(), 4u);
}

TEST(TextStore, EveryGrowingEditEndsWithExactlyTheRoomNeeded) {
    TextDocument document(u"hello");
    EXPECT_EQ(TextBufferProbe::Capacity(*document), 6u);
    EXPECT_TRUE(document->InsertText(5, u" there", 6));
    EXPECT_EQ(TextBufferProbe::Capacity(*document), 12u);
    EXPECT_TRUE(document->InsertText(0, u"x", 1));
    EXPECT_EQ(TextBufferProbe::Capacity(*document), 13u);
    EXPECT_TRUE(document->DeleteText({0, 10}));
    EXPECT_EQ(TextBufferProbe::Capacity(*document), 13u) << "room is never given back by an edit";
    EXPECT_TRUE(document->InsertText(0, u"abc", 3));
    EXPECT_EQ(TextBufferProbe::Capacity(*document), 13u) << "and used before more is taken";
}

TEST(TextStore, TheTextIsAlwaysFollowedByANul) {
    TextDocument document(u"one\ntwo");
    EXPECT_TRUE(document->InsertText(3, u"xyz", 3));
    EXPECT_EQ(document->Content()[10], 0);
    EXPECT_TRUE(document->DeleteText({1, 9}));
    EXPECT_EQ(document->Content()[2], 0);
    EXPECT_EQ(document.Store(), u"oo");
}

TEST(TextStore, FindsTheStartOfEveryLine) {
    TextDocument document(u"one\n\nthree\n");
    const uint32_t starts[] = {0, 4, 5, 11};
    for (uint32_t line : {2u, 0u, 3u, 1u, 2u, 3u, 0u}) EXPECT_EQ(document->LineToOffset(line), starts[line]);
    EXPECT_EQ(document->LineToOffsetPlus({2, 100}), 105u) << "the column is not clamped";
}

TEST(TextStore, ALinePastTheEndYieldsTheStartOfTheLastLine) {
    TextDocument document(u"one\ntwo");
    EXPECT_EQ(document->LineToOffset(7), 4u);
    EXPECT_EQ(CachedLines(*document), (Lines{1})) << "the line reached is cached, not the one asked for";
    EXPECT_EQ(document->LineToOffset(UINT32_MAX), 4u);
    EXPECT_EQ(CachedLines(*document), (Lines{1})) << "nothing new was reached";
}

TEST(TextStore, FindsTheLineOfEveryOffset) {
    const std::u16string text = u"one\n\nthree\n";
    const uint32_t lines[] = {0, 0, 0, 0, 1, 2, 2, 2, 2, 2, 2, 3};
    const uint32_t starts[] = {0, 4, 5, 11};
    // From an empty cache, and walking forwards and backwards from each possible cached line.
    for (uint32_t cached = 0; cached <= 4; ++cached) {
        for (uint32_t offset = 0; offset <= 11; ++offset) {
            TextDocument document(text);
            if (cached < 4) document->LineToOffset(cached);
            EXPECT_EQ(LineAt(*document, offset), lines[offset]) << cached << ", " << offset;
            EXPECT_EQ(StartAt(*document, offset), starts[lines[offset]]) << cached << ", " << offset;
            const auto [line, column] = document->OffsetToLineColumn(offset);
            EXPECT_EQ(line, lines[offset]);
            EXPECT_EQ(column, offset - starts[line]);
        }
    }
}

TEST(TextStore, AnOffsetPastTheEndLiesInTheLastLine) {
    TextDocument document(u"one\ntwo");
    EXPECT_EQ(LineAt(*document, 1000), 1u);
    document->LineToOffset(0);
    EXPECT_EQ(LineAt(*document, 1000), 1u);
}

TEST(TextStore, LookUpsAcrossALongTextAreRight) {
    std::u16string text;
    std::vector<uint32_t> starts{0};
    Random random(5);
    while (text.size() < 2'000'000) {
        text.append(random.Below(random.OneIn(50) ? 4000 : 60), u'x');
        text += u'\n';
        starts.push_back(static_cast<uint32_t>(text.size()));
    }
    TextDocument document(text);
    for (int round = 0; round < 400; ++round) {
        const uint32_t line = random.Below(starts.size());
        ASSERT_EQ(document->LineToOffset(line), starts[line]);
        const uint32_t other = random.Below(starts.size());
        ASSERT_EQ(LineAt(*document, starts[other]), other);
        ASSERT_EQ(StartAt(*document, starts[other]), starts[other]);
    }
}

TEST(TextStore, ALookUpOfALineIsCachedOnlyWhenItWasNotThere) {
    TextDocument document(u"0\n1\n2\n3\n4\n5\n6\n7\n");
    document->LineToOffset(3);
    document->LineToOffset(3);
    EXPECT_EQ(CachedLines(*document), (Lines{3}));
    document->LineToOffset(5);
    EXPECT_EQ(CachedLines(*document), (Lines{5, 3}));
    document->LineToOffset(3);
    EXPECT_EQ(CachedLines(*document), (Lines{5, 3})) << "an answer from the cache does not move its entry";
}

TEST(TextStore, ALookUpOfAnOffsetIsCachedOnlyWhenTheCacheWasEmpty) {
    TextDocument document(u"0\n1\n2\n3\n4\n5\n6\n7\n");
    LineAt(*document, 9);
    EXPECT_EQ(CachedLines(*document), (Lines{4}));
    LineAt(*document, 3);
    LineAt(*document, 15);
    EXPECT_EQ(CachedLines(*document), (Lines{4}));
}

TEST(TextStore, ASixthDistinctLineLookUpEvictsTheOldestEntry) {
    TextDocument document(u"0\n1\n2\n3\n4\n5\n6\n7\n");
    for (uint32_t line = 1; line <= 6; ++line) document->LineToOffset(line);
    EXPECT_EQ(CachedLines(*document), (Lines{6, 5, 4, 3, 2}));
}

TEST(TextStore, LookUpsStayRightAfterEditsBeforeInsideAndAfterCachedLines) {
    for (uint32_t position = 0; position <= 12; ++position) {
        TextDocument document(u"ab\ncd\nef\ngh\n");
        for (uint32_t line = 0; line < 5; ++line) document->LineToOffset(line);
        EXPECT_TRUE(document->InsertText(position, u"x\ny", 3));
        if (position < 12) {
            EXPECT_TRUE(document->DeleteText({position + 3, position + 4}));
        }
        const std::u16string text = document.Store();
        uint32_t start = 0;
        for (uint32_t line = 0; line < document->GetLineCount(); ++line) {
            EXPECT_EQ(document->LineToOffset(line), start) << "edited at " << position << ", line " << line;
            EXPECT_EQ(LineAt(*document, start), line) << "edited at " << position;
            start = static_cast<uint32_t>(text.find(u'\n', start)) + 1;
        }
    }
}

TEST(TextStore, DeletingARangeThatContainsACachedLineStartRemovesThatEntry) {
    TextDocument document(u"ab\ncd\nef\ngh\n");
    for (uint32_t line : {0u, 1u, 2u, 3u}) document->LineToOffset(line);
    EXPECT_TRUE(document->DeleteText({4, 7})); // "d\ne": holds the start of line 2
    EXPECT_EQ(CachedLines(*document), (Lines{2, 1, 0}));
    EXPECT_EQ(document->LineToOffset(2), 6u);
}

TEST(TextStore, ALineIsAsLongAsTheWayToItsLineFeedOrTheEnd) {
    TextDocument document(u"one\n\nlast");
    bool isLast = true;
    EXPECT_EQ(document->LineLength(0, isLast), 3u);
    EXPECT_FALSE(isLast);
    EXPECT_EQ(document->LineLength(2, isLast), 1u);
    EXPECT_EQ(document->LineLength(4, isLast), 0u);
    EXPECT_FALSE(isLast);
    EXPECT_EQ(document->LineLength(5, isLast), 4u);
    EXPECT_TRUE(isLast);
}

TEST(TextStore, ALineLengthFromBeyondTheEndIsZeroAndLast) {
    TextDocument document(u"one\n");
    bool isLast = false;
    EXPECT_EQ(document->LineLength(4, isLast), 0u);
    EXPECT_TRUE(isLast);
    isLast = false;
    EXPECT_EQ(document->LineLength(UINT32_MAX, isLast), 0u);
    EXPECT_TRUE(isLast);
}

TEST(TextStore, InsertsAndDeletesAnywhere) {
    TextDocument document(u"bd");
    EXPECT_TRUE(document->InsertText(0, u"a\n", 2));
    EXPECT_TRUE(document->InsertText(3, u"c", 1));
    EXPECT_TRUE(document->InsertText(5, u"\ne", 2));
    EXPECT_EQ(document.Store(), u"a\nbcd\ne");
    EXPECT_EQ(document->GetLineCount(), 3u);
    EXPECT_TRUE(document->DeleteText({1, 3}));
    EXPECT_EQ(document.Store(), u"acd\ne");
    EXPECT_EQ(document->GetLineCount(), 2u);
}

TEST(TextStore, RequestsBeyondTheEndAreClamped) {
    TextDocument document(u"abc");
    EXPECT_TRUE(document->InsertText(100, u"d", 1));
    EXPECT_EQ(document.Store(), u"abcd");
    EXPECT_TRUE(document->DeleteText({2, 102}));
    EXPECT_EQ(document.Store(), u"ab");
    EXPECT_TRUE(document->DeleteText({100, 200}));
    EXPECT_EQ(document.Store(), u"ab");
}

TEST(TextStore, NothingToInsertOrDeleteLeavesNoStep) {
    TextDocument document(u"abc");
    EXPECT_TRUE(document->InsertText(1, u"", 0));
    EXPECT_TRUE(document->DeleteText({1, 1}));
    EXPECT_FALSE(document->IsModified());
    EXPECT_FALSE(document->CanDo(DocumentCommand::Undo));
}

TEST(TextStore, TextMayBeInsertedIntoItself) {
    TextDocument document(u"abc");
    EXPECT_TRUE(document->InsertText(1, document->Content(), 3));
    EXPECT_EQ(document.Store(), u"aabcbc");
}

TEST(TextStore, ATextThatCannotBeAddressedIsRefusedUnread) {
    TextDocument document(u"0123456789");
    const Char* nowhere = u"";
    EXPECT_FALSE(document->InsertText(3, nowhere, UINT32_MAX));
    EXPECT_FALSE(document->InsertText(3, nowhere, UINT32_MAX - 10));
    EXPECT_EQ(document.Store(), u"0123456789");
    EXPECT_FALSE(document->CanDo(DocumentCommand::Undo));
}
