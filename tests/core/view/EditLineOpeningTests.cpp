#include "HighlightEngine.h"
#include "document/EditLine.h"
#include "settings/Settings.h"
#include "support/ViewTest.h"

// Whoever opens a line as the edit line comes here, by an option of the linker: it is the same function to the caller,
// with the object as its first argument. Asking for the line that is open already does not come so far.
bool OpenEditLine(EditLine* editLine, TextStore& store, uint32_t line) asm("__wrap__ZN8EditLine4OpenER9TextStorej");
bool ReallyOpenEditLine(EditLine* editLine, TextStore& store,
                        uint32_t line) asm("__real__ZN8EditLine4OpenER9TextStorej");

namespace {

int openings = 0;

struct EditLineOpeningTest : ViewTest {
    template <class Act> int OpeningsBy(Act act) {
        openings = 0;
        act();
        return openings;
    }
    int OpeningsByTyping(const std::u16string& text) {
        return OpeningsBy([&] { Type(text); });
    }
    int OpeningsByPressing(uint32_t key) {
        return OpeningsBy([&] { Press(key); });
    }
    // Every key finds its line open, and leaves that of the caret open.
    void TearDown() override { EXPECT_EQ(buffer().EditLineNumber(), view().CaretLine()); }
};

} // namespace

bool OpenEditLine(EditLine* editLine, TextStore& store, uint32_t line) {
    ++openings;
    return ReallyOpenEditLine(editLine, store, line);
}

TEST_F(EditLineOpeningTest, TypingStaysInTheOpenLine) {
    settings.ReplaceTabs = 0;
    Show(u"one\ntw|o\nthree");
    EXPECT_EQ(OpeningsByTyping(u"x"), 0);
    EXPECT_EQ(OpeningsByTyping(u"y"), 0) << "goes on with the first";
    EXPECT_EQ(OpeningsByTyping(u"\t"), 0);
    EXPECT_EQ(OpeningsByPressing(ViewKey::Left), 0);
    EXPECT_EQ(Plain(Text()), "one\ntwxy\\to\nthree");
}

TEST_F(EditLineOpeningTest, ATabOfSpacesStaysInTheOpenLine) {
    settings.ReplaceTabs = 1;
    Show(u"one\n|two");
    EXPECT_EQ(OpeningsByTyping(u"\t"), 0);
    EXPECT_EQ(Plain(Text()), "one\n    two");
}

TEST_F(EditLineOpeningTest, AKeyThatChangesTheStoreOpensItsLineOnce) {
    for (const bool pending : {false, true}) {
        SCOPED_TRACE(pending);
        const auto opens = [&](const std::u16string& text, uint32_t key) {
            Show(text);
            if (pending) Type(u"x");
            return OpeningsByPressing(key);
        };
        EXPECT_EQ(opens(u"one\ntw|o\nthree", ViewKey::Backspace), 1);
        EXPECT_EQ(opens(u"one\ntw|o\nthree", ViewKey::Delete), 1);
        EXPECT_EQ(opens(u"one\ntwo|\nthree", ViewKey::Delete), 1) << "the line feed";
        EXPECT_EQ(opens(u"one\ntwo|\nthree", ViewKey::Down), 1);
    }
}

TEST_F(EditLineOpeningTest, EnterOpensTheNewLineOnce) {
    for (const bool pending : {false, true}) {
        SCOPED_TRACE(pending);
        const auto opens = [&](const std::u16string& text) {
            Show(text);
            if (pending) Type(u"x");
            return OpeningsByTyping(u"\r");
        };
        EXPECT_EQ(opens(u"one\n  tw|o\nthree"), 1);
        EXPECT_EQ(opens(u"one\n  two|\nthree"), 1);
        EXPECT_EQ(opens(u"one\n  two| \t\nthree"), 1) << "blanks after the caret";
        EXPECT_EQ(opens(u"one\n  two| \t"), 1) << "blanks after the caret, in the last line";
    }
}

TEST_F(EditLineOpeningTest, AKeyBesideABracketOpensItsLineOnce) {
    settings.ReplaceTabs = 0;
    Show(u"a\n()\nb");
    buffer().AttachEngine(new HighlightEngine);
    view().MoveCaret({1, 0});
    ASSERT_TRUE(buffer().Engine()->Highlight(0).start != NoOffset);
    EXPECT_EQ(OpeningsByTyping(u"x"), 1);
    EXPECT_EQ(OpeningsByTyping(u"y"), 1);
    EXPECT_EQ(OpeningsByTyping(u"\r"), 1);
    EXPECT_EQ(OpeningsByTyping(u"\t"), 1);
    EXPECT_EQ(OpeningsByPressing(ViewKey::Backspace), 1);
    EXPECT_EQ(OpeningsByTyping(u")"), 1);
    EXPECT_EQ(OpeningsByPressing(ViewKey::Delete), 1);
    EXPECT_EQ(Plain(Text()), "a\nxy\n))\nb");
}
