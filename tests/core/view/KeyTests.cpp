#include "support/ViewTest.h"
#include "view/EditorFind.h"

namespace {

struct KeyTest : ViewTest {
    // Shows the text, presses the key and gives the result.
    std::string After(const std::u16string& text, uint32_t key, bool ctrl = false, bool shift = false) {
        Show(text);
        Press(key, ctrl, shift);
        return Marked();
    }
    std::string AfterCtrl(const std::u16string& text, uint32_t key, bool shift = false) {
        return After(text, key, true, shift);
    }
    std::string AfterShift(const std::u16string& text, uint32_t key) { return After(text, key, false, true); }
};

} // namespace

TEST_F(KeyTest, OnEntryTheCaretLineIsOpened) {
    Show(u"ab\ncd|");
    EXPECT_TRUE(buffer().CommitEdit());
    EXPECT_TRUE(buffer().LoadEditLine(0));
    Press(ViewKey::Escape);
    EXPECT_EQ(buffer().EditLineNumber(), 1u);
}

TEST_F(KeyTest, LeftMovesByOneAndAroundLineStarts) {
    EXPECT_EQ(After(u"ab|c", ViewKey::Left), "a|bc");
    EXPECT_EQ(After(u"ab\n|c", ViewKey::Left), "ab|\nc");
    EXPECT_EQ(After(u"|abc", ViewKey::Left), "|abc");
}

TEST_F(KeyTest, CtrlLeftMovesToTheStartOfTheWord) {
    EXPECT_EQ(AfterCtrl(u"foo bar|", ViewKey::Left), "foo |bar");
    EXPECT_EQ(AfterCtrl(u"foo |bar", ViewKey::Left), "foo| bar");
    EXPECT_EQ(AfterCtrl(u"foo\n|bar", ViewKey::Left), "foo|\nbar");
    EXPECT_EQ(AfterCtrl(u"|foo", ViewKey::Left), "|foo");
}

TEST_F(KeyTest, RightMovesByOneAndAroundLineEnds) {
    EXPECT_EQ(After(u"a|bc", ViewKey::Right), "ab|c");
    EXPECT_EQ(After(u"ab|\nc", ViewKey::Right), "ab\n|c");
}

TEST_F(KeyTest, RightAtTheEndOfTheLastLineStaysThere) { EXPECT_EQ(After(u"ab\nc|", ViewKey::Right), "ab\nc|"); }

TEST_F(KeyTest, CtrlRightMovesToTheEndOfTheWord) {
    EXPECT_EQ(AfterCtrl(u"|foo bar", ViewKey::Right), "foo| bar");
    EXPECT_EQ(AfterCtrl(u"foo| bar", ViewKey::Right), "foo |bar");
    EXPECT_EQ(AfterCtrl(u"foo |bar", ViewKey::Right), "foo bar|");
    EXPECT_EQ(AfterCtrl(u"fo|o\nbar", ViewKey::Right), "foo|\nbar");
    EXPECT_EQ(AfterCtrl(u"foo|\nbar", ViewKey::Right), "foo\n|bar");
    EXPECT_EQ(AfterCtrl(u"foo|", ViewKey::Right), "foo|");
}

TEST_F(KeyTest, UpAndDownKeepThePreferredColumnAcrossShortLines) {
    Show(u"abcdef\nx\nabcd|ef");
    Press(ViewKey::Up);
    EXPECT_EQ(Marked(), "abcdef\nx|\nabcdef");
    Press(ViewKey::Up);
    EXPECT_EQ(Marked(), "abcd|ef\nx\nabcdef");
    Press(ViewKey::Up);
    EXPECT_EQ(Marked(), "abcd|ef\nx\nabcdef");
    Press(ViewKey::Down);
    Press(ViewKey::Down);
    EXPECT_EQ(Marked(), "abcdef\nx\nabcd|ef");
    Press(ViewKey::Down);
    EXPECT_EQ(Marked(), "abcdef\nx\nabcd|ef");
}

