#include "HexViewTest.h"
#include "binary/HexAccessible.h"
#include "support/FailureInjection.h"
#include "support/Random.h"

namespace {

struct HexEdit : HexViewTest {
    // Opens the file again in a way that only reading works.
    void MakeReadOnly() {
        FileCalls calls({1});
        ASSERT_TRUE((*file)->Open(file->path.c_str()));
        ASSERT_TRUE((*file)->IsReadOnly());
    }
    void Truncate(uint64_t size) const { std::filesystem::resize_file(file->folder.File("file.bin"), size); }
    std::u16string Copied() {
        surface().clipboard.clear();
        Copy();
        return surface().clipboard;
    }
};

std::u16string HexOf(const std::string& bytes) {
    std::u16string text;
    for (const char c : bytes) {
        const auto byte = static_cast<uint8_t>(c);
        text += u"0123456789ABCDEF"[byte >> 4];
        text += u"0123456789ABCDEF"[byte & 15];
        text += u' ';
    }
    return text;
}

} // namespace

// Typing.

// "Typing the digits 4 and then 1 on byte 0 of a file holding 00 gives 41 and moves the caret to byte 1, on
// its high nibble; undo twice restores 00."
TEST_F(HexEdit, TwoDigitsFillAByteAndMoveToTheNextOne) {
    Show(std::string(1, '\0'));
    input().OnChar(u'4');
    EXPECT_EQ(Content(), "\x40");
    EXPECT_EQ(Caret(), (Two{0, 1}));
    input().OnChar(u'1');
    EXPECT_EQ(Content(), "\x41");
    EXPECT_EQ(Caret(), (Two{1, 0}));
    Undo();
    EXPECT_EQ(Content(), "\x40");
    EXPECT_EQ(Caret(), (Two{0, 1}));
    Undo();
    EXPECT_EQ(Content(), std::string(1, '\0'));
    EXPECT_EQ(Caret(), (Two{0, 0}));
    EXPECT_FALSE((*file)->CanDo(DocumentCommand::Undo));
}

TEST_F(HexEdit, DigitsOfEitherCaseOverwriteTheirNibble) {
    Show("\xFF\xFF\xFF");
    Type(u"0a9FcD");
    EXPECT_EQ(Content(), "\x0A\x9F\xCD");
}

TEST_F(HexEdit, EveryOtherCharacterIsIgnored) {
    Show("xyz");
    for (uint32_t c = 1; c < 0x10000; ++c) {
        const bool isDigit = (c >= u'0' && c <= u'9') || (c >= u'A' && c <= u'F') || (c >= u'a' && c <= u'f');
        if (!isDigit) input().OnChar(static_cast<Char>(c));
    }
    EXPECT_EQ(Content(), "xyz");
    EXPECT_FALSE((*file)->CanDo(DocumentCommand::Undo));
}

// "A 0-byte file shows no rows and ignores typing."
TEST_F(HexEdit, AnEmptyFileIgnoresTyping) {
    Show("");
    EXPECT_EQ(view().Viewport().RowCount(), 0u);
    Type(u"41");
    EXPECT_EQ(Content(), "");
    EXPECT_FALSE((*file)->CanDo(DocumentCommand::Undo));
    EXPECT_EQ(Status(StatusField::Message), u"");
}

TEST_F(HexEdit, TypingStopsAtTheEndOfTheFile) {
    Show("xy");
    view().GoTo(1);
    Type(u"4142");
    EXPECT_EQ(Content(), "xA");
    EXPECT_EQ(Caret(), (Two{2, 0}));
}

