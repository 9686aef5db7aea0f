#include "LoadSaveSupport.h"
#include "base/Journal.h"
#include "core/document/AnsiPage.h"
#include "document/FilePieces.h"
#include "document/FileStamp.h"
#include "document/TextDecode.h"
#include "document/TextRecovery.h"
#include "support/FailureInjection.h"
#include "support/FakeView.h"

#include <random>

TEST(Load, AnEmptyFileIsAnEmptyAnsiDocument) {
    LoadedDocument document("");
    EXPECT_NE(document->Content(), nullptr);
    EXPECT_EQ(document->Content()[0], 0);
    EXPECT_EQ(document->Length(), 0u);
    EXPECT_EQ(document->GetLineCount(), 1u);
    EXPECT_EQ(document->GetLineEnding(), LineEnding::Dos);
    EXPECT_EQ(EncodingOf(*document), Encoding::Ansi);
}

TEST(Load, AFileOfOnlyASignatureIsEmptyInThatEncoding) {
    const struct {
        std::string bytes;
        Encoding encoding;
    } files[] = {
        {"\xFF\xFE", Encoding::Unicode}, {"\xFE\xFF", Encoding::UnicodeBigEndian}, {"\xEF\xBB\xBF", Encoding::Utf8}};
    for (const auto& file : files) {
        LoadedDocument document(file.bytes);
        EXPECT_EQ(EncodingOf(*document), file.encoding);
        ASSERT_NE(document->Content(), nullptr);
        EXPECT_EQ(document->Content()[0], 0);
        EXPECT_EQ(document->Length(), 0u);
        EXPECT_EQ(document->GetLineCount(), 1u);
        EXPECT_EQ(document->GetLineEnding(), LineEnding::Dos);
    }
}

TEST(Load, AnIncompleteSignatureIsAnsiText) {
    for (const std::string bytes : {"\xFF", "\xFE", "\xEF", "\xEF\xBB", "\xEF\xBBx", "\xFFx\xFE"}) {
        LoadedDocument document(bytes);
        EXPECT_EQ(EncodingOf(*document), Encoding::Ansi);
        EXPECT_EQ(document.Store(), Decoded(CodePage::Ansi, bytes));
    }
}

TEST(Load, Utf8WithoutASignatureIsNotGuessed) {
    LoadedDocument document("na\xC3\xAFve");
    EXPECT_EQ(EncodingOf(*document), Encoding::Ansi);
    EXPECT_EQ(document.Store(), Decoded(CodePage::Ansi, "na\xC3\xAFve"));
}

TEST(Load, Utf8WithASignatureIsConvertedWithTheAnsiPage) {
    LoadedDocument document("\xEF\xBB\xBFna\xC3\xAFve");
    EXPECT_EQ(EncodingOf(*document), Encoding::Utf8);
    EXPECT_EQ(document.Store(), Decoded(CodePage::Ansi, "na\xC3\xAFve"));
    EXPECT_NE(document.Store(), u"na\u00EFve");
}

TEST(Load, ZeroBytesBecomeSpacesInAnsiAndUtf8) {
    EXPECT_EQ(LoadedDocument(Bytes("a\0b\0\0")).Store(), u"a b  ");
    EXPECT_EQ(LoadedDocument(Bytes("\xEF\xBB\xBF\0x")).Store(), u" x");
    // Also next to bytes that go through the code page.
    const std::string high = Bytes("\xE9\0\xE9 and a longer stretch of plain text after it \0");
    std::string spaced = high;
    for (char& c : spaced)
        if (c == 0) c = ' ';
    EXPECT_EQ(LoadedDocument(high).Store(), Decoded(CodePage::Ansi, spaced));
}

