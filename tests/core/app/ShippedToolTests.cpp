// The tools that ship with the program: that they are read whole, that names with blanks stay whole in their commands,
// and that what they make of the messages of other programs is a position that Enter finds. The patterns are
// run by the standard library instead of PowerShell; they mean the same in both.

#include "core/app/FakeFrame.h"

#include "app/ToolVariables.h"
#include "settings/IniFile.h"
#include "settings/ToolList.h"
#include "support/SourceTree.h"
#include "view/FilePosition.h"

#include <gtest/gtest.h>
#include <regex>
#include <set>

namespace {

std::string Narrow(const std::u16string& text) { return {text.begin(), text.end()}; }

class ShippedToolTest : public ::testing::Test {
protected:
    ShippedToolTest() {
        EXPECT_TRUE(file.Load(source::ProgramPath(source::Folder() / "ship" / "orvane.ini").c_str()));
        EXPECT_TRUE(tools.Load(file));
        EXPECT_GT(tools.Count(), 0u);
    }
    const ToolRecord* Find(const Char* name) const {
        for (uint32_t i = 0; const ToolRecord* const tool = tools.At(i); ++i)
            if (Str(tool->displayName) == name) return tool;
        ADD_FAILURE() << "no tool named " << Narrow(name);
        return nullptr;
    }
    // A line of output after the replacements in the tool's command.
    std::string Rewritten(const Char* tool, std::string line) const {
        const ToolRecord* const found = Find(tool);
        if (!found) return {};
        const std::string command = Narrow(Str(found->command));
        const std::regex replacement("-replace '([^']*)',(?:'([^']*)'|\\$s\\b)");
        for (std::sregex_iterator at(command.begin(), command.end(), replacement), end; at != end; ++at) {
            // The short name of a folder is in a variable.
            const std::string by = (*at)[2].matched ? at->str(2) : "C:\\PROGRA~2";
            line = std::regex_replace(line, std::regex(at->str(1), std::regex::icase), by);
        }
        return line;
    }
    // The position in such a line, as PATH:LINE; the line is 1-based.
    std::string Position(const Char* tool, const std::string& line) const {
        const std::string rewritten = Rewritten(tool, line);
        const std::u16string wide(rewritten.begin(), rewritten.end());
        FilePosition position;
        if (!position.Parse({wide.c_str(), static_cast<uint32_t>(wide.size())}) || position.line == NoLine) return {};
        return Narrow(Str(position.path)) + ':' + std::to_string(position.line + 1);
    }

    IniFile file;
    ToolList tools;
};

} // namespace

TEST_F(ShippedToolTest, EachHasANameAndAKeyOfItsOwn) {
    std::set<std::u16string> names;
    std::set<uint64_t> keys;
    for (uint32_t i = 0; const ToolRecord* const tool = tools.At(i); ++i) {
        EXPECT_TRUE(names.insert(Str(tool->displayName)).second) << Narrow(Str(tool->displayName));
        const uint64_t key = uint64_t{tool->hotKeyFlags} << 32 | tool->hotKey;
        EXPECT_TRUE(tool->hotKey == 0 || keys.insert(key).second) << i;
        EXPECT_EQ(tool->redirectOutput, 1u) << i;
    }
    EXPECT_EQ(names.size(), 6u);
}

TEST_F(ShippedToolTest, NamesWithBlanksAreInQuotes) {
    FakeFrame frame;
    const std::string path = "C:\\a b\\c d.cpp";
    frame.activeName = {path.begin(), path.end()};
    frame.selection = u"two words";
    for (uint32_t i = 0; const ToolRecord* const tool = tools.At(i); ++i) {
        WString line;
        WString expanded;
        ASSERT_TRUE(ToolCommandLine(*tool, line) && ExpandToolVariables(frame, line.Text(), expanded));
        const std::string text = Narrow(Str(expanded));
        bool quoted = false;
        for (size_t at = 0; at < text.size(); ++at) {
            if (text[at] == '"') quoted = !quoted;
            const bool hasBlank = text.compare(at, 6, "C:\\a b") == 0 || text.compare(at, 9, "two words") == 0;
            EXPECT_TRUE(quoted || !hasBlank) << text.substr(at);
        }
        EXPECT_FALSE(quoted) << text;
        // The interpreter would take a quote at the very start, and the last one, for its own.
        EXPECT_NE(text[0], '"') << text;
    }
}

TEST_F(ShippedToolTest, IncludingFilesAreFound) {
    const auto* const tool = u"Compile with g++";
    EXPECT_EQ(Position(tool, "In file included from C:\\a b\\list.h:7,"), "C:\\a b\\list.h:7");
    EXPECT_EQ(Position(tool, "                 from C:\\work\\main.cpp:2:"), "C:\\work\\main.cpp:2");
    EXPECT_EQ(Position(tool, "In file included from C:/gcc/include/vector:60,"), "C:\\gcc/include/vector:60");
    EXPECT_EQ(Position(tool, "c:/gcc/include/vector:428:7: error: static"), "c:\\gcc/include/vector:428");
    EXPECT_EQ(Position(tool, "C:\\work\\main.cpp:12:5: error: no 'x'"), "C:\\work\\main.cpp:12");
    EXPECT_EQ(Rewritten(tool, "   12 | int main() {"), "   12 | int main() {");
}

