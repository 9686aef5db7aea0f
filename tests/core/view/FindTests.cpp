#include "support/FailureInjection.h"
#include "support/ViewTest.h"
#include "view/EditorFind.h"

namespace {

struct FindTest : ViewTest {
    void SearchFor(const std::u16string& text) {
        EXPECT_TRUE(findState.searchText.Assign(text.data(), static_cast<int64_t>(text.size())));
    }
    std::string AfterFind(const std::u16string& text, const std::u16string& pattern, bool backward = false) {
        Show(text);
        SearchFor(pattern);
        found = EditorFind::FindNext(view(), backward);
        return Marked();
    }
    bool found = false;
};

} // namespace

TEST_F(FindTest, TheNextMatchAfterTheSelectionIsSelected) {
    EXPECT_EQ(AfterFind(u"|ab ab ab", u"ab"), "^ab| ab ab");
    EXPECT_EQ(AfterFind(u"^ab| ab ab", u"ab"), "ab ^ab| ab");
    EXPECT_TRUE(found);
    EXPECT_EQ(Status(StatusField::Message), "");
}

TEST_F(FindTest, BackwardsTheSearchStartsBeforeTheSelection) {
    EXPECT_EQ(AfterFind(u"ab ab ^ab|", u"ab", true), "ab ^ab| ab");
}

TEST_F(FindTest, AMatchBeforeTheCaretIsFoundPastTheEnd) {
    EXPECT_EQ(AfterFind(u"ab x|y", u"ab"), "^ab| xy");
    EXPECT_EQ(Status(StatusField::Message), "Passed end of file");
}

TEST_F(FindTest, BackwardsTooTheWrapIsReported) {
    EXPECT_EQ(AfterFind(u"x|y ab", u"ab", true), "xy ^ab|");
    EXPECT_EQ(Status(StatusField::Message), "Passed end of file");
}

TEST_F(FindTest, WithoutAMatchTheSelectionStays) {
    EXPECT_EQ(AfterFind(u"a^b|c", u"zz"), "a^b|c");
    EXPECT_FALSE(found);
    EXPECT_EQ(host().macroStops, 0);
}

TEST_F(FindTest, AFailedSearchStopsAMacroThatPlays) {
    host().macroState = MacroState::Recording;
    AfterFind(u"abc", u"zz");
    EXPECT_EQ(host().macroStops, 0);
    Show(u"abc");
    host().macroState = MacroState::Playing;
    SearchFor(u"zz");
    EditorFind::FindNext(view(), false);
    EXPECT_EQ(host().macroStops, 1);
}

TEST_F(FindTest, TheSearchTextGoesIntoTheHistory) {
    AfterFind(u"abc", u"b");
    AfterFind(u"abc", u"c");
    ASSERT_EQ(findState.searchHistory.Count(), 2u);
    EXPECT_EQ(Plain(findState.searchHistory.Newest().Text()), "c");
}

TEST_F(FindTest, OnlyAsciiLettersAreFolded) {
    EXPECT_EQ(AfterFind(u"|xABy", u"ab"), "x^AB|y");
    EXPECT_EQ(AfterFind(u"|\u00C4 \u00E4", u"\u00E4"), "? ^?|");
    EXPECT_EQ(AfterFind(u"|[ {", u"{"), "[ ^{|");
    findState.matchCase = true;
    EXPECT_EQ(AfterFind(u"|AB ab", u"ab"), "AB ^ab|");
}

TEST_F(FindTest, WholeWordsHaveNoWordCharacterOnEitherSide) {
    findState.wholeWord = true;
    EXPECT_EQ(AfterFind(u"|abx ab1 ab_ ab# xab #ab _ab 1ab ab", u"ab"), "abx ab1 ab_ ab# xab #ab _ab 1ab ^ab|");
    EXPECT_EQ(AfterFind(u"|(ab)", u"ab"), "(^ab|)");
    EXPECT_EQ(AfterFind(u"|ab", u"ab"), "^ab|");
    AfterFind(u"|abc", u"ab");
    EXPECT_FALSE(found);
}

TEST_F(FindTest, AMatchOutOfViewIsScrolledTo) {
    Fill(std::u16string(60, u'\n') + u"ab");
    SearchFor(u"ab");
    EXPECT_TRUE(EditorFind::FindNext(view(), false));
    EXPECT_EQ(view().TopLine(), 51u);
}

