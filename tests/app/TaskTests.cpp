#include "app/FrameTest.h"
#include "app/Input.h"
#include "app/RunTest.h"

// What people do in an editor every day, done as a new user would: with the settings that come with the program, the
// keys and menus that the manual names, and the real clipboard, files and mouse. docs/tasks.md lists them.

namespace {

class TaskTest : public ShippedSettingsTest {
protected:
    bool Write(const std::wstring& name, const std::string& bytes) const { return files::Write(Path(name), bytes); }
    // A command line after which the command window goes.
    bool Run(const std::wstring& line) {
        return editor.RunCommandLine(line) && window::WaitFor([this] { return !editor.CommandWindow(); });
    }
    // The colours in which the text of the active document goes to the clipboard.
    std::string ColouredCopy() {
        clipboard::Clear();
        std::string html;
        if (!editor.Keys(L"Ctrl+A Ctrl+Shift+H")) return html;
        window::WaitFor([&] { return !(html = clipboard::Bytes(L"HTML Format")).empty(); });
        return html;
    }
    // The colour of the screen in the last row of pixels of the active view, which no text reaches.
    COLORREF Background() const {
        RECT place = {};
        GetWindowRect(editor.Focus(), &place);
        const HDC screen = GetDC(nullptr);
        const COLORREF colour = GetPixel(screen, (place.left + place.right) / 2, place.bottom - 30);
        ReleaseDC(nullptr, screen);
        return colour;
    }
    // The n-th character of the first line, counted from 0, on the screen. The caret has to be before the first.
    POINT CharacterPlace(int n) {
        const RECT first = Caret();
        editor.Keys(L"Right");
        window::WaitFor([&] { return Caret().left > first.left; });
        const LONG width = Caret().left - first.left;
        editor.Keys(L"Left");
        POINT place = {first.left + n * width + 1, (first.top + first.bottom) / 2};
        ClientToScreen(editor.Focus(), &place);
        return place;
    }
};

} // namespace

TEST_F(TaskTest, OpenAProject) {
    ASSERT_TRUE(files::MakeFolder(Path(L"src")));
    for (const wchar_t* const name : {L"src\\main.cpp", L"src\\list.cpp", L"src\\list.h", L"notes.txt"})
        ASSERT_TRUE(Write(name, "text\n"));
    ASSERT_TRUE(Start());
    ASSERT_TRUE(Run(L"edit src\\*.cpp"));
    ASSERT_TRUE(Run(L"edit src\\*.h"));
    // With the empty document of the start.
    EXPECT_TRUE(window::WaitFor([this] { return WindowItems().size() == 4; }));
    // One command goes to any of them.
    ASSERT_TRUE(Run(L"edit src\\main.cpp"));
    EXPECT_TRUE(WaitForFile(L"src\\main.cpp"));
    EXPECT_EQ(WindowItems().size(), 4u);
}

TEST_F(TaskTest, QuickOpen) {
    ASSERT_TRUE(files::MakeFolder(Path(L"include")));
    ASSERT_TRUE(Write(L"include\\list.h", "struct List;\n"));
    ASSERT_TRUE(OpenFile(L"main.cpp", "#include \"list.h\"\n"));
    ASSERT_TRUE(Run(L"setopt QuickOpenPath .;src;include"));
    ASSERT_TRUE(editor.Keys(L"Ctrl+Home End Left Left Ctrl+Shift+G"));
    EXPECT_TRUE(WaitForFile(L"include\\list.h"));
}

