// Ending a command with everything that it has started.

#include "core/document/RunSupport.h"

namespace {

class RunEndTest : public RunTest {
protected:
    // A command that goes on, and so does a child of its own, which is started by `instruction`; each holds a file.
    void RunWithChild(TextBuffer& document, const std::string& instruction) {
        speaker.Folder().Write("child", "hold " + speaker.File("of child") + "\n" + speaker.Tell("born") +
                                            speaker.WaitFor("end"));
        ASSERT_TRUE(Run(document, "hold " + speaker.File("of parent") + "\n" + instruction + " " +
                                      speaker.File("child") + "\n" + speaker.WaitFor("end")));
        ASSERT_TRUE(speaker.Got("born"));
        ASSERT_FALSE(IsFree("of parent") || IsFree("of child"));
    }
    // Whether nobody holds the file any more.
    bool IsFree(const std::string& name) const {
        Platform::File file;
        return file.Open(speaker.Folder().Path(name).c_str(), Platform::File::Mode::Alone);
    }
    bool IsFreed(const std::string& name) const {
        return SpeakerScripts::Eventually([&] { return IsFree(name); });
    }
};

} // namespace

TEST_F(RunEndTest, EverythingThatTheCommandHasStartedEndsWithIt) {
    TextDocument document;
    ASSERT_NO_FATAL_FAILURE(RunWithChild(*document, "child"));
    document->Output().EndAll();
    EXPECT_TRUE(PollToTheEnd(*document));
    EXPECT_TRUE(IsFreed("of parent"));
    EXPECT_TRUE(IsFreed("of child"));
}

TEST_F(RunEndTest, AProgramThatWasStartedToLiveOnItsOwnIsKept) {
    TextDocument document;
    ASSERT_NO_FATAL_FAILURE(RunWithChild(*document, "leave"));
    document->Output().EndAll();
    EXPECT_TRUE(PollToTheEnd(*document));
    EXPECT_TRUE(IsFreed("of parent"));
    EXPECT_FALSE(IsFree("of child"));
    speaker.Give("end");
    EXPECT_TRUE(IsFreed("of child"));
}

TEST_F(RunEndTest, TheEndOfARunOrOfItsDocumentEndsNothing) {
    for (const bool closes : {false, true}) {
        TextDocument document;
        ASSERT_NO_FATAL_FAILURE(RunWithChild(*document, "child"));
        if (closes)
            document->EndRun();
        else
            document->StopProcess();
        EXPECT_FALSE(IsFree("of parent"));
        EXPECT_FALSE(IsFree("of child"));
        speaker.Give("end");
        EXPECT_TRUE(IsFreed("of parent"));
        EXPECT_TRUE(IsFreed("of child"));
        for (const char* name : {"born", "end"}) std::filesystem::remove(speaker.File(name));
        EXPECT_TRUE(PollToTheEnd(*document)); // at once when it was closed
    }
}

TEST_F(RunEndTest, WhetherItWasAskedToCloseIsForgottenWithTheRun) {
    TextDocument document;
    ASSERT_TRUE(RunSilently(*document));
    EXPECT_FALSE(document->Output().WasAskedToClose());
    document->StopProcess();
    EXPECT_TRUE(document->Output().WasAskedToClose());
    document->Output().EndAll();
    EXPECT_TRUE(PollToTheEnd(*document));
    EXPECT_FALSE(document->Output().WasAskedToClose());
    document->StopProcess();
    EXPECT_FALSE(document->Output().WasAskedToClose());
    document->Output().EndAll(); // nothing runs
}
