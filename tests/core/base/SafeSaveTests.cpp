#include "base/Checksum.h"
#include "base/Platform.h"
#include "base/PreviousFile.h"
#include "base/SaveRecovery.h"
#include "support/FailureInjection.h"
#include "support/NoRecoveryFolder.h"
#include "support/Random.h"
#include "support/ScratchFolder.h"
#include "support/TestRecovery.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <string>

namespace {

uint64_t ValueOf(const std::string& bytes) {
    Checksum sum;
    sum.Add(bytes.data(), bytes.size());
    return sum.Value();
}

bool Save(const std::u16string& path, const std::string& bytes, Replaced replaced = Replaced::Dropped) {
    BlockSource source(bytes.data(), bytes.size());
    return recoveryServices.saver.Save(path.c_str(), source, replaced) == SaveResult::Saved;
}

// What is in the recovery folder, and below it where `inside` says so.
size_t CountRecoveryFiles(const Char* inside) {
    WString pattern;
    EXPECT_TRUE(recoveryServices.folder.Make(inside, pattern) && pattern.Append(u"\\*"));
    Platform::FileSearch search;
    size_t count = 0;
    for (bool more = search.First(pattern.Text()); more; more = search.Next()) count += !search.IsDirectory();
    return count;
}

// Bytes that cannot be made to their end.
class BrokenSource final : public ByteSource {
public:
    bool GiveTo(ByteSink& out) override { return out.Take("half", 4) && false; }
};

} // namespace

TEST(Checksum, DoesNotDependOnThePieces) {
    std::mt19937 random(7);
    std::string bytes;
    for (int i = 0; i < 1000; ++i) bytes.push_back(static_cast<char>(random()));
    const uint64_t whole = ValueOf(bytes);
    for (int round = 0; round < 200; ++round) {
        Checksum sum;
        for (size_t at = 0; at < bytes.size();) {
            const size_t count = std::min<size_t>(random() % 30, bytes.size() - at);
            sum.Add(bytes.data() + at, count);
            at += count;
        }
        EXPECT_EQ(sum.Value(), whole);
        EXPECT_EQ(sum.Count(), bytes.size());
    }
}

TEST(Checksum, TellsBytesApart) {
    EXPECT_NE(ValueOf(""), ValueOf(std::string(1, '\0')));
    EXPECT_NE(ValueOf(std::string(8, '\0')), ValueOf(std::string(16, '\0')));
    EXPECT_NE(ValueOf("abcdefgh12345678"), ValueOf("12345678abcdefgh"));
    std::string bytes(100, 'x');
    const uint64_t value = ValueOf(bytes);
    for (char& c : bytes) {
        c = 'y';
        EXPECT_NE(ValueOf(bytes), value);
        c = 'x';
    }
}

TEST(SafeSave, ReplacesLongerAndShorterFilesAndMakesNewOnes) {
    const ScratchFolder folder;
    for (const size_t length : {0u, 5u, 100000u, 7u, 0u}) {
        ASSERT_TRUE(Save(folder.Path("f"), std::string(length, 'x')));
        EXPECT_EQ(folder.Read("f"), std::string(length, 'x'));
    }
    EXPECT_EQ(CountRecoveryFiles(u"Copies"), 0u);
}

TEST(SafeSave, TheFileStaysTheSameOne) {
    const ScratchFolder folder;
    folder.Write("f", "old");
    std::error_code error;
    std::filesystem::create_hard_link(folder.File("f"), folder.File("link"), error);
    if (error) GTEST_SKIP() << "no links here";
    ASSERT_TRUE(Save(folder.Path("f"), "new"));
    EXPECT_EQ(folder.Read("link"), "new");
}