// A stand-in prints what findstr would find: not every system has one that works, or ends.
TEST_F(TaskTest, FindInFiles) {
    ASSERT_TRUE(Write(L"list.cpp", "int a;\nint b;\nint needle;\n"));
    const std::wstring found = Path(L"list.cpp") + L":3:int needle;";
    Script(L"findstr.cmd", "@echo " + files::Utf8(found) + "\r\n");
    ASSERT_TRUE(OpenFile(L"main.cpp", "needle\n"));
    ASSERT_TRUE(editor.Keys(L"Ctrl+Shift+F"));
    const HWND dialog = editor.WaitForDialog();
    ASSERT_TRUE(dialog);
    EXPECT_EQ(window::TextOf(window::Control(dialog, IDC_TOOL_ARGUMENTS_EDIT)), L"/i /c:\"%SEL%\" \"%DIR%\\*\"");
    ASSERT_TRUE(editor.Keys(L"Enter"));
    ASSERT_TRUE(editor.WaitForNoDialog());
    ASSERT_TRUE(WaitForFinished(L"findstr /s /n /p /i /c:\"needle\" \"" + scratch.Folder() + L"\\*\""));
    ASSERT_TRUE(WaitForText(found + L"\r\n"));
    ASSERT_TRUE(editor.Keys(L"Ctrl+Home Enter"));
    EXPECT_TRUE(WaitForFile(L"list.cpp"));
    EXPECT_TRUE(WaitForLine(3));
}

// The stand-in of PowerShell prints what it gets.
TEST_F(TaskTest, JumpToAnError) {
    const std::wstring error = Path(L"main.cpp") + L":3:6: error: expected ';'";
    Script(L"g++.cmd", "@echo " + files::Utf8(error) + "\r\n");
    Script(L"copy", "copy\n");
    Script(L"powershell.cmd", "@\"%SPEAK%\" \"" + files::Utf8(Path(L"copy")) + "\"\r\n");
    ASSERT_TRUE(OpenFile(L"main.cpp", "int a;\nint b;\nint c\n"));
    ASSERT_TRUE(editor.Keys(L"F7"));
    ASSERT_TRUE(window::WaitFor([this] { return editor.Title() != TitleOf(L"main.cpp"); }));
    ASSERT_TRUE(WaitForText(error + L"\r\n"));
    ASSERT_TRUE(editor.Keys(L"Ctrl+Home Enter"));
    EXPECT_TRUE(WaitForFile(L"main.cpp"));
    EXPECT_TRUE(WaitForLine(3));
}

TEST_F(TaskTest, RenameAVariable) {
    ASSERT_TRUE(OpenFile(L"main.cpp", "int count = 0;\ncounter += count;\nCount(count);\n"));
    ASSERT_TRUE(editor.Keys(L"Ctrl+H"));
    const HWND dialog = editor.WaitForDialog();
    ASSERT_TRUE(dialog);
    ASSERT_TRUE(editor.Keys(L"Alt+N"));
    ASSERT_TRUE(editor.Type(L"count"));
    ASSERT_TRUE(editor.Keys(L"Alt+P"));
    ASSERT_TRUE(editor.Type(L"total"));
    ASSERT_TRUE(editor.Keys(L"Alt+W Alt+C Alt+O Alt+A"));
    ASSERT_TRUE(WaitForFile(L"main.cpp", true));
    ASSERT_TRUE(editor.Keys(L"Escape"));
    ASSERT_TRUE(editor.WaitForNoDialog());
    EXPECT_EQ(SaveAndRead(L"main.cpp"), "int total = 0;\ncounter += total;\nCount(total);\n");
    // All of it is one step back.
    ASSERT_TRUE(editor.Keys(L"Ctrl+Z"));
    EXPECT_EQ(SaveAndRead(L"main.cpp"), "int count = 0;\ncounter += count;\nCount(count);\n");
}

TEST_F(TaskTest, CommentABlock) {
    ASSERT_TRUE(OpenFile(L"main.cpp", "{\n    one();\n        two();\n    three();\n}\n"));
    ASSERT_TRUE(editor.Keys(L"Down Ctrl+Shift+R End Home"));
    ASSERT_TRUE(editor.Type(L"//"));
    ASSERT_TRUE(editor.Keys(L"Down Ctrl+Shift+R"));
    ASSERT_TRUE(Run(L"repeat 2"));
    EXPECT_EQ(SaveAndRead(L"main.cpp"), "{\n    //one();\n        //two();\n    //three();\n}\n");
}

