#include "app/CommandTable.h"

#include "app/CommandLanguage.h"
#include "app/CommandTarget.h"
#include "app/DocumentList.h"
#include "app/OpenFiles.h"
#include "app/Session.h"
#include "base/Platform.h"
#include "base/Text.h"
#include "settings/Settings.h"

namespace {

void ShowCurrentDirectory(CommandTarget& frame, const Char*) {
    WString directory;
    if (Platform::CurrentDirectory(directory)) frame.SetCommandText(directory.Text());
}

void Edit(CommandTarget& frame, const Char* argument) { OpenFileArgument(frame, argument, -1, true, false); }

void EditBinary(CommandTarget& frame, const Char* argument) { OpenBinaryArgument(frame, argument); }

void ChangeDirectory(CommandTarget& frame, const Char* argument) {
    if (*argument)
        Platform::SetCurrentDirectory(argument);
    else
        ShowCurrentDirectory(frame, argument);
}

void SetSetting(CommandTarget& frame, const Char* argument) {
    if (ExecuteSetOption(argument)) frame.ReapplySettings();
}

void SetEngine(CommandTarget& frame, const Char* argument) {
    if (*argument) frame.SetActiveEngine(argument);
}

void ShowFileName(CommandTarget& frame, const Char*) {
    if (const Char* const name = frame.ActiveDocumentName()) frame.SetCommandText(name);
}

void MakeOutput(CommandTarget& frame, const Char*) { frame.MarkActiveAsOutput(); }

void ReloadOptions(CommandTarget& frame, const Char*) { frame.ReloadOptions(); }

void GoToLine(CommandTarget& frame, const Char* argument) {
    const uint32_t number = Text::ParseDecimal(argument);
    if (number != 0) frame.GoToLine(number - 1);
}

void ToggleBookmark(CommandTarget& frame, const Char* argument) {
    // A missing number reads as 0, and 0 - 1 is None32: the caret's line.
    frame.ToggleBookmark(Text::ParseDecimal(argument) - 1);
}

void SetConsole(CommandTarget& frame, const Char* argument) {
    bool& console = frame.commands.console;
    console = *argument ? Text::ParseDecimal(argument) != 0 : !console;
}

void ClearOutput(CommandTarget& frame, const Char*) { frame.ClearOutput(); }

void ListOpened(CommandTarget& frame, const Char*) {
    // The list is complete before the output document may be made and join it.
    WString text;
    if (frame.Documents().AppendOpenedText(text)) frame.AppendOutput(text.Text());
}

void Quit(CommandTarget& frame, const Char*) { frame.PostClose(); }

void QuitNow(CommandTarget& frame, const Char*) { frame.PostQuitNow(); }

void Run(CommandTarget& frame, const Char* argument) {
    if (*argument) RunScript(frame, argument);
}

void StoreSession(CommandTarget& frame, const Char* argument) {
    const Char* const file = *argument ? argument : frame.commands.sessionFile.Text();
    if (*file)
        SaveSession(frame, file);
    else
        frame.AskUser(u"Please specify a filename.", MessageKind::Information);
}

void SetSessionFile(CommandTarget& frame, const Char*) {
    CommandState& state = frame.commands;
    if (!state.runningScript.IsEmpty()) state.sessionFile.Assign(state.runningScript);
}

void Comment(CommandTarget&, const Char*) {}

constexpr uint32_t Keep = CommandFlag::KeepCommandWindow;

} // namespace

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

const CommandRow* FindCommand(const Char* word) {
    for (const CommandRow& row : commandTable)
        if (Text::Equal(word, row.longName) || (row.shortName && Text::Equal(word, row.shortName))) return &row;
    return nullptr;
}
