#include "document/SlowDrives.h"

#include <gtest/gtest.h>
#include <string>
#include <vector>

namespace {

constexpr uint64_t Minute = 60'000;

// Files on one drive that always answers slowly, checked one after the other as the documents are.
class Share {
public:
    // Those that the drive was asked about, of the given ones.
    std::string Check(const std::string& files, uint64_t now) {
        std::string asked;
        for (const char file : files) {
            if (!drives.MayAsk(u"\\\\server\\share\\file", names + file, now)) continue;
            asked += file;
            drives.Answered(u"\\\\server\\share\\file", true, now);
        }
        return asked;
    }

private:
    char names[128] = {};
    SlowDrives drives;
};

} // namespace

TEST(SlowDrives, ADriveThatAnsweredSlowlyIsAskedOnceAMinute) {
    Share share;
    EXPECT_EQ(share.Check("a", 1000), "a");
    EXPECT_EQ(share.Check("a", 1001), "");
    EXPECT_EQ(share.Check("a", 1000 + Minute - 1), "");
    EXPECT_EQ(share.Check("a", 1000 + Minute), "a");
    EXPECT_EQ(share.Check("a", 1000 + 2 * Minute - 1), "");
    EXPECT_EQ(share.Check("a", 1000 + 9 * Minute), "a");
}

TEST(SlowDrives, TheFilesOfADriveTakeTurns) {
    for (const uint64_t step : {Minute, 5 * Minute}) {
        Share share;
        std::string asked;
        for (uint64_t now = 0; now < 6 * step; now += step) {
            asked += share.Check("abc", now);
            EXPECT_EQ(share.Check("abc", now + 1), "");
        }
        EXPECT_EQ(asked, "abcabc");
    }
}

TEST(SlowDrives, AClosedFileLosesItsTurn) {
    Share share;
    EXPECT_EQ(share.Check("abc", 0), "a");
    EXPECT_EQ(share.Check("abc", 1), "");
    // Whose turn it would be is gone.
    std::string asked;
    for (int i = 0; i < 3 && asked.empty(); ++i) asked = share.Check("ac", Minute + static_cast<uint64_t>(i));
    EXPECT_EQ(asked, "c");
    EXPECT_EQ(share.Check("a", 2 * Minute + 9), "a");
}

TEST(SlowDrives, OneThatAnswersFastAgainIsAskedEveryTime) {
    SlowDrives drives;
    const char files[2] = {};
    drives.Answered(u"X:\\a", true, 0);
    EXPECT_FALSE(drives.MayAsk(u"X:\\b", files, 1));
    ASSERT_TRUE(drives.MayAsk(u"X:\\b", files, Minute));
    drives.Answered(u"X:\\b", false, Minute);
    EXPECT_TRUE(drives.MayAsk(u"X:\\a", files + 1, Minute));
    EXPECT_TRUE(drives.MayAsk(u"X:\\b", files, Minute));
}

TEST(SlowDrives, EachDriveAndShareRestsOnItsOwn) {
    const std::vector<std::u16string> paths = {u"X:\\a",
                                               u"Y:\\a",
                                               u"\\\\one\\share\\a",
                                               u"\\\\one\\other\\a",
                                               u"\\\\two\\share\\a",
                                               u"\\\\?\\UNC\\three\\share\\a",
                                               u"\\\\?\\UNC\\three\\other\\a",
                                               u"\\\\?\\Z:\\a"};
    for (const std::u16string& slow : paths) {
        SlowDrives drives;
        drives.Answered(slow.c_str(), true, 0);
        for (const std::u16string& path : paths) {
            const std::u16string other = path.substr(0, path.size() - 1) + u"folder\\b";
            EXPECT_EQ(drives.MayAsk(other.c_str(), &path, 1), path != slow);
        }
    }
    SlowDrives drives;
    drives.Answered(u"\\\\Server\\Share\\a", true, 0);
    EXPECT_FALSE(drives.MayAsk(u"\\\\server\\SHARE\\b", &drives, 1)) << "in whatever case";
    EXPECT_FALSE(drives.MayAsk(u"\\\\?\\UNC\\server\\share\\b", &drives, 1)) << "however it is written";
    EXPECT_TRUE(drives.MayAsk(u"\\\\?\\UNC\\server\\other\\b", &drives, 1));
}

TEST(SlowDrives, MoreDrivesAndFilesThanThereIsRoomForDoNoHarm) {
    SlowDrives drives;
    std::u16string path = u"A:\\a";
    std::vector<char> files(1000);
    for (int i = 0; i < 26; ++i, ++path[0]) {
        drives.Answered(path.c_str(), true, static_cast<uint64_t>(i));
        for (const char& file : files) EXPECT_FALSE(drives.MayAsk(path.c_str(), &file, 30));
    }
    path[0] = u'Z';
    EXPECT_TRUE(drives.MayAsk(path.c_str(), files.data(), Minute + 26));
}
