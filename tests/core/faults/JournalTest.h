#pragma once

#include "FaultTest.h"
#include "document/TextJournal.h"
#include "document/TextRecovery.h"
#include "support/Random.h"
#include "support/TextDocument.h"

#include <string>
#include <vector>

// Documents that keep journals on the disk in memory.
class JournalTest : public FaultTest {
protected:
    static constexpr const Char* Folder = u"C:\\Recovery\\Journals\\";

    JournalTest() {
        KeepJournals(true);
        Platform::SetTestClock(&clock);
    }
    ~JournalTest() override {
        KeepJournals(false);
        Platform::SetTestClock(nullptr);
    }

    std::vector<std::u16string> Journals() { return disk.Names(Folder, u".journal"); }
    // The bytes of the only journal; empty when there is none.
    std::string TheJournal() {
        const auto names = Journals();
        EXPECT_LE(names.size(), 1u);
        return names.empty() ? "" : disk.Read(Folder + names[0]);
    }

    struct Result {
        bool isReadable = false; // it has a header, and that is of this version
        RecoveryResult state = RecoveryResult::Failed;
        std::u16string name;
        std::u16string text;
        Encoding encoding = Encoding::Ansi;
        LineEnding style = LineEnding::None;
        bool HasText() const { return isReadable && (state == RecoveryResult::Whole || state == RecoveryResult::Cut); }
    };
    // What a journal with these bytes gives.
    Result Recover(const std::string& bytes) {
        constexpr const Char* Path = u"C:\\read";
        disk.Write(Path, bytes);
        Platform::File file;
        EXPECT_TRUE(file.Open(Path, Platform::File::Mode::Alone));
        JournalReader journal(file);
        Result result;
        result.isReadable = journal.ReadHeader() == JournalReader::State::Readable;
        if (!result.isReadable) return result;
        DecodedText text;
        result.name = journal.Name().Text();
        result.state = RecoverText(journal, text);
        if (text.text) result.text.assign(text.text, text.length);
        EXPECT_TRUE(!result.HasText() || text.text[text.length] == 0);
        EXPECT_TRUE(!result.HasText() ||
                    text.lineCount == 1 + std::count(result.text.begin(), result.text.end(), u'\n'));
        result.encoding = text.encoding;
        result.style = text.style;
        file.Close();
        EXPECT_TRUE(Platform::RemoveFile(Path));
        return result;
    }
    void ExpectJournalOf(const TextDocument& document) {
        const Result result = Recover(TheJournal());
        EXPECT_TRUE(result.isReadable);
        EXPECT_EQ(result.state, RecoveryResult::Whole);
        EXPECT_TRUE(result.text == document.Text());
    }

    uint64_t clock = 1000;
};
