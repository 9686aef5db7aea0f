// How the output of a command becomes text of a document.

#include "base/CodePage.h"
#include "core/document/AnsiPage.h"
#include "core/document/LoadSaveSupport.h"
#include "core/document/RunAppendTest.h"
#include "support/Random.h"
#include "support/WithAdditional.h"

TEST_F(AppendTest, LineBreaksWithCarriageReturnsAreLineFeeds) {
    PrintAndPoll("one\r\ntwo\r\n");
    EXPECT_EQ(document.Text(), u"one\ntwo\n");
    EXPECT_EQ(document->GetLineCount(), 3u);
}

TEST_F(AppendTest, ALoneCarriageReturnDisappears) {
    PrintAndPoll("10%\r20%\r\r30%");
    EXPECT_EQ(document.Text(), u"10%20%30%");
}

TEST_F(AppendTest, ACarriageReturnAtTheEndOfAReadDisappears) {
    PrintAndPoll("one\r");
    PrintAndPoll("\ntwo");
    EXPECT_EQ(document.Text(), u"one\ntwo");
    document->EmptyAndResetUndo();
    PrintAndPoll(std::string(ReadSize - 1, 'x') + "\r\nend");
    EXPECT_EQ(document.Text(), std::u16string(ReadSize - 1, u'x') + u"\nend");
}

TEST_F(AppendTest, BytesAreOfTheAnsiPage) {
    PrintAndPoll("caf\xE9 \x80 100\xB5\r\n");
    EXPECT_EQ(document.Text(), u"caf\u00E9 \u20AC 100\u00B5\n");
}

TEST_F(AppendTest, AReadEndsAtItsFirstZeroByte) {
    using namespace std::string_literals;
    PrintAndPoll("ab\0cd\n"s);
    EXPECT_EQ(document.Text(), u"ab");
    PrintAndPoll("ef\0\0\n"s);
    EXPECT_EQ(document.Text(), u"abef");
    PrintAndPoll("\0"s);
    PrintAndPoll("gh");
    EXPECT_EQ(document.Text(), u"abefgh");
    ExpectSound();
}

TEST_F(AppendTest, TheReadAfterOneWithAZeroByteIsShown) {
    std::string bytes(ReadSize * 2, 'a');
    bytes[10] = '\0';
    std::fill(bytes.begin() + ReadSize, bytes.end(), 'b');
    PrintAndPoll(bytes);
    EXPECT_EQ(document.Text(), std::u16string(10, u'a') + std::u16string(ReadSize, u'b'));
}

TEST_F(AppendTest, NothingNewChangesNothing) {
    FakeView* view = FakeView::Create(*document);
    view->Activate();
    PrintAndPoll("text");
    view->ForgetCalls();
    document->PollOutput();
    EXPECT_EQ(view->invalidations, 0);
    EXPECT_EQ(view->caretMoves, 0);
    EXPECT_EQ(view->lineCountChanges, 0);
}

TEST_F(AppendTest, CaretsAtTheEndFollowAndOthersStay) {
    PrintAndPoll("one\ntwo");
    FakeView* following = FakeView::Create(*document);
    FakeView* reading = FakeView::Create(*document);
    following->Activate();
    following->PutCaret(1, 3);
    reading->PutCaret(1, 2);
    reading->SetTopLine(0);
    PrintAndPoll(" more\nthree");
    EXPECT_EQ(following->CaretLine(), 2u);
    EXPECT_EQ(following->CaretColumn(), 5u);
    EXPECT_EQ(reading->CaretLine(), 1u);
    EXPECT_EQ(reading->CaretColumn(), 2u);
    EXPECT_EQ(reading->TopLine(), 0u);
    PrintAndPoll("!");
    EXPECT_EQ(following->CaretColumn(), 6u);
    EXPECT_GT(reading->invalidations, 0);
}

TEST_F(AppendTest, ACaretAtTheEndOfAnotherLineStays) {
    PrintAndPoll("one\ntwo");
    FakeView* view = FakeView::Create(*document);
    view->PutCaret(0, 3);
    PrintAndPoll("!");
    EXPECT_EQ(view->CaretLine(), 0u);
    EXPECT_EQ(view->CaretColumn(), 3u);
}