TEST_F(FindTest, APendingEditIsSearchedToo) {
    Show(u"|\nx");
    Type(u"ab");
    SearchFor(u"ab");
    EXPECT_TRUE(EditorFind::FindNext(view(), false));
    EXPECT_EQ(Marked(), "^ab|\nx");
}

TEST_F(FindTest, EmptyAndOverlongTextsAreNotFound) {
    EXPECT_EQ(AfterFind(u"a|bc", u""), "a|bc");
    EXPECT_FALSE(found);
    EXPECT_EQ(findState.searchHistory.Count(), 0u);
    EXPECT_EQ(AfterFind(u"a|bc", u"abcd"), "a|bc");
    EXPECT_FALSE(found);
    EXPECT_EQ(AfterFind(u"|", u"a"), "|");
}

TEST_F(FindTest, ATextWithANulIsNowhere) {
    EXPECT_EQ(AfterFind(u"|xaby", std::u16string(u"ab\0c", 4)), "|xaby");
    EXPECT_FALSE(found);
}

TEST_F(FindTest, F3SearchesOnAndWithShiftBack) {
    Show(u"|ab ab ab");
    SearchFor(u"ab");
    Press(ViewKey::F3);
    Press(ViewKey::F3);
    EXPECT_EQ(Marked(), "ab ^ab| ab");
    Press(ViewKey::F3, false, true);
    EXPECT_EQ(Marked(), "^ab| ab ab");
}

TEST_F(FindTest, OpeningADialogTakesTheSelectionAsSearchText) {
    Show(u"a^bc|d");
    Ctrl(u'F');
    EXPECT_EQ(Plain(findState.searchText.Text()), "bc");
    Ctrl(u'H');
    EXPECT_EQ(surface().dialogs, (std::vector<std::string>{"find", "replace"}));
}

TEST_F(FindTest, ASelectionOverALineEndOrNoneKeepsTheSearchText) {
    SearchFor(u"old");
    Show(u"a^b\nc|d");
    Ctrl(u'F');
    Ctrl(u'H');
    Show(u"a|b");
    Ctrl(u'H');
    EXPECT_EQ(Plain(findState.searchText.Text()), "old");
    EXPECT_EQ(surface().dialogs, (std::vector<std::string>{"replace many"}));
}

TEST_F(FindTest, CtrlF3SearchesForTheWordAtTheCaret) {
    Show(u"fo|o bar foo");
    Ctrl(ViewKey::F3);
    EXPECT_EQ(Marked(), "foo bar ^foo|"); // the search starts at the caret
}

TEST_F(FindTest, CtrlF3PrefersTheSelection) {
    Show(u"f^o|o bar");
    Ctrl(ViewKey::F3);
    EXPECT_EQ(Marked(), "fo^o| bar");
    Show(u"ab ^ab| ab");
    Ctrl(ViewKey::F3, true);
    EXPECT_EQ(Marked(), "^ab| ab ab");
}

TEST_F(FindTest, CtrlF3WithNothingAtTheCaretDoesNothing) {
    SearchFor(u"a");
    Show(u"a |\na");
    Ctrl(ViewKey::F3);
    EXPECT_EQ(Marked(), "a |\na");
    EXPECT_EQ(Plain(findState.searchText.Text()), "a");
}

// Replacing.

TEST_F(FindTest, ReplaceSelectionReplacesWhateverItHolds) {
    Show(u"a^bc|d");
    EXPECT_TRUE(EditorFind::ReplaceSelection(view(), u"xyz", 3));
    EXPECT_EQ(Marked(), "axyz|d");
    EXPECT_EQ(document->UndoSteps(), 1u);
    Show(u"a^bc|d");
    EXPECT_TRUE(EditorFind::ReplaceSelection(view(), u"", 0));
    EXPECT_EQ(Marked(), "a|d");
}

TEST_F(FindTest, WithoutASelectionThereIsNothingToReplace) {
    Show(u"a|b");
    EXPECT_FALSE(EditorFind::ReplaceSelection(view(), u"x", 1));
    EXPECT_EQ(Marked(), "a|b");
    EXPECT_EQ(document->UndoSteps(), 0u);
}

