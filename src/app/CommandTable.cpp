#include "app/CommandTable.h"

#include "app/CommandContext.h"
#include "app/DocumentList.h"
#include "app/MacroPlayer.h"
#include "app/OpenFiles.h"
#include "app/Session.h"
#include "base/Platform.h"
#include "base/Text.h"
#include "settings/SetOptionCommand.h"

namespace {

void ShowCurrentDirectory(CommandContext& frame, const Char*) {
    WString directory;
    if (Platform::CurrentDirectory(directory)) frame.SetCommandText(directory.Text());
}

void Edit(CommandContext& frame, const Char* argument) { OpenFileArgument(frame, argument, NoLine, true, false); }

void EditBinary(CommandContext& frame, const Char* argument) { OpenBinaryArgument(frame, argument); }

void ChangeDirectory(CommandContext& frame, const Char* argument) {
    if (*argument)
        static_cast<void>(Platform::SetCurrentDirectory(argument)); // where there is none nothing changes
    else
        ShowCurrentDirectory(frame, argument);
}

void SetSetting(CommandContext& frame, const Char* argument) {
    SettingsChanges changes;
    if (ExecuteSetOption(argument, changes)) frame.ReapplySettings(changes);
}

void SetEngine(CommandContext& frame, const Char* argument) {
    if (*argument) frame.SetActiveEngine(argument);
}

void ShowFileName(CommandContext& frame, const Char*) {
    if (const Char* const name = frame.ActiveDocumentName()) frame.SetCommandText(name);
}

void MakeOutput(CommandContext& frame, const Char*) { frame.MarkActiveAsOutput(); }

void ReloadOptions(CommandContext& frame, const Char*) { frame.ReloadOptions(); }

void GoToLine(CommandContext& frame, const Char* argument) {
    const uint32_t number = Text::ParseDecimal(argument);
    if (number != 0) frame.GoToLine(number - 1);
}

void ToggleBookmark(CommandContext& frame, const Char* argument) {
    // A missing number reads as 0, and 0 - 1 is NoLine: the caret's line.
    frame.ToggleBookmark(Text::ParseDecimal(argument) - 1);
}

void SetConsole(CommandContext& frame, const Char* argument) {
    bool& console = frame.commands.console;
    console = *argument ? Text::ParseDecimal(argument) != 0 : !console;
}

void ClearOutput(CommandContext& frame, const Char*) { frame.ClearOutput(); }

void ListOpened(CommandContext& frame, const Char*) {
    // The list is complete before the output document may be made and join it.
    WString text;
    if (frame.Documents().AppendOpenedText(text)) frame.AppendOutput(text.Text());
}

void Quit(CommandContext& frame, const Char*) { frame.PostClose(); }

void QuitNow(CommandContext& frame, const Char*) { frame.PostQuitNow(); }

void Run(CommandContext& frame, const Char* argument) {
    if (*argument) frame.RunScript(argument);
}

void StoreSession(CommandContext& frame, const Char* argument) {
    const Char* const file = *argument ? argument : frame.commands.sessionFile.Text();
    if (*file)
        SaveSession(frame, file);
    else
        frame.AskUser(u"Please specify a filename.", MessageKind::Information);
}

// Odd on purpose: docs/oddities.md.
void SetSessionFile(CommandContext& frame, const Char*) {
    CommandState& state = frame.commands;
    if (!state.runningScript.IsEmpty() && !state.sessionFile.Assign(state.runningScript)) return;
}

void Comment(CommandContext&, const Char*) {}

// 0 unless the argument is a number of times, and no more than anybody would wait for.
uint32_t ParseRepeatCount(const Char* argument) {
    constexpr uint32_t MaxRepeats = 1000000;
    uint32_t times = 0;
    for (; Text::IsDigit(*argument); ++argument) {
        times = times * 10 + (*argument - u'0');
        if (times > MaxRepeats) return 0;
    }
    return Text::IsBlankText(argument) ? times : 0;
}

// Null when the macro was played; while one is played the command does nothing.
const Char* RepeatRefusal(RepeatResult result) {
    if (result == RepeatResult::IsEmpty) return u"There is no macro to repeat.";
    return result == RepeatResult::IsRecording ? u"A macro is being recorded." : nullptr;
}

void RepeatMacro(CommandContext& frame, const Char* argument) {
    const uint32_t times = ParseRepeatCount(argument);
    const Char* const problem =
        times ? RepeatRefusal(frame.RepeatMacro(times)) : u"Please specify a number from 1 to 1000000.";
    if (problem) frame.AskUser(problem, MessageKind::Information);
}

const CommandRow* FindIn(const CommandRow* rows, uint32_t count, const Char* word) {
    for (const CommandRow* row = rows; row != rows + count; ++row)
        if (Text::Equal(word, row->longName) || (row->shortName && Text::Equal(word, row->shortName))) return row;
    return nullptr;
}

constexpr uint32_t Keep = CommandFlag::KeepCommandWindow;

} // namespace

// Odd on purpose: docs/oddities.md.
const CommandRow commandTable[CommandCount] = {
    {u"edit", u"e", Edit, CompletionKind::Files, 0},
    {u"cd", nullptr, ChangeDirectory, CompletionKind::Directories, Keep | CommandFlag::StripQuotes},
    {u"pwd", nullptr, ShowCurrentDirectory, CompletionKind::Nothing, Keep},
    {u"setopt", nullptr, SetSetting, CompletionKind::SettingKeys, 0},
    {u"setengine", nullptr, SetEngine, CompletionKind::Nothing, 0},
    {u"file", u"f", ShowFileName, CompletionKind::Nothing, Keep},
    {u"mkoutput", nullptr, MakeOutput, CompletionKind::Nothing, 0},
    {u"editbin", u"eb", EditBinary, CompletionKind::Files, 0},
    {u"reloadoptions", nullptr, ReloadOptions, CompletionKind::Nothing, 0},
    {u"line", u"l", GoToLine, CompletionKind::Nothing, 0},
    {u"bookmark", u"bm", ToggleBookmark, CompletionKind::Nothing, Keep},
    {u"console", nullptr, SetConsole, CompletionKind::Nothing, Keep},
    {u"cls", nullptr, ClearOutput, CompletionKind::Nothing, Keep},
    {u"opened", u"o", ListOpened, CompletionKind::Nothing, 0},
    {u"quit", u"q", Quit, CompletionKind::Nothing, 0},
    {u"quit!", u"q!", QuitNow, CompletionKind::Nothing, 0},
    {u"run", nullptr, Run, CompletionKind::Files, 0},
    {u"savesession", u"ss", StoreSession, CompletionKind::Files, 0},
    {u"sessionfile", nullptr, SetSessionFile, CompletionKind::Nothing, 0},
    {u"#", nullptr, Comment, CompletionKind::Nothing, 0},
};

const CommandRow additionalCommands[AdditionalCommandCount] = {
    {u"repeat", nullptr, RepeatMacro, CompletionKind::Nothing, 0},
};

const CommandRow* FindCommand(const Char* word) {
    const CommandRow* const row = FindIn(commandTable, CommandCount, word);
    return row ? row : FindIn(additionalCommands, AdditionalCommandCount, word);
}
