#include "FaultTest.h"
#include "base/SaveCopy.h"
#include "support/FailureInjection.h"

#include <cstddef>
#include <cstring>

namespace {

constexpr const Char* CopyOfTarget = u"C:\\Recovery\\file.txt";

// What a copy begins with; the target follows.
struct CopyHeader {
    char magic[8];
    uint32_t version;
    uint32_t pathLength;
    uint64_t length;
    uint64_t value;
    uint64_t check;
};

// Leaves the copy of a save that an editor did not bring to its end.
class SaveRecoveryTest : public FaultTest {
protected:
    void LeaveCopy(const std::u16string& target = Target, const std::string& bytes = "new bytes") {
        BlockSource source(bytes.data(), bytes.size());
        SaveCopy copy;
        ASSERT_EQ(copy.Make(recoveryServices.folder, target.c_str(), source), SaveCopy::Outcome::Made);
    }
    std::u16string TheCopy() {
        const auto copies = disk.Names(u"C:\\Recovery\\Copies\\", u".save");
        EXPECT_EQ(copies.size(), 1u);
        return copies.empty() ? u"" : u"C:\\Recovery\\Copies\\" + copies[0];
    }
};

TEST_F(SaveRecoveryTest, NothingIsTheUsualThing) {
    SaveRecovery recovery;
    recovery.Look(recoveryServices.folder);
    EXPECT_TRUE(recovery.IsEmpty());
}

TEST_F(SaveRecoveryTest, TheUserIsToldWhereTheNewBytesAre) {
    disk.Write(Target, "half");
    LeaveCopy();
    EXPECT_EQ(StartAgain().message, u"S:\\work\\file.txt was not saved completely.\n"
                                    u"Its new contents are in C:\\Recovery\\file.txt.");
    EXPECT_EQ(disk.Read(CopyOfTarget), "new bytes");
    EXPECT_EQ(disk.Read(Target), "half");
    EXPECT_EQ(StartAgain().message, u"");
    EXPECT_EQ(disk.Read(CopyOfTarget), "new bytes");
}

TEST_F(SaveRecoveryTest, UntilTheUserWasToldItIsFoundAgain) {
    LeaveCopy();
    {
        SaveRecovery killed;
        killed.Look(recoveryServices.folder);
        EXPECT_FALSE(killed.IsEmpty());
    }
    EXPECT_EQ(StartAgain().named, u"C:\\Recovery\\2 file.txt");
}

TEST_F(SaveRecoveryTest, ATakenNameGetsANumber) {
    disk.Write(CopyOfTarget, "the user's");
    LeaveCopy();
    EXPECT_EQ(StartAgain().named, u"C:\\Recovery\\2 file.txt");
    EXPECT_EQ(disk.Read(CopyOfTarget), "the user's");
    EXPECT_EQ(disk.Read(u"C:\\Recovery\\2 file.txt"), "new bytes");
}

TEST_F(SaveRecoveryTest, WhereAllNamesAreTakenTheCopyItselfIsNamedAndStays) {
    const auto nameOf = [](int number) {
        const std::string digits = number == 1 ? "" : std::to_string(number) + " ";
        return u"C:\\Recovery\\" + std::u16string(digits.begin(), digits.end()) + u"file.txt";
    };
    for (int number = 1; number <= 200; ++number) disk.Write(nameOf(number), "the user's");
    LeaveCopy();
    const std::u16string copy = TheCopy();
    EXPECT_EQ(StartAgain().named, copy);
    EXPECT_TRUE(disk.Has(copy));
    for (int number = 1; number <= 200; ++number) EXPECT_EQ(disk.Read(nameOf(number)), "the user's") << number;
}

TEST_F(SaveRecoveryTest, SeveralAreToldInOneMessage) {
    LeaveCopy();
    LeaveCopy(u"S:\\work\\other.txt");
    const std::u16string message = StartAgain().message;
    EXPECT_NE(message.find(u"S:\\work\\file.txt was not saved completely.\n"), std::u16string::npos);
    EXPECT_NE(message.find(u"\nS:\\work\\other.txt was not saved completely.\n"), std::u16string::npos);
}

// More than a message box shows would be forgotten without having been told.
TEST_F(SaveRecoveryTest, OfManyAFewAreToldAtEachStart) {
    for (int i = 0; i < 12; ++i) LeaveCopy((u"S:\\work\\" + std::u16string(1, static_cast<Char>(u'a' + i))).c_str());
    std::u16string told;
    for (const size_t expected : {5u, 5u, 2u, 0u}) {
        const std::u16string message = StartAgain().message;
        size_t count = 0;
        for (size_t at = 0; (at = message.find(u"was not saved", at)) != std::u16string::npos; ++at) ++count;
        EXPECT_EQ(count, expected);
        told += message;
    }
    for (Char name = u'a'; name < u'a' + 12; ++name)
        EXPECT_NE(told.find(u"S:\\work\\" + std::u16string(1, name) + u" was not"), std::u16string::npos);
}

TEST_F(SaveRecoveryTest, AFileThatHasTheNewBytesIsNotMentioned) {
    disk.Write(Target, "new bytes");
    LeaveCopy();
    EXPECT_EQ(StartAgain().message, u"");
    EXPECT_EQ(disk.FilesBeside({Target}), std::vector<std::u16string>{});
}

TEST_F(SaveRecoveryTest, CopiesOfARunningEditorAreLeftAlone) {
    BlockSource source("bytes", 5);
    SaveCopy running;
    ASSERT_EQ(running.Make(recoveryServices.folder, Target, source), SaveCopy::Outcome::Made);
    EXPECT_EQ(StartAgain().message, u"");
    EXPECT_EQ(disk.FilesBeside({}).size(), 1u);
    running.Discard();
    EXPECT_EQ(disk.FilesBeside({}).size(), 0u);
}

TEST_F(SaveRecoveryTest, TwoStartsDoNotTellTheSame) {
    LeaveCopy();
    SaveRecovery first;
    first.Look(recoveryServices.folder);
    SaveRecovery second;
    second.Look(recoveryServices.folder);
    EXPECT_TRUE(second.IsEmpty());
}

TEST_F(SaveRecoveryTest, WhatIsNoCompleteCopyGoes) {
    LeaveCopy();
    const std::u16string path = TheCopy();
    const std::string whole = disk.Read(path);
    for (size_t length = 0; length < whole.size(); ++length) {
        disk.Write(path, whole.substr(0, length));
        EXPECT_EQ(StartAgain().message, u"") << length;
        EXPECT_FALSE(disk.Has(path)) << length;
    }
    for (size_t at = 0; at < whole.size(); ++at) {
        std::string damaged = whole;
        damaged[at] = static_cast<char>(damaged[at] ^ 0x40);
        disk.Write(path, damaged);
        EXPECT_EQ(StartAgain().message, u"") << at;
        const bool isOfANewerProgram = at >= 8 && at < 12;
        EXPECT_EQ(disk.Has(path), isOfANewerProgram) << at;
    }
    disk.Write(path, whole + "more");
    EXPECT_EQ(StartAgain().message, u"");
}

TEST_F(SaveRecoveryTest, ACopyForNoFileIsNone) {
    LeaveCopy();
    const std::u16string path = TheCopy();
    const std::string whole = disk.Read(path);
    CopyHeader header;
    std::memcpy(&header, whole.data(), sizeof(header));
    const std::string bytes = whole.substr(sizeof(header) + header.pathLength * sizeof(Char));
    header.pathLength = 0;
    Checksum sum;
    sum.Add(&header, offsetof(CopyHeader, check));
    header.check = sum.Value();
    disk.Write(path, std::string(reinterpret_cast<const char*>(&header), sizeof(header)) + bytes);
    EXPECT_EQ(StartAgain().message, u"");
    EXPECT_EQ(disk.FilesBeside({}).size(), 0u);
}

// So begin the copies that all versions of the program read and write.
TEST_F(SaveRecoveryTest, ACopyBeginsWithItsMarkAndVersion) {
    LeaveCopy();
    const std::string start = disk.Read(TheCopy()).substr(0, 12);
    EXPECT_EQ(start, std::string("OrvSave\x1A\x01\0\0\0", 12));
}

TEST_F(SaveRecoveryTest, ForAPathThatNoFileCanHaveThereIsNoCopy) {
    BlockSource source("bytes", 5);
    SaveCopy copy;
    EXPECT_EQ(copy.Make(recoveryServices.folder, std::u16string(0x8000, u'n').c_str(), source),
              SaveCopy::Outcome::NoCopy);
    EXPECT_FALSE(copy.IsMade());
    EXPECT_EQ(copy.Length(), 5u); // the sum is wanted all the same
    EXPECT_EQ(disk.FilesBeside({}).size(), 0u);
}

TEST_F(SaveRecoveryTest, ACopyThatIsCutWhileItIsReadIsNotTold) {
    const std::string bytes(100000, 'n');
    int reads = 0; // of the header, of the path, then of the bytes
    for (uint64_t call = 1; reads < 3 && call < 50; ++call) {
        Reset();
        LeaveCopy(Target, bytes);
        const std::u16string path = TheCopy();
        disk.FailAt(call, FakeDisk::Fault::Shortened);
        const std::u16string message = StartAgain().message;
        if (!disk.HasFailed()) continue;
        ++reads;
        EXPECT_EQ(message, u"") << call;
        EXPECT_EQ(disk.Has(path), reads < 3) << "what cannot be read may be read the next time";
        disk.StopFailing();
        EXPECT_EQ(StartAgain().message, u"") << call;
        EXPECT_EQ(disk.FilesBeside({}).size(), 0u);
    }
    EXPECT_EQ(reads, 3);
}

TEST_F(SaveRecoveryTest, AFileOnAnotherMachineIsNotAskedFor) {
    constexpr const Char* Remote = u"\\\\server\\share\\file.txt";
    disk.Write(Remote, "new bytes");
    LeaveCopy(Remote);
    const std::u16string message = StartAgain().message;
    EXPECT_NE(message.find(std::u16string(Remote) + u" was not saved completely.\n"), std::u16string::npos);
    EXPECT_EQ(disk.Read(CopyOfTarget), "new bytes");
}

TEST_F(SaveRecoveryTest, WithoutRoomTheCopyItselfIsNamedAndStays) {
    LeaveCopy();
    const std::u16string path = TheCopy();
    disk.FailAt(1, FakeDisk::Fault::Full);
    EXPECT_EQ(StartAgain().named, path);
    EXPECT_EQ(disk.FilesBeside({path}), std::vector<std::u16string>{});
    disk.StopFailing();
    EXPECT_EQ(StartAgain().named, CopyOfTarget);
}

TEST_F(SaveRecoveryTest, EveryAllocationThatFailsLeavesTheBytes) {
    // Longer than the names of copies, which then have no room for it.
    const std::u16string name = std::u16string(100, u'n') + u".txt";
    const std::u16string target = u"S:\\work\\" + name;
    const std::u16string taken = u"C:\\Recovery\\" + name;
    const uint64_t failures = FailEachAllocation([&] {
        {
            const FailurePause pause;
            Reset();
            disk.Write(target, "half");
            disk.Write(taken, "the user's");
            LeaveCopy(target);
        }
        bool isTold = false;
        {
            SaveRecovery recovery;
            recovery.Look(recoveryServices.folder);
            WString message;
            isTold = !recovery.IsEmpty() && recovery.AppendMessage(message);
            EXPECT_EQ(isTold, !message.IsEmpty());
        }
        // Nothing was forgotten: the next start tells it.
        const FailurePause pause;
        EXPECT_TRUE(disk.Holds(StartAgain().named, "new bytes"));
        EXPECT_EQ(disk.Read(target), "half");
        EXPECT_EQ(disk.Read(taken), "the user's");
        EXPECT_EQ(disk.OpenFiles(), 0u);
        return isTold;
    });
    EXPECT_GT(failures, 5u);
}

TEST_F(SaveRecoveryTest, EveryCallThatFailsLeavesTheBytes) {
    for (const Case& tried : Cases) {
        bool isReached = true;
        for (uint64_t number = 1; isReached && number < 100; ++number) {
            SCOPED_TRACE(std::string(tried.name) + " at call " + std::to_string(number));
            Reset();
            disk.Write(Target, "half");
            LeaveCopy();
            disk.FailAt(number, tried.fault);
            const std::u16string first = StartAgain().named;
            isReached = disk.Calls() >= number;
            disk.Restart(tried.unflushed);
            const std::u16string second = StartAgain().named;
            EXPECT_TRUE((!first.empty() && disk.Holds(first, "new bytes")) ||
                        (!second.empty() && disk.Holds(second, "new bytes")));
            const bool hasStopped = tried.fault == FakeDisk::Fault::Killed || tried.fault == FakeDisk::Fault::PowerCut;
            if (!hasStopped) {
                EXPECT_EQ(disk.FilesBeside({Target, first, second}), std::vector<std::u16string>{});
            }
        }
    }
}

} // namespace