TEST_F(KeyTest, CtrlDownAndUpScrollAndKeepTheCaretInView) {
    Fill(std::u16string(99, u'\n'));
    Ctrl(ViewKey::Down);
    EXPECT_EQ(view().TopLine(), 1u);
    EXPECT_EQ(view().CaretLine(), 1u); // it would have left the view
    view().MoveCaret({5, 0});
    Ctrl(ViewKey::Down);
    EXPECT_EQ(view().TopLine(), 2u);
    EXPECT_EQ(view().CaretLine(), 5u);
    view().MoveCaret({11, 0});
    Ctrl(ViewKey::Up);
    EXPECT_EQ(view().TopLine(), 1u);
    EXPECT_EQ(view().CaretLine(), 10u);
    Ctrl(ViewKey::Up);
    Ctrl(ViewKey::Up);
    EXPECT_EQ(view().TopLine(), 0u);
}

TEST_F(KeyTest, CtrlDownStopsWhereTheLastLineIsSeen) {
    Fill(std::u16string(99, u'\n'));
    view().SetTopLine(89);
    Ctrl(ViewKey::Down);
    EXPECT_EQ(view().TopLine(), 90u);
    Ctrl(ViewKey::Down);
    EXPECT_EQ(view().TopLine(), 90u);
}

TEST_F(KeyTest, CtrlScrollingNeverExtends) {
    Show(u"|a\nb\nc");
    Resize(80, 2);
    Press(ViewKey::Down, true, true);
    EXPECT_EQ(view().TopLine(), 1u);
    EXPECT_EQ(Marked(), "a\n|b\nc");
}

TEST_F(KeyTest, PagesAreAsLongAsTheWindow) {
    Fill(std::u16string(99, u'\n'));
    Press(ViewKey::PageDown);
    EXPECT_EQ(view().CaretLine(), 10u);
    Ctrl(ViewKey::PageDown);
    EXPECT_EQ(view().CaretLine(), 20u);
    Press(ViewKey::PageUp);
    EXPECT_EQ(view().CaretLine(), 10u);
    Ctrl(ViewKey::PageUp);
    EXPECT_EQ(view().CaretLine(), 0u);
    view().MoveCaret({4, 0});
    Press(ViewKey::PageUp);
    EXPECT_EQ(view().CaretLine(), 0u);
    view().MoveCaret({95, 0});
    Press(ViewKey::PageDown);
    EXPECT_EQ(view().CaretLine(), 99u);
}

TEST_F(KeyTest, HomeGoesToTheFirstCharacterThenToColumnZero) {
    EXPECT_EQ(After(u"    x|", ViewKey::Home), "    |x");
    EXPECT_EQ(After(u"    |x", ViewKey::Home), "|    x");
    EXPECT_EQ(After(u"|    x", ViewKey::Home), "    |x");
    EXPECT_EQ(After(u"  |  x", ViewKey::Home), "    |x");
    EXPECT_EQ(After(u"\t\tx|", ViewKey::Home), "\\t\\t|x");
}

TEST_F(KeyTest, CtrlHomeAndCtrlEndGoToTheEndsOfTheText) {
    EXPECT_EQ(AfterCtrl(u"a\n  b|\nc", ViewKey::Home), "|a\n  b\nc");
    EXPECT_EQ(AfterCtrl(u"a\n|b\ncd", ViewKey::End), "a\nb\ncd|");
    EXPECT_EQ(AfterCtrl(u"|", ViewKey::End), "|");
}

TEST_F(KeyTest, EndGoesToTheEndOfTheLine) { EXPECT_EQ(After(u"a|bc\nd", ViewKey::End), "abc|\nd"); }

TEST_F(KeyTest, ShiftExtendsEveryMove) {
    EXPECT_EQ(AfterShift(u"ab|c", ViewKey::Left), "a|b^c");
    EXPECT_EQ(AfterShift(u"ab|c", ViewKey::Right), "ab^c|");
    EXPECT_EQ(AfterShift(u"ab\nc|d", ViewKey::Up), "a|b\nc^d");
    EXPECT_EQ(AfterShift(u"a|b\ncd", ViewKey::Down), "a^b\nc|d");
    EXPECT_EQ(AfterShift(u"  ab|", ViewKey::Home), "  |ab^");
    EXPECT_EQ(AfterShift(u"a|b", ViewKey::End), "a^b|");
    EXPECT_EQ(AfterShift(u"ab\nc|d", ViewKey::PageUp), "a|b\nc^d");
    EXPECT_EQ(AfterShift(u"a|b\ncd", ViewKey::PageDown), "a^b\nc|d");
    EXPECT_EQ(AfterCtrl(u"foo ba|r", ViewKey::Left, true), "foo |ba^r");
    EXPECT_EQ(AfterCtrl(u"f|oo bar", ViewKey::Right, true), "f^oo| bar");
    EXPECT_EQ(AfterCtrl(u"ab|c", ViewKey::Home, true), "|ab^c");
    EXPECT_EQ(AfterCtrl(u"ab|c", ViewKey::End, true), "ab^c|");
}

