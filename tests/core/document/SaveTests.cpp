#include "LoadSaveSupport.h"
#include "core/document/AnsiPage.h"
#include "support/FailureInjection.h"
#include "support/FakeView.h"
#include "support/NoRecoveryFolder.h"

namespace {

// Saves a text as a new document would and returns what is in the file.
std::string SavedBytes(const std::u16string& text, Encoding encoding, LineEnding style) {
    ScratchFolder folder;
    TextDocument document(text);
    EXPECT_TRUE(document->Save(folder.Path("saved.txt").c_str(), encoding, style));
    return folder.Read("saved.txt");
}

uint64_t fileCalls;
uint64_t failingFileCall;

bool CountFileCall() { return ++fileCalls == failingFileCall; }

// Saves without a copy, with the n-th file call failing (0: none). The calls are: open as a new file, open as one that
// is there, make room, one for each write, cut, flush, open again, read the time and the size. The second is for a file
// that is there.
bool SaveCounting(TextDocument& document, const std::u16string& path, Encoding encoding, LineEnding style,
                  uint64_t failing) {
    fileCalls = 0;
    failingFileCall = failing;
    const NoRecoveryFolder withoutCopy;
    Platform::SetFileFailureHook(CountFileCall);
    const bool saved = document->Save(path.c_str(), encoding, style);
    Platform::SetFileFailureHook(nullptr);
    return saved;
}

constexpr uint64_t CallsBeforeWrites = 3;
constexpr uint64_t CallsBesideWrites = 8;

} // namespace

TEST(Save, WritesTheSignatureOfEachEncoding) {
    EXPECT_EQ(SavedBytes(u"", Encoding::Ansi, LineEnding::Dos), "");
    EXPECT_EQ(SavedBytes(u"", Encoding::Unicode, LineEnding::Dos), "\xFF\xFE");
    EXPECT_EQ(SavedBytes(u"", Encoding::UnicodeBigEndian, LineEnding::Dos), "\xFE\xFF");
    EXPECT_EQ(SavedBytes(u"", Encoding::Utf8, LineEnding::Dos), "\xEF\xBB\xBF");
}

TEST(Save, WritesTheTextInEachEncoding) {
    const std::u16string text = u"a\u00E9\u20AC";
    EXPECT_EQ(SavedBytes(text, Encoding::Ansi, LineEnding::Dos), Encoded(CodePage::Ansi, text));
    EXPECT_EQ(SavedBytes(text, Encoding::Unicode, LineEnding::Dos), "\xFF\xFE" + LittleEndian(text));
    EXPECT_EQ(SavedBytes(text, Encoding::UnicodeBigEndian, LineEnding::Dos), "\xFE\xFF" + BigEndian(text));
    // Real UTF-8, unlike what loading makes of it.
    EXPECT_EQ(SavedBytes(text, Encoding::Utf8, LineEnding::Dos), "\xEF\xBB\xBF"
                                                                 "a\xC3\xA9\xE2\x82\xAC");
}

TEST(Save, WhatAnEncodingCannotSayIsReplaced) {
    // A question mark in a code page, the replacement character in UTF-8; UTF-16 keeps every unit.
    EXPECT_EQ(SavedBytes(u"a\u4E2Db", Encoding::Ansi, LineEnding::Dos), "a?b");
    const std::u16string lone = {u'a', Char{0xD800}, u'b', Char{0xDC00}};
    EXPECT_EQ(SavedBytes(lone, Encoding::Utf8, LineEnding::Dos), "\xEF\xBB\xBF"
                                                                 "a\xEF\xBF\xBD"
                                                                 "b\xEF\xBF\xBD");
    EXPECT_EQ(SavedBytes(lone, Encoding::UnicodeBigEndian, LineEnding::Dos), "\xFE\xFF" + BigEndian(lone));
}

