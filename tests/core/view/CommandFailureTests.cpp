// Every command, key and character of a text view while each allocation fails in turn.

#include "support/FailureInjection.h"
#include "support/ViewTest.h"
#include "viewbase/ViewCommand.h"

#include <functional>
#include <string>
#include <vector>

namespace {

class CommandFailureTest : public ViewTest {
protected:
    static constexpr const Char* Original = u"int one(two);\n\tif (three) { four = \"five\"; }\n\nsix\n";

    // A selection over lines, with something to undo, to redo, to paste and to look for.
    void Select() {
        Fill(Original, u"c");
        EXPECT_TRUE(buffer().InsertText(4, u"more ", 5));
        EXPECT_TRUE(buffer().InsertText(0, u"x\n", 2));
        EXPECT_TRUE(buffer().Undo());
        view().SelectRange({7, 25});
        PrepareState();
    }
    // A line that is being typed in, and is not written back.
    void TypeInLine() {
        Fill(Original, u"c");
        view().SelectRange({19, 19});
        Type(u"pending (text");
        PrepareState();
    }
    void PrepareState() {
        buffer().ToggleBookmark(1);
        surface().clipboardHasText = true;
        surface().clipboard = u"pasted\nlines";
        surface().written.clear();
        EXPECT_TRUE(findState.searchText.Assign(u"i"));
        EXPECT_TRUE(buffer().IsModified());
    }

    // The text is as it was or as it is to be, can be undone to what it was at first, and is modified until then.
    void FailInTurn(const std::function<void()>& act) {
        FailInTurn([this] { Select(); }, act);
        FailInTurn([this] { TypeInLine(); }, act);
    }
    void FailInTurn(const std::function<void()>& prepare, const std::function<void()>& act) {
        prepare();
        const std::u16string before = Text();
        act();
        const std::u16string after = Text();
        failures += FailEachAllocation([&] {
            {
                const FailurePause pause;
                prepare();
            }
            act();
            const FailurePause pause;
            const std::u16string now = Text();
            EXPECT_TRUE(now == before || now == after || now == between) << Plain(now);
            EXPECT_LE(view().CaretOffset(), now.size());
            ExpectUndo(now);
            return now == after;
        });
    }
    void ExpectUndo(const std::u16string& now) {
        size_t steps = 0;
        for (; buffer().CanDo(DocumentCommand::Undo); ++steps) ASSERT_TRUE(buffer().Undo());
        EXPECT_EQ(Plain(Text()), Plain(Original));
        EXPECT_FALSE(buffer().IsModified());
        for (; steps; --steps) ASSERT_TRUE(buffer().Redo());
        EXPECT_EQ(Plain(Text()), Plain(now));
        EXPECT_EQ(buffer().IsModified(), now != Original);
    }

    std::u16string between; // a text on the way that is allowed as well
    uint64_t failures = 0;
};

TEST_F(CommandFailureTest, EveryCommand) {
    for (uint32_t command = 0; command < ViewCommandCount; ++command) {
        SCOPED_TRACE(command);
        FailInTurn([&] { input().ExecuteCommand(static_cast<ViewCommand>(command)); });
    }
    EXPECT_GT(failures, 20u);
}

TEST_F(CommandFailureTest, EveryKey) {
    std::vector<uint32_t> keys = {ViewKey::Backspace, ViewKey::Escape, ViewKey::Insert,      ViewKey::Delete,
                                  ViewKey::F2,        ViewKey::F3,     ViewKey::CloseBracket};
    for (uint32_t key = ViewKey::PageUp; key <= ViewKey::Down; ++key) keys.push_back(key);
    for (uint32_t key = u'A'; key <= u'Z'; ++key) keys.push_back(key);
    for (const uint32_t key : keys) {
        for (uint32_t held = 0; held < 4; ++held) {
            SCOPED_TRACE(std::to_string(key) + " with " + std::to_string(held));
            FailInTurn([&] { Press(key, held & 1, held & 2); });
        }
    }
    EXPECT_GT(failures, 200u);
}

// Over a selection, which is removed by a step of its own.
TEST_F(CommandFailureTest, EveryKindOfCharacter) {
    settings.ReplaceTabs = 0;
    Select();
    ASSERT_TRUE(view().DeleteSelection());
    between = Text();
    for (const Char character : {u'x', u' ', u'\t', u'\r', u'}', u'\u6F22', u'\xD83D', u'\b'}) {
        SCOPED_TRACE(static_cast<uint32_t>(character));
        FailInTurn([&] { Type({character}); });
    }
    EXPECT_GT(failures, 50u);
}

// The spaces of a tab are typed one after the other, and are all there or none of them.
TEST_F(CommandFailureTest, ATabOfManySpaces) {
    settings.ReplaceTabs = 1;
    settings.SpacesPerTab = 100;
    const auto typeTab = [&] { Type({u'\t'}); };
    FailInTurn(typeTab);
    FailInTurn( // of the same step as a space before them
        [&] {
            TypeInLine();
            Type(u" ");
        },
        typeTab);
    EXPECT_GT(failures, 5u);
}

} // namespace
