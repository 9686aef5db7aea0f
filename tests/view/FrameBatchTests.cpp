#include "app/CommandLanguage.h"
#include "app/FileDialogText.h"
#include "app/OpenFiles.h"
#include "app/StartArguments.h"
#include "base/Heap.h"
#include "resource.h"
#include "support/ScratchFolder.h"
#include "view/CallCounter.h"
#include "view/OwnFrameTest.h"

#include <functional>

// Many files that are opened at once, in a frame of the test's own process: how often it is laid out, and how
// often its title is set.

namespace {

constexpr int FileCount = 1000;

class FrameBatchTest : public OwnFrameTest {
protected:
    void SetUp() override {
        ASSERT_NO_FATAL_FAILURE(OwnFrameTest::SetUp());
        const HWND bar = FindWindowExW(main->Window(), nullptr, STATUSCLASSNAMEW, nullptr);
        ASSERT_NE(bar, nullptr);
        ASSERT_TRUE(SetWindowSubclass(bar, Count<SB_SETPARTS>, 1, reinterpret_cast<DWORD_PTR>(&layouts)));
        ASSERT_TRUE(
            SetWindowSubclass(main->Window(), Count<WM_SETTEXT>, 1, reinterpret_cast<DWORD_PTR>(&titleChanges)));
        ASSERT_TRUE(SetWindowSubclass(main->Window(), Count<WM_SETFOCUS>, 2, reinterpret_cast<DWORD_PTR>(&focusMoves)));
        for (int i = 0; i < FileCount; ++i) names.push_back(folder.Write(std::to_string(1000 + i) + ".txt", "text"));
    }

    // Every layout tells the status bar where its parts end.
    template <UINT Counted>
    static LRESULT CALLBACK Count(HWND window, UINT message, WPARAM wparam, LPARAM lparam, UINT_PTR, DWORD_PTR count) {
        if (message == Counted) ++*reinterpret_cast<int*>(count);
        return DefSubclassProc(window, message, wparam, lparam);
    }

    void ExpectOneLayout(const std::function<void()>& open) {
        layouts = titleChanges = focusMoves = windowMoves = 0;
        const ReplacedImport move("SetWindowPos", reinterpret_cast<void*>(MoveWindowCounted));
        ASSERT_TRUE(move.IsImported());
        CallCounter<0, decltype(CreateCompatibleBitmap)> buffers("CreateCompatibleBitmap");
        ASSERT_TRUE(buffers.IsImported());
        open();
        EXPECT_EQ(main->Commands().Documents().Count(), static_cast<uint32_t>(FileCount));
        // One for the first pane, which must have its place before a caret can be scrolled into view, and one at
        // the end.
        EXPECT_LE(layouts, 2);
        EXPECT_EQ(titleChanges, 1);
        // The one pane keeps the focus, and has no other above it.
        EXPECT_LE(focusMoves, 1);
        EXPECT_LT(windowMoves, 10);
        EXPECT_EQ(GetFocus(), FindWindowExW(main->Window(), nullptr, L"OrvaneVWnd", nullptr));
        // Only what is seen has a buffer to draw by way of.
        EXPECT_LT(buffers.Take(), 10);
        // Nothing was drawn meanwhile; now all is again.
        for (const wchar_t* name : {L"OrvaneVWnd", STATUSCLASSNAMEW}) {
            const HWND child = FindWindowExW(main->Window(), nullptr, name, nullptr);
            EXPECT_TRUE(IsWindowVisible(child));
            EXPECT_TRUE(GetUpdateRect(child, nullptr, FALSE));
        }
        ExpectKeysGoTo(FileCount - 1);
    }

    void ExpectKeysGoTo(uint32_t number) const {
        const Document* const shown = main->Commands().Documents().At(number);
        EXPECT_STREQ(Wide(main->Commands().ActiveDocumentName()), Wide(shown->GetName()));
        SendMessageW(FindWindowExW(main->Window(), nullptr, L"OrvaneVWnd", nullptr), WM_CHAR, 'x', 1);
        EXPECT_TRUE(shown->IsModified());
    }

    static BOOL WINAPI MoveWindowCounted(HWND window, HWND after, int x, int y, int width, int height, UINT flags) {
        ++windowMoves;
        const HDWP moves = DeferWindowPos(BeginDeferWindowPos(1), window, after, x, y, width, height, flags);
        return EndDeferWindowPos(moves);
    }

    ScratchFolder folder;
    std::vector<std::u16string> names;
    static inline int windowMoves = 0;
    int layouts = 0;
    int titleChanges = 0;
    int focusMoves = 0; // to the frame
};

} // namespace

