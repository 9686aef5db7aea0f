#include "app/RunTest.h"

#include <algorithm>

// The command lines of the tools that come with the program, run by the command interpreter with stand-ins for the
// programs that they name: batch files in the folder of the document, where the interpreter looks first. The stand-in
// of PowerShell copies its input; what PowerShell makes of it is tested with the patterns.
//
// The interpreter of Wine puts the output of a simple command into a pipe, but not that of a block in parentheses, and
// 2>&1 does not hold for what a batch file writes to its standard error. So the tests of Run see that the program and
// PowerShell were started, and how, but not that one gets the output of the other, and no test sees where errors go but
// that they are shown. The tool for MSVC, whose first program has a full path, is not run.

namespace {

constexpr UINT FindInFiles = IDM_FIRST_TOOL;
constexpr UINT CompileWithGcc = IDM_FIRST_TOOL + 1;
constexpr UINT RunFile = IDM_FIRST_TOOL + 3;
constexpr UINT Format = IDM_FIRST_TOOL + 4;
constexpr UINT CompareWith = IDM_FIRST_TOOL + 5;

class ShippedToolTest : public ShippedSettingsTest {
protected:
    void SetUp() override {
        ASSERT_NO_FATAL_FAILURE(ShippedSettingsTest::SetUp());
        for (const char* const program : {"findstr", "gcc", "g++", "py", "node", "rustc", "go", "ruby", "perl", "lua",
                                          "php", "bash", "cscript", "rustfmt", "gofmt", "clang-format", "fc"})
            StandIn(program, "@echo " + Called(program, "%*") + "]\r\n@echo [error of " + program + "] 1>&2\r\n");
        Script(L"copy", "copy\n");
        StandIn("powershell", "@echo [piped]\r\n@\"%SPEAK%\" \"" + files::Utf8(Path(L"copy")) + "\"\r\n");
    }
    void StandIn(const std::string& program, const std::string& lines) const {
        Script(std::wstring(program.begin(), program.end()) + L".cmd", lines);
    }
    // What the stand-in of a program prints first.
    static std::string Called(const std::string& program, const std::string& arguments) {
        return "[" + program + " " + arguments;
    }
    bool Open(const std::wstring& file) {
        name = file;
        return files::Write(Path(name), "@echo [needle]\r\n") && Start(L"\"" + name + L"\"") && WaitForFile(name);
    }
    std::string Quoted(const std::string& after = "") const { return "\"" + files::Utf8(Path(name)) + after + "\""; }
    // What a tool prints, once it has ended and that holds all of these; after a failure, what there is then.
    std::string OutputOf(UINT tool, const std::vector<std::string>& parts) {
        editor.Command(tool);
        return OutputWith(parts);
    }
    std::string OutputWith(const std::vector<std::string>& parts) {
        std::string output;
        EXPECT_TRUE(window::WaitFor([&] {
            const std::wstring title = editor.Title();
            if (title == TitleOf(name) || title.find(L"*Running*") != std::wstring::npos) return false;
            output = files::Utf8(Text());
            return std::all_of(parts.begin(), parts.end(), [&](const auto& part) { return Holds(output, part); });
        })) << output;
        return output;
    }
    static bool Holds(const std::string& output, const std::string& part) {
        return output.find(part) != std::string::npos;
    }

    std::wstring name;
};

struct ToolCase {
    const wchar_t* file;
    const char* program;
    const char* arguments; // before the name of the file
};

class CompileTool : public ShippedToolTest, public testing::WithParamInterface<ToolCase> {};
class FormatTool : public ShippedToolTest, public testing::WithParamInterface<ToolCase> {};
class RunTool : public ShippedToolTest, public testing::WithParamInterface<ToolCase> {};

std::string ProgramOf(const testing::TestParamInfo<ToolCase>& info) {
    std::string text = std::to_string(info.index) + info.param.program;
    std::erase_if(text, [](char c) { return !std::isalnum(static_cast<unsigned char>(c)); });
    return text;
}

} // namespace

TEST_F(ShippedToolTest, FindInFilesPassesTheWordAndTheFolder) {
    ASSERT_TRUE(Open(L"a file.txt"));
    ASSERT_TRUE(editor.Keys(L"End Left Left"));
    ASSERT_TRUE(editor.WaitForStatus(3, L"\tCol 13"));
    editor.Command(FindInFiles);
    ASSERT_TRUE(editor.WaitForDialog());
    ASSERT_TRUE(editor.Keys(L"Enter"));
    const std::string folder = files::Utf8(scratch.Folder());
    OutputWith({Called("findstr", "/s /n /p /i /c:\"needle\" \"" + folder + "\\*\"") + "]"});
}

