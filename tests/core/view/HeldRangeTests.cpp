// The ranges that screen readers hold, while the text is edited.
#include "support/Random.h"
#include "support/ViewTest.h"
#include "view/EditorFind.h"
#include "view/HeldRanges.h"

namespace {

class HeldRangeTest : public ViewTest {
protected:
    TextRange Now(const HeldRange& held) const { return held.range.Within(view().Text()); }
    std::string Read(const HeldRange& held) const {
        const TextRange part = Now(held);
        return Plain(Text().substr(part.start, part.Length()));
    }
    std::unique_ptr<HeldRange> Hold(uint32_t start, uint32_t end) {
        return std::make_unique<HeldRange>(view().Held(), AccessibleRange({start, end}));
    }
};

} // namespace

TEST_F(HeldRangeTest, StaysOnItsCharacters) {
    Show(u"one two thr|ee");
    const auto two = Hold(4, 7);
    const auto caret = Hold(11, 11);
    Type(u"xy");
    EXPECT_EQ(Read(*two), "two");
    EXPECT_EQ(Now(*caret), (TextRange{11, 11})) << "what is typed is after it";
    ASSERT_TRUE(buffer().InsertText(0, u"a\nb\n", 4));
    EXPECT_EQ(Now(*two), (TextRange{8, 11}));
    ASSERT_TRUE(buffer().DeleteText({0, 6}));
    EXPECT_EQ(Now(*two), (TextRange{2, 5}));
    EXPECT_TRUE(buffer().Undo());
    EXPECT_TRUE(buffer().Undo());
    EXPECT_EQ(Now(*two), (TextRange{4, 7}));
    EXPECT_TRUE(buffer().Redo());
    EXPECT_EQ(Now(*two), (TextRange{8, 11}));
}

TEST_F(HeldRangeTest, WhatIsInsertedAtItsEndsIsNoPartOfIt) {
    Show(u"one |two");
    const auto two = Hold(4, 7);
    Type(u"1");
    EXPECT_EQ(Now(*two), (TextRange{5, 8}));
    Press(ViewKey::End);
    Type(u"2");
    EXPECT_EQ(Read(*two), "two");
    view().MoveCaretToOffset(6, false);
    Type(u"3");
    EXPECT_EQ(Read(*two), "t3wo");
}

TEST_F(HeldRangeTest, WhatIsRemovedIsTakenFromIt) {
    Show(u"one two three");
    const auto two = Hold(4, 7);
    const auto inside = Hold(5, 6);
    ASSERT_TRUE(buffer().DeleteText({2, 5}));
    EXPECT_EQ(Read(*two), "wo");
    EXPECT_EQ(Now(*two), (TextRange{2, 4}));
    ASSERT_TRUE(buffer().DeleteText({0, 5}));
    EXPECT_EQ(Now(*two), (TextRange{0, 0}));
    EXPECT_EQ(Now(*inside), (TextRange{0, 0}));
}

TEST_F(HeldRangeTest, AReplacedWordKeepsItsPlace) {
    Show(u"one two three");
    const auto two = Hold(4, 7);
    const auto three = Hold(8, 13);
    EXPECT_TRUE(findState.searchHistory.Add(u"two", 3));
    ASSERT_TRUE(EditorFind::ReplaceAll(view(), u"2", 1, false));
    EXPECT_EQ(Text(), u"one 2 three");
    EXPECT_EQ(Read(*two), "2");
    EXPECT_EQ(Read(*three), "three");
}

// Edits of any view of the document.
TEST_F(HeldRangeTest, AnotherViewMovesItToo) {
    Show(u"one two");
    const auto two = Hold(4, 7);
    TestView* const second = TestView::Create(buffer());
    second->surface.SetSize(640, 160);
    second->input.OnSize(false);
    second->input.OnAttached();
    second->surface.TakeFocus();
    second->input.OnChar(u'x');
    EXPECT_EQ(Read(*two), "two");
    EXPECT_EQ(Now(*two), (TextRange{5, 8}));
}

TEST_F(HeldRangeTest, AnotherTextHasItInside) {
    Show(u"one two three");
    const auto three = Hold(8, 13);
    view().SetDocument(nullptr);
    EXPECT_EQ(Now(*three), (TextRange{0, 0}));
    delete shown; // no document owns it any more
}

TEST_F(HeldRangeTest, AClientMayKeepItLongerThanTheText) {
    Show(u"one two three");
    auto first = Hold(0, 3);
    auto second = Hold(4, 7);
    Show(u"other"); // the view is gone
    first.reset();
    second.reset();
}

// A character that there is only once is held, and everything else is edited.
TEST_F(HeldRangeTest, RandomEditsElsewhereLeaveItOnItsCharacter) {
    Random random(15);
    for (int round = 0; round < 200; ++round) {
        std::u16string text(random.Below(30), u'a');
        const size_t at = random.Below(text.size() + 1);
        text.insert(at, u"\u00FE");
        for (size_t i = 0; i < text.size(); ++i) {
            if (text[i] == u'a' && random.OneIn(6)) text[i] = u'\n';
        }
        Fill(text);
        const auto held = Hold(static_cast<uint32_t>(at), static_cast<uint32_t>(at + 1));
        for (int step = 0; step < 40; ++step) {
            const std::u16string before = Text();
            const size_t kept = before.find(u'\u00FE');
            ASSERT_NE(kept, before.npos);
            const uint32_t place = random.Below(before.size() + 1);
            view().MoveCaretToOffset(place, false);
            switch (random.Below(7)) {
            case 0:
                if (place != kept) Press(ViewKey::Delete);
                break;
            case 1:
                if (place != kept + 1) Press(ViewKey::Backspace);
                break;
            case 2:
                EXPECT_TRUE(buffer().Undo());
                break;
            case 3:
                EXPECT_TRUE(buffer().Redo());
                break;
            case 4: {
                const size_t end = place <= kept ? kept : before.size();
                const auto count = static_cast<uint32_t>(random.Below(end - place + 1));
                ASSERT_TRUE(buffer().CommitEdit() && (count == 0 || buffer().DeleteText({place, place + count})));
                break;
            }
            case 5:
                Type(u"\r");
                break;
            default:
                Type(random.OneIn(2) ? u"b" : u"bc d");
            }
            ASSERT_EQ(Now(*held).Length(), 1u) << round << ' ' << step << ' ' << Plain(before);
            ASSERT_EQ(Text()[Now(*held).start], u'\u00FE') << round << ' ' << step << ' ' << Plain(before);
        }
    }
}