TEST_F(TaskTest, TwoFilesSideBySide) {
    ASSERT_TRUE(OpenFiles({L"a.txt", L"b.txt"}));
    ASSERT_TRUE(editor.Keys(L"Alt+Right"));
    ASSERT_TRUE(WaitForPaneCount(2));
    ASSERT_TRUE(editor.Keys(L"Ctrl+1"));
    ASSERT_TRUE(WaitForFile(L"a.txt"));
    ASSERT_TRUE(editor.Keys(L"F6"));
    EXPECT_TRUE(WaitForFile(L"b.txt"));
    ASSERT_TRUE(editor.Keys(L"F6"));
    EXPECT_TRUE(WaitForFile(L"a.txt"));
}

TEST_F(TaskTest, ALargerFont) {
    ASSERT_TRUE(OpenFile(L"a.txt", "text\n"));
    ASSERT_TRUE(window::WaitFor([this] { return Caret().bottom > 0; }));
    const LONG height = Caret().bottom - Caret().top;
    ASSERT_TRUE(Run(L"setopt FontSize 16"));
    EXPECT_TRUE(window::WaitFor([&] { return Caret().bottom - Caret().top > height; }));
}

TEST_F(TaskTest, DarkColours) {
    ASSERT_TRUE(OpenFile(L"a.txt", "text\n"));
    const std::wstring program = files::ProgramPath();
    ASSERT_TRUE(Run(L"run \"" + program.substr(0, program.rfind(L'\\')) + L"\\colours\\dark.txt\""));
    EXPECT_TRUE(window::WaitFor([this] { return Background() == RGB(0x1E, 0x1E, 0x1E); }));
}

TEST_F(TaskTest, AToolWithAHotKey) {
    Script(L"build", "say built\\n\n");
    ASSERT_TRUE(OpenFiles({L"a.txt"}));
    ASSERT_TRUE(OpenDialog(IDM_CUSTOMIZE));
    ASSERT_TRUE(window::PressButton(editor.Dialog(), L"Add"));
    const auto fill = [&](int control, const std::wstring& text) {
        const HWND field = window::Control(editor.Dialog(), control);
        return SendMessageW(field, WM_SETTEXT, 0, reinterpret_cast<LPARAM>(text.c_str())) != 0;
    };
    ASSERT_TRUE(fill(IDC_TOOLS_TITLE, L"Build"));
    ASSERT_TRUE(fill(IDC_TOOLS_COMMAND, Speak(L"build")));
    ASSERT_TRUE(editor.Keys(L"Alt+R"));
    ASSERT_TRUE(ReachWith(L"Alt+H", window::Control(editor.Dialog(), IDC_TOOLS_HOT_KEY)));
    ASSERT_TRUE(editor.Keys(L"F9"));
    ASSERT_TRUE(window::PressButton(editor.Dialog(), L"OK"));
    ASSERT_TRUE(WaitUntilSaved());
    ASSERT_TRUE(editor.Keys(L"F9"));
    EXPECT_TRUE(WaitForText(L"built\r\n"));
}

TEST_F(TaskTest, AMacroOverFiftyLines) {
    std::string lines, wanted;
    for (int i = 0; i < 50; i++) {
        lines += "name" + std::to_string(i) + "\n";
        wanted += "\"name" + std::to_string(i) + "\",\n";
    }
    ASSERT_TRUE(OpenFile(L"a.txt", lines));
    ASSERT_TRUE(editor.Keys(L"Ctrl+Shift+R Home"));
    ASSERT_TRUE(editor.Type(L"\""));
    ASSERT_TRUE(editor.Keys(L"End"));
    ASSERT_TRUE(editor.Type(L"\","));
    ASSERT_TRUE(editor.Keys(L"Down Ctrl+Shift+R"));
    ASSERT_TRUE(Run(L"repeat 49"));
    EXPECT_EQ(SaveAndRead(L"a.txt"), wanted);
}

TEST_F(TaskTest, Utf8WithCjkAndEmoji) {
    const std::wstring text = L"za\x17C\xF3\x142\x107 \x6F22\x5B57 \xD83D\xDE00\n";
    ASSERT_TRUE(OpenFile(L"a.txt", files::Utf8(text)));
    ASSERT_TRUE(editor.Keys(L"End"));
    // Neither a word nor the pair of the emoji is cut.
    ASSERT_TRUE(editor.Keys(L"Left"));
    ASSERT_TRUE(editor.Type(L"\x3A9"));
    ASSERT_TRUE(editor.Keys(L"End Backspace"));
    EXPECT_EQ(SaveAndRead(L"a.txt"), files::Utf8(L"za\x17C\xF3\x142\x107 \x6F22\x5B57 \x3A9\n"));
}

