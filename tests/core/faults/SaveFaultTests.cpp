#include "FaultTest.h"
#include "app/Session.h"
#include "core/app/FakeFrame.h"
#include "settings/IniFile.h"
#include "support/TextDocument.h"

#include <memory>

namespace {

constexpr const char* OldText = "old\r\n";

// A modified text over the file, too long for one write.
class TextFaultTest : public FaultTest {
protected:
    static std::u16string Text() {
        std::u16string text;
        while (text.size() < 70000) text += u"one line \u00E4\n";
        return text;
    }
    static std::string Bytes() {
        std::string bytes = "\xEF\xBB\xBF";
        for (const Char c : Text()) {
            if (c == u'\n') bytes += '\r';
            bytes += c == u'\u00E4' ? std::string("\xC3\xA4") : std::string(1, static_cast<char>(c));
        }
        return bytes;
    }

    void Prepare(bool hasFile) {
        document = std::make_unique<TextDocument>();
        ASSERT_TRUE(!hasFile || (*document)->Load(Target, false));
        before = document->Store();
        const std::u16string text = Text();
        ASSERT_TRUE((*document)->DeleteText({0, (*document)->Length()}));
        ASSERT_TRUE((*document)->InsertText(0, text.c_str(), static_cast<uint32_t>(text.size())));
    }

    void Inspect(bool isSaved) {
        TextBuffer& buffer = **document;
        EXPECT_EQ(buffer.IsModified(), !isSaved);
        Encoding encoding = Encoding::Ansi;
        const Char* const* names = nullptr;
        EXPECT_TRUE(buffer.GetEncoding(encoding, names));
        EXPECT_EQ(encoding, isSaved ? Encoding::Utf8 : Encoding::Ansi);
        EXPECT_EQ(document->Store(), Text());
        EXPECT_TRUE(buffer.Undo());
        EXPECT_TRUE(before.empty() || buffer.Undo());
        EXPECT_EQ(document->Store(), before);
        if (!before.empty()) ExpectModifiedUnlessFileHolds(OldText);
    }

    void ExpectModifiedUnlessFileHolds(const std::string& bytes) {
        EXPECT_TRUE((*document)->IsModified() || disk.Read(Target) == bytes);
    }

    Saving Over(bool hasFile) {
        return {.prepare = [this, hasFile] { Prepare(hasFile); },
                .save = [this] { return (*document)->Save(Target, Encoding::Utf8, LineEnding::Dos); },
                .inspect = [this](bool isSaved) { Inspect(isSaved); },
                .before = hasFile ? OldText : Missing,
                .after = Bytes()};
    }

