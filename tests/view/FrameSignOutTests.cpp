// Signing out while there is something to lose: what the system is given as the reason, and what stays meanwhile.

#include "CallCounter.h"
#include "resource.h"
#include "view/OwnFrameTest.h"
#include "viewbase/LongOperation.h"

namespace {

std::wstring reason;
int boxes = 0;

BOOL WINAPI TakeReason(HWND, LPCWSTR text) {
    reason = text;
    return TRUE;
}
BOOL WINAPI TakeBack(HWND) {
    reason.clear();
    return TRUE;
}
int WINAPI CountBox(HWND, LPCWSTR, LPCWSTR, UINT) {
    ++boxes;
    return IDCANCEL;
}

class FrameSignOutTest : public OwnFrameTest {
protected:
    void SetUp() override {
        ASSERT_NO_FATAL_FAILURE(OwnFrameTest::SetUp());
        ASSERT_TRUE(create.IsImported() && destroy.IsImported() && box.IsImported());
        reason.clear();
        boxes = 0;
        main->Commands().NewDocument();
        text = static_cast<TextBuffer*>(main->Commands().Documents().At(0));
        ASSERT_NE(text, nullptr);
    }
    LRESULT Send(UINT message, WPARAM wparam = 0) const { return SendMessageW(main->Window(), message, wparam, 0); }
    static void TakeMessages() {
        MSG message;
        while (PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE)) DispatchMessageW(&message);
    }

    TextBuffer* text = nullptr;

private:
    ReplacedImport create{"ShutdownBlockReasonCreate", reinterpret_cast<void*>(TakeReason)};
    ReplacedImport destroy{"ShutdownBlockReasonDestroy", reinterpret_cast<void*>(TakeBack)};
    ReplacedImport box{"MessageBoxW", reinterpret_cast<void*>(CountBox)};
};

TEST_F(FrameSignOutTest, UnsavedChangesAreAReasonAndNoQuestionUntilTheUserIsBack) {
    EXPECT_EQ(Send(WM_QUERYENDSESSION), TRUE);
    EXPECT_EQ(reason, L"");
    EXPECT_TRUE(text->InsertText(0, u"x", 1));
    EXPECT_EQ(Send(WM_QUERYENDSESSION), FALSE);
    EXPECT_NE(reason, L"");
    TakeMessages();
    EXPECT_EQ(boxes, 0);
    Send(WM_ENDSESSION, FALSE);
    EXPECT_EQ(reason, L"");
    TakeMessages();
    EXPECT_EQ(boxes, 1);
    // The system may also just bring the window to the front again.
    EXPECT_EQ(Send(WM_QUERYENDSESSION), FALSE);
    Send(WM_ACTIVATEAPP, TRUE);
    EXPECT_EQ(reason, L"");
    TakeMessages();
    EXPECT_EQ(boxes, 2);
    EXPECT_EQ(main->Commands().Documents().Count(), 1u);
}

TEST_F(FrameSignOutTest, NothingClosesDuringALongOperation) {
    EXPECT_TRUE(text->InsertText(0, u"x", 1));
    {
        auto& searched = *static_cast<TextView*>(text->ActiveView()->AsView());
        const LongOperation operation(searched);
        { const LongOperation inner(searched); }
        EXPECT_EQ(Send(WM_QUERYENDSESSION), FALSE);
        EXPECT_NE(reason, L"");
        Send(WM_ENDSESSION, TRUE);
        Send(WM_CLOSE);
        Send(WM_COMMAND, IDM_CLOSE);
        Send(WM_USER); // leave now
        EXPECT_EQ(boxes, 0);
        ASSERT_TRUE(IsWindow(main->Window()));
        EXPECT_EQ(main->Commands().Documents().Count(), 1u);
    }
    TakeMessages();
    EXPECT_FALSE(IsWindow(main->Window()));
    EXPECT_EQ(main->Commands().Documents().Count(), 0u);
}

} // namespace
