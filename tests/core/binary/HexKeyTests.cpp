#include "HexViewTest.h"

namespace {

struct HexKeys : HexViewTest {};

constexpr uint32_t Keypad0 = 0x60;

} // namespace

TEST_F(HexKeys, LeftAndRightMoveByAByte) {
    Show(std::string(20, 'x'));
    EXPECT_EQ(After(5, ViewKey::Right), 6u);
    EXPECT_EQ(After(15, ViewKey::Right), 16u);
    EXPECT_EQ(After(19, ViewKey::Right), 20u); // after the last byte
    EXPECT_EQ(After(20, ViewKey::Right), 20u);
    EXPECT_EQ(After(5, ViewKey::Left), 4u);
    EXPECT_EQ(After(16, ViewKey::Left), 15u);
    EXPECT_EQ(After(0, ViewKey::Left), 0u);
}

TEST_F(HexKeys, UpAndDownMoveByARow) {
    Show(std::string(40, 'x')); // the last row has eight bytes
    EXPECT_EQ(After(5, ViewKey::Down), 21u);
    EXPECT_EQ(After(21, ViewKey::Down), 37u);
    EXPECT_EQ(After(30, ViewKey::Down), 39u); // no such column there
    EXPECT_EQ(After(37, ViewKey::Down), 37u);
    EXPECT_EQ(After(40, ViewKey::Down), 40u);
    EXPECT_EQ(After(21, ViewKey::Up), 5u);
    EXPECT_EQ(After(5, ViewKey::Up), 5u);
    EXPECT_EQ(After(40, ViewKey::Up), 24u);
}

TEST_F(HexKeys, AfterAFullLastRowTheCaretIsOnARowOfItsOwn) {
    Show(std::string(32, 'x'));
    EXPECT_EQ(After(32, ViewKey::Down), 32u);
    EXPECT_EQ(After(32, ViewKey::Up), 16u);
    EXPECT_EQ(After(32, ViewKey::Home), 32u);
    EXPECT_EQ(After(32, ViewKey::End), 32u);
    EXPECT_EQ(After(32, ViewKey::Left), 31u);
    EXPECT_EQ(After(32, ViewKey::PageDown), 32u);
    EXPECT_EQ(After(16, ViewKey::Down), 16u);
}

TEST_F(HexKeys, HomeAndEndGoToTheRowsFirstAndLastByte) {
    Show(std::string(40, 'x'));
    EXPECT_EQ(After(21, ViewKey::Home), 16u);
    EXPECT_EQ(After(16, ViewKey::Home), 16u);
    EXPECT_EQ(After(21, ViewKey::End), 31u);
    EXPECT_EQ(After(33, ViewKey::End), 39u); // a partly filled row
    EXPECT_EQ(After(40, ViewKey::End), 39u);
    EXPECT_EQ(After(40, ViewKey::Home), 32u);
}

TEST_F(HexKeys, PagingKeepsTheColumnAndStopsAtTheFirstAndLastRow) {
    Show(std::string(16 * 30 + 4, 'x'));
    EXPECT_EQ(After(5, ViewKey::PageDown), 165u);
    EXPECT_EQ(After(165, ViewKey::PageUp), 5u);
    EXPECT_EQ(After(16 * 25 + 2, ViewKey::PageDown), 16u * 30 + 2);
    EXPECT_EQ(After(16 * 25 + 9, ViewKey::PageDown), 16u * 30 + 3);
    EXPECT_EQ(After(16 * 30 + 1, ViewKey::PageDown), 16u * 30 + 1);
    EXPECT_EQ(After(16 * 4 + 7, ViewKey::PageUp), 7u);
    EXPECT_EQ(After(7, ViewKey::PageUp), 7u);
}

TEST_F(HexKeys, MovesAreTheSameWithCtrl) {
    Show(std::string(40, 'x'));
    view().GoTo(21);
    Ctrl(ViewKey::Home);
    EXPECT_EQ(view().Caret(), 16u);
    Ctrl(ViewKey::End);
    EXPECT_EQ(view().Caret(), 31u);
    Ctrl(ViewKey::Up);
    EXPECT_EQ(view().Caret(), 15u);
}