TEST(Load, Utf16IsReadInBothByteOrders) {
    const std::u16string text = u"x\u00E9\u20AC\u0A0D\U0001F600";
    LoadedDocument little("\xFF\xFE" + LittleEndian(text));
    EXPECT_EQ(EncodingOf(*little), Encoding::Unicode);
    EXPECT_EQ(little.Store(), text);
    LoadedDocument big("\xFE\xFF" + BigEndian(text));
    EXPECT_EQ(EncodingOf(*big), Encoding::UnicodeBigEndian);
    EXPECT_EQ(big.Store(), text);
}

TEST(Load, Utf16IsCutAtAZeroUnit) {
    LoadedDocument little("\xFF\xFE" + LittleEndian(std::u16string(u"a\nb\0c\nd", 7)));
    EXPECT_EQ(little.Store(), u"a\nb");
    EXPECT_EQ(little->GetLineCount(), 2u);
    EXPECT_EQ(TextBufferProbe::Capacity(*little), 4u);
    EXPECT_EQ(LoadedDocument("\xFE\xFF" + BigEndian(std::u16string(u"a\nb\0c\nd", 7))).Store(), u"a\nb");
    EXPECT_EQ(LoadedDocument(Bytes("\xFF\xFE\0\0x\0")).Store(), u"");
}

TEST(Load, AnOddTrailingByteOfUtf16IsIgnored) {
    EXPECT_EQ(LoadedDocument(Bytes("\xFF\xFE") + LittleEndian(u"ab") + "c").Store(), u"ab");
    EXPECT_EQ(LoadedDocument(Bytes("\xFE\xFF") + BigEndian(u"ab") + "c").Store(), u"ab");
    EXPECT_EQ(LoadedDocument("\xFF\xFEx").Store(), u"");
    const std::u16string longText(70000, u'x');
    for (const char* last : {"", "c"}) {
        LoadedDocument document(Bytes("\xFF\xFE") + LittleEndian(longText) + last);
        EXPECT_TRUE(document.Store() == longText);
        EXPECT_EQ(document->LosesBytes(), *last != 0);
    }
}

TEST(Load, LineBreaksBecomeLineFeedsAndTheirStyleIsKept) {
    const struct {
        const char* bytes;
        const char16_t* text;
        LineEnding style;
    } files[] = {
        {"no break", u"no break", LineEnding::Dos},
        {"a\nb\n", u"a\nb\n", LineEnding::Unix},
        {"a\r\nb\r\n", u"a\nb\n", LineEnding::Dos},
        {"a\rb\r", u"a\nb\n", LineEnding::Dos},
        {"a\rb\r\nc", u"a\nb\nc", LineEnding::Dos},
        {"a\nb\r\nc", u"a\nb\nc", LineEnding::Mixed},
        {"a\r\nb\nc", u"a\nb\nc", LineEnding::Mixed},
        {"a\rb\nc", u"a\nb\nc", LineEnding::Mixed},
        {"a\n\rb", u"a\n\nb", LineEnding::Mixed},
        {"\r\r\n\n", u"\n\n\n", LineEnding::Mixed},
        {"\n", u"\n", LineEnding::Unix},
        {"\r", u"\n", LineEnding::Dos},
    };
    for (const auto& file : files) {
        SCOPED_TRACE(file.bytes);
        const std::string bytes = file.bytes;
        const std::u16string units(bytes.begin(), bytes.end());
        for (const std::string& content :
             {bytes, "\xEF\xBB\xBF" + bytes, "\xFF\xFE" + LittleEndian(units), "\xFE\xFF" + BigEndian(units)}) {
            LoadedDocument document(content);
            EXPECT_EQ(document.Store(), file.text);
            EXPECT_EQ(document->GetLineEnding(), file.style);
            EXPECT_EQ(document->GetLineCount(), LinesOf(file.text));
            EXPECT_EQ(document->Content()[document->Length()], 0);
        }
    }
}

TEST(Load, AFileOfOnlyReturnsHasStyleDos) {
    LoadedDocument document("one\rtwo\rthree");
    EXPECT_EQ(document->GetLineEnding(), LineEnding::Dos);
    EXPECT_EQ(document->GetLineCount(), 3u);
}