TEST_F(AppendTest, ALineTypedInBeforeIsWrittenBackFirst) {
    FakeView* view = FakeView::Create(*document);
    view->Activate();
    PrintAndPoll("one");
    EXPECT_EQ(document->EditLineNumber(), NoLine);
    EXPECT_TRUE(document->TypeChar(view, u'x', 0, true, false));
    PrintAndPoll(" more");
    EXPECT_EQ(document.Text(), u"one more");
    EXPECT_EQ(document->EditLineNumber(), NoLine);
}

TEST_F(AppendTest, TextOfTheProgramItselfMayComeBetween) {
    FakeView* view = FakeView::Create(*document);
    view->Activate();
    PrintAndPoll("one\ntw");
    std::u16string note = u"[note\r\n]";
    EXPECT_TRUE(document->AppendOutputText(note.data()));
    PrintAndPoll("o\n");
    EXPECT_EQ(document.Text(), u"one\ntw[note\n]o\n");
    EXPECT_EQ(document->GetLineCount(), 4u);
    EXPECT_EQ(view->CaretLine(), 3u);
    EXPECT_EQ(view->CaretColumn(), 0u);
    ExpectSound();
}

TEST_F(AppendTest, OneEndlessLine) {
    FakeView* view = FakeView::Create(*document);
    view->Activate();
    const std::string piece(100'000, 'x');
    for (size_t i = 1; i <= 4; ++i) {
        PrintAndPoll(piece);
        EXPECT_EQ(document->GetLineCount(), 1u);
        EXPECT_EQ(view->CaretColumn(), i * piece.size());
        bool isLast = false;
        EXPECT_EQ(document->LineLength(0, isLast), i * piece.size());
        EXPECT_TRUE(isLast);
    }
    ExpectSound();
}

TEST_F(AppendTest, MuchOutput) {
    const std::string printed = Repeated("0123456789 abcdefghij\r\n", 50'000);
    PrintAndPoll(printed);
    EXPECT_TRUE(document.Store() == Appended(printed));
    ExpectSound();
}

TEST_F(AppendTest, NoCharacterOfTheAnsiPageIsCutAnywhere) {
    // In a page of single bytes some of these are question marks.
    const std::u16string text = u"a\u00E9 \u20AC\u65E5\u672C\u8A9E \uFF71\u6F22\uAC00\u0416z\n";
    uint8_t bytes[64];
    Char expected[64];
    const size_t count = FromUtf16(CodePage::Ansi, text.data(), text.size(), bytes, sizeof(bytes));
    const size_t length = ToUtf16(CodePage::Ansi, bytes, count, expected, std::size(expected));
    ASSERT_GT(length, 0u);
    const std::string printed(reinterpret_cast<const char*>(bytes), count);
    for (size_t cut = 0; cut <= count; ++cut) {
        document->EmptyAndResetUndo();
        PrintAndPoll(printed.substr(0, cut));
        PrintAndPoll(printed.substr(cut));
        EXPECT_EQ(document.Text(), std::u16string(expected, length)) << cut;
    }
}

TEST_F(AppendTest, ACharacterIsNotCutAtTheEndOfAPoll) {
    const Utf8IsAnsi page;
    FakeView* view = FakeView::Create(*document);
    view->Activate();
    PrintAndPoll("a\xE2");
    EXPECT_EQ(document.Text(), u"a");
    view->ForgetCalls();
    PrintAndPoll("\x82");
    EXPECT_EQ(document.Text(), u"a");
    EXPECT_EQ(view->invalidations, 0);
    PrintAndPoll("\xAC\xF0\x9F");
    EXPECT_EQ(document.Text(), u"a\u20AC");
    PrintAndPoll("\x98\x80z");
    EXPECT_EQ(document.Text(), u"a\u20AC\U0001F600z");
}

TEST_F(AppendTest, ACharacterIsNotCutAtTheEndOfARead) {
    const Utf8IsAnsi page;
    for (size_t shift = 0; shift < 4; ++shift) {
        document->EmptyAndResetUndo();
        PrintAndPoll(std::string(shift, '-') + Repeated("\xF0\x9F\x98\x80", 5000));
        std::u16string expected(shift, u'-');
        for (int i = 0; i < 5000; ++i) expected += u"\U0001F600";
        EXPECT_TRUE(document.Text() == expected) << shift;
    }
}

TEST_F(AppendTest, ACharacterWithoutItsRestIsShownAtTheEnd) {
    const Utf8IsAnsi page;
    PrintAndPoll("a\xE2\x82");
    EXPECT_EQ(document.Text(), u"a");
    End();
    EXPECT_EQ(document.Text(), u"a\uFFFD");
}

TEST_F(AppendTest, InvalidBytesHoldNothingUp) {
    const Utf8IsAnsi page;
    PrintAndPoll("a\x82\x82\x82\x82\x82");
    EXPECT_EQ(document.Text(), u"a\uFFFD\uFFFD\uFFFD\uFFFD\uFFFD");
    PrintAndPoll("\xE2z");
    EXPECT_EQ(document.Text(), u"a\uFFFD\uFFFD\uFFFD\uFFFD\uFFFD\uFFFDz");
    PrintAndPoll("\xFF");
    PrintAndPoll("y");
    EXPECT_EQ(document.Text().back(), u'y');
}

TEST_F(AppendTest, OutputPastFourGigabytesIsReadAtItsPlace) {
    PrintAndPoll("before");
    constexpr uint64_t Far = 5'000'000'000;
    MoveTo(*document, Far); // the file has a hole
    TextBufferProbe::Run(*document).consumed = Far;
    PrintAndPoll(" and after");
    EXPECT_EQ(document.Text(), u"before and after");
    PrintAndPoll("!");
    EXPECT_EQ(document.Text(), u"before and after!");
    End();
}

TEST_F(AppendTest, ACommandThatEmptiesItsFileIsReadOn) {
    PrintAndPoll("before");
    TextBufferProbe::Run(*document).consumed = 1000; // as if there had been more
    document->PollOutput();
    EXPECT_EQ(document.Text(), u"before");
    PrintAndPoll("after");
    EXPECT_EQ(document.Text(), u"beforeafter");
}

TEST_F(AppendTest, RandomOutputComesOutAsTheRulesSay) {
    Random random(20240617);
    FakeView* view = FakeView::Create(*document);
    view->Activate();
    std::u16string expected;
    const std::string alphabet("abcdefghijklmnop \n\n\r\r\n\0\x80\xE9\xFF", 26);
    for (int round = 0; round < 400; ++round) {
        std::string bytes(random.Below(random.OneIn(10) ? 30000 : 60), 'x');
        const bool mayEnd = random.OneIn(3);
        for (char& c : bytes) {
            c = alphabet[random.Below(alphabet.size())];
            if (c == '\0' && !mayEnd) c = 'z';
        }
        const bool follows = random.OneIn(2);
        const uint32_t line = random.Below(document->GetLineCount());
        follows ? view->PutCaret(document->GetLineCount() - 1, UINT32_MAX) : view->PutCaret(line, 0);
        PrintAndPoll(bytes);
        std::u16string added = Appended(bytes);
        std::replace(added.begin(), added.end(), u'\x80', u'\u20AC');
        expected += added;
        ASSERT_TRUE(document.Store() == expected) << round;
        ExpectSound();
        EXPECT_EQ(follows ? view->CaretOffset() : expected.size(), expected.size());
        bool isLast = false;
        const uint32_t lineStart = document->LineToOffset(view->CaretLine());
        const size_t lineEnd = expected.find(u'\n', lineStart);
        ASSERT_EQ(lineStart + document->LineLength(lineStart, isLast), std::min(lineEnd, expected.size()));
        ASSERT_EQ(isLast, lineEnd == expected.npos);
        if (random.OneIn(50)) {
            document->EmptyAndResetUndo();
            expected.clear();
        }
    }
}

namespace {

// The page is that of the run, so a run is started after it was set.
struct OutputPageTest : RunTest {
    explicit OutputPageTest(uint32_t number = 0) { on->OutputCodePage = number; }
    std::u16string Printed(const std::vector<std::string>& parts) {
        TextDocument document;
        EXPECT_TRUE(RunSilently(*document));
        for (const std::string& part : parts) {
            Print(*document, part);
            document->PollOutput();
        }
        return document.Text();
    }
    const WithAdditional on;
};

struct Utf8OutputTest : OutputPageTest {
    Utf8OutputTest() : OutputPageTest(65001) {}
};

} // namespace

TEST_F(OutputPageTest, WithoutTheSettingBytesAreOfTheAnsiPage) {
    EXPECT_EQ(Printed({"\xC3\xA9 \xE2\x82\xAC"}), Decoded(CodePage::Ansi, "\xC3\xA9 \xE2\x82\xAC"));
}

TEST_F(OutputPageTest, OneIsTheOemPage) {
    on->OutputCodePage = 1;
    std::string bytes;
    for (int byte = 0x80; byte < 0x100; ++byte) bytes.push_back(static_cast<char>(byte));
    EXPECT_EQ(Printed({bytes}), Decoded(CodePage::Oem, bytes));
}

TEST_F(OutputPageTest, AnyOtherNumberIsThatPage) {
    const auto page = FindCodePage(850);
    if (page == CodePage::Ansi) GTEST_SKIP() << "the system does not have it";
    on->OutputCodePage = 850;
    EXPECT_EQ(Printed({"\x84\x81\xE1 \xB3"}), u"\u00E4\u00FC\u00DF \u2502");
}

TEST_F(OutputPageTest, CharactersOfSeveralBytesAreNotCut) {
    if (FindCodePage(932) == CodePage::Ansi) GTEST_SKIP() << "the system does not have it";
    on->OutputCodePage = 932;
    const std::string bytes = "a\x93\xFA\xB1\x93\x5Cz";
    for (size_t cut = 0; cut <= bytes.size(); ++cut)
        EXPECT_EQ(Printed({bytes.substr(0, cut), bytes.substr(cut)}), u"a\u65E5\uFF71\u8CBCz") << cut;
}

TEST_F(OutputPageTest, ANumberOfNoPageIsAnsi) {
    for (const uint32_t number : {7u, 12345u, 1200u, 4294967295u}) {
        on->OutputCodePage = number;
        EXPECT_EQ(Printed({"\xE9\x80"}), Decoded(CodePage::Ansi, "\xE9\x80")) << number;
    }
}

TEST_F(OutputPageTest, ARunKeepsThePageThatItBeganWith) {
    TextDocument document;
    on->OutputCodePage = 65001;
    ASSERT_TRUE(RunSilently(*document));
    Print(*document, "\xC3");
    document->PollOutput();
    on->OutputCodePage = 0;
    Print(*document, "\xA9");
    document->PollOutput();
    EXPECT_EQ(document.Text(), u"\u00E9");
}

TEST_F(Utf8OutputTest, SequencesAreNotCutByAPoll) {
    const std::string bytes = "a\xC5\x82\xE2\x82\xAC\xF0\x9F\x98\x80z";
    for (size_t cut = 0; cut <= bytes.size(); ++cut)
        EXPECT_EQ(Printed({bytes.substr(0, cut), bytes.substr(cut)}), u"a\u0142\u20AC\U0001F600z") << cut;
    std::vector<std::string> single;
    for (const char c : bytes) single.emplace_back(1, c);
    EXPECT_EQ(Printed(single), u"a\u0142\u20AC\U0001F600z");
}

TEST_F(Utf8OutputTest, SequencesAreNotCutByARead) {
    for (size_t shift = 0; shift < 4; ++shift) {
        std::string bytes(shift, '-');
        std::u16string expected(shift, u'-');
        for (int i = 0; i < 3000; ++i) {
            bytes += "\xF0\x9F\x98\x80";
            expected += u"\U0001F600";
        }
        EXPECT_TRUE(Printed({bytes}) == expected) << shift;
    }
}

TEST_F(Utf8OutputTest, InvalidBytesHoldNothingUp) {
    EXPECT_EQ(Printed({"a\x82\xFF\xC0\xAFz"}), u"a\uFFFD\uFFFD\uFFFD\uFFFDz");
    EXPECT_EQ(Printed({"\xE2\x82", "z"}), u"\uFFFDz");
}

TEST_F(Utf8OutputTest, ASequenceWithoutItsRestIsShownAtTheEnd) {
    TextDocument document;
    ASSERT_TRUE(RunSilently(*document));
    Print(*document, "a\xE2\x82");
    document->PollOutput();
    EXPECT_EQ(document.Text(), u"a");
    speaker.Give("end");
    ASSERT_TRUE(PollToTheEnd(*document));
    EXPECT_EQ(document.Text(), u"a\uFFFD");
}
