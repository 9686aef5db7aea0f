#include "app/SettingsSaving.h"

#include "core/app/FakeFrame.h"
#include "settings/IniFile.h"
#include "support/FailureInjection.h"
#include "support/ScratchFolder.h"

#include <gtest/gtest.h>

namespace {

class SettingsSavingTest : public ::testing::Test {
protected:
    void SetUp() override {
        IniSection* const section = ini.AddSection(u"General");
        ASSERT_TRUE(section && section->SetInt(u"FontSize", 12));
        ASSERT_TRUE(ReadStamp(path.c_str(), known.file));
    }
    void Save() { SaveSettingsFile(user, recoveryServices.saver, ini, path.c_str(), known); }

    ScratchFolder folder;
    std::u16string path = folder.Write("orvane.ini", "the old file");
    IniFile ini;
    FakeFrame user;
    SettingsKnowledge known;
};

constexpr const char* Saved = "[General]\r\nFontSize=12\r\n";

TEST_F(SettingsSavingTest, AFileThatWasReadIsReplacedInSilence) {
    Save();
    EXPECT_EQ(folder.Read("orvane.ini"), Saved);
    EXPECT_EQ(user.questions.size(), 0u);
}

TEST_F(SettingsSavingTest, TheLineThatStoppedTheReadingIsNamedOnce) {
    known.stoppedLine = 7;
    user.answers = {Answer::No, Answer::Yes};
    Save();
    ASSERT_EQ(user.questions.size(), 1u);
    EXPECT_EQ(user.questions[0].text,
              u"Reading " + path + u" stopped at line 7.\nWhat follows would be lost. Save over it?");
    EXPECT_EQ(user.questions[0].kind, MessageKind::YesNo);
    EXPECT_EQ(folder.Read("orvane.ini"), "the old file");
    Save();
    EXPECT_EQ(folder.Read("orvane.ini"), Saved);
    Save();
    EXPECT_EQ(user.questions.size(), 2u);
}

TEST_F(SettingsSavingTest, AFileThatCouldNotBeReadIsAskedAbout) {
    known.isUnreadable = true;
    user.answers = {Answer::No};
    Save();
    ASSERT_EQ(user.questions.size(), 1u);
    EXPECT_EQ(user.questions[0].text, path + u" could not be read.\nSave over it?");
    EXPECT_EQ(folder.Read("orvane.ini"), "the old file");
}

TEST_F(SettingsSavingTest, AFileThatAnotherProgramHasChangedIsAskedAbout) {
    folder.Write("orvane.ini", "what another editor has saved");
    user.answers = {Answer::No, Answer::Yes};
    Save();
    ASSERT_EQ(user.questions.size(), 1u);
    EXPECT_EQ(user.questions[0].text, path + u" has been modified by another program.\nSave over it?");
    EXPECT_EQ(user.questions[0].kind, MessageKind::YesNo);
    EXPECT_EQ(folder.Read("orvane.ini"), "what another editor has saved");
    Save();
    EXPECT_EQ(folder.Read("orvane.ini"), Saved);
    Save();
    EXPECT_EQ(user.questions.size(), 2u) << "it is as this editor has written it";
}

// Of the same size, and of an earlier time.
TEST_F(SettingsSavingTest, AFileThatWasPutInItsPlaceIsAskedAbout) {
    folder.Write("orvane.ini", "the elder one");
    known.file = {2, folder.Read("orvane.ini").size()};
    user.answers = {Answer::No};
    Save();
    EXPECT_EQ(user.questions.size(), 1u);
    EXPECT_EQ(folder.Read("orvane.ini"), "the elder one");
}

TEST_F(SettingsSavingTest, AFileThatWasMadeMeanwhileIsAskedAbout) {
    known = {};
    user.answers = {Answer::No};
    Save();
    EXPECT_EQ(user.questions.size(), 1u);
    EXPECT_EQ(folder.Read("orvane.ini"), "the old file");
}

TEST_F(SettingsSavingTest, AFileThatIsGoneIsMadeInSilence) {
    ASSERT_TRUE(Platform::RemoveFile(path.c_str()));
    Save();
    EXPECT_EQ(folder.Read("orvane.ini"), Saved);
    EXPECT_EQ(user.questions.size(), 0u);
}

// What was not understood of it does not matter any more.
TEST_F(SettingsSavingTest, AFileThatWasMendedMeanwhileIsAskedAboutOnce) {
    known.stoppedLine = 7;
    folder.Write("orvane.ini", "the file with line 7 mended");
    user.answers = {Answer::No};
    Save();
    ASSERT_EQ(user.questions.size(), 1u);
    EXPECT_EQ(user.questions[0].text, path + u" has been modified by another program.\nSave over it?");
}

TEST_F(SettingsSavingTest, WithoutMemoryNoFileIsReplacedUnasked) {
    known.stoppedLine = 7;
    const uint64_t failures = FailEachAllocation([&] {
        {
            const FailurePause pause;
            user.questions.clear();
            user.answers = {Answer::No};
        }
        Save();
        const FailurePause pause;
        EXPECT_EQ(folder.Read("orvane.ini"), "the old file");
        return user.questions.size() == 1;
    });
    EXPECT_GT(failures, 0u);
}

TEST_F(SettingsSavingTest, AFailureIsTold) {
    path = folder.Path("no\\such\\folder.ini");
    known.stoppedLine = 1;
    user.answers = {Answer::Yes};
    Save();
    ASSERT_EQ(user.questions.size(), 2u);
    EXPECT_EQ(user.questions[1].text, u"Failed saving file: " + path);
    EXPECT_EQ(user.questions[1].kind, MessageKind::Warning);
    EXPECT_EQ(known.stoppedLine, 1u) << "nothing was written";
}

} // namespace
