#include "support/FailureInjection.h"
#include "support/ViewTest.h"

#include <cstring>

namespace {

struct ClipboardTest : ViewTest {
    void PutOnClipboard(const std::u16string& text, bool wholeLine = false) {
        surface().clipboard = text;
        surface().clipboardHasText = true;
        surface().clipboardWholeLine = wholeLine;
    }
    std::string AfterPaste(const std::u16string& text, const std::u16string& pasted, bool wholeLine = false,
                           bool shift = false) {
        Show(text);
        PutOnClipboard(pasted, wholeLine);
        Press(u'V', true, shift);
        return Marked();
    }
    static std::string Bytes(const std::u16string& text) {
        std::string bytes((text.size() + 1) * 2, '\0');
        std::memcpy(bytes.data(), text.data(), text.size() * 2);
        return bytes;
    }
};

using Written = std::vector<std::pair<ClipboardFormat, std::string>>;

} // namespace

TEST_F(ClipboardTest, CopyWritesTheSelectionWithDosLineEnds) {
    Show(u"a^b\n\nc|d");
    Ctrl(u'C');
    EXPECT_EQ(surface().written, (Written{{ClipboardFormat::UnicodeText, Bytes(u"b\r\n\r\nc")}}));
    EXPECT_EQ(Marked(), "a^b\n\nc|d");
}

TEST_F(ClipboardTest, CopyWithoutASelectionTakesTheWholeLine) {
    Show(u"a\nb|c\nd");
    Ctrl(u'C');
    EXPECT_EQ(surface().written, (Written{{ClipboardFormat::UnicodeText, Bytes(u"bc\r\n")},
                                          {ClipboardFormat::WholeLine, Bytes(u"bc\r\n")}}));
}

TEST_F(ClipboardTest, TheLastLineHasNoLineFeedToCopy) {
    Show(u"a\nb|c");
    Ctrl(u'C');
    EXPECT_EQ(surface().written[0].second, Bytes(u"bc"));
}

TEST_F(ClipboardTest, APendingEditIsCopiedToo) {
    Show(u"a|\nd");
    Type(u"bc");
    Ctrl(u'C');
    EXPECT_EQ(surface().written[0].second, Bytes(u"abc\r\n"));
    EXPECT_FALSE(buffer().HasPendingEdit());
}

TEST_F(ClipboardTest, ACopiedLineIsPastedAboveTheCaretLine) {
    Show(u"one\ntw|o\nthree");
    Ctrl(u'C');
    view().MoveCaret({2, 3});
    Ctrl(u'V');
    EXPECT_EQ(Marked(), "one\ntwo\ntwo\nthr|ee");
}

TEST_F(ClipboardTest, CutTakesTheSelectionOrTheWholeLine) {
    Show(u"a^bc|d\ne");
    Ctrl(u'X');
    EXPECT_EQ(Marked(), "a|d\ne");
    EXPECT_EQ(surface().written, (Written{{ClipboardFormat::UnicodeText, Bytes(u"bc")}}));
    Ctrl(u'X');
    EXPECT_EQ(Marked(), "|e");
    EXPECT_EQ(surface().written.size(), 2u);
    EXPECT_EQ(surface().written[0].second, Bytes(u"ad\r\n"));
}

TEST_F(ClipboardTest, CuttingAnEmptyLastLineChangesNothingOnScreen) {
    for (const char16_t* text : {u"", u"a\n|"}) {
        Show(text);
        Resize(80, 10);
        host().status[StatusField::Message] = u"said";
        surface().ForgetCalls();
        surface().clipboard = u"old";
        const std::string before = Marked();
        Ctrl(u'X');
        EXPECT_EQ(Marked(), before);
        EXPECT_EQ(Status(StatusField::Message), "said");
        EXPECT_EQ(surface().allInvalidations, 0);
        EXPECT_TRUE(surface().strips.empty());
        EXPECT_EQ(surface().clipboard, u"") << "it is copied all the same";
        EXPECT_EQ(document->UndoSteps(), 0u);
    }
}

TEST_F(ClipboardTest, CuttingALineRepaintsOnce) {
    Show(u"a|b\nc");
    Ctrl(u'X');
    EXPECT_EQ(surface().allInvalidations, 1);
}

TEST_F(ClipboardTest, PasteNormalisesLineEnds) { EXPECT_EQ(AfterPaste(u"|", u"a\r\nb\rc\nd"), "^a\nb\nc\nd|"); }

TEST_F(ClipboardTest, PasteReplacesTheSelectionInOneStep) {
    EXPECT_EQ(AfterPaste(u"a^bc|d", u"x"), "ax|d");
    EXPECT_EQ(document->UndoSteps(), 1u);
    EXPECT_TRUE(buffer().Undo());
    EXPECT_EQ(Marked(), "a^bc|d");
}

TEST_F(ClipboardTest, SeveralPastedLinesStaySelectedByTheSetting) {
    settings.PasteKeepSelection = 1;
    EXPECT_EQ(AfterPaste(u"a|b", u"x\ny\nz"), "a^x\ny\nz|b");
    EXPECT_EQ(AfterPaste(u"a|b", u"x\ny\nz", false, true), "ax\ny\nz|b"); // with Shift held, not
    EXPECT_EQ(AfterPaste(u"a|b", u"xyz"), "axyz|b");                      // one line never is
}