TEST(Save, AnEncodingThatThereIsNotIsKeptOut) {
    LoadedDocument document("text");
    EXPECT_EQ(document.Saved(static_cast<Encoding>(EncodingCount)), "text");
    EXPECT_EQ(EncodingOf(*document), Encoding::Ansi);
}

TEST(Save, BigEndianLoadsBackAsTheSameText) {
    LoadedDocument document(SavedBytes(u"x\n\u1234\n", Encoding::UnicodeBigEndian, LineEnding::Unix));
    EXPECT_EQ(document.Store(), u"x\n\u1234\n");
    EXPECT_EQ(EncodingOf(*document), Encoding::UnicodeBigEndian);
}

TEST(Save, UnixWritesLineFeedsAndEveryOtherStyleCarriageReturnsToo) {
    EXPECT_EQ(SavedBytes(u"a\nb\n", Encoding::Ansi, LineEnding::Unix), "a\nb\n");
    EXPECT_EQ(SavedBytes(u"a\nb\n", Encoding::Ansi, LineEnding::Dos), "a\r\nb\r\n");
    EXPECT_EQ(SavedBytes(u"a\nb\n", Encoding::Ansi, LineEnding::Mixed), "a\r\nb\r\n");
    EXPECT_EQ(SavedBytes(u"a\nb\n", Encoding::Ansi, LineEnding::None), "a\r\nb\r\n");
    EXPECT_EQ(SavedBytes(u"a\n", Encoding::UnicodeBigEndian, LineEnding::Dos), Bytes("\xFE\xFF\0a\0\r\0\n"));
}

TEST(Save, KeepsEncodingAndStyleUnlessNewOnesArePassed) {
    LoadedDocument document("\xFE\xFF" + BigEndian(u"a\nb"));
    EXPECT_EQ(document.Saved(), "\xFE\xFF" + BigEndian(u"a\nb"));
    EXPECT_EQ(document.Saved(Encoding::Ansi), "a\nb");
    EXPECT_EQ(document.Saved(Encoding::Keep, LineEnding::Dos), "a\r\nb");
    EXPECT_EQ(document.Saved(), "a\r\nb");
    EXPECT_EQ(EncodingOf(*document), Encoding::Ansi);
    EXPECT_EQ(document->GetLineEnding(), LineEnding::Dos);
}

TEST(Save, CommitsThePendingLineFirst) {
    LoadedDocument document("ab\ncd");
    FakeView* view = FakeView::Create(*document);
    view->Activate();
    view->MoveCaret(1, 1);
    ASSERT_TRUE(document->TypeChar(view, u'X', 1, false, false));
    ASSERT_TRUE(document->HasPendingEdit());
    EXPECT_EQ(document.Saved(), "ab\ncXd");
    EXPECT_FALSE(document->HasPendingEdit());
}

TEST(Save, TheDocumentIsNotModifiedUntilTheNextEditOrUndo) {
    LoadedDocument document("text");
    FakeView* view = FakeView::Create(*document);
    ASSERT_TRUE(document->InsertText(0, u"x", 1));
    EXPECT_TRUE(document->IsModified());
    view->ForgetCalls();
    ASSERT_TRUE(document.Saved());
    EXPECT_FALSE(document->IsModified());
    EXPECT_EQ(view->documentChanges, 1);
    ASSERT_TRUE(document->Undo());
    EXPECT_TRUE(document->IsModified());
    ASSERT_TRUE(document->Redo());
    EXPECT_FALSE(document->IsModified());
}

TEST(Save, ReplacesALongerFile) {
    LoadedDocument document("short");
    document.folder.Write("saved.txt", std::string(100000, 'x'));
    EXPECT_EQ(document.Saved(), "short");
}