TEST(Load, LineFeedsAndReturnsTogetherAreMixedAndSavedAsDos) {
    LoadedDocument document("one\ntwo\r\nthree\n");
    EXPECT_EQ(document->GetLineEnding(), LineEnding::Mixed);
    EXPECT_EQ(document.Saved(), "one\r\ntwo\r\nthree\r\n");
    EXPECT_EQ(document->GetLineEnding(), LineEnding::Dos);
}

TEST(Load, TheStoreIsExactlyAsLargeAsTheText) {
    for (const std::string& bytes : {std::string("a\r\nb\r\n"), std::string(), "\xFF\xFE" + LittleEndian(u"a\r\n\r\n"),
                                     std::string(5000, '\r'), std::string("\xFE\xFFx")}) {
        LoadedDocument document(bytes);
        EXPECT_EQ(TextBufferProbe::Capacity(*document), document->Length() + 1);
    }
}

TEST(Load, GivesThePathAnEngineAndAnUnmodifiedDocument) {
    LoadedDocument document("text");
    WString full;
    ASSERT_TRUE(Platform::FullPath(document.folder.Path("file.txt").c_str(), full));
    EXPECT_EQ(std::u16string(document->GetName()), std::u16string(full.Text()));
    EXPECT_NE(document->Engine(), nullptr);
    EXPECT_FALSE(document->IsModified());
    EXPECT_FALSE(document->CanDo(DocumentCommand::Undo));
    EXPECT_FALSE(document->IsChangedOnDisk());
}

TEST(Load, WithCreateNewTheFileIsNotRead) {
    ScratchFolder folder;
    const std::u16string path = folder.Write("there.txt", "content");
    TextDocument document(u"before");
    ASSERT_TRUE(document->Load(path.c_str(), true));
    EXPECT_EQ(document.Store(), u"");
    EXPECT_EQ(document->GetLineCount(), 1u);
    EXPECT_EQ(document->GetLineEnding(), LineEnding::Dos);
    EXPECT_EQ(std::u16string(document->GetName()), path);
    EXPECT_NE(document->Engine(), nullptr);
    ASSERT_TRUE(document->Load(folder.Path("not there.txt").c_str(), true));
    EXPECT_FALSE(std::filesystem::exists(folder.File("not there.txt")));
}

TEST(Load, ReplacesWhatTheDocumentHeld) {
    LoadedDocument document("first\nsecond\nthird");
    ASSERT_TRUE(document->InsertText(0, u"x", 1));
    EXPECT_EQ(document->LineToOffset(2), 14u);
    ASSERT_TRUE(document->Load(document.folder.Write("other.txt", "a\nb\nc").c_str(), false));
    EXPECT_EQ(document.Store(), u"a\nb\nc");
    EXPECT_EQ(document->LineToOffset(2), 4u);
    EXPECT_FALSE(document->IsModified());
    EXPECT_FALSE(document->CanDo(DocumentCommand::Undo));
}

namespace {

void ExpectRefused(const std::u16string& path) {
    LoadedDocument document("content\nof a document");
    EXPECT_FALSE(document->Load(path.c_str(), false));
    ExpectNoStore(*document);
    // Nothing can be done with it, and nothing breaks.
    EXPECT_EQ(document->LineToOffset(5), 0u);
    EXPECT_FALSE(document->CanDo(DocumentCommand::Undo));
    EXPECT_FALSE(document->IsModified());
}

} // namespace

TEST(Load, AMissingFileIsRefused) { ExpectRefused(ScratchFolder().Path("missing.txt")); }

TEST(Load, AFileThatVanishedAfterItWasListedIsRefused) {
    ScratchFolder folder;
    const std::u16string path = folder.Write("vanishing.txt", "text");
    std::filesystem::remove(folder.File("vanishing.txt"));
    ExpectRefused(path);
}

TEST(Load, ADirectoryIsRefused) { ExpectRefused(ScratchFolder().Path("")); }