TEST_F(KeyTest, WithoutShiftASelectionIsCollapsedFirst) {
    EXPECT_EQ(After(u"a^bc|d", ViewKey::Left), "ab|cd");
    EXPECT_EQ(After(u"a^bc|d", ViewKey::End), "abcd|");
}

TEST_F(KeyTest, EscapeOnlyCollapsesTheSelection) {
    EXPECT_EQ(After(u"a^bc|d", ViewKey::Escape), "abc|d");
    EXPECT_EQ(AfterCtrl(u"a|bc^d", ViewKey::Escape), "a|bcd");
    EXPECT_EQ(AfterShift(u"a^bc|d", ViewKey::Escape), "a^bc|d");
}

TEST_F(KeyTest, MovesUpdateTheWindowAtOnce) {
    Show(u"abc");
    Press(ViewKey::Right);
    EXPECT_EQ(surface().updates, 1);
}

TEST_F(KeyTest, InsertTogglesOverwritingPastesAndCopies) {
    Show(u"a^b|c");
    Press(ViewKey::Insert);
    EXPECT_TRUE(view().IsOverwriting());
    EXPECT_EQ(Status(StatusField::Overwrite), "\\tOVR");
    Ctrl(ViewKey::Insert);
    EXPECT_EQ(Plain(surface().clipboard), "b");
    Press(ViewKey::End);
    Press(ViewKey::Insert, false, true);
    EXPECT_EQ(Marked(), "abcb|");
}

TEST_F(KeyTest, DeleteTakesTheCharacterAtTheCaretOrTheSelection) {
    EXPECT_EQ(After(u"a|bc\nd", ViewKey::Delete), "a|c\nd");
    EXPECT_EQ(After(u"abc|\nd", ViewKey::Delete), "abc|d");
    EXPECT_EQ(After(u"ab|c", ViewKey::Delete), "ab|");
    EXPECT_EQ(After(u"abc|", ViewKey::Delete), "abc|");
    EXPECT_EQ(After(u"a^b\nc|d", ViewKey::Delete), "a|d");
}

TEST_F(KeyTest, ShiftDeleteCuts) {
    EXPECT_EQ(AfterShift(u"a^bc|d", ViewKey::Delete), "a|d");
    EXPECT_EQ(Plain(surface().clipboard), "bc");
}

TEST_F(KeyTest, CtrlDeleteTakesTheRestOfTheWord) {
    EXPECT_EQ(AfterCtrl(u"a |word b", ViewKey::Delete), "a | b");
    EXPECT_EQ(AfterCtrl(u"a| , b", ViewKey::Delete), "a|b");
    EXPECT_EQ(AfterCtrl(u"a |word\nb", ViewKey::Delete), "a |\nb");
    EXPECT_EQ(AfterCtrl(u"a|\nb", ViewKey::Delete), "a|b");
    EXPECT_EQ(AfterCtrl(u"a|", ViewKey::Delete), "a|");
}

TEST_F(KeyTest, BackspaceTakesTheCharacterBeforeTheCaretOrTheSelection) {
    EXPECT_EQ(After(u"ab|c", ViewKey::Backspace), "a|c");
    EXPECT_EQ(After(u"a\n|b", ViewKey::Backspace), "a|b");
    EXPECT_EQ(After(u"|a", ViewKey::Backspace), "|a");
    EXPECT_EQ(After(u"a^b\nc|d", ViewKey::Backspace), "a|d");
}

TEST_F(KeyTest, BackspaceAmongLeadingSpacesGoesToTheTabStop) {
    EXPECT_EQ(After(u"      |", ViewKey::Backspace), "    |");
    EXPECT_EQ(After(u"        |x", ViewKey::Backspace), "    |x");
    EXPECT_EQ(After(u"    |", ViewKey::Backspace), "|");
    EXPECT_EQ(After(u" |x", ViewKey::Backspace), "|x");
}