TEST_F(HexKeys, WithShiftTheAnchorStays) {
    Show(std::string(1000, 'x'));
    const uint32_t keys[] = {ViewKey::Right, ViewKey::Down, ViewKey::PageDown, ViewKey::End,
                             ViewKey::Left,  ViewKey::Up,   ViewKey::PageUp,   ViewKey::Home};
    for (const uint32_t key : keys) {
        const uint64_t moved = After(500, key);
        EXPECT_EQ(Selection(), (Two{moved, moved}));
        view().GoTo(500);
        Shift(key);
        EXPECT_EQ(Selection(), (Two{500, moved})) << key;
    }
    Shift(ViewKey::Right);
    EXPECT_EQ(view().Anchor(), 500u);
    Press(ViewKey::Right);
    EXPECT_FALSE(view().HasSelection());
}

TEST_F(HexKeys, MovesScrollTheCaretIntoView) {
    Show(std::string(1600, 'x'));
    for (int i = 0; i < 12; ++i) Press(ViewKey::Down);
    EXPECT_EQ(view().Viewport().TopRow(), 3u);
    Press(ViewKey::PageDown);
    EXPECT_EQ(view().Viewport().TopRow(), 13u);
    Press(ViewKey::PageUp);
    Press(ViewKey::PageUp);
    EXPECT_EQ(view().Viewport().TopRow(), 2u);
}

TEST_F(HexKeys, AnEmptyFileTakesEveryKey) {
    Show("");
    for (uint32_t key = 0; key < 256; ++key) {
        Press(key);
        Press(key, true);
        Press(key, false, true);
        Press(key, true, true);
    }
    EXPECT_EQ(Selection(), (Two{0, 0}));
    EXPECT_FALSE((*file)->IsModified());
}

// "Any key other than a hex-digit key (0-9, A-F, and the keypad keys 1-6), and any key pressed with Ctrl or
// Shift, first puts the caret back on the high nibble."
TEST_F(HexKeys, OtherKeysPutTheCaretBackOnTheHighNibble) {
    Show(std::string(100, 'x'));
    for (uint32_t key = 1; key < 256; ++key) {
        view().SetCaret({50, true});
        Press(key);
        const bool isDigit =
            (key >= u'0' && key <= u'9') || (key >= u'A' && key <= u'F') || (key >= Keypad0 + 1 && key <= Keypad0 + 6);
        EXPECT_EQ(view().IsOnLowNibble(), isDigit) << key;
    }
}

TEST_F(HexKeys, DigitKeysWithShiftOrCtrlPutItBackToo) {
    Show(std::string(100, 'x'));
    for (const uint32_t key : {uint32_t{u'0'}, uint32_t{u'D'}, Keypad0 + 3}) {
        view().SetCaret({50, true});
        Shift(key);
        EXPECT_EQ(Caret(), (Two{50, 0}));
        view().SetCaret({50, true});
        Ctrl(key);
        EXPECT_EQ(Caret(), (Two{50, 0}));
        EXPECT_EQ(surface().caretX, (4 + 6) * 8); // shown there as well
    }
}

TEST_F(HexKeys, CtrlASelectsEverything) {
    Show(std::string(1000, 'x'));
    view().GoTo(300);
    Ctrl(u'A');
    EXPECT_EQ(Selection(), (Two{0, 1000}));
    EXPECT_GE(surface().allInvalidations, 1);
}

TEST_F(HexKeys, CtrlFAndCtrlGOpenTheDialogs) {
    Show("x");
    Ctrl(u'F');
    Ctrl(u'G');
    Ctrl(u'G', true); // quick open, which is the frame's
    Press(u'F');
    Press(u'G');
    EXPECT_EQ(surface().dialogs, (std::vector<std::string>{"find", "go to"}));
}

TEST_F(HexKeys, TheLetterKeysWithoutCtrlDoNothing) {
    Show("xyz");
    SetClipboard(u"00");
    Type(u"1");
    for (const uint32_t key : {u'A', u'C', u'V', u'Y', u'Z'}) Press(key);
    EXPECT_FALSE(view().HasSelection());
    EXPECT_EQ(Content(), "\x18yz");
    EXPECT_TRUE(surface().written.empty());
}