TEST_F(TaskTest, Utf16) {
    const std::wstring mark = L"\xFEFF";
    for (const bool bigEndian : {false, true}) {
        const std::wstring name = bigEndian ? L"big.txt" : L"little.txt";
        ASSERT_TRUE(Write(name, files::Utf16(mark + L"caf\xE9\r\n", bigEndian)));
        if (bigEndian)
            ASSERT_TRUE(Run(L"edit " + name));
        else
            ASSERT_TRUE(Start(name));
        ASSERT_TRUE(WaitForFile(name));
        ASSERT_TRUE(editor.Keys(L"End"));
        ASSERT_TRUE(editor.Type(L"\x6F22"));
        EXPECT_EQ(SaveAndRead(name), files::Utf16(mark + L"caf\xE9\x6F22\r\n", bigEndian));
    }
}

TEST_F(TaskTest, ColoursOfFourLanguages) {
    const struct {
        const wchar_t* name;
        const char* text;
        const char* coloured; // what has a colour of its own
    } sources[] = {
        {L"a.c", "int x; /* why */\n", "/* why */"},
        {L"a.py", "def f(): # why\n", "# why"},
        {L"a.rs", "fn f() {} // why\n", "// why"},
        {L"a.json", "{\"key\": true}\n", "true"},
    };
    ASSERT_TRUE(Start());
    for (const auto& source : sources) {
        ASSERT_TRUE(Write(source.name, source.text));
        ASSERT_TRUE(Run(std::wstring(L"edit ") + source.name));
        ASSERT_TRUE(WaitForFile(source.name));
        const std::string html = ColouredCopy();
        const size_t at = html.find(source.coloured);
        ASSERT_NE(at, std::string::npos) << html;
        EXPECT_EQ(html[at - 1], '>') << html;
    }
}

TEST_F(TaskTest, KeyboardOnly) {
    ASSERT_TRUE(Write(L"a.txt", "one two three\n"));
    ASSERT_TRUE(Start());
    ASSERT_TRUE(editor.Keys(L"Ctrl+O"));
    ASSERT_TRUE(editor.WaitForDialog());
    ASSERT_TRUE(editor.Type(Path(L"a.txt") + L"\n"));
    ASSERT_TRUE(editor.WaitForNoDialog());
    ASSERT_TRUE(WaitForFile(L"a.txt"));
    ASSERT_TRUE(editor.Keys(L"Ctrl+F"));
    ASSERT_TRUE(editor.WaitForDialog());
    ASSERT_TRUE(editor.Type(L"two\n"));
    ASSERT_TRUE(editor.WaitForNoDialog());
    ASSERT_TRUE(editor.Type(L"2"));
    EXPECT_EQ(SaveAndRead(L"a.txt"), "one 2 three\n");
    ASSERT_TRUE(editor.Keys(L"Alt+F4"));
    EXPECT_TRUE(WaitForEndWithCodeZero());
}

TEST_F(TaskTest, MouseOnly) {
    ASSERT_TRUE(Write(L"a.txt", "one two three\n"));
    ASSERT_TRUE(Start());
    Drop({Path(L"a.txt")});
    ASSERT_TRUE(WaitForFile(L"a.txt"));
    ASSERT_TRUE(window::WaitFor([this] { return Caret().bottom > 0; }));
    ASSERT_TRUE(clipboard::Clear());
    const POINT word = CharacterPlace(5);
    input::Click(word, 2);
    input::RightClick(word);
    HWND menu = nullptr;
    ASSERT_TRUE(window::WaitFor([&] {
        for (const HWND found : window::TopLevel(editor.Process())) {
            if (window::ClassOf(found) == L"#32768") menu = found;
        }
        return menu != nullptr;
    }));
    // Cut is the third item, after Undo, Redo and a line.
    RECT place = {};
    GetWindowRect(menu, &place);
    const LONG row = GetSystemMetrics(SM_CYMENU);
    input::Click({place.left + 30, place.top + 2 * row + row});
    EXPECT_TRUE(WaitForFile(L"a.txt", true));
    EXPECT_TRUE(window::WaitFor([] { return clipboard::Text() == L"two"; }));
}

