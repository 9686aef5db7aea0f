#pragma once

#include "FakeDisk.h"
#include "base/SaveRecovery.h"
#include "support/TestRecovery.h"

#include <gtest/gtest.h>

#include <functional>
#include <string>
#include <vector>

// Saves a file on the disk in memory while each call on files fails in turn, in every way, and looks each time for its
// bytes as the next start would.
class FaultTest : public ::testing::Test {
protected:
    static constexpr const Char* Target = u"S:\\work\\file.txt";
    static constexpr const Char* Recovery = u"C:\\Recovery";

    FaultTest() : folderBefore(Platform::SetRecoveryFolder(Recovery)) { Reset(); }
    ~FaultTest() override {
        LeaveSaveCopies();
        Platform::SetRecoveryFolder(folderBefore);
    }

    void Reset() {
        LeaveSaveCopies();
        disk.Clear();
    }

    // What the next start finds and tells.
    struct Start {
        std::u16string message;
        std::u16string named; // where the message says that bytes are; empty without one
    };
    Start StartAgain() {
        Start start;
        SaveRecovery recovery;
        recovery.Look(recoveryServices.folder);
        WString text;
        EXPECT_TRUE(recovery.AppendMessage(text));
        recovery.Forget();
        start.message = text.Text();
        const std::u16string before = u"Its new contents are in ";
        const size_t at = start.message.rfind(before);
        if (at != std::u16string::npos) {
            start.named = start.message.substr(at + before.size());
            start.named.pop_back(); // the full stop
        }
        return start;
    }

    struct Case {
        const char* name;
        FakeDisk::Fault fault;
        FakeDisk::Unflushed unflushed;
    };
    static constexpr Case Cases[] = {
        {"denied", FakeDisk::Fault::Denied, FakeDisk::Unflushed::Kept},
        {"in use", FakeDisk::Fault::InUse, FakeDisk::Unflushed::Kept},
        {"short write", FakeDisk::Fault::ShortWrite, FakeDisk::Unflushed::Kept},
        {"disk full", FakeDisk::Fault::Full, FakeDisk::Unflushed::Kept},
        {"name gone", FakeDisk::Fault::Gone, FakeDisk::Unflushed::Kept},
        {"killed", FakeDisk::Fault::Killed, FakeDisk::Unflushed::Kept},
        {"power cut, lost", FakeDisk::Fault::PowerCut, FakeDisk::Unflushed::Lost},
        {"power cut, kept", FakeDisk::Fault::PowerCut, FakeDisk::Unflushed::Kept},
        {"power cut, zeros", FakeDisk::Fault::PowerCut, FakeDisk::Unflushed::Zeros},
    };

    // How one kind of file is saved.
    struct Saving {
        std::function<void()> prepare;     // what is to be saved; nothing fails yet
        std::function<bool()> save;        // whether it says that it has saved
        std::function<void(bool)> inspect; // what is in memory afterwards, before anything is started again
        std::string before;                // the file's old bytes, or Missing
        std::string after;                 // its new ones
        bool keepsPrevious = false;
    };
    static constexpr const char* Missing = "(missing)";
    static constexpr const char* OlderGeneration = "what an earlier save has replaced";

    // Every call fails in turn in every way, until the save runs through.
    void FailEverything(const Saving& saving) {
        for (const Case& tried : Cases) {
            uint64_t number = 1;
            for (bool isReached = true; isReached && number < 200; ++number) {
                SCOPED_TRACE(std::string(tried.name) + " at call " + std::to_string(number));
                isReached = FailOnce(saving, tried, number);
                if (HasFailure()) return;
            }
            EXPECT_GT(number, 10u) << tried.name << " was hardly tried";
        }
    }

    // Whether the save made as many calls.
    bool FailOnce(const Saving& saving, const Case& tried, uint64_t number) {
        Reset();
        if (saving.before != Missing) disk.Write(Target, saving.before);
        if (saving.keepsPrevious) disk.Write(PreviousPath(), OlderGeneration);
        saving.prepare();
        disk.FailAt(number, tried.fault);
        const bool isSaved = saving.save();
        const bool isReached = disk.Calls() >= number;
        EXPECT_TRUE(isSaved || disk.HasFailed()) << "fails although nothing was made to fail";
        disk.StopFailing();
        saving.inspect(isSaved);
        disk.Restart(tried.unflushed);
        LeaveSaveCopies();
        ExpectBytes(saving, isSaved,
                    tried.fault == FakeDisk::Fault::Killed || tried.fault == FakeDisk::Fault::PowerCut);
        return isReached;
    }

    void ExpectBytes(const Saving& saving, bool isSaved, bool hasStopped) {
        const Start start = StartAgain();
        const std::string held = disk.Read(Target);
        const bool isNamed = !start.named.empty() && disk.Holds(start.named, saving.after);
        EXPECT_TRUE(held == saving.before || held == saving.after || isNamed) << "neither the old nor the new bytes";
        if (isSaved) {
            EXPECT_EQ(held, saving.after);
            EXPECT_TRUE(start.named.empty());
        }
        std::set<std::u16string> known{Target, start.named};
        if (saving.keepsPrevious) {
            const std::string kept = disk.Read(PreviousPath());
            EXPECT_TRUE(kept == OlderGeneration || kept == saving.before) << "no whole generation: " << kept;
            known.insert(PreviousPath());
            if (hasStopped) known.insert(PreviousPath() + u".new");
        }
        EXPECT_EQ(disk.FilesBeside(known), std::vector<std::u16string>{}) << "stray files";
        EXPECT_TRUE(StartAgain().named.empty()) << "told twice";
        EXPECT_EQ(disk.OpenFiles(), 0u);
    }

    // Where the generation of Target before the last save is kept.
    static std::u16string PreviousPath();

    FakeDisk& disk = FakeDisk::Get();
    const Char* folderBefore;
};
