// The end of a file, wherever it lies: up to it everything works, past it nothing does.

#include "HexViewTest.h"

namespace {

struct HexEnd : HexViewTest {
    static constexpr uint64_t Terabyte = uint64_t{1} << 40;

    void GoToEnd() { view().GoTo(UINT64_MAX); }
    uint64_t Wheel(int32_t delta) {
        input().OnWheel({delta, 3, false});
        return view().Viewport().TopRow();
    }
};

} // namespace

TEST_F(HexEnd, TheLastByteIsReachedTypedIntoAndSaved) {
    for (const size_t size : BorderSizes) {
        if (size == 0) continue;
        std::string content = Pattern(size);
        Show(content);
        GoToEnd();
        EXPECT_EQ(view().Caret(), size);
        Press(ViewKey::Left);
        Press(ViewKey::Home);
        EXPECT_EQ(view().Caret(), (size - 1) / 16 * 16) << size;
        Press(ViewKey::End);
        EXPECT_EQ(view().Caret(), size - 1);
        Type(u"5A");
        EXPECT_EQ(Caret(), (Two{size, 0}));
        content.back() = 'Z';
        EXPECT_TRUE(Content() == content) << size;
        ASSERT_TRUE(file->Save());
        EXPECT_TRUE(file->OnDisk() == content) << size;
    }
}

TEST_F(HexEnd, PastItNothingIsTypedPastedOrCopied) {
    for (const size_t size : BorderSizes) {
        const std::string content = Pattern(size);
        Show(content);
        GoToEnd();
        Type(u"41");
        Paste(u"41 42");
        Copy();
        EXPECT_EQ(Caret(), (Two{size, 0}));
        EXPECT_TRUE(Content() == content) << size;
        EXPECT_FALSE((*file)->CanDo(DocumentCommand::Undo));
        EXPECT_TRUE(surface().written.empty());
        EXPECT_EQ(Status(StatusField::Message), u"");
    }
}

TEST_F(HexEnd, ASearchFromThereFindsTheLastMatchBackwardsAndTheFirstAroundTheEnd) {
    Show("two one two");
    SearchFor(u"two");
    GoToEnd();
    EXPECT_TRUE(FindNext(true));
    EXPECT_EQ(Selection(), (Two{11, 8}));
    EXPECT_EQ(Status(StatusField::Message), u"");
    GoToEnd();
    EXPECT_TRUE(FindNext(false));
    EXPECT_EQ(Selection(), (Two{3, 0}));
    EXPECT_EQ(Status(StatusField::Message), u"Passed end of file");
}

TEST_F(HexEnd, AMatchThereIsPastedOverAsFarAsTheFileGoes) {
    Show("one two");
    SearchFor(u"two");
    ASSERT_TRUE(FindNext(false));
    Paste(u"41 42 43 44 45");
    EXPECT_EQ(Content(), "one ABC");
    EXPECT_EQ(Selection(), (Two{7, 7}));
    Undo();
    EXPECT_EQ(Content(), "one two");
    EXPECT_EQ(Selection(), (Two{4, 4}));
}

// The anchor of a match is after it, and that of Ctrl+A before the file.
TEST_F(HexEnd, ASelectionIsTypedAndPastedOverFromItsCaretOn) {
    Show("one two");
    SearchFor(u"one");
    ASSERT_TRUE(FindNext(false));
    Type(u"4E");
    EXPECT_EQ(Content(), "Nne two");
    EXPECT_EQ(Selection(), (Two{1, 1}));
    Ctrl(u'A');
    Type(u"41");
    Ctrl(u'A');
    Paste(u"41");
    EXPECT_EQ(Content(), "Nne two");
    view().SelectBytes({1, 5});
    Paste(u"41");
    EXPECT_EQ(Content(), "Nne tAo");
    EXPECT_EQ(Selection(), (Two{6, 6}));
    view().SelectBytes({1, 5});
    Type(u"42");
    EXPECT_EQ(Content(), "Nne tBo");
    view().SelectBytes({1, 5});
    Paste(u"43 44 45");
    EXPECT_EQ(Content(), "Nne tCD");
}