TEST_F(HexEdit, AReadOnlyDocumentSaysThatItIgnoresTypingAndPasting) {
    Show("xyz");
    MakeReadOnly();
    EXPECT_TRUE(HexAccessible(view()).IsReadOnly()); // for screen readers
    input().OnChar(u'g');                            // which no file takes
    EXPECT_EQ(Status(StatusField::Message), u"");
    Type(u"41");
    EXPECT_EQ(std::exchange(host().status[StatusField::Message], u""), u"The file can only be read");
    Paste(u"41");
    EXPECT_EQ(Status(StatusField::Message), u"The file can only be read");
    EXPECT_EQ(Content(), "xyz");
    EXPECT_FALSE((*file)->CanDo(DocumentCommand::Undo));
}

TEST_F(HexEdit, TypingEmptiesTheSelection) {
    Show(std::string(100, 'x'));
    view().SelectBytes({20, 10});
    Type(u"1");
    EXPECT_EQ(Selection(), (Two{10, 10}));
    EXPECT_EQ(Content()[10], '\x18');
}

TEST_F(HexEdit, TypingRepaintsEveryViewAndScrollsTheOwnOneToTheCaret) {
    Show(std::string(1600, 'x'));
    TestHexView* other = TestHexView::Create(**file);
    other->editor.GoTo(50);
    other->surface.ForgetCalls();
    input().OnScroll(ScrollAxis::Vertical, ScrollRequest::Maximum, 0);
    surface().ForgetCalls();
    input().OnChar(u'1');
    EXPECT_EQ(view().Viewport().TopRow(), 0u);
    EXPECT_GE(surface().allInvalidations, 1);
    EXPECT_EQ(other->surface.allInvalidations, 1);
    EXPECT_EQ(other->editor.Caret(), 50u);
    // Undone from the other view, the edit still moves the caret of its own.
    view().GoTo(1000);
    other->surface.ctrl = true;
    other->input.OnKeyDown(u'Z');
    EXPECT_EQ(Caret(), (Two{0, 0}));
    EXPECT_EQ(other->editor.Caret(), 50u);
}

TEST_F(HexEdit, AClosedViewIsForgotten) {
    Show(std::string(100, 'x'));
    TestHexView* other = TestHexView::Create(**file);
    other->input.OnChar(u'1');
    other->editor.Destroy();
    Undo();
    EXPECT_EQ(Content(), std::string(100, 'x'));
    EXPECT_EQ(Caret(), (Two{0, 0}));
}

TEST_F(HexEdit, TheFrameIsNotifiedOfTheChange) {
    Show("xyz");
    const int before = host().documentChanges;
    Type(u"1");
    EXPECT_EQ(host().documentChanges, before + 1);
    Undo();
    EXPECT_EQ(host().documentChanges, before + 2);
}

// Copy.

TEST_F(HexEdit, CopyWritesTwoDigitsAndABlankForEachByte) {
    Show(std::string("\x00\x0A\xFFz", 4));
    view().SelectBytes({3, 0});
    EXPECT_EQ(Copied(), u"00 0A FF ");
    ASSERT_EQ(surface().written.size(), 1u);
    EXPECT_EQ(surface().written[0].first, ClipboardFormat::UnicodeText);
    EXPECT_EQ(surface().written[0].second.size(), 10 * sizeof(Char)); // with its terminator
    Ctrl(u'C');
    EXPECT_EQ(surface().clipboard, u"00 0A FF ");
}

TEST_F(HexEdit, CopyTakesTheChangedBytesAcrossPages) {
    std::string content = Pattern(50000);
    Show(content);
    view().GoTo(16384);
    Paste(u"01 02 03");
    content.replace(16384, 3, "\x01\x02\x03");
    view().SelectBytes({16000, 33000});
    EXPECT_EQ(Copied(), HexOf(content.substr(16000, 17000)));
}

TEST_F(HexEdit, WithoutASelectionNothingIsCopied) {
    Show("xyz");
    Ctrl(u'C');
    EXPECT_TRUE(surface().written.empty());
    EXPECT_TRUE(host().messages.empty());
}

