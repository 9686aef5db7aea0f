#include "document/OutputCollector.h"

#include "support/Speaker.h"

#include <filesystem>
#include <gtest/gtest.h>
#include <string>

namespace {

struct OutputCollectorTest : testing::Test {
    bool Start(const std::string& script) {
        if (!output.Open() || !store.EnsureCapacity(0)) return false;
        return output.Start(speaker.Command(script).c_str(),
                            std::filesystem::temp_directory_path().u16string().c_str());
    }
    std::u16string Text() const { return {store.Text(), store.Length()}; }

    SpeakerScripts speaker;
    TextStore store;
    OutputCollector output{store};
};

} // namespace

TEST_F(OutputCollectorTest, NothingRunsAtFirst) {
    EXPECT_FALSE(output.IsRunning());
    output.AskToClose();
    output.Close();
    EXPECT_FALSE(output.IsRunning());
}

TEST_F(OutputCollectorTest, WhatACommandPrintsIsAppendedUntilItEnds) {
    ASSERT_TRUE(Start("say first\n" + speaker.WaitFor("go") + "say last"));
    EXPECT_TRUE(output.IsRunning());
    ASSERT_TRUE(SpeakerScripts::Eventually([this] { return output.Poll() || Text() == u"first"; }));
    EXPECT_EQ(Text(), u"first");
    speaker.Give("go");
    ASSERT_TRUE(SpeakerScripts::Eventually([this] { return output.Poll(); }));
    EXPECT_TRUE(output.IsRunning()) << "until it is closed";
    output.Close();
    EXPECT_FALSE(output.IsRunning());
    EXPECT_EQ(output.Run().consumed, 0u);
}

TEST_F(OutputCollectorTest, TextOfTheOwnerStaysInFront) {
    ASSERT_TRUE(store.Insert(0, u"before\n", {7, 1}));
    ASSERT_TRUE(Start("say one"));
    ASSERT_TRUE(SpeakerScripts::Eventually([this] { return output.Poll() || Text() == u"before\none"; }));
    EXPECT_EQ(Text(), u"before\none");
    EXPECT_EQ(store.LineCount(), 2u);
}