TEST_F(HexEnd, ADragBelowTheWindowSelectsUpToIt) {
    Show(std::string(1000, 'x')); // 63 rows, the last of eight bytes
    input().Drag().OnLeftButtonDown({4 * 8, 16}, false);
    input().Drag().OnMouseMove({4 * 8, 11 * 16});
    for (int tick = 0; tick < 100; ++tick) input().Drag().OnTimer();
    EXPECT_EQ(Selection(), (Two{16, 1000}));
    input().Drag().OnMouseMove({4 * 8, -2 * 16});
    for (int tick = 0; tick < 100; ++tick) input().Drag().OnTimer();
    EXPECT_EQ(Selection(), (Two{16, 0}));
    EXPECT_EQ(view().Viewport().TopRow(), 0u);
}

// A terabyte.

TEST_F(HexEnd, KeysWorkAtTheEndOfATerabyte) {
    if (!ShowEmpty(Terabyte)) GTEST_SKIP() << "no room for a sparse file";
    EXPECT_EQ(After(Terabyte - 5, ViewKey::PageUp), Terabyte - 5 - 160);
    EXPECT_EQ(After(Terabyte - 5 - 32, ViewKey::PageDown), Terabyte - 5);
    EXPECT_EQ(After(Terabyte - 5, ViewKey::Home), Terabyte - 16);
    EXPECT_EQ(After(Terabyte - 5, ViewKey::End), Terabyte - 1);
    EXPECT_EQ(After(Terabyte - 1, ViewKey::Right), Terabyte);
    EXPECT_EQ(Status(StatusField::Line), u"10000000000");
    EXPECT_EQ(After(Terabyte - 5, ViewKey::Down), Terabyte - 5);
    EXPECT_EQ(After(Terabyte - 5, ViewKey::Up), Terabyte - 21);
    Ctrl(u'A');
    EXPECT_EQ(Selection(), (Two{0, Terabyte}));
}

TEST_F(HexEnd, BytesAreTypedPastedAndUndoneAtTheEndOfATerabyte) {
    if (!ShowEmpty(Terabyte)) GTEST_SKIP() << "no room for a sparse file";
    view().GoTo(Terabyte - 3);
    Type(u"41");
    Paste(u"42 43 44");
    EXPECT_EQ(view().Caret(), Terabyte);
    view().SelectBytes({Terabyte - 4, Terabyte});
    Copy();
    EXPECT_EQ(surface().clipboard, u"00 41 42 43 ");
    for (int i = 0; i < 3; ++i) Undo();
    EXPECT_EQ(view().Caret(), Terabyte - 3);
    EXPECT_FALSE((*file)->IsModified());
}

TEST_F(HexEnd, WheelAndMouseWorkAtTheEndOfATerabyte) {
    if (!ShowEmpty(Terabyte)) GTEST_SKIP() << "no room for a sparse file";
    constexpr uint64_t LastTop = Terabyte / 16 - (Rows - 1);
    GoToEnd();
    EXPECT_EQ(Wheel(-120), LastTop);
    EXPECT_EQ(Wheel(120), LastTop - 3);
    input().Drag().OnLeftButtonDown({(12 + 3) * 8, 16}, false); // an offset column of twelve characters
    EXPECT_EQ(view().Caret(), (LastTop - 2) * 16 + 1);
    input().Drag().OnMouseMove({(12 + 3) * 8, 11 * 16});
    for (int tick = 0; tick < 10; ++tick) input().Drag().OnTimer();
    EXPECT_EQ(Selection(), (Two{(LastTop - 2) * 16 + 1, Terabyte}));
    input().Drag().OnMouseMove({(12 + 3) * 8, -100 * 16});
    EXPECT_LT(view().Caret(), view().Anchor());
}