TEST(Load, ADeviceIsRefused) {
    ExpectRefused(u"\\dev\\null");
    ExpectRefused(u"NUL");
    ExpectRefused(u"CON");
}

TEST(Load, AnEmptyNameIsRefused) { ExpectRefused(u""); }

TEST(Load, AnUnreadableFileIsRefused) {
    ScratchFolder folder;
    const std::u16string path = folder.Write("secret.txt", "text");
    std::filesystem::permissions(folder.File("secret.txt"), std::filesystem::perms::none);
    // The administrator reads all files; nothing is unreadable then.
    if (std::ifstream(folder.File("secret.txt"))) GTEST_SKIP() << "this user can read every file";
    ExpectRefused(path);
}

TEST(Load, AFileOfFourGigabytesOrMoreIsRefused) {
    ScratchFolder folder;
    folder.Write("large.txt", "x");
    for (const uint64_t size : {0xFFFFFFFFull, 0x100000000ull, 0x100000005ull}) {
        std::error_code error;
        std::filesystem::resize_file(folder.File("large.txt"), size, error);
        if (error) GTEST_SKIP() << "no room for a sparse file: " << error.message();
        ExpectRefused(folder.Path("large.txt"));
    }
}

TEST(Load, EveryAllocationFailsInTurn) {
    for (const std::string& bytes :
         {std::string("plain\r\ntext \xE9 here\n"), "\xFF\xFE" + LittleEndian(u"wide\r\ntext"),
          "\xFE\xFF" + BigEndian(u"wide\r\ntext"), std::string("\xEF\xBB\xBFutf8")}) {
        ScratchFolder folder;
        const std::u16string path = folder.Write("file.txt", bytes);
        const std::u16string expected = LoadedDocument(bytes).Store();
        const uint64_t failures = FailEachAllocation([&] {
            auto pause = std::make_unique<FailurePause>();
            TextDocument document(u"before\nit");
            pause.reset();
            const bool loaded = document->Load(path.c_str(), false);
            FailurePause checking;
            if (loaded)
                EXPECT_EQ(document.Store(), expected);
            else
                ExpectNoStore(*document);
            return loaded;
        });
        EXPECT_GT(failures, 2u);
    }
}

TEST(Load, EveryFileCallFailsInTurn) {
    ScratchFolder folder;
    const std::u16string path = folder.Write("file.txt", "content");
    const uint64_t failures = FailEachFileCall([&] {
        TextDocument document(u"before");
        const bool loaded = document->Load(path.c_str(), false);
        if (!loaded) ExpectNoStore(*document);
        return loaded;
    });
    EXPECT_EQ(failures, 4u); // opened, sized, dated, read
}

TEST(Load, LongTextsEqualTheirConversionAtOnce) {
    std::mt19937 random(3);
    // The code page takes pieces of 4096 bytes, so lengths and breaks around that border matter most.
    for (int round = 0; round < 300; ++round) {
        std::string bytes;
        const size_t length = random() % 3 ? 4086 + random() % 20 : random() % 20000;
        const auto highs = static_cast<unsigned>(1 + random() % 100);
        const auto breaks = static_cast<unsigned>(2 + random() % 60);
        bytes.push_back('\xE4');
        while (bytes.size() < length) {
            const bool isHigh = random() % highs == 0;
            bytes.push_back(random() % breaks == 0 ? "\r\n\r"[random() % 3]
                                                   : static_cast<char>((isHigh ? 0x80 : 0x20) + random() % 0x60));
        }
        const std::u16string converted = Decoded(CodePage::Ansi, bytes);
        LoadedDocument document(bytes);
        ASSERT_EQ(document.Store(), WithLineFeeds(converted)) << round;
        ASSERT_EQ(document->GetLineCount(), LinesOf(document.Store())) << round;
        ASSERT_EQ(document->GetLineEnding(), StyleOf(converted)) << round;
        ASSERT_EQ(TextBufferProbe::Capacity(*document), document->Length() + 1) << round;
    }
}

