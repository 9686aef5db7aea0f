#include "app/SaveQuestions.h"

#include "app/DocumentSaver.h"
#include "app/SaveDialog.h"
#include "binary/BinaryDocument.h"
#include "core/app/FakeFrame.h"
#include "core/app/FakePanes.h"
#include "document/TextBuffer.h"
#include "support/ScratchFolder.h"
#include "support/TestServices.h"
#include "support/WithAdditional.h"

namespace {

// Answers with one name after the other, and with the encoding that goes with it.
class NamingDialog final : public SaveDialog {
public:
    bool AskSave(const Document&, SaveChoice& choice) override {
        if (names.empty()) return false;
        const auto name = names.front();
        names.erase(names.begin());
        choice.encoding = encoding;
        return choice.path.Assign(name.c_str());
    }

    std::vector<std::u16string> names;
    Encoding encoding = Encoding::Ansi;
};

// Saves real texts in a folder of their own.
class SaveQuestionsTest : public PaneDocumentsTest {
protected:
    TextBuffer& Open(const std::string& bytes) {
        auto* const document = new TextBuffer(textServices);
        document->AddRef();
        EXPECT_TRUE(document->Load(folder.Write("file.txt", bytes).c_str(), false));
        EXPECT_TRUE(documents.Add(document));
        return *document;
    }
    void Insert(TextBuffer& document, const std::u16string& text) {
        ASSERT_TRUE(document.InsertText(0, text.c_str(), static_cast<uint32_t>(text.size())));
    }
    std::u16string Question() const { return user.questions.empty() ? u"" : user.questions.back().text; }
    std::u16string Name() const { return folder.Path("file.txt"); }
    void WriteOutside(const std::string& bytes) {
        folder.Write("file.txt", bytes);
        std::filesystem::last_write_time(folder.File("file.txt"),
                                         std::filesystem::file_time_type::clock::now() + std::chrono::seconds(60));
    }