TEST(SafeSave, BytesThatCannotBeMadeCostNothing) {
    const ScratchFolder folder;
    const std::u16string path = folder.Write("f", "old");
    BrokenSource source;
    EXPECT_EQ(recoveryServices.saver.Save(path.c_str(), source), SaveResult::Untouched);
    {
        const NoRecoveryFolder withoutCopy;
        EXPECT_EQ(recoveryServices.saver.Save(path.c_str(), source), SaveResult::Untouched);
    }
    EXPECT_EQ(folder.Read("f"), "old");
    EXPECT_EQ(recoveryServices.saver.Save(folder.Path("none").c_str(), source), SaveResult::Untouched);
    EXPECT_EQ(Platform::EntryKind(folder.Path("none").c_str()), Platform::Entry::Missing);
    EXPECT_EQ(CountRecoveryFiles(u"Copies"), 0u);
}

TEST(SafeSave, WhatCannotBeOpenedLeavesNoCopy) {
    const ScratchFolder folder;
    EXPECT_FALSE(Save(u"", "bytes"));
    EXPECT_FALSE(Save(folder.Path("no\\such\\file"), "bytes"));
    EXPECT_FALSE(Save(folder.Path(""), "bytes"));
    EXPECT_EQ(CountRecoveryFiles(u"Copies"), 0u);
}

TEST(SafeSave, WithoutMemoryTheFileIsNotTouched) {
    const ScratchFolder folder;
    const std::u16string path = folder.Path("f");
    const uint64_t failures = FailEachAllocation([&] {
        {
            const FailurePause pause;
            folder.Write("f", "old");
        }
        const bool isSaved = Save(path, "new", Replaced::Kept);
        const FailurePause pause;
        EXPECT_EQ(folder.Read("f"), isSaved ? "new" : "old");
        // Without memory for its name the copy of a file that was saved stays; the next start removes it.
        EXPECT_LE(CountRecoveryFiles(u"Copies"), isSaved ? 1u : 0u);
        SaveRecovery recovery;
        recovery.Look(recoveryServices.folder);
        EXPECT_TRUE(recovery.IsEmpty());
        return isSaved;
    });
    EXPECT_GE(failures, 5u);
    EXPECT_EQ(CountRecoveryFiles(u"Copies"), 0u);
}

TEST(SafeSave, ASaveUnderAnotherNameOfTheFileRemovesTheCopyOfOneThatFailed) {
    const ScratchFolder folder;
    const std::u16string path = folder.Write("f", "old");
    std::error_code error;
    std::filesystem::create_hard_link(folder.File("f"), folder.File("link"), error);
    if (error) GTEST_SKIP() << "no links here";
    size_t copies = 0;
    FailEachFileCall([&] {
        const bool isSaved = Save(path, "new");
        const FailurePause pause;
        const size_t left = CountRecoveryFiles(u"Copies");
        copies += !isSaved && left;
        EXPECT_TRUE(Save(folder.Path("link"), "newer"));
        // One that could not be removed is the next start's.
        EXPECT_EQ(CountRecoveryFiles(u"Copies"), isSaved ? left : 0u);
        SaveRecovery().Look(recoveryServices.folder);
        return isSaved;
    });
    EXPECT_GT(copies, 0u);
    EXPECT_EQ(folder.Read("f"), "newer");
}

TEST(SafeSave, KeepsWhatWasReplacedOnRequestOnly) {
    const ScratchFolder folder;
    const std::u16string path = folder.Write("f", "one");
    WString kept;
    ASSERT_TRUE(PreviousFilePath(recoveryServices.folder, path.c_str(), kept));
    ASSERT_TRUE(Save(path, "two"));
    EXPECT_EQ(Platform::EntryKind(kept.Text()), Platform::Entry::Missing);
    ASSERT_TRUE(Save(path, "three", Replaced::Kept));
    Platform::ByteBlock block;
    ASSERT_TRUE(Platform::ReadWholeFile(kept.Text(), block));
    EXPECT_EQ(std::string(reinterpret_cast<const char*>(block.bytes), block.size), "two");
}

