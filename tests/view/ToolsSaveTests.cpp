// What OK and Cancel of the Tools dialog make of the tools and the settings file.

#include "view/ToolsTest.h"

TEST_F(ToolsTest, AFileThatCannotBeWrittenIsPassedOver) {
    LoadThree();
    std::filesystem::create_directory(folder.File("orvane.ini"));
    EXPECT_TRUE(Open([](HWND tools) {
        dialog::SetText(tools, IDC_TOOLS_TITLE, L"First");
        dialog::Ok(tools);
    }));
    ASSERT_EQ(toolList.Count(), 3u);
    EXPECT_EQ(std::u16string(toolList.At(0)->displayName.Text()), u"First");
}

TEST_F(ToolsTest, OkRewritesTheToolSectionsByteForByte) {
    LoadThree();
    EXPECT_TRUE(Open([](HWND tools) {
        dialog::SetText(tools, IDC_TOOLS_TITLE, L"Fi\u00E4rst");
        Select(tools, 1);
        dialog::Click(tools, IDC_TOOLS_DELETE);
        dialog::Click(tools, IDC_TOOLS_REDIRECT);
        SetHotKey(tools, VK_F9, HOTKEYF_ALT);
        dialog::Ok(tools);
    }));
    EXPECT_EQ(Saved(), "[General]\r\nFontSize=9\r\n\r\n[Engine_X]\r\nBase=C\r\n\r\n"
                       "[Tool]\r\nDisplayName=Fi\xC3\xA4rst\r\nCommand=one.exe\r\nStartDir=C:\\1\r\nLastArgs=kept\r\n"
                       "PromptArgs=1\r\n\r\n"
                       "[Tool]\r\nDisplayName=Three\r\nCommand=three.exe\r\nRedirectOutput=1\r\nHotKey=120\r\n"
                       "HotKeyFlags=16\r\n");
    ASSERT_EQ(toolList.Count(), 2u);
    EXPECT_EQ(std::u16string(toolList.At(0)->displayName.Text()), u"Fi\u00E4rst");
    EXPECT_EQ(std::u16string(toolList.At(0)->lastArgs.Text()), u"kept");
}

TEST_F(ToolsTest, AFieldThatIsClearedLosesItsKey) {
    LoadThree();
    EXPECT_TRUE(Open([](HWND tools) {
        dialog::SetText(tools, IDC_TOOLS_DIRECTORY, L"");
        dialog::Click(tools, IDC_TOOLS_PROMPT);
        Select(tools, 1);
        dialog::SetText(tools, IDC_TOOLS_TITLE, L"");
        dialog::Click(tools, IDC_TOOLS_REDIRECT);
        SetHotKey(tools, 0, 0);
        dialog::Ok(tools);
    }));
    EXPECT_EQ(Saved(), "[General]\r\nFontSize=9\r\n\r\n[Engine_X]\r\nBase=C\r\n\r\n"
                       "[Tool]\r\nDisplayName=One\r\nCommand=one.exe\r\nLastArgs=kept\r\n\r\n"
                       "[Tool]\r\nDisplayName=\r\nCommand=two.exe\r\n\r\n"
                       "[Tool]\r\nDisplayName=Three\r\nCommand=three.exe\r\n");
}

TEST_F(ToolsTest, BlanksAndSignsOfTheFormatAreReadAsTheyWereTyped) {
    LoadThree();
    const std::u16string title = u"  ; = [x] ";
    const std::u16string command = u" \"a b\" =1 ;%FILE% ";
    EXPECT_TRUE(Open([&](HWND tools) {
        dialog::SetText(tools, IDC_TOOLS_TITLE, std::wstring(title.begin(), title.end()));
        dialog::SetText(tools, IDC_TOOLS_COMMAND, std::wstring(command.begin(), command.end()));
        dialog::SetText(tools, IDC_TOOLS_DIRECTORY, L" ");
        dialog::Ok(tools);
    }));
    IniFile read;
    ASSERT_TRUE(read.Load(folder.Path("orvane.ini").c_str()));
    ASSERT_TRUE(toolList.Load(read));
    ASSERT_EQ(toolList.Count(), 3u);
    EXPECT_EQ(std::u16string(toolList.At(0)->displayName.Text()), title);
    EXPECT_EQ(std::u16string(toolList.At(0)->command.Text()), command);
    EXPECT_EQ(std::u16string(toolList.At(0)->startDir.Text()), u" ");
}

TEST_F(ToolsTest, AToolWithoutACommandIsWrittenButNotKept) {
    EXPECT_TRUE(Open([](HWND tools) {
        dialog::Click(tools, IDC_TOOLS_ADD);
        dialog::Click(tools, IDC_TOOLS_ADD);
        dialog::SetText(tools, IDC_TOOLS_COMMAND, L"x");
        dialog::Ok(tools);
    }));
    EXPECT_EQ(Saved(),
              "[Tool]\r\nDisplayName=New Tool\r\nCommand=\r\n\r\n[Tool]\r\nDisplayName=New Tool\r\nCommand=x\r\n");
    EXPECT_EQ(toolList.Count(), 1u);
}

TEST_F(ToolsTest, CancelChangesNothing) {
    LoadThree();
    folder.Write("orvane.ini", "as it was");
    EXPECT_FALSE(Open([](HWND tools) {
        dialog::SetText(tools, IDC_TOOLS_TITLE, L"First");
        dialog::Click(tools, IDC_TOOLS_ADD);
        Select(tools, 1);
        dialog::Click(tools, IDC_TOOLS_DELETE);
        dialog::Cancel(tools);
    }));
    EXPECT_EQ(Saved(), "as it was");
    ASSERT_EQ(toolList.Count(), 3u);
    EXPECT_EQ(std::u16string(toolList.At(0)->displayName.Text()), u"One");
    EXPECT_EQ(std::u16string(toolList.At(1)->displayName.Text()), u"Two");
}

TEST_F(ToolsTest, AToolListOfThousands) {
    std::u16string text;
    for (int i = 0; i < 5000; ++i) text += u"[Tool]\nDisplayName=Tool\nCommand=x\n";
    Load(text);
    EXPECT_TRUE(Open([](HWND tools) {
        EXPECT_EQ(Names(tools).size(), 5000u);
        Select(tools, 4999);
        dialog::SetText(tools, IDC_TOOLS_TITLE, L"Last");
        Select(tools, 0);
        dialog::Click(tools, IDC_TOOLS_DELETE);
        dialog::Ok(tools);
    }));
    ASSERT_EQ(toolList.Count(), 4999u);
    EXPECT_EQ(std::u16string(toolList.At(4998)->displayName.Text()), u"Last");
}