TEST_F(TaskTest, ExitWithThreeModifiedFiles) {
    ASSERT_TRUE(OpenFiles({L"a.txt", L"b.txt", L"c.txt"}));
    for (const wchar_t* const name : {L"a.txt", L"b.txt", L"c.txt"}) {
        ASSERT_TRUE(Run(std::wstring(L"edit ") + name));
        ASSERT_TRUE(WaitForFile(name));
        ASSERT_TRUE(Modify(name));
    }
    ASSERT_TRUE(editor.Keys(L"Alt+F4"));
    EXPECT_TRUE(editor.Answer(SaveQuestion(Path(L"a.txt")), L"Yes"));
    EXPECT_TRUE(editor.Answer(SaveQuestion(Path(L"b.txt")), L"No"));
    EXPECT_TRUE(editor.Answer(SaveQuestion(Path(L"c.txt")), L"Yes"));
    EXPECT_TRUE(WaitForEndWithCodeZero());
    EXPECT_EQ(files::Read(Path(L"a.txt")), "xa.txt");
    EXPECT_EQ(files::Read(Path(L"b.txt")), "b.txt");
    EXPECT_EQ(files::Read(Path(L"c.txt")), "xc.txt");
}

TEST_F(TaskTest, ASession) {
    ASSERT_TRUE(Write(L"a.txt", "1\n2\n3\n"));
    ASSERT_TRUE(Write(L"b.txt", "1\n2\n3\n"));
    ASSERT_TRUE(Start(L"a.txt b.txt"));
    ASSERT_TRUE(WaitForFile(L"b.txt"));
    ASSERT_TRUE(editor.Keys(L"Down Down"));
    ASSERT_TRUE(Run(L"savesession work.ses"));
    Editor again;
    ASSERT_TRUE(again.Start(L"-r work.ses", scratch.Folder()));
    EXPECT_TRUE(again.WaitForTitle(TitleOf(L"b.txt")));
    EXPECT_TRUE(again.WaitForStatus(2, L"\tLn 3"));
}

TEST_F(TaskTest, HexBytes) {
    ASSERT_TRUE(Write(L"a.bin", std::string("\x00\x01\x02\x03", 4)));
    ASSERT_TRUE(Start());
    ASSERT_TRUE(Run(L"editbin a.bin"));
    ASSERT_TRUE(WaitForFile(L"a.bin"));
    ASSERT_TRUE(editor.Keys(L"Right"));
    ASSERT_TRUE(editor.Type(L"7f"));
    EXPECT_EQ(SaveAndRead(L"a.bin"), std::string("\x00\x7F\x02\x03", 4));
}

TEST_F(TaskTest, FindWithoutAMatch) {
    ASSERT_TRUE(OpenFile(L"a.txt", "one two\n"));
    ASSERT_TRUE(editor.Keys(L"Ctrl+F"));
    ASSERT_TRUE(editor.WaitForDialog());
    ASSERT_TRUE(editor.Type(L"three\n"));
    EXPECT_TRUE(editor.Answer(L"Text not found", L"OK"));
    ASSERT_TRUE(editor.Keys(L"Escape"));
    EXPECT_TRUE(editor.WaitForNoDialog());
    ASSERT_TRUE(Modify(L"a.txt"));
    EXPECT_EQ(SaveAndRead(L"a.txt"), "xone two\n");
}

TEST_F(TaskTest, Bookmarks) {
    ASSERT_TRUE(OpenFile(L"a.txt", "1\n2\n3\n4\n5\n"));
    ASSERT_TRUE(editor.Keys(L"Down Ctrl+F2 Down Down Ctrl+F2 Ctrl+Home F2"));
    EXPECT_TRUE(WaitForLine(2));
    ASSERT_TRUE(editor.Keys(L"F2"));
    EXPECT_TRUE(WaitForLine(4));
    ASSERT_TRUE(editor.Keys(L"F2"));
    EXPECT_TRUE(WaitForLine(2));
}
