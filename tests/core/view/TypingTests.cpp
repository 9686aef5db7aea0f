#include "support/FailureInjection.h"
#include "support/ViewTest.h"
#include "support/WithAdditional.h"

namespace {

struct TypingTest : ViewTest {
    std::string AfterTyping(const std::u16string& text, const std::u16string& typed) {
        Show(text);
        Type(typed);
        return Marked();
    }
    std::string AfterTab(const std::u16string& text, bool shift = false) {
        Show(text);
        surface().shift = shift;
        Type(u"\t");
        surface().shift = false;
        return Marked();
    }
};

} // namespace

TEST_F(TypingTest, CharactersGoInAtTheCaret) {
    EXPECT_EQ(AfterTyping(u"a|c", u"b"), "ab|c");
    EXPECT_EQ(AfterTyping(u"a\n|\nc", u"xyz"), "a\nxyz|\nc");
}

TEST_F(TypingTest, ControlCharactersAreIgnored) {
    EXPECT_EQ(AfterTyping(u"a|c", std::u16string(u"\0\b\x1B\x1F", 4)), "a|c");
    Show(u"a|c");
    input().OnChar(32);
    EXPECT_EQ(Marked(), "a |c");
}

TEST_F(TypingTest, WithCtrlHeldNothingIsInserted) {
    Show(u"a|c");
    surface().ctrl = true; // AltGr arrives as Ctrl+Alt
    Type(u"\u20ACx\r\t");
    EXPECT_EQ(Marked(), "a|c");
}

TEST_F(TypingTest, WithCtrlAndAltHeldNothingIsInsertedByDefault) {
    Show(u"a|c");
    surface().ctrl = surface().alt = true;
    Type(u"\u20ACx\r\t");
    EXPECT_EQ(Marked(), "a|c");
}

TEST_F(TypingTest, WithAltGrOnWhatIsTypedWithCtrlAndAltIsInserted) {
    const WithAdditional on;
    on->AltGr = 1;
    Show(u"a|c");
    surface().ctrl = surface().alt = true;
    Type(u"@{\u0142");
    EXPECT_EQ(Text(), u"a@{\u0142c");
    Type(u"\r\n\t\x1B\b");
    EXPECT_EQ(Text(), u"a@{\u0142c") << "keys with a meaning of their own type nothing";
    Show(u"a^bc|d");
    surface().ctrl = surface().alt = true;
    Type(u"]");
    EXPECT_EQ(Marked(), "a]|d");
}

TEST_F(TypingTest, WithAltGrOnCtrlAloneStillTypesNothing) {
    const WithAdditional on;
    on->AltGr = 1;
    Show(u"a|c");
    surface().ctrl = true;
    Type(u"x\r\t");
    EXPECT_EQ(Marked(), "a|c");
    surface().ctrl = false;
    surface().alt = true; // what Alt alone types comes as another message, but for the digits of a number
    Type(u"\u00E9");
    EXPECT_EQ(Text(), u"a\u00E9c");
}

TEST_F(TypingTest, WhatIsComposedIsTypedAlsoWithCtrlHeld) {
    Show(u"a^bc|d");
    surface().ctrl = true;
    for (const Char c : std::u16string(u"\b\u65E5\U00020BB7")) input().OnComposed(c);
    EXPECT_EQ(Text(), u"a\u65E5\U00020BB7d");
    ASSERT_TRUE(buffer().MarkAsOutput());
    input().OnComposed(u'\u65E5');
    EXPECT_EQ(Text(), u"a\u65E5\U00020BB7d") << "output is not edited";
}

TEST_F(TypingTest, AComposedPairIsOneStepWithWholeCharacters) {
    const WithAdditional on;
    on->WholeCharacters = 1;
    Show(u"a|b");
    surface().ctrl = true;
    for (const Char c : std::u16string(u"\U00020BB7")) input().OnComposed(c);
    surface().ctrl = false;
    EXPECT_EQ(Text(), u"a\U00020BB7b");
    Ctrl(u'Z');
    EXPECT_EQ(Text(), u"ab");
}

