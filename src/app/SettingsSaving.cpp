#include "app/SettingsSaving.h"

#include "app/UserPrompt.h"
#include "base/TextFormat.h"
#include "settings/IniFile.h"

namespace {

bool MayOverwrite(UserPrompt& user, const Char* path, const SettingsKnowledge& known) {
    if (!known.isUnreadable && !known.stoppedLine) return true;
    WString question;
    const bool isWorded =
        known.isUnreadable
            ? Text::AppendFormat(question, u"%s could not be read.\nSave over it?", path)
            : Text::AppendFormat(question,
                                 u"The reading of %s stopped in line %u.\nWhat follows would be lost. Save over it?",
                                 path, known.stoppedLine);
    return isWorded && user.AskUser(question.Text(), MessageKind::YesNo) == Answer::Yes;
}

} // namespace

void SaveSettingsFile(UserPrompt& user, const IniFile& settings, const Char* path, SettingsKnowledge& known) {
    if (!MayOverwrite(user, path, known)) return;
    if (settings.Save(path)) {
        known = {};
        return;
    }
    WString message;
    if (Text::AppendFormat(message, u"Failed saving file: %s", path))
        user.AskUser(message.Text(), MessageKind::Warning);
}