TEST(PreviousFile, EachFileHasAPlaceOfItsOwnHoweverItIsSpelled) {
    WString one;
    WString same;
    WString other;
    ASSERT_TRUE(PreviousFilePath(recoveryServices.folder, u"C:\\a\\orvane.ini", one));
    ASSERT_TRUE(PreviousFilePath(recoveryServices.folder, u"c:\\A\\orvane.ini", same));
    ASSERT_TRUE(PreviousFilePath(recoveryServices.folder, u"C:\\b\\orvane.ini", other));
    EXPECT_EQ(std::u16string(one.Text()), same.Text());
    EXPECT_NE(std::u16string(one.Text()), other.Text());
}

TEST(RecoveryFolder, IsMadeWithAllThatItIsIn) {
    const ScratchFolder folder;
    const std::u16string path = folder.Path("a\\b\\c");
    const Char* const before = Platform::SetRecoveryFolder(path.c_str());
    WString made;
    EXPECT_TRUE(recoveryServices.folder.Make(u"inside", made));
    EXPECT_EQ(std::u16string(made.Text()), path + u"\\inside");
    EXPECT_EQ(Platform::EntryKind(made.Text()), Platform::Entry::Directory);
    EXPECT_TRUE(recoveryServices.folder.Make(u"inside", made));
    Platform::SetRecoveryFolder(before);
}

TEST(RecoveryFolder, FailsWhereNoFolderCanBe) {
    const ScratchFolder scratch;
    const std::u16string below = scratch.Write("file", "") + u"\\Recovery";
    for (const std::u16string& path : {below, std::u16string()}) {
        const Char* const before = Platform::SetRecoveryFolder(path.c_str());
        WString folder;
        ASSERT_TRUE(folder.Assign(u"as it was"));
        EXPECT_FALSE(recoveryServices.folder.Make(u"", folder));
        EXPECT_EQ(std::u16string(folder.Text()), u"as it was");
        Platform::SetRecoveryFolder(before);
    }
}

TEST(RecoveryFolder, TheSystemsOwnIsTheUsersAndTheProgramsAndIsRemembered) {
    RecoveryFolder own;
    WString folder;
    WString again;
    const Char* const before = Platform::SetRecoveryFolder(nullptr);
    const ScratchFolder scratch;
    const std::string variable = "XDG_DATA_HOME=" + scratch.File("").string();
    putenv(const_cast<char*>(variable.c_str()));
    EXPECT_TRUE(own.Make(u"", folder));
    putenv(const_cast<char*>("XDG_DATA_HOME=/nowhere"));
    EXPECT_TRUE(own.GetPath(u"", again));
    Platform::SetRecoveryFolder(before);
    putenv(const_cast<char*>("XDG_DATA_HOME="));
    EXPECT_TRUE(std::u16string(folder.Text()).ends_with(u"\\Orvane\\Recovery"));
    EXPECT_EQ(std::u16string(again.Text()), folder.Text());
}

TEST(MoveOver, TheFileUnderTheOtherNameIsTheMovedOne) {
    const ScratchFolder folder;
    const std::u16string from = folder.Path("new");
    const std::u16string to = folder.Path("kept");
    for (const char* before : {"", "the old one, which is longer"}) {
        if (*before) folder.Write("kept", before);
        folder.Write("new", "the new one");
        EXPECT_TRUE(Platform::MoveOver(from.c_str(), to.c_str()));
        EXPECT_EQ(folder.Read("kept"), "the new one");
        EXPECT_EQ(Platform::EntryKind(from.c_str()), Platform::Entry::Missing);
    }
    EXPECT_FALSE(Platform::MoveOver(from.c_str(), to.c_str()));
    EXPECT_EQ(folder.Read("kept"), "the new one");
}

TEST(RemoveFile, RemovesFilesOnly) {
    const ScratchFolder folder;
    folder.Write("f", "content");
    EXPECT_TRUE(Platform::RemoveFile(folder.Path("f").c_str()));
    EXPECT_EQ(Platform::EntryKind(folder.Path("f").c_str()), Platform::Entry::Missing);
    EXPECT_FALSE(Platform::RemoveFile(folder.Path("f").c_str()));
    EXPECT_FALSE(Platform::RemoveFile(folder.Path("").c_str()));
}