TEST(Load, LongUtf16TextsKeepTheirBreaksTogether) {
    std::mt19937 random(4);
    for (int round = 0; round < 300; ++round) {
        std::u16string units;
        const size_t length = random() % 3 ? 4086 + random() % 20 : random() % 20000;
        const auto breaks = static_cast<unsigned>(1 + random() % 60);
        while (units.size() < length)
            units.push_back(random() % breaks == 0 ? u"\r\n\r"[random() % 3]
                                                   : static_cast<char16_t>(1 + random() % 0xFFFF));
        for (const std::string& bytes : {"\xFF\xFE" + LittleEndian(units), "\xFE\xFF" + BigEndian(units)}) {
            LoadedDocument document(bytes);
            ASSERT_EQ(document.Store(), WithLineFeeds(units)) << round;
            ASSERT_EQ(document->GetLineCount(), LinesOf(document.Store())) << round;
            ASSERT_EQ(document->GetLineEnding(), StyleOf(units)) << round;
        }
    }
}

TEST(Load, Utf16KeepsABreakTogetherWhereWhatIsReadAtOnceEnds) {
    constexpr size_t Units = FilePieces::MaxBytes / sizeof(Char);
    for (const size_t piece : {Units, 2 * Units}) {
        for (size_t before = piece - 4; before < piece + 3; ++before) {
            std::u16string line;
            for (size_t i = 0; i < before; ++i) line += static_cast<Char>(0x100 + i % 1000);
            const std::u16string units = line + u"\r\n" + line + u"\ry\n";
            for (const std::string& bytes : {"\xFF\xFE" + LittleEndian(units), "\xFE\xFF" + BigEndian(units)}) {
                LoadedDocument document(bytes);
                EXPECT_TRUE(document.Store() == line + u"\n" + line + u"\ny\n") << before;
                EXPECT_EQ(document->GetLineCount(), 4u);
                EXPECT_FALSE(document->LosesBytes());
            }
        }
    }
}

TEST(Load, ATerminatorFollowsWhatIsRead) {
    ScratchFolder folder;
    for (const std::string& bytes : {std::string("a\r\nb\r\nc"), "\xFF\xFE" + LittleEndian(u"a\r\nb\r\nc"),
                                     "\xFE\xFF" + BigEndian(u"a\r\nb\r\nc")}) {
        DecodedText text;
        ASSERT_TRUE(ReadTextFile(folder.Write("file.txt", bytes).c_str(), false, text));
        ASSERT_EQ(text.length, 5u);
        EXPECT_EQ(text.text[5], 0);
    }
}

TEST(Load, ATextOfOnlyHighBytesOrReturnsHasNoBorderToStopAt) {
    EXPECT_EQ(LoadedDocument(std::string(10000, '\xE9')).Store(), Decoded(CodePage::Ansi, std::string(10000, '\xE9')));
    const std::string returns = "\xE9" + std::string(10000, '\r') + "\n";
    EXPECT_EQ(LoadedDocument(returns).Store(), Decoded(CodePage::Ansi, "\xE9") + std::u16string(10000, u'\n'));
}

TEST(Load, ACrLfStaysTogetherWhereWhatIsReadOrConvertedAtOnceEnds) {
    for (const size_t most : {4096u, 65536u}) { // a stretch, a piece
        for (size_t before = most - 4; before < most + 3; ++before) {
            const std::string high(before, '\xE9');
            LoadedDocument document(high + "\r\n" + high);
            const std::u16string line = Decoded(CodePage::Ansi, high);
            EXPECT_TRUE(document.Store() == line + u"\n" + line) << before;
            EXPECT_EQ(document->GetLineCount(), 2u);
        }
    }
}

TEST(Load, ANulThatThePageMakesEndsTheText) {
    const RefusingAnsiPage page;
    LoadedDocument document("ab\xE9\xFE"
                            "cd\xE9");
    EXPECT_EQ(document.Store(), u"ab\u00E9");
    EXPECT_TRUE(document->LosesBytes());
}

