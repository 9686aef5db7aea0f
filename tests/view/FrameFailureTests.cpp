// The windows and dialogs of the frame while each allocation of the product fails in turn.

#include "app/UserPrompt.h"
#include "app/win32/AboutDialog.h"
#include "app/win32/FileDialogs.h"
#include "support/FailureInjection.h"
#include "view/DialogDriver.h"
#include "view/HexFrameTest.h"

#include <optional>

namespace {

BOOL WINAPI Choose(LPOPENFILENAMEW request) {
    wcscpy(request->lpstrFile, L"C:\\folder\\file.txt");
    return TRUE;
}

class FrameFailureTest : public HexFrameTest {
protected:
    // A text of this test's folder, alone in the frame.
    void ShowText(const std::string& bytes) {
        CloseAll();
        ASSERT_TRUE(main->Commands().OpenText(folder.Write("text.txt", bytes).c_str(), NoLine, false));
        text = static_cast<TextBuffer*>(main->Commands().Documents().At(0));
    }
    void CloseAll() const {
        while (main->Commands().Documents().Count()) {
            Document* const shown = main->Commands().Documents().At(0);
            while (shown->IsModified()) shown->DoCommand(DocumentCommand::Undo);
            Command(IDM_CLOSE);
        }
    }
    HWND CommandLine() const { return FindWindowExW(main->Window(), nullptr, L"Edit", nullptr); }
    uint32_t Line() const { return static_cast<TextView*>(text->ActiveView()->AsView())->Editor().CaretLine(); }

    TextBuffer* text = nullptr;
};

} // namespace

TEST_F(FrameFailureTest, ACommandIsCarriedOutOrNot) {
    ShowText("1\n2\n3\n4\n");
    const uint64_t failures = FailEachAllocation([&] {
        std::optional<FailurePause> pause(std::in_place);
        main->Commands().GoToLine(0);
        if (IsWindowVisible(CommandLine())) Command(IDM_COMMAND_WINDOW);
        pause.reset();
        Command(IDM_COMMAND_WINDOW);
        SendMessageW(CommandLine(), WM_SETTEXT, 0, reinterpret_cast<LPARAM>(L"line 3"));
        SendMessageW(CommandLine(), WM_KEYDOWN, VK_RETURN, 1);
        pause.emplace();
        EXPECT_EQ(main->Commands().Documents().Count(), 1u);
        EXPECT_FALSE(text->IsModified());
        EXPECT_TRUE(Line() == 0 || Line() == 2) << Line();
        return Line() == 2;
    });
    EXPECT_GT(failures, 2u);
}

TEST_F(FrameFailureTest, QuickOpenOpensTheFileOrNothing) {
    const std::u16string other = folder.Write("other.txt", "other");
    std::string name = "\"";
    for (const Char c : other) name += static_cast<char>(c);
    const uint64_t failures = FailEachAllocation([&] {
        std::optional<FailurePause> pause(std::in_place);
        ShowText(name + "\"");
        SendMessageW(GetFocus(), WM_KEYDOWN, VK_RIGHT, 1);
        pause.reset();
        Command(IDM_QUICK_OPEN);
        pause.emplace();
        const uint32_t count = main->Commands().Documents().Count();
        EXPECT_TRUE(count == 1 || count == 2) << count;
        return count == 2;
    });
    EXPECT_GT(failures, 5u);
    EXPECT_EQ(std::u16string(main->Commands().Documents().At(1)->GetName()), other);
}

TEST_F(FrameFailureTest, TypingAndPaintingBytes) {
    Open("some bytes of a file");
    const uint64_t failures = FailEachAllocation([&] {
        std::optional<FailurePause> pause(std::in_place);
        while (file->IsModified()) file->DoCommand(DocumentCommand::Undo);
        editor->GoTo(0);
        const HWND pane = Panes().at(0);
        pause.reset();
        SendMessageW(pane, WM_CHAR, '4', 1);
        SendMessageW(pane, WM_CHAR, '1', 1);
        InvalidateRect(pane, nullptr, TRUE);
        UpdateWindow(pane);
        pause.emplace();
        const std::string now = Content();
        const std::string rest = "ome bytes of a file";
        EXPECT_TRUE(now == "s" + rest || now == "C" + rest || now == "A" + rest || now[0] == 0x13) << now;
        EXPECT_EQ(now.substr(1), rest);
        return now == "A" + rest;
    });
    EXPECT_GT(failures, 2u);
    EXPECT_EQ(OnDisk(), "some bytes of a file");
}

TEST_F(FrameFailureTest, AboutIsShownOrNot) {
    class Prompt final : public UserPrompt {
    public:
        Answer AskUser(const Char*, MessageKind) override { return Answer::Ok; }
    } prompt;
    Ole ole;
    FailEachAllocation([&] {
        std::optional<FailurePause> pause(std::in_place);
        bool isShown = false;
        dialog::WhenShown([&](HWND about) {
            pause.emplace();
            isShown = true;
            dialog::Ok(about);
        });
        pause.reset();
        AboutDialog(prompt, ole).Run(IDD_ABOUT, main->Window());
        pause.emplace();
        return isShown;
    });
}

TEST_F(FrameFailureTest, AFileDialogGivesTheWholeNameOrNone) {
    const ReplacedImport open("GetOpenFileNameW", reinterpret_cast<void*>(Choose));
    const ReplacedImport save("GetSaveFileNameW", reinterpret_cast<void*>(Choose));
    ASSERT_TRUE(open.IsImported() && save.IsImported());
    Ole ole;
    FileDialogs dialogs(ole);
    ShowText("text");
    const uint64_t opens = FailEachAllocation([&] {
        WString chosen;
        bool tooMany = false;
        const bool isChosen = dialogs.AskOpen(chosen, tooMany);
        EXPECT_FALSE(tooMany);
        if (isChosen) {
            EXPECT_EQ(std::u16string(chosen.Text()), u"C:\\folder\\file.txt");
        }
        return isChosen;
    });
    EXPECT_GT(opens, 2u);
    const uint64_t saves = FailEachAllocation([&] {
        SaveChoice choice;
        const bool isChosen = dialogs.AskSave(*text, choice);
        if (isChosen) {
            EXPECT_EQ(std::u16string(choice.path.Text()), u"C:\\folder\\file.txt");
        }
        return isChosen;
    });
    EXPECT_GT(saves, 2u);
}