TEST_F(FindTest, WithoutMemoryASelectionIsNotHalfReplaced) {
    const uint64_t failures = FailEachAllocation([&] {
        {
            FailurePause pause;
            Show(u"a^bc|d");
            EXPECT_TRUE((*document)->InsertText(0, u"x", 1));
            EXPECT_TRUE((*document)->Undo());
        }
        const bool done = EditorFind::ReplaceSelection(view(), u"longer", 6);
        FailurePause pause;
        EXPECT_EQ(Marked(), done ? "alonger|d" : "a^bc|d");
        EXPECT_EQ((*document)->CanDo(DocumentCommand::Redo), !done);
        return done;
    });
    EXPECT_GT(failures, 3u);
}

TEST_F(FindTest, AReadOnlyTextIsNotReplaced) {
    Show(u"a^bc|d");
    EXPECT_TRUE((*document)->MarkAsOutput());
    EXPECT_FALSE(EditorFind::ReplaceSelection(view(), u"xyz", 3));
    EXPECT_EQ(Marked(), "a^bc|d");
    EXPECT_FALSE((*document)->IsModified());
    EXPECT_FALSE((*document)->CanDo(DocumentCommand::Undo));
}

// Long searches.

TEST_F(FindTest, ALongSearchShowsItsProgressAndTheWaitCursor) {
    Fill(std::u16string((1u << 24) + 100, u'x') + u"ab");
    SearchFor(u"ab");
    surface().tickStep = 600;
    EXPECT_TRUE(EditorFind::FindNext(view(), false));
    EXPECT_TRUE(surface().everWaited);
    EXPECT_FALSE(surface().waiting);
    EXPECT_EQ(Status(StatusField::Message), "");
    EXPECT_GE(host().statusCalls[StatusField::Message], 3);
}

TEST_F(FindTest, AShortSearchShowsNeither) {
    Fill(std::u16string((1u << 24) + 100, u'x') + u"ab");
    SearchFor(u"ab");
    surface().tickStep = 1;
    surface().escapePressed = true;
    EXPECT_TRUE(EditorFind::FindNext(view(), false));
    EXPECT_FALSE(surface().everWaited);
    EXPECT_TRUE(surface().escapePressed);
}

TEST_F(FindTest, EscapeBreaksALongSearchOff) {
    Fill(std::u16string((1u << 24) + 100, u'x') + u"ab");
    view().SelectRange({1, 3});
    SearchFor(u"ab");
    surface().tickStep = 600;
    surface().escapePressed = true;
    EXPECT_FALSE(EditorFind::FindNext(view(), false));
    EXPECT_EQ(view().SelectionAnchor(), 1u);
    EXPECT_EQ(view().CaretOffset(), 3u);
}

// Compared almost whole at every position, a long text is slow to look for: Escape is heard all the same.
TEST_F(FindTest, ALongPatternIsSearchedForInSmallerSteps) {
    const std::u16string pattern = std::u16string(1u << 12, u'x') + u'y';
    Fill(std::u16string(1u << 16, u'x') + pattern);
    SearchFor(pattern);
    surface().tickStep = 600;
    EXPECT_TRUE(EditorFind::FindNext(view(), false));
    EXPECT_TRUE(surface().everWaited);
    surface().escapePressed = true;
    view().SelectRange({5, 5});
    EXPECT_FALSE(EditorFind::FindNext(view(), false));
    EXPECT_EQ(view().CaretOffset(), 5u);
    surface().escapePressed = true;
    EXPECT_FALSE(EditorFind::FindNext(view(), true));
    EXPECT_EQ(view().CaretOffset(), 5u);
}

TEST_F(FindTest, ACancelledSearchIsNotTakenForAFailedOne) {
    Fill(std::u16string((1u << 24) + 100, u'x') + u"ab");
    SearchFor(u"ab");
    surface().tickStep = 600;
    surface().escapePressed = true;
    EXPECT_FALSE(EditorFind::FindNext(view(), false));
    EXPECT_TRUE(findState.cancelled);
    SearchFor(u"zz");
    EXPECT_FALSE(EditorFind::FindNext(view(), false));
    EXPECT_FALSE(findState.cancelled);
    surface().escapePressed = true;
    EXPECT_FALSE(EditorFind::FindNext(view(), false));
    EXPECT_TRUE(findState.cancelled);
    SearchFor(u"");
    EXPECT_FALSE(EditorFind::FindNext(view(), false));
    EXPECT_FALSE(findState.cancelled);
}
