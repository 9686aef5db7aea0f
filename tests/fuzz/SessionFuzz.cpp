// Runs the bytes as a script, and writes and reads back a session of documents with names made of them.

#include "app/CommandLanguage.h"
#include "app/Session.h"
#include "base/CodePage.h"
#include "base/Platform.h"
#include "core/app/FakeFrame.h"
#include "settings/IniFile.h"
#include "settings/Settings.h"
#include "support/ScratchFolder.h"

#include <cstdlib>

namespace {

void Require(bool condition) {
    if (!condition) std::abort();
}

CommandState* running = nullptr;

// What a script opens fails; the script itself, at depth 0, is read.
bool FailBelow() { return running->scriptDepth != 0; }

void RunAsScript(const ScratchFolder& scratch, const std::string& bytes) {
    const std::u16string name = scratch.Write("script", bytes);
    FakeFrame frame;
    running = &frame.commands;
    Platform::SetFileFailureHook(FailBelow);
    RunScript(frame, name.c_str());
    Platform::SetFileFailureHook(nullptr);
    Require(Str(frame.commands.runningScript) == name);
    Require(frame.commands.scriptDepth == 0 && frame.batchDepth == 0 && !frame.commands.scriptsCancelled);
}

std::u16string Decoded(const std::string& bytes) {
    std::u16string text(bytes.size(), 0);
    text.resize(ToUtf16(CodePage::Utf8, reinterpret_cast<const uint8_t*>(bytes.data()), bytes.size(), text.data(),
                        text.size()));
    return text;
}

// A session names its files in external commands here, so that none is looked for.
void RoundTrip(const ScratchFolder& scratch, const std::u16string& text) {
    FakeFrame frame;
    Calls expected;
    for (size_t start = 0; start < text.size();) {
        const size_t end = std::min(text.find_first_of(std::u16string(u"\r\n\0", 3), start), text.size());
        const std::u16string name = u"!" + text.substr(start, end - start);
        frame.Add(FakeDocument::WithFile(name)).sessionText = name + u"\r\n";
        expected.push_back(u"external [" + name.substr(1) + u"]");
        start = end + 1;
    }
    const std::u16string file = scratch.Path("session");
    std::filesystem::remove(scratch.File("session"));
    SaveSession(frame, file.c_str());
    Require(frame.questions.empty());
    RunScript(frame, file.c_str());
    Require(frame.calls == expected && Str(frame.commands.sessionFile) == file);
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    static const ScratchFolder scratch;
    const InDirectory scope(scratch.File("."));
    LoadSettings(IniFile());
    Platform::SetRecoveryFolder(u""); // the copies have tests of their own, and take time
    const std::string bytes(data, data + size);
    RunAsScript(scratch, bytes);
    RoundTrip(scratch, Decoded(bytes));
    ReleaseSettings();
    return 0;
}
