#include "app/SettingsSaving.h"

#include "app/UserPrompt.h"
#include "base/TextFormat.h"
#include "settings/IniFile.h"

namespace {

// A file that was deleted meanwhile can be written without asking.
bool HasChanged(const Char* path, const FileStamp& known) {
    FileStamp now;
    return ReadStamp(path, now) && now != known;
}

// False without memory.
bool WordQuestion(WString& question, const Char* path, const SettingsKnowledge& known) {
    // First: what was not understood of the file as it was need not be in it any more.
    if (HasChanged(path, known.file))
        return Text::AppendFormat(question, u"%s has been modified by another program.\nSave over it?", path);
    if (known.isUnreadable) return Text::AppendFormat(question, u"%s could not be read.\nSave over it?", path);
    if (!known.stoppedLine) return true;
    return Text::AppendFormat(question, u"Reading %s stopped at line %u.\nWhat follows would be lost. Save over it?",
                              path, known.stoppedLine);
}

bool MayOverwrite(UserPrompt& user, const Char* path, const SettingsKnowledge& known) {
    WString question;
    if (!WordQuestion(question, path, known)) return false; // what cannot be asked is not done
    return question.IsEmpty() || user.AskUser(question.Text(), MessageKind::YesNo) == Answer::Yes;
}

} // namespace

void SaveSettingsFile(UserPrompt& user, SafeSaver& saver, const IniFile& settings, const Char* path,
                      SettingsKnowledge& known) {
    if (!MayOverwrite(user, path, known)) return;
    if (settings.Save(saver, path)) {
        known = {};
        static_cast<void>(ReadStamp(path, known.file)); // without it the next save asks
        return;
    }
    WString message;
    if (Text::AppendFormat(message, u"Failed saving file: %s", path))
        user.AskUser(message.Text(), MessageKind::Warning);
}