TEST(Save, FortyThousandCharactersInStyleDosTakeTwoChunks) {
    ScratchFolder folder;
    const std::u16string path = folder.Path("saved.txt");
    std::u16string text;
    while (text.size() < 40000) text += text.size() % 79 == 78 ? u'\n' : u'x';
    TextDocument document(text);
    folder.Write("saved.txt", "");
    EXPECT_TRUE(SaveCounting(document, path, Encoding::Ansi, LineEnding::Dos, 0));
    EXPECT_EQ(fileCalls, CallsBesideWrites + 2);
    const std::u16string units = WithReturns(text);
    EXPECT_EQ(folder.Read("saved.txt"), std::string(units.begin(), units.end()));
    // With the second write failing, the first chunk is all there is.
    EXPECT_FALSE(SaveCounting(document, path, Encoding::Ansi, LineEnding::Dos, CallsBeforeWrites + 2));
    EXPECT_EQ(folder.Read("saved.txt"), std::string(units.begin(), units.begin() + 32768));
}

TEST(Save, ACrLfIsNeverSplitAcrossChunks) {
    for (const size_t before : {32765u, 32766u, 32767u, 32768u}) {
        ScratchFolder folder;
        const std::u16string path = folder.Path("saved.txt");
        TextDocument document(std::u16string(before, u'x') + u"\nrest");
        folder.Write("saved.txt", "");
        EXPECT_FALSE(SaveCounting(document, path, Encoding::Ansi, LineEnding::Dos, CallsBeforeWrites + 2));
        // The line feed is taken only when two places remain in the chunk.
        const std::string firstChunk = before <= 32766 ? std::string(before, 'x') + "\r\n" : std::string(before, 'x');
        EXPECT_EQ(folder.Read("saved.txt").substr(0, before + 2),
                  before == 32765 ? firstChunk : firstChunk.substr(0, 32768));
        EXPECT_TRUE(SaveCounting(document, path, Encoding::Ansi, LineEnding::Dos, 0));
        EXPECT_EQ(folder.Read("saved.txt"), std::string(before, 'x') + "\r\nrest");
    }
}

TEST(Save, UnixChunksHold32768Characters) {
    ScratchFolder folder;
    const std::u16string path = folder.Write("saved.txt", "");
    for (const size_t length : {32767u, 32768u, 32769u, 65536u, 65537u}) {
        TextDocument document(std::u16string(length, u'\n'));
        EXPECT_TRUE(SaveCounting(document, path, Encoding::Ansi, LineEnding::Unix, 0));
        EXPECT_EQ(fileCalls, CallsBesideWrites + (length + 32767) / 32768);
        EXPECT_EQ(folder.Read("saved.txt"), std::string(length, '\n'));
    }
}

TEST(Save, APairOfSurrogatesAtAChunkBorderStaysWhole) {
    for (const LineEnding style : {LineEnding::Unix, LineEnding::Dos}) {
        for (size_t before = 32765; before <= 32769; ++before) {
            std::u16string text(before, u'x');
            text[100] = u'\n'; // in style Dos the border lies one character earlier
            text += u"\U0001F600\U0001F601 and more";
            const std::u16string written = style == LineEnding::Dos ? WithReturns(text) : text;
            EXPECT_EQ(SavedBytes(text, Encoding::Utf8, style), "\xEF\xBB\xBF" + Encoded(CodePage::Utf8, written));
            EXPECT_EQ(SavedBytes(text, Encoding::Unicode, style), "\xFF\xFE" + LittleEndian(written));
            EXPECT_EQ(SavedBytes(text, Encoding::UnicodeBigEndian, style), "\xFE\xFF" + BigEndian(written));
        }
    }
}

TEST(Save, LoneSurrogatesAtAChunkBorderAreWrittenAsTheyAre) {
    std::u16string text(32767, u'x');
    text += u'\xD83D';
    text += std::u16string(10, u'y');
    text += u'\xDE00';
    EXPECT_EQ(SavedBytes(text, Encoding::Unicode, LineEnding::Unix), "\xFF\xFE" + LittleEndian(text));
    EXPECT_EQ(SavedBytes(std::u16string(1, u'\xD83D'), Encoding::Unicode, LineEnding::Unix), Bytes("\xFF\xFE\x3D\xD8"));
}