TEST_F(HexEdit, ASelectionTooLargeForTheClipboardIsRefused) {
    if (!ShowEmpty(uint64_t{1} << 40)) GTEST_SKIP() << "no room for a sparse file";
    view().SelectAll();
    Copy();
    view().SelectBytes({0, 1431655765}); // one byte more than 2^32 - 2 characters hold
    Copy();
    EXPECT_TRUE(surface().written.empty());
    EXPECT_EQ(host().messages, std::vector<std::u16string>(2, u"Failed copying to clipboard"));
}

TEST_F(HexEdit, BytesThatAreGoneAreNotCopied) {
    Show(std::string(40000, 'x'));
    Truncate(20000);
    view().SelectBytes({0, 30000});
    EXPECT_EQ(Copied(), u"");
    EXPECT_EQ(host().messages, std::vector<std::u16string>(1, u"Failed copying to clipboard"));
    view().SelectBytes({19999, 20000});
    EXPECT_EQ(Copied(), u"78 ");
}

// Paste.

TEST_F(HexEdit, PasteOverwritesAtTheCaret) {
    Show("0123456789");
    view().GoTo(2);
    Paste(u"41 42\t4 3"); // an odd digit: nothing
    EXPECT_EQ(Content(), "0123456789");
    Paste(u" 41 4243\t44");
    EXPECT_EQ(Content(), "01ABCD6789");
    EXPECT_EQ(Caret(), (Two{6, 0}));
    Undo(); // one step
    EXPECT_EQ(Content(), "0123456789");
    EXPECT_EQ(Caret(), (Two{2, 0}));
    Redo();
    EXPECT_EQ(Content(), "01ABCD6789");
    EXPECT_EQ(Caret(), (Two{6, 0}));
}

TEST_F(HexEdit, PasteKeepsTheNibbleOfTheCaret) {
    Show("0123456789");
    view().SetCaret({2, true});
    Paste(u"4142");
    EXPECT_EQ(Content(), "01AB456789");
    EXPECT_EQ(Caret(), (Two{4, 1}));
    Undo();
    EXPECT_EQ(Caret(), (Two{2, 1}));
    SetClipboard(u"58");
    Ctrl(u'V'); // the key has put it back on the high nibble
    EXPECT_EQ(Content(), "01X3456789");
    EXPECT_EQ(Caret(), (Two{3, 0}));
}

TEST_F(HexEdit, PasteStopsAtTheEndOfTheFile) {
    Show("0123456789");
    view().GoTo(8);
    Paste(u"41 42 43 44");
    EXPECT_EQ(Content(), "01234567AB");
    EXPECT_EQ(Caret(), (Two{10, 0}));
    Paste(u"45");
    EXPECT_EQ(Content(), "01234567AB");
    Undo();
    EXPECT_EQ(Content(), "0123456789");
    EXPECT_FALSE((*file)->CanDo(DocumentCommand::Undo));
}

TEST_F(HexEdit, PasteOfWhatIsNoBytesDoesNothing) {
    Show("0123456789");
    for (const char16_t* text : {u"", u"  ", u"4", u"xyz", u"41 42 g0", u"0x41", u"4\n1"}) Paste(text);
    surface().clipboardHasText = false;
    Paste();
    EXPECT_EQ(Content(), "0123456789");
    EXPECT_FALSE((*file)->CanDo(DocumentCommand::Undo));
}

TEST_F(HexEdit, LineBreaksInWhatIsPastedAreBlanks) {
    Show("0123456789");
    Paste(u"41 42\r\n43\n\n44\r45\r\n");
    EXPECT_EQ(Content(), "ABCDE56789");
}