TEST_F(TypingTest, ACompositionBringsTheCaretIntoView) {
    Show(std::u16string(u"|x") + std::u16string(50, u'\n'));
    view().SetTopLine(20);
    input().OnComposition();
    EXPECT_EQ(view().TopLine(), 0u);
    ASSERT_TRUE(buffer().MarkAsOutput());
    view().SetTopLine(20);
    input().OnComposition();
    EXPECT_EQ(view().TopLine(), 20u);
}

TEST_F(TypingTest, ASelectionIsReplaced) {
    EXPECT_EQ(AfterTyping(u"a^bc|d", u"x"), "ax|d");
    EXPECT_EQ(AfterTyping(u"a^b\nc|d", u"\r"), "a\n|d");
}

TEST_F(TypingTest, EnterAndLineFeedBreakTheLineWithItsIndentation) {
    EXPECT_EQ(AfterTyping(u"  ab|c", u"\r"), "  ab\n  |c");
    EXPECT_EQ(AfterTyping(u"  ab|c", u"\n"), "  ab\n  |c");
}

TEST_F(TypingTest, OverwritingReplacesUpToTheLineEnd) {
    Show(u"a|bc\nd");
    view().ToggleOverwrite();
    Type(u"xyz");
    EXPECT_EQ(Marked(), "axyz|\nd");
}

TEST_F(TypingTest, ATabTypesSpacesUpToTheNextStop) {
    EXPECT_EQ(AfterTab(u"|x"), "    |x");
    EXPECT_EQ(AfterTab(u"a|x"), "a   |x");
    EXPECT_EQ(AfterTab(u"abc|x"), "abc |x");
    EXPECT_EQ(AfterTab(u"abcd|x"), "abcd    |x");
}

TEST_F(TypingTest, ATabBeforeTheCaretCountsAsAWholeTabWidth) {
    // Shown at column 4, but counted as 1 + 4.
    EXPECT_EQ(AfterTab(u"a\t|x"), "a\\t   |x");
}

TEST_F(TypingTest, WithoutReplacingATabIsTyped) {
    settings.ReplaceTabs = 0;
    EXPECT_EQ(AfterTab(u"a|x"), "a\\t|x");
}

TEST_F(TypingTest, SpacesOfATabNeverOverwrite) {
    Show(u"a|bcdef");
    view().ToggleOverwrite();
    Type(u"\t");
    EXPECT_EQ(Marked(), "a   |bcdef");
    settings.ReplaceTabs = 0;
    Show(u"a|bcdef");
    view().ToggleOverwrite();
    Type(u"\t");
    EXPECT_EQ(Marked(), "a\\t|cdef");
}

TEST_F(TypingTest, ATabIsAnUndoStepOfItsOwn) {
    Show(u"|");
    Type(u"\t-");
    EXPECT_TRUE(buffer().Undo());
    EXPECT_EQ(Plain(Text()), "    ");
    EXPECT_TRUE(buffer().Undo());
    EXPECT_EQ(Plain(Text()), "");
}

TEST_F(TypingTest, ATabWithinOneLineReplacesTheSelection) { EXPECT_EQ(AfterTab(u"a^bc|d"), "a   |d"); }

TEST_F(TypingTest, OddTabSizesTypeASensibleNumberOfSpaces) {
    settings.SpacesPerTab = 0;
    EXPECT_EQ(AfterTab(u"|x"), " |x");
    Press(ViewKey::Backspace);
    EXPECT_EQ(Marked(), "|x");
    settings.SpacesPerTab = 4294967295u;
    Show(u"|x");
    Type(u"\t");
    EXPECT_EQ(view().CaretColumn(), ViewLimits::MaxTabSize);
}

TEST_F(TypingTest, TypingScrollsTheCaretIntoViewFirst) {
    Fill(std::u16string(99, u'\n'));
    Type(u"ab");
    view().SetTopLine(50);
    Type(u"c");
    EXPECT_EQ(view().TopLine(), 0u);
    EXPECT_EQ(Plain(Text().substr(0, 4)), "abc\n");
    EXPECT_TRUE(buffer().Undo());
    EXPECT_EQ(Plain(Text().substr(0, 3)), "ab\n"); // scrolling away had ended the step
    EXPECT_TRUE(buffer().Undo());
    EXPECT_EQ(Plain(Text().substr(0, 1)), "\n");
}

