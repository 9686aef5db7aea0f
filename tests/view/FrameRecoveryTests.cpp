// What the frame does for the journals of its documents: it has a timer for them, from the start on, and leaves them
// when the session ends. The clock is the test's.

#include "CallCounter.h"
#include "app/LeftJournals.h"
#include "resource.h"
#include "support/ScratchFolder.h"
#include "view/OwnFrameTest.h"

namespace {

struct SetTimerCall {
    HWND window;
    UINT_PTR number;
};
std::vector<SetTimerCall> timers;

UINT_PTR WINAPI NoteTimer(HWND window, UINT_PTR number, UINT, TIMERPROC procedure) {
    if (!procedure) timers.push_back({window, number});
    return number;
}

// The recovery folder of this test, or one that cannot be made.
std::u16string goodFolder;
std::u16string badFolder;

int WINAPI AgreeAndFail(HWND, LPCWSTR, LPCWSTR, UINT) {
    Platform::SetRecoveryFolder(badFolder.c_str());
    return IDYES;
}

class FrameRecoveryTest : public OwnFrameTest {
protected:
    void SetUp() override {
        goodFolder = scratch.Path("Recovery");
        badFolder = scratch.Write("file", "") + u"\\Recovery";
        folderBefore = Platform::SetRecoveryFolder(goodFolder.c_str());
        KeepJournals(true);
        Platform::SetTestClock(&clock);
        ASSERT_NO_FATAL_FAILURE(OwnFrameTest::SetUp());
        ASSERT_TRUE(timer.IsImported() && box.IsImported());
        timers.clear();
    }
    void TearDown() override {
        OwnFrameTest::TearDown();
        Platform::SetTestClock(nullptr);
        KeepJournals(false);
        Platform::SetRecoveryFolder(folderBefore);
    }

    // The journals of running editors count as well.
    size_t Journals() const {
        size_t count = 0;
        std::error_code none;
        for ([[maybe_unused]] const auto& file :
             std::filesystem::directory_iterator(scratch.File("Recovery/Journals"), none))
            ++count;
        return count;
    }
    static std::u16string LeftName() {
        LeftJournals left;
        left.Look(recoveryServices.folder);
        return left.First() ? left.First()->name.Text() : u"(none)";
    }
    TextBuffer& Add(const Char* text) const {
        main->Commands().NewDocument();
        auto& added = static_cast<TextBuffer&>(*main->Commands().Documents().At(0));
        EXPECT_TRUE(added.InsertText(0, text, static_cast<uint32_t>(std::char_traits<Char>::length(text))));
        return added;
    }

    ScratchFolder scratch;
    uint64_t clock = 1000;

private:
    const Char* folderBefore = nullptr;
    ReplacedImport timer{"SetTimer", reinterpret_cast<void*>(NoteTimer)};
    ReplacedImport box{"MessageBoxW", reinterpret_cast<void*>(AgreeAndFail)};
};

} // namespace

TEST_F(FrameRecoveryTest, WhatHadNoJournalAfterTheOfferGetsOneByTheTimer) {
    {
        TextDocument left;
        ASSERT_TRUE(left->SetTitle(u"Untitled7"));
        ASSERT_TRUE(left->InsertText(0, u"text", 4));
        ASSERT_TRUE(left->FlushJournal());
        LeaveJournals();
    }
    KeepJournals(true);
    main->OfferRecovery();
    ASSERT_EQ(main->Commands().Documents().Count(), 1u);
    EXPECT_EQ(Journals(), 1u);
    Platform::SetRecoveryFolder(goodFolder.c_str());
    clock += 60000;
    ASSERT_FALSE(timers.empty());
    for (const SetTimerCall& set : timers)
        if (set.window == main->Window()) SendMessageW(set.window, WM_TIMER, set.number, 0);
    EXPECT_EQ(Journals(), 2u);
}

TEST_F(FrameRecoveryTest, WhatIsUnsavedWhenTheSessionEndsIsLeftToTheNextStart) {
    Add(u"unsaved");
    const std::u16string title = main->Commands().Documents().At(0)->GetTitle();
    SendMessageW(main->Window(), WM_ENDSESSION, TRUE, 0);
    EXPECT_EQ(main->Commands().Documents().Count(), 0u);
    EXPECT_EQ(LeftName(), title);
}

// There is no later time at which it could be tried again.
TEST_F(FrameRecoveryTest, WhatCouldNotBeWrittenJustNowIsTriedAgainWhenTheSessionEnds) {
    TextBuffer& unsaved = Add(u"unsaved");
    const std::u16string title = unsaved.GetTitle();
    Platform::SetRecoveryFolder(badFolder.c_str());
    EXPECT_FALSE(unsaved.FlushJournal());
    Platform::SetRecoveryFolder(goodFolder.c_str());
    EXPECT_FALSE(unsaved.FlushJournal()) << "it waits";
    SendMessageW(main->Window(), WM_ENDSESSION, TRUE, 0);
    EXPECT_EQ(LeftName(), title);
}
