#include "app/CommandLanguage.h"
#include "app/Session.h"
#include "core/app/FakeFrame.h"
#include "support/FailureInjection.h"
#include "support/ScratchFolder.h"
#include "support/WithAdditional.h"

#include <gtest/gtest.h>

namespace {

class SessionTest : public ::testing::Test {
protected:
    void Save(const std::u16string& file) { SaveSession(frame, file.c_str()); }
    FakeDocument& AddFile(const Char* path, const Char* text) {
        FakeDocument& document = frame.Add(FakeDocument::WithFile(path));
        document.sessionText = text;
        return document;
    }
    void SetSessionFile(const std::u16string& file) { ASSERT_TRUE(frame.commands.sessionFile.Assign(file.c_str())); }

    FakeFrame frame;
    ScratchFolder folder;
};

TEST_F(SessionTest, WithOnlyUntitledDocumentsItIsOneLine) {
    frame.Add(FakeDocument::WithTitle(u"Untitled1")).sessionText = u"e Untitled1\r\n";
    frame.Add(FakeDocument::WithTitle(u"Output")).sessionText = u"e Output\r\n";
    Save(folder.Path("s"));
    EXPECT_EQ(folder.Read("s"), "sessionfile\r\n");
    EXPECT_TRUE(frame.questions.empty());
}

TEST_F(SessionTest, JoinsWhatTheDocumentsWriteInOpeningOrder) {
    AddFile(u"C:\\src\\main.c", u"e C:\\src\\main.c\r\nl 120\r\nbm 3\r\nbm 40\r\n");
    frame.Add(FakeDocument::WithTitle(u"Untitled1")).sessionText = u"no";
    AddFile(u"C:\\data\\image.bin", u"eb C:\\data\\image.bin\r\n").binary = true;
    frame.documents.Touch(frame.documents.At(2)); // the order of use does not matter
    Save(folder.Path("s"));
    EXPECT_EQ(folder.Read("s"), "sessionfile\r\ne C:\\src\\main.c\r\nl 120\r\nbm 3\r\nbm 40\r\n"
                                "eb C:\\data\\image.bin\r\n");
}

TEST_F(SessionTest, IsWrittenAsUtf8WithoutASignature) {
    AddFile(u"C:\\\u00FC \u20AC\U0001F600", u"e C:\\\u00FC \u20AC\U0001F600\r\n");
    Save(folder.Path("s"));
    EXPECT_EQ(folder.Read("s"), "sessionfile\r\ne C:\\\xC3\xBC \xE2\x82\xAC\xF0\x9F\x98\x80\r\n");
}

TEST_F(SessionTest, TheSettingUtf8ChangesNothingInIt) {
    const WithAdditional on;
    on->Utf8 = 1;
    AddFile(u"C:\\\u00FC", u"e C:\\\u00FC\r\n");
    Save(folder.Path("s"));
    EXPECT_EQ(folder.Read("s"), "sessionfile\r\ne C:\\\xC3\xBC\r\n");
}

TEST_F(SessionTest, ADocumentSavedForTheFirstTimeIsPartOfIt) {
    AddFile(u"C:\\a", u"e C:\\a\r\n").title = u"Untitled1";
    Save(folder.Path("s"));
    EXPECT_EQ(folder.Read("s"), "sessionfile\r\ne C:\\a\r\n");
}

TEST_F(SessionTest, AnExistingFileIsReplacedOnlyOnYes) {
    const std::u16string file = folder.Write("s", "old");
    for (const Answer answer : {Answer::No, Answer::Cancel}) {
        frame.answers = {answer};
        Save(file);
        EXPECT_EQ(folder.Read("s"), "old");
    }
    frame.answers = {Answer::Yes};
    Save(file);
    EXPECT_EQ(folder.Read("s"), "sessionfile\r\n");
    ASSERT_EQ(frame.questions.size(), 3u); // and no further message
    EXPECT_EQ(frame.questions[0].text, file + u" already exists.\nWould you like to overwrite it?");
    EXPECT_EQ(frame.questions[0].kind, MessageKind::YesNoCancel);
}

TEST_F(SessionTest, WithoutMemoryNoFileIsReplacedUnasked) {
    const std::u16string file = folder.Write("s", "old");
    const uint64_t failures = FailEachAllocation([&] {
        {
            const FailurePause pause;
            frame.questions.clear();
            frame.answers = {Answer::No};
        }
        Save(file);
        const FailurePause pause;
        EXPECT_EQ(folder.Read("s"), "old");
        return !frame.questions.empty() && frame.questions[0].kind == MessageKind::YesNoCancel;
    });
    EXPECT_GT(failures, 3u);
}

TEST_F(SessionTest, TheCurrentSessionFileIsReplacedWithoutAQuestion) {
    const std::u16string file = folder.Write("session.ses", "old");
    SetSessionFile(file);
    Save(file);
    EXPECT_EQ(folder.Read("session.ses"), "sessionfile\r\n");
    EXPECT_TRUE(frame.questions.empty());
}

TEST_F(SessionTest, AnotherLetterCaseOfTheCurrentSessionFileDoesNotAsk) {
    const std::u16string file = folder.Write("session.ses", "old");
    folder.Write("SESSION.SES", "old");
    SetSessionFile(file);
    Save(folder.Path("SESSION.SES"));
    EXPECT_EQ(folder.Read("SESSION.SES"), "sessionfile\r\n");
    EXPECT_TRUE(frame.questions.empty());
}

TEST_F(SessionTest, AnotherWayToNameTheCurrentSessionFileDoesNotAsk) {
    std::filesystem::create_directory(folder.File("sub"));
    SetSessionFile(folder.Write("session.ses", "old"));
    const InDirectory scope(folder.File("sub"));
    Save(u"..\\session.ses");
    EXPECT_EQ(folder.Read("session.ses"), "sessionfile\r\n");
    folder.Write("session.ses", "old");
    Save(u"\"../sub/../session.ses\"");
    EXPECT_EQ(folder.Read("session.ses"), "sessionfile\r\n");
    EXPECT_TRUE(frame.questions.empty());
}

// As one has that was given a short name, a prefix for long paths or a link.
TEST_F(SessionTest, AnotherNameOfTheCurrentSessionFileDoesNotAsk) {
    SetSessionFile(folder.Write("session.ses", "old"));
    std::filesystem::create_hard_link(folder.File("session.ses"), folder.File("SESSIO~1.SES"));
    Save(folder.Path("SESSIO~1.SES"));
    EXPECT_EQ(folder.Read("session.ses"), "sessionfile\r\n");
    EXPECT_TRUE(frame.questions.empty());
}

TEST_F(SessionTest, ASessionRunByARelativeNameIsSavedToItsFileFromElsewhere) {
    folder.Write("s.ses", "sessionfile\r\n");
    std::filesystem::create_directory(folder.File("sub"));
    const InDirectory scope(folder.File("."));
    RunScript(frame, u"s.ses");
    ExecuteCommandLine(frame, u"cd sub");
    AddFile(u"C:\\a", u"e C:\\a\r\n");
    ExecuteCommandLine(frame, u"savesession");
    EXPECT_EQ(folder.Read("s.ses"), "sessionfile\r\ne C:\\a\r\n");
    EXPECT_FALSE(std::filesystem::exists(folder.File("sub/s.ses")));
    EXPECT_TRUE(frame.questions.empty());
}

TEST_F(SessionTest, AnotherFileThanTheCurrentSessionFileAsks) {
    SetSessionFile(folder.Path("one"));
    Save(folder.Write("two", "old"));
    EXPECT_EQ(frame.questions.size(), 1u);
    EXPECT_EQ(folder.Read("two"), "old");
}

TEST_F(SessionTest, SavingLeavesTheSessionFileName) {
    Save(folder.Path("s"));
    EXPECT_TRUE(frame.commands.sessionFile.IsEmpty());
}

TEST_F(SessionTest, TheNameIsFreedOfItsQuotes) {
    Save(u"\"" + folder.Path("a b") + u"\"");
    EXPECT_EQ(folder.Read("a b"), "sessionfile\r\n");
}

TEST_F(SessionTest, AnExistingFileIsAskedAboutAlsoInQuotes) {
    const std::u16string file = folder.Write("a b", "old");
    frame.answers = {Answer::No};
    Save(u"\"" + file + u"\"");
    ASSERT_EQ(frame.questions.size(), 1u);
    EXPECT_EQ(frame.questions[0].text, file + u" already exists.\nWould you like to overwrite it?");
    EXPECT_EQ(folder.Read("a b"), "old");
}

TEST_F(SessionTest, AFileThatCannotBeCreatedIsReported) {
    Save(folder.Path("no\\such\\s"));
    ASSERT_EQ(frame.questions.size(), 1u);
    EXPECT_EQ(frame.questions[0].text, u"Failed saving file: " + folder.Path("no\\such\\s"));
    EXPECT_EQ(frame.questions[0].kind, MessageKind::Warning);
}

TEST_F(SessionTest, ADirectoryIsAskedAboutAndReported) {
    std::filesystem::create_directory(folder.File("d"));
    frame.answers = {Answer::Yes};
    Save(folder.Path("d"));
    ASSERT_EQ(frame.questions.size(), 2u);
    EXPECT_EQ(frame.questions[1].text, u"Failed saving file: " + folder.Path("d"));
}

TEST_F(SessionTest, EveryFileFailureIsReported) {
    const uint64_t failures = FailEachFileCall([&] {
        frame.questions.clear();
        frame.defaultAnswer = Answer::Yes;
        Save(folder.Path("s"));
        if (frame.questions.empty() || frame.questions.back().kind != MessageKind::Warning) return true;
        EXPECT_EQ(frame.questions.back().text, u"Failed saving file: " + folder.Path("s"));
        return false;
    });
    EXPECT_GE(failures, 2u);
    EXPECT_EQ(folder.Read("s"), "sessionfile\r\n");
}

TEST_F(SessionTest, WithoutMemoryTheTextIsUnchangedAndTheFileIsNotTouched) {
    AddFile(u"C:\\a", u"e C:\\a and a name that makes the text grow\r\n");
    const uint64_t textFailures = FailEachAllocation([&] {
        WString text;
        const bool built = BuildSessionText(frame.documents, text);
        EXPECT_EQ(text.IsEmpty(), !built);
        return built;
    });
    EXPECT_GT(textFailures, 0u);
    folder.Write("s", "old");
    frame.defaultAnswer = Answer::Yes;
    const std::u16string file = folder.Path("s");
    FailEachAllocation([&] {
        SaveSession(frame, file.c_str());
        const FailurePause pause;
        const bool written = folder.Read("s") != "old";
        EXPECT_TRUE(!written || folder.Read("s").size() > 20) << "half a session";
        return written;
    });
}

// Reading a session is running it.
TEST_F(SessionTest, ReadsBackWithMissingFiles) {
    const std::u16string there = folder.Write("there is.c", "");
    const std::u16string session = folder.Path("s");
    const auto bytes = [](const std::u16string& text) { return std::filesystem::path(text).string(); };
    folder.Write("s", "sessionfile\r\ne " + bytes(there) + "\r\nl 120\r\nbm 3\r\ne " + bytes(folder.Path("gone.c")) +
                          "\r\nl 7\r\neb " + bytes(there) + "\r\n");
    frame.defaultAnswer = Answer::No;
    RunScript(frame, session.c_str());
    // The missing file's line falls on whichever document is active.
    EXPECT_EQ(frame.calls, (Calls{u"text " + there, u"line 119", u"bookmark 2", u"line 6", u"binary " + there}));
    ASSERT_EQ(frame.questions.size(), 1u);
    EXPECT_EQ(frame.questions[0].text, u"Create file " + folder.Path("gone.c") + u"?");
    EXPECT_EQ(Str(frame.commands.sessionFile), session);
    EXPECT_EQ(frame.opensOutsideBatch, 0);
}

TEST_F(SessionTest, ASessionOfAThousandFilesIsOneBatch) {
    const std::u16string there = folder.Write("a", "");
    std::string text = "sessionfile\r\n";
    for (int i = 0; i < 1000; ++i) text += "e " + std::filesystem::path(there).string() + "\r\n";
    folder.Write("s", text);
    RunScript(frame, folder.Path("s").c_str());
    EXPECT_EQ(frame.calls.size(), 1000u);
    EXPECT_EQ(frame.opensOutsideBatch, 0);
    EXPECT_EQ(frame.layouts, 0);
}

} // namespace