TEST_F(ShippedToolTest, CompareWithPassesTheNameAndTheFolder) {
    ASSERT_TRUE(Open(L"a file.txt"));
    editor.Command(CompareWith);
    ASSERT_TRUE(editor.WaitForDialog());
    ASSERT_TRUE(editor.Keys(L"Enter"));
    OutputWith({Called("fc", "/n " + Quoted() + " \"" + files::Utf8(scratch.Folder()) + "\\\"") + "]"});
}

TEST_P(CompileTool, PassesWhatTheCompilerPrintsThroughThePipe) {
    const ToolCase& compiled = GetParam();
    ASSERT_TRUE(Open(compiled.file));
    const std::string call = Called(compiled.program, compiled.arguments + Quoted(".exe") + " " + Quoted());
    const std::string error = std::string("[error of ") + compiled.program + "]";
    const std::string output = OutputOf(CompileWithGcc, {"[piped]", call, error});
    EXPECT_GT(output.find(call), output.find("[piped]")) << output;
}

INSTANTIATE_TEST_SUITE_P(Files, CompileTool,
                         testing::Values(ToolCase{L"a file.cpp", "g++", "-std=c++20 -Wall -Wextra -g -o "},
                                         ToolCase{L"a file.c", "gcc", "-std=c17 -Wall -Wextra -g -o "}),
                         ProgramOf);

TEST_P(FormatTool, GoesByTheExtension) {
    const ToolCase& formatted = GetParam();
    ASSERT_TRUE(Open(formatted.file));
    const std::string call = Called(formatted.program, formatted.arguments + Quoted());
    const std::string output = OutputOf(Format, {call, std::string("[error of ") + formatted.program + "]"});
    EXPECT_EQ(output.find(call), 0u) << output;
}

INSTANTIATE_TEST_SUITE_P(Files, FormatTool,
                         testing::Values(ToolCase{L"a file.py", "py", "-m black "},
                                         ToolCase{L"a file.rs", "rustfmt", ""}, ToolCase{L"a file.GO", "gofmt", "-w "},
                                         ToolCase{L"a file.c", "clang-format", "-i "},
                                         ToolCase{L"a file.JSON", "clang-format", "-i "}),
                         ProgramOf);

// It would be read as C++ and written back.
TEST_F(ShippedToolTest, FormatLeavesOtherFilesAlone) {
    ASSERT_TRUE(Open(L"a file.md"));
    const std::string output = OutputOf(Format, {"No formatter is set up for"});
    EXPECT_FALSE(Holds(output, "clang-format")) << output;
}

TEST_P(RunTool, GoesByTheExtension) {
    const ToolCase& run = GetParam();
    ASSERT_TRUE(Open(run.file));
    const std::string output = OutputOf(RunFile, {Called(run.program, run.arguments + Quoted()),
                                                  std::string("[error of ") + run.program + "]", "[piped]"});
    EXPECT_FALSE(Holds(output, "[needle]")) << "the file itself was run: " << output;
}

INSTANTIATE_TEST_SUITE_P(Files, RunTool,
                         testing::Values(ToolCase{L"a file.py", "py", "-u "}, ToolCase{L"a file.js", "node", ""},
                                         ToolCase{L"a file.MJS", "node", ""}, ToolCase{L"a file.ts", "node", ""},
                                         ToolCase{L"a file.go", "go", "run "}, ToolCase{L"a file.rb", "ruby", ""},
                                         ToolCase{L"a file.pl", "perl", ""}, ToolCase{L"a file.lua", "lua", ""},
                                         ToolCase{L"a file.php", "php", ""},
                                         ToolCase{L"a file.vbs", "cscript", "//nologo "}),
                         ProgramOf);

TEST_F(ShippedToolTest, RunCompilesAProgramOfRust) {
    ASSERT_TRUE(Open(L"a file.rs"));
    OutputOf(RunFile, {Called("rustc", "-o " + Quoted(".exe") + " " + Quoted()), "[piped]"});
}

TEST_F(ShippedToolTest, RunGivesTheShellANameWithoutAFolder) {
    ASSERT_TRUE(Open(L"a file.sh"));
    OutputOf(RunFile, {Called("bash", "\"a file.sh\""), "[piped]"});
}

TEST_F(ShippedToolTest, RunDoesNotOpenASourceThatIsNotCompiled) {
    ASSERT_TRUE(Open(L"a file.CPP"));
    OutputOf(RunFile, {"There is no program yet", "[piped]"});
}

TEST_F(ShippedToolTest, RunStartsWhatItDoesNotKnow) {
    ASSERT_TRUE(Open(L"a file.cmd"));
    OutputOf(RunFile, {"[needle]", "[piped]"});
}
