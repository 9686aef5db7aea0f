#include "app/Session.h"
#include "core/app/FakeFrame.h"
#include "settings/IniFile.h"
#include "support/IdlePollTimer.h"
#include "support/Speaker.h"
#include "support/TextDocument.h"

#include <cstdlib>
#include <fstream>
#include <gtest/gtest.h>

// What happens on a real disk that is full: scripts/check-full-disk makes a small one and names it.

namespace {

class FullDiskTest : public ::testing::Test {
protected:
    void SetUp() override {
        const char* const name = std::getenv("ORVANE_SMALL_DISK");
        if (!name) GTEST_SKIP() << "there is no small disk: scripts/check-full-disk makes one";
        disk = name;
        const std::u16string recovery = scratch.Path("recovery");
        recoveryFolder = recovery;
        Platform::SetRecoveryFolder(recoveryFolder.c_str());
        for (const auto& entry : std::filesystem::directory_iterator(disk)) std::filesystem::remove_all(entry);
        Write("file", std::string(100000, 'o'));
        Fill();
    }
    void TearDown() override {
        Platform::SetRecoveryFolder(nullptr);
        if (!disk.empty()) std::filesystem::remove(disk / "filler");
    }

    void Write(const std::string& name, const std::string& bytes) {
        std::ofstream(disk / name, std::ios::binary) << bytes;
    }
    void Fill() {
        std::ofstream filler(disk / "filler", std::ios::binary);
        const std::string block(4096, 'f');
        while (filler.write(block.data(), static_cast<std::streamsize>(block.size())).flush()) {
        }
    }
    std::string Read(const std::string& name) const {
        std::ifstream file(disk / name, std::ios::binary);
        return std::string(std::istreambuf_iterator<char>(file), {});
    }
    std::u16string Path(const std::string& name) const { return (disk / name).u16string(); }
    void KeepRecoveryOnIt() {
        recoveryFolder = Path("recovery");
        Platform::SetRecoveryFolder(recoveryFolder.c_str());
    }
    static std::u16string LongText() { return std::u16string(1200000, u'n'); }

    std::filesystem::path disk;
    ScratchFolder scratch;
    std::u16string recoveryFolder;
};

TEST_F(FullDiskTest, ATextLosesNoByte) {
    for (const bool onIt : {false, true}) {
        if (onIt) KeepRecoveryOnIt();
        TextDocument document;
        const std::u16string text = LongText();
        ASSERT_TRUE(document->Load(Path("file").c_str(), false));
        ASSERT_TRUE(document->InsertText(0, text.c_str(), static_cast<uint32_t>(text.size())));
        EXPECT_FALSE(document->Save(Path("file").c_str(), Encoding::Keep, LineEnding::Keep));
        EXPECT_TRUE(document->IsModified());
        EXPECT_TRUE(Read("file") == std::string(100000, 'o'));
    }
}

TEST_F(FullDiskTest, ANewFileIsNotLeftBehind) {
    TextDocument document(LongText());
    EXPECT_FALSE(document->Save(Path("new").c_str(), Encoding::Ansi, LineEnding::Unix));
    EXPECT_FALSE(std::filesystem::exists(disk / "new"));
}

TEST_F(FullDiskTest, SettingsAndSessionsLoseNoByte) {
    IniFile settings;
    IniSection* const section = settings.AddSection(u"General");
    ASSERT_TRUE(section && section->SetString(u"Text", LongText().c_str()));
    EXPECT_FALSE(settings.Save(recoveryServices.saver, Path("file").c_str()));
    EXPECT_TRUE(Read("file") == std::string(100000, 'o'));

    FakeFrame frame;
    FakeDocument& document = frame.Add(FakeDocument::WithFile(u"C:\\a.txt"));
    document.sessionText = LongText();
    ASSERT_TRUE(frame.commands.sessionFile.Assign(Path("file").c_str()));
    SaveSession(frame, Path("file").c_str());
    EXPECT_EQ(frame.questions.size(), 1u);
    EXPECT_TRUE(Read("file") == std::string(100000, 'o'));
}

TEST_F(FullDiskTest, AJournalIsWrittenOnceThereIsRoom) {
    uint64_t clock = 1000;
    KeepRecoveryOnIt();
    Platform::SetTestClock(&clock);
    KeepJournals(true);
    {
        TextDocument document(std::u16string(100000, u'n'));
        ASSERT_TRUE(document->InsertText(0, u"x", 1));
        EXPECT_FALSE(document->FlushJournal());
        std::filesystem::resize_file(disk / "filler", 0);
        EXPECT_FALSE(document->FlushJournal()) << "before its time";
        clock += 30001;
        EXPECT_TRUE(document->FlushJournal());
    }
    KeepJournals(false);
    Platform::SetTestClock(nullptr);
}

TEST_F(FullDiskTest, ACommandIsNotStartedAndTheUserIsToldWhy) {
    static IdlePollTimer idle;
    textServices.timer = &idle;
    if (std::filesystem::temp_directory_path() != disk) GTEST_SKIP() << "temporary files are elsewhere";
    TextDocument document;
    EXPECT_FALSE(document->RunCommand(u"echo told", u""));
    EXPECT_EQ(Str(document->Output().Failure()), u"The disk that its output would go to is full.");
    std::filesystem::remove(disk / "filler");
    ASSERT_TRUE(document->RunCommand(u"echo told", u""));
    ASSERT_TRUE(SpeakerScripts::Eventually([&] { return CommandProcess::HasEnded(document->Output().Run()); }));
    Fill();
    ASSERT_TRUE(SpeakerScripts::Eventually([&] { return (document->PollOutput(), !document->Output().IsRunning()); }));
    EXPECT_EQ(document.Store(), u"told\nThe disk is full: output of the command may be missing.\n");
}

} // namespace