TEST_F(TypingTest, AReadOnlyDocumentKeepsItsText) {
    Show(u"a^b|c");
    EXPECT_TRUE(buffer().MarkAsOutput());
    Type(u"x\t");
    Press(ViewKey::Delete);
    Press(ViewKey::Backspace);
    EXPECT_EQ(Plain(Text()), "abc");
}

TEST_F(TypingTest, ARefusedEditChangesNothingOnScreen) {
    for (const bool selected : {false, true}) {
        Fill(std::u16string(99, u'\n') + u"abc");
        view().SelectRange({selected ? 1u : 3u, 3});
        EXPECT_TRUE(buffer().MarkAsOutput());
        view().SetTopLine(50);
        view().UpdateCaret(false);
        host().status[StatusField::Message] = u"said";
        surface().ForgetCalls();
        Type(u"x\t ");
        for (const uint32_t key : {ViewKey::Delete, ViewKey::Backspace}) {
            Press(key);
            Ctrl(key);
        }
        Ctrl(u'X');
        Ctrl(u'V');
        input().ExecuteCommand(ViewCommand::Delete);
        EXPECT_EQ(view().TopLine(), 50u);
        EXPECT_EQ(view().SelectionAnchor(), selected ? 1u : 3u);
        EXPECT_EQ(view().CaretOffset(), 3u);
        EXPECT_EQ(Status(StatusField::Message), "said");
        EXPECT_EQ(surface().allInvalidations, 0);
        EXPECT_TRUE(surface().strips.empty());
        EXPECT_TRUE(surface().scrolls.empty());
        // A cut has copied, the selection or else the line.
        EXPECT_EQ(surface().clipboard, selected ? u"\r\n\r\n" : u"\r\n");
    }
}

TEST_F(TypingTest, DeletingWithNothingToDeleteKeepsSelectionMessageAndPreferredColumn) {
    Show(u"abcdef\nx");
    view().MoveCaret({0, 6});
    Press(ViewKey::Down); // to the end of the text, with column 6 still preferred
    host().status[StatusField::Message] = u"said";
    Press(ViewKey::Delete);
    Ctrl(ViewKey::Delete);
    EXPECT_EQ(Status(StatusField::Message), "said");
    Press(ViewKey::Up);
    EXPECT_EQ(Marked(), "abcdef|\nx");
    Show(u"a^bc|");
    Ctrl(ViewKey::Delete);
    EXPECT_EQ(Marked(), "a^bc|");
    Show(u"|ab^c");
    Ctrl(ViewKey::Backspace);
    EXPECT_EQ(Marked(), "|ab^c");
}

TEST_F(TypingTest, DeletingWithNothingToDeleteDoesNotScroll) {
    Fill(std::u16string(99, u'\n'));
    view().MoveCaret({99, 0});
    view().SetTopLine(0);
    Press(ViewKey::Delete);
    Ctrl(ViewKey::Delete);
    EXPECT_EQ(view().TopLine(), 0u);
}

TEST_F(TypingTest, EnterInAnOutputDocumentOpensTheNamedFile) {
    Show(u"x\n1>C:\\src\\a.cpp(12): error|");
    EXPECT_TRUE(buffer().MarkAsOutput());
    Type(u"\r");
    ASSERT_EQ(host().opened.size(), 1u);
    EXPECT_EQ(Plain(host().opened[0].first), "C:\\src\\a.cpp");
    EXPECT_EQ(host().opened[0].second, 11u);
    EXPECT_EQ(document->Store().back(), u'r');
}

TEST_F(TypingTest, EnterOnALineWithoutAPathOpensNothing) {
    Show(u"|\nx");
    EXPECT_TRUE(buffer().MarkAsOutput());
    Type(u"\r");
    EXPECT_TRUE(host().opened.empty());
}