TEST_F(KeyTest, BackspaceAfterAnythingElseTakesOneCharacter) {
    EXPECT_EQ(After(u"x   |", ViewKey::Backspace), "x  |");
    EXPECT_EQ(After(u"\t  |", ViewKey::Backspace), "\\t |");
    settings.ReplaceTabs = 0;
    EXPECT_EQ(After(u"      |", ViewKey::Backspace), "     |");
}

TEST_F(KeyTest, CtrlBackspaceTakesTheStartOfTheWord) {
    EXPECT_EQ(AfterCtrl(u"foo ba|r", ViewKey::Backspace), "foo |r");
    EXPECT_EQ(AfterCtrl(u"foo |bar", ViewKey::Backspace), "foo|bar");
    EXPECT_EQ(AfterCtrl(u"foo\n|bar", ViewKey::Backspace), "foo|bar");
    EXPECT_EQ(AfterCtrl(u"|foo", ViewKey::Backspace), "|foo");
}

TEST_F(KeyTest, F2WalksTheBookmarksAroundTheEnds) {
    Show(u"a\nb|\nc\nd\ne");
    for (const uint32_t line : {0u, 1u, 3u}) view().ToggleBookmark(line);
    Press(ViewKey::F2);
    EXPECT_EQ(view().CaretLine(), 3u);
    EXPECT_EQ(view().CaretColumn(), 0u);
    Press(ViewKey::F2);
    EXPECT_EQ(view().CaretLine(), 0u);
    Press(ViewKey::F2, false, true);
    EXPECT_EQ(view().CaretLine(), 3u);
    Press(ViewKey::F2, false, true);
    EXPECT_EQ(view().CaretLine(), 1u);
}

TEST_F(KeyTest, F2WithoutBookmarksDoesNothing) { EXPECT_EQ(After(u"a\nb|", ViewKey::F2), "a\nb|"); }

TEST_F(KeyTest, CtrlF2TogglesAndWithShiftClears) {
    Show(u"a\nb|\nc");
    Ctrl(ViewKey::F2);
    EXPECT_EQ(document->MarkedLines(), std::vector<uint32_t>{1});
    view().ToggleBookmark(2);
    Ctrl(ViewKey::F2, true);
    EXPECT_TRUE(document->MarkedLines().empty());
}

TEST_F(KeyTest, AltGrRunsNoCtrlCommandAndNoBracketJump) {
    Show(u"(ab) w|ord\nx", u"c");
    Type(u"s");
    surface().clipboardHasText = true;
    surface().clipboard = u"pasted";
    for (const uint32_t key :
         {uint32_t{u'A'}, uint32_t{u'C'}, uint32_t{u'F'}, uint32_t{u'G'}, uint32_t{u'H'}, uint32_t{u'T'},
          uint32_t{u'V'}, uint32_t{u'W'}, uint32_t{u'X'}, uint32_t{u'Y'}, uint32_t{u'Z'}, ViewKey::CloseBracket}) {
        AltGr(key);
        EXPECT_EQ(Marked(), "(ab) ws|ord\nx") << key;
    }
    AltGr(ViewKey::Left); // a key that moves is what it is without
    AltGr(ViewKey::Home);
    EXPECT_EQ(Marked(), "|(ab) wsord\nx");
    AltGr(ViewKey::CloseBracket);
    EXPECT_EQ(Marked(), "|(ab) wsord\nx");
    EXPECT_TRUE(surface().written.empty());
    EXPECT_TRUE(surface().dialogs.empty());
}

TEST_F(KeyTest, CtrlLettersRunTheirCommands) {
    Show(u"one two|");
    Ctrl(u'A');
    EXPECT_EQ(Marked(), "^one two|");
    Ctrl(u'C');
    EXPECT_EQ(Plain(surface().clipboard), "one two");
    Ctrl(u'X');
    EXPECT_EQ(Marked(), "|");
    Ctrl(u'Z');
    EXPECT_EQ(Plain(Text()), "one two");
    Ctrl(u'Y');
    EXPECT_EQ(Plain(Text()), "");
    Ctrl(u'V');
    EXPECT_EQ(Plain(Text()), "one two");
    Ctrl(u'F');
    Ctrl(u'H');
    Ctrl(u'G');
    Ctrl(u'G', true); // not with Shift
    EXPECT_EQ(surface().dialogs, (std::vector<std::string>{"find", "replace many", "go to"}));
}