TEST_F(HexEdit, PasteIsOfferedWhenItWouldChangeBytes) {
    const auto offered = [this] { return input().IsCommandEnabled(ViewCommand::Paste); };
    Show("xyz");
    EXPECT_FALSE(offered()); // nothing is on the clipboard
    for (const char16_t* text : {u"", u" \n", u"4", u"text"}) {
        SetClipboard(text);
        EXPECT_FALSE(offered());
    }
    SetClipboard(u"41\r\n42");
    EXPECT_TRUE(offered());
    view().GoTo(3);
    EXPECT_FALSE(offered()); // no byte is there
    view().GoTo(0);
    MakeReadOnly();
    EXPECT_FALSE(offered());
}

TEST_F(HexEdit, APasteReachesOverPages) {
    std::string content = Pattern(50000);
    Show(content);
    const std::string pasted = Pattern(40000, 7);
    view().GoTo(5000);
    Paste(HexOf(pasted));
    content.replace(5000, pasted.size(), pasted);
    EXPECT_EQ(Content(), content);
    ASSERT_TRUE(file->Save());
    EXPECT_EQ(file->OnDisk(), content);
}

TEST_F(HexEdit, WhatIsCopiedCanBePasted) {
    Show(Pattern(256));
    view().SelectBytes({0, 100});
    Copy();
    view().GoTo(150);
    Paste();
    EXPECT_EQ(Content().substr(150, 100), Content().substr(0, 100));
}

// Going to an offset.

TEST_F(HexEdit, GoToMovesTheCaretAndStopsAtTheEndOfTheFile) {
    Show(std::string(1000, 'x'));
    view().SelectBytes({5, 9});
    view().GoTo(500);
    EXPECT_EQ(Selection(), (Two{500, 500}));
    view().GoTo(1000);
    EXPECT_EQ(view().Caret(), 1000u);
    view().GoTo(1001);
    EXPECT_EQ(view().Caret(), 1000u);
    view().GoTo(UINT64_MAX);
    EXPECT_EQ(view().Caret(), 1000u);
}

// What fails.

TEST_F(HexEdit, AByteThatCannotBeReadIsNotChanged) {
    Show(std::string(40000, 'x'));
    Truncate(100);
    view().GoTo(30000);
    input().OnChar(u'1');
    EXPECT_EQ(Status(StatusField::Message), u"Failed changing the file");
    host().status[StatusField::Message] = u"";
    Paste(u"41");
    EXPECT_EQ(Status(StatusField::Message), u"Failed changing the file");
    EXPECT_FALSE((*file)->IsModified());
    EXPECT_EQ(Caret(), (Two{30000, 0}));
}

TEST_F(HexEdit, AnUndoThatFailsIsReported) {
    Show(std::string(50000, 'x'));
    view().GoTo(40000);
    Type(u"41");
    ASSERT_TRUE(file->Save());
    const Damage damage(40960, 41000);
    Ctrl(u'Z');
    EXPECT_EQ(Status(StatusField::Message), u"Failed changing the file");
    host().status[StatusField::Message] = u"";
    EXPECT_TRUE((*file)->DoCommand(DocumentCommand::Undo)); // as the menu does
    EXPECT_EQ(Status(StatusField::Message), u"Failed changing the file");
    EXPECT_EQ(Caret(), (Two{40001, 0}));
}

TEST_F(HexEdit, EveryAllocationOfAnEditFailsInTurn) {
    Show(std::string(50000, 'x'));
    view().GoTo(1000);
    SetClipboard(u"4142");
    const auto step = [this](const auto& edit, const std::string& after) {
        return FailEachAllocation([&] {
            const std::string before = [this] {
                const FailurePause pause;
                while ((*file)->CanDo(DocumentCommand::Undo)) Undo();
                view().GoTo(1000);
                host().status[StatusField::Message] = u"";
                return Content();
            }();
            edit();
            const FailurePause pause;
            const bool done = Content() != before;
            EXPECT_EQ(Content().substr(1000, 2), done ? after : "xx");
            EXPECT_EQ((*file)->CanDo(DocumentCommand::Undo), done);
            EXPECT_TRUE(done || view().Caret() == 1000u);
            return done;
        });
    };
    EXPECT_GE(step([this] { input().OnChar(u'1'); }, "\x18x"), 1u);
    EXPECT_GE(step([this] { Paste(); }, "AB"), 2u);
}

