#include "app/OpenFailures.h"

#include "app/ScreenBatch.h"
#include "app/UserPrompt.h"
#include "base/TextFormat.h"

#include <utility>

void OpenFailures::Report(const Char* path) { screen.IsOpen() ? Gather(path) : Tell(path); }

void OpenFailures::BatchEnded() {
    if (count == 0) return;
    WString files(std::move(names));
    // Without memory it does not say how many more there are.
    if (count > MaxNames) static_cast<void>(Text::AppendFormat(files, u"\n(and %u more)", count - MaxNames));
    count = 0;
    Tell(files.Text());
}

void OpenFailures::Gather(const Char* path) {
    if (++count > MaxNames) return;
    // Without memory the message names fewer files.
    if (names.IsEmpty() || names.AppendChar(u'\n')) static_cast<void>(names.Append(path));
}

void OpenFailures::Tell(const Char* files) {
    WString text;
    if (Text::AppendFormat(text, u"Failed opening file: %s", files)) prompt.AskUser(text.Text(), MessageKind::Warning);
}
