#include "base/FileBytes.h"

#include "base/Checksum.h"
#include "support/FailureInjection.h"
#include "support/ScratchFolder.h"

#include <gtest/gtest.h>
#include <string>

namespace {

// Keeps what it takes, up to a limit.
class StringSink final : public ByteSink {
public:
    bool Take(const void* bytes, size_t count) override {
        taken.append(static_cast<const char*>(bytes), count);
        return taken.size() <= limit;
    }

    std::string taken;
    size_t limit = SIZE_MAX;
};

std::string Bytes(size_t count) {
    std::string bytes;
    for (size_t i = 0; i < count; ++i) bytes += static_cast<char>(i * 7 + i / 251);
    return bytes;
}

class FileBytes : public ::testing::Test {
protected:
    void Open(const std::string& bytes) {
        ASSERT_TRUE(file.Open(folder.Write("f", bytes).c_str(), Platform::File::Mode::ReadShared));
    }

    ScratchFolder folder;
    Platform::File file;
    StringSink sink;
};

} // namespace

// Around the pieces in which a file is read.
TEST_F(FileBytes, FilesOfEverySizeArePassedOnWhole) {
    for (const size_t size : {0u, 1u, 2u, 65535u, 65536u, 65537u, 131072u, 131073u, 200000u}) {
        const std::string bytes = Bytes(size);
        Open(bytes);
        sink.taken.clear();
        EXPECT_TRUE(PassOn(file, sink));
        EXPECT_TRUE(sink.taken == bytes) << size;
        ASSERT_TRUE(file.Seek(0));
        Checksum sum;
        EXPECT_TRUE(AddUp(file, sum));
        Checksum wanted;
        wanted.Add(bytes.data(), bytes.size());
        EXPECT_EQ(sum.Count(), size);
        EXPECT_EQ(sum.Value(), wanted.Value());
    }
}

TEST_F(FileBytes, OnlyWhatIsLeftIsPassedOn) {
    const std::string bytes = Bytes(70000);
    Open(bytes);
    ASSERT_TRUE(file.Seek(69999));
    EXPECT_TRUE(PassOn(file, sink));
    EXPECT_EQ(sink.taken, bytes.substr(69999));
}

TEST_F(FileBytes, WhatIsNotTakenEndsIt) {
    Open(Bytes(200000));
    sink.limit = 100000;
    EXPECT_FALSE(PassOn(file, sink));
    EXPECT_LT(sink.taken.size(), 200000u);
}

TEST_F(FileBytes, EveryFailureIsTold) {
    const std::string bytes = Bytes(200000);
    Open(bytes);
    const auto passOn = [&] {
        {
            const FailurePause pause;
            EXPECT_TRUE(file.Seek(0));
            sink.taken.clear();
        }
        const bool isPassed = PassOn(file, sink);
        EXPECT_EQ(isPassed, sink.taken == bytes);
        return isPassed;
    };
    EXPECT_EQ(FailEachAllocation(passOn), 1u);
    EXPECT_GE(FailEachFileCall(passOn), 4u);
}