    ScratchFolder folder;
    NamingDialog dialog;
    FakeFrame user;
    DocumentSaver saver{documents, display, dialog, user, batch};
};

TEST_F(SaveQuestionsTest, ATextThatItsFileHoldsIsSavedWithoutAQuestion) {
    TextBuffer& document = Open("text \xE4\n");
    Insert(document, u"\u20AC");
    EXPECT_TRUE(saver.Save(document));
    EXPECT_EQ(user.questions.size(), 0u);
    EXPECT_EQ(folder.Read("file.txt"), "\x80text \xE4\n");
}

TEST_F(SaveQuestionsTest, CharactersThatTheEncodingCannotHoldAreAskedAbout) {
    TextBuffer& document = Open("text");
    Insert(document, u"\u6F22");
    user.answers = {Answer::Cancel};
    EXPECT_FALSE(saver.Save(document));
    ASSERT_EQ(user.questions.size(), 1u);
    EXPECT_EQ(Question(),
              Name() + u" contains characters that its encoding cannot hold.\nSave them as question marks?");
    EXPECT_EQ(user.questions[0].kind, MessageKind::YesNoCancel);
    EXPECT_EQ(folder.Read("file.txt"), "text");
    user.answers = {Answer::Yes};
    EXPECT_TRUE(saver.Save(document));
    EXPECT_EQ(folder.Read("file.txt"), "?text");
}

TEST_F(SaveQuestionsTest, ABestFitIsAskedAboutToo) {
    TextBuffer& document = Open("text");
    Insert(document, u"\u0107"); // a c in the code page
    user.answers = {Answer::Yes};
    EXPECT_TRUE(saver.Save(document));
    EXPECT_EQ(user.questions.size(), 1u);
    EXPECT_EQ(folder.Read("file.txt"), "ctext");
}

TEST_F(SaveQuestionsTest, HalfOfAPairIsAskedAboutInUtf8AndHeldInUtf16) {
    TextBuffer& document = Open("text");
    Insert(document, std::u16string(1, Char{0xD83D}));
    user.answers = {Answer::Yes};
    dialog.names = {Name(), Name()};
    dialog.encoding = Encoding::Utf8;
    EXPECT_TRUE(saver.SaveAs(document));
    EXPECT_EQ(user.questions.size(), 1u);
    dialog.encoding = Encoding::Unicode;
    EXPECT_TRUE(saver.SaveAs(document));
    EXPECT_EQ(user.questions.size(), 1u);
}

TEST_F(SaveQuestionsTest, NoLeadsToSaveAsWhereItIsAskedAgain) {
    TextBuffer& document = Open("text");
    Insert(document, u"\u6F22");
    user.answers = {Answer::No, Answer::No};
    dialog.names = {folder.Path("still-ansi.txt")};
    EXPECT_FALSE(saver.Save(document)); // the second dialog is cancelled
    ASSERT_EQ(user.questions.size(), 2u);
    EXPECT_EQ(Question(), folder.Path("still-ansi.txt") +
                              u" contains characters that its encoding cannot hold.\nSave them as question marks?");
    user.answers = {Answer::No};
    dialog.names = {folder.Path("utf8.txt")};
    dialog.encoding = Encoding::Utf8;
    EXPECT_TRUE(saver.Save(document));
    EXPECT_EQ(folder.Read("utf8.txt"), "\xEF\xBB\xBF\xE6\xBC\xA2text");
    EXPECT_EQ(folder.Read("file.txt"), "text");
    EXPECT_EQ(std::u16string(document.GetName()), folder.Path("utf8.txt"));
}

TEST_F(SaveQuestionsTest, ATextThatGetsAFileIsCalledByIt) {
    TextBuffer& document = Open("text");
    ASSERT_TRUE(document.SetTitle(u"Untitled1"));
    dialog.names = {folder.Path("new.txt")};
    EXPECT_TRUE(saver.SaveAs(document));
    EXPECT_EQ(std::u16string(document.GetTitle()), u"");
    EXPECT_EQ(std::u16string(document.GetName()), folder.Path("new.txt"));
}

TEST_F(SaveQuestionsTest, AFileThatHasChangedOnDiskIsAskedAbout) {
    TextBuffer& document = Open("text");
    WriteOutside("theirs");
    user.answers = {Answer::Cancel};
    EXPECT_FALSE(saver.Save(document));
    EXPECT_EQ(Question(), Name() + u" has been modified by another program.\nSave over it?");
    EXPECT_EQ(user.questions[0].kind, MessageKind::YesNoCancel);
    EXPECT_EQ(folder.Read("file.txt"), "theirs");
    user.answers = {Answer::Yes};
    EXPECT_TRUE(saver.Save(document));
    EXPECT_EQ(folder.Read("file.txt"), "text");
    EXPECT_TRUE(saver.Save(document));
    EXPECT_EQ(user.questions.size(), 2u);
}

TEST_F(SaveQuestionsTest, AFileThatHasChangedOnADriveThatRestsIsAskedAboutToo) {
    TextBuffer& document = Open("text");
    WriteOutside("theirs");
    textServices.slowDrives.Answered(document.GetName(), true, Platform::Ticks());
    user.answers = {Answer::Cancel};
    EXPECT_FALSE(saver.Save(document));
    EXPECT_EQ(user.questions.size(), 1u);
    EXPECT_EQ(folder.Read("file.txt"), "theirs");
    // No drive rests for the tests after this one.
    textServices.slowDrives.Answered(document.GetName(), false, Platform::Ticks());
}

TEST_F(SaveQuestionsTest, AnotherFileIsNotAskedAbout) {
    TextBuffer& document = Open(std::string("te\0xt", 5));
    WriteOutside("theirs");
    dialog.names = {folder.Path("other.txt")};
    EXPECT_TRUE(saver.SaveAs(document));
    EXPECT_EQ(user.questions.size(), 0u);
    EXPECT_EQ(folder.Read("other.txt"), "te xt");
}

TEST_F(SaveQuestionsTest, BytesThatWouldChangeAreAskedAboutUntilTheyWereSaved) {
    TextBuffer& document = Open("\xEF\xBB\xBF\xC3\xA4");
    user.answers = {Answer::Cancel};
    EXPECT_FALSE(saver.Save(document));
    EXPECT_EQ(Question(), Name() + u" contains bytes that cannot be saved as they were.\nSave over it?");
    EXPECT_EQ(folder.Read("file.txt"), "\xEF\xBB\xBF\xC3\xA4");
    user.answers = {Answer::Yes};
    EXPECT_TRUE(saver.Save(document));
    EXPECT_EQ(user.questions.size(), 2u);
    EXPECT_TRUE(saver.Save(document));
    EXPECT_EQ(user.questions.size(), 2u) << "the file holds what was saved now";
}

TEST_F(SaveQuestionsTest, AnsiThatWouldBeReadAsUtf8IsAskedAbout) {
    const WithAdditional on;
    on->Utf8 = 1;
    TextBuffer& document = Open("text");
    Insert(document, u"\u00C3\u00A9");
    user.answers = {Answer::Cancel};
    EXPECT_FALSE(saver.Save(document));
    ASSERT_EQ(user.questions.size(), 1u);
    EXPECT_EQ(Question(), Name() + u" would be read in another encoding when it is opened again.\nSave it anyway?");
    EXPECT_EQ(user.questions[0].kind, MessageKind::YesNoCancel);
    EXPECT_EQ(folder.Read("file.txt"), "text");
    user.answers = {Answer::No};
    dialog.names = {Name()};
    dialog.encoding = Encoding::PlainUtf8;
    EXPECT_TRUE(saver.Save(document));
    EXPECT_EQ(folder.Read("file.txt"), "\xC3\x83\xC2\xA9text");
    EXPECT_EQ(user.questions.size(), 2u);
}

TEST_F(SaveQuestionsTest, WhatTheBytesSayIsAskedAboutOnlyWhereItIsLookedAt) {
    TextBuffer& document = Open("text");
    Insert(document, u"\u00C3\u00A9");
    EXPECT_TRUE(saver.Save(document));
    const WithAdditional on;
    on->Utf8 = 1;
    Insert(document, u"\u00E9");
    EXPECT_TRUE(saver.Save(document)) << "that is no UTF-8";
    EXPECT_EQ(folder.Read("file.txt"), "\xE9\xC3\xA9text");
    EXPECT_EQ(user.questions.size(), 0u);
}

// Each of them beyond 4096 characters, where the next ones are looked at.
TEST_F(SaveQuestionsTest, WhatLooksLikeUtf8IsLookedAtToItsEnd) {
    const WithAdditional on;
    on->Utf8 = 1;
    for (const size_t before : {4093u, 4094u, 4095u, 4096u, 8191u}) {
        const std::u16string blanks(before, u' ');
        for (const auto& [end, isAsked] : {std::pair<std::u16string, bool>{u"\u00E2\u201A\u00AC", true},
                                           {u"\u00E2\u201A\u00ACx\u00E9", false},
                                           {u"\u00E2\u201A", false}}) {
            TextBuffer& document = Open("");
            Insert(document, blanks + end);
            user.questions.clear();
            user.answers = {Answer::Cancel};
            EXPECT_EQ(saver.Save(document), !isAsked) << before;
            EXPECT_EQ(user.questions.size(), isAsked ? 1u : 0u) << before;
            documents.Remove(&document);
        }
    }
}

TEST_F(SaveQuestionsTest, ATextThatBeginsLikeASignatureIsAskedAbout) {
    const WithAdditional on;
    on->Utf8 = 1;
    for (const auto& [start, encoding, isAsked] :
         {std::tuple<std::u16string, Encoding, bool>{u"\uFEFF", Encoding::PlainUtf8, true},
          {u"\u00EF\u00BB\u00BF", Encoding::Ansi, true},
          {u"\u00FF\u00FE", Encoding::Ansi, true},
          {u"\u00FE\u00FF", Encoding::Ansi, true},
          {u"\u00EF\u00BB", Encoding::Ansi, false},
          {u"a\uFEFF", Encoding::PlainUtf8, false},
          {u"\uFEFF", Encoding::Utf8, false},
          {u"\uFEFF", Encoding::Unicode, false},
          {u"", Encoding::PlainUtf8, false}}) {
        TextBuffer& document = Open("");
        Insert(document, start);
        user.questions.clear();
        user.answers = {Answer::Cancel};
        dialog.names = {Name()};
        dialog.encoding = encoding;
        EXPECT_EQ(saver.SaveAs(document), !isAsked) << start.size() << static_cast<int>(encoding);
        EXPECT_EQ(user.questions.size(), isAsked ? 1u : 0u);
        documents.Remove(&document);
    }
}

TEST_F(SaveQuestionsTest, EachQuestionThatAppliesIsAsked) {
    TextBuffer& document = Open(std::string("te\0xt", 5));
    Insert(document, u"\u6F22");
    WriteOutside("theirs");
    user.answers = {Answer::Yes, Answer::Yes, Answer::Yes};
    EXPECT_TRUE(saver.Save(document));
    EXPECT_EQ(user.questions.size(), 3u);
    EXPECT_EQ(folder.Read("file.txt"), "?te xt");
}

TEST_F(SaveQuestionsTest, TheLineThatIsBeingTypedIsLookedAtToo) {
    TextBuffer& document = Open("text");
    ASSERT_TRUE(document.LoadEditLine(0));
    ASSERT_TRUE(document.TypeChar(nullptr, u'\u6F22', 0, false, false));
    user.answers = {Answer::Cancel};
    EXPECT_FALSE(saver.Save(document));
    EXPECT_EQ(user.questions.size(), 1u);
    EXPECT_TRUE(document.IsModified());
}

TEST_F(SaveQuestionsTest, ADocumentThatIsClosedMeanwhileIsNotSaved) {
    TextBuffer& document = Open("text");
    WriteOutside("theirs");
    user.answers = {Answer::Yes};
    user.whileAsking = [&] { documents.Remove(&document); };
    EXPECT_FALSE(saver.Save(document));
    EXPECT_EQ(folder.Read("file.txt"), "theirs");
}

TEST_F(SaveQuestionsTest, AFileThatWasReplacedByAnOlderOneIsAskedAbout) {
    TextBuffer& document = Open("text");
    const auto loaded = std::filesystem::last_write_time(folder.File("file.txt"));
    folder.Write("file.txt", "less");
    std::filesystem::last_write_time(folder.File("file.txt"), loaded - std::chrono::hours(1));
    EXPECT_FALSE(document.IsChangedOnDisk()) << "which is asked when the program is activated";
    user.answers = {Answer::Cancel, Answer::Cancel};
    EXPECT_FALSE(saver.Save(document));
    EXPECT_EQ(Question(), Name() + u" has been modified by another program.\nSave over it?");
    // Of another size at the same time: not every disk counts in small steps.
    folder.Write("file.txt", "longer");
    std::filesystem::last_write_time(folder.File("file.txt"), loaded);
    EXPECT_FALSE(saver.Save(document));
    EXPECT_EQ(user.questions.size(), 2u);
    EXPECT_EQ(folder.Read("file.txt"), "longer");
}

TEST_F(SaveQuestionsTest, AFileThatWasNotReopenedIsAskedAboutWhateverTheClocksSay) {
    TextBuffer& document = Open("text");
    const auto loaded = std::filesystem::last_write_time(folder.File("file.txt"));
    document.MarkFileTimeNow();
    folder.Write("file.txt", "theirs");
    std::filesystem::last_write_time(folder.File("file.txt"), loaded - std::chrono::seconds(30)); // their clock is slow
    user.answers = {Answer::Cancel, Answer::Yes};
    EXPECT_FALSE(saver.Save(document));
    EXPECT_EQ(user.questions.size(), 1u);
    EXPECT_TRUE(saver.Save(document));
    EXPECT_TRUE(saver.Save(document));
    EXPECT_EQ(user.questions.size(), 2u) << "the file is the document's own again";
}

// Saves bytes in a file that holds `old` at first.
class SaveBytesQuestionTest : public SaveQuestionsTest {
protected:
    SaveBytesQuestionTest() {
        bytes->AddRef();
        EXPECT_TRUE(bytes->Open(folder.Write("file.txt", "old bytes").c_str()));
        EXPECT_TRUE(documents.Add(bytes));
    }
    void Edit() { ASSERT_TRUE(bytes->EditBytes(0, reinterpret_cast<const uint8_t*>("X"), 1, nullptr, {})); }