TEST_F(ClipboardTest, WithTheSettingOffShiftKeepsTheSelection) {
    settings.PasteKeepSelection = 0;
    EXPECT_EQ(AfterPaste(u"a|b", u"x\ny"), "ax\ny|b");
    EXPECT_EQ(AfterPaste(u"a|b", u"x\ny", false, true), "a^x\ny|b");
}

TEST_F(ClipboardTest, AWholeLineGoesAboveTheLineOfTheSelection) {
    EXPECT_EQ(AfterPaste(u"a^b|c\nd", u"new\r\n", true), "new\na|c\nd");
}

TEST_F(ClipboardTest, WithoutTextPasteDoesNothing) {
    Show(u"a^b|c");
    Ctrl(u'V');
    EXPECT_EQ(Marked(), "a^b|c");
    EXPECT_EQ(document->UndoSteps(), 0u);
}

TEST_F(ClipboardTest, AReadOnlyDocumentTakesNoPaste) {
    Show(u"a^b|c");
    EXPECT_TRUE(buffer().MarkAsOutput());
    PutOnClipboard(u"xyz");
    Ctrl(u'V');
    EXPECT_EQ(Marked(), "a^b|c");
}

TEST_F(ClipboardTest, PastedTextEndsAtANul) { EXPECT_EQ(AfterPaste(u"|", std::u16string(u"ab\0cd", 5)), "ab|"); }

TEST_F(ClipboardTest, WithoutMemoryAPasteIsNotHalfDone) {
    const uint64_t failures = FailEachAllocation([&] {
        {
            FailurePause pause;
            Show(u"a^bcd|e");
            PutOnClipboard(u"longer than what was there");
        }
        Ctrl(u'V');
        FailurePause pause;
        const std::string after = Marked();
        EXPECT_TRUE(after == "a^bcd|e" || after == "alonger than what was there|e") << after;
        return after != "a^bcd|e";
    });
    EXPECT_GT(failures, 3u);
}

TEST_F(ClipboardTest, WithoutMemoryACopyWritesNothing) {
    const uint64_t failures = FailEachAllocation([&] {
        {
            FailurePause pause;
            Show(u"a^b\ncd|e");
            surface().written.clear();
        }
        Ctrl(u'C');
        FailurePause pause;
        EXPECT_TRUE(surface().written.empty() || surface().written[0].second == Bytes(u"b\r\ncd"));
        return !surface().written.empty();
    });
    EXPECT_GT(failures, 0u);
}

// Commands.

TEST_F(ClipboardTest, CommandsAreEnabledByTheSelection) {
    Show(u"abc");
    const bool withoutSelection[] = {false, false, false, false, true, true, true, false, true, false};
    const bool withSelection[] = {true, true, false, true, true, true, true, false, true, true};
    for (uint32_t number = 0; number < ViewCommandCount; ++number) {
        const auto command = static_cast<ViewCommand>(number);
        view().SelectRange({0, 0});
        EXPECT_EQ(input().IsCommandEnabled(command), withoutSelection[number]) << number;
        view().SelectRange({0, 2});
        EXPECT_EQ(input().IsCommandEnabled(command), withSelection[number]) << number;
    }
    EXPECT_FALSE(input().IsCommandEnabled(static_cast<ViewCommand>(10)));
}

TEST_F(ClipboardTest, ReplacingNeedsAWritableDocument) {
    EXPECT_TRUE(buffer().MarkAsOutput());
    EXPECT_FALSE(input().IsCommandEnabled(ViewCommand::Replace));
    EXPECT_TRUE(input().IsCommandEnabled(ViewCommand::Find));
}

TEST_F(ClipboardTest, EachCommandDoesItsWork) {
    Show(u"one t^w|o");
    EXPECT_TRUE(input().ExecuteCommand(ViewCommand::Copy));
    EXPECT_EQ(Plain(surface().clipboard), "w");
    EXPECT_TRUE(input().ExecuteCommand(ViewCommand::Delete));
    EXPECT_EQ(Marked(), "one t|o");
    EXPECT_TRUE(input().ExecuteCommand(ViewCommand::Delete)); // nothing when empty
    EXPECT_EQ(Marked(), "one t|o");
    EXPECT_TRUE(input().ExecuteCommand(ViewCommand::Paste));
    EXPECT_EQ(Marked(), "one tw|o");
    EXPECT_TRUE(input().ExecuteCommand(ViewCommand::SelectAll));
    EXPECT_EQ(Marked(), "^one two|");
    EXPECT_TRUE(input().ExecuteCommand(ViewCommand::Cut));
    EXPECT_EQ(Marked(), "|");
    EXPECT_TRUE(input().ExecuteCommand(ViewCommand::Find));
    EXPECT_TRUE(input().ExecuteCommand(ViewCommand::Replace));
    EXPECT_TRUE(input().ExecuteCommand(ViewCommand::GoToLine));
    EXPECT_EQ(surface().dialogs, (std::vector<std::string>{"find", "replace many", "go to"}));
    EXPECT_TRUE(input().ExecuteCommand(ViewCommand::ToggleBookmark));
    EXPECT_EQ(document->MarkedLines(), std::vector<uint32_t>{0});
    EXPECT_FALSE(input().ExecuteCommand(static_cast<ViewCommand>(10)));
    EXPECT_FALSE(input().ExecuteCommand(static_cast<ViewCommand>(UINT32_MAX)));
}