    std::unique_ptr<TextDocument> document;
    std::u16string before;
};

TEST_F(TextFaultTest, ASaveLosesNeitherTheOldNorTheNewBytes) { FailEverything(Over(true)); }

TEST_F(TextFaultTest, ASaveUnderANewNameLosesNothing) { FailEverything(Over(false)); }

TEST_F(TextFaultTest, AShorterTextLosesNothing) {
    Saving saving = Over(true);
    saving.before = std::string(200000, 'o');
    saving.inspect = [this, &saving](bool isSaved) {
        EXPECT_EQ((*document)->IsModified(), !isSaved);
        EXPECT_TRUE((*document)->Undo() && (*document)->Undo());
        ExpectModifiedUnlessFileHolds(saving.before);
    };
    FailEverything(saving);
}

TEST_F(TextFaultTest, ATextWhoseFileWasCutIsModifiedAlsoWithoutAnEdit) {
    std::string unixBytes;
    std::string dosBytes;
    for (int i = 0; i < 20000; ++i) {
        unixBytes += "line\n";
        dosBytes += "line\r\n";
    }
    FailEverything({.prepare =
                        [&] {
                            document = std::make_unique<TextDocument>();
                            ASSERT_TRUE((*document)->Load(Target, false));
                        },
                    .save = [&] { return (*document)->Save(Target, Encoding::Keep, LineEnding::Dos); },
                    .inspect = [&](bool isSaved) { ExpectModifiedUnlessFileHolds(isSaved ? dosBytes : unixBytes); },
                    .before = unixBytes,
                    .after = dosBytes});
}

TEST_F(TextFaultTest, AFullDiskCostsNothing) {
    const Saving saving = Over(true);
    for (uint64_t number = 1; number < 8; ++number) {
        Reset();
        disk.Write(Target, saving.before);
        saving.prepare();
        disk.FailAt(number, FakeDisk::Fault::Full);
        EXPECT_FALSE(saving.save());
        EXPECT_EQ(disk.Read(Target), saving.before) << number;
        EXPECT_TRUE((*document)->Undo() && (*document)->Undo());
        EXPECT_FALSE((*document)->IsModified()) << number;
    }
}

TEST_F(TextFaultTest, TheNextSaveThatSucceedsLeavesNoCopy) {
    const Saving saving = Over(true);
    disk.Write(Target, saving.before);
    saving.prepare();
    disk.FailAt(16, FakeDisk::Fault::Killed);
    ASSERT_FALSE(saving.save());
    disk.StopFailing();
    EXPECT_EQ(disk.FilesBeside({Target}).size(), 1u);
    EXPECT_TRUE(saving.save());
    EXPECT_EQ(disk.Read(Target), saving.after);
    EXPECT_EQ(disk.FilesBeside({Target}), std::vector<std::u16string>{});
}

// A scanner may hold the copy open. The file has newer bytes later, which the copy must not be taken for.
TEST_F(TextFaultTest, ACopyThatCouldNotBeRemovedIsNotTakenForANewerText) {
    uint64_t calls = UINT64_MAX;
    for (const bool fails : {false, true}) {
        Reset();
        disk.Write(Target, "old");
        disk.FailAt(calls, FakeDisk::Fault::Denied);
        BlockSource source("new bytes", 9);
        ASSERT_EQ(recoveryServices.saver.Save(Target, source), SaveResult::Saved);
        calls = disk.Calls(); // the last of them removes the copy
        disk.StopFailing();
        ASSERT_EQ(disk.FilesBeside({Target}).size(), fails ? 1u : 0u);
    }
    disk.Write(Target, "what was saved after that");
    disk.Restart();
    EXPECT_EQ(StartAgain().message, u"");
    EXPECT_EQ(disk.FilesBeside({Target}), std::vector<std::u16string>{});
}

// Also of one whose name the system's comparison takes for the same.
TEST_F(TextFaultTest, ASaveOfAnotherFileLeavesTheCopy) {
    const Saving saving = Over(true);
    disk.Write(Target, saving.before);
    saving.prepare();
    disk.FailAt(16, FakeDisk::Fault::Killed);
    ASSERT_FALSE(saving.save());
    disk.StopFailing();
    BlockSource source("bytes", 5);
    ASSERT_EQ(recoveryServices.saver.Save(u"S:\\work\\other.txt", source), SaveResult::Saved);
    ASSERT_EQ(recoveryServices.saver.Save(u"S:\\work\\FILE.txt", source), SaveResult::Saved);
    disk.Restart();
    LeaveSaveCopies();
    EXPECT_TRUE(disk.Holds(StartAgain().named, saving.after));
}

// Three bytes a character: the bytes of a chunk have no room at once.
TEST_F(TextFaultTest, AChunkThatIsWrittenInPiecesLosesNothing) {
    const std::u16string text(40000, u'\u6F22');
    std::string bytes = "\xEF\xBB\xBF";
    for (size_t i = 0; i < text.size(); ++i) bytes += "\xE6\xBC\xA2";
    FailEverything({.prepare =
                        [&] {
                            document = std::make_unique<TextDocument>();
                            ASSERT_TRUE((*document)->InsertText(0, text.c_str(), static_cast<uint32_t>(text.size())));
                        },
                    .save = [&] { return (*document)->Save(Target, Encoding::Utf8, LineEnding::Unix); },
                    .inspect =
                        [&](bool isSaved) {
                            EXPECT_EQ((*document)->IsModified(), !isSaved);
                            EXPECT_TRUE(document->Store() == text);
                        },
                    .before = OldText,
                    .after = bytes});
}

TEST_F(TextFaultTest, WithoutACopyTheFileIsWrittenAllTheSame) {
    const Saving saving = Over(true);
    disk.Write(Target, saving.before);
    disk.Deny(Recovery);
    saving.prepare();
    EXPECT_TRUE(saving.save());
    EXPECT_EQ(disk.Read(Target), saving.after);
}

TEST_F(TextFaultTest, WithoutACopyAFailureInTheMiddleCutsTheFile) {
    const Saving saving = Over(true);
    int cuts = 0;
    uint64_t number = 1;
    for (bool isReached = true; isReached && number < 100; ++number) {
        SCOPED_TRACE(number);
        Reset();
        disk.Write(Target, saving.before);
        disk.Deny(Recovery);
        saving.prepare();
        disk.FailAt(number, FakeDisk::Fault::Denied);
        const bool isSaved = saving.save();
        isReached = disk.Calls() >= number;
        EXPECT_EQ((*document)->IsModified(), !isSaved);
        const std::string held = disk.Read(Target);
        if (held == saving.before || held == saving.after) continue;
        EXPECT_FALSE(isSaved);
        EXPECT_EQ(held, saving.after.substr(0, held.size()));
        ++cuts;
    }
    EXPECT_GT(cuts, 1) << "after the signature, and after a piece of the text";
}

class SessionFaultTest : public FaultTest {};

TEST_F(SessionFaultTest, ASessionLosesNeitherTheOldNorTheNewBytes) {
    FakeFrame frame;
    FakeDocument& document = frame.Add(FakeDocument::WithFile(u"C:\\a.txt"));
    document.sessionText = u"e C:\\a.txt\r\nl 12\r\n";
    ASSERT_TRUE(frame.commands.sessionFile.Assign(Target));
    FailEverything({.prepare = [&] { frame.questions.clear(); },
                    .save =
                        [&] {
                            SaveSession(frame, Target);
                            return frame.questions.empty();
                        },
                    .inspect =
                        [&](bool isSaved) {
                            if (isSaved) return;
                            ASSERT_EQ(frame.questions.size(), 1u);
                            EXPECT_EQ(frame.questions[0].text, u"Failed saving file: " + std::u16string(Target));
                        },
                    .before = "sessionfile\r\n",
                    .after = "sessionfile\r\ne C:\\a.txt\r\nl 12\r\n",
                    .keepsPrevious = true});
}

TEST_F(SessionFaultTest, TheSessionThatWasReplacedIsKept) {
    FakeFrame frame;
    ASSERT_TRUE(frame.commands.sessionFile.Assign(Target));
    disk.Write(Target, "the old one");
    SaveSession(frame, Target);
    EXPECT_EQ(disk.Read(Target), "sessionfile\r\n");
    EXPECT_EQ(disk.Read(PreviousPath()), "the old one");
}

class SettingsFaultTest : public FaultTest {};

TEST_F(SettingsFaultTest, SettingsLoseNeitherTheOldNorTheNewBytes) {
    IniFile file;
    IniSection* const section = file.AddSection(u"General");
    ASSERT_TRUE(section && section->SetInt(u"FontSize", 12));
    FailEverything({.prepare = [] {},
                    .save = [&] { return file.Save(recoveryServices.saver, Target); },
                    .inspect = [](bool) {},
                    .before = "[General]\r\nFontSize=10\r\n[Tool]\r\nTitle=x\r\n",
                    .after = "[General]\r\nFontSize=12\r\n",
                    .keepsPrevious = true});
}

// As a kill in the middle of a save has left it.
TEST_F(SettingsFaultTest, AGenerationThatIsNotWholeReplacesNone) {
    IniFile file;
    ASSERT_TRUE(file.AddSection(u"General"));
    bool isReached = true;
    for (uint64_t number = 1; isReached && number < 100; ++number) {
        SCOPED_TRACE(number);
        Reset();
        disk.Write(Target, "the old ones");
        disk.Write(PreviousPath(), OlderGeneration);
        disk.Write(PreviousPath() + u".new", "the o");
        disk.FailAt(number, FakeDisk::Fault::Denied);
        static_cast<void>(file.Save(recoveryServices.saver, Target));
        isReached = disk.Calls() >= number;
        disk.StopFailing();
        const std::string kept = disk.Read(PreviousPath());
        EXPECT_TRUE(kept == OlderGeneration || kept == "the old ones") << kept;
    }
    EXPECT_EQ(disk.Read(PreviousPath()), "the old ones");
}

TEST_F(SettingsFaultTest, OnlyOtherBytesReplaceTheGenerationBefore) {
    IniFile file;
    IniSection* const section = file.AddSection(u"General");
    ASSERT_TRUE(section && section->SetInt(u"FontSize", 12));
    disk.Write(Target, "the old ones");
    for (int i = 0; i < 3; ++i) ASSERT_TRUE(file.Save(recoveryServices.saver, Target));
    EXPECT_EQ(disk.Read(PreviousPath()), "the old ones");
    ASSERT_TRUE(section->SetInt(u"FontSize", 14));
    ASSERT_TRUE(file.Save(recoveryServices.saver, Target));
    EXPECT_EQ(disk.Read(PreviousPath()), "[General]\r\nFontSize=12\r\n");
}

} // namespace