    BinaryDocument* const bytes = new BinaryDocument(hexServices);
};

TEST_F(SaveBytesQuestionTest, AFileThatHasChangedOnDiskIsAskedAbout) {
    Edit();
    WriteOutside("new bytes");
    user.answers = {Answer::Cancel, Answer::Yes};
    EXPECT_FALSE(saver.Save(*bytes));
    EXPECT_EQ(Question(), Name() + u" has been modified by another program.\nSave over it?");
    EXPECT_EQ(folder.Read("file.txt"), "new bytes");
    EXPECT_TRUE(saver.Save(*bytes));
    EXPECT_EQ(folder.Read("file.txt"), "Xld bytes");
    Edit();
    EXPECT_TRUE(saver.Save(*bytes));
    EXPECT_EQ(user.questions.size(), 2u) << "what a save has written is no change by others";
}

TEST_F(SaveBytesQuestionTest, ItIsAskedWhateverNameIsChosen) {
    Edit();
    WriteOutside("new bytes");
    dialog.names = {folder.Path("other.txt")};
    user.answers = {Answer::Cancel};
    EXPECT_FALSE(saver.SaveAs(*bytes));
    EXPECT_EQ(Question(), Name() + u" has been modified by another program.\nSave over it?");
    EXPECT_EQ(folder.Read("file.txt"), "new bytes");
}

TEST_F(SaveBytesQuestionTest, NothingIsAskedWhereNothingIsWritten) {
    WriteOutside("new bytes");
    EXPECT_TRUE(saver.Save(*bytes));
    EXPECT_EQ(user.questions.size(), 0u);
    EXPECT_EQ(folder.Read("file.txt"), "new bytes");
}

} // namespace
