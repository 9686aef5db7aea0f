#include "app/CommandLanguage.h"

#include "app/CommandContext.h"
#include "app/CommandTable.h"
#include "base/CodePage.h"
#include "base/Platform.h"
#include "base/Text.h"
#include "base/TextFormat.h"
#include "document/TextFile.h"
#include "settings/LineReader.h"

#include <cstring>
#include <utility>

namespace {

void CallHandler(CommandContext& frame, const CommandRow& row, const Char* argument) {
    if (!(row.flags & CommandFlag::StripQuotes)) {
        row.handler(frame, argument);
        return;
    }
    WString stripped;
    if (!stripped.Assign(argument)) return;
    stripped.StripQuotes();
    row.handler(frame, stripped.Text());
}

bool ReadScript(const Char* file, WString& text) {
    Platform::ByteBlock block;
    if (!Platform::ReadWholeFile(file, block)) return false;
    const uint8_t* bytes = block.bytes;
    size_t size = block.size;
    const Signature& signature = SignatureOf(Encoding::Utf8);
    if (size >= signature.count && std::memcmp(bytes, signature.bytes, signature.count) == 0) {
        bytes += signature.count;
        size -= signature.count;
    }
    const size_t most = MaxCharacters(CodePage::Utf8, size);
    if (most > WString::MaxCharacters || !text.Reserve(static_cast<uint32_t>(most))) return false;
    if (size != 0 && ToUtf16(CodePage::Utf8, bytes, size, text.Data(), most) == 0) return false;
    // The fresh buffer is zero-filled, so the text is terminated; its length is not needed.
    if (text.Data()) NormaliseLineEnds(text.Data());
    return true;
}

void RunLines(CommandContext& frame, const Char* text) {
    uint32_t position = 0;
    WString line;
    while (!frame.commands.scriptsCancelled && NextLine(text, position, line)) ExecuteCommandLine(frame, line.Text());
}

// A script that runs itself twice would take for ever even with a limit, so all levels end at once.
void CancelScripts(CommandContext& frame, const Char* file) {
    frame.commands.scriptsCancelled = true;
    WString text;
    if (Text::AppendFormat(text, u"Scripts run each other too deeply: %s", file))
        frame.AskUser(text.Text(), MessageKind::Warning);
}

} // namespace

bool SplitCommand(const Char* line, WString& word, const Char*& argument) {
    const Char* end = line;
    for (bool quoted = false; *end && (quoted || !Text::IsBlank(*end)); ++end)
        if (*end == u'"') quoted = !quoted;
    if (!word.Assign(line, end - line)) return false;
    while (Text::IsBlank(*end)) ++end;
    argument = end;
    return true;
}

void ExecuteCommandLine(CommandContext& frame, const Char* line) {
    const CommandRow* row = nullptr;
    const Char* external = line;
    const Char* argument = nullptr;
    if (*line == u'!') {
        external = line + 1;
    } else {
        WString word;
        if (!SplitCommand(line, word, argument)) return;
        row = FindCommand(word.Text());
    }

    if (row)
        CallHandler(frame, *row, argument);
    else
        frame.RunCapturedCommand(external, u"");

    const bool keepWindow = row && (row->flags & CommandFlag::KeepCommandWindow);
    if (!keepWindow && !frame.commands.console) frame.HideCommandWindow();
    frame.RefreshTitle();
    frame.RefreshStatus();
}

void RunScript(CommandContext& frame, const Char* file) {
    CommandState& state = frame.commands;
    if (state.scriptDepth == MaxScriptDepth) {
        CancelScripts(frame, file);
        return;
    }
    WString name;
    if (!name.Assign(file)) return;
    name.StripQuotes();
    WString text;
    WString path;
    if (!ReadScript(name.Text(), text) || !Platform::FullPath(name.Text(), path)) return;

    WString outer = std::move(state.runningScript);
    state.runningScript = std::move(path);
    ++state.scriptDepth;
    frame.BeginBatch();
    RunLines(frame, text.Text());
    frame.EndBatch();
    if (--state.scriptDepth == 0)
        state.scriptsCancelled = false;
    else
        state.runningScript = std::move(outer);
}
