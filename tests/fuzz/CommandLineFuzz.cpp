// Takes the bytes as a command line, as lines of the command language, as text to complete and expand,
// and checks what must hold for any text. Files cannot be opened meanwhile, so nothing is written.

#include "app/CommandCompletion.h"
#include "app/CommandLanguage.h"
#include "app/CommandTable.h"
#include "app/FileDialogText.h"
#include "app/QuickOpen.h"
#include "app/StartArguments.h"
#include "app/ToolVariables.h"
#include "base/CodePage.h"
#include "base/Platform.h"
#include "base/Text.h"
#include "core/app/FakeFrame.h"
#include "settings/IniFile.h"
#include "settings/LineReader.h"
#include "settings/Settings.h"
#include "support/ScratchFolder.h"

#include <algorithm>
#include <cstdlib>

namespace {

void Require(bool condition) {
    if (!condition) std::abort();
}

void CheckArguments(const Char* text) {
    const Char* position = text;
    const Char* const end = text + Text::Length(text);
    WString token;
    while (position != end) {
        const Char* const before = position;
        const bool found = NextArgument(position, token);
        Require(position > before && position <= end && found == !token.IsEmpty());
        Require(token.Length() <= position - before);
    }
    Require(!NextArgument(position, token) && position == end);
}

void CheckSplit(const Char* line) {
    WString word;
    const Char* argument = nullptr;
    Require(SplitCommand(line, word, argument));
    Require(Str(line).starts_with(Str(word)) && argument >= line + word.Length());
    Require(std::all_of(line + word.Length(), argument, Text::IsBlank) && !Text::IsBlank(*argument));
}

void CheckExecution(const Char* text) {
    FakeFrame frame;
    frame.activeName = u"C:\\dir\\name.c";
    uint32_t position = 0;
    WString line;
    int lines = 0;
    while (NextLine(text, position, line)) {
        CheckSplit(line.Text());
        const int hides = frame.hides;
        ExecuteCommandLine(frame, line.Text());
        Require(frame.titles == ++lines && frame.batchDepth == 0 && frame.hides - hides <= 1);
    }
}

// A run shows as many texts as there are candidates and then begins again.
void CheckCompletion(const Char* text) {
    CommandCompletion completion;
    const std::u16string first = Str(completion.Step(text, true));
    if (first == u"(null)") return;
    Require(Str(completion.Step(text, false)) != u"(null)");
    Require(Str(completion.Step(text, true)) == first);
}

void CheckExpansion(const Char* text) {
    FakeFrame frame;
    frame.activeName = u"n";
    WString expanded;
    Require(ExpandToolVariables(frame, text, expanded) && expanded.Length() <= Text::Length(text));
    frame.activeName = text;
    expanded.Clear();
    Require(ExpandToolVariables(frame, u"%PATH%", expanded) && Str(expanded) == text);
    for (const Char* variable : {u"%FILE%", u"%DIR%", u"%EXT%"}) {
        expanded.Clear();
        Require(ExpandToolVariables(frame, variable, expanded) && expanded.Length() < 1050);
        Require(Str(text).find(Str(expanded)) != std::u16string::npos);
    }
}

void CheckNames(const Char* text, uint32_t length) {
    WString name;
    for (uint32_t caret = 0; caret <= length + 1; caret += 1 + length / 16) {
        Require(FileNameAtCaret(text, length, caret, name) && name.Length() <= length);
        Require(Str(name).find_first_of(u"\">\n") == std::u16string::npos);
    }
    Require(MakeDialogFilter(text, name) && name.Length() == length + 2);
    OpenSelectedFiles(*std::make_unique<FakeFrame>(), name.Text());
}

bool FailFileCalls() { return true; }

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    static const ScratchFolder scratch;
    const InDirectory scope(scratch.File("."));
    scratch.Write("some file.c", "");
    Platform::SetFileFailureHook(FailFileCalls);
    LoadSettings(IniFile());

    WString text;
    Require(text.Reserve(static_cast<uint32_t>(MaxCharacters(CodePage::Utf8, size)) + 1));
    ToUtf16(CodePage::Utf8, data, size, text.Data(), text.Capacity() - 1);
    const Char* const typed = text.Text();

    CheckArguments(typed);
    CheckSplit(typed);
    CheckExecution(typed);
    CheckCompletion(typed);
    CheckExpansion(typed);
    CheckNames(typed, Text::Length(typed));
    FakeFrame frame;
    Require(ParseCommandLine(frame, typed) && frame.layouts == 1 && frame.batchDepth == 0);

    ReleaseSettings();
    Platform::SetFileFailureHook(nullptr);
    return 0;
}