TEST_F(KeyTest, LettersWithoutCtrlAreTypedAsCharactersOnly) {
    Show(u"abc|");
    for (const Char key : {u'A', u'V', u'X', u'Z'}) Press(key);
    EXPECT_EQ(Marked(), "abc|");
    EXPECT_TRUE(surface().dialogs.empty());
}

TEST_F(KeyTest, CtrlTMakesTheCaretLineTheTopLine) {
    Fill(std::u16string(99, u'\n'));
    view().MoveCaret({7, 0});
    Ctrl(u'T');
    EXPECT_EQ(view().TopLine(), 7u);
    EXPECT_EQ(surface().caretY, 0);
}

TEST_F(KeyTest, CtrlWSelectsTheWord) {
    EXPECT_EQ(AfterCtrl(u"a wo|rd b", u'W'), "a ^word| b");
    EXPECT_EQ(AfterCtrl(u"a word|", u'W'), "a ^word|");
    EXPECT_EQ(AfterCtrl(u"a +|", u'W'), "a +|");
}

TEST_F(KeyTest, CtrlBracketJumpsOntoThePartner) {
    const std::u16string text = u"f(a(b)c)";
    const auto jump = [&](uint32_t column, bool shift = false) {
        Fill(text + u"x", u"cpp");
        view().MoveCaret({0, column});
        Ctrl(ViewKey::CloseBracket, shift);
        return Marked();
    };
    EXPECT_EQ(jump(1), "f(a(b)c|)x");
    EXPECT_EQ(jump(7), "f|(a(b)c)x");
    EXPECT_EQ(jump(4), "f(a(b|)c)x"); // the opener before the caret
    EXPECT_EQ(jump(8), "f|(a(b)c)x"); // the closer before the caret
    EXPECT_EQ(jump(1, true), "f^(a(b)c|)x");
    EXPECT_EQ(jump(0), "|f(a(b)c)x");
}

TEST_F(KeyTest, ABracketAtTheCaretGoesBeforeTheOneBeforeIt) {
    Show(u"(|())", u"cpp");
    Ctrl(ViewKey::CloseBracket);
    EXPECT_EQ(Marked(), "((|))");
    Show(u"|)(x", u"cpp");
    Ctrl(ViewKey::CloseBracket);
    EXPECT_EQ(Marked(), "|)(x");
}

TEST_F(KeyTest, AtTheEndOfTheTextNothingIsJumpedFrom) {
    Show(u"(a)|", u"cpp");
    Ctrl(ViewKey::CloseBracket);
    EXPECT_EQ(Marked(), "(a)|");
}

TEST_F(KeyTest, AJumpWritesThePendingLineBackFirst) {
    Show(u"|\n)x", u"cpp");
    Type(u"a(");
    view().MoveCaret({0, 1});
    Ctrl(ViewKey::CloseBracket);
    EXPECT_EQ(Marked(), "a(\n|)x");
}

TEST_F(KeyTest, UnknownKeysDoNothing) {
    EXPECT_EQ(After(u"a|b", 0x70), "a|b");
    EXPECT_EQ(AfterCtrl(u"a|b", u'Q'), "a|b");
}

TEST_F(KeyTest, WithoutADocumentKeysAndCommandsDoNothing) {
    FakeTextSurface alone;
    TextEditor editor(alone, alone);
    TextInput input(editor);
    input.OnKeyDown(ViewKey::Left);
    input.OnChar(u'x');
    input.OnFocus();
    input.Drag().OnLeftButtonDown({1, 1}, false);
    input.OnDoubleClick();
    input.OnWheel({-120, 3, false});
    input.OnScroll(ScrollAxis::Vertical, ScrollRequest::Maximum, 0);
    input.OnSize(true);
    editor.GoToLine(3, true);
    EXPECT_FALSE(EditorFind::FindNext(editor, false));
    EXPECT_FALSE(EditorFind::ReplaceAll(editor, u"x", 1, false));
    EXPECT_FALSE(input.IsCommandEnabled(ViewCommand::SelectAll));
    EXPECT_TRUE(input.ExecuteCommand(ViewCommand::SelectAll));
    EXPECT_EQ(editor.CaretOffset(), 0u);
}
