#include "FaultTest.h"
#include "app/IncompleteSaves.h"
#include "base/SaveCopy.h"
#include "core/app/FakeFrame.h"

namespace {

class IncompleteSavesTest : public FaultTest {};

TEST_F(IncompleteSavesTest, NothingIsTheUsualThing) {
    FakeFrame user;
    TellIncompleteSaves(user);
    EXPECT_EQ(user.questions.size(), 0u);
}

TEST_F(IncompleteSavesTest, TheUserIsToldOnce) {
    {
        BlockSource source("new bytes", 9);
        SaveCopy left;
        ASSERT_EQ(left.Make(Target, source), SaveCopy::Outcome::Made);
    }
    FakeFrame user;
    // Until the answer the copy is there: the machine may stop before the user has read it.
    user.whileAsking = [this] { EXPECT_EQ(disk.FilesBeside({}).size(), 2u); };
    TellIncompleteSaves(user);
    ASSERT_EQ(user.questions.size(), 1u);
    EXPECT_EQ(user.questions[0].text, u"S:\\work\\file.txt was not saved completely.\n"
                                      u"Its new contents are in C:\\Recovery\\file.txt.");
    EXPECT_EQ(user.questions[0].kind, MessageKind::Warning);
    user.whileAsking = nullptr;
    TellIncompleteSaves(user);
    EXPECT_EQ(user.questions.size(), 1u);
}

} // namespace