TEST(Load, BytesThatThePageRefusesGiveNoText) {
    const RefusingAnsiPage page;
    ExpectNoStore(*LoadedDocument("ab\xE9\xFF"));
    LoadedDocument document("ab");
    document.folder.Write("file.txt", "cd\xFF");
    EXPECT_FALSE(document->Reload());
    EXPECT_EQ(document.Store(), u"ab");
}

TEST(Load, AJournalOverAFileThatThePageRefusesGivesNoText) {
    const ScratchFolder folder;
    const std::u16string path = folder.Write("file.txt", "ab\xFF");
    const std::u16string recovery = folder.Path("recovery");
    const Char* const before = Platform::SetRecoveryFolder(recovery.c_str());
    WString name;
    JournalSubject subject;
    subject.hasFile = subject.isOverFile = 1;
    subject.fileSize = 3;
    subject.value = Checksum().Value(); // of no text
    FileStamp stamp;
    ASSERT_TRUE(name.Assign(path.c_str()) && ReadStamp(path.c_str(), stamp));
    subject.fileTime = stamp.time;
    WString journalPath;
    {
        JournalFile journal;
        ASSERT_TRUE(journal.Make(recoveryServices.folder, subject, name));
        journal.Begin({0, 0, 0});
        ASSERT_TRUE(journal.End());
        Platform::FileSearch search;
        ASSERT_TRUE(search.First((recovery + u"\\Journals\\*.journal").c_str()));
        ASSERT_TRUE(journalPath.Assign((recovery + u"\\Journals\\" + search.Name()).c_str()));
    }
    Platform::SetRecoveryFolder(before);
    const RefusingAnsiPage page;
    Platform::File file;
    ASSERT_TRUE(file.Open(journalPath.Text(), Platform::File::Mode::Alone));
    JournalReader reader(file);
    ASSERT_EQ(reader.ReadHeader(), JournalReader::State::Readable);
    DecodedText text;
    EXPECT_EQ(RecoverText(reader, text), RecoveryResult::FileChanged);
}

TEST(Load, ALongTextInAPageOfSeveralBytesIsCutAtCharactersOnly) {
    const Utf8IsAnsi page;
    for (size_t shift = 0; shift < 4; ++shift) {
        std::string bytes(shift, 'x');
        std::u16string text(shift, u'x');
        for (int i = 0; i < 3000; ++i) {
            bytes += "\xE4\xB8\xAD\xF0\x9F\x98\x80";
            text += u"\u4E2D\U0001F600";
        }
        LoadedDocument document(bytes);
        EXPECT_EQ(document.Store(), text) << shift;
    }
}

TEST(Reload, EveryAllocationAndFileCallFailsInTurn) {
    const auto fails = [](auto failEach) {
        return failEach([&] {
            std::optional<LoadedDocument> document;
            {
                FailurePause pause;
                document.emplace("old\ntext");
                EXPECT_TRUE((*document)->InsertText(0, u"typed ", 6));
                document->folder.Write("file.txt", "new");
            }
            const bool done = (*document)->Reload();
            FailurePause pause;
            EXPECT_EQ(document->Store(), done ? u"new" : u"typed old\ntext");
            EXPECT_EQ((*document)->CanDo(DocumentCommand::Undo), !done);
            document.reset();
            return done;
        });
    };
    EXPECT_GE(fails([](auto body) { return FailEachAllocation(body); }), 2u);
    EXPECT_GE(fails([](auto body) { return FailEachFileCall(body); }), 3u);
}