TEST(Save, AChunkThatNeedsMoreThan65536BytesIsWrittenInSmallerPieces) {
    for (const size_t length : {21845u, 21846u, 32768u, 70001u}) {
        const std::u16string text(length, u'\u4E00');
        EXPECT_EQ(SavedBytes(text, Encoding::Utf8, LineEnding::Unix), "\xEF\xBB\xBF" + Encoded(CodePage::Utf8, text));
    }
    // A piece does not end inside a pair of surrogates, wherever the pairs begin.
    std::u16string text(30000, u'\u4E00');
    for (int i = 0; i < 1384; ++i) text.insert(static_cast<size_t>(16380 + i % 2), u"\U0001F600");
    for (size_t before = 0; before < 4; ++before, text.insert(0, u"x"))
        EXPECT_EQ(SavedBytes(text, Encoding::Utf8, LineEnding::Unix), "\xEF\xBB\xBF" + Encoded(CodePage::Utf8, text));
}

TEST(Save, ACharacterThatThePageRefusesFailsTheSaveAndLeavesTheFile) {
    const RefusingAnsiPage page;
    LoadedDocument document("old");
    ASSERT_TRUE(document->InsertText(1, u"\uFFFF", 1));
    const std::u16string recovery = document.folder.Path("recovery");
    const Char* const before = Platform::SetRecoveryFolder(recovery.c_str());
    EXPECT_FALSE(document->Save(document.folder.Path("file.txt").c_str(), Encoding::Ansi, LineEnding::Keep));
    Platform::SetRecoveryFolder(before);
    EXPECT_TRUE(document->IsModified());
    EXPECT_EQ(document.Store(), u"o\uFFFFld");
    EXPECT_EQ(document.folder.Read("file.txt"), "old");
}

TEST(Save, AFailedSaveLeavesTheDocumentModifiedAndItsUndoIntact) {
    ScratchFolder folder;
    TextDocument document(u"one\n");
    FakeView* view = FakeView::Create(*document);
    ASSERT_TRUE(document->InsertText(4, u"two\n", 4));
    view->ForgetCalls();
    EXPECT_FALSE(document->Save(folder.Path("").c_str(), Encoding::Keep, LineEnding::Keep)); // a directory
    EXPECT_FALSE(document->Save(folder.Path("no\\such\\folder.txt").c_str(), Encoding::Keep, LineEnding::Keep));
    EXPECT_FALSE(document->Save(u"", Encoding::Keep, LineEnding::Keep));
    EXPECT_TRUE(document->IsModified());
    EXPECT_EQ(view->documentChanges, 0);
    EXPECT_EQ(document.Store(), u"one\ntwo\n");
    EXPECT_TRUE(document->Undo());
    EXPECT_EQ(document.Store(), u"one\n");
}

TEST(Save, AFailedSaveTakesOnTheStyleAndKeepsTheEncoding) {
    LoadedDocument document("a\nb");
    EXPECT_FALSE(document->Save(u"", Encoding::Utf8, LineEnding::Dos));
    EXPECT_EQ(EncodingOf(*document), Encoding::Ansi);
    EXPECT_EQ(document->GetLineEnding(), LineEnding::Dos);
}