TEST_F(ShippedToolTest, ErrorsOfScriptsAreFound) {
    const auto* const tool = u"Run";
    EXPECT_EQ(Position(tool, "  File \"C:\\a b\\x.py\", line 3, in f"), "C:\\a b\\x.py:3");
    EXPECT_EQ(Position(tool, "  File \"C:\\x.py\", line 12"), "C:\\x.py:12");
    EXPECT_EQ(Position(tool, "    at run (C:\\a b\\x.js:3:9)"), "C:\\a b\\x.js:3");
    EXPECT_EQ(Position(tool, "    at C:\\x.js:3:9"), "C:\\x.js:3");
    EXPECT_EQ(Position(tool, "    at async file:///C:/work/x.mjs:14:3"), "C:\\work/x.mjs:14");
    EXPECT_EQ(Position(tool, "file:///C:/work/x.mjs:14"), "C:\\work/x.mjs:14");
    EXPECT_EQ(Position(tool, "C:\\work\\x.js:14"), "C:\\work\\x.js:14");
    EXPECT_EQ(Position(tool, "  --> C:\\work\\main.rs:4:18"), "C:\\work\\main.rs:4");
    EXPECT_EQ(Rewritten(tool, "    at node:internal/main:23:47"), "    at node:internal/main:23:47");
    EXPECT_EQ(Rewritten(tool, "look at me"), "look at me");
}

// PowerShell speaks the language of Windows.
TEST_F(ShippedToolTest, ErrorsOfPowerShellAreFoundInEveryLanguage) {
    const auto* const tool = u"Run";
    EXPECT_EQ(Position(tool, "At C:\\a b\\x.ps1:5 char:1"), "C:\\a b\\x.ps1:5");
    EXPECT_EQ(Position(tool, "In C:\\a b\\x.ps1:5 Zeichen:12"), "C:\\a b\\x.ps1:5");
    EXPECT_EQ(Position(tool, "Au caract\xE8re C:\\x.ps1:12 : 3"), "C:\\x.ps1:12");
    EXPECT_EQ(Position(tool, "En C:\\x.ps1: 7 Car\xE1"
                             "cter: 1"),
              "C:\\x.ps1:7");
    EXPECT_EQ(Rewritten(tool, "see C:\\x.txt:5 for more"), "see C:\\x.txt:5 for more");
    EXPECT_EQ(Rewritten(tool, "copied C:\\a.txt"), "copied C:\\a.txt");
}

// A compiler that speaks another language would print another text for "In file included from".
TEST_F(ShippedToolTest, TheCompilerSpeaksEnglish) {
    EXPECT_TRUE(Str(Find(u"Compile with g++")->command).starts_with(u"set \"LC_ALL=C\"&& "));
}

TEST_F(ShippedToolTest, PanicsOfRustAreFound) {
    const auto* const tool = u"Run";
    EXPECT_EQ(Position(tool, "thread 'main' panicked at C:\\a b\\main.rs:4:5:"), "C:\\a b\\main.rs:4");
    EXPECT_EQ(Position(tool, "thread 'main' (4711) panicked at C:\\x\\main.rs:4:5:"), "C:\\x\\main.rs:4");
    EXPECT_EQ(Position(tool, "thread 'a, C:\\b' panicked at C:\\main.rs:14:5:"), "C:\\main.rs:14");
    // Compilers before 1.73 print the message first, which may have lines of its own.
    EXPECT_EQ(Position(tool, "thread 'main' panicked at 'C:\\a, b: gone', C:\\x\\main.rs:4:5"), "C:\\x\\main.rs:4");
    EXPECT_EQ(Position(tool, " right: `2`', C:\\a, b\\main.rs:7:9"), "C:\\a, b\\main.rs:7");
    EXPECT_EQ(Rewritten(tool, "thread 'main' panicked at 'a:1:2'"), "thread 'main' panicked at 'a:1:2'");
    EXPECT_EQ(Rewritten(tool, "at last, C:\\x.txt"), "at last, C:\\x.txt");
}

TEST_F(ShippedToolTest, HeadersInTheProgramFilesOf32BitsAreFound) {
    const auto* const tool = u"Compile with MSVC";
    const std::string header = "C:\\Program Files (x86)\\Windows Kits\\10\\include\\stdio.h";
    EXPECT_EQ(Position(tool, header + "(12): note: see declaration"),
              "C:\\PROGRA~2\\Windows Kits\\10\\include\\stdio.h:12");
    EXPECT_EQ(Position(tool, "C:\\a b\\x.cpp(3): error C2065"), "C:\\a b\\x.cpp:3");
    EXPECT_EQ(Position(tool, "C:\\a b\\x.cpp(3,7): error C2065"), "C:\\a b\\x.cpp:3");
}

// PowerShell itself may break lines at the width of a console.
TEST_F(ShippedToolTest, LinesArePrintedWhole) {
    for (uint32_t i = 0; const ToolRecord* const tool = tools.At(i); ++i) {
        const std::string command = Narrow(Str(tool->command));
        if (command.find("$input") == command.npos) continue;
        const std::regex whole("foreach \\{ \\[Console\\]::WriteLine\\(\\(\\$_ -replace .*\\)\\) \\}\"");
        EXPECT_TRUE(std::regex_search(command, whole)) << command;
    }
}