TEST_F(TypingTest, WithoutMemoryNothingIsHalfTyped) {
    const uint64_t failures = FailEachAllocation([&] {
        {
            FailurePause pause;
            Show(u"ab^cd|ef");
        }
        Type(u"x");
        FailurePause pause;
        const std::string after = Marked();
        EXPECT_TRUE(after == "ab^cd|ef" || after == "ab|ef" || after == "abx|ef") << after;
        return after == "abx|ef";
    });
    EXPECT_GT(failures, 0u);
}

// Indenting.

TEST_F(TypingTest, ATabOverSeveralLinesIndentsAllButTheLast) {
    EXPECT_EQ(AfterTab(u"l1\nl2\nl^3\nl4\nl|5\nl6"), "l1\nl2\n^    l3\n    l4\nl|5\nl6");
}

TEST_F(TypingTest, AnEndAtTheStartOfALineLeavesThatLine) { EXPECT_EQ(AfterTab(u"^a\nb\n|c"), "^    a\n    b\n|c"); }

TEST_F(TypingTest, ABackwardSelectionEndsUpForward) { EXPECT_EQ(AfterTab(u"a|a\nb^b"), "^    aa\nb|b"); }

TEST_F(TypingTest, BlankLinesAreNotIndented) { EXPECT_EQ(AfterTab(u"^a\n\n  \nb\n|"), "^    a\n\n  \n    b\n|"); }

TEST_F(TypingTest, WithoutReplacingTheUnitIsATab) {
    settings.ReplaceTabs = 0;
    EXPECT_EQ(AfterTab(u"^a\nb|"), "^\\ta\nb|");
}

TEST_F(TypingTest, UnindentTakesLeadingBlanksUpToATabWidth) {
    EXPECT_EQ(AfterTab(u"^      a\n  b\nc\n|", true), "^  a\nb\nc\n|");
}

TEST_F(TypingTest, UnindentOfTwoSpacesAndATabTakesAllThree) {
    EXPECT_EQ(AfterTab(u"^  \ta\n|", true), "^a\n|");
    EXPECT_EQ(AfterTab(u"^\t\ta\n|", true), "^\\ta\n|");
    EXPECT_EQ(AfterTab(u"^    \ta\n|", true), "^\\ta\n|");
}

TEST_F(TypingTest, UnindentAlsoTakesFromBlankLines) { EXPECT_EQ(AfterTab(u"^  \n\n|", true), "^\n\n|"); }

TEST_F(TypingTest, WhereNothingIsIndentedTheSelectionStaysAsItWas) {
    EXPECT_EQ(AfterTab(u"a^b\nc|d", true), "a^b\nc|d");
    EXPECT_EQ(AfterTab(u"a|b\nc^d", true), "a|b\nc^d");
    EXPECT_EQ(AfterTab(u" ^ \nc|d"), " ^ \nc|d");
    EXPECT_FALSE(buffer().IsModified());
}

TEST_F(TypingTest, IndentingIsOneUndoStep) {
    Show(u"a^a\nb\nc|");
    Type(u"\t");
    EXPECT_EQ(document->UndoSteps(), 1u);
    EXPECT_TRUE(buffer().Undo());
    EXPECT_EQ(Marked(), "a^a\nb\nc|");
    EXPECT_TRUE(buffer().Redo());
    EXPECT_EQ(Plain(Text()), "    aa\n    b\nc");
}

TEST_F(TypingTest, IndentingIsOneRepaint) {
    Show(u"^a\nb\nc|");
    Type(u"\t");
    EXPECT_EQ(surface().allInvalidations, 1);
}

TEST_F(TypingTest, IndentingKeepsBookmarks) {
    Show(u"^a\nb\nc|");
    view().ToggleBookmark(1);
    Type(u"\t");
    EXPECT_EQ(document->MarkedLines(), std::vector<uint32_t>{1});
}

TEST_F(TypingTest, WithoutMemoryNothingIsHalfIndented) {
    const uint64_t failures = FailEachAllocation([&] {
        {
            FailurePause pause;
            Show(u"^a\nb\nc|");
        }
        Type(u"\t");
        FailurePause pause;
        const std::string after = Marked();
        EXPECT_TRUE(after == "^a\nb\nc|" || after == "^    a\n    b\nc|") << after;
        return after != "^a\nb\nc|";
    });
    EXPECT_GT(failures, 2u);
}