TEST(Reload, ReadsTheFileAgainAndKeepsTheViews) {
    LoadedDocument document("one\ntwo\nthree");
    FakeView* view = FakeView::Create(*document);
    ASSERT_NE(view, nullptr);
    view->Activate();
    view->MoveCaret(2, 3);
    ASSERT_TRUE(document->TypeChar(view, u'x', 3, false, false));
    document->ToggleBookmark(1);
    document.folder.Write("file.txt", "\xFF\xFE" + LittleEndian(u"new\r\ntext"));
    view->ForgetCalls();

    EXPECT_TRUE(document->Reload());
    EXPECT_EQ(document.Store(), u"new\ntext");
    EXPECT_EQ(EncodingOf(*document), Encoding::Unicode);
    EXPECT_EQ(document->GetLineCount(), 2u);
    EXPECT_EQ(view->CaretLine(), 0u);
    EXPECT_EQ(view->CaretColumn(), 0u);
    EXPECT_GE(view->invalidations, 1);
    EXPECT_GE(view->lineCountChanges, 1);
    EXPECT_EQ(document.EditLineText(), u"new\n"); // the active view's caret line
    EXPECT_FALSE(document->IsModified());
    EXPECT_FALSE(document->CanDo(DocumentCommand::Undo));
    EXPECT_TRUE(document.MarkedLines().empty());
    EXPECT_FALSE(document->IsChangedOnDisk());
}

TEST(Reload, KeepsTheTextWhenTheFileIsGone) {
    LoadedDocument document("one\ntwo");
    FakeView* view = FakeView::Create(*document);
    view->Activate();
    view->MoveCaret(1, 2);
    ASSERT_TRUE(document->TypeChar(view, u'x', 2, false, false));
    std::filesystem::remove(document.folder.File("file.txt"));
    EXPECT_FALSE(document->Reload());
    EXPECT_EQ(document.EditLineText(), std::u16string(u"twxo\0", 5));
    EXPECT_TRUE(document->IsModified());
    EXPECT_EQ(view->CaretLine(), 1u);
    EXPECT_TRUE(document->CanDo(DocumentCommand::Undo));
    // As little when a directory has taken its place.
    std::filesystem::create_directory(document.folder.File("file.txt"));
    EXPECT_FALSE(document->Reload());
    EXPECT_EQ(document.EditLineText(), std::u16string(u"twxo\0", 5));
    std::filesystem::remove(document.folder.File("file.txt"));
    EXPECT_EQ(std::u16string(document->GetName()), document.folder.Path("file.txt"));
    document.folder.Write("file.txt", "back");
    EXPECT_TRUE(document->Reload());
    EXPECT_EQ(document.Store(), u"back");
}

TEST(Reload, FailsForADocumentWithoutAFile) {
    TextDocument document(u"text");
    EXPECT_FALSE(document->Reload());
}

TEST(NormaliseLineBreaks, ConvertsInPlaceUpToTheFirstNul) {
    Char text[] = u"a\r\nb\rc\nd\0e\r\n";
    uint32_t lineCount = 0;
    LineEnding style = LineEnding::None;
    EXPECT_EQ(NormaliseLineBreaks(text, lineCount, style), 7u);
    EXPECT_EQ(std::u16string(text), u"a\nb\nc\nd");
    EXPECT_EQ(lineCount, 4u);
    EXPECT_EQ(style, LineEnding::Mixed);
}

TEST(NormaliseLineBreaks, TracksTheStyleOverEveryOrderOfBreaks) {
    for (unsigned code = 0; code < 4 * 4 * 4 * 4 * 4; ++code) {
        std::u16string text;
        for (unsigned rest = code, i = 0; i < 5; ++i, rest /= 4) {
            const std::u16string pieces[] = {u"x", u"\n", u"\r", u"\r\n"};
            text += pieces[rest % 4];
        }
        std::u16string changed = text;
        uint32_t lineCount = 0;
        LineEnding style = LineEnding::None;
        const uint32_t length = NormaliseLineBreaks(changed.data(), lineCount, style);
        ASSERT_EQ(changed.substr(0, length), WithLineFeeds(text));
        ASSERT_EQ(std::u16string(changed.c_str()).size(), length);
        ASSERT_EQ(lineCount, LinesOf(WithLineFeeds(text)));
        ASSERT_EQ(style, StyleOf(text));
    }
}