TEST_F(HexKeys, AltGrRunsNoCtrlCommand) {
    Show("xyz");
    Type(u"41");
    SetClipboard(u"00");
    for (const uint32_t key : {u'A', u'C', u'F', u'G', u'V', u'Y', u'Z'}) AltGr(key);
    EXPECT_EQ(Selection(), (Two{1, 1}));
    EXPECT_EQ(Content(), "Ayz");
    EXPECT_TRUE(surface().written.empty());
    EXPECT_TRUE(surface().dialogs.empty());
    AltGr(ViewKey::Right);
    EXPECT_EQ(Selection(), (Two{2, 2}));
}

TEST_F(HexKeys, CtrlZAndCtrlYGoThroughTheEdits) {
    Show("\x11\x22");
    Type(u"abcd");
    EXPECT_EQ(Content(), "\xAB\xCD");
    Ctrl(u'Z');
    EXPECT_EQ(Content(), "\xAB\xC2");
    Ctrl(u'Z');
    Ctrl(u'Z');
    EXPECT_EQ(Content(), "\xA1\x22");
    EXPECT_EQ(Caret(), (Two{0, 1}));
    Ctrl(u'Y');
    EXPECT_EQ(Content(), "\xAB\x22");
    Ctrl(u'Z');
    Ctrl(u'Z');
    Ctrl(u'Z'); // nothing is left
    EXPECT_EQ(Content(), "\x11\x22");
    for (int i = 0; i < 6; ++i) Ctrl(u'Y');
    EXPECT_EQ(Content(), "\xAB\xCD");
}

// The numbered commands.

TEST_F(HexKeys, CopyNeedsASelectionAndOthersNothing) {
    Show("xyz");
    for (uint32_t number = 0; number <= ViewCommandCount; ++number) {
        const auto command = static_cast<ViewCommand>(number);
        const bool always = command == ViewCommand::SelectAll || command == ViewCommand::Find;
        EXPECT_EQ(input().IsCommandEnabled(command), always) << number;
    }
    view().SelectBytes({1, 2});
    EXPECT_TRUE(input().IsCommandEnabled(ViewCommand::Copy));
    EXPECT_FALSE(input().IsCommandEnabled(ViewCommand::Cut));
    EXPECT_FALSE(input().IsCommandEnabled(ViewCommand::CopyColoured));
}

TEST_F(HexKeys, CommandsDoWhatTheirKeysDo) {
    Show("xyz");
    EXPECT_TRUE(input().ExecuteCommand(ViewCommand::Find));
    EXPECT_TRUE(input().ExecuteCommand(ViewCommand::GoToLine));
    EXPECT_EQ(surface().dialogs, (std::vector<std::string>{"find", "go to"}));
    EXPECT_TRUE(input().ExecuteCommand(ViewCommand::SelectAll));
    EXPECT_EQ(Selection(), (Two{0, 3}));
    EXPECT_TRUE(input().ExecuteCommand(ViewCommand::Copy));
    EXPECT_EQ(surface().clipboard, u"78 79 7A ");
    SetClipboard(u"41");
    view().GoTo(1);
    EXPECT_TRUE(input().ExecuteCommand(ViewCommand::Paste));
    EXPECT_EQ(Content(), "xAz");
}

TEST_F(HexKeys, WhatBytesCannotDoIsTakenAndDoesNothing) {
    Show("xyz");
    view().SelectBytes({0, 2});
    for (const ViewCommand command : {ViewCommand::Cut, ViewCommand::Delete, ViewCommand::Replace,
                                      ViewCommand::ToggleBookmark, ViewCommand::CopyColoured})
        EXPECT_TRUE(input().ExecuteCommand(command));
    EXPECT_FALSE(input().ExecuteCommand(static_cast<ViewCommand>(ViewCommandCount)));
    EXPECT_EQ(Content(), "xyz");
    EXPECT_EQ(Selection(), (Two{0, 2}));
    EXPECT_TRUE(surface().dialogs.empty());
    EXPECT_TRUE(surface().written.empty());
}