TEST_F(HexEdit, ABytePastWhichThePageCannotBeReadIsNotChanged) {
    Show(std::string(50000, 'x'));
    const Damage damage(40960, 41000);
    for (const uint64_t offset : {40000u, 40960u}) {
        host().status[StatusField::Message] = u"";
        view().GoTo(offset);
        input().OnChar(u'1');
        EXPECT_EQ(Status(StatusField::Message), u"Failed changing the file");
        EXPECT_EQ(Caret(), (Two{offset, 0}));
    }
    EXPECT_FALSE((*file)->IsModified());
}

TEST_F(HexEdit, CopyWithoutMemoryCopiesNothing) {
    Show(std::string(1000, 'x'));
    view().SelectAll();
    const uint64_t failures = FailEachAllocation([this] {
        surface().written.clear();
        Copy();
        return !surface().written.empty();
    });
    EXPECT_GE(failures, 1u);
    EXPECT_EQ(host().messages.size(), failures);
}

// Against a plain model.

TEST_F(HexEdit, RandomKeysKeepCaretSelectionAndBytesLikeAPlainModel) {
    for (uint32_t seed = 1; seed <= 4; ++seed) {
        Random random(seed);
        std::string bytes = Pattern(random.Below(200) + (seed > 2 ? 16300 : 0), seed);
        Show(bytes);
        uint64_t caret = 0;
        uint64_t anchor = 0;
        uint32_t nibble = 0;
        for (int i = 0; i < 3000; ++i) {
            const uint64_t size = bytes.size();
            const uint32_t choice = random.Below(10);
            if (choice < 4) {
                const uint32_t digit = random.Below(16);
                Type(std::u16string(1, u"0123456789abcdef"[digit]));
                if (caret >= size) continue;
                auto byte = static_cast<uint8_t>(bytes[caret]);
                byte = static_cast<uint8_t>(nibble ? (byte & 0xF0) | digit : (byte & 15) | digit << 4);
                bytes[caret] = static_cast<char>(byte);
                caret += nibble;
                nibble = 1 - nibble;
                anchor = caret;
            } else if (choice == 4) {
                const std::string pasted = Pattern(random.Below(40), static_cast<unsigned>(i));
                SetClipboard(HexOf(pasted));
                Ctrl(u'V');
                nibble = 0;
                const auto count = std::min<uint64_t>(pasted.size(), size - caret);
                if (count == 0) continue;
                bytes.replace(caret, count, pasted, 0, count);
                caret += count;
                anchor = caret;
            } else if (choice == 5) {
                caret = anchor = random.Below(size + 1);
                nibble = 0;
                view().GoTo(caret);
            } else {
                const bool extend = random.OneIn(2);
                const bool right = random.OneIn(2);
                Press(right ? ViewKey::Right : ViewKey::Left, false, extend);
                if (right && caret < size) ++caret;
                if (!right && caret) --caret;
                if (!extend) anchor = caret;
                nibble = 0;
            }
            ASSERT_EQ(Caret(), (Two{caret, nibble})) << "step " << i;
            ASSERT_EQ(view().Anchor(), anchor) << "step " << i;
            if (i % 50 == 0) {
                ASSERT_EQ(Content(), bytes) << "step " << i;
            }
        }
        EXPECT_EQ(Content(), bytes);
        while ((*file)->CanDo(DocumentCommand::Undo)) Undo();
        EXPECT_EQ(Content(), file->OnDisk());
        while ((*file)->CanDo(DocumentCommand::Redo)) Redo();
        EXPECT_EQ(Content(), bytes);
        ASSERT_TRUE(file->Save());
        EXPECT_EQ(file->OnDisk(), bytes);
    }
}
