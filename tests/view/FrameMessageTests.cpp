// How long a message in the status bar stays.
#include "CallCounter.h"
#include "app/OpenFiles.h"
#include "resource.h"
#include "support/ScratchFolder.h"
#include "view/OwnFrameTest.h"

namespace {

class FrameMessageTest : public OwnFrameTest {
protected:
    void SetUp() override {
        ASSERT_NO_FATAL_FAILURE(OwnFrameTest::SetUp());
        questions = 0;
        ASSERT_TRUE(OpenFileArgument(main->Commands(), folder.Write("a.txt", "one").c_str(), NoLine, false, false));
        SetForegroundWindow(main->Window());
    }

    std::wstring Message() const {
        wchar_t text[256] = {};
        SendMessageW(FindWindowExW(main->Window(), nullptr, STATUSCLASSNAMEW, nullptr), SB_GETTEXTW, 0,
                     reinterpret_cast<LPARAM>(text));
        return text;
    }
    // The user goes to another program and comes back, and the files are looked at.
    void LeaveAndComeBack() const {
        SendMessageW(main->Window(), WM_ACTIVATEAPP, FALSE, 0);
        SetFocus(nullptr);
        SendMessageW(main->Window(), WM_ACTIVATEAPP, TRUE, 0);
        SetFocus(main->Window());
        MSG message;
        while (PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE)) DispatchMessageW(&message);
    }

    static inline int questions;
    ScratchFolder folder;

private:
    static int WINAPI KeepOld(HWND, LPCWSTR, LPCWSTR, UINT) {
        ++questions;
        return IDNO;
    }

    const ReplacedImport box{"MessageBoxW", reinterpret_cast<void*>(KeepOld)};
};

} // namespace

TEST_F(FrameMessageTest, AMessageStaysWhileTheUserIsElsewhere) {
    main->SetStatusText(StatusField::Message, u"Passed end of file");
    LeaveAndComeBack();
    EXPECT_EQ(Message(), L"Passed end of file");
    EXPECT_EQ(questions, 0);
}

TEST_F(FrameMessageTest, AMessageStaysAcrossTheQuestionAboutAFileThatHasChanged) {
    main->SetStatusText(StatusField::Message, u"Passed end of file");
    const HANDLE file =
        CreateFileW(Wide(folder.Path("a.txt").c_str()), GENERIC_WRITE, 0, nullptr, OPEN_EXISTING, 0, nullptr);
    FILETIME later = {};
    GetSystemTimeAsFileTime(&later);
    ++later.dwHighDateTime;
    ASSERT_TRUE(SetFileTime(file, nullptr, nullptr, &later));
    CloseHandle(file);
    LeaveAndComeBack();
    EXPECT_EQ(questions, 1);
    EXPECT_EQ(Message(), L"Passed end of file");
}

TEST_F(FrameMessageTest, AMessageGoesWhenTheCaretMoves) {
    main->SetStatusText(StatusField::Message, u"Passed end of file");
    SendMessageW(GetFocus(), WM_KEYDOWN, VK_END, 1);
    EXPECT_EQ(Message(), L"");
}