TEST_F(FrameBatchTest, ADropOfAThousandFiles) {
    std::u16string list;
    for (const std::u16string& name : names) list += name + u'\0';
    list += u'\0';
    DROPFILES header = {};
    header.pFiles = sizeof header;
    header.fWide = TRUE;
    const HGLOBAL block = GlobalAlloc(GMEM_MOVEABLE, sizeof header + list.size() * 2);
    char* const bytes = static_cast<char*>(GlobalLock(block));
    ASSERT_NE(bytes, nullptr);
    memcpy(bytes, &header, sizeof header);
    memcpy(bytes + sizeof header, list.data(), list.size() * 2);
    GlobalUnlock(block);
    ExpectOneLayout([&] { SendMessageW(main->Window(), WM_DROPFILES, reinterpret_cast<WPARAM>(block), 0); });
}

TEST_F(FrameBatchTest, AWildcardWithAThousandMatches) {
    ExpectOneLayout([&] { OpenFileArgument(main->Commands(), folder.Path("*.txt").c_str(), NoLine, true, false); });
}

TEST_F(FrameBatchTest, ASessionOfAThousandFiles) {
    std::string session = "sessionfile\r\n";
    for (const std::u16string& name : names) session += "e " + std::string(name.begin(), name.end()) + "\r\nl 1\r\n";
    folder.Write("session", session);
    ExpectOneLayout([&] { RunScript(main->Commands(), folder.Path("session").c_str()); });
}

TEST_F(FrameBatchTest, ACommandLineOfAThousandFiles) {
    std::u16string line = u"orvane";
    for (const std::u16string& name : names) line += u" \"" + name + u"\"";
    ExpectOneLayout([&] { EXPECT_TRUE(ParseCommandLine(main->Commands(), line.c_str())); });
}

TEST_F(FrameBatchTest, AFileDialogsAnswerOfAThousandNames) {
    std::u16string result = folder.Path("") + u'\0';
    for (int i = 0; i < FileCount; ++i) {
        const std::string name = std::to_string(1000 + i) + ".txt";
        result += std::u16string(name.begin(), name.end()) + u'\0';
    }
    ExpectOneLayout([&] { OpenSelectedFiles(main->Commands(), result.c_str()); });
}

TEST_F(FrameBatchTest, AQuestionInTheMiddleIsAskedOverTheFilesSoFar) {
    static decltype(this) test;
    test = this;
    const ReplacedImport box("MessageBoxW", reinterpret_cast<void*>(+[](HWND, LPCWSTR, LPCWSTR, UINT) {
                                 test->ExpectKeysGoTo(1);
                                 return IDNO;
                             }));
    const std::u16string line =
        u"orvane \"" + names[0] + u"\" \"" + names[1] + u"\" \"" + folder.Path("missing") + u"\" \"" + names[2] + u"\"";
    EXPECT_TRUE(ParseCommandLine(main->Commands(), line.c_str()));
    EXPECT_EQ(main->Commands().Documents().Count(), 3u);
    EXPECT_TRUE(main->Commands().Documents().At(1)->IsModified());
    ExpectKeysGoTo(2);
}

TEST_F(FrameBatchTest, ALineOfAFileThatIsNotShownYetIsScrolledIntoView) {
    std::string text;
    for (int i = 0; i < 500; ++i) text += "line\r\n";
    const std::u16string path = folder.Write("long.txt", text);
    const std::string own(path.begin(), path.end());
    const std::string other(names[0].begin(), names[0].end());
    folder.Write("session", "e " + own + "\r\nl 400\r\nbm 390\r\ne " + other + "\r\n");
    RunScript(main->Commands(), folder.Path("session").c_str());
    Command(IDM_FIRST_DOCUMENT);
    const HWND pane = FindWindowExW(main->Window(), nullptr, L"OrvaneVWnd", nullptr);
    EXPECT_GT(GetScrollPos(pane, SB_VERT), 300);
    EXPECT_LE(GetScrollPos(pane, SB_VERT), 399);
    WString session;
    ASSERT_TRUE(main->Commands().Documents().At(0)->GetSessionText(session));
    EXPECT_EQ(std::u16string(session.Text()), u"e " + path + u"\r\nl 400\r\nbm 390\r\n");
}

TEST_F(FrameBatchTest, AScriptPlaysTheMacroInTheFileThatItHasJustOpened) {
    Command(IDM_NEW);
    Command(IDM_RECORD_MACRO);
    MSG key = {};
    key.hwnd = GetFocus();
    key.message = WM_CHAR;
    key.wParam = 'y';
    ASSERT_FALSE(main->PreDispatchKey(key));
    Command(IDM_RECORD_MACRO);
    const std::string name(names[0].begin(), names[0].end());
    folder.Write("script", "e " + name + "\r\nrepeat 3\r\n");
    RunScript(main->Commands(), folder.Path("script").c_str());
    Document* const opened = main->Commands().Documents().FindByName(names[0].c_str());
    ASSERT_NE(opened, nullptr);
    ASSERT_TRUE(main->Commands().SaveDocument(*opened));
    EXPECT_EQ(folder.Read("1000.txt"), "yyytext");
}