TEST(Save, ANewStyleRefreshesTheStatusOfTheFocusedActiveView) {
    LoadedDocument document("a\nb");
    FakeView* active = FakeView::Create(*document);
    FakeView* other = FakeView::Create(*document);
    active->Activate();
    ASSERT_TRUE(document.Saved(Encoding::Keep, LineEnding::Unix));
    EXPECT_EQ(active->statusRefreshes, 0); // nothing new
    ASSERT_TRUE(document.Saved(Encoding::Keep, LineEnding::Dos));
    EXPECT_EQ(active->statusRefreshes, 1);
    EXPECT_FALSE(document->Save(u"", Encoding::Keep, LineEnding::Unix)); // also after a failure
    EXPECT_EQ(active->statusRefreshes, 2);
    active->focus = false;
    ASSERT_TRUE(document.Saved(Encoding::Keep, LineEnding::Dos));
    EXPECT_EQ(active->statusRefreshes, 2);
    EXPECT_EQ(other->statusRefreshes, 0);
    document->SetActiveView(nullptr);
    ASSERT_TRUE(document.Saved(Encoding::Keep, LineEnding::Unix));
    EXPECT_EQ(document->GetLineEnding(), LineEnding::Unix);
}

TEST(Save, EveryAllocationFailsInTurn) {
    ScratchFolder folder;
    const std::u16string path = folder.Path("saved.txt");
    const uint64_t failures = FailEachAllocation([&] {
        auto pause = std::make_unique<FailurePause>();
        folder.Write("saved.txt", "old");
        TextDocument document(u"ab");
        FakeView* view = FakeView::Create(*document);
        view->Activate();
        EXPECT_TRUE(document->TypeChar(view, u'x', 0, false, false));
        pause.reset();
        const bool saved = document->Save(path.c_str(), Encoding::Unicode, LineEnding::Unix);
        FailurePause checking;
        EXPECT_EQ(document->IsModified(), !saved);
        EXPECT_EQ(document.Text(), u"xab");
        // Memory runs out before the file is touched.
        EXPECT_EQ(folder.Read("saved.txt"), saved ? "\xFF\xFE" + LittleEndian(u"xab") : "old");
        EXPECT_TRUE(document->Undo());
        EXPECT_EQ(document.Text(), u"ab");
        return saved;
    });
    EXPECT_GE(failures, 2u);
}

TEST(Save, WithoutMemoryTheFileIsKeptInEveryEncoding) {
    ScratchFolder folder;
    const std::u16string path = folder.Path("saved.txt");
    for (const Encoding encoding : {Encoding::Ansi, Encoding::Utf8, Encoding::Unicode, Encoding::UnicodeBigEndian}) {
        for (const LineEnding style : {LineEnding::Unix, LineEnding::Dos}) {
            FailEachAllocation([&] {
                auto pause = std::make_unique<FailurePause>();
                folder.Write("saved.txt", "old");
                TextDocument document(u"a\nb");
                pause.reset();
                const bool isSaved = document->Save(path.c_str(), encoding, style);
                FailurePause checking;
                EXPECT_EQ(folder.Read("saved.txt") == "old", !isSaved);
                return isSaved;
            });
        }
    }
}

TEST(Save, EveryFileCallFailsInTurn) {
    ScratchFolder folder;
    const std::u16string path = folder.Path("saved.txt");
    const uint64_t failures = FailEachFileCall([&] {
        TextDocument document(u"");
        EXPECT_TRUE(document->InsertText(0, std::u16string(70000, u'x').c_str(), 70000));
        const bool saved = document->Save(path.c_str(), Encoding::Utf8, LineEnding::Unix);
        EXPECT_EQ(document->IsModified(), !saved);
        EXPECT_EQ(document->Length(), 70000u);
        EXPECT_TRUE(document->Undo());
        EXPECT_EQ(document->Length(), 0u);
        return saved;
    });
    EXPECT_GT(failures, 2 * 4u); // the signature and three chunks, in the copy and in the file
}

TEST(Save, WithoutAStoreWritesAnEmptyText) {
    TextDocument document(u"text");
    EXPECT_FALSE(document->Load(u"", false));
    ScratchFolder folder;
    EXPECT_TRUE(document->Save(folder.Path("saved.txt").c_str(), Encoding::Keep, LineEnding::Keep));
    EXPECT_EQ(folder.Read("saved.txt"), "");
}
